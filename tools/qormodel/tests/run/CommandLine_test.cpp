// What holds for all command lines: exit statuses, messages, versions.
#include "support/RunProgram.h"
#include "support/Sample.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include <sys/resource.h>
#include <sys/wait.h>

using namespace qormodel::testing;

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
