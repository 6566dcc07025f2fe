// What a copy of a container takes along.
#include <AttributeContainer/kVAttrContainer.h>

#include "support/Containers.h"
#include "support/ObserverActors.h"

#include <AttributeContainer/Object.h>

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

/// Opens the protected makers to the tests.
class Opened : public ContainerClass<Opened, AttrContainer, "Opened"> {
public:
    using Block::Block;
    using Block::createAttributes;
    using Block::createFields;
};

/// Counts how many of its kind were made.
class Tallied : public ContainerClass<Tallied, AttrContainer, "Tallied"> {
    friend Block;

public:
    using Block::Block;

    static inline int made = 0;

protected:
    void init(CreateType type, Source source) {
        Block::init(type, source);
        ++made;
    }
};

class TalliedHolder : public ContainerClass<TalliedHolder, AttrContainer, "TalliedHolder"> {
public:
    using Block::Block;

    QOR_FIELD(0, Tallied, Only);
};

}  // namespace

TEST(ContainerCopy, HasTheValuesOfItsSource) {
    const auto mark = TallMark::create();
    mark->name("north");
    mark->Height(3.5);
    mark->Lit(false);

    const auto copy = std::dynamic_pointer_cast<TallMark>(mark->duplicate(CreateDeep));

    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->getName(), "north");
    EXPECT_EQ(copy->Height(), 3.5);
    EXPECT_FALSE(copy->Lit());
    EXPECT_EQ(copy->Count(), 7);
}

TEST(ContainerCopy, IsIndependentOfItsSource) {
    const auto mark = Mark::create();
    const auto copy = std::dynamic_pointer_cast<Mark>(mark->duplicate(CreateDeep));

    copy->Height(9);
    copy->name("copy");

    EXPECT_EQ(mark->Height(), 1.75);
    EXPECT_EQ(mark->getName(), "Mark");
}

TEST(ContainerCopy, HasCustomAttributesOfItsOwn) {
    const auto mark = Mark::create();
    addCustom(*mark, "Depth", 3);
    addCustom<std::string>(*mark, "Note", "wet");

    const auto copy = mark->duplicate(CreateDeep);

    ASSERT_EQ(copy->getNumAttributes(), 6u);
    const auto depth = copy->getAttribute("Depth").lock();
    ASSERT_NE(depth, nullptr);
    EXPECT_NE(depth, mark->getAttribute("Depth").lock());
    EXPECT_EQ(depth->getValueString(), "3");
    EXPECT_EQ(depth->getToken(), 4u);
    EXPECT_EQ(&depth->getLocation()->get(), copy.get());
    EXPECT_EQ(copy->getAttribute("Note").lock()->getToken(), 5u);
}

TEST(ContainerCopy, DuplicatesFieldsWithTheirNames) {
    const auto container = AttrContainer::create();
    const auto field = addNamedField<Mark>(*container, "inner");
    field->Height(4);
    field->name("own");

    const auto copy = container->duplicate(CreateDeep);

    const auto inner = std::dynamic_pointer_cast<Mark>(copy->getField("inner").lock());
    ASSERT_NE(inner, nullptr);
    EXPECT_NE(inner, field);
    EXPECT_EQ(inner->Height(), 4);
    EXPECT_EQ(inner->getName(), "own");
}

TEST(ContainerCopy, SharesFieldsWhereItIsAskedTo) {
    const auto container = AttrContainer::create();
    const auto field = addNamedField(*container, "inner");

    for (const CreateType type : {CreateShareFields, CreateShareFieldsAlso}) {
        const auto copy = container->duplicate(type);
        EXPECT_EQ(copy->getField("inner").lock(), field) << type;
    }
}

TEST(ContainerCopy, IsANewDefaultObjectWhereItIsEmpty) {
    const auto mark = Mark::create();
    mark->name("north");
    mark->Height(3.5);
    addCustom(*mark, "Depth", 3);
    addNamedField(*mark, "inner");

    const auto copy = std::dynamic_pointer_cast<Mark>(mark->duplicate(CreateEmpty));

    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->getName(), "Mark");
    EXPECT_EQ(copy->Height(), 1.75);
    EXPECT_EQ(copy->getNumAttributes(), 4u);
    EXPECT_EQ(copy->getNumFields(), 0u);
}

