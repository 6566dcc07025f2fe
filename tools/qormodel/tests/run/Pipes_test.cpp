// Colours, pipes and terminals, which hold for all commands.
#include "support/RunProgram.h"
#include "support/Sample.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <sys/resource.h>
#include <sys/wait.h>

using namespace qormodel::testing;

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
    for (const std::string bytes : {"\x7f"
                                    "ELF\x02\n} } \xff",
                                    "{ \"a", "} }", ""}) {
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
    const RunResult result = runShell("(sleep 0.3; qormodel diff " + file.getName() + ' ' + other +
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

    const RunResult result = runShell("cat " + file.getName() + " | timeout 60 qormodel cat - >&-");

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
        return runShell(
            "command -v script > /dev/null || exit 77; "
            "script -qec '(echo 1,2,3; sleep " +
                pause + "; echo 4,5,6) | qormodel new - --scan - > /dev/null' /dev/null",
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
        return runShell(
            "command -v script > /dev/null || exit 77; PAGER='sed s/^/paged:/' "
            "script -qec 'stty rows " +
            std::to_string(height) + "; qormodel --color never tree " + file.getName() +
            "' /dev/null");
    };
    const RunResult paged = run(3);  // the tree has four lines
    ASSERT_NE(paged.status, 77) << "there is no program script";

    EXPECT_EQ(paged.out.find("paged:/ Object"), 0u) << paged.out;
    EXPECT_EQ(run(5).out.find("/ Object"), 0u);
}
