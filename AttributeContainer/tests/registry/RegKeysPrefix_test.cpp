#include <AttributeContainer/RegKeys.h>

#include "support/RegistryStores.h"

#include <type_traits>

namespace QOR::AttributeContainer::Testing {

namespace {

using RegKeysPrefix = OnStore;

INSTANTIATE_TEST_SUITE_P(Stores, RegKeysPrefix, testing::ValuesIn(registryStores()),
                         keystore::Testing::nameOfStore);

TEST_P(RegKeysPrefix, MakesTheKeyOfItsPrefix) {
    const RegKeys keys("A\\B", root, false);

    EXPECT_EQ(keys.getPrefix(), "A\\B");
    EXPECT_TRUE(hasKey(L"A\\B"));
}

TEST_P(RegKeysPrefix, KeepsItsPrefixWhenAnotherTextComesWithTheSameRoot) {
    RegKeys keys("A", root, false);
    keys.setPrefix("B", root, false);

    EXPECT_EQ(keys.getPrefix(), "A");
    EXPECT_FALSE(hasKey(L"B"));
    EXPECT_FALSE(hasKey(L"A\\B"));
}

TEST_P(RegKeysPrefix, TakesTheSameTextInAnyCaseAndMakesItBelowTheOldPrefix) {
    RegKeys keys("A", root, false);
    keys.setPrefix("a", root, false);

    EXPECT_EQ(keys.getPrefix(), "a");
    EXPECT_TRUE(hasKey(L"A\\a"));
}

TEST_P(RegKeysPrefix, TakesAnotherRootAndMakesTheKeyBelowTheOldPrefixThere) {
    const keystore::HKEY other = openKey(L"Other");
    RegKeys keys("A", root, false);
    keys.setPrefix("B", other, true);

    EXPECT_EQ(keys.getPrefix(), "B");
    EXPECT_TRUE(hasKey(L"Other\\A\\B"));
    EXPECT_FALSE(hasKey(L"Other\\B"));
}

TEST_P(RegKeysPrefix, TakesAnyTextWhileItHasNone) {
    RegKeys keys("", root, false);
    keys.setPrefix("A", root, false);

    EXPECT_EQ(keys.getPrefix(), "A");
    EXPECT_TRUE(hasKey(L"A"));
}

TEST_P(RegKeysPrefix, ReplacesThePrefixAloneWithoutMakingAKey) {
    RegKeys keys("A", root, false);
    keys.setPrefix("B");

    EXPECT_EQ(keys.getPrefix(), "B");
    EXPECT_FALSE(hasKey(L"B"));
    EXPECT_FALSE(keys.setKey("Gain", "1"));
    keys.setPrefix("A");
    EXPECT_TRUE(keys.setKey("Gain", "1"));
}

TEST_P(RegKeysPrefix, ClosesARootThatItOwns) {
    const keystore::HKEY a = openKey(L"A", keystore::KeyRead);
    { const RegKeys keys("", a, true); }

    EXPECT_EQ(keystore::RegCloseKey(a), keystore::InvalidHandle);
}

TEST_P(RegKeysPrefix, LeavesARootOpenThatItDoesNotOwn) {
    const keystore::HKEY a = openKey(L"A", keystore::KeyRead);
    { const RegKeys keys("", a, false); }

    EXPECT_EQ(keystore::RegCloseKey(a), keystore::Success);
}

TEST_P(RegKeysPrefix, ClosesAnOwnedRootWhenItTakesAnother) {
    const keystore::HKEY a = openKey(L"A", keystore::KeyRead);
    RegKeys keys("", a, true);
    keys.setPrefix("", root, false);

    EXPECT_EQ(keystore::RegCloseKey(a), keystore::InvalidHandle);
}

TEST(RegKeys, IsNotCopied) {
    EXPECT_FALSE(std::is_copy_constructible_v<RegKeys>);
    EXPECT_FALSE(std::is_copy_assignable_v<RegKeys>);
}

TEST_P(RegKeysPrefix, MakesASecondHandleOnThePrefix) {
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

TEST_P(RegKeysPrefix, MakesNoSecondHandleOnAKeyThatIsNotThere) {
    RegKeys keys("", root, false);
    keys.setPrefix("Missing");

    EXPECT_EQ(keys.createFrom(false), nullptr);
    EXPECT_EQ(keys.createFrom(true), nullptr);
}

TEST_P(RegKeysPrefix, AnswersWhenItsKeyOrItsStoreIsGone) {
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

TEST_P(RegKeysPrefix, GivesNamesAtAnIndexBelowTheRootAndNotThePrefix) {
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

TEST_P(RegKeysPrefix, GivesNoValueNamesOf260Characters) {
    const RegKeys keys("", root, false);
    keys.setKey(std::string(259, 'v'), "1");
    EXPECT_EQ(keys.getSubValue(0), std::string(259, 'v'));
    keys.deleteValue(std::string(259, 'v'));
    keys.setKey(std::string(260, 'v'), "1");

    EXPECT_EQ(keys.getSubValue(0), "");
}

TEST_P(RegKeysPrefix, ClosesAnOwnedRootAlsoWhenTheSameOneComesWithTheSameText) {
    const keystore::HKEY a = openKey(L"A");
    RegKeys keys("B", a, true);
    keys.setPrefix("b", a, false);

    EXPECT_EQ(keys.getPrefix(), "b");
    EXPECT_FALSE(hasKey(L"A\\B\\b")) << "the root was closed ahead of that";
    EXPECT_EQ(keystore::RegCloseKey(a), keystore::InvalidHandle);
}

TEST_P(RegKeysPrefix, StillOwnsItsRootWhenItIgnoresAText) {
    const keystore::HKEY a = openKey(L"A");
    {
        RegKeys keys("B", a, true);
        keys.setPrefix("C", a, false);
        EXPECT_TRUE(keys.setKey("Gain", "1"));
    }
    EXPECT_EQ(valueAt(L"A\\B", L"Gain"), L"1");
    EXPECT_EQ(keystore::RegCloseKey(a), keystore::InvalidHandle);
}

TEST_P(RegKeysPrefix, IsEmptiedOnlyWithAnotherRootOrByItself) {
    RegKeys keys("A", root, false);
    keys.setPrefix("", root, false);
    EXPECT_EQ(keys.getPrefix(), "A");

    keys.setPrefix("");
    EXPECT_EQ(keys.getPrefix(), "");
}

}  // namespace

}  // namespace QOR::AttributeContainer::Testing
