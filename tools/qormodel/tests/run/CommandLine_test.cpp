// What holds for all commands: exit statuses, help, colours, pipes, examples.
#include "support/RunProgram.h"
#include "support/Sample.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include <sys/resource.h>
#include <sys/wait.h>

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
        put("settings.reg", "REGEDIT4\n\n[Viewer]\n\"Starts\"=dword:3\n"
                            "[Viewer\\Window]\n\"Position\"=\"40 25\"\n");
        options.folder = folder.getFolder().string();
        options.environment["HOME"] = options.folder;
        runShell("git init -q .", options);
        runShell("qormodel store --store settings.db import settings.reg && "
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

TEST(RunProgram, ExitsWithTwoForBadUsage) {
    const TemporaryFile file(projectText);
    const std::vector<std::vector<std::string>> usages{{},
                                                       {"dance"},
                                                       {"info"},
                                                       {"info", "--dance", file.getName()},
                                                       {"tree", "-L", "x", "y"},
                                                       {"tree", file.getName(), "/None"},
                                                       {"info", file.getName() + "none"},
                                                       {"help", "dance"},
                                                       {"--color", "green", "version"},
                                                       {"cat", "--as", "prose", file.getName()},
                                                       {"fmt", "-i", "-o", "x", file.getName()},
                                                       {"cat", "--mask", "/None", file.getName()}};
    for (const auto& usage : usages) {
        const RunResult result = runQormodel(usage);
        EXPECT_EQ(result.status, 2) << (usage.empty() ? "nothing" : usage[0]);
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(result.err.starts_with("qormodel: ")) << result.err;
    }
}

TEST(RunProgram, TellsWhatIsWrongWithACommandLine) {
    const std::string forAll = "qormodel: try 'qormodel --help'\n";
    EXPECT_EQ(runQormodel({}).err, "qormodel: expected a command\n" + forAll);
    EXPECT_EQ(runQormodel({"dance"}).err,
              "qormodel: there is no command or option dance\n" + forAll);
    EXPECT_EQ(runQormodel({"--dance"}).err,
              "qormodel: there is no command or option --dance\n" + forAll);
    EXPECT_EQ(runQormodel({"tree", "-L", "-1", "x"}).err,
              "qormodel: --level: Value -1 not in range 0 to 2147483647\n"
              "qormodel: try 'qormodel tree --help'\n");
    EXPECT_EQ(runQormodel({"cat", "--as", "prose", "x"}).err,
              "qormodel: --as: \"prose\" is none of export, json, text, xml\n"
              "qormodel: try 'qormodel cat --help'\n");
}

TEST(RunProgram, NamesTheCommandThatMayBeMeantByAMistypedOne) {
    const auto hint = [](const std::string& word) {
        const std::string text = runQormodel({word}).err;
        const std::string begin = "qormodel: there is no command or option " + word;
        EXPECT_TRUE(text.starts_with(begin)) << text;
        return text.substr(begin.size(), text.find('\n') - begin.size());
    };

    EXPECT_EQ(hint("tre"), "; did you mean tree?");
    EXPECT_EQ(hint("Tree"), "; did you mean tree?");
    EXPECT_EQ(hint("relation"), "; did you mean relations?");
    EXPECT_EQ(hint("gti-setup"), "; did you mean git-setup?");
    EXPECT_EQ(hint("sett"), "; did you mean set?");
    EXPECT_EQ(hint("project.model"), "");
    EXPECT_EQ(hint("xyz"), "");
}

TEST(RunProgram, TakesTheWordsOfAnOptionInAnyCase) {
    const TemporaryFile file(projectText);

    EXPECT_EQ(runQormodel({"cat", "--as", "TEXT", file.getName()}).out, projectText);
}

TEST(RunProgram, PrintsItsVersionsForAnOptionToo) {
    EXPECT_EQ(runQormodel({"--version"}).out, runQormodel({"version"}).out);
}

TEST(RunProgram, PrintsItsVersions) {
    const RunResult result = runQormodel({"version"});

    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(
        std::regex_match(result.out, std::regex("qormodel [0-9.]+\nmodel format 9\\.1\\.0\\.0\n")))
        << result.out;
}

TEST(RunProgram, PrintsItsVersionsInNoTime) {
    struct ::rusage before {};
    struct ::rusage after {};
    ::getrusage(RUSAGE_CHILDREN, &before);
    constexpr int times = 20;
    for (int i = 0; i < times; ++i) runQormodel({"version"});
    ::getrusage(RUSAGE_CHILDREN, &after);
    const auto spent = [](const ::timeval& from, const ::timeval& to) {
        return (to.tv_sec - from.tv_sec) * 1e3 + (to.tv_usec - from.tv_usec) * 1e-3;
    };

    const double milliseconds =
        (spent(before.ru_utime, after.ru_utime) + spent(before.ru_stime, after.ru_stime)) / times;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    EXPECT_LT(milliseconds, 1000);
#else
    EXPECT_LT(milliseconds, 10);
#endif
}

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

TEST(RunColours, ComeWhereTheyAreAskedForOnly) {
    const TemporaryFile file(projectText);
    const auto hasColours = [&](const std::vector<std::string>& options, const char* noColour) {
        std::vector<std::string> arguments{"tree", file.getName()};
        arguments.insert(arguments.end(), options.begin(), options.end());
        RunOptions run;
        if (noColour) run.environment["NO_COLOR"] = noColour;
        return runQormodel(arguments, run).out.find('\033') != std::string::npos;
    };

    EXPECT_FALSE(hasColours({}, nullptr));  // a file is no terminal
    EXPECT_FALSE(hasColours({"--color", "auto"}, nullptr));
    EXPECT_TRUE(hasColours({"--color", "always"}, nullptr));
    EXPECT_TRUE(hasColours({"--color=always"}, "1"));
    EXPECT_FALSE(hasColours({"--color", "never"}, nullptr));
}

TEST(RunColours, AreRefusedByTheEnvironmentOnATerminal) {
    const TemporaryFile file(projectText);
    const auto onTerminal = [&](const std::string& environment) {
        return runShell("command -v script > /dev/null || exit 77; " + environment +
                        " script -qec 'qormodel tree " + file.getName() + "' /dev/null");
    };
    const RunResult coloured = onTerminal("NO_COLOR=");
    ASSERT_NE(coloured.status, 77) << "there is no program script";

    EXPECT_NE(coloured.out.find("\033[1m"), std::string::npos) << coloured.out;
    EXPECT_EQ(onTerminal("NO_COLOR=1").out.find('\033'), std::string::npos);
}

TEST(RunPipes, TakeTheStandardInputForADash) {
    RunOptions options;
    options.input = projectText;

    const RunResult result = runQormodel({"get", "-", "/Scans/Count"}, options);

    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "2\n");
}

