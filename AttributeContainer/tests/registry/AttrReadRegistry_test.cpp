#include <AttributeContainer/AttrRegistryVisitor.h>

#include "support/Containers.h"
#include "support/ObserverActors.h"
#include "support/RegistryWalks.h"

namespace QOR::AttributeContainer::Testing {

namespace {

using AttrReadRegistryTest = OnStore;

INSTANTIATE_TEST_SUITE_P(Stores, AttrReadRegistryTest, testing::ValuesIn(registryStores()),
                         keystore::Testing::nameOfStore);

TEST_P(AttrReadRegistryTest, LosesTheLastCharacterOfATextOnItsWayBack) {
    const auto mark = Mark::create();
    mark->Label("north");
    mark->Count(125);
    write(*mark, keysAt("A", root));

    const auto back = Mark::create();
    read(*back, keysAt("A", root));

    EXPECT_EQ(back->Label(), "nort");
    EXPECT_EQ(back->Count(), 12);
    EXPECT_EQ(back->Height(), 1.7);
}

TEST_P(AttrReadRegistryTest, LeavesNumbersOfOneDigitAsTheyAre) {
    const auto mark = Mark::create();
    mark->Count(3);
    write(*mark, keysAt("A", root));

    const auto back = Mark::create();
    back->Count(8);
    read(*back, keysAt("A", root));

    EXPECT_EQ(back->Count(), 8);
}

TEST_P(AttrReadRegistryTest, LeavesAnAttributeAloneWhoseTextIsNoNumberAnyMore) {
    const auto mark = Mark::create();
    mark->Height(-1);
    mark->Label("north");
    write(*mark, keysAt("A", root));

    const auto back = Mark::create();
    EXPECT_NO_THROW(read(*back, keysAt("A", root)));

    EXPECT_EQ(back->Height(), 1.75);
    EXPECT_EQ(back->Label(), "nort");
    EXPECT_TRUE(back->Attr_Height().isNotifyEnabled());
}

TEST_P(AttrReadRegistryTest, StoresCustomAttributesAndReadsThoseThatAreThere) {
    const auto mark = Mark::create();
    mark->addAttribute(std::make_shared<CustAttr<int>>(std::nullopt), "Extra");
    const auto extra = mark->getAttribute("Extra").lock();
    ASSERT_TRUE(extra);
    extra->assignFrom("125");
    write(*mark, keysAt("A", root));
    EXPECT_EQ(valueAt(L"A", L"Extra"), L"125");

    const auto without = Mark::create();
    read(*without, keysAt("A", root));
    EXPECT_TRUE(without->getAttribute("Extra").expired());

    extra->assignFrom("0");
    read(*mark, keysAt("A", root));
    EXPECT_EQ(extra->getValueString(), "12");
}

TEST_P(AttrReadRegistryTest, CountsAttributesWithAStoredTextEvenIfItIsTheirValue) {
    const auto mark = Mark::create();
    storeWhole(root, "A", "Label", "none");
    storeWhole(root, "A", "Count", "8");

    AttrReadRegistry visitor(keysAt("A", root), false, 0, allLevels);
    EXPECT_EQ(visitor.getNumRead(), 0);
    mark->attributeVisitor(visitor, true);

    EXPECT_EQ(visitor.getNumRead(), 2);
    EXPECT_EQ(mark->Count(), 8);
}

TEST_P(AttrReadRegistryTest, LetsTheLastKeyWinThatHoldsAValue) {
    storeWhole(root, "One", "Label", "first");
    storeWhole(root, "One", "Count", "1");
    storeWhole(root, "Two", "Label", "second");
    const auto mark = Mark::create();
    RegKeysArray places{{keysAt("One", root), nullptr, keysAt("Two", root)}};

    AttrReadRegistry visitor(places, false, 0, allLevels);
    mark->attributeVisitor(visitor, true);

    EXPECT_EQ(mark->Label(), "second");
    EXPECT_EQ(mark->Count(), 1);
    EXPECT_EQ(visitor.getNumRead(), 2);
}

TEST_P(AttrReadRegistryTest, CallsNoObserverWithoutNotifyAndGivesTheFlagBack) {
    const auto mark = Mark::create();
    storeWhole(root, "A", "Count", "8");
    storeWhole(root, "A", "Label", "new");
    const auto ofNumber = watch(mark->Attr_Count());
    const auto ofText = watch(mark->Attr_Label());

    EXPECT_EQ(read(*mark, keysAt("A", root), false), 2);

    EXPECT_EQ(mark->Count(), 8);
    EXPECT_EQ(mark->Label(), "new");
    EXPECT_EQ(ofNumber->asked + ofNumber->told + ofText->asked + ofText->told, 0);
    EXPECT_TRUE(mark->Attr_Count().isNotifyEnabled());
    EXPECT_TRUE(mark->Attr_Label().isNotifyEnabled());
}

TEST_P(AttrReadRegistryTest, CallsObserversWithNotify) {
    const auto mark = Mark::create();
    storeWhole(root, "A", "Count", "8");
    const auto observer = watch(mark->Attr_Count());

    read(*mark, keysAt("A", root), true);

    EXPECT_EQ(observer->asked, 1);
    EXPECT_EQ(observer->told, 1);
}

TEST_P(AttrReadRegistryTest, LeavesAFlagOffThatWasOff) {
    const auto mark = Mark::create();
    storeWhole(root, "A", "Count", "8");
    mark->Attr_Count().setNotifyEnabled(false);
    const auto observer = watch(mark->Attr_Count());

    for (const bool notify : {false, true}) {
        read(*mark, keysAt("A", root), notify);
        EXPECT_FALSE(mark->Attr_Count().isNotifyEnabled());
    }
    EXPECT_EQ(observer->told, 0);
}

TEST_P(AttrReadRegistryTest, ReadsFieldsFromTheirKeys) {
    storeWhole(root, "A\\Top", "Label", "high");
    storeWhole(root, "A\\Mark", "Label", "low");
    const auto pole = Pole::create();

    EXPECT_EQ(read(*pole, keysAt("A", root)), 2);

    EXPECT_EQ(pole->Top().lock()->Label(), "high");
    EXPECT_EQ(pole->Mark().lock()->Label(), "low");
}

TEST_P(AttrReadRegistryTest, MakesNoKeysWhenItReads) {
    makeKey(L"A");
    const auto pole = Pole::create();

    EXPECT_EQ(read(*pole, keysAt("A", root)), 0);

    EXPECT_FALSE(hasKey(L"A\\Top"));
}

TEST_P(AttrReadRegistryTest, ReadsATrueThatLostItsLastLetterAsFalse) {
    const auto mark = TallMark::create();
    write(*mark, keysAt("A", root));
    ASSERT_TRUE(mark->Lit());

    read(*mark, keysAt("A", root));

    EXPECT_FALSE(mark->Lit()) << "of all words only \"true\" is";
}

TEST_P(AttrReadRegistryTest, ReadsWholeWhatEndsInABlank) {
    const auto mark = Mark::create();
    const auto size = addCustom(*mark, "Size", SVec2d<int>(40, 25));
    write(*mark, keysAt("A", root));
    size->set(SVec2d<int>(0, 0));

    read(*mark, keysAt("A", root));

    EXPECT_EQ(size->get(), SVec2d<int>(40, 25));
}

TEST_P(AttrReadRegistryTest, TakesZeroForAnIntegerOfWhichOnlyTheSignIsLeft) {
    const auto mark = Mark::create();
    mark->Count(-3);
    write(*mark, keysAt("A", root));

    read(*mark, keysAt("A", root));

    EXPECT_EQ(mark->Count(), 0);
}

TEST_P(AttrReadRegistryTest, RenamesAContainerWhoseNameLostItsLastCharacter) {
    const auto mark = Mark::create();
    mark->name("north");
    write(*mark, keysAt("A", root));

    read(*mark, keysAt("A", root));

    EXPECT_EQ(mark->getName(), "nort");
}

TEST_P(AttrReadRegistryTest, CountsATextThatAnObserverRefuses) {
    const auto mark = Mark::create();
    storeWhole(root, "A", "Label", "new");
    const auto refuser = watch<Refuser>(mark->Attr_Label());

    EXPECT_EQ(read(*mark, keysAt("A", root), true), 1);
    EXPECT_EQ(mark->Label(), "none");
    EXPECT_EQ(read(*mark, keysAt("A", root), false), 1);
    EXPECT_EQ(mark->Label(), "new") << "nobody was asked";
    EXPECT_EQ(refuser->asked, 1);
}

}  // namespace

}  // namespace QOR::AttributeContainer::Testing
