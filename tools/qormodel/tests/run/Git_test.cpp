// The drivers for git, in a real repository.
#include "support/RunProgram.h"
#include "support/Sample.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

using namespace qormodel::testing;

namespace {

// A repository with a committed "project.model" and the drivers set up.
class RunGit : public ::testing::Test {
protected:
    void SetUp() override {
        options.folder = folder.getFolder().string();
        options.environment = {
            {"HOME", options.folder},         {"GIT_CONFIG_NOSYSTEM", "1"},
            {"GIT_AUTHOR_NAME", "Tester"},    {"GIT_AUTHOR_EMAIL", "t@example.com"},
            {"GIT_COMMITTER_NAME", "Tester"}, {"GIT_COMMITTER_EMAIL", "t@example.com"}};
        ASSERT_EQ(runShell("command -v git").status, 0) << "there is no git";
        std::ofstream(folder.getFolder() / "project.model", std::ios::binary) << projectText;
        const RunResult result = shell(
            "git init -q -b main . && qormodel git-setup && "
            "git add project.model .gitattributes && git commit -qm base");
        ASSERT_EQ(result.status, 0) << result.err;
        setUpOutput = result.out;
    }

    RunResult shell(const std::string& line) const { return runShell(line, options); }
    std::string get(const std::string& path) const {
        return shell("qormodel get project.model " + path).out;
    }
    // Changes the file on a branch of its own and on the main one, and merges.
    RunResult mergeOf(const std::string& there, const std::string& here) const {
        return shell(
            "exec 2>&1; set -e; git checkout -qb side; "
            "qormodel set --no-backup project.model " +
            there +
            " >/dev/null; git commit -qam side; git checkout -q main; "
            "qormodel set --no-backup project.model " +
            here + " >/dev/null; git commit -qam main; git merge -q -m merged side");
    }

    TemporaryFile folder{""};
    RunOptions options;
    std::string setUpOutput;
};

}  // namespace

TEST_F(RunGit, SetsTheDriversUpOnce) {
    EXPECT_NE(setUpOutput.find("*.model diff=qormodel merge=qormodel\n"), std::string::npos);
    EXPECT_EQ(shell("git config merge.qormodel.name").out, "qormodel\n");
    const std::string attributes = contentOf(options.folder + "/.gitattributes");

    EXPECT_EQ(shell("qormodel git-setup").status, 0);

    EXPECT_EQ(attributes, "*.model diff=qormodel merge=qormodel\n");
    EXPECT_EQ(contentOf(options.folder + "/.gitattributes"), attributes);
}

TEST_F(RunGit, SetsThemUpForAllRepositories) {
    ASSERT_EQ(shell("qormodel git-setup --global --pattern '*.qor'").status, 0);

    EXPECT_EQ(contentOf(options.folder + "/.config/git/attributes"),
              "*.qor diff=qormodel merge=qormodel\n");
    EXPECT_NE(shell("git config --global diff.qormodel.command").out.find(" diff --git"),
              std::string::npos);
}

TEST_F(RunGit, FailsWithoutARepository) {
    const TemporaryFile elsewhere("");
    RunOptions outside = options;
    outside.folder = elsewhere.getFolder().string();

    const RunResult result = runQormodel({"git-setup"}, outside);

    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find("qormodel: git cannot tell the folder of the repository\n"),
              std::string::npos);
}

TEST_F(RunGit, ShowsOurDiff) {
    shell("qormodel set --no-backup project.model /Scans/Count=3");

    const RunResult result = shell("git --no-pager diff");

    EXPECT_EQ(result.out, "qormodel diff project.model\n~ /Scans/Count: 2 -> 3\n");
    EXPECT_EQ(result.status, 0);
}

TEST_F(RunGit, ShowsNewAndRemovedAndBrokenFiles) {
    shell("qormodel new --name Fresh fresh.model; git add -N fresh.model; rm project.model");
    const std::string diff = shell("git --no-pager diff").out;
    EXPECT_NE(diff.find("qormodel diff fresh.model\n"), std::string::npos) << diff;
    EXPECT_NE(diff.find("+ /Scans Container\n"), std::string::npos) << diff;
    EXPECT_NE(diff.find("- /Scans Object with 2 below\n"), std::string::npos) << diff;

    shell("echo broken > project.model");
    const RunResult broken = shell("git --no-pager diff -- project.model");
    EXPECT_EQ(broken.status, 0);
    EXPECT_NE(broken.out.find("\n? "), std::string::npos) << broken.out;
}

TEST_F(RunGit, MergesTwoBranches) {
    const RunResult result = mergeOf("/Scans/Count=3", "/Scans/Box/Size=4");

    EXPECT_EQ(result.status, 0) << result.out;
    EXPECT_EQ(get("/Scans/Count"), "3\n");
    EXPECT_EQ(get("/Scans/Box/Size"), "4\n");
    EXPECT_EQ(shell("git status --short -- 'project.model*'").out, "");
}

TEST_F(RunGit, LeavesAFileThatParsesInAConflict) {
    const RunResult result = mergeOf("/Scans/Count=3", "/Scans/Count=4");

    EXPECT_EQ(result.status, 1) << result.out;
    EXPECT_NE(result.out.find("qormodel: project.model: /Scans/Count: changed on both sides; was "
                              "\"2\"; here \"4\"; there \"3\"\n"),
              std::string::npos)
        << result.out;
    EXPECT_EQ(get("/Scans/Count"), "4\n");
    EXPECT_EQ(shell("git status --short -- 'project.model*'").out,
              "UU project.model\n?? project.model.conflicts.json\n");
}

TEST_F(RunGit, MergesFilesThatBothBranchesAdded) {
    const RunResult result = shell(
        "exec 2>&1; set -e; git checkout -qb side; qormodel new --name A x.model >/dev/null; "
        "git add x.model; git commit -qm side; git checkout -q main; "
        "qormodel new --name A x.model >/dev/null; git add x.model; git commit -qm main; "
        "git merge -q -m merged side");

    EXPECT_EQ(result.status, 1) << result.out;  // the identifiers of the two roots differ
    EXPECT_EQ(shell("qormodel get x.model /Name").out, "A\n");
}
