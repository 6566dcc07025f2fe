#include "commands/CommandLine.h"
#include "commands/Commands.h"

#include "model/PathCompletion.h"
#include "outline/Outline.h"

#include <csignal>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

#include <unistd.h>

namespace qormodel {

namespace {
void printScript(const std::string& shell, const CLI::App& program, Session& session) {
    const auto commands = listCommandLines(program);
    if (shell == "bash") session.output.add(bashScript(commands));
    else if (shell == "zsh") session.output.add(zshScript(commands));
    else session.output.add(fishScript(commands));
}

struct PathOptions {
    std::string file;
    std::string prefix;
};

constexpr unsigned maxSeconds = 3;

// A shell asks while somebody types: what cannot be read has no paths, nothing is said of it, and
// what is not read soon is not waited for.
void printPaths(const PathOptions& options, Session& session) {
    std::error_code error;
    // A pipe would be read empty, and may never end; "-" is what is typed.
    if (options.file == "-" || !std::filesystem::is_regular_file(options.file, error)) return;
    std::signal(SIGALRM, [](int) { ::_exit(0); });
    ::alarm(maxSeconds);
    try {
        const SourceFile source(options.file);
        for (const auto& path : completePaths(readOutline(source), options.prefix))
            session.output.print("{}\n", path);
    } catch (const Failure&) {
    }
}
}  // namespace

void addCompletion(CLI::App& program, Session& session) {
    auto* const command =
        program.add_subcommand("completion", "Print a script that completes command lines");
    const auto shell = std::make_shared<std::string>();
    command->add_option("SHELL", *shell, "The shell: bash, zsh or fish")
        ->required()
        ->check(CLI::IsMember({"bash", "zsh", "fish"}))
        ->option_text("bash|zsh|fish");
    command->footer(
        "It offers commands, options, their values, files, and the paths in the file of the line.\n"
        "In ~/.bashrc: source <(qormodel completion bash)\n\n"
        "Example:\n  qormodel completion bash");
    command->callback([shell, &program, &session] { printScript(*shell, program, session); });

    auto* const paths = program.add_subcommand("complete-paths", "Print paths that begin so");
    const auto options = std::make_shared<PathOptions>();
    paths->add_option("FILE", options->file)->required();
    paths->add_option("PREFIX", options->prefix);
    paths->group("");  // for scripts only
    paths->callback([options, &session] { printPaths(*options, session); });
}

}  // namespace qormodel
