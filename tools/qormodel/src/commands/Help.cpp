#include "commands/Commands.h"

#include "commands/ManPage.h"

#include <memory>
#include <string>
#include <vector>

namespace qormodel {

namespace {
struct Options {
    std::vector<std::string> command;  // with the group ahead of it, where it is in one
    bool asManPage = false;
};

const CLI::App& commandOf(const CLI::App& program, const std::string& name) {
    const auto found = program.get_subcommands(
        [&](const CLI::App* each) { return each->get_name() == name; });
    if (found.empty())
        throw Failure("there is no command " + name + "; 'qormodel help' lists all");
    return *found.front();
}

void run(const Options& options, const CLI::App& program, Session& session) {
    if (options.asManPage) return session.output.add(manPageOf(program));
    if (options.command.empty())  // its help() would explain the command that runs: this one
        return session.output.add(program.get_formatter()->make_help(
            &program, program.get_name(), CLI::AppFormatMode::Normal));
    // Under the name of the program, as its own --help shows it.
    const CLI::App* command = &program;
    std::string holder;
    for (const auto& name : options.command) {
        holder += (holder.empty() ? "" : " ") + command->get_name();
        command = &commandOf(*command, name);
    }
    session.output.add(command->help(holder));
}
}  // namespace

void addHelp(CLI::App& program, Session& session) {
    auto* const command = program.add_subcommand("help", "Explain the program or a command");
    const auto options = std::make_shared<Options>();
    command->add_option("COMMAND", options->command, "What to explain; else the program");
    command->add_flag("--man", options->asManPage, "Print the manual page of the program");
    command->footer("Example:\n  qormodel help tree");
    command->callback([options, &program, &session] { run(*options, program, session); });
}

}  // namespace qormodel
