// The block of members that every container class has around its tables.
#include <AttributeContainer/ContainerClass.h>

#include <AttributeContainer/Container.h>

#include "support/Containers.h"
#include "support/ObserverActors.h"

#include <gtest/gtest.h>

#include <type_traits>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr std::uint64_t none = AttrContainer::noToken;

/// Has more to do at its making.
class Elaborate : public ContainerClass<Elaborate, AttrContainer, "Elaborate"> {
    friend Block;

public:
    using Block::Block;

    std::optional<CreateType> typeAtInit;

protected:
    void init(CreateType type, Source source) {
        Block::init(type, source);
        typeAtInit = type;
    }
};

/// Has a class name that is no valid name.
class OddName : public ContainerClass<OddName, AttrContainer, "host::OddName"> {
public:
    using Block::Block;
};

/// Refuses names that begin with an 'x'.
class Choosy : public ContainerClass<Choosy, AttrContainer, "Choosy"> {
public:
    using Block::Block;

    ErrorPtr checkName(const std::string& name) const override {
        if (!name.starts_with('x')) return Block::checkName(name);
        return makeError(__FILE__, __LINE__, ErrorCode::InvalidName, "Choosy::checkName");
    }
};

/// Wants a field of a class that nobody has registered.
class Unregistered : public ContainerClass<Unregistered, AttrContainer, "Unregistered"> {
public:
    using Block::Block;
};
class Wanting : public ContainerClass<Wanting, AttrContainer, "Wanting"> {
public:
    using Block::Block;

    QOR_FIELD(0, Testing::Mark, First);
    QOR_FIELD(1, Unregistered, Second);
    QOR_FIELD(2, Testing::Mark, Third);
};

static_assert(!std::is_default_constructible_v<Mark>);
static_assert(!std::is_copy_constructible_v<Mark>);

}  // namespace

// Making ------------------------------------------------------------------------------------------

TEST(ContainerClass, MakesAnObjectThatIsNamedAfterItsClass) {
    EXPECT_EQ(Mark::create()->getName(), "Mark");
    EXPECT_EQ(TallMark::create()->getName(), "TallMark");
    EXPECT_EQ(PlainMark::create()->getName(), "PlainMark");
}

TEST(ContainerClass, HasItsClassName) {
    EXPECT_EQ(Mark::getStaticClassName(), "Mark");
    const std::shared_ptr<AttrContainer> base = TallMark::create();
    EXPECT_EQ(base->getClassName(), "TallMark");
    EXPECT_EQ(&Mark::create()->getClassName(), &Mark::getStaticClassName());
}

TEST(ContainerClass, HasTheDefaultsOfAllItsLevels) {
    const auto mark = TallMark::create();
    EXPECT_EQ(mark->Label(), "none");
    EXPECT_EQ(mark->Height(), 1.75);
    EXPECT_EQ(mark->Count(), 7);
    EXPECT_TRUE(mark->Lit());
    EXPECT_EQ(mark->Cached(), 0);
}

// The name is set before the guard over it stands.
TEST(ContainerClass, NamesAnObjectAfterItsClassAlsoWhereThatIsNoValidName) {
    const auto odd = OddName::create();
    EXPECT_EQ(odd->getClassName(), "host::OddName");
    EXPECT_EQ(odd->getName(), "host::OddName");
}

TEST(ContainerClass, RunsTheInitOfTheClassWithTheTypeThatItIsGiven) {
    const CreateType ofTheHost{77};
    EXPECT_EQ(Elaborate::create()->typeAtInit, CreateDeep);
    EXPECT_EQ(Elaborate::create(ofTheHost)->typeAtInit, ofTheHost);
    const auto copy = Elaborate::create()->duplicate(ofTheHost);
    EXPECT_EQ(std::dynamic_pointer_cast<Elaborate>(copy)->typeAtInit, ofTheHost);
}

TEST(ContainerClass, TakesTheValuesOfASourceInsteadOfTheDefaults) {
    const auto source = Mark::create();
    source->Label("");
    source->name("north");

    const auto copy = Mark::create(CreateDeep, *source);

    EXPECT_EQ(copy->Label(), "");
    EXPECT_EQ(copy->getName(), "north");
}

