#include "StoreConformance.h"

#include <array>

namespace QOR::keystore::Testing {

namespace {

// "abc" in stored form, and two bytes behind it.
const std::string abcAndMore("a\0b\0c\0\0\0", 8);

std::string bytes(std::size_t count) { return abcAndMore.substr(0, count); }

}  // namespace

TEST_P(StoreConformance, GivesBackBytesAndType) {
    const Handle key = created(root, L"A");
    const std::string stored("\0\1\xff\0", 4);
    EXPECT_EQ(setBytes(key, L"Gain", stored, TypeBinary), Success);

    const Answer answer = query(key, L"Gain");

    EXPECT_EQ(answer.status, Success);
    EXPECT_EQ(answer.bytes, stored);
    EXPECT_EQ(answer.type, TypeBinary);
    EXPECT_EQ(answer.size, 4u);
}

TEST_P(StoreConformance, KeepsTypesThatNobodyKnows) {
    const Handle key = created(root, L"A");
    setBytes(key, L"Gain", "x", 12345);

    EXPECT_EQ(query(key, L"Gain").type, 12345u);
}

TEST_P(StoreConformance, ReplacesAValueAndItsType) {
    const Handle key = created(root, L"A");
    setBytes(key, L"Gain", "long before", TypeBinary);
    setBytes(key, L"Gain", bytes(2), TypeExpandText);

    EXPECT_EQ(query(key, L"Gain").bytes, bytes(2));
    EXPECT_EQ(query(key, L"Gain").type, TypeExpandText);
    EXPECT_EQ(valuesOf(key), Names{L"Gain"});
}

TEST_P(StoreConformance, KeepsTheFirstCaseOfValueNamesAndComparesWithoutIt) {
    const Handle key = created(root, L"A");
    setBytes(key, L"Gain", "1");
    setBytes(key, L"GAIN", "2");

    EXPECT_EQ(query(key, L"gain").bytes, "2");
    EXPECT_EQ(valuesOf(key), Names{L"Gain"});
    EXPECT_EQ(RegDeleteValueW(key, L"gAIN"), Success);
    EXPECT_EQ(valuesOf(key), Names{});
}

TEST_P(StoreConformance, StoresTextWithoutTheZeroThatLiesBehindIt) {
    const Handle key = created(root, L"A");
    for (const unsigned long type : {TypeText, TypeExpandText, TypeMultiText}) {
        const auto* const data = reinterpret_cast<const unsigned char*>(abcAndMore.data());
        RegSetValueExW(key, L"Text", 0, type, data, 6);

        EXPECT_EQ(query(key, L"Text").size, 6u) << type;
        EXPECT_EQ(query(key, L"Text").bytes, bytes(6)) << type;
    }
}

TEST_P(StoreConformance, StoresTextOfAnOddNumberOfBytes) {
    const Handle key = created(root, L"A");
    setBytes(key, L"Text", bytes(5), TypeExpandText);

    EXPECT_EQ(query(key, L"Text").bytes, bytes(5));
}

TEST_P(StoreConformance, StoresATerminatorThatIsPartOfTheData) {
    const Handle key = created(root, L"A");
    setBytes(key, L"Text", bytes(8), TypeExpandText);

    EXPECT_EQ(query(key, L"Text").bytes, bytes(8));
}

TEST_P(StoreConformance, TellsTheSizeThatABufferWantsForAValue) {
    const Handle key = created(root, L"A");
    setBytes(key, L"Gain", "abcd");

    const Answer answer = query(key, L"Gain", 3);

    EXPECT_EQ(answer.status, MoreData);
    EXPECT_EQ(answer.size, 4u);
    EXPECT_EQ(answer.type, TypeBinary);
    EXPECT_EQ(answer.bytes, "###") << "the buffer stays as it is";
    EXPECT_EQ(query(key, L"Gain", 0).status, MoreData);
    EXPECT_EQ(query(key, L"Gain", 4).status, Success);
}

TEST_P(StoreConformance, TellsSizeAndTypeWithoutABuffer) {
    const Handle key = created(root, L"A");
    setBytes(key, L"Gain", "abcd");
    unsigned long size = 1;
    unsigned long type = 0;

    EXPECT_EQ(RegQueryValueExW(key, L"Gain", nullptr, &type, nullptr, &size), Success);
    EXPECT_EQ(size, 4u);
    EXPECT_EQ(type, TypeBinary);
    EXPECT_EQ(RegQueryValueExW(key, L"Gain", nullptr, nullptr, nullptr, nullptr), Success);
}

TEST_P(StoreConformance, RefusesABufferWithoutASize) {
    const Handle key = created(root, L"A");
    setBytes(key, L"Gain", "abcd");
    unsigned char buffer[8];

    EXPECT_EQ(RegQueryValueExW(key, L"Gain", nullptr, nullptr, buffer, nullptr), InvalidParameter);
}

TEST_P(StoreConformance, AnswersAMissingValue) {
    const Handle key = created(root, L"A");
    unsigned long size = 5;

    EXPECT_EQ(query(key, L"Gain").status, FileNotFound);
    EXPECT_EQ(RegQueryValueExW(key, L"Gain", nullptr, nullptr, nullptr, &size), FileNotFound);
    EXPECT_EQ(size, 0u);
    EXPECT_EQ(RegDeleteValueW(key, L"Gain"), FileNotFound);
}

TEST_P(StoreConformance, HasADefaultValueWithoutAName) {
    const Handle key = created(root, L"A");
    EXPECT_EQ(query(key, L"").status, FileNotFound);
    EXPECT_EQ(setBytes(key, L"", "1"), Success);
    EXPECT_EQ(query(key, nullptr).bytes, "1");
    EXPECT_EQ(setBytes(key, nullptr, "2"), Success);
    EXPECT_EQ(query(key, L"").bytes, "2");
    EXPECT_EQ(valuesOf(key), Names{L""});

    EXPECT_EQ(RegDeleteValueW(key, nullptr), Success);
    EXPECT_EQ(RegDeleteValueW(key, L""), FileNotFound);
}

TEST_P(StoreConformance, StoresValuesOfNoBytes) {
    const Handle key = created(root, L"A");
    EXPECT_EQ(setBytes(key, L"Empty", "", TypeExpandText), Success);
    EXPECT_EQ(RegSetValueExW(key, L"Null", 0, TypeBinary, nullptr, 0), Success);

    EXPECT_EQ(query(key, L"Empty").status, Success);
    EXPECT_EQ(query(key, L"Empty").size, 0u);
    EXPECT_EQ(query(key, L"Empty").type, TypeExpandText);
    EXPECT_EQ(query(key, L"Null", 0).status, Success);
}

TEST_P(StoreConformance, RefusesNullDataWithASize) {
    const Handle key = created(root, L"A");

    EXPECT_EQ(RegSetValueExW(key, L"Null", 0, TypeBinary, nullptr, 4), NoAccess);
    EXPECT_EQ(RegSetValueExW(key, L"Null", 0, TypeExpandText, nullptr, 4), NoAccess);
    EXPECT_EQ(valuesOf(key), Names{});
}

TEST_P(StoreConformance, TakesSeparatorsIntoValueNames) {
    const Handle key = created(root, L"A");
    setBytes(key, L"\\x\\\\y\\", "1");

    EXPECT_EQ(valuesOf(key), Names{L"\\x\\\\y\\"});
    EXPECT_EQ(query(key, L"\\x\\\\y\\").bytes, "1");
    EXPECT_EQ(subkeysOf(key), Names{});
}

TEST_P(StoreConformance, TakesValueNamesOf16383Characters) {
    const Handle key = created(root, L"A");
    const std::wstring longest(16383, L'v');

    EXPECT_EQ(setBytes(key, longest.c_str(), "1"), Success);
    EXPECT_EQ(query(key, longest.c_str()).bytes, "1");
    EXPECT_EQ(valuesOf(key), Names{longest});
    EXPECT_EQ(RegDeleteValueW(key, longest.c_str()), Success);
}

TEST_P(StoreConformance, RefusesLongerValueNames) {
    const Handle key = created(root, L"A");
    const std::wstring tooLong(16384, L'v');

    EXPECT_EQ(setBytes(key, tooLong.c_str(), "1"), InvalidParameter);
    EXPECT_EQ(query(key, tooLong.c_str()).status, FileNotFound);
    EXPECT_EQ(RegDeleteValueW(key, tooLong.c_str()), FileNotFound);
    EXPECT_EQ(valuesOf(key), Names{});
}

TEST_P(StoreConformance, StoresMegabytes) {
    const Handle key = created(root, L"A");
    std::string big(2 << 20, 'x');
    big.back() = 'y';
    EXPECT_EQ(setBytes(key, L"Big", big), Success);

    const Answer answer = query(key, L"Big", big.size());

    EXPECT_EQ(answer.status, Success);
    EXPECT_TRUE(answer.bytes == big);
}

TEST_P(StoreConformance, KeepsValuesOfKeysApart) {
    const Handle a = created(root, L"A");
    const Handle b = created(root, L"A\\B");
    setBytes(a, L"Gain", "1");
    setBytes(b, L"Gain", "2");

    EXPECT_EQ(query(a, L"Gain").bytes, "1");
    EXPECT_EQ(query(b, L"Gain").bytes, "2");
    EXPECT_EQ(query(opened(root, L"a\\b"), L"Gain").bytes, "2");
}

}  // namespace QOR::keystore::Testing
