#include "StoreConformance.h"

namespace QOR::keystore::Testing {

TEST_P(StoreConformance, DeletesATree) {
    setBytes(created(root, L"A\\B\\C"), L"Gain", "1");
    createStatus(root, L"A\\D");
    createStatus(root, L"Beside");

    EXPECT_EQ(RegDeleteTreeW(root, L"a"), Success);

    EXPECT_EQ(subkeysOf(root), Names{L"Beside"});
    EXPECT_EQ(RegDeleteTreeW(root, L"A"), FileNotFound);
}

TEST_P(StoreConformance, EmptiesTheKeyOfAHandle) {
    for (const wchar_t* const nothing : {static_cast<const wchar_t*>(nullptr), L""}) {
        const Handle key = created(root, L"A");
        createStatus(key, L"B\\C");
        setBytes(key, L"Gain", "1");

        EXPECT_EQ(RegDeleteTreeW(key, nothing), Success);

        EXPECT_EQ(openStatus(root, L"A"), Success);
        EXPECT_EQ(subkeysOf(key), Names{});
        EXPECT_EQ(valuesOf(key), Names{});
    }
}

TEST_P(StoreConformance, AnswersOnEveryKeyOfADeletedTree) {
    const Handle deep = created(root, L"A\\B\\C");
    RegDeleteTreeW(root, L"A");

    EXPECT_EQ(setBytes(deep, L"Gain", "1"), KeyDeleted);
}

TEST_P(StoreConformance, DeletesAndCopiesTreesOfManyLevels) {
    std::wstring deep = L"0";
    for (int level = 1; level < 400; ++level) deep += L"\\" + std::to_wstring(level % 10);
    ASSERT_EQ(createStatus(root, (L"A\\" + deep).c_str()), Success);
    const Handle source = opened(root, L"A");
    const Handle target = created(root, L"T");

    EXPECT_EQ(RegCopyTreeW(source, L"", target), Success);
    EXPECT_EQ(openStatus(target, deep.c_str()), Success);
    EXPECT_EQ(RegDeleteTreeW(root, L"A"), Success);
    EXPECT_EQ(RegDeleteTreeW(root, L"T"), Success);
    EXPECT_EQ(subkeysOf(root), Names{});
}

TEST_P(StoreConformance, CopiesValuesAndSubkeysIntoAnOpenKey) {
    const Handle source = created(root, L"S");
    setBytes(source, L"Gain", std::string("a\0b\0", 4), TypeExpandText);
    setBytes(source, L"", "default");
    setBytes(created(root, L"S\\1\\2"), L"Deep", "");
    const Handle target = created(root, L"T");

    EXPECT_EQ(RegCopyTreeW(source, L"", target), Success);

    EXPECT_EQ(query(target, L"Gain").bytes, std::string("a\0b\0", 4));
    EXPECT_EQ(query(target, L"Gain").type, TypeExpandText);
    EXPECT_EQ(query(target, L"").bytes, "default");
    EXPECT_EQ(query(opened(target, L"1\\2"), L"Deep").status, Success);
    EXPECT_EQ(subkeysOf(source), Names{L"1"}) << "the source stays";
    EXPECT_EQ(valuesOf(target), (Names{L"", L"Gain"}));
}

TEST_P(StoreConformance, KeepsWhatTheTargetOfACopyHasOfOtherNames) {
    const Handle source = created(root, L"S\\Same\\New");
    setBytes(opened(root, L"S"), L"Gain", "1");
    const Handle target = created(root, L"T\\Same\\Old");
    const Handle top = opened(root, L"T");
    setBytes(top, L"GAIN", "2");
    setBytes(top, L"Other", "3");

    EXPECT_EQ(RegCopyTreeW(opened(root, L"S"), L"", top), Success);

    EXPECT_EQ(query(top, L"Gain").bytes, "1");
    EXPECT_EQ(query(top, L"Other").bytes, "3");
    EXPECT_EQ(subkeysOf(opened(top, L"Same")), (Names{L"New", L"Old"}));
}

TEST_P(StoreConformance, CopiesFromAPathBelowTheSource) {
    setBytes(created(root, L"S\\1"), L"Gain", "1");
    const Handle target = created(root, L"T");

    EXPECT_EQ(RegCopyTreeW(root, L"S\\1", target), Success);
    EXPECT_EQ(query(target, L"Gain").bytes, "1");
    EXPECT_EQ(RegCopyTreeW(root, L"missing", target), FileNotFound);
}

TEST_P(StoreConformance, RefusesToCopyValuesThroughAHandleForReading) {
    setBytes(created(root, L"S"), L"Gain", "1");
    createStatus(root, L"T");
    const Handle reading = opened(root, L"T", KeyRead);

    EXPECT_EQ(RegCopyTreeW(opened(root, L"S"), L"", reading), AccessDenied);
    EXPECT_EQ(valuesOf(reading), Names{});
}

}  // namespace QOR::keystore::Testing