TEST(ContainerClass, IsDuplicatedAsItsOwnClass) {
    const std::shared_ptr<AttrContainer> base = TallMark::create();
    EXPECT_NE(std::dynamic_pointer_cast<TallMark>(base->duplicate(CreateDeep)), nullptr);
    EXPECT_NE(std::dynamic_pointer_cast<TallMark>(base->duplicate(CreateEmpty)), nullptr);
}

// Tokens ------------------------------------------------------------------------------------------

TEST(ContainerClass, ContinuesTheTokensOfItsBase) {
    EXPECT_EQ(Mark::create()->getMaxAttrToken(), 3u);
    EXPECT_EQ(TallMark::create()->getMaxAttrToken(), 5u);
    EXPECT_EQ(TallMark::LitToken, 4u);
    EXPECT_EQ(TallMark::HeightToken, 2u);
    EXPECT_EQ(TallMark::create()->getNumHardCodedAttributes(), 6u);
}

TEST(ContainerClass, HasTheLastTokensOfItsBaseWhereItHasNoRows) {
    EXPECT_EQ(PlainMark::create()->getMaxAttrToken(), 5u);
    EXPECT_EQ(PlainMark::create()->getMaxFieldToken(), none);
}

TEST(ContainerClass, GivesItsFirstCustomAttributeTheTokenBehindItsLast) {
    const auto mark = TallMark::create();
    EXPECT_EQ(addCustom(*mark, "First", 1)->getToken(), 6u);
    EXPECT_EQ(addCustom(*mark, "Second", 1)->getToken(), 7u);
    EXPECT_EQ(mark->getNumAttributes(), 8u);
    EXPECT_EQ(mark->getNumHardCodedAttributes(), 6u);
    EXPECT_EQ(mark->getAttrName(6), "First");
    EXPECT_EQ(mark->getAttrToken("Second"), 7u);
    EXPECT_EQ(mark->getAttrDefinition(6), nullptr);

    const auto container = Container::create();
    EXPECT_EQ(container->getMaxAttrToken(), 8u);
    EXPECT_EQ(addCustom(*container, "First", 1)->getToken(), 9u);
}

TEST(ContainerClass, AnswersForTheRowsOfAllItsLevels) {
    const auto mark = TallMark::create();

    const std::vector<std::string> names{"Name", "Label", "Height", "Count", "Lit", "Cached"};
    for (std::uint64_t token = 0; token < names.size(); ++token) {
        EXPECT_EQ(mark->getAttrToken(names[token]), token);
        EXPECT_EQ(mark->getAttrName(token), names[token]);
        ASSERT_NE(mark->getAttrDefinition(token), nullptr);
        EXPECT_EQ(mark->getAttrDefinition(token)->token, token);
        EXPECT_EQ(mark->getAttrDefinition(token)->name, names[token]);
    }
    EXPECT_EQ(mark->getAttrName(6), std::nullopt);
    EXPECT_EQ(mark->getAttrToken("Missing"), none);
    EXPECT_EQ(mark->getAttrDefinition(6), nullptr);
}

TEST(ContainerClass, TakesTypeAndCategoryFromTheRow) {
    const auto mark = TallMark::create();
    EXPECT_EQ(mark->getAttrDefinition(1)->type, AttrType{10});
    EXPECT_EQ(mark->getAttrDefinition(2)->type, AttrType{9});
    EXPECT_EQ(mark->getAttrDefinition(4)->type, AttrType{11});
    EXPECT_EQ(mark->getAttrDefinition(4)->category, 18);
    EXPECT_EQ(mark->getAttrDefinition(5)->category, 48);
}

TEST(ContainerClass, SharesItsTablesAmongItsObjects) {
    EXPECT_EQ(Mark::create()->getAttrDefinition(2), TallMark::create()->getAttrDefinition(2));
}

// Accessors ---------------------------------------------------------------------------------------

TEST(ContainerClassAccessors, ReadAndWriteTheAttribute) {
    const auto mark = Mark::create();

    mark->Height(2.5);

    EXPECT_EQ(mark->Height(), 2.5);
    EXPECT_EQ(mark->Attr_Height().get(), 2.5);
    EXPECT_EQ(std::as_const(*mark).Attr_Height().get(), 2.5);
    EXPECT_EQ(&mark->Attr_Height(), mark->getAttribute(2).lock().get());
}

