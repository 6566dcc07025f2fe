// A panorama is turned once in the life of a stored picture.
#include <AttributeContainer/PanoramaPicture.h>

#include "support/BlockText.h"
#include "support/ObserverActors.h"
#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;
using QOR::Mat4d;

namespace {

using Matrix = Mat4d<double>;

const Matrix place{{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 0, 0, 0, 1}};
// The same behind half a circle about z: the rows of x and y change their sign.
const Matrix turnedPlace{{-1, -2, -3, -4, -5, -6, -7, -8, 9, 10, 11, 12, 0, 0, 0, 1}};
const Matrix halfTurn{{-1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};

// The body of a picture that has these attributes alone.
std::string picture(const std::string& attributes) { return containerBlock(attributes) + '\n'; }
const std::string placeBlock =
    attributeBlock("Mat4dd", "Transformation", "1 2 3 4  5 6 7 8  9 10 11 12  0 0 0 1  ");

// How a picture stands after it was read from a text.
struct Read {
    std::shared_ptr<PanoramaPicture> panorama = PanoramaPicture::create();
    std::optional<ErrorCode> code;

    explicit Read(const std::string& text) : code(readText(*panorama, text)) {}
};

void expectSettled(const PanoramaPicture& panorama, const Matrix& transformation,
                   unsigned int flags) {
    EXPECT_EQ(panorama.Transformation(), transformation);
    EXPECT_EQ(panorama.TrafoFixedFlags(), flags);
    EXPECT_EQ(panorama.Spherical(), 1);
}

}  // namespace

TEST(PanoramaPictureReading, TurnsAPictureWhoseStreamHasNoFlags) {
    const Read read(picture(placeBlock));

    EXPECT_EQ(read.code, std::nullopt);
    expectSettled(*read.panorama, turnedPlace, 1);
}

TEST(PanoramaPictureReading, TurnsAPictureWhoseStreamHasTheFlagClear) {
    const Read read(picture(placeBlock + attributeBlock("uint32_t", "TrafoFixedFlags", "0")));

    expectSettled(*read.panorama, turnedPlace, 1);
}

TEST(PanoramaPictureReading, KeepsTheOtherFlags) {
    expectSettled(
        *Read(picture(placeBlock + attributeBlock("uint32_t", "TrafoFixedFlags", "4294967294")))
             .panorama,
        turnedPlace, 4294967295u);
    expectSettled(
        *Read(picture(placeBlock + attributeBlock("uint32_t", "TrafoFixedFlags", "7"))).panorama,
        place, 7);
}

TEST(PanoramaPictureReading, ChangesNothingWhereTheStreamHasTheFlag) {
    const Read read(picture(attributeBlock("uint32_t", "TrafoFixedFlags", "1") + placeBlock));

    expectSettled(*read.panorama, place, 1);
}

TEST(PanoramaPictureReading, TurnsTheIdentityWhereTheStreamHasNoTransformation) {
    expectSettled(*Read(picture("")).panorama, halfTurn, 1);
}

TEST(PanoramaPictureReading, TurnsExactly) {
    const Read read(picture(""));

    EXPECT_EQ(read.panorama->Transformation()(0, 1), 0.0);
    EXPECT_EQ(read.panorama->Transformation()(1, 0), 0.0);
    EXPECT_EQ(read.panorama->Transformation()(0, 0), -1.0);
}

TEST(PanoramaPictureReading, MakesThePictureSphericalWhateverTheStreamSays) {
    EXPECT_EQ(Read(picture(attributeBlock("int", "Spherical", "0"))).panorama->Spherical(), 1);
    EXPECT_EQ(Read(picture(attributeBlock("int", "Spherical", "5"))).panorama->Spherical(), 1);
}

TEST(PanoramaPictureReading, TurnsOnceOverWriteReadWriteRead) {
    const auto oldStream = childBlock("PanoramaPicture", "P1", picture(placeBlock)) + "\n";
    auto root = Object::create();
    ASSERT_EQ(readText(*root, oldStream), std::nullopt);

    std::string former;
    for (int round = 0; round < 3; ++round) {
        const auto panorama = std::dynamic_pointer_cast<PanoramaPicture>(root->inqChild("P1"));
        ASSERT_NE(panorama, nullptr);
        expectSettled(*panorama, turnedPlace, 1);
        const std::string stream = written(*root);
        EXPECT_NE(stream.find("Name \"TrafoFixedFlags\"\nValue 1\n"), std::string::npos);
        EXPECT_TRUE(round == 0 || stream == former) << stream;
        former = stream;
        root = Object::create();
        ASSERT_EQ(readText(*root, stream), std::nullopt);
    }
}

TEST(PanoramaPictureReading, DoesNotTurnAPictureOfItsOwnMaking) {
    const auto root = Object::create();
    const auto panorama = addNamed<PanoramaPicture>(*root, "P1");
    panorama->Transformation(place);

    for (int round = 0; round < 2; ++round) {
        const auto copy = Object::create();
        ASSERT_EQ(readText(*copy, written(*root)), std::nullopt);
        const auto same = std::dynamic_pointer_cast<PanoramaPicture>(copy->inqChild("P1"));
        ASSERT_NE(same, nullptr);
        expectSettled(*same, place, 1);
    }
}

TEST(PanoramaPictureReading, TurnsACopyNoMore) {
    const Read read(picture(placeBlock));

    const auto copy =
        std::dynamic_pointer_cast<PanoramaPicture>(read.panorama->duplicate(CreateDeep));
    ASSERT_NE(copy, nullptr);
    const Read again(written(*copy));

    expectSettled(*again.panorama, turnedPlace, 1);
}

TEST(PanoramaPictureReading, TurnsAPictureThatIsReadAgainFromAStreamWithoutFlags) {
    const auto panorama = PanoramaPicture::create();
    ASSERT_EQ(readText(*panorama, picture(placeBlock)), std::nullopt);

    ASSERT_EQ(readText(*panorama, picture(placeBlock)), std::nullopt);

    expectSettled(*panorama, turnedPlace, 1);
}

TEST(PanoramaPictureReading, TurnsAlsoWhereTheReadFails) {
    const Read read(picture(placeBlock + "\nAttr<ScanPt> { \nName \"x\"\n}"));

    EXPECT_EQ(read.code, ErrorCode::AttributeNotCreated);
    expectSettled(*read.panorama, turnedPlace, 1);
}

TEST(PanoramaPictureReading, TurnsAlsoWithoutAContext) {
    const auto panorama = PanoramaPicture::create();
    std::istringstream stream(picture(placeBlock));

    EXPECT_EQ(codeOf(panorama->readFrom(stream, nullptr)), ErrorCode::ContextMissing);

    expectSettled(*panorama, halfTurn, 1);
    EXPECT_EQ(stream.tellg(), 0);
}

TEST(PanoramaPictureReading, TurnsAlsoWhereANumberIsMalformed) {
    const auto panorama = PanoramaPicture::create();

    EXPECT_THROW(readText(*panorama, picture(placeBlock + attributeBlock("double", "Gain", "1e"))),
                 std::invalid_argument);

    expectSettled(*panorama, turnedPlace, 1);
}

TEST(PanoramaPictureReading, GivesTheWarningOfTheRead) {
    const Read read(picture(placeBlock) + childBlock("Foo", "f", "\nBar 1") + "\n");

    EXPECT_EQ(read.code, ErrorCode::ObjectNotCreated);
    expectSettled(*read.panorama, turnedPlace, 1);
}

TEST(PanoramaPictureReading, TellsOfTheTurnAsOfAnyChange) {
    const auto panorama = PanoramaPicture::create();
    const auto counter = watch(panorama->Attr_Transformation());

    ASSERT_EQ(readText(*panorama, picture("")), std::nullopt);
    EXPECT_EQ(counter->told, 1);

    ASSERT_EQ(readText(*panorama, picture(attributeBlock("uint32_t", "TrafoFixedFlags", "1"))),
              std::nullopt);
    EXPECT_EQ(counter->told, 1);
}
