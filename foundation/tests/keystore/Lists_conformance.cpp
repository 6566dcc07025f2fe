#include "StoreConformance.h"

#include <algorithm>

namespace QOR::keystore::Testing {

TEST_P(StoreConformance, ListsSubkeysAndValuesOfOneKeyAlone) {
    const Handle key = created(root, L"A");
    createStatus(root, L"A\\One\\Deeper");
    createStatus(root, L"A\\Two");
    createStatus(root, L"Beside");
    setBytes(key, L"First", "1");
    setBytes(key, L"Second", "2");

    EXPECT_EQ(subkeysOf(key), (Names{L"One", L"Two"}));
    EXPECT_EQ(valuesOf(key), (Names{L"First", L"Second"}));
}

TEST_P(StoreConformance, ListsSubkeysInTheOrderOfTheirNamesWithoutCase) {
    for (const wchar_t* const name : {L"b", L"A", L"_x", L"Zz", L"a1", L"C", L"a_", L"aB"})
        createStatus(root, name);

    std::vector<std::wstring> names;
    wchar_t name[10];
    for (unsigned long i = 0, size = 10;
         RegEnumKeyExW(root, i, name, &size, nullptr, nullptr, nullptr, nullptr) == Success;
         ++i, size = 10)
        names.emplace_back(name);

    // '_' stands behind the capital letters in the order of characters.
    std::vector<std::wstring> expected{L"A", L"a1", L"aB", L"a_", L"b", L"C", L"Zz", L"_x"};
    if (GetParam().isSystem) {
        std::ranges::sort(names);
        std::ranges::sort(expected);
    }
    EXPECT_EQ(names, expected);
}

TEST_P(StoreConformance, FindsEveryIndexFromAnywhere) {
    for (char c = 'a'; c <= 'z'; ++c) createStatus(root, std::wstring(2, wchar_t(c)).c_str());
    const auto nameAt = [this](unsigned long index) {
        wchar_t name[10] = L"";
        unsigned long size = 10;
        RegEnumKeyExW(root, index, name, &size, nullptr, nullptr, nullptr, nullptr);
        return std::wstring(name);
    };

    for (const unsigned long index : {0, 25, 12, 13, 12, 12, 1, 24, 3, 0, 7})
        EXPECT_EQ(nameAt(index), std::wstring(2, wchar_t('a' + index)));
    RegDeleteKeyW(root, L"cc");
    EXPECT_EQ(nameAt(7), L"ii");
    createStatus(root, L"Aa0");
    EXPECT_EQ(nameAt(8), L"ii");
    EXPECT_EQ(nameAt(26), L"");
}

TEST_P(StoreConformance, LeavesABufferAloneThatIsTooSmallForAKeyName) {
    createStatus(root, L"abc");
    wchar_t name[5] = L"####";
    for (const unsigned long tooSmall : {0, 1, 3}) {
        unsigned long size = tooSmall;
        EXPECT_EQ(RegEnumKeyExW(root, 0, name, &size, nullptr, nullptr, nullptr, nullptr),
                  MoreData);
        EXPECT_EQ(size, tooSmall);
        EXPECT_EQ(std::wstring(name), L"####");
    }

    unsigned long size = 4;  // the terminator has its place too
    EXPECT_EQ(RegEnumKeyExW(root, 0, name, &size, nullptr, nullptr, nullptr, nullptr), Success);
    EXPECT_EQ(size, 3u);
    EXPECT_EQ(std::wstring(name), L"abc");
}

TEST_P(StoreConformance, LeavesTheSizeAloneOfABufferThatIsTooSmallForAValueName) {
    setBytes(root, L"abc", "1");
    wchar_t name[5] = L"####";
    unsigned long size = 3;
    EXPECT_EQ(RegEnumValueW(root, 0, name, &size, nullptr, nullptr, nullptr, nullptr), MoreData);
    EXPECT_EQ(size, 3u);

    size = 4;
    EXPECT_EQ(RegEnumValueW(root, 0, name, &size, nullptr, nullptr, nullptr, nullptr), Success);
    EXPECT_EQ(size, 3u);
    EXPECT_EQ(std::wstring(name), L"abc");
}

TEST_P(StoreConformance, GivesTypeAndDataAlongWithAValueName) {
    setBytes(root, L"abc", "1234", 77);
    wchar_t name[5];
    unsigned long size = 5;
    unsigned long type = 0;
    unsigned char data[4] = {};
    unsigned long dataSize = 4;

    EXPECT_EQ(RegEnumValueW(root, 0, name, &size, nullptr, &type, data, &dataSize), Success);
    EXPECT_EQ(type, 77u);
    EXPECT_EQ(dataSize, 4u);
    EXPECT_EQ(data[3], '4');

    size = 5;
    dataSize = 3;
    EXPECT_EQ(RegEnumValueW(root, 0, name, &size, nullptr, &type, data, &dataSize), MoreData);
    EXPECT_EQ(dataSize, 4u);
}

TEST_P(StoreConformance, EndsItsListsBehindTheLast) {
    wchar_t name[5];
    unsigned long size = 5;

    EXPECT_EQ(RegEnumKeyExW(root, 0, name, &size, nullptr, nullptr, nullptr, nullptr), NoMoreItems);
    EXPECT_EQ(RegEnumValueW(root, 0, name, &size, nullptr, nullptr, nullptr, nullptr), NoMoreItems);
    createStatus(root, L"A");
    EXPECT_EQ(RegEnumKeyExW(root, 1, name, &size, nullptr, nullptr, nullptr, nullptr), NoMoreItems);
    EXPECT_EQ(RegEnumKeyExW(root, 4000000000u, name, &size, nullptr, nullptr, nullptr, nullptr),
              NoMoreItems);
}

TEST_P(StoreConformance, CountsAndMeasuresWhatAKeyContains) {
    const Handle key = created(root, L"A");
    createStatus(key, L"abc");
    createStatus(key, L"abcde\\deeper than that");
    setBytes(key, L"1234567", "ab");
    setBytes(key, L"12", "abcd");
    unsigned long keys = 0, maxKey = 0, maxClass = 9, values = 0, maxName = 0, maxSize = 0;

    EXPECT_EQ(RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, &keys, &maxKey, &maxClass, &values,
                               &maxName, &maxSize, nullptr, nullptr),
              Success);