TEST(ContainerClassAccessors, RunTheChangeProtocolWithoutAnInitiator) {
    const auto mark = Mark::create();
    const auto actor = watch<Actor>(mark->Attr_Height());
    bool hadInitiator = true;
    actor->before = [&](Observable&, Observer::Initiator& initiator) {
        hadInitiator = initiator.has_value();
    };

    mark->Height(2.5);

    EXPECT_EQ(actor->asked, 1);
    EXPECT_EQ(actor->told, 1);
    EXPECT_FALSE(hadInitiator);
}

TEST(ContainerClassAccessors, ThrowWhereTheAttributesAreNotThereYet) {
    const auto hasty = Hasty<AttrContainer>::make();

    for (const auto& reach : std::initializer_list<std::function<void()>>{
             [&] { static_cast<void>(hasty->name()); }, [&] { hasty->name("a"); },
             [&] { static_cast<void>(hasty->Attr_Name()); }}) {
        try {
            reach();
            ADD_FAILURE() << "no exception";
        } catch (const std::out_of_range& error) {
            EXPECT_STREQ(error.what(), "invalid vector subscript");
        }
    }
    EXPECT_EQ(hasty->getName(), "");
    EXPECT_EQ(hasty->getNumAttributes(), 0u);
    EXPECT_TRUE(hasty->getAttribute("Name").expired());
}

// Fields ------------------------------------------------------------------------------------------

TEST(ContainerClassFields, AreMadeFromTheirRows) {
    const auto pole = LongPole::create();

    EXPECT_EQ(pole->getMaxFieldToken(), 2u);
    EXPECT_EQ(pole->getNumFields(), 3u);
    ASSERT_FALSE(pole->Mark().expired());
    EXPECT_EQ(pole->Mark().lock()->getName(), "Mark");
    EXPECT_EQ(pole->Top().lock()->getName(), "Top");
    EXPECT_EQ(pole->Top().lock()->getClassName(), "TallMark");
    EXPECT_EQ(pole->Bottom().lock()->Height(), 1.75);
    EXPECT_EQ(std::as_const(*pole).Bottom().lock(), pole->Bottom().lock());
    EXPECT_EQ(LongPole::TopField, 1u);
    EXPECT_EQ(LongPole::BottomField, 2u);
}

TEST(ContainerClassFields, AnswerByTokenAndName) {
    const auto pole = LongPole::create();

    const std::vector<std::string> names{"Mark", "Top", "Bottom"};
    for (std::uint64_t token = 0; token < names.size(); ++token) {
        EXPECT_EQ(pole->getFieldToken(names[token]), token);
        EXPECT_EQ(pole->getFieldName(token), names[token]);
        EXPECT_EQ(pole->getField(names[token]).lock(), pole->getField(token).lock());
        EXPECT_EQ(pole->getFieldToken(*pole->getField(token).lock()), token);
    }
    EXPECT_EQ(pole->getFieldToken("Middle"), none);
    EXPECT_EQ(pole->getFieldName(3), std::nullopt);
    EXPECT_EQ(pole->getFieldToken(""), none);
}

TEST(ContainerClassFields, ComeAheadOfCustomOnes) {
    const auto pole = LongPole::create();
    addNamedField(*pole, "extra");
    EXPECT_EQ(pole->getFieldToken("extra"), 3u);
}

TEST(ContainerClassFields, EndWithARowThatCannotBeMade) {
    const auto wanting = Wanting::create();
    EXPECT_FALSE(wanting->First().expired());
    EXPECT_TRUE(wanting->Second().expired());
    EXPECT_TRUE(wanting->Third().expired());
    EXPECT_EQ(wanting->getNumFields(), 3u);
}

TEST(ContainerClassFields, AreEmptyWhereAnotherClassStandsInTheSlot) {
    const auto pole = Pole::create();
    ASSERT_TRUE(pole->setField(Pole::TopField, Mark::create()));
    EXPECT_TRUE(pole->Top().expired());
    EXPECT_FALSE(pole->getField(Pole::TopField).expired());
}

// Overriding what the block calls -----------------------------------------------------------------

TEST(ContainerClass, IsAskedForItsOwnViewOfNames) {
    const auto choosy = Choosy::create();
    EXPECT_NE(choosy->setName("xylophone"), nullptr);
    EXPECT_EQ(choosy->setName("violin"), nullptr);
    choosy->name("xylophone");
    EXPECT_EQ(choosy->getName(), "violin");
}
