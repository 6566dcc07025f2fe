#include "commands/Writing.h"

#include "model/Edit.h"
#include "model/TypeWords.h"

#include <memory>
#include <string>
#include <vector>

namespace qormodel {

namespace {
using Colour = Output::Colour;

struct Options {
    std::string file;
    std::vector<std::string> assignments;
    std::vector<std::string> removals;
    std::string addType;
    WriteFlags write;
};

EditResult assign(const Document& document, const std::string& assignment,
                  const std::string& addType) {
    const auto sign = assignment.find('=');
    if (sign == std::string::npos)
        throw Failure("\"" + assignment + "\" is no assignment: expected PATH=VALUE");
    return setValue(document, assignment.substr(0, sign), assignment.substr(sign + 1), addType);
}

// What was done, as it is told once it is done.
class Report {
public:
    explicit Report(const Output& output) : output(output) {}

    void add(Colour colour, const char* sign, const std::string& text) {
        lines += output.in(colour, sign) + ' ' + text + '\n';
    }
    const std::string& getLines() const { return lines; }

private:
    const Output& output;
    std::string lines;
};

void remove(const Document& document, const std::string& path, Report& report) {
    const auto relations = listRelationsTo(document, path);
    const EditResult edit = removeElement(document, path);
    report.add(Colour::Removed, "-", edit.path + ": " + edit.before);
    for (const auto& relation : relations)
        report.add(Colour::Removed, "-",
                   "relation " + relation.observable + " -> " + relation.observer + " (" +
                       relation.action + ')');
}

// False where an observer refused.
bool change(const Document& document, const std::string& assignment, const Options& options,
            std::vector<EditResult>& edits, Report& report) {
    const EditResult edit = assign(document, assignment, options.addType);
    edits.push_back(edit);
    if (edit.refusal) {
        printNote(describe(Place{document.placeOf(0, 0).file, 0, edit.path}, *edit.refusal));
        return false;
    }
    if (edit.isAdded) report.add(Colour::Added, "+", edit.path + " = " + edit.after);
    else report.add(Colour::Changed, "~", edit.path + ": " + edit.before + " -> " + edit.after);
    return true;
}

// All changes are one write: where one is refused, none is made.
void run(const Options& options, Session& session) {
    if (options.assignments.empty() && options.removals.empty())
        throw Failure("expected PATH=VALUE or --rm PATH");
    const FileLock lock = lockTarget(options.write, options.file);
    const Document document = loadDocument(options.file);
    if (!mayBeWritten(document, options.write, session)) return;
    Report report(session.output);
    std::vector<EditResult> edits;
    bool isRefused = false;
    for (const auto& path : options.removals) remove(document, path, report);
    for (const auto& assignment : options.assignments)
        if (!change(document, assignment, options, edits, report)) isRefused = true;
    const auto rounded = findRounded(document, edits);
    if (isRefused || (rounded && !options.write.force)) {
        if (rounded) printNote(*rounded + "; --force writes it all the same");
        printNote(describe(document.placeOf(0, 0), "nothing is written"));
        session.exit = Exit::Found;
        return;
    }
    storeDocument(document, options.write);
    if (options.write.output != "-") session.output.add(report.getLines());
}
// The words for --add, in lines of a width that all terminals have.
std::string typeLines() {
    constexpr std::size_t width = 78;
    std::string lines;
    std::string line = " ";
    for (const auto& word : listTypeWords()) {
        if (line.size() + 1 + word.size() > width) {
            lines += line + '\n';
            line = " ";
        }
        line += ' ' + word;
    }
    return lines + line + '\n';
}
}  // namespace

void addSet(CLI::App& program, Session& session) {
    auto* const command = program.add_subcommand("set", "Change values; observers may refuse");
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->file, "Model file, - for the standard input")->required();
    command->add_option("PATH=VALUE", options->assignments, "What to set to which value");
    command
        ->add_option("--add", options->addType,
                     "Add attributes that are not there, of this type, such as double")
        ->option_text("TYPE");
    command->add_option("--rm", options->removals, "Remove an attribute, field or object")
        ->allow_extra_args(false)
        ->option_text("PATH");
    addWriteFlags(*command, options->write);
    command->footer(
        "All changes are one write: where an observer refuses one, none is made and "
        "the exit\nstatus is 1.\n\n"
        "TYPE is one of these, in upper or lower case:\n" +
        typeLines() + "\nExample:\n  qormodel set project.model /Action=reviewed");
    command->callback([options, &session] { run(*options, session); });
}

}  // namespace qormodel