TEST(ContainerCopy, IsDecidedByTheSourceAndNotByTheType) {
    const auto mark = Mark::create();
    mark->Height(3.5);

    const auto copy = Mark::create(CreateEmpty, *mark);

    EXPECT_EQ(copy->Height(), 3.5);
}

TEST(ContainerCopy, DuplicatesFieldsForAnyTypeThatSharesNone) {
    const auto container = AttrContainer::create();
    const auto field = addNamedField<Mark>(*container, "inner");
    field->Height(4);

    const auto copy = container->duplicate(CreateType{77});

    const auto inner = std::dynamic_pointer_cast<Mark>(copy->getField("inner").lock());
    ASSERT_NE(inner, nullptr);
    EXPECT_NE(inner, field);
    EXPECT_EQ(inner->Height(), 4);
}

TEST(ContainerCopy, IsMadeByDuplicateAllAsWell) {
    const auto mark = Mark::create();
    mark->Height(3.5);

    const auto copy = std::dynamic_pointer_cast<Mark>(mark->duplicateAll(CreateDeep));
    const auto empty = std::dynamic_pointer_cast<Mark>(mark->duplicateAll(CreateEmpty));

    EXPECT_EQ(copy->Height(), 3.5);
    EXPECT_EQ(empty->Height(), 1.75);
}

TEST(ContainerCopy, LeavesMarksAndTheSerializedFlagBehind) {
    const auto mark = Mark::create();
    mark->Attr_Height().setMarked(true);
    mark->Attr_Height().setWriteFlag(true);
    mark->setIsSerialized(true);

    const auto copy = std::dynamic_pointer_cast<Mark>(mark->duplicate(CreateDeep));

    EXPECT_EQ(copy->Attr_Height().getFlags(), Attribute::Flags::definitionFlag);
    EXPECT_FALSE(copy->isSerialized());
}

TEST(ContainerCopy, GuardsItsOwnName) {
    const auto copy = Mark::create()->duplicate(CreateDeep);

    copy->name("not valid");

    EXPECT_EQ(copy->getName(), "Mark");
}

TEST(ContainerCopy, LeavesItsSourcesFieldsAndTheirHolesInPlace) {
    const auto pole = LongPole::create();
    pole->rmField("Top");
    pole->Mark().lock()->Height(5);
    addNamedField<Mark>(*pole, "extra");

    const auto copy = std::dynamic_pointer_cast<LongPole>(pole->duplicate(CreateDeep));

    ASSERT_EQ(copy->getNumFields(), 4u);
    EXPECT_EQ(copy->Mark().lock()->Height(), 5);
    EXPECT_FALSE(copy->Top().expired());  // an empty declared slot is filled by its row
    EXPECT_EQ(copy->getFieldToken("extra"), 3u);
    EXPECT_FALSE(copy->getField("extra").expired());
}

TEST(ContainerCopy, TellsItsFieldsOfTheirNewOwner) {
    const auto container = AttrContainer::create();
    const auto guest = addNamedField<Guest>(*container, "guest");

    const auto copy = container->duplicate(CreateDeep);
    const auto copiedGuest = std::dynamic_pointer_cast<Guest>(copy->getField("guest").lock());
    ASSERT_EQ(copiedGuest->calls.size(), 1u);
    EXPECT_EQ(copiedGuest->calls[0].what, "attach");
    EXPECT_EQ(copiedGuest->calls[0].parent.lock(), copy);

    const auto sharing = container->duplicate(CreateShareFields);
    EXPECT_EQ(guest->calls.back().what, "attach");
    EXPECT_EQ(guest->calls.back().parent.lock(), sharing);
}

// Relations ---------------------------------------------------------------------------------------

/// Has a declared field with a path of its own.
class Rig : public ContainerClass<Rig, AttrContainer, "Rig"> {
public:
    using Block::Block;

