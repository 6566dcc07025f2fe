#include <AttributeContainer/RegKeys.h>

#include "RegistryStores.h"

#include <QOR/Text.h>

#include <type_traits>

namespace QOR::AttributeContainer::Testing {

namespace {

using RegKeysTest = OnStore;

INSTANTIATE_TEST_SUITE_P(Stores, RegKeysTest, testing::ValuesIn(registryStores()),
                         keystore::Testing::nameOfStore);

// Data to set where the bytes do not matter.
constexpr unsigned char someData[] = {1, 2, 3, 4};

TEST_P(RegKeysTest, MakesTheKeyOfItsPrefix) {
    const RegKeys keys("A\\B", root, false);

    EXPECT_EQ(keys.getPrefix(), "A\\B");
    EXPECT_TRUE(hasKey(L"A\\B"));
}

TEST_P(RegKeysTest, KeepsItsPrefixWhenAnotherTextComesWithTheSameRoot) {
    RegKeys keys("A", root, false);
    keys.setPrefix("B", root, false);

    EXPECT_EQ(keys.getPrefix(), "A");
    EXPECT_FALSE(hasKey(L"B"));
    EXPECT_FALSE(hasKey(L"A\\B"));
}

TEST_P(RegKeysTest, TakesTheSameTextInAnyCaseAndMakesItBelowTheOldPrefix) {
    RegKeys keys("A", root, false);
    keys.setPrefix("a", root, false);

    EXPECT_EQ(keys.getPrefix(), "a");
    EXPECT_TRUE(hasKey(L"A\\a"));
}

TEST_P(RegKeysTest, TakesAnotherRootAndMakesTheKeyBelowTheOldPrefixThere) {
    makeKey(L"Other");
    keystore::HKEY other = nullptr;
    keystore::RegOpenKeyExW(root, L"Other", 0, keystore::KeyAllAccess, &other);
    RegKeys keys("A", root, false);
    keys.setPrefix("B", other, true);

    EXPECT_EQ(keys.getPrefix(), "B");
    EXPECT_TRUE(hasKey(L"Other\\A\\B"));
    EXPECT_FALSE(hasKey(L"Other\\B"));
}

TEST_P(RegKeysTest, TakesAnyTextWhileItHasNone) {
    RegKeys keys("", root, false);
    keys.setPrefix("A", root, false);

    EXPECT_EQ(keys.getPrefix(), "A");
    EXPECT_TRUE(hasKey(L"A"));
}

TEST_P(RegKeysTest, ReplacesThePrefixAloneWithoutMakingAKey) {
    RegKeys keys("A", root, false);
    keys.setPrefix("B");

    EXPECT_EQ(keys.getPrefix(), "B");
    EXPECT_FALSE(hasKey(L"B"));
    EXPECT_FALSE(keys.setKey("Gain", "1"));
    keys.setPrefix("A");
    EXPECT_TRUE(keys.setKey("Gain", "1"));
}

TEST_P(RegKeysTest, ClosesARootThatItOwns) {
    makeKey(L"A");
    keystore::HKEY a = nullptr;
    keystore::RegOpenKeyExW(root, L"A", 0, keystore::KeyRead, &a);
    { const RegKeys keys("", a, true); }

    EXPECT_EQ(keystore::RegCloseKey(a), keystore::InvalidHandle);
}

TEST_P(RegKeysTest, LeavesARootOpenThatItDoesNotOwn) {
    makeKey(L"A");
    keystore::HKEY a = nullptr;
    keystore::RegOpenKeyExW(root, L"A", 0, keystore::KeyRead, &a);
    { const RegKeys keys("", a, false); }

    EXPECT_EQ(keystore::RegCloseKey(a), keystore::Success);
}

TEST_P(RegKeysTest, ClosesAnOwnedRootWhenItTakesAnother) {
    makeKey(L"A");
    keystore::HKEY a = nullptr;
    keystore::RegOpenKeyExW(root, L"A", 0, keystore::KeyRead, &a);
    RegKeys keys("", a, true);
    keys.setPrefix("", root, false);

    EXPECT_EQ(keystore::RegCloseKey(a), keystore::InvalidHandle);
}

TEST(RegKeys, IsNotCopied) {
    EXPECT_FALSE(std::is_copy_constructible_v<RegKeys>);
    EXPECT_FALSE(std::is_copy_assignable_v<RegKeys>);
}

TEST_P(RegKeysTest, ChecksKeysBelowThePrefix) {
    makeKey(L"A\\B");
    const RegKeys keys("A", root, false);

    EXPECT_TRUE(keys.checkKey("B", false));
    EXPECT_TRUE(keys.checkKey("B", true));
    EXPECT_FALSE(keys.checkKey("A", false));
}

TEST_P(RegKeysTest, ChecksThePrefixItselfByATrailingSeparator) {
    EXPECT_TRUE(RegKeys("A", root, false).checkKey("", false));
    EXPECT_TRUE(RegKeys("", root, false).checkKey("", false));
}

TEST_P(RegKeysTest, MakesKeysWithAllLevels) {
    const RegKeys keys("A", root, false);

    EXPECT_TRUE(keys.createKey("B\\C", false));
    EXPECT_TRUE(hasKey(L"A\\B\\C"));
    EXPECT_TRUE(RegKeys("", root, false).createKey("D", false));
    EXPECT_TRUE(hasKey(L"D"));
}

TEST_P(RegKeysTest, MakesThePrefixItselfForAnEmptyKey) {
    RegKeys keys("", root, false);
    EXPECT_TRUE(keys.createKey("", false));
    keys.setPrefix("A");

    EXPECT_TRUE(keys.createKey("", false));
    EXPECT_TRUE(hasKey(L"A"));
}

TEST_P(RegKeysTest, MakesKeysForEveryone) {
    const RegKeys keys("A", root, false);

    EXPECT_TRUE(keys.createKey("B\\C", true));
    EXPECT_TRUE(hasKey(L"A\\B\\C"));
    EXPECT_FALSE(keys.createKey(std::string(300, 'x'), true));
}

TEST_P(RegKeysTest, RefusesToMakeAKeyWithALeadingSeparator) {
    EXPECT_FALSE(RegKeys("", root, false).createKey("\\B", false));
}

TEST_P(RegKeysTest, DeletesKeysAndValuesBelowTheRootAndNotThePrefix) {
    makeKey(L"A\\B");
    makeKey(L"B");
    const RegKeys top("", root, false);
    top.setKey("Gain", "1");
    const RegKeys keys("A", root, false);
    keys.setKey("Gain", "2");

    EXPECT_TRUE(keys.deleteKey("B"));
    EXPECT_TRUE(keys.deleteValue("Gain"));

    EXPECT_FALSE(hasKey(L"B"));
    EXPECT_TRUE(hasKey(L"A\\B"));
    EXPECT_EQ(valueAt(L"", L"Gain"), L"-");
    EXPECT_EQ(valueAt(L"A", L"Gain"), L"2");
    EXPECT_FALSE(keys.deleteKey("B"));
    EXPECT_FALSE(keys.deleteValue("Gain"));
}

TEST_P(RegKeysTest, DeletesNoKeyWithSubkeys) {
    makeKey(L"A\\B");

    EXPECT_FALSE(RegKeys("", root, false).deleteKey("A"));
}

TEST_P(RegKeysTest, DeletesTreesBelowThePrefix) {
    makeKey(L"A\\B\\C");
    makeKey(L"A\\D\\E");
    RegKeys keys("A", root, false);

    EXPECT_TRUE(keys.deleteTree("B"));
    EXPECT_TRUE(keys.deleteTree("\\D"));
    EXPECT_FALSE(keys.deleteTree("B"));
    EXPECT_FALSE(hasKey(L"A\\B"));
    EXPECT_FALSE(hasKey(L"A\\D"));
    makeKey(L"A\\B\\C");
    keys.setPrefix("A\\");
    EXPECT_TRUE(keys.deleteTree("B"));
}

TEST_P(RegKeysTest, DeletesNoTreeWithoutAPrefixSinceThePathThenBeginsWithASeparator) {
    makeKey(L"A");

    EXPECT_FALSE(RegKeys("", root, false).deleteTree("A"));
    EXPECT_FALSE(RegKeys("", root, false).deleteTree("\\A"));
    EXPECT_TRUE(hasKey(L"A"));
}

TEST_P(RegKeysTest, DeletesTheTreeOfThePrefixForAnEmptyKey) {
    makeKey(L"A\\B");

    EXPECT_TRUE(RegKeys("A", root, false).deleteTree(""));
    EXPECT_FALSE(hasKey(L"A"));
}

TEST_P(RegKeysTest, CopiesTreesWithoutASeparatorOfItsOwn) {
    makeKey(L"A\\From\\Deep");
    RegKeys keys("A", root, false);
    keys.setPrefix("A\\From\\Deep");
    keys.setKey("Gain", "25");
    keys.setPrefix("A");

    EXPECT_TRUE(keys.copyTree("\\From", "\\To"));
    EXPECT_EQ(valueAt(L"A\\To\\Deep", L"Gain"), L"25");
    EXPECT_FALSE(keys.copyTree("From", "\\To")) << "AFrom is no key";
    EXPECT_TRUE(keys.copyTree("\\From", "To"));
    EXPECT_TRUE(hasKey(L"ATo\\Deep"));
}

TEST_P(RegKeysTest, CopiesNothingFromOrToAnEmptyPath) {
    makeKey(L"A\\From");
    RegKeys keys("A", root, false);

    EXPECT_FALSE(keys.copyTree("", "\\To"));
    EXPECT_FALSE(keys.copyTree("\\From", ""));
    EXPECT_FALSE(keys.copyTree("\\Missing", "\\To"));
    EXPECT_FALSE(hasKey(L"A\\To"));
}

TEST_P(RegKeysTest, StoresATextWithoutATerminatorAsExpandableText) {
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

TEST_P(RegKeysTest, ReadsATextThatItStoredOneCharacterShort) {
    const RegKeys keys("A", root, false);
    keys.setKey("Gain", "abc");

    EXPECT_EQ(keys.queryKey("Gain"), "ab");
    keys.setKey("Gain", "a");
    EXPECT_EQ(keys.queryKey("Gain"), "");
}

TEST_P(RegKeysTest, ReadsATextWithATerminatorWhole) {
    const RegKeys keys("A", root, false);
    const unsigned char text[] = {'a', 0, 0xe9, 0, 0, 0};
    keys.setKey("Gain", text, sizeof text, 2);

    EXPECT_EQ(keys.queryKey("Gain"), "a\xc3\xa9");
}

TEST_P(RegKeysTest, ReadsStoredSizesBelowTwoAsEmpty) {
    const RegKeys keys("A", root, false);
    keys.setKey("None", someData, 0, 2);
    keys.setKey("One", someData, 1, 2);
    keys.setKey("Two", someData, 2, 2);
    keys.setKey("Three", someData, 3, 2);

    for (const char* const name : {"None", "One", "Two", "Three", "Missing"})
        EXPECT_EQ(keys.queryKey(name), "") << name;
}

TEST_P(RegKeysTest, ReadsAValueOf1024BytesOrMoreAsEmpty) {
    const RegKeys keys("A", root, false);
    EXPECT_TRUE(keys.setKey("Longest", std::string(511, 'x')));
    EXPECT_TRUE(keys.setKey("TooLong", std::string(512, 'x')));
    EXPECT_TRUE(keys.setKey("MuchTooLong", std::string(5000, 'x')));

    EXPECT_EQ(keys.queryKey("Longest"), std::string(510, 'x'));
    EXPECT_EQ(keys.queryKey("TooLong"), "");
    EXPECT_EQ(keys.queryKey("MuchTooLong"), "");
}

TEST_P(RegKeysTest, ReadsCharactersWithoutANarrowFormAsUnderscores) {
    const RegKeys keys("A", root, false);
    const unsigned char halfOfAPair[] = {'a', 0, 0x00, 0xd8, 'b', 0, 0, 0};
    keys.setKey("Gain", halfOfAPair, sizeof halfOfAPair, 2);

    EXPECT_EQ(keys.queryKey("Gain"), "a_b");
}

TEST_P(RegKeysTest, CountsUtf16UnitsInWhatItStores) {
    const RegKeys keys("A", root, false);
    keys.setKey("Gain", "\xf0\x9f\x98\x80x");  // a pair and a letter
    unsigned char data[10];
    unsigned long size = sizeof data;
    unsigned long type = 0;

    EXPECT_TRUE(keys.queryKey("Gain", data, &size, &type));
    EXPECT_EQ(size, 6u);
    EXPECT_EQ(keys.queryKey("Gain"), "\xf0\x9f\x98\x80");
}

TEST_P(RegKeysTest, StoresAnEmptyTextAsAValueOfNoBytes) {
    makeKey(L"A\\Gain");
    const RegKeys keys("A", root, false);

    EXPECT_TRUE(keys.setKey("Gain", ""));

    EXPECT_EQ(valueAt(L"A", L"Gain"), L"");
    EXPECT_TRUE(hasKey(L"A\\Gain")) << "the subkey of that name stays";
}

TEST_P(RegKeysTest, DeletesASubkeyAndNotAValueForNullData) {
    makeKey(L"A\\Gain");
    const RegKeys keys("A", root, false);
    keys.setKey("Gain", "1");

    EXPECT_TRUE(keys.setKey("Gain", nullptr, 0, 0));

    EXPECT_FALSE(hasKey(L"A\\Gain"));
    EXPECT_EQ(valueAt(L"A", L"Gain"), L"1");
    EXPECT_FALSE(keys.setKey("Gain", nullptr, 0, 0));
}

TEST_P(RegKeysTest, UsesTheRootItselfWithoutAPrefix) {
    const RegKeys keys("", root, false);

    EXPECT_TRUE(keys.setKey("Gain", "125"));
    EXPECT_EQ(valueAt(L"", L"Gain"), L"125");
    EXPECT_EQ(keys.queryKey("Gain"), "12");
}

TEST_P(RegKeysTest, StoresNothingThroughARootForReading) {
    makeKey(L"A");
    keystore::HKEY a = nullptr;
    keystore::RegOpenKeyExW(root, L"A", 0, keystore::KeyRead, &a);
    const RegKeys keys("", a, true);

    EXPECT_FALSE(keys.setKey("Gain", "1"));
    EXPECT_FALSE(keys.deleteValue("Gain"));
}

TEST_P(RegKeysTest, ReadsDataWithItsSizeAndType) {
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

TEST_P(RegKeysTest, ReadsNoDataIntoNull) {
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

TEST_P(RegKeysTest, ListsTheSubkeysOfThePrefix) {
    makeKey(L"A\\One\\Deeper");
    makeKey(L"A\\Two and more");
    makeKey(L"A\\\x00e9");
    RegKeys keys("A", root, false);

    EXPECT_EQ(keys.enumerateKeys(), (std::vector<std::string>{"One", "Two and more", "\xc3\xa9"}));
    keys.setPrefix("Missing");
    EXPECT_EQ(keys.enumerateKeys(), std::vector<std::string>{});
    keys.setPrefix("A\\One\\Deeper");
    EXPECT_EQ(keys.enumerateKeys(), std::vector<std::string>{});
    keys.setPrefix("");
    EXPECT_EQ(keys.enumerateKeys(), std::vector<std::string>{"A"});
}

TEST_P(RegKeysTest, GivesNamesAtAnIndexBelowTheRootAndNotThePrefix) {
    makeKey(L"A\\Below");
    const RegKeys top("", root, false);
    top.setKey("Gain", "1");
    const RegKeys keys("A", root, false);
    keys.setKey("Other", "1");

    EXPECT_EQ(keys.getSubKey(0), "A");
    EXPECT_EQ(keys.getSubKey(1), "");
    EXPECT_EQ(keys.getSubKey(-1), "");
    EXPECT_EQ(keys.getSubValue(0), "Gain");
    EXPECT_EQ(keys.getSubValue(1), "");
}

TEST_P(RegKeysTest, GivesNoValueNamesOf260Characters) {
    const RegKeys keys("", root, false);
    keys.setKey(std::string(259, 'v'), "1");
    EXPECT_EQ(keys.getSubValue(0), std::string(259, 'v'));
    keys.deleteValue(std::string(259, 'v'));
    keys.setKey(std::string(260, 'v'), "1");

    EXPECT_EQ(keys.getSubValue(0), "");
}

TEST_P(RegKeysTest, GivesEverybodyAccess) {
    makeKey(L"A\\B");
    const RegKeys keys("A", root, false);

    EXPECT_TRUE(keys.setAccessToEveryOne("B"));
    EXPECT_TRUE(keys.setAccessToEveryOne(""));
    EXPECT_FALSE(keys.setAccessToEveryOne("Missing"));
}

TEST_P(RegKeysTest, MakesASecondHandleOnThePrefix) {
    const RegKeys keys("A", root, false);
    const auto writing = keys.createFrom(true);
    const auto reading = keys.createFrom(false);
    ASSERT_TRUE(writing && reading);

    EXPECT_EQ(writing->getPrefix(), "");
    EXPECT_TRUE(writing->setKey("Gain", "125"));
    EXPECT_EQ(valueAt(L"A", L"Gain"), L"125");
    EXPECT_EQ(reading->queryKey("Gain"), "12");
    EXPECT_FALSE(reading->setKey("Gain", "2"));
}

TEST_P(RegKeysTest, MakesNoSecondHandleOnAKeyThatIsNotThere) {
    RegKeys keys("", root, false);
    keys.setPrefix("Missing");

    EXPECT_EQ(keys.createFrom(false), nullptr);
    EXPECT_EQ(keys.createFrom(true), nullptr);
}

TEST_P(RegKeysTest, AnswersWhenItsKeyOrItsStoreIsGone) {
    const RegKeys keys("A", root, false);
    const auto own = keys.createFrom(true);
    RegKeys("", root, false).deleteKey("A");

    EXPECT_FALSE(own->setKey("Gain", "1"));
    EXPECT_EQ(own->queryKey("Gain"), "");
    EXPECT_EQ(own->enumerateKeys(), std::vector<std::string>{});
    if (GetParam().isSystem) return;  // that store does not go
    store.reset();
    EXPECT_FALSE(own->createKey("B", false));
    EXPECT_FALSE(keys.createKey("B", false));
    EXPECT_EQ(keys.createFrom(true), nullptr);
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

}  // namespace

}  // namespace QOR::AttributeContainer::Testing
