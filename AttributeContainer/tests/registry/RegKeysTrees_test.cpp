#include <AttributeContainer/RegKeys.h>

#include "support/LogCapture.h"
#include "support/RegistryStores.h"

namespace QOR::AttributeContainer::Testing {

namespace {

using RegKeysTrees = OnStore;

INSTANTIATE_TEST_SUITE_P(Stores, RegKeysTrees, testing::ValuesIn(registryStores()),
                         keystore::Testing::nameOfStore);

TEST_P(RegKeysTrees, ChecksKeysBelowThePrefix) {
    makeKey(L"A\\B");
    const RegKeys keys("A", root, false);

    EXPECT_TRUE(keys.checkKey("B", false));
    EXPECT_TRUE(keys.checkKey("B", true));
    EXPECT_FALSE(keys.checkKey("A", false));
}

TEST_P(RegKeysTrees, ChecksThePrefixItselfByATrailingSeparator) {
    EXPECT_TRUE(RegKeys("A", root, false).checkKey("", false));
    EXPECT_TRUE(RegKeys("", root, false).checkKey("", false));
}

TEST_P(RegKeysTrees, MakesKeysWithAllLevels) {
    const RegKeys keys("A", root, false);

    EXPECT_TRUE(keys.createKey("B\\C", false));
    EXPECT_TRUE(hasKey(L"A\\B\\C"));
    EXPECT_TRUE(RegKeys("", root, false).createKey("D", false));
    EXPECT_TRUE(hasKey(L"D"));
}

TEST_P(RegKeysTrees, MakesThePrefixItselfForAnEmptyKey) {
    RegKeys keys("", root, false);
    EXPECT_TRUE(keys.createKey("", false));
    keys.setPrefix("A");

    EXPECT_TRUE(keys.createKey("", false));
    EXPECT_TRUE(hasKey(L"A"));
}

TEST_P(RegKeysTrees, MakesKeysForEveryone) {
    const RegKeys keys("A", root, false);

    EXPECT_TRUE(keys.createKey("B\\C", true));
    EXPECT_TRUE(hasKey(L"A\\B\\C"));
    EXPECT_FALSE(keys.createKey(std::string(300, 'x'), true));
}

TEST_P(RegKeysTrees, RefusesToMakeAKeyWithALeadingSeparator) {
    EXPECT_FALSE(RegKeys("", root, false).createKey("\\B", false));
}

TEST_P(RegKeysTrees, DeletesKeysAndValuesBelowTheRootAndNotThePrefix) {
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

TEST_P(RegKeysTrees, DeletesNoKeyWithSubkeys) {
    makeKey(L"A\\B");

    EXPECT_FALSE(RegKeys("", root, false).deleteKey("A"));
}

TEST_P(RegKeysTrees, DeletesTreesBelowThePrefix) {
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

TEST_P(RegKeysTrees, DeletesNoTreeWithoutAPrefixSinceThePathThenBeginsWithASeparator) {
    makeKey(L"A");

    EXPECT_FALSE(RegKeys("", root, false).deleteTree("A"));
    EXPECT_FALSE(RegKeys("", root, false).deleteTree("\\A"));
    EXPECT_TRUE(hasKey(L"A"));
}

TEST_P(RegKeysTrees, DeletesTheTreeOfThePrefixForAnEmptyKey) {
    makeKey(L"A\\B");

    EXPECT_TRUE(RegKeys("A", root, false).deleteTree(""));
    EXPECT_FALSE(hasKey(L"A"));
}

TEST_P(RegKeysTrees, CopiesTreesWithoutASeparatorOfItsOwn) {
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

TEST_P(RegKeysTrees, CopiesNothingFromOrToAnEmptyPath) {
    makeKey(L"A\\From");
    RegKeys keys("A", root, false);

    EXPECT_FALSE(keys.copyTree("", "\\To"));
    EXPECT_FALSE(keys.copyTree("\\From", ""));
    EXPECT_FALSE(keys.copyTree("\\Missing", "\\To"));
    EXPECT_FALSE(hasKey(L"A\\To"));
}

TEST_P(RegKeysTrees, ListsTheSubkeysOfThePrefix) {
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

TEST_P(RegKeysTrees, GivesEverybodyAccess) {
    makeKey(L"A\\B");
    const RegKeys keys("A", root, false);

    EXPECT_TRUE(keys.setAccessToEveryOne("B"));
    EXPECT_TRUE(keys.setAccessToEveryOne(""));
    EXPECT_FALSE(keys.setAccessToEveryOne("Missing"));
}

TEST_P(RegKeysTrees, ListsSubkeysOfAllCharacters) {
    const std::string smile = "\xf0\x9f\x98\x80";
    const std::wstring halfOfAPair{L'a', wchar_t(0xd800)};
    RegKeys keys("A", root, false);
    keys.createKey(smile, false);
    makeKey(L"A\\" + halfOfAPair);

    EXPECT_EQ(keys.enumerateKeys(), (std::vector<std::string>{"a_", smile}));
    const auto own = keys.createFrom(false);
    EXPECT_EQ(own->getSubKey(0), "a_");
    EXPECT_EQ(own->getSubKey(1), smile);
}

TEST_P(RegKeysTrees, WritesNoLogLineWhenItFails) {
    const LogCapture log;
    RegKeys keys("A", root, false);
    keys.setPrefix("Missing");

    EXPECT_FALSE(keys.checkKey("B", true));
    EXPECT_FALSE(keys.deleteKey("B"));
    EXPECT_FALSE(keys.deleteTree("B"));
    EXPECT_FALSE(keys.copyTree("\\B", "\\C"));
    EXPECT_FALSE(keys.setKey("Gain", "1"));
    EXPECT_EQ(keys.queryKey("Gain"), "");
    EXPECT_EQ(keys.createFrom(false), nullptr);
    EXPECT_TRUE(log.records.empty());
}

TEST_P(RegKeysTrees, CopiesIntoATargetThatIsThere) {
    makeKey(L"A\\From\\New");
    makeKey(L"A\\To\\Old");
    RegKeys keys("A", root, false);

    EXPECT_TRUE(keys.copyTree("\\From", "\\To"));
    keys.setPrefix("A\\To");
    EXPECT_EQ(keys.enumerateKeys(), (std::vector<std::string>{"New", "Old"}));
}

}  // namespace

}  // namespace QOR::AttributeContainer::Testing
