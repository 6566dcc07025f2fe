#include <AttributeContainer/RegKeys.h>

#include "support/RegistryStores.h"

#include <algorithm>

namespace QOR::AttributeContainer::Testing {

namespace {

using RegKeysText = OnStore;

INSTANTIATE_TEST_SUITE_P(Stores, RegKeysText, testing::ValuesIn(registryStores()),
                         keystore::Testing::nameOfStore);

// Data to set where the bytes do not matter.
constexpr unsigned char someData[] = {1, 2, 3, 4};

TEST_P(RegKeysText, StoresATextWithoutATerminatorAsExpandableText) {
    const RegKeys keys("A", root, false);
    EXPECT_TRUE(keys.setKey("Gain", "abc"));

    unsigned char data[10];
    unsigned long size = sizeof data;
    unsigned long type = 0;
    EXPECT_TRUE(keys.queryKey("Gain", data, &size, &type));
    EXPECT_EQ(size, 6u);
    EXPECT_EQ(type, 2u);
    EXPECT_EQ(keystore::dataToText(data, size), L"abc");
}

TEST_P(RegKeysText, ReadsATextThatItStoredOneCharacterShort) {
    const RegKeys keys("A", root, false);
    keys.setKey("Gain", "abc");

    EXPECT_EQ(keys.queryKey("Gain"), "ab");
    keys.setKey("Gain", "a");
    EXPECT_EQ(keys.queryKey("Gain"), "");
}

TEST_P(RegKeysText, ReadsATextWithATerminatorWhole) {
    const RegKeys keys("A", root, false);
    const unsigned char text[] = {'a', 0, 0xe9, 0, 0, 0};
    keys.setKey("Gain", text, sizeof text, 2);

    EXPECT_EQ(keys.queryKey("Gain"), "a\xc3\xa9");
}

TEST_P(RegKeysText, ReadsStoredSizesBelowTwoAsEmpty) {
    const RegKeys keys("A", root, false);
    keys.setKey("None", someData, 0, 2);
    keys.setKey("One", someData, 1, 2);
    keys.setKey("Two", someData, 2, 2);
    keys.setKey("Three", someData, 3, 2);

    for (const char* const name : {"None", "One", "Two", "Three", "Missing"})
        EXPECT_EQ(keys.queryKey(name), "") << name;
}

TEST_P(RegKeysText, ReadsAValueOf1024BytesOrMoreAsEmpty) {
    const RegKeys keys("A", root, false);
    EXPECT_TRUE(keys.setKey("Longest", std::string(511, 'x')));
    EXPECT_TRUE(keys.setKey("TooLong", std::string(512, 'x')));
    EXPECT_TRUE(keys.setKey("MuchTooLong", std::string(5000, 'x')));

    EXPECT_EQ(keys.queryKey("Longest"), std::string(510, 'x'));
    EXPECT_EQ(keys.queryKey("TooLong"), "");
    EXPECT_EQ(keys.queryKey("MuchTooLong"), "");
}

TEST_P(RegKeysText, ReadsCharactersWithoutANarrowFormAsUnderscores) {
    const RegKeys keys("A", root, false);
    const unsigned char halfOfAPair[] = {'a', 0, 0x00, 0xd8, 'b', 0, 0, 0};
    keys.setKey("Gain", halfOfAPair, sizeof halfOfAPair, 2);

    EXPECT_EQ(keys.queryKey("Gain"), "a_b");
}

TEST_P(RegKeysText, CountsUtf16UnitsInWhatItStores) {
    const RegKeys keys("A", root, false);
    keys.setKey("Gain", "\xf0\x9f\x98\x80x");  // a pair and a letter
    unsigned char data[10];
    unsigned long size = sizeof data;
    unsigned long type = 0;

    EXPECT_TRUE(keys.queryKey("Gain", data, &size, &type));
    EXPECT_EQ(size, 6u);
    EXPECT_EQ(keys.queryKey("Gain"), "\xf0\x9f\x98\x80");
}

TEST_P(RegKeysText, StoresAnEmptyTextAsAValueOfNoBytes) {
    makeKey(L"A\\Gain");
    const RegKeys keys("A", root, false);

    EXPECT_TRUE(keys.setKey("Gain", ""));

    EXPECT_EQ(valueAt(L"A", L"Gain"), L"");
    EXPECT_TRUE(hasKey(L"A\\Gain")) << "the subkey of that name stays";
}

TEST_P(RegKeysText, DeletesASubkeyAndNotAValueForNullData) {
    makeKey(L"A\\Gain");
    const RegKeys keys("A", root, false);
    keys.setKey("Gain", "1");

    EXPECT_TRUE(keys.setKey("Gain", nullptr, 0, 0));

    EXPECT_FALSE(hasKey(L"A\\Gain"));
    EXPECT_EQ(valueAt(L"A", L"Gain"), L"1");
    EXPECT_FALSE(keys.setKey("Gain", nullptr, 0, 0));
}

TEST_P(RegKeysText, UsesTheRootItselfWithoutAPrefix) {
    const RegKeys keys("", root, false);

    EXPECT_TRUE(keys.setKey("Gain", "125"));
    EXPECT_EQ(valueAt(L"", L"Gain"), L"125");
    EXPECT_EQ(keys.queryKey("Gain"), "12");
}

TEST_P(RegKeysText, StoresNothingThroughARootForReading) {
    const keystore::HKEY a = openKey(L"A", keystore::KeyRead);
    const RegKeys keys("", a, true);

    EXPECT_FALSE(keys.setKey("Gain", "1"));
    EXPECT_FALSE(keys.deleteValue("Gain"));
}

TEST_P(RegKeysText, ReadsDataWithItsSizeAndType) {
    const RegKeys keys("A", root, false);
    keys.setKey("Gain", someData, 4, 3);
    unsigned char data[4] = {};
    unsigned long size = 3;
    unsigned long type = 0;

    EXPECT_FALSE(keys.queryKey("Gain", data, &size, &type));
    EXPECT_EQ(size, 4u);
    EXPECT_TRUE(keys.queryKey("Gain", data, &size, &type));
    EXPECT_EQ(data[3], 4);
    EXPECT_EQ(type, 3u);
}

TEST_P(RegKeysText, ReadsNoDataIntoNull) {
    const RegKeys keys("A", root, false);
    keys.setKey("Gain", someData, 4, 3);
    unsigned char data[4];
    unsigned long size = 4;
    unsigned long type = 0;
    unsigned long none = 0;

    EXPECT_FALSE(keys.queryKey("Gain", nullptr, &size, &type));
    EXPECT_FALSE(keys.queryKey("Gain", data, nullptr, &type));
    EXPECT_FALSE(keys.queryKey("Gain", data, &size, nullptr));
    EXPECT_FALSE(keys.queryKey("Gain", data, &none, &type));
}

TEST(RegKeys, LaysAListOfOneTextOut) {
    unsigned char buffer[12];
    std::fill(std::begin(buffer), std::end(buffer), static_cast<unsigned char>('#'));

    EXPECT_EQ(RegKeys::stringToMultiSZ(buffer, 10, "abc"), 10);

    const unsigned char expected[] = {'a', 0, 'b', 0, 'c', 0, 0, 0, 0, 0, '#', '#'};
    for (int i = 0; i < 12; ++i) EXPECT_EQ(buffer[i], expected[i]) << i;
}

TEST(RegKeys, LaysNoListOutThatDoesNotFit) {
    unsigned char buffer[12] = {'#'};

    EXPECT_EQ(RegKeys::stringToMultiSZ(buffer, 9, "abc"), 0);
    EXPECT_EQ(RegKeys::stringToMultiSZ(buffer, 0, "abc"), 0);
    EXPECT_EQ(RegKeys::stringToMultiSZ(buffer, 12, ""), 0);
    EXPECT_EQ(RegKeys::stringToMultiSZ(nullptr, 12, "abc"), 0);
    EXPECT_EQ(buffer[0], '#');
}

TEST(RegKeys, FillsAListWithZerosWhereItsCharactersHaveMoreBytesThanUnits) {
    unsigned char buffer[8];
    std::fill(std::begin(buffer), std::end(buffer), static_cast<unsigned char>('#'));

    EXPECT_EQ(RegKeys::stringToMultiSZ(buffer, 8, "\xc3\xa9"), 8);  // one letter of two bytes

    const unsigned char expected[] = {0xe9, 0, 0, 0, 0, 0, 0, 0};
    for (int i = 0; i < 8; ++i) EXPECT_EQ(buffer[i], expected[i]) << i;
}

TEST_P(RegKeysText, ReadsAValueOf1023Bytes) {
    const RegKeys keys("A", root, false);
    std::string data;
    for (int i = 0; i < 512; ++i) data += std::string("x\0", 2);
    const auto* const bytes = reinterpret_cast<const unsigned char*>(data.data());
    keys.setKey("Fits", bytes, 1023, 2);
    keys.setKey("DoesNot", bytes, 1024, 2);

    EXPECT_EQ(keys.queryKey("Fits"), std::string(510, 'x'));  // 511 whole units without the last
    EXPECT_EQ(keys.queryKey("DoesNot"), "");
}

TEST_P(RegKeysText, LeavesHalfOfTheLastCharacterWhereItHasTwoUnits) {
    const RegKeys keys("A", root, false);
    keys.setKey("Gain", "x\xf0\x9f\x98\x80");

    EXPECT_EQ(keys.queryKey("Gain"), "x_");
}

TEST_P(RegKeysText, StoresAndReadsTheDefaultValueOfAKey) {
    const RegKeys keys("A", root, false);

    EXPECT_TRUE(keys.setKey("", "abc"));
    EXPECT_EQ(valueAt(L"A", L""), L"abc");
    EXPECT_EQ(keys.queryKey(""), "ab");
}

}  // namespace

}  // namespace QOR::AttributeContainer::Testing
