#include "commands/Commands.h"
#include "commands/ToleranceOption.h"

#include "io/TargetBuffer.h"
#include "io/TargetFile.h"
#include "page/PageData.h"
#include "page/PageText.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <system_error>

namespace qormodel {

namespace {
struct Options {
    std::string file;
    std::optional<std::string> other;
    std::string tolerance;
    std::string page;
    bool noBackup = false;

    bool isComparison() const { return other.has_value(); }
};

// A page in the place of a model would be a model lost.
void checkTarget(const Options& options) {
    for (const auto& name : {options.file, options.other.value_or("-")}) {
        std::error_code error;
        if (name != "-" && std::filesystem::equivalent(name, options.page, error))
            throw Failure(Place{options.page}, "is a file that the page shows");
    }
}

void storePage(const std::string& text, const Options& options) {
    TargetFile file(options.page);
    TargetBuffer buffer(file.getDescriptor(), options.page);
    buffer.sputn(text.data(), static_cast<std::streamsize>(text.size()));
    buffer.finish();
    file.replace(!options.noBackup);
}

void run(const Options& options, Session& session) {
    if (options.file == "-" && options.other == "-")
        throw Failure("only one of the two can be the standard input");
    if (!options.tolerance.empty() && !options.isComparison())
        throw Failure("--tolerance is for two files: expected OTHER");
    const Tolerance tolerance = toleranceOf(options.tolerance);
    checkTarget(options);
    const Document first = loadDocument(options.file);
    std::optional<Document> second;
    if (options.isComparison()) second = loadDocument(*options.other);
    const Json data = describePage(first, second ? &*second : nullptr, tolerance);
    const std::string text = makePage(data);
    if (options.page == "-") session.output.add(text);
    else storePage(text, options);
    for (const auto& count : data["changes"])
        if (count != 0) session.exit = Exit::Found;
}
}  // namespace

void addHtml(CLI::App& program, Session& session) {
    auto* const command = program.add_subcommand(
        "html", "Make a page that shows a file, or what differs between two");
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->file, "Model file, - for the standard input")->required();
    command->add_option("OTHER", options->other, "Show how this file differs from FILE");
    command->add_option("-o,--output", options->page, "The page, - for the standard output")
        ->required()
        ->option_text("PAGE REQUIRED");
    addTolerance(*command, options->tolerance);
    command->add_flag("--no-backup", options->noBackup, "Keep no copy of an old page as PAGE~");
    command->footer(
        "The page is one file that needs nothing else, in any browser.\n"
        "Exits with 1 where OTHER differs from FILE; the page is written all the same.\n\n"
        "Example:\n  qormodel html project.model -o project.html");
    command->callback([options, &session] { run(*options, session); });
}

}  // namespace qormodel
