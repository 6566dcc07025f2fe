#include "model/Check.h"

#include "commands/Commands.h"

#include "terminal/JsonOutput.h"

#include <memory>
#include <string>
#include <vector>

namespace qormodel {

namespace {
using Colour = Output::Colour;
using Severity = Finding::Severity;

struct Options {
    std::vector<std::string> files;
    bool isStrict = false;
    bool asJson = false;
};

Json describeFinding(const Finding& finding) {
    return {{"severity", finding.severity == Severity::Problem ? "problem" : "warning"},
            {"kind", finding.kind},
            {"file", finding.place.file},
            {"line", finding.place.line},
            {"path", finding.place.path},
            {"text", finding.text}};
}

void printFinding(Output& output, const Finding& finding) {
    const bool isProblem = finding.severity == Severity::Problem;
    output.print("{} {}\n",
                 output.in(isProblem ? Colour::Removed : Colour::Changed,
                           isProblem ? "problem" : "warning"),
                 describe(finding.place, finding.text));
}

void raise(Exit& exit, Exit to) {
    if (exit != Exit::Found) exit = to;
}

void run(const Options& options, Session& session) {
    Json described = Json::array();
    for (const auto& file : options.files) {
        const Document document = loadDocument(file);
        for (const auto& finding : checkDocument(document)) {
            if (finding.severity == Severity::Problem) raise(session.exit, Exit::Found);
            else if (options.isStrict) raise(session.exit, Exit::Warned);
            if (options.asJson) described.push_back(describeFinding(finding));
            else printFinding(session.output, finding);
        }
    }
    if (options.asJson)
        printJson(session.output, "check", {{"findings", std::move(described)}});
}
}  // namespace

void addCheck(CLI::App& program, Session& session) {
    auto* const command = program.add_subcommand(
        "check", "Look for bad names, types, relations, references, and for what would get lost");
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->files, "Model files, - for the standard input")
        ->required();
    command->add_flag("--strict", options->isStrict, "Exit with 3 where there are warnings only");
    command->add_flag("--json", options->asJson, "Print one JSON object");
    command->footer("Example:\n  qormodel check --strict project.model");
    command->callback([options, &session] { run(*options, session); });
}

}  // namespace qormodel
