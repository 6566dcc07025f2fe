// How a list of fields is made from the rows of a class, and from another list.
#include <AttributeContainer/FieldList.h>

#include <AttributeContainer/kVAttrContainer.h>

#include "support/Containers.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

/// Makes fields by its hooks and notes what it was asked for.
class Maker : public ContainerClass<Maker, AttrContainer, "Maker"> {
public:
    using Block::Block;
    using Block::createFields;

    std::shared_ptr<AttrContainer> checkCreateChildField(const std::string& typeName,
                                                         const std::string& name,
                                                         std::uint64_t* token) override {
        asked.push_back("ahead " + typeName + " " + name + (token ? " token" : ""));
        return ahead;
    }
    std::shared_ptr<AttrContainer> checkCreateDefaultChildField(const std::string& typeName,
                                                                const std::string& name,
                                                                std::uint64_t* token) override {
        asked.push_back("behind " + typeName + " " + name + (token ? " token" : ""));
        return behind;
    }

    std::vector<std::string> asked;
    std::shared_ptr<AttrContainer> ahead;
    std::shared_ptr<AttrContainer> behind;
};

using Rows = std::vector<FieldDefinition>;
using Asked = std::vector<std::string>;

struct CreateFields : testing::Test {
    CreateFields() { list.setMinCapacity(3); }

    bool create(const Rows& rows, CreateType type = CreateDeep,
                FieldList::Source source = std::nullopt) {
        return list.createFields(*owner, rows, type, source);
    }

    std::shared_ptr<Maker> owner = Maker::create();
    FieldList list{0};
};

}  // namespace

TEST_F(CreateFields, SucceedsForNoRows) {
    FieldList none(0);
    EXPECT_TRUE(none.createFields(*owner, {}, CreateDeep, std::nullopt));
    EXPECT_EQ(none.size(), 0u);
}

TEST_F(CreateFields, MakesEachFieldByTheFactoryUnderTheNameOfItsRow) {
    EXPECT_TRUE(create({{0, "First", "Mark"}, {2, "Third", "Guest"}}));

    ASSERT_NE(list.get(0), nullptr);
    EXPECT_EQ(list.get(0)->getClassName(), "Mark");
    EXPECT_EQ(list.get(0)->getName(), "First");
    EXPECT_EQ(list.get(1), nullptr);
    const auto guest = std::dynamic_pointer_cast<Guest>(list.get(2));
    ASSERT_NE(guest, nullptr);
    ASSERT_EQ(guest->calls.size(), 1u);
    EXPECT_EQ(guest->calls[0].what, "attach");
    EXPECT_EQ(guest->calls[0].parent.lock(), owner);
    EXPECT_EQ(list.getElementName(0), std::nullopt);  // the class's own table has it
}

TEST_F(CreateFields, EndsAtATokenBehindTheDeclaredSlots) {
    EXPECT_FALSE(create({{0, "First", "Mark"}, {3, "Fourth", "Mark"}, {1, "Second", "Mark"}}));
    EXPECT_NE(list.get(0), nullptr);
    EXPECT_EQ(list.get(1), nullptr);
}

TEST_F(CreateFields, EndsAtATypeThatNobodyMakes) {
    EXPECT_FALSE(create({{0, "First", "Nobody"}, {1, "Second", "Mark"}}));
    EXPECT_EQ(list.get(1), nullptr);
    EXPECT_EQ(owner->asked, (Asked{"ahead Nobody First", "behind Nobody First"}));
}

TEST_F(CreateFields, LeavesARowWithoutATypeEmpty) {
    EXPECT_TRUE(create({{0, "First", ""}, {1, "Second", "Mark"}}));
    EXPECT_EQ(list.get(0), nullptr);
    EXPECT_NE(list.get(1), nullptr);
}

TEST_F(CreateFields, TakesTheFieldOfTheHookAheadOfTheFactory) {
    owner->ahead = Guest::create();

    EXPECT_TRUE(create({{0, "First", "Mark"}}));

    EXPECT_EQ(list.get(0), owner->ahead);
    EXPECT_EQ(list.get(0)->getName(), "Guest");  // the hook names it, if anybody does
    EXPECT_EQ(owner->asked, (Asked{"ahead Mark First"}));
}

TEST_F(CreateFields, TakesTheFieldOfTheHookBehindTheFactory) {
    owner->behind = Guest::create();

    EXPECT_TRUE(create({{0, "First", "Nobody"}, {1, "Second", ""}}));

    EXPECT_EQ(list.get(0), owner->behind);
    EXPECT_EQ(list.get(1), owner->behind);
}