TEST(RunPipes, NameTheStandardInputInMessages) {
    RunOptions options;
    options.input = "no model";

    const RunResult result = runQormodel({"info", "-"}, options);

    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err,
              "qormodel: stdin:1: /: is no model file: expected a header text in "
              "quotes and a version\n");
}

TEST(RunPipes, TellThatBytesAreNoModelFileWhateverIsBrokenInThem) {
    RunOptions options;
    for (const std::string bytes : {"\x7f" "ELF\x02\n} } \xff", "{ \"a", "} }", ""}) {
        options.input = bytes;
        const RunResult result = runQormodel({"info", "-"}, options);
        EXPECT_EQ(result.status, 2) << bytes;
        EXPECT_EQ(result.err,
                  "qormodel: stdin:1: /: is no model file: expected a header text in quotes and a "
                  "version\n");
    }
}

TEST(RunPipes, MayBeClosedByTheirReaderWithoutAWord) {
    std::string text = modelText("AttrContainer { \nAttr<IntVector> { \nName \"L\"\nValue {");
    for (int i = 0; i < 100'000; ++i) text += " 12345";
    const TemporaryFile file(text + " } \n}\n}\n");

    const RunResult result =
        runShell("(qormodel get " + file.getName() + " /L; echo status $? >&2) | true");

    EXPECT_EQ(result.err, "status 0\n");
}

TEST(RunPipes, KeepTheStatusOfWhatWasFoundWhereTheirReaderLeaves) {
    const TemporaryFile file(projectText);
    const std::string other = (file.getFolder() / "other.model").string();
    runQormodel({"set", file.getName(), "/Action=x", "-o", other});

    // The reader is gone before anything is printed.
    const RunResult result =
        runShell("(sleep 0.3; qormodel diff " + file.getName() + ' ' + other +
                 "; echo status $? >&2; qormodel set " + other +
                 " /Action=y; echo status $? >&2) | true");

    EXPECT_EQ(result.err, "status 1\nstatus 0\n");
    EXPECT_EQ(runQormodel({"get", other, "/Action"}).out, "y\n");
}

TEST(RunPipes, TellAFullDevice) {
    const TemporaryFile file(projectText);

    const RunResult result = runShell("qormodel cat " + file.getName() + " > /dev/full");

    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err,
              "qormodel: standard output: cannot be written: No space left on device\n");
}

