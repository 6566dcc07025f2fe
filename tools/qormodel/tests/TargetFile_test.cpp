// That a file is replaced as a whole or not at all.
#include "io/TargetFile.h"

#include "Failure.h"
#include "support/RunProgram.h"
#include "support/Sample.h"
#include "support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace qormodel;
using namespace qormodel::testing;

namespace {

void put(const TargetFile& file, std::string_view text) {
    ASSERT_EQ(::write(file.getDescriptor(), text.data(), text.size()),
              static_cast<::ssize_t>(text.size()));
}

std::size_t numFilesIn(const std::filesystem::path& folder) {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator(folder), {}));
}

}  // namespace

TEST(TargetFile, KeepsTheOldContentUntilItIsReplaced) {
    const TemporaryFile file("old");
    TargetFile target(file.getName());
    put(target, "new");

    EXPECT_EQ(contentOf(file.getName()), "old");
    target.replace(true);

    EXPECT_EQ(contentOf(file.getName()), "new");
    EXPECT_EQ(contentOf(file.getName() + '~'), "old");
    EXPECT_EQ(numFilesIn(file.getFolder()), 2u);
}

TEST(TargetFile, LeavesNothingBehindWhereNothingIsReplaced) {
    const TemporaryFile file("old");
    {
        const TargetFile target(file.getName());
        put(target, "new");
    }

    EXPECT_EQ(contentOf(file.getName()), "old");
    EXPECT_EQ(numFilesIn(file.getFolder()), 1u);
}

TEST(TargetFile, KeepsNoBackupWhereNoneIsWanted) {
    const TemporaryFile file("old");
    TargetFile target(file.getName());
    put(target, "new");
    target.replace(false);

    EXPECT_EQ(contentOf(file.getName()), "new");
    EXPECT_EQ(numFilesIn(file.getFolder()), 1u);
}

TEST(TargetFile, MakesAFileThatWasNotThere) {
    const TemporaryFile file("");
    const std::string name = (file.getFolder() / "fresh").string();
    TargetFile target(name);
    put(target, "new");
    target.replace(true);

    EXPECT_EQ(contentOf(name), "new");
    EXPECT_FALSE(std::filesystem::exists(name + '~'));
}

TEST(TargetFile, ReplacesTheBackupOfTheTimeBefore) {
    const TemporaryFile file("1");
    for (const std::string_view content : {"2", "3"}) {
        TargetFile target(file.getName());
        put(target, content);
        target.replace(true);
    }

    EXPECT_EQ(contentOf(file.getName()), "3");
    EXPECT_EQ(contentOf(file.getName() + '~'), "2");
    EXPECT_EQ(numFilesIn(file.getFolder()), 2u);
}

// A program that was killed between backup and replacement leaves two names of one file.
TEST(TargetFile, LeavesNoThirdNameWhereTheBackupIsTheFileItself) {
    const TemporaryFile file("old");
    ASSERT_EQ(::link(file.getName().c_str(), (file.getName() + '~').c_str()), 0);
    TargetFile target(file.getName());
    put(target, "new");
    target.replace(true);

    EXPECT_EQ(contentOf(file.getName()), "new");
    EXPECT_EQ(contentOf(file.getName() + '~'), "old");
    EXPECT_EQ(numFilesIn(file.getFolder()), 2u);
}

TEST(TargetFile, ReplacesWhatASymbolicLinkLeadsTo) {
    const TemporaryFile file("old");
    const auto link = file.getFolder() / "link";
    std::filesystem::create_symlink("file.model", link);
    TargetFile target(link.string());
    put(target, "new");
    target.replace(true);

    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(contentOf(file.getName()), "new");
    EXPECT_EQ(contentOf(file.getName() + '~'), "old");
}

TEST(TargetFile, KeepsThePermissionsOfTheOldFile) {
    const TemporaryFile file("old");
    ASSERT_EQ(::chmod(file.getName().c_str(), 0640), 0);
    TargetFile target(file.getName());
    target.replace(false);
    struct ::stat status {};
    ASSERT_EQ(::stat(file.getName().c_str(), &status), 0);

    EXPECT_EQ(status.st_mode & 07777, 0640u);
}

