// How the instance numbers of a stream become the same in every process.
#include "io/InstanceNumbering.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

using namespace qormodel;

namespace {

// What comes out, put in whole and character by character.
std::string numbered(const std::string& text) {
    std::stringbuf whole;
    InstanceNumbering first(whole);
    first.sputn(text.data(), static_cast<std::streamsize>(text.size()));
    std::stringbuf single;
    InstanceNumbering second(single);
    for (const char character : text) second.sputc(character);
    EXPECT_EQ(single.str(), whole.str());
    return whole.str();
}

}  // namespace

TEST(InstanceNumbering, CountsInstancesInTheOrderInWhichTheyCome) {
    EXPECT_EQ(numbered("InstanceID 93411\nx\nInstanceID 512\nInstanceID 93411\n"),
              "InstanceID 1\nx\nInstanceID 2\nInstanceID 1\n");
}

TEST(InstanceNumbering, CountsTheListOfSharedInstancesFirst) {
    EXPECT_EQ(numbered("\nInstances { 70 30 \n}\nInstanceID 30\n"),
              "\nInstances { 1 2 \n}\nInstanceID 2\n");
}

TEST(InstanceNumbering, LeavesNumbersOfOtherLinesAlone) {
    const std::string text = "Value 93411\nName \"InstanceID 5\"\nInstanceIDs 4\n InstanceID 3\n";

    EXPECT_EQ(numbered(text), text);
}

TEST(InstanceNumbering, LeavesALineThatOnlyBeginsLikeOneAlone) {
    EXPECT_EQ(numbered("Inst\nInstance 12\nInstances 12\n"), "Inst\nInstance 12\nInstances 12\n");
}

TEST(InstanceNumbering, PassesBytesOnThatAreNoText) {
    const std::string text("Value \0\xff\x80 1\n", 11);

    EXPECT_EQ(numbered(text), text);
}
