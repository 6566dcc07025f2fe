// The help, the manual page and the guide.
#include "support/RunProgram.h"
#include "support/Sample.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

using namespace qormodel::testing;

namespace {

// The commands that the help of the program, or of a group, lists, each with its line.
std::map<std::string, std::string> listCommands(std::vector<std::string> group = {}) {
    std::map<std::string, std::string> commands;
    group.push_back("--help");
    std::istringstream help(runQormodel(group).out);
    bool isList = false;
    for (std::string line; std::getline(help, line);) {
        if (line.empty()) isList = false;
        if (isList && line.starts_with("  ") && line[2] != ' ')
            commands[line.substr(2, line.find(' ', 2) - 2)] = line;
        if (line == "Subcommands:") isList = true;
    }
    return commands;
}

// The command lines that stand behind "Example:" in a help text.
std::vector<std::string> examplesIn(const std::string& help) {
    std::vector<std::string> examples;
    std::istringstream lines(help.substr(std::min(help.size(), help.find("Example"))));
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with("  qormodel ")) examples.push_back(line.substr(2));
    return examples;
}

// A folder with all that the examples name, in a repository of git.
struct ExampleFolder {
    ExampleFolder() {
        put("project.model", projectText);
        std::string older = projectText;
        older.replace(older.find("Value 2\n"), 8, "Value 1\n");
        for (const char* const name : {"old.model", "base.model", "ours.model", "other.model"})
            put(name, older);
        for (const char* const name : {"new.model", "theirs.model"}) put(name, projectText);
        for (const char* const name : {"scan.txt", "scan.csv", "points.txt", "room.txt"})
            put(name, "0,0,0\n1,2,3\n");
        put("track.txt", "0,0,0\n1,2,3\n");
        put("lossy.model", valueModel("Attr<double>", "1.#INF"));
        put("settings.reg",
            "REGEDIT4\n\n[Viewer]\n\"Starts\"=dword:3\n"
            "[Viewer\\Window]\n\"Position\"=\"40 25\"\n");
        options.folder = folder.getFolder().string();
        options.environment["HOME"] = options.folder;
        runShell("git init -q .", options);
        runShell(
            "qormodel store --store settings.db import settings.reg && "
            "qormodel store --store settings.db import project.model --key Project 2>&1",
            options);
    }

    void put(const std::string& name, const std::string& content) const {
        std::ofstream(folder.getFolder() / name, std::ios::binary) << content;
    }

    TemporaryFile folder{""};
    RunOptions options;
};

}  // namespace

TEST(RunHelp, ExplainsEachCommandAsItsOwnHelpDoes) {
    EXPECT_EQ(runQormodel({"help"}).out, runQormodel({"--help"}).out);
    const auto commands = listCommands();
    EXPECT_TRUE(commands.contains("cat"));
    for (const auto& [command, line] : commands) {
        const RunResult help = runQormodel({"help", command});
        EXPECT_EQ(help.status, 0) << command;
        EXPECT_EQ(help.out, runQormodel({command, "--help"}).out);
    }
}

TEST(RunHelp, MakesAManualPageOfAllCommandsAndOptions) {
    const std::string page = runQormodel({"help", "--man"}).out;

    EXPECT_TRUE(page.starts_with(".TH QORMODEL 1 "));
    for (const auto& [command, line] : listCommands()) {
        EXPECT_NE(page.find("\n.SS \"" + command), std::string::npos) << command;
        const std::string help = runQormodel({command, "--help"}).out;
        const std::regex option("\n  (-[-A-Za-z,]+)");
        for (std::sregex_iterator found(help.begin(), help.end(), option), end; found != end;
             ++found) {
            const std::string names = (*found)[1];
            if (names == "-h,--help") continue;
            const std::string escaped = std::regex_replace(names, std::regex("-"), "\\-");
            EXPECT_NE(page.find("\\fB" + escaped + "\\fR"), std::string::npos) << command << names;
        }
    }
}

TEST(RunHelp, MakesAManualPageThatTheFormatterTakes) {
    const RunResult result = runShell(
        "command -v groff > /dev/null || exit 77; qormodel help --man | "
        "groff -man -ww -Tutf8 > /dev/null");

    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
}

TEST(RunHelp, ExplainsTheCommandsOfAGroup) {
    const std::string page = runQormodel({"help", "--man"}).out;
    const auto commands = listCommands({"store"});
    EXPECT_TRUE(commands.contains("export"));
    for (const auto& [command, line] : commands) {
        const RunResult help = runQormodel({"help", "store", command});
        EXPECT_EQ(help.status, 0) << command;
        EXPECT_EQ(help.out, runQormodel({"store", command, "--help"}).out);
        EXPECT_NE(help.out.find("Usage: qormodel store " + command), std::string::npos) << help.out;
        EXPECT_NE(page.find("\n.SS \"store " + command), std::string::npos) << command;
    }
    EXPECT_EQ(runQormodel({"help", "store", "dance"}).status, 2);
    EXPECT_EQ(page.find("complete\\-paths"), std::string::npos);  // for scripts only
}

TEST(RunHelp, GivesExamplesThatWork) {
    std::map<std::string, std::vector<std::string>> commands;
    for (const auto& [command, line] : listCommands()) commands[command] = {command};
    for (const auto& [command, line] : listCommands({"store"}))
        commands["store " + command] = {"store", command};
    for (auto& [command, words] : commands) {
        words.push_back("--help");
        const auto examples = examplesIn(runQormodel(words).out);
        EXPECT_FALSE(examples.empty()) << command;
        for (const auto& example : examples) {
            const ExampleFolder folder;
            const RunResult result = runShell(example, folder.options);
            EXPECT_LT(result.status, 2) << example << '\n' << result.err;
            EXPECT_TRUE(command == "diff" || result.status == 0) << example << '\n' << result.err;
        }
    }
}

TEST(RunGuide, ShowsWhatTheProgramPrints) {
    const ExampleFolder folder;
    std::istringstream guide(contentOf(QORMODEL_GUIDE));
    bool isExample = false;
    std::string command;
    std::string expected;
    int numExamples = 0;
    const auto runExample = [&] {
        if (command.empty()) return;
        const RunResult result = runShell(command, folder.options);
        EXPECT_EQ(result.out + result.err, expected) << command;
        ++numExamples;
        command.clear();
        expected.clear();
    };
    for (std::string line; std::getline(guide, line);) {
        if (line.starts_with("```")) {
            runExample();
            isExample = line == "```console";
        } else if (isExample && line.starts_with("$ ")) {
            runExample();
            command = line.substr(2);
        } else if (isExample) {
            expected += line + '\n';
        }
    }
    EXPECT_GE(numExamples, 9);
}
