#include "commands/Writing.h"

#include "model/Edit.h"

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

// On the standard output only where that does not hold the document.
void report(const EditResult& edit, const Options& options, Session& session) {
    if (edit.refusal) {
        session.exit = Exit::Found;
        return printNote(edit.path + ": " + *edit.refusal);
    }
    if (options.write.output == "-") return;
    session.output.print("{} {}: {} -> {}\n", session.output.in(Colour::Changed, "~"), edit.path,
                         edit.before, edit.after);
}

void run(const Options& options, Session& session) {
    if (options.assignments.empty() && options.removals.empty())
        throw Failure("expected PATH=VALUE or --rm PATH");
    const Document document = loadDocument(options.file);
    if (!mayBeWritten(document, options.write, session)) return;
    std::vector<EditResult> edits;
    for (const auto& path : options.removals) {
        const EditResult edit = removeElement(document, path);
        if (options.write.output != "-")
            session.output.print("{} {}: {}\n", session.output.in(Colour::Removed, "-"), edit.path,
                                 edit.before);
    }
    for (const auto& assignment : options.assignments) {
        edits.push_back(assign(document, assignment, options.addType));
        report(edits.back(), options, session);
    }
    if (const auto rounded = findRounded(document, edits); rounded && !options.write.force) {
        printNote(*rounded + "; nothing is written, --force does so all the same");
        session.exit = Exit::Found;
        return;
    }
    storeDocument(document, options.write);
}
}  // namespace

void addSet(CLI::App& program, Session& session) {
    auto* const command = program.add_subcommand("set", "Change values; observers may refuse");
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->file, "Model file, - for the standard input")->required();
    command->add_option("PATH=VALUE", options->assignments, "What to set to which value");
    command->add_option("--add", options->addType,
                        "Add attributes that are not there, of this type, such as double");
    command->add_option("--rm", options->removals, "Remove an attribute, field or object")
        ->allow_extra_args(false);
    addWriteFlags(*command, options->write);
    command->footer("Example:\n  qormodel set project.model /Action=reviewed");
    command->callback([options, &session] { run(*options, session); });
}

}  // namespace qormodel
