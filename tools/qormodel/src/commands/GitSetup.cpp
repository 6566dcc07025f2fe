#include "commands/Commands.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace qormodel {

namespace {
struct Options {
    bool isGlobal = false;
    std::string pattern = "*.model";
    std::string program;
};

using Words = std::vector<std::string>;

[[noreturn]] void become(const Words& words, int output) {
    std::vector<char*> arguments;
    for (const auto& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    ::dup2(output, STDOUT_FILENO);
    ::execvp(arguments[0], arguments.data());
    ::_exit(127);
}

// What git prints. \throws Failure where it cannot be run or ends with another status than 0
std::string runGit(const Words& words, const std::string& purpose) {
    Words command{"git"};
    command.insert(command.end(), words.begin(), words.end());
    int ends[2];
    if (::pipe(ends) != 0) throw Failure("no pipe can be made");
    const ::pid_t process = ::fork();
    if (process == 0) become(command, ends[1]);
    ::close(ends[1]);
    std::string text;
    char chunk[4096];
    for (::ssize_t got; (got = ::read(ends[0], chunk, sizeof chunk)) > 0;)
        text.append(chunk, static_cast<std::size_t>(got));
    ::close(ends[0]);
    int status = 0;
    ::waitpid(process, &status, 0);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) throw Failure("git cannot " + purpose);
    while (text.ends_with('\n')) text.pop_back();
    return text;
}

// The program with a path that git's shell takes as one word.
std::string quoted(const std::string& program) {
    std::string text = "'";
    for (const char character : program)
        text += character == '\'' ? "'\\''" : std::string(1, character);
    return text + '\'';
}

std::string ownProgram() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? "qormodel" : program.string();
}

std::filesystem::path attributesFile(const Options& options) {
    if (!options.isGlobal)
        return std::filesystem::path(
                   runGit({"rev-parse", "--show-toplevel"}, "tell the folder of the repository")) /
               ".gitattributes";
    try {
        return runGit({"config", "--global", "--type=path", "core.attributesFile"}, "");
    } catch (const Failure&) {  // none is set: git looks here
        const char* const config = std::getenv("XDG_CONFIG_HOME");
        if (config && *config != '\0') return std::filesystem::path(config) / "git/attributes";
        const char* const home = std::getenv("HOME");
        if (!home) throw Failure("HOME is not set");
        return std::filesystem::path(home) / ".config/git/attributes";
    }
}

// Adds the line where the file does not have it. \return whether it was added
bool addLine(const std::filesystem::path& file, const std::string& line) {
    bool isLastWhole = true;
    {
        std::ifstream stream(file);
        for (std::string each; std::getline(stream, each);) {
            if (each == line) return false;
            isLastWhole = !stream.eof();
        }
    }
    std::error_code ignored;
    std::filesystem::create_directories(file.parent_path(), ignored);
    std::ofstream stream(file, std::ios::app);
    stream << (isLastWhole ? "" : "\n") << line << '\n';
    stream.close();
    if (!stream) throw Failure(Place{file.string()}, "cannot be written");
    return true;
}

void run(const Options& options, Session& session) {
    const std::string program = quoted(options.program.empty() ? ownProgram() : options.program);
    const auto file = attributesFile(options);
    const std::vector<std::pair<std::string, std::string>> settings{
        {"diff.qormodel.command", program + " --color=auto diff --git"},
        {"merge.qormodel.name", "qormodel"},
        {"merge.qormodel.driver", program + " merge --no-backup --name %P -o %A %O %A %B"}};
    for (const auto& [key, value] : settings) {
        runGit({"config", options.isGlobal ? "--global" : "--local", key, value}, "set " + key);
        session.output.print("{} = {}\n", key, value);
    }
    const std::string line = options.pattern + " diff=qormodel merge=qormodel";
    const bool isAdded = addLine(file, line);
    session.output.print("{}{}: {}\n", file.string(), isAdded ? "" : " (as it was)", line);
}
}  // namespace

void addGitSetup(CLI::App& program, Session& session) {
    auto* const command =
        program.add_subcommand("git-setup", "Have git compare and merge model files with qormodel");
    const auto options = std::make_shared<Options>();
    command->add_flag("--global", options->isGlobal,
                      "For all repositories of this user, not the one here alone");
    command->add_option("--pattern", options->pattern, "Which files")->capture_default_str();
    command->add_option("--program", options->program,
                        "What git is to run; else this very program")
        ->option_text("FILE");
    command->footer(
        "Sets the drivers in git's configuration and names them in .gitattributes.\n\n"
        "Example:\n  qormodel git-setup");
    command->callback([options, &session] { run(*options, session); });
}

}  // namespace qormodel
