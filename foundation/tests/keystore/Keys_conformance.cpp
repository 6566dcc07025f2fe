#include "StoreConformance.h"

namespace QOR::keystore::Testing {

TEST_P(StoreConformance, MakesAllLevelsOfAPath) {
    EXPECT_EQ(createStatus(root, L"A\\B\\C"), Success);

    EXPECT_EQ(openStatus(root, L"A"), Success);
    EXPECT_EQ(openStatus(root, L"A\\B"), Success);
    EXPECT_EQ(openStatus(root, L"A\\B\\C"), Success);
    EXPECT_EQ(openStatus(root, L"A\\C"), FileNotFound);
}

TEST_P(StoreConformance, OpensBelowAnyHandle) {
    createStatus(root, L"A\\B\\C");
    const Handle a = opened(root, L"A");

    EXPECT_EQ(openStatus(a, L"B\\C"), Success);
    EXPECT_EQ(openStatus(a, L"A"), FileNotFound);
}

TEST_P(StoreConformance, AnswersAMissingKeyWithANullHandle) {
    auto key = reinterpret_cast<HKEY>(this);

    EXPECT_EQ(RegOpenKeyExW(root, L"missing", 0, KeyRead, &key), FileNotFound);
    EXPECT_EQ(key, nullptr);
    EXPECT_EQ(openStatus(root, L"missing\\below"), FileNotFound);
}

TEST_P(StoreConformance, TellsWhetherAKeyWasMade) {
    HKEY key = nullptr;
    unsigned long disposition = 0;
    RegCreateKeyExW(root, L"A", 0, nullptr, 0, KeyRead, nullptr, &key, &disposition);
    RegCloseKey(key);
    EXPECT_EQ(disposition, CreatedNewKey);

    RegCreateKeyExW(root, L"a", 0, nullptr, 0, KeyRead, nullptr, &key, &disposition);
    RegCloseKey(key);
    EXPECT_EQ(disposition, OpenedExistingKey);
}

TEST_P(StoreConformance, KeepsTheCaseOfKeyNamesAndComparesWithoutIt) {
    createStatus(root, L"Gain\\\x00e9t\x00e9");
    createStatus(root, L"GAIN\\\x00c9T\x00c9");

    EXPECT_EQ(subkeysOf(root), Names{L"Gain"});
    EXPECT_EQ(subkeysOf(opened(root, L"gAIN")), Names{L"\x00e9t\x00e9"});
}

TEST_P(StoreConformance, TakesLettersThatAreNoPairForDifferent) {
    createStatus(root, L"\x00df");  // a sharp s, whose capital stands for other letters too
    createStatus(root, L"\x0436");  // a Cyrillic letter
    createStatus(root, L"\x0131");  // an i without its dot

    EXPECT_EQ(openStatus(root, L"\x1e9e"), FileNotFound);
    EXPECT_EQ(openStatus(root, L"\x0416"), Success);
    EXPECT_EQ(openStatus(root, L"I"), FileNotFound);
}

TEST_P(StoreConformance, TakesEveryOtherCharacterIntoAKeyName) {
    createStatus(root, L"a/b c.d*?:\"<>|");

    EXPECT_EQ(subkeysOf(root), Names{L"a/b c.d*?:\"<>|"});
    EXPECT_EQ(openStatus(root, L"a"), FileNotFound);
}

TEST_P(StoreConformance, KeepsCharactersBeyondTheFirstPlane) {
    createStatus(root, L"\U0001f600");
    const Handle key = opened(root, L"\U0001f600");
    setBytes(key, L"\U0001f601", "x");

    EXPECT_EQ(subkeysOf(root), Names{L"\U0001f600"});
    EXPECT_EQ(valuesOf(key), Names{L"\U0001f601"});
}

TEST_P(StoreConformance, KeepsHalfOfASurrogatePair) {
    const wchar_t half[] = {wchar_t(0xd800), L'x', 0};
    createStatus(root, half);

    EXPECT_EQ(subkeysOf(root), Names{half});
}

TEST_P(StoreConformance, RefusesALeadingSeparator) {
    createStatus(root, L"A");

    EXPECT_EQ(openStatus(root, L"\\A"), BadPathname);
    EXPECT_EQ(openStatus(root, L"\\\\A"), BadPathname);
    EXPECT_EQ(openStatus(root, L"\\"), BadPathname);
    EXPECT_EQ(createStatus(root, L"\\B"), BadPathname);
    EXPECT_EQ(RegDeleteKeyW(root, L"\\A"), BadPathname);
    EXPECT_EQ(RegDeleteTreeW(root, L"\\A"), BadPathname);
    EXPECT_EQ(subkeysOf(root), Names{L"A"});
}

TEST_P(StoreConformance, PassesOverTrailingSeparators) {
    EXPECT_EQ(createStatus(root, L"A\\"), Success);
    EXPECT_EQ(createStatus(root, L"B\\\\"), Success);

    EXPECT_EQ(subkeysOf(root), (Names{L"A", L"B"}));
    EXPECT_EQ(openStatus(root, L"A\\"), Success);
    EXPECT_EQ(openStatus(root, L"A\\\\"), Success);
    EXPECT_EQ(RegDeleteKeyW(root, L"A\\"), Success);
    EXPECT_EQ(RegDeleteTreeW(root, L"B\\"), Success);
    EXPECT_EQ(subkeysOf(root), Names{});
}

TEST_P(StoreConformance, PassesOverDoubledSeparators) {
    EXPECT_EQ(createStatus(root, L"A\\\\B"), Success);

    EXPECT_EQ(subkeysOf(opened(root, L"A")), Names{L"B"});
    EXPECT_EQ(openStatus(root, L"A\\\\\\B"), Success);
    EXPECT_EQ(RegDeleteKeyW(root, L"A\\\\B"), Success);
}

TEST_P(StoreConformance, TakesNoPathForTheKeyItself) {
    const Handle a = created(root, L"A\\B");
    const Handle top = opened(root, L"A");

    EXPECT_EQ(subkeysOf(opened(top, L"")), Names{L"B"});
    EXPECT_EQ(subkeysOf(opened(top, nullptr)), Names{L"B"});
    EXPECT_EQ(subkeysOf(created(top, L"")), Names{L"B"});
    EXPECT_EQ(subkeysOf(created(top, nullptr)), Names{L"B"});
}

TEST_P(StoreConformance, TakesKeyNamesOf255Characters) {
    const std::wstring longest(255, L'x');
    EXPECT_EQ(createStatus(root, longest.c_str()), Success);

    EXPECT_EQ(openStatus(root, longest.c_str()), Success);
    EXPECT_EQ(subkeysOf(root), Names{longest});
}

TEST_P(StoreConformance, RefusesLongerKeyNames) {
    const std::wstring tooLong(257, L'x');  // systems differ about 256
    createStatus(root, L"A");

    EXPECT_EQ(createStatus(root, tooLong.c_str()), InvalidParameter);
    EXPECT_EQ(openStatus(root, tooLong.c_str()), InvalidParameter);
    EXPECT_EQ(openStatus(root, (L"A\\" + tooLong).c_str()), InvalidParameter);
    EXPECT_EQ(openStatus(root, (L"missing\\" + tooLong).c_str()), FileNotFound);
    EXPECT_EQ(RegDeleteKeyW(root, tooLong.c_str()), InvalidParameter);
    EXPECT_EQ(RegDeleteTreeW(root, tooLong.c_str()), InvalidParameter);
}

TEST_P(StoreConformance, KeepsWhatWasMadeAheadOfANameThatIsTooLong) {
    EXPECT_EQ(createStatus(root, (L"A\\" + std::wstring(257, L'x')).c_str()), InvalidParameter);

    EXPECT_EQ(subkeysOf(root), Names{L"A"});
    EXPECT_EQ(subkeysOf(opened(root, L"A")), Names{});
}

TEST_P(StoreConformance, DeletesAKeyWithoutSubkeys) {
    setBytes(created(root, L"A\\B"), L"Gain", "1");

    EXPECT_EQ(RegDeleteKeyW(root, L"A"), AccessDenied);
    EXPECT_EQ(RegDeleteKeyW(root, L"a\\b"), Success);
    EXPECT_EQ(RegDeleteKeyW(root, L"A"), Success);
    EXPECT_EQ(RegDeleteKeyW(root, L"A"), FileNotFound);
    EXPECT_EQ(RegDeleteKeyW(root, L"A\\B"), FileNotFound);
    EXPECT_EQ(RegDeleteKeyW(root, nullptr), InvalidParameter);
}

TEST_P(StoreConformance, DeletesTheKeyOfAHandleByAnEmptyPath) {
    const Handle a = created(root, L"A");

    EXPECT_EQ(RegDeleteKeyW(a, L""), Success);

    EXPECT_EQ(openStatus(root, L"A"), FileNotFound);
}

TEST_P(StoreConformance, MakesADeletedKeyAnewWithoutItsValues) {
    setBytes(created(root, L"A"), L"Gain", "1");
    RegDeleteKeyW(root, L"A");

    EXPECT_EQ(valuesOf(created(root, L"A")), Names{});
}

TEST_P(StoreConformance, KeepsItsRootOpen) {
    EXPECT_EQ(RegCloseKey(root), Success);
    EXPECT_EQ(RegCloseKey(root), Success);

    EXPECT_EQ(createStatus(root, L"A"), Success);
    EXPECT_EQ(store->root(), root);
}

TEST_P(StoreConformance, AnswersHandlesThatAreClosedOrNull) {
    HKEY closed = nullptr;
    RegCreateKeyW(root, L"A", &closed);
    EXPECT_EQ(RegCloseKey(closed), Success);

    for (const HKEY key : {closed, HKEY{}}) {
        HKEY result = nullptr;
        EXPECT_EQ(RegCloseKey(key), InvalidHandle);
        EXPECT_EQ(RegOpenKeyExW(key, L"A", 0, KeyRead, &result), InvalidHandle);
        EXPECT_EQ(RegCreateKeyW(key, L"A", &result), InvalidHandle);
        EXPECT_EQ(query(key, L"Gain").status, InvalidHandle);
        EXPECT_EQ(setBytes(key, L"Gain", "1"), InvalidHandle);
        EXPECT_EQ(RegDeleteValueW(key, L"Gain"), InvalidHandle);
        EXPECT_EQ(RegDeleteKeyW(key, L"A"), InvalidHandle);
        EXPECT_EQ(RegDeleteTreeW(key, L"A"), InvalidHandle);
    }
}

}  // namespace QOR::keystore::Testing