    QOR_FIELD(0, Object, Anchor);
    QOR_ATTRIBUTE(1, int, Length, 2);
};

TEST(ContainerCopy, IsWatchedByTheCopyOfAFieldThatWatchesItsSource) {
    const auto mark = Mark::create();
    const auto field = addNamedField<Object>(*mark, "inner");
    mark->Attr_Height().addObserver(*field, 5, tellAction, false);

    const auto copy = std::dynamic_pointer_cast<Mark>(mark->duplicate(CreateDeep));

    const auto inner = copy->getField("inner").lock();
    EXPECT_EQ(copy->Attr_Height().getNumPostObservers(), 1u);
    EXPECT_NE(inner->lookupObservedByMe(copy->Attr_Height()), AttrContainer::noToken);
    EXPECT_EQ(field->lookupObservedByMe(copy->Attr_Height()), AttrContainer::noToken);
}

TEST(ContainerCopy, IsWatchedByTheCopyOfADeclaredFieldThatWatchesItsSource) {
    const auto rig = Rig::create();
    const auto field = rig->Anchor().lock();
    rig->Attr_Length().addObserver(*field, 5, tellAction, false);

    const auto copy = std::dynamic_pointer_cast<Rig>(rig->duplicate(CreateDeep));

    EXPECT_NE(copy->Anchor().lock()->lookupObservedByMe(copy->Attr_Length()),
              AttrContainer::noToken);
    EXPECT_EQ(field->lookupObservedByMe(copy->Attr_Length()), AttrContainer::noToken);
}

TEST(ContainerCopy, IsNotWatchedByTheCopyOfAFieldWithoutAPath) {
    const auto mark = Mark::create();
    const auto field = addNamedField<Mark>(*mark, "inner");
    mark->Attr_Height().addObserver(*field, 5, tellAction, false);

    const auto copy = std::dynamic_pointer_cast<Mark>(mark->duplicate(CreateDeep));

    EXPECT_EQ(copy->Attr_Height().getNumPostObservers(), 0u);
}

TEST(ContainerCopy, DuplicatesEachDeclaredFieldOnce) {
    const auto registered = FieldFactory::addField<Tallied>("Tallied");
    const auto holder = TalliedHolder::create();
    Tallied::made = 0;

    holder->duplicate(CreateDeep);

    EXPECT_EQ(Tallied::made, 1);
}

// Making attributes from a source -----------------------------------------------------------------

TEST(CreateAttributes, ThrowsWhereTheSourceIsTooShort) {
    const auto source = AttrContainer::create();
    const auto target = Opened::create();
    const std::vector<AttrDefinition> rows{{1, "Extra", AttrType{0}, 18}};

    try {
        target->createAttributes(rows, CreateDeep, *source);
        ADD_FAILURE() << "no exception";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "invalid vector subscript");
    }
}

TEST(CreateAttributes, AddsTheRowsOfOneTable) {
    const auto target = Opened::create();
    const std::vector<AttrDefinition> rows{{1, "Extra", AttrType{0}, 18}, {2, "", AttrType{9}, 16}};

    EXPECT_TRUE(target->createAttributes(rows, CreateDeep, std::nullopt));

    EXPECT_EQ(target->getNumHardCodedAttributes(), 3u);
    EXPECT_EQ(target->getAttribute(std::uint64_t{1}).lock()->getClassName(), "Attr<int>");
    EXPECT_TRUE(target->getAttribute(std::uint64_t{1}).lock()->hasDefinitionFlag());
    EXPECT_EQ(target->getAttribute(std::uint64_t{2}).lock()->getClassName(), "Attr<double>");
}

TEST(CreateAttributes, LeavesAHoleForATypeThatCannotBeMade) {
    const auto target = Opened::create();

    EXPECT_TRUE(target->createAttributes({{1, "Point", AttrType{49}, 18}}, CreateDeep,
                                         std::nullopt));

    EXPECT_EQ(target->getNumHardCodedAttributes(), 2u);
    EXPECT_TRUE(target->getAttribute(std::uint64_t{1}).expired());
}
