#include <AttributeContainer/AttrDefinition.h>

#include <AttributeContainer/Attr.h>
#include <AttributeContainer/kVAttrContainer.h>

#include "support/Containers.h"
#include "support/FreeAttribute.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using Source = std::optional<std::reference_wrapper<const Attribute>>;

std::shared_ptr<Attribute> created(std::uint32_t type, int category = 18) {
    return AttrDefinition{0, "Row", AttrType{type}, category}.createAttr(CreateDeep, std::nullopt,
                                                                        std::nullopt);
}

/// Opens the tables' makers to the tests.
class Tables : public AttrContainer {
public:
    using AttrContainer::createAttrDefMapFromAttrDefinitions;
    using AttrContainer::createKeyTableFromAttrDefinitions;
    using AttrContainer::createKeyTableFromFieldDefinitions;
};

}  // namespace

TEST(AttrDefinition, HasTheCategoryBits) {
    EXPECT_EQ(AttrDefinition::flagged, 2);
    EXPECT_EQ(AttrDefinition::nameRow, 4);
    EXPECT_EQ(AttrDefinition::domain, 16);
    EXPECT_EQ(AttrDefinition::notPersistent, 32);
    EXPECT_EQ(AttrDefinition::custom, 64);
}

TEST(AttrDefinition, IsAnAggregateInTheOrderOfItsMembers) {
    const AttrDefinition row{3, "Key", AttrType{9}, 18};
    EXPECT_EQ(row.token, 3u);
    EXPECT_EQ(row.name, "Key");
    EXPECT_EQ(row.type, AttrType{9});
    EXPECT_EQ(row.category, 18);

    const FieldDefinition field{2, "Key", "Type"};
    EXPECT_EQ(field.token, 2u);
    EXPECT_EQ(field.name, "Key");
    EXPECT_EQ(field.typeName, "Type");
}

TEST(CreateAttr, MakesTheSameClassForBothTokensOfAType) {
    EXPECT_EQ(created(0)->getClassName(), "Attr<int>");
    EXPECT_EQ(created(5)->getClassName(), "Attr<int>");
    EXPECT_EQ(created(33)->getClassName(), "Attr<IntVector>");
    EXPECT_EQ(created(39)->getClassName(), "Attr<IntVector>");
    EXPECT_EQ(created(34)->getClassName(), "Attr<UInt32Vector>");
    EXPECT_EQ(created(40)->getClassName(), "Attr<UInt32Vector>");
}

TEST(CreateAttr, MakesNothingForScanPoints) {
    EXPECT_EQ(created(49), nullptr);
    EXPECT_EQ(created(50), nullptr);
}

TEST(CreateAttr, MakesNothingFromTheMarkOfAnUnknownTypeOn) {
    for (const std::uint32_t type : {54u, 55u, 56u, 62u, 1000u, ~0u})
        EXPECT_EQ(created(type), nullptr) << type;
}

TEST(CreateAttr, MakesEveryOtherType) {
    for (std::uint32_t type = 0; type < 54; ++type) {
        if (type == 49 || type == 50) continue;
        EXPECT_NE(created(type), nullptr) << type;
    }
}

TEST(CreateAttr, SetsTheDefinitionFlagByTheCategory) {
    EXPECT_EQ(created(0, 18)->getFlags(), Attribute::Flags::definitionFlag);
    EXPECT_EQ(created(0, 2)->getFlags(), Attribute::Flags::definitionFlag);
    EXPECT_EQ(created(0, 16)->getFlags(), 0);
    EXPECT_EQ(created(0, 4)->getFlags(), 0);
    EXPECT_EQ(created(0, 0)->getFlags(), 0);
}

TEST(CreateAttr, LeavesTheFlagsOfTheSourceBehind) {
    const auto source = attributeOf(5);
    source->setMarked(true);
    source->setWriteFlag(true);

    const auto copy =
        AttrDefinition{0, "Row", AttrType{0}, 18}.createAttr(CreateDeep, *source, std::nullopt);

    EXPECT_EQ(copy->getFlags(), Attribute::Flags::definitionFlag);
}

TEST(CreateAttr, TakesTheValueOfASourceWhateverTheCreateType) {
    const auto source = attributeOf(5);
    const AttrDefinition row{0, "Row", AttrType{0}, 18};

    for (const CreateType type :
         {CreateDeep, CreateShareFields, CreateShareFieldsAlso, CreateEmpty}) {
        const auto copy = row.createAttr(type, *source, std::nullopt);
        EXPECT_EQ(dynamic_cast<Attr<int>&>(*copy).get(), 5) << type;
    }
}

TEST(CreateAttr, ConvertsTheValueOfASourceOfAnotherType) {
    const auto source = attributeOf(5);
    const auto copy =
        AttrDefinition{0, "Row", AttrType{10}, 18}.createAttr(CreateDeep, *source, std::nullopt);
    EXPECT_EQ(dynamic_cast<Attr<std::string>&>(*copy).get(), "5");
}

TEST(CreateAttr, PlacesTheAttributeWhereALocationIsGiven) {
    const auto mark = Mark::create();
    const AttrDefinition row{0, "Row", AttrType{0}, 18};

    const auto placed = row.createAttr(CreateDeep, std::nullopt, *mark);
    const auto free = row.createAttr(CreateDeep, std::nullopt, std::nullopt);

    EXPECT_NE(dynamic_cast<HardCodedAttr<int>*>(placed.get()), nullptr);
    EXPECT_EQ(&placed->getLocation()->get(), mark.get());
    EXPECT_NE(dynamic_cast<CustAttr<int>*>(free.get()), nullptr);
    EXPECT_FALSE(free->getLocation().has_value());
}

// What is made from the tables --------------------------------------------------------------------

TEST(DefinitionTables, LeaveOutARowWithAnEmptyName) {
    const std::vector<AttrDefinition> rows{
        {0, "First", AttrType{0}, 18}, {1, "", AttrType{0}, 18}, {2, "Third", AttrType{9}, 18}};
    const std::vector<FieldDefinition> fields{{0, "First", "Mark"}, {1, "", "Mark"}};

    const auto table = Tables::createKeyTableFromAttrDefinitions(rows);
    EXPECT_EQ(table.keyToToken("First"), 0u);
    EXPECT_EQ(table.keyToToken("Third"), 2u);
    EXPECT_EQ(table.keyToToken(""), AttrContainer::noToken);
    EXPECT_EQ(table.tokenToKey(1), std::nullopt);

    const auto fieldTable = Tables::createKeyTableFromFieldDefinitions(fields);
    EXPECT_EQ(fieldTable.keyToToken("First"), 0u);
    EXPECT_EQ(fieldTable.keyToToken(""), AttrContainer::noToken);
    EXPECT_EQ(fieldTable.tokenToKey(1), std::nullopt);

    const auto map = Tables::createAttrDefMapFromAttrDefinitions(rows);
    EXPECT_EQ(map.size(), 2u);
    EXPECT_EQ(map.at(0), &rows[0]);
    EXPECT_EQ(map.at(2), &rows[2]);
}

TEST(DefinitionTables, AreEmptyForNoRows) {
    EXPECT_EQ(Tables::createKeyTableFromAttrDefinitions({}).size(), 0u);
    EXPECT_EQ(Tables::createKeyTableFromFieldDefinitions({}).size(), 0u);
    EXPECT_TRUE(Tables::createAttrDefMapFromAttrDefinitions({}).empty());
}
