#include "Program.h"

#include "commands/Choice.h"
#include "commands/Commands.h"
#include "io/StandardFiles.h"

#include <algorithm>
#include <csignal>
#include <exception>
#include <map>
#include <memory>
#include <new>
#include <numeric>
#include <sstream>
#include <string>
#include <vector>

namespace qormodel {

namespace {
const std::map<std::string, ColourMode> colourModes{
    {"auto", ColourMode::Auto}, {"always", ColourMode::Always}, {"never", ColourMode::Never}};

void addCommands(CLI::App& program, Session& session) {
    addCat(program, session);
    addHelp(program, session);
    addInfo(program, session);
    addTree(program, session);
    addGet(program, session);
    addCheck(program, session);
    addRelations(program, session);
    addNew(program, session);
    addSet(program, session);
    addDiff(program, session);
    addMerge(program, session);
    addHtml(program, session);
    addGitSetup(program, session);
    addFmt(program, session);
    addStore(program, session);
    addCompletion(program, session);
    addVersion(program, session);
}

void addGlobalOptions(CLI::App& program, ColourMode& colours) {
    program.add_option("--color", colours, "Colours: auto, always or never")
        ->transform(choiceOf(colourModes))
        ->option_text("auto|always|never");
    program.require_subcommand(1);
    program.fallthrough();
}

// How many letters must be added, taken away or changed to make one word of the other.
std::size_t distance(const std::string& first, const std::string& second) {
    std::vector<std::size_t> row(second.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < first.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < second.size(); ++j) {
            const std::size_t changed = diagonal + (first[i] == second[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({changed, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

// The command that may have been meant: a third of its letters may be wrong.
std::string hintFor(const CLI::App& program, const std::string& word) {
    std::string nearest;
    std::size_t limit = 0;
    for (const auto* const command : program.get_subcommands(nullptr)) {
        const std::string& name = command->get_name();
        if (command->get_group().empty()) continue;
        const std::size_t wrong = distance(CLI::detail::to_lower(word), name);
        if (wrong > (name.size() + 2) / 3 || (!nearest.empty() && wrong >= limit)) continue;
        nearest = name;
        limit = wrong;
    }
    return nearest.empty() ? "" : "; did you mean " + nearest + '?';
}

// What is wrong with the command line. The parser knows an unknown command only as a missing one.
void tellUsage(const CLI::App& program, const CLI::ParseError& error) {
    const auto commands = program.get_subcommands();
    if (!commands.empty()) {
        printNote(error.what());
        return printNote("try 'qormodel " + commands.front()->get_name() + " --help'");
    }
    const auto words = program.remaining();
    if (error.get_name() != "RequiredError") printNote(error.what());
    else if (words.empty()) printNote("expected a command");
    else
        printNote("there is no command or option " + words.front() +
                  hintFor(program, words.front()));
    printNote("try 'qormodel --help'");
}

// The parser runs the command through its callback.
int parse(CLI::App& program, Session& session, int argc, const char* const* argv) {
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() != 0) {
            tellUsage(program, error);
            return static_cast<int>(Exit::Failed);
        }
        std::ostringstream answer;  // help or the version was asked for
        program.exit(error, answer, answer);
        session.output.add(answer.str());
    }
    session.output.flush();
    return static_cast<int>(session.exit);
}
}  // namespace

int runProgram(int argc, const char* const* argv) {
    openStandardFiles();
    std::signal(SIGPIPE, SIG_IGN);  // a reader that leaves shows as a failed write
    try {
        CLI::App program("Looks at, changes, compares and merges model files.", "qormodel");
        Session session;
        ColourMode colours = ColourMode::Auto;
        addGlobalOptions(program, colours);
        addCommands(program, session);
        // Ahead of the command: options stand on either side of its name.
        program.parse_complete_callback([&] { session.output.setColourMode(colours); });
        try {
            return parse(program, session, argc, argv);
        } catch (const ReaderLeft&) {
            return static_cast<int>(session.exit);
        }
    } catch (const std::bad_alloc&) {
        printNote("out of memory");
    } catch (const std::exception& error) {
        printNote(error.what());
    }
    return static_cast<int>(Exit::Failed);
}

}  // namespace qormodel