    EXPECT_EQ(keys, 2u);
    EXPECT_EQ(maxKey, 5u);
    EXPECT_EQ(maxClass, 0u);
    EXPECT_EQ(values, 2u);
    EXPECT_EQ(maxName, 7u);
    EXPECT_EQ(maxSize, 4u);
}

TEST_P(StoreConformance, MeasuresNamesInUtf16Units) {
    const Handle key = created(root, L"A");
    createStatus(key, L"\U0001f600\U0001f601");
    setBytes(key, L"x\U0001f600", "1");
    unsigned long maxKey = 0, maxName = 0;

    EXPECT_EQ(RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, nullptr, &maxKey, nullptr, nullptr,
                               &maxName, nullptr, nullptr, nullptr),
              Success);
    EXPECT_EQ(maxKey, 4u);
    EXPECT_EQ(maxName, 3u);
}

TEST_P(StoreConformance, CountsNothingInAnEmptyKey) {
    const Handle key = created(root, L"A");
    unsigned long keys = 9, values = 9, maxKey = 9;

    EXPECT_EQ(RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, &keys, &maxKey, nullptr, &values,
                               nullptr, nullptr, nullptr, nullptr),
              Success);
    EXPECT_EQ(keys, 0u);
    EXPECT_EQ(maxKey, 0u);
    EXPECT_EQ(values, 0u);
    EXPECT_EQ(RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr, nullptr, nullptr),
              Success);
}

TEST_P(StoreConformance, DropsAllKeysWhileItListsThem) {
    for (const wchar_t* const name : {L"a", L"b", L"c"}) createStatus(root, name);
    wchar_t name[5];
    unsigned long size = 5;
    while (RegEnumKeyExW(root, 0, name, &size, nullptr, nullptr, nullptr, nullptr) == Success) {
        ASSERT_EQ(RegDeleteKeyW(root, name), Success);
        size = 5;
    }

    EXPECT_EQ(subkeysOf(root), Names{});
}

}  // namespace QOR::keystore::Testing