TEST(RunPipes, TellThatHelpCannotBePrinted) {
    EXPECT_EQ(runShell("qormodel --help > /dev/full").status, 2);
}

TEST(RunPipes, MayAllBeClosed) {
    const TemporaryFile file(projectText);

    EXPECT_EQ(runShell("qormodel cat " + file.getName() + " >&- 2>&-").status, 2);
    EXPECT_EQ(runShell("qormodel info - <&- 2>&-").status, 2);
}

TEST(RunPipes, TellThatTheStandardOutputIsClosed) {
    const TemporaryFile file(projectText);

    const RunResult result =
        runShell("cat " + file.getName() + " | timeout 60 qormodel cat - >&-");

    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "qormodel: standard output: cannot be written: Bad file descriptor\n");
}

TEST(RunPipes, AreCopiedToTheFolderThatTheEnvironmentNames) {
    const TemporaryFile file(projectText);
    RunOptions options;
    options.environment["TMPDIR"] = file.getFolder().string();
    const std::string line = "cat " + file.getName() + " | qormodel get - /Scans/Count";

    EXPECT_EQ(runShell(line, options).out, "2\n");

    options.environment["TMPDIR"] = (file.getFolder() / "none").string();
    const RunResult result = runShell(line, options);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "qormodel: " + options.environment["TMPDIR"] +
                              ": no temporary file can be made: No such file or directory\n");
}

TEST(RunOnTerminal, ShowsAProgressBarForWhatTakesOverASecond) {
    const TemporaryFile file("");
    RunOptions options;
    options.folder = file.getFolder().string();
    const auto run = [&](const std::string& pause) {
        return runShell("command -v script > /dev/null || exit 77; "
                        "script -qec '(echo 1,2,3; sleep " + pause +
                            "; echo 4,5,6) | qormodel new - --scan - > /dev/null' /dev/null",
                        options);
    };
    const RunResult slow = run("1.2");
    ASSERT_NE(slow.status, 77) << "there is no program script";

    EXPECT_NE(slow.out.find("reading stdin 0 MB"), std::string::npos) << slow.out;
    EXPECT_TRUE(slow.out.ends_with("\r\033[K")) << slow.out;  // it is wiped in the end
    EXPECT_EQ(run("0").out, "");
}

TEST(RunOnTerminal, GivesLongOutputToThePager) {
    const TemporaryFile file(projectText);
    const auto run = [&](int height) {
        return runShell("command -v script > /dev/null || exit 77; PAGER='sed s/^/paged:/' "
                        "script -qec 'stty rows " +
                        std::to_string(height) + "; qormodel --color never tree " +
                        file.getName() + "' /dev/null");
    };
    const RunResult paged = run(3);  // the tree has four lines
    ASSERT_NE(paged.status, 77) << "there is no program script";

    EXPECT_EQ(paged.out.find("paged:/ Object"), 0u) << paged.out;
    EXPECT_EQ(run(5).out.find("/ Object"), 0u);
}
