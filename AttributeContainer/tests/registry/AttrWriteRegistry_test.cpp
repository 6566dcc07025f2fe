#include <AttributeContainer/AttrRegistryVisitor.h>

#include "support/Containers.h"
#include "support/FreeAttribute.h"
#include "support/RegistryWalks.h"

namespace QOR::AttributeContainer::Testing {

namespace {

using AttrWriteRegistryTest = OnStore;

INSTANTIATE_TEST_SUITE_P(Stores, AttrWriteRegistryTest, testing::ValuesIn(registryStores()),
                         keystore::Testing::nameOfStore);

TEST_P(AttrWriteRegistryTest, LaysFieldsAsKeysAndAttributesAsValues) {
    const auto pole = LongPole::create();
    pole->Length(25);
    pole->addField(Mark::create(), "A", 0);
    pole->Top().lock()->Label("high");

    EXPECT_EQ(write(*pole, keysAt("Settings", root)), VisitorCore::Continue);

    EXPECT_EQ(valueAt(L"Settings", L"Length"), L"25");
    EXPECT_EQ(valueAt(L"Settings", L"Name"), L"LongPole");
    EXPECT_EQ(valueAt(L"Settings\\A", L"Label"), L"none");
    EXPECT_EQ(valueAt(L"Settings\\A", L"Height"), L"1.75");
    EXPECT_EQ(valueAt(L"Settings\\Top", L"Label"), L"high");
    EXPECT_EQ(valueAt(L"Settings\\Mark", L"Count"), L"7");
}

TEST_P(AttrWriteRegistryTest, StoresEveryValueAsExpandableTextWithoutATerminator) {
    const auto mark = Mark::create();
    mark->Height(2.5);
    write(*mark, keysAt("A", root));
    unsigned char data[20];
    unsigned long size = sizeof data;
    unsigned long type = 0;

    EXPECT_TRUE(keysAt("A", root)->queryKey("Height", data, &size, &type));
    EXPECT_EQ(type, 2u);
    EXPECT_EQ(size, 6u);
}

TEST_P(AttrWriteRegistryTest, StoresUnderEachOfSeveralKeys) {
    const auto mark = Mark::create();
    RegKeysArray places{{keysAt("One", root), keysAt("Two", root)}};

    AttrWriteRegistry visitor(places, 0, allLevels);
    EXPECT_EQ(mark->attributeVisitor(visitor, true), VisitorCore::Continue);

    EXPECT_EQ(valueAt(L"One", L"Label"), L"none");
    EXPECT_EQ(valueAt(L"Two", L"Label"), L"none");
}

TEST_P(AttrWriteRegistryTest, GivesAnAttributeWithoutAnyKeyTheResultOfASkip) {
    const auto mark = Mark::create();
    AttrWriteRegistry writer(RegKeysArray{}, 0, allLevels);

    EXPECT_EQ(writer.visit(mark->Attr_Count()), VisitorCore::Skip);
}

TEST_P(AttrWriteRegistryTest, GoesOnWhenAKeyRefusesAValue) {
    const auto mark = Mark::create();
    const auto keys = keysAt("A", root);
    AttrWriteRegistry writer(keys, 0, allLevels);
    RegKeys("", root, false).deleteKey("A");

    EXPECT_EQ(writer.visit(mark->Attr_Count()), VisitorCore::Continue);
    EXPECT_FALSE(hasKey(L"A"));
}

TEST_P(AttrWriteRegistryTest, StoresAndLeavesEmptyTexts) {
    const auto mark = Mark::create();
    mark->Label("");
    write(*mark, keysAt("A", root));
    EXPECT_EQ(valueAt(L"A", L"Label"), L"");

    mark->Label("kept");
    read(*mark, keysAt("A", root));
    EXPECT_EQ(mark->Label(), "kept");
}

TEST_P(AttrWriteRegistryTest, StoresAnAttributeThatLiesInNoContainer) {
    const auto attribute = attributeOf(125);
    AttrWriteRegistry writer(keysAt("A", root), 0, allLevels);

    EXPECT_EQ(writer.visit(*attribute), VisitorCore::Continue);
    EXPECT_EQ(valueAt(L"A", QOR::wide(attribute->getName())), L"125");
}

TEST_P(AttrWriteRegistryTest, StoresTheTextFormOfEachType) {
    const auto mark = TallMark::create();
    addCustom(*mark, "Size", SVec2d<int>(40, 25));
    mark->Count(-3);
    write(*mark, keysAt("A", root));

    EXPECT_EQ(valueAt(L"A", L"Lit"), L"true");
    EXPECT_EQ(valueAt(L"A", L"Size"), L"40 25 ");  // each component has a blank behind it
    EXPECT_EQ(valueAt(L"A", L"Count"), L"-3");
}

TEST_P(AttrWriteRegistryTest, PrunesAFieldWhoseKeyOneOfSeveralPlacesRefuses) {
    const auto pole = Pole::create();
    const RegKeysArray places{{keysAt("One", root), keysAt("Two", root)}};
    AttrWriteRegistry writer(places, 0, allLevels);
    RegKeys("", root, false).deleteKey("One");

    EXPECT_EQ(pole->attributeVisitor(writer, true), VisitorCore::Prune);

    EXPECT_EQ(valueAt(L"Two", L"Length"), L"2");
    EXPECT_TRUE(hasKey(L"Two\\Top")) << "made all the same";
    EXPECT_EQ(valueAt(L"Two\\Top", L"Label"), L"-");
}

}  // namespace

}  // namespace QOR::AttributeContainer::Testing
