// What is told of model files that come into a key store and out of it.
#include "io/FileLock.h"

#include "support/OnStore.h"
#include "support/Sample.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

using namespace qormodel::testing;

TEST_F(OnStore, RefusesAnEmptyTextInAList) {
    const RunResult result = run({"set", "K", "m=a\nb\n\nc", "--type", "multi"});

    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err,
              "qormodel: a list has no empty texts, since one ends it: line 3 is empty\n");
    EXPECT_FALSE(isThere("s.db"));
    EXPECT_EQ(run({"set", "K", "m=a\nb\n", "n=", "--type", "multi"}).status, 0);
    EXPECT_EQ(run({"get", "K"}).out, "m = a\nb\nn = \n");
}

TEST_F(OnStore, TellsOfAllLongTextsInOneLine) {
    const std::string text(512, 'x');
    const auto attribute = [&](const std::string& name) {
        return "Attr<String> { \nName \"" + name + "\"\nValue \"" + text + "\"\n}\n";
    };
    const std::string what =
        " 512 characters or more as a text, which programs that read with "
        "the library's own visitor pass over\n";
    const std::string head = "\"Test\"\n\"kVLib\" 9.1.0.0\nAttrContainer { \n";
    put("one.model", head + attribute("A") + "}\n");
    put("three.model", head + attribute("A") + attribute("B") + attribute("C") + "}\n");

    EXPECT_EQ(run({"import", "one.model", "--key", "K"}).err,
              "qormodel: one.model: /A: has" + what);
    const RunResult three = run({"import", "three.model", "--key", "L"});
    EXPECT_EQ(three.err, "qormodel: three.model: /A: and 2 other values have" + what);
    EXPECT_TRUE(three.out.starts_with("1 key, ")) << three.out;
}

TEST_F(OnStore, TellsWhichValuesHaveNoPlaceInTheFileThatTheyComeInto) {
    ASSERT_EQ(run({"import", "project.model", "--key", "P"}).status, 0);
    EXPECT_EQ(run({"export", "--key", "P", "--into", "project.model"}).err, "");
    ASSERT_EQ(run({"set", "P", "MyNew=1"}).status, 0);
    EXPECT_EQ(run({"export", "--key", "P", "--into", "project.model"}).err,
              "qormodel: s.db: 1 value not taken over, as project.model has no place for it: "
              "P\\MyNew\n");
    ASSERT_EQ(run({"set", "P\\NewKey", "a=1", "b=1", "c=1", "d=1", "@=1"}).status, 0);

    const RunResult result = run({"export", "--key", "P", "--into", "project.model"});

    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err,
              "qormodel: s.db: 6 values not taken over, as project.model has no place for them: "
              "P\\MyNew, P\\NewKey\\@, P\\NewKey\\a, P\\NewKey\\b, P\\NewKey\\c, ...\n");
}

TEST_F(OnStore, WaitsForAnotherRunThatChangesTheFileOfInto) {
    ASSERT_EQ(run({"import", "project.model", "--key", "P"}).status, 0);
    std::atomic<bool> isDone = false;
    RunResult result;
    std::thread other;
    {
        const qormodel::FileLock lock(options.folder + "/project.model");
        ASSERT_TRUE(lock.isHeld());
        other = std::thread([&] {
            result = run({"export", "--key", "P", "--into", "project.model"});
            isDone = true;
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(1500));
        EXPECT_FALSE(isDone);
    }
    other.join();
    EXPECT_EQ(result.status, 0) << result.err;
}

TEST_F(OnStore, ReadsAStoreThatMayOnlyBeRead) {
    ASSERT_EQ(run({"set", "A\\B", "x=1"}).status, 0);
    // Root may write anything, so another user reads; what is left in the folder for temporary
    // files is told in the end.
    const auto asOther = [&](const std::string& command) {
        return runShell(
            "chmod 444 s.db; chmod 755 .; mkdir -m 777 -p temporary; "
            "as='setpriv --reuid=65534 --regid=65534 --clear-groups'; "
            "[ $(id -u) = 0 ] || as=; before=$(cksum s.db); "
            "TMPDIR=$PWD/temporary $as qormodel store --store s.db " +
                command +
                "; status=$?; [ \"$before\" = \"$(cksum s.db)\" ] || echo changed; "
                "ls temporary; exit $status",
            options);
    };

    const RunResult list = asOther("ls -r");
    EXPECT_EQ(list.status, 0) << list.err;
    EXPECT_EQ(list.out, "A\\\nA\\B\\\nA\\B\\x = 1 text\n");
    EXPECT_EQ(asOther("get 'A\\B' x").out, "1\n");
    EXPECT_EQ(asOther("export --key 'A\\B' --as reg4 -o -").status, 0);
    const RunResult set = asOther("set A y=2");
    EXPECT_EQ(set.status, 2);
    EXPECT_EQ(set.err, "qormodel: s.db: the file cannot be written\n");
    EXPECT_EQ(asOther("rm -r A").status, 2);
}
