// What of the output has colours, and what JSON looks like.
#include "terminal/JsonOutput.h"

#include "Failure.h"
#include "support/RunProgram.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include <fcntl.h>
#include <unistd.h>

using namespace qormodel;

namespace {

// What an output prints, since it writes to the descriptor itself.
template <class Print>
std::string printed(Print print) {
    const qormodel::testing::TemporaryFile file("");
    std::fflush(stdout);
    const int old = ::dup(STDOUT_FILENO);
    const int descriptor = ::open(file.getName().c_str(), O_WRONLY);
    ::dup2(descriptor, STDOUT_FILENO);
    ::close(descriptor);
    Output output;
    print(output);
    output.flush();
    ::dup2(old, STDOUT_FILENO);
    ::close(old);
    return qormodel::testing::contentOf(file.getName());
}

}  // namespace

TEST(Output, ColoursOnlyWhereColoursAreWanted) {
    Output output;
    output.setColourMode(ColourMode::Always);
    EXPECT_EQ(output.in(Output::Colour::Added, "+"), "\033[32m+\033[0m");
    EXPECT_EQ(output.in(Output::Colour::Removed, "-"), "\033[31m-\033[0m");
    EXPECT_EQ(output.in(Output::Colour::Changed, "~"), "\033[33m~\033[0m");
    EXPECT_EQ(output.in(Output::Colour::Unknown, "?"), "\033[35m?\033[0m");
    EXPECT_EQ(output.in(Output::Colour::Plain, "x"), "x");
    output.setColourMode(ColourMode::Never);
    EXPECT_EQ(output.in(Output::Colour::Added, "+"), "+");
}

TEST(Output, PrintsNothingThatWasNotFlushed) {
    EXPECT_EQ(printed([](Output& output) { output.print("{} {}\n", 1, "a"); }), "1 a\n");
    const std::string dropped = printed([](Output&) { Output().print("dropped"); });
    EXPECT_EQ(dropped, "");
}

TEST(JsonOutput, IsOneObjectWithItsVersionAndItsCommand) {
    const std::string text = printed([](Output& output) {
        printJson(output, "info", {{"number", 0.1}, {"text", "a"}});
    });

    EXPECT_EQ(text, "{\n  \"version\": 1,\n  \"command\": \"info\",\n  \"number\": 0.1,\n"
                    "  \"text\": \"a\"\n}\n");
}

TEST(JsonOutput, ReplacesBytesThatAreNoUtf8) {
    const std::string text =
        printed([](Output& output) { printJson(output, "get", {{"text", "a\xff"}}); });

    EXPECT_NE(text.find("\"text\": \"a\xef\xbf\xbd\""), std::string::npos) << text;
}

TEST(Output, PutsNoColourAroundNothing) {
    Output output;
    output.setColourMode(ColourMode::Always);

    EXPECT_EQ(output.in(Output::Colour::Faint, ""), "");
}

TEST(Failure, ShowsTheEndsOfAPathThatIsVeryLong) {
    const std::string whole = '/' + std::string(399, 'a');
    const std::string longer = "/front" + std::string(1000, 'x') + "/back";

    EXPECT_EQ(describe({"", 0, whole}, "text"), whole + ": text");
    EXPECT_EQ(describe({"", 0, longer}, "text"),
              "/front" + std::string(194, 'x') + "..." + std::string(195, 'x') + "/back: text");
}

TEST(Failure, TellsWhatIsKnownOfItsPlace) {
    EXPECT_EQ(describe({"f.model", 3, "/A"}, "text"), "f.model:3: /A: text");
    EXPECT_EQ(describe({"f.model", 0, ""}, "text"), "f.model: text");
    EXPECT_EQ(describe({"", 0, "/A"}, "text"), "/A: text");
    EXPECT_EQ(describe({}, "text"), "text");
}
