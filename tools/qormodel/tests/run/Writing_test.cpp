// Several programs that change one file, and files that are not to be changed.
#include "support/InFolder.h"
#include "support/RunProgram.h"
#include "support/Sample.h"

#include "io/FileLock.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <optional>
#include <string>
#include <thread>

#include <unistd.h>

using namespace qormodel::testing;

namespace {

class RunWriters : public InFolder {
protected:
    RunWriters() {
        put("project.model", projectText);
        changed.replace(changed.find("Value 2\n"), 8, "Value 7\n");
        put("changed.model", changed);
    }

    // Runs a command that has read the project once it opens "pipe"; then the project is changed
    // by `change`, and the command goes on. Its status is that of the line.
    RunResult runWhile(const std::string& command, const std::string& change) const {
        return runShell("mkfifo pipe; " + command + " & exec 3> pipe; " + change +
                            "; cat changed.model >&3; exec 3>&-; wait $!",
                        options);
    }
    void expectRefusal(const RunResult& result, const std::string& file = "project.model") const {
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err,
                  "qormodel: " + file + ": has changed since it was read: nothing is written\n");
        EXPECT_FALSE(isThere("project.model~"));
        EXPECT_EQ(numFiles(), 3);  // and the pipe: nothing else is left
    }
    std::ptrdiff_t numFiles() const {
        return std::distance(std::filesystem::directory_iterator(folder.getFolder()), {}) - 1;
    }

    std::string changed = projectText;
    const std::string touched = "cp changed.model project.model";
};

}  // namespace

TEST_F(RunWriters, KeepTheChangesOfAllWhereTheyComeAtTheSameTime) {
    const RunResult result = runShell(
        "for i in 1 2 3 4 5 6 7 8 9 10; do "
        "qormodel set project.model /Scans/N$i=$i --add int & done; wait",
        options);

    EXPECT_EQ(result.err, "");
    for (int i = 1; i <= 10; ++i) {
        const std::string number = std::to_string(i);
        EXPECT_EQ(runQormodel({"get", "project.model", "/Scans/N" + number}, options).out,
                  number + '\n');
    }
    EXPECT_TRUE(isThere("project.model~"));
    EXPECT_EQ(numFiles(), 3);
}

TEST_F(RunWriters, RefuseToReplaceAFileThatWasWrittenSinceItWasRead) {
    expectRefusal(runWhile("qormodel merge project.model pipe", touched));

    EXPECT_EQ(content("project.model"), changed);
}

TEST_F(RunWriters, RefuseToReplaceAFileThatWasReplacedOrRemovedSinceItWasRead) {
    expectRefusal(runWhile("qormodel merge project.model pipe",
                           "cp changed.model other; mv other project.model"));
    EXPECT_EQ(content("project.model"), changed);

    runShell("rm pipe; mv changed.model kept; cp kept changed.model", options);
    const RunResult removed = runWhile("qormodel merge project.model pipe", "rm project.model");
    EXPECT_EQ(removed.status, 2);
    EXPECT_FALSE(isThere("project.model"));
}

TEST_F(RunWriters, RefuseItForAnyFileThatTheyRead) {
    expectRefusal(runWhile("qormodel merge project.model changed.model pipe -o ./project.model",
                           touched),
                  "./project.model");
    EXPECT_EQ(content("project.model"), changed);
}

TEST_F(RunWriters, RefuseItForAFileThatIsPrintedIntoItself) {
    expectRefusal(
        runWhile("qormodel cat --as json project.model pipe -o project.model", touched));
    EXPECT_EQ(content("project.model"), changed);
}

TEST_F(RunWriters, ReplaceAFileThatTheyDoNotReadWhateverHappensToIt) {
    put("out.model", "old");

    const RunResult result = runWhile("qormodel merge project.model pipe -o out.model",
                                      "echo newer > out.model");

    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(content("out.model"), changed);
    EXPECT_EQ(content("out.model~"), "newer\n");
}

TEST_F(RunWriters, WaitForTheOneThatHoldsTheFileAndTellSoAfterASecond) {
    std::optional<qormodel::FileLock> lock(std::in_place,
                                           (folder.getFolder() / "project.model").string());
    RunResult result;
    std::thread other(
        [&] { result = runQormodel({"set", "project.model", "/Scans/Count=3"}, options); });
    ::usleep(2'000'000);
    EXPECT_EQ(content("project.model"), projectText);
    // What does not replace the file waits for nobody.
    EXPECT_EQ(runShell("qormodel set project.model /Scans/Count=4 -o - > /dev/null && "
                       "qormodel set project.model /Scans/Count=4 --dry-run && "
                       "qormodel get project.model /Scans/Count && qormodel fmt project.model "
                       "> /dev/null",
                       options)
                  .out,
              "~ /Scans/Count: 2 -> 4\n2\n");
    lock.reset();
    other.join();

    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "~ /Scans/Count: 2 -> 3\n");
    EXPECT_EQ(result.err,
              "qormodel: project.model: is being changed by another qormodel: waiting for its "
              "end\n");
    EXPECT_EQ(runQormodel({"get", "project.model", "/Scans/Count"}, options).out, "3\n");
}
