// That one run at a time changes a file.
#include "io/FileLock.h"

#include "support/RunProgram.h"
#include "support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace qormodel;
using qormodel::testing::contentOf;
using qormodel::testing::TemporaryFile;

namespace {

// Whether somebody holds the lock of what stands under the name now.
bool isLocked(const std::string& file) {
    const int descriptor = ::open(file.c_str(), O_RDWR | O_CLOEXEC);
    struct ::flock whole {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    const bool isRefused = ::fcntl(descriptor, F_OFD_SETLK, &whole) != 0;
    ::close(descriptor);
    return isRefused;
}

}  // namespace

TEST(FileLock, HoldsAFileAsLongAsItLives) {
    const TemporaryFile file("old");
    {
        const FileLock lock(file.getName());
        EXPECT_TRUE(lock.isHeld());
        EXPECT_TRUE(isLocked(file.getName()));
    }

    EXPECT_FALSE(isLocked(file.getName()));
    EXPECT_EQ(contentOf(file.getName()), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(file.getFolder()), {}), 1);
}

TEST(FileLock, HoldsNothingWhereThereIsNoRegularFile) {
    const TemporaryFile file("");
    const std::string pipe = (file.getFolder() / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);

    EXPECT_FALSE(FileLock().isHeld());
    EXPECT_FALSE(FileLock(pipe).isHeld());
    EXPECT_FALSE(FileLock("/dev/null").isHeld());
    EXPECT_FALSE(FileLock(file.getFolder().string()).isHeld());
    EXPECT_FALSE(FileLock((file.getFolder() / "none").string()).isHeld());
}

TEST(FileLock, WaitsForTheOneThatHoldsTheFile) {
    const TemporaryFile file("old");
    std::atomic<bool> isEntered{false};
    std::thread other;
    {
        const FileLock lock(file.getName());
        other = std::thread([&] {
            const FileLock second(file.getName());
            isEntered = second.isHeld();
        });
        ::usleep(100'000);
        EXPECT_FALSE(isEntered);
    }
    other.join();

    EXPECT_TRUE(isEntered);
}

TEST(FileLock, IsThatOfTheNewFileWhereTheOldOneWasReplacedMeanwhile) {
    const TemporaryFile file("old");
    const std::string fresh = (file.getFolder() / "fresh").string();
    std::ofstream(fresh) << "new";
    std::atomic<bool> isNewLocked{false};
    std::thread other;
    {
        const FileLock lock(file.getName());
        other = std::thread([&] {
            const FileLock second(file.getName());
            isNewLocked = second.isHeld() && isLocked(file.getName());
        });
        ::usleep(50'000);
        std::filesystem::rename(fresh, file.getName());
    }
    other.join();

    EXPECT_TRUE(isNewLocked);
    EXPECT_EQ(contentOf(file.getName()), "new");
}
