// Where the bytes of an input come from.
#include "io/SourceFile.h"

#include "Failure.h"
#include "io/SourceBuffer.h"
#include "support/RunProgram.h"
#include "support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <istream>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

using namespace qormodel;
using qormodel::testing::runShell;
using qormodel::testing::RunOptions;
using qormodel::testing::TemporaryFile;

namespace {

std::string failureOf(const std::string& file) {
    try {
        const SourceFile source(file);
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "";
}

}  // namespace

TEST(SourceFile, GivesAnyPieceOfAFile) {
    const TemporaryFile file("0123456789");
    const SourceFile source(file.getName());

    EXPECT_EQ(source.getSize(), 10u);
    EXPECT_EQ(source.slice(3, 6), "345");
    EXPECT_EQ(source.slice(8, 20), "89");
    EXPECT_EQ(source.getName(), file.getName());
}

TEST(SourceFile, TellsWhyAFileCannotBeRead) {
    const TemporaryFile file("");
    const std::string missing = (file.getFolder() / "missing").string();

    EXPECT_EQ(failureOf(missing), missing + ": cannot be read: No such file or directory");
    EXPECT_EQ(failureOf(file.getFolder().string()), file.getFolder().string() + ": is a folder");
}

TEST(SourceFile, CopiesAPipeToBeReadAtAnyPlace) {
    const TemporaryFile file("");
    const std::string pipe = (file.getFolder() / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const ::pid_t writer = ::fork();
    if (writer == 0) {  // half a megabyte: more than a pipe and the buffer of a read hold
        ::execl("/bin/sh", "sh", "-c", ("yes 123456789 | head -c 500000 > " + pipe).c_str(),
                nullptr);
        ::_exit(127);
    }

    const SourceFile source(pipe);

    EXPECT_EQ(source.getSize(), 500000u);
    EXPECT_EQ(source.slice(499990, 500000), "123456789\n");
    EXPECT_EQ(source.slice(0, 10), "123456789\n");
}

TEST(SourceFile, TakesTheStandardInputFromAPipeAndFromAFile) {
    RunOptions options;
    options.input = "\"T\"\n\"kVLib\" 9.1.0.0\nAttrContainer { \n}\n";

    const auto fromPipe = runShell("cat | qormodel get - /Name", options);
    const auto fromFile = runShell("qormodel get - /Name", options);

    EXPECT_EQ(fromPipe.status, 0) << fromPipe.err;
    EXPECT_EQ(fromFile.status, 0) << fromFile.err;
    EXPECT_EQ(fromPipe.out, fromFile.out);
}

TEST(SourceFile, TakesAnInputThatWasReadInPartFromWhereItStands) {
    RunOptions options;
    options.input = "drop\n\"T\"\n\"kVLib\" 9.1.0.0\nAttrContainer { \n}\n";

    const auto result =
        runShell("dd bs=5 count=1 of=/dev/null 2> /dev/null; qormodel fmt -", options);

    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out.substr(0, 4), "\"T\"\n");
}

TEST(SourceBuffer, CountsOffsetsAndLinesOverPieces) {
    std::string text;
    for (int i = 0; i < 100'000; ++i) text += "line\n";  // two pieces of a quarter megabyte
    const TemporaryFile file(text);
    const SourceFile source(file.getName());
    Progress progress("", 0);
    SourceBuffer buffer(source, 5, 2, progress);
    std::istream stream(&buffer);

    std::string line;
    for (int i = 0; i < 80'000; ++i) std::getline(stream, line);

    EXPECT_EQ(buffer.getOffset(), 5u + 400'000u);
    EXPECT_EQ(buffer.getLine(), 80'002u);
    while (std::getline(stream, line)) {
    }
    EXPECT_EQ(buffer.getOffset(), text.size());
    EXPECT_EQ(buffer.getLine(), 100'001u);
}

TEST(SourceFile, TellsThatSomebodyHasWrittenIntoItSince) {
    const TemporaryFile file("old");
    const SourceFile source(file.getName());
    EXPECT_FALSE(source.hasChanged());
    ::usleep(20'000);  // the clock of the file system ticks every few milliseconds
    std::ofstream(file.getName()) << "new";

    EXPECT_TRUE(source.hasChanged());
}

TEST(SourceFile, StaysTheSameWhereAnotherFileIsPutInItsPlace) {
    const TemporaryFile file("old");
    const SourceFile source(file.getName());
    const std::string fresh = (file.getFolder() / "fresh").string();
    std::ofstream(fresh) << "other";
    std::filesystem::rename(fresh, file.getName());

    EXPECT_FALSE(source.hasChanged());
    EXPECT_EQ(source.slice(0, 3), "old");
    EXPECT_NE(inqFileVersion(file.getName()), source.getVersion());
}
