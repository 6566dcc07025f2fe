#include <AttributeContainer/FieldFactory.h>

#include <AttributeContainer/Object.h>

#include "support/Containers.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

/// A class of a host.
class Prism : public ContainerClass<Prism, AttrContainer, "Prism"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(1, double, Constant, -34.4);
};
class OtherPrism : public ContainerClass<OtherPrism, AttrContainer, "OtherPrism"> {
public:
    using Block::Block;
};

bool isRegistered(const std::string& name) {
    const auto names = FieldFactory::the()->getAllRegisteredFields();
    return std::ranges::find(names, name) != names.end();
}

}  // namespace

TEST(FieldFactory, IsOneForTheProcess) {
    ASSERT_NE(FieldFactory::the(), nullptr);
    EXPECT_EQ(FieldFactory::the(), FieldFactory::the());
}

TEST(FieldFactory, MakesNothingForAnUnknownName) {
    EXPECT_EQ(FieldFactory::the()->createField("Nobody"), nullptr);
    EXPECT_EQ(FieldFactory::the()->createField(""), nullptr);
    EXPECT_EQ(FieldFactory::the()->createField("object"), nullptr);
    EXPECT_EQ(FieldFactory::the()->createObject("Nobody"), nullptr);
}

TEST(FieldFactory, MakesTheClassesOfTheLibrary) {
    for (const char* name : {"ArrayContainer", "AttrContainer", "Object", "UnknownAttrContainer"}) {
        const auto made = FieldFactory::the()->createField(name);
        ASSERT_NE(made, nullptr) << name;
        EXPECT_EQ(made->getClassName(), name);
        EXPECT_EQ(made->getName(), name);
        EXPECT_TRUE(isRegistered(name));
    }
}

TEST(FieldFactory, MakesANewContainerEachTime) {
    EXPECT_NE(FieldFactory::the()->createField("AttrContainer"),
              FieldFactory::the()->createField("AttrContainer"));
}

TEST(FieldFactory, MakesAnObjectOnlyOfAClassThatIsOne) {
    EXPECT_NE(FieldFactory::the()->createObject("Object"), nullptr);
    EXPECT_EQ(FieldFactory::the()->createObject("ArrayContainer"), nullptr);
}

TEST(FieldFactory, MakesAClassForAsLongAsItsRegistrationLives) {
    EXPECT_EQ(FieldFactory::the()->createField("Prism"), nullptr);
    {
        const auto registration = FieldFactory::addField<Prism>("Prism");
        ASSERT_NE(registration, nullptr);
        const auto made =
            std::dynamic_pointer_cast<Prism>(FieldFactory::the()->createField("Prism"));
        ASSERT_NE(made, nullptr);
        EXPECT_EQ(made->Constant(), -34.4);
        EXPECT_TRUE(isRegistered("Prism"));
    }
    EXPECT_EQ(FieldFactory::the()->createField("Prism"), nullptr);
    EXPECT_FALSE(isRegistered("Prism"));
}

TEST(FieldFactory, TakesAClassUnderAnyName) {
    const auto registration = FieldFactory::addField<Prism>("survey::Prism");
    EXPECT_EQ(FieldFactory::the()->createField("survey::Prism")->getClassName(), "Prism");
}

TEST(FieldFactory, KeepsTheFirstClassOfAName) {
    const auto first = FieldFactory::addField<Prism>("Prism");
    {
        const auto second = FieldFactory::addField<OtherPrism>("Prism");
        EXPECT_EQ(second, nullptr);
        EXPECT_EQ(FieldFactory::the()->createField("Prism")->getClassName(), "Prism");
    }
    EXPECT_NE(FieldFactory::the()->createField("Prism"), nullptr);
}

TEST(FieldFactory, ListsTheNamesInTheOrderOfTheirRegistration) {
    const auto first = FieldFactory::addField<Prism>("Second");
    const auto second = FieldFactory::addField<Prism>("First");

    const auto names = FieldFactory::the()->getAllRegisteredFields();

    ASSERT_GE(names.size(), 2u);
    EXPECT_EQ(names[names.size() - 2], "Second");
    EXPECT_EQ(names.back(), "First");
}

TEST(FieldFactory, RemovesAName) {
    const auto registration = FieldFactory::addField<Prism>("Prism");
    EXPECT_TRUE(FieldFactory::removeField("Prism"));
    EXPECT_EQ(FieldFactory::the()->createField("Prism"), nullptr);
    EXPECT_FALSE(FieldFactory::removeField("Prism"));
    EXPECT_FALSE(FieldFactory::removeField("Nobody"));
}
