#include <AttributeContainer/AttrRegistryVisitor.h>

#include "support/Containers.h"
#include "support/RegistryWalks.h"

namespace QOR::AttributeContainer::Testing {

namespace {

using AttrRegistryVisitorTest = OnStore;

INSTANTIATE_TEST_SUITE_P(Stores, AttrRegistryVisitorTest, testing::ValuesIn(registryStores()),
                         keystore::Testing::nameOfStore);

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

TEST_P(AttrRegistryVisitorTest, CanWalkOnceMore) {
    const auto mark = Mark::create();
    AttrWriteRegistry writer(keysAt("A", root), 0, allLevels);
    mark->attributeVisitor(writer, true);
    mark->Label("again");

    EXPECT_EQ(mark->attributeVisitor(writer, true), VisitorCore::Continue);
    EXPECT_EQ(valueAt(L"A", L"Label"), L"again");
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

TEST_P(AttrRegistryVisitorTest, LaysAFieldWithoutANameBelowTheTopIntoTheKeyOfTheTop) {
    const auto top = Nameless::create();
    const auto middle = addField<Mark>(*top, "Middle");
    middle->Label("middle");
    addField<Mark>(*middle, "Deep");

    EXPECT_EQ(write(*top, keysAt("S", root)), VisitorCore::Prune);

    EXPECT_EQ(valueAt(L"S", L"Label"), L"middle");
    // The path of the next level begins with the separator of the one that has no name.
    EXPECT_EQ(RegKeys("S", root, false).enumerateKeys(), std::vector<std::string>{});
}

TEST_P(AttrRegistryVisitorTest, TellsTheWalkNotToEnterTheSecondFieldOfAName) {
    const auto top = Twins::create();
    const auto first = addField<Mark>(*top, "One");
    const auto second = addField<Mark>(*top, "Two");
    AttrReadRegistry visitor(keysAt("A", root), false, 0, allLevels);

    EXPECT_EQ(visitor.visit(*top), VisitorCore::Continue);
    EXPECT_EQ(visitor.visit(*first), VisitorCore::Continue);
    EXPECT_EQ(visitor.visitDone(*first), VisitorCore::Continue);
    EXPECT_EQ(visitor.visit(*second), VisitorCore::Skip);
    EXPECT_EQ(visitor.visitDone(*top), VisitorCore::Continue);
}

TEST_P(AttrRegistryVisitorTest, ForgetsTheNamesOfALevelWithTheLevel) {
    const auto top = AttrContainer::create();
    for (const char* const name : {"One", "Two"})
        addField<Mark>(*addField(*top, name), "Same")->Label(name);

    EXPECT_EQ(write(*top, keysAt("S", root)), VisitorCore::Continue);

    EXPECT_EQ(valueAt(L"S\\One\\Same", L"Label"), L"One");
    EXPECT_EQ(valueAt(L"S\\Two\\Same", L"Label"), L"Two");
}

}  // namespace

}  // namespace QOR::AttributeContainer::Testing