TEST(TargetFile, WritesIntoWhatIsNoRegularFile) {
    const TemporaryFile file("");
    const std::string pipe = (file.getFolder() / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const std::string copy = (file.getFolder() / "copy").string();
    const ::pid_t reader = ::fork();
    if (reader == 0) {
        ::execl("/bin/sh", "sh", "-c", ("cat " + pipe + " > " + copy).c_str(), nullptr);
        ::_exit(127);
    }
    {
        TargetFile target(pipe);
        put(target, "new");
        target.replace(true);
    }
    ::waitpid(reader, nullptr, 0);

    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
    EXPECT_EQ(contentOf(copy), "new");
    EXPECT_FALSE(std::filesystem::exists(pipe + '~'));
}

TEST(TargetFile, RefusesAFolderAndAFolderThatIsNotThere) {
    const TemporaryFile file("");

    EXPECT_THROW(TargetFile(file.getFolder().string()), Failure);
    EXPECT_THROW(TargetFile((file.getFolder() / "no" / "file").string()), Failure);
}

TEST(TargetFile, RefusesAFileThatTheUserMayNotWriteAlthoughItsFolderWouldLetHim) {
    const TemporaryFile file("old");
    ASSERT_EQ(::chmod(file.getFolder().c_str(), 0777), 0);
    ASSERT_EQ(::chmod(file.getName().c_str(), 0444), 0);
    const ::pid_t user = ::fork();
    if (user == 0) {
        if (::geteuid() == 0 && ::setuid(65534) != 0) ::_exit(3);  // root may write anything
        try {
            const TargetFile target(file.getName());
        } catch (const Failure& failure) {
            ::_exit(failure.what() == file.getName() + ": cannot be written: Permission denied"
                        ? 0
                        : 2);
        }
        ::_exit(1);
    }
    int status = -1;
    ::waitpid(user, &status, 0);

    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(contentOf(file.getName()), "old");
    EXPECT_EQ(numFilesIn(file.getFolder()), 1u);
}

TEST(TargetFile, RefusesToReplaceAFileThatIsNotTheOneThatWasSeen) {
    const TemporaryFile file("old");
    const auto seen = inqFileVersion(file.getName());
    ASSERT_TRUE(seen);
    ::usleep(20'000);  // the clock of the file system ticks every few milliseconds
    std::ofstream(file.getName()) << "odd";
    {
        TargetFile target(file.getName());
        put(target, "new");
        EXPECT_THROW(target.replace(true, seen), Failure);
    }
    EXPECT_EQ(contentOf(file.getName()), "odd");
    EXPECT_EQ(numFilesIn(file.getFolder()), 1u);

    TargetFile target(file.getName());
    put(target, "new");
    target.replace(true, inqFileVersion(file.getName()));
    EXPECT_EQ(contentOf(file.getName()), "new");
    EXPECT_EQ(contentOf(file.getName() + '~'), "odd");
}

TEST(TargetFile, IsOldOrNewAsAWholeHoweverOftenTheProgramIsKilled) {
    std::string old = modelText("AttrContainer { Attr<IntVector> { Name \"L\" Value {");
    for (int i = 0; i < 20'000; ++i) old += ' ' + std::to_string(i);
    old += " } } }\n";
    const TemporaryFile file(old);
    const auto canonical = runQormodel({"fmt", file.getName()});
    ASSERT_EQ(canonical.status, 0) << canonical.err;
    ASSERT_NE(canonical.out, old);
    std::minstd_rand random(1);
    int numOld = 0;
    for (int i = 0; i < 100; ++i) {
        const TemporaryFile victim(old);
        const ::pid_t process = startQormodel({"fmt", "-i", victim.getName()});
        ::usleep(static_cast<unsigned>(random() % 60'000));
        ::kill(process, SIGKILL);
        ::waitpid(process, nullptr, 0);
        const std::string content = contentOf(victim.getName());
        numOld += content == old ? 1 : 0;
        ASSERT_TRUE(content == old || content == canonical.out) << "killed for time " << i;
    }
    EXPECT_GT(numOld, 0) << "no kill came ahead of the end";
}