TEST_F(CreateFields, CopiesTheFieldsOfASource) {
    const auto source = LongPole::create();
    source->Mark().lock()->Height(5);

    EXPECT_TRUE(create({{0, "Mark", "Mark"}}, CreateDeep, *source));

    const auto mark = std::dynamic_pointer_cast<Mark>(list.get(0));
    ASSERT_NE(mark, nullptr);
    EXPECT_NE(mark, source->Mark().lock());
    EXPECT_EQ(mark->Height(), 5);
    EXPECT_TRUE(owner->asked.empty());
}

TEST_F(CreateFields, SharesTheFieldsOfASource) {
    const auto source = LongPole::create();
    for (const CreateType type : {CreateShareFields, CreateShareFieldsAlso}) {
        EXPECT_TRUE(create({{0, "Mark", "Mark"}}, type, *source));
        EXPECT_EQ(list.get(0), source->Mark().lock());
    }
}

TEST_F(CreateFields, GoesByTheRowWhereTheSourceHasNoField) {
    const auto source = LongPole::create();
    source->rmField(std::uint64_t{0});
    const auto bare = AttrContainer::create();

    EXPECT_TRUE(create({{0, "Mark", "Mark"}}, CreateDeep, *source));
    EXPECT_EQ(owner->asked, (Asked{"ahead Mark Mark"}));
    EXPECT_TRUE(create({{1, "Top", "Mark"}}, CreateDeep, *bare));
    EXPECT_EQ(list.get(1)->getName(), "Top");
}

TEST_F(CreateFields, MakesTheListOfAContainerWhereItIsMissing) {
    // This class declares no slot, so the first row ends the work.
    EXPECT_FALSE(owner->createFields({{0, "First", "Mark"}}, CreateDeep, std::nullopt));
    EXPECT_EQ(owner->getNumFields(), 0u);
    EXPECT_TRUE(owner->createFields({}, CreateDeep, std::nullopt));
}

// From another list -------------------------------------------------------------------------------

namespace {

// One declared slot, empty, a "guest" and a hole behind it.
struct CreateAttrContainer : testing::Test {
    CreateAttrContainer() {
        guest->name("own");
        source.setMinCapacity(1);
        source.addElement(guest, "guest");
        source.addElement(nullptr, "gone");
    }

    std::shared_ptr<AttrContainer> owner = AttrContainer::create();
    std::shared_ptr<Guest> guest = Guest::create();
    FieldList source{0};
    FieldList list{0};
};

}  // namespace

TEST_F(CreateAttrContainer, DuplicatesTheFieldsWithTheirNames) {
    EXPECT_TRUE(list.createAttrContainer(*owner, source, CreateDeep));

    EXPECT_EQ(list.getMinCapacity(), 1u);
    EXPECT_EQ(list.size(), 3u);
    EXPECT_EQ(list.get(0), nullptr);
    const auto copy = std::dynamic_pointer_cast<Guest>(list.get(1));
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy, guest);
    EXPECT_EQ(copy->getName(), "own");
    EXPECT_EQ(list.getToken("guest"), 1u);
    EXPECT_EQ(list.get(2), nullptr);
    EXPECT_EQ(list.getToken("gone"), 2u);
    ASSERT_EQ(copy->calls.size(), 1u);
    EXPECT_EQ(copy->calls[0].what, "attach");
    EXPECT_EQ(copy->calls[0].parent.lock(), owner);
}

TEST_F(CreateAttrContainer, SharesTheFields) {
    for (const CreateType type : {CreateShareFields, CreateShareFieldsAlso}) {
        FieldList shared(0);
        EXPECT_TRUE(shared.createAttrContainer(*owner, source, type));
        EXPECT_EQ(shared.get(1), guest);
        EXPECT_EQ(guest->calls.back().what, "attach");
    }
}

TEST_F(CreateAttrContainer, NamesEmptyDuplicatesAfterTheFieldsOfTheSource) {
    EXPECT_TRUE(list.createAttrContainer(*owner, source, CreateEmpty));
    EXPECT_EQ(list.get(1)->getName(), "own");
}

TEST_F(CreateAttrContainer, FillsTheDeclaredSlotsInPlace) {
    source.setElement(0, AttrContainer::create());
    EXPECT_TRUE(list.createAttrContainer(*owner, source, CreateDeep));
    EXPECT_NE(list.get(0), nullptr);
    EXPECT_EQ(list.size(), 3u);
}

TEST_F(CreateAttrContainer, CopiesAnEmptyList) {
    EXPECT_TRUE(list.createAttrContainer(*owner, FieldList(0), CreateDeep));
    EXPECT_EQ(list.size(), 0u);
    EXPECT_EQ(list.getMinCapacity(), 0u);
}
