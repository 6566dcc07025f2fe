#include "commands/CommandLine.h"
#include "commands/Commands.h"

#include "model/PathCompletion.h"
#include "outline/Outline.h"
#include "store/KeyCompletion.h"

#include <csignal>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include <unistd.h>

namespace qormodel {

namespace {
void printScript(const std::string& shell, const CLI::App& program, Session& session) {
    const auto commands = listCommandLines(program);
    if (shell == "bash") session.output.add(bashScript(commands));
    else if (shell == "zsh") session.output.add(zshScript(commands));
    else session.output.add(fishScript(commands));
}

struct Asked {
    std::string file;
    std::string key;  // of values
    std::string prefix;
};

using Complete = std::vector<std::string> (*)(const Asked&);

std::vector<std::string> pathsFor(const Asked& asked) {
    const SourceFile source(asked.file);
    return completePaths(readOutline(source), asked.prefix);
}

std::vector<std::string> keysFor(const Asked& asked) {
    if (!isStoreFile(asked.file)) return {};
    return completeKeys(StoreFile(asked.file, WhenMissing::FailForReading), asked.prefix);
}

std::vector<std::string> valuesFor(const Asked& asked) {
    if (!isStoreFile(asked.file)) return {};
    return completeValues(StoreFile(asked.file, WhenMissing::FailForReading), asked.key,
                          asked.prefix);
}

constexpr unsigned maxSeconds = 3;

// A shell asks while somebody types: what cannot be read offers nothing, nothing is said of it, and
// what is not read soon is not waited for.
void printOffers(const Asked& asked, Complete complete, Session& session) {
    std::error_code error;
    // A pipe would be read empty, and may never end; "-" is what is typed.
    if (asked.file == "-" || !std::filesystem::is_regular_file(asked.file, error)) return;
    std::signal(SIGALRM, [](int) { ::_exit(0); });
    ::alarm(maxSeconds);
    try {
        for (const auto& offer : complete(asked)) session.output.print("{}\n", offer);
    } catch (const Failure&) {
    }
}
// Commands for the scripts only.
void addOffers(CLI::App& program, Session& session, const std::string& name, Complete complete) {
    auto* const command = program.add_subcommand(name, "Print what begins so");
    const auto asked = std::make_shared<Asked>();
    command->add_option("FILE", asked->file)->required();
    if (complete == &valuesFor) command->add_option("KEY", asked->key)->required();
    command->add_option("PREFIX", asked->prefix);
    command->group("");
    command->callback([asked, complete, &session] { printOffers(*asked, complete, session); });
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
        "It offers commands, options, their values, files, and what is in the file of the line:\n"
        "paths, keys and values.\n"
        "In ~/.bashrc: source <(qormodel completion bash)\n\n"
        "Example:\n  qormodel completion bash");
    command->callback([shell, &program, &session] { printScript(*shell, program, session); });

    addOffers(program, session, "complete-paths", &pathsFor);
    addOffers(program, session, "complete-keys", &keysFor);
    addOffers(program, session, "complete-values", &valuesFor);
}

}  // namespace qormodel
