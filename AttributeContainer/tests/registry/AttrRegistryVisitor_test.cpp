#include <AttributeContainer/AttrRegistryVisitor.h>

#include "RegistryStores.h"
#include "support/Containers.h"
#include "support/ObserverActors.h"

#include <AttributeContainer/CustAttrList.h>
#include <AttributeContainer/kVAttrContainer.h>

#include <stdexcept>

namespace QOR::AttributeContainer::Testing {

namespace {

using AttrRegistryVisitorTest = OnStore;

INSTANTIATE_TEST_SUITE_P(Stores, AttrRegistryVisitorTest, testing::ValuesIn(registryStores()),
                         keystore::Testing::nameOfStore);

constexpr unsigned allLevels = 1000;

std::shared_ptr<const RegKeys> keysAt(const std::string& prefix, keystore::HKEY root) {
    return std::make_shared<RegKeys>(prefix, root, false);
}

VisitorCore::VisitResult write(AttrContainer& container, std::shared_ptr<const RegKeys> keys) {
    AttrWriteRegistry visitor(std::move(keys), 0, allLevels);
    return container.attributeVisitor(visitor, true);
}

int read(AttrContainer& container, std::shared_ptr<const RegKeys> keys, bool notify = false) {
    AttrReadRegistry visitor(std::move(keys), notify, 0, allLevels);
    EXPECT_EQ(container.attributeVisitor(visitor, true), VisitorCore::Continue);
    return visitor.getNumRead();
}

// Wants one key for all its fields.
class Twins : public ContainerClass<Twins, AttrContainer, "Twins"> {
public:
    using Block::Block;
    std::optional<std::string> getFieldRegistryPrefix(const AttrContainer&) const override {
        return "Same";
    }
};

// Keys that differ in their case alone.
class Cases : public ContainerClass<Cases, AttrContainer, "Cases"> {
public:
    using Block::Block;
    std::optional<std::string> getFieldRegistryPrefix(const AttrContainer& field) const override {
        return field.getName() == "One" ? "a" : "A";
    }
};

// Has no keys for its fields.
class Nameless : public ContainerClass<Nameless, AttrContainer, "Nameless"> {
public:
    using Block::Block;
    std::optional<std::string> getFieldRegistryPrefix(const AttrContainer&) const override {
        return std::nullopt;
    }
};

// A key that no store takes, for one of its fields.
class Wrong : public ContainerClass<Wrong, AttrContainer, "Wrong"> {
public:
    using Block::Block;
    std::optional<std::string> getFieldRegistryPrefix(const AttrContainer& field) const override {
        return field.getName() == "Bad" ? std::string(300, 'x') : field.getName();
    }
};

// Its fields have no name but their own.
class Keyless : public ContainerClass<Keyless, AttrContainer, "Keyless"> {
public:
    using Block::Block;
    std::optional<std::string> getFieldName(std::uint64_t) const override { return ""; }
};

// Stores a text with a terminator, which reads whole.
void storeWhole(keystore::HKEY root, const std::string& prefix, const std::string& name,
                const std::string& text) {
    const RegKeys keys(prefix, root, false);
    ASSERT_TRUE(keys.setKey(name, text + std::string(1, '\0')));
}

TEST_P(AttrRegistryVisitorTest, LaysFieldsAsKeysAndAttributesAsValues) {
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

TEST_P(AttrRegistryVisitorTest, JoinsTheNamesOfDeeperLevels) {
    const auto top = AttrContainer::create();
    const auto middle = AttrContainer::create();
    const auto deep = Mark::create();
    top->addField(middle, "Middle", 0);
    middle->addField(deep, "Deep", 0);
    top->addField(Mark::create(), "Behind", 0);

    write(*top, keysAt("", root));

    EXPECT_EQ(valueAt(L"Middle\\Deep", L"Label"), L"none");
    EXPECT_EQ(valueAt(L"Behind", L"Label"), L"none");
    EXPECT_FALSE(hasKey(L"Middle\\Behind"));
    EXPECT_EQ(valueAt(L"", L"Name"), L"AttrContainer");
}

TEST_P(AttrRegistryVisitorTest, StoresEveryValueAsExpandableTextWithoutATerminator) {
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

TEST_P(AttrRegistryVisitorTest, LosesTheLastCharacterOfATextOnItsWayBack) {
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

TEST_P(AttrRegistryVisitorTest, LeavesNumbersOfOneDigitAsTheyAre) {
    const auto mark = Mark::create();
    mark->Count(3);
    write(*mark, keysAt("A", root));

    const auto back = Mark::create();
    back->Count(8);
    read(*back, keysAt("A", root));

    EXPECT_EQ(back->Count(), 8);
}

TEST_P(AttrRegistryVisitorTest, LeavesAnAttributeAloneWhoseTextIsNoNumberAnyMore) {
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

TEST_P(AttrRegistryVisitorTest, StoresTheFirstOfTwoFieldsOfOneName) {
    const auto top = Twins::create();
    const auto first = Mark::create();
    const auto second = Mark::create();
    first->Label("first");
    second->Label("second");
    top->addField(first, "One", 0);
    top->addField(second, "Two", 0);

    EXPECT_EQ(write(*top, keysAt("A", root)), VisitorCore::Skip);

    EXPECT_EQ(valueAt(L"A\\Same", L"Label"), L"first");
    AttrReadRegistry reader(keysAt("A", root), false, 0, allLevels);
    top->attributeVisitor(reader, true);
    EXPECT_EQ(first->Label(), "firs");
    EXPECT_EQ(second->Label(), "second");
}

TEST_P(AttrRegistryVisitorTest, ComparesTheNamesOfFieldsWithTheirCaseThoughTheStoreDoesNot) {
    const auto top = Cases::create();
    for (const char* const name : {"One", "Two"}) {
        const auto mark = Mark::create();
        mark->Label(name);
        mark->name(name);
        top->addField(mark, name, 0);
    }

    EXPECT_EQ(write(*top, keysAt("S", root)), VisitorCore::Continue);

    EXPECT_EQ(valueAt(L"S\\a", L"Label"), L"Two") << "both land in one key";
}

TEST_P(AttrRegistryVisitorTest, GivesALevelWithoutANameNothingButItsSeparator) {
    const auto top = AttrContainer::create();
    const auto nameless = Nameless::create();
    const auto deep = Mark::create();
    top->addField(nameless, "Middle", 0);
    nameless->addField(deep, "Deep", 0);

    EXPECT_EQ(write(*top, keysAt("S", root)), VisitorCore::Continue);

    // "Middle", then a separator with nothing behind it, which the store passes over.
    EXPECT_EQ(valueAt(L"S\\Middle", L"Label"), L"none");
}

TEST_P(AttrRegistryVisitorTest, PrunesABranchWhoseKeyCannotBeMade) {
    const auto top = Wrong::create();
    for (const char* const name : {"Bad", "Good"}) {
        const auto mark = Mark::create();
        mark->name(name);
        top->addField(mark, name, 0);
    }

    EXPECT_EQ(write(*top, keysAt("S", root)), VisitorCore::Prune);

    EXPECT_EQ(valueAt(L"S\\Good", L"Label"), L"none") << "its siblings follow in their places";
    RegKeys keys("", root, false);
    keys.setPrefix("S");
    EXPECT_EQ(keys.enumerateKeys(), std::vector<std::string>{"Good"});
}

TEST_P(AttrRegistryVisitorTest, KeepsAttributesOutThatAreNotPersistent) {
    const auto mark = TallMark::create();
    mark->Cached(77);

    write(*mark, keysAt("A", root));

    EXPECT_EQ(valueAt(L"A", L"Cached"), L"-");
    storeWhole(root, "A", "Cached", "55");
    read(*mark, keysAt("A", root));
    EXPECT_EQ(mark->Cached(), 77);
}

TEST_P(AttrRegistryVisitorTest, StoresCustomAttributesAndReadsThoseThatAreThere) {
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

TEST_P(AttrRegistryVisitorTest, CountsAttributesWithAStoredTextEvenIfItIsTheirValue) {
    const auto mark = Mark::create();
    storeWhole(root, "A", "Label", "none");
    storeWhole(root, "A", "Count", "8");

    AttrReadRegistry visitor(keysAt("A", root), false, 0, allLevels);
    EXPECT_EQ(visitor.getNumRead(), 0);
    mark->attributeVisitor(visitor, true);

    EXPECT_EQ(visitor.getNumRead(), 2);
    EXPECT_EQ(mark->Count(), 8);
}

TEST_P(AttrRegistryVisitorTest, LetsTheLastKeyWinThatHoldsAValue) {
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

TEST_P(AttrRegistryVisitorTest, StoresUnderEachOfSeveralKeys) {
    const auto mark = Mark::create();
    RegKeysArray places{{keysAt("One", root), keysAt("Two", root)}};

    AttrWriteRegistry visitor(places, 0, allLevels);
    EXPECT_EQ(mark->attributeVisitor(visitor, true), VisitorCore::Continue);

    EXPECT_EQ(valueAt(L"One", L"Label"), L"none");
    EXPECT_EQ(valueAt(L"Two", L"Label"), L"none");
}

TEST_P(AttrRegistryVisitorTest, CallsNoObserverWithoutNotifyAndGivesTheFlagBack) {
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

TEST_P(AttrRegistryVisitorTest, CallsObserversWithNotify) {
    const auto mark = Mark::create();
    storeWhole(root, "A", "Count", "8");
    const auto observer = watch(mark->Attr_Count());

    read(*mark, keysAt("A", root), true);

    EXPECT_EQ(observer->asked, 1);
    EXPECT_EQ(observer->told, 1);
}

TEST_P(AttrRegistryVisitorTest, LeavesAFlagOffThatWasOff) {
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

TEST_P(AttrRegistryVisitorTest, ReadsFieldsFromTheirKeys) {
    storeWhole(root, "A\\Top", "Label", "high");
    storeWhole(root, "A\\Mark", "Label", "low");
    const auto pole = Pole::create();

    EXPECT_EQ(read(*pole, keysAt("A", root)), 2);

    EXPECT_EQ(pole->Top().lock()->Label(), "high");
    EXPECT_EQ(pole->Mark().lock()->Label(), "low");
}

TEST_P(AttrRegistryVisitorTest, MakesNoKeysWhenItReads) {
    makeKey(L"A");
    const auto pole = Pole::create();

    EXPECT_EQ(read(*pole, keysAt("A", root)), 0);

    EXPECT_FALSE(hasKey(L"A\\Top"));
}

TEST_P(AttrRegistryVisitorTest, StaysWithinItsLevels) {
    const auto pole = Pole::create();
    AttrWriteRegistry ofTheTop(keysAt("Top", root), 0, 0);
    AttrWriteRegistry ofTheFields(keysAt("Fields", root), 1, allLevels);

    EXPECT_EQ(pole->attributeVisitor(ofTheTop, true), VisitorCore::Prune);
    pole->attributeVisitor(ofTheFields, true);

    EXPECT_EQ(valueAt(L"Top", L"Length"), L"2");
    EXPECT_FALSE(hasKey(L"Top\\Top"));
    EXPECT_EQ(valueAt(L"Fields", L"Length"), L"-");
    EXPECT_EQ(valueAt(L"Fields\\Top", L"Label"), L"none");
}

TEST_P(AttrRegistryVisitorTest, SkipsKeysThatCannotBeOpened) {
    const auto missing = std::make_shared<RegKeys>("", root, false);
    missing->setPrefix("Missing");
    const auto mark = Mark::create();
    RegKeysArray places{{missing, nullptr, keysAt("A", root)}};

    AttrWriteRegistry writer(places, 0, allLevels);
    EXPECT_EQ(mark->attributeVisitor(writer, true), VisitorCore::Continue);

    EXPECT_EQ(valueAt(L"A", L"Label"), L"none");
    EXPECT_FALSE(hasKey(L"Missing"));
}

TEST_P(AttrRegistryVisitorTest, EndsAtItsFirstContainerWithoutAnyKey) {
    const auto missing = std::make_shared<RegKeys>("", root, false);
    missing->setPrefix("Missing");
    const auto pole = Pole::create();

    EXPECT_EQ(write(*pole, missing), VisitorCore::Prune);
    EXPECT_EQ(write(*pole, nullptr), VisitorCore::Prune);
    AttrReadRegistry reader(RegKeysArray{}, false, 0, allLevels);
    EXPECT_EQ(pole->attributeVisitor(reader, true), VisitorCore::Prune);
    EXPECT_EQ(reader.getNumRead(), 0);
    EXPECT_EQ(RegKeys("", root, false).enumerateKeys(), std::vector<std::string>{});
}

TEST_P(AttrRegistryVisitorTest, GivesAnAttributeWithoutAnyKeyTheResultOfASkip) {
    const auto mark = Mark::create();
    AttrWriteRegistry writer(RegKeysArray{}, 0, allLevels);

    EXPECT_EQ(writer.visit(mark->Attr_Count()), VisitorCore::Skip);
}

TEST_P(AttrRegistryVisitorTest, GoesOnWhenAKeyRefusesAValue) {
    const auto mark = Mark::create();
    const auto keys = keysAt("A", root);
    AttrWriteRegistry writer(keys, 0, allLevels);
    RegKeys("", root, false).deleteKey("A");

    EXPECT_EQ(writer.visit(mark->Attr_Count()), VisitorCore::Continue);
    EXPECT_FALSE(hasKey(L"A"));
}

TEST_P(AttrRegistryVisitorTest, CanWalkOnceMore) {
    const auto mark = Mark::create();
    AttrWriteRegistry writer(keysAt("A", root), 0, allLevels);
    mark->attributeVisitor(writer, true);
    mark->Label("again");

    EXPECT_EQ(mark->attributeVisitor(writer, true), VisitorCore::Continue);
    EXPECT_EQ(valueAt(L"A", L"Label"), L"again");
}

TEST_P(AttrRegistryVisitorTest, StoresAndLeavesEmptyTexts) {
    const auto mark = Mark::create();
    mark->Label("");
    write(*mark, keysAt("A", root));
    EXPECT_EQ(valueAt(L"A", L"Label"), L"");

    mark->Label("kept");
    read(*mark, keysAt("A", root));
    EXPECT_EQ(mark->Label(), "kept");
}

TEST(FieldRegistryPrefix, IsTheKeyOfTheField) {
    const auto pole = Pole::create();
    pole->addField(Mark::create(), "Added", 0);

    EXPECT_EQ(pole->getFieldRegistryPrefix(*pole->Top().lock()), "Top");
    EXPECT_EQ(pole->getFieldRegistryPrefix(*pole->getField("Added").lock()), "Added");
}

TEST(FieldRegistryPrefix, IsEmptyForAContainerThatIsNoField) {
    const auto pole = Pole::create();
    const auto stranger = Mark::create();

    EXPECT_EQ(pole->getFieldRegistryPrefix(*stranger), std::nullopt);
    EXPECT_EQ(stranger->getFieldRegistryPrefix(*pole), std::nullopt);
}

TEST(FieldRegistryPrefix, IsTheNameOfTheFieldWhereItsKeyIsEmpty) {
    const auto top = Keyless::create();
    const auto mark = Mark::create();
    mark->name("OwnName");

    EXPECT_EQ(top->getFieldRegistryPrefix(*mark), "OwnName");
}

}  // namespace

}  // namespace QOR::AttributeContainer::Testing
