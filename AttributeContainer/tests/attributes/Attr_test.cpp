// Typed attributes: their making, their copies and what they know of their place.
#include <AttributeContainer/Attr.h>

#include <AttributeContainer/AttrDefinition.h>

#include "support/Containers.h"
#include "support/ObserverActors.h"

#include <gtest/gtest.h>

#include <type_traits>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

TEST(AttrVal, HoldsOneValueThatIsZeroAtFirst) {
    AttrVal<double> number;
    EXPECT_EQ(*number.read(), 0.0);
    EXPECT_EQ(*AttrVal<Vec3d<float>>().read(), (Vec3d<float>(0, 0, 0)));
    EXPECT_TRUE(AttrVal<std::vector<int>>().read()->empty());

    *number.access() = 2.5;

    EXPECT_EQ(*number.read(), 2.5);
    EXPECT_EQ(number.peek(), number.read());
    EXPECT_EQ(AttrVal<double>::nullName, "");
}

TEST(AttrVal, HasAnEmptyNullNameOfItsOwnForEachType) {
    EXPECT_EQ(AttrVal<std::string>::nullName, "");
    EXPECT_EQ(AttrVal<StringMap>::nullName, "");
    EXPECT_NE(&AttrVal<int>::nullName, &AttrVal<double>::nullName);
}

TEST(AttrVal, CanBeHeldByItsBase) {
    EXPECT_TRUE(std::has_virtual_destructor_v<AttrVal<int>>);
}

TEST(Attr, HasTheSameLayoutForAllTypes) {
    EXPECT_EQ(sizeof(CustAttr<int>), sizeof(CustAttr<Mat4d<double>>));
    EXPECT_EQ(sizeof(HardCodedAttr<bool>), sizeof(HardCodedAttr<std::vector<double>>));
}

TEST(Attr, HasItsValueBehindOnePointer) {
    EXPECT_EQ(sizeof(Attr<int>), sizeof(Attribute) + sizeof(void*));
}

TEST(HardCodedAttribute, IsPolymorphicAndACustomOneIsPlain) {
    EXPECT_TRUE(std::has_virtual_destructor_v<HardCodedAttribute>);
    EXPECT_FALSE(std::is_polymorphic_v<CustomAttribute>);
}

// Copies ------------------------------------------------------------------------------------------

TEST(Attr, IsDuplicatedWithItsValueAndWithoutAPlace) {
    const auto mark = Mark::create();
    mark->Height(3.5);

    const auto copy = mark->Attr_Height().duplicate(CreateDeep, std::nullopt);

    const auto custom = std::dynamic_pointer_cast<CustAttr<double>>(copy);
    ASSERT_NE(custom, nullptr);
    EXPECT_EQ(custom->get(), 3.5);
}

TEST(Attr, IsDuplicatedIntoAContainer) {
    const auto mark = Mark::create();
    const auto other = Mark::create();
    mark->Height(3.5);

    const auto copy = mark->Attr_Height().duplicate(CreateShareFields, *other);

    const auto hardCoded = std::dynamic_pointer_cast<HardCodedAttr<double>>(copy);
    ASSERT_NE(hardCoded, nullptr);
    EXPECT_EQ(hardCoded->get(), 3.5);
    EXPECT_EQ(&hardCoded->getLocation()->get(), other.get());
}

TEST(Attr, LosesItsValueInAnEmptyDuplicate) {
    const auto mark = Mark::create();

    const auto copy = mark->Attr_Height().duplicate(CreateEmpty, std::nullopt);
    const auto placed = mark->Attr_Count().duplicate(CreateEmpty, *mark);

    EXPECT_EQ(dynamic_cast<Attr<double>&>(*copy).get(), 0.0);
    EXPECT_EQ(dynamic_cast<Attr<int>&>(*placed).get(), 0);
}

TEST(Attr, TakesItsValueAlongInEveryDuplicateButTheEmptyOne) {
    const auto source = std::make_shared<CustAttr<int>>(std::nullopt);
    source->set(5);

    for (const auto type : {CreateDeep, CreateShareFields, CreateShareFieldsAlso})
        EXPECT_TRUE(*source->duplicate(type, std::nullopt) == *source) << type;
    EXPECT_FALSE(*source->duplicate(CreateType{3}, std::nullopt) == *source);
}

TEST(Attr, TakesTheLocationOfItsSourceIntoACopy) {
    const auto mark = Mark::create();
    const auto source = addCustom(*mark, "Depth", 3);

    const auto copy = source->duplicate(CreateDeep, std::nullopt);
    const auto empty = source->duplicate(CreateEmpty, std::nullopt);

    ASSERT_TRUE(copy->getLocation().has_value());
    EXPECT_EQ(&copy->getLocation()->get(), mark.get());
    EXPECT_FALSE(empty->getLocation().has_value());
}

TEST(Attr, TakesItsValueFromASourceOfAnotherType) {
    const auto number = std::make_shared<CustAttr<int>>(std::nullopt);
    number->set(12);

    const CustAttr<double> copy(std::optional<std::reference_wrapper<const Attribute>>{*number});

    EXPECT_EQ(copy.get(), 12.0);
}

// Assignment --------------------------------------------------------------------------------------

TEST(Attr, IsAssignedAsAChange) {
    const auto source = std::make_shared<CustAttr<int>>(std::nullopt);
    const auto target = std::make_shared<CustAttr<int>>(std::nullopt);
    source->set(5);
    const auto counter = watch(*target);

    static_cast<Attribute&>(*target) = *source;

    EXPECT_EQ(target->get(), 5);
    EXPECT_EQ(counter->asked, 1);
    EXPECT_EQ(counter->told, 1);
}

TEST(Attr, IsAssignedThroughItsOwnTypeToo) {
    const auto mark = Mark::create();
    const auto source = std::make_shared<CustAttr<int>>(std::nullopt);
    source->set(5);
    const auto counter = watch(mark->Attr_Count());

    Attr<int>& target = mark->Attr_Count();
    target = static_cast<const Attr<int>&>(*source);

    EXPECT_EQ(mark->Count(), 5);
    EXPECT_EQ(counter->told, 1);
}

TEST(Attr, CanRefuseAnAssignment) {
    const auto source = std::make_shared<CustAttr<int>>(std::nullopt);
    const auto target = std::make_shared<CustAttr<int>>(std::nullopt);
    source->set(5);
    const auto refuser = watch<Refuser>(*target);

    *target = *source;

    EXPECT_EQ(target->get(), 0);
    EXPECT_EQ(refuser->asked, 1);
}

TEST(Attr, KeepsNameAndPlaceInAnAssignment) {
    const auto mark = Mark::create();
    const auto depth = addCustom(*mark, "Depth", 3);
    const auto width = addCustom(*mark, "Width", 4);

    *depth = *width;

    EXPECT_EQ(depth->getName(), "Depth");
    EXPECT_EQ(depth->get(), 4);
}

// Places ------------------------------------------------------------------------------------------

TEST(HardCodedAttr, KnowsItsContainerRowNameAndToken) {
    const auto mark = Mark::create();
    const Attr<double>& height = mark->Attr_Height();

    ASSERT_TRUE(height.getLocation().has_value());
    EXPECT_EQ(&height.getLocation()->get(), mark.get());
    EXPECT_EQ(height.getName(), "Height");
    EXPECT_EQ(height.getToken(), 2u);
    ASSERT_NE(height.getDefinition(), nullptr);
    EXPECT_EQ(height.getDefinition()->name, "Height");
    EXPECT_EQ(height.getDefinition()->type, AttrType{9});
    EXPECT_EQ(height.getDefinition(), mark->getAttrDefinition(2));
}

TEST(HardCodedAttr, HasTheDefinitionFlagOfItsRow) {
    const auto mark = TallMark::create();
    EXPECT_TRUE(mark->Attr_Height().hasDefinitionFlag());
    EXPECT_FALSE(mark->Attr_Name().hasDefinitionFlag());
    EXPECT_FALSE(mark->Attr_Cached().hasDefinitionFlag());
}

TEST(HardCodedAttr, OutlivesItsContainerWithoutAPlace) {
    auto mark = Mark::create();
    const auto height = mark->getAttribute("Height").lock();

    mark.reset();

    EXPECT_EQ(height->getName(), "");
    EXPECT_EQ(height->getToken(), AttrContainer::noToken);
    EXPECT_EQ(height->getDefinition(), nullptr);
    EXPECT_FALSE(height->getLocation().has_value());
    EXPECT_EQ(height->getValueString(), "1.75");
}

TEST(CustAttr, HasNeitherNameNorTokenWithoutALocation) {
    const CustAttr<int> attribute(std::nullopt);

    EXPECT_EQ(attribute.getName(), "");
    EXPECT_EQ(attribute.getToken(), AttrContainer::noToken);
    EXPECT_EQ(attribute.getDefinition(), nullptr);
    EXPECT_FALSE(attribute.getLocation().has_value());
}

TEST(CustAttr, HasNoDefinitionInAContainerEither) {
    const auto mark = Mark::create();
    const auto depth = addCustom(*mark, "Depth", 3);

    EXPECT_EQ(depth->getDefinition(), nullptr);
    EXPECT_EQ(depth->getName(), "Depth");
    EXPECT_EQ(depth->getToken(), 4u);
    EXPECT_EQ(&depth->getLocation()->get(), mark.get());
}

TEST(CustAttr, HasNoNameInAContainerThatDoesNotHoldIt) {
    const auto mark = Mark::create();
    CustAttr<int> attribute(std::nullopt);

    attribute.setLocation(*mark);

    EXPECT_EQ(attribute.getName(), "");
    EXPECT_EQ(attribute.getToken(), AttrContainer::noToken);
    attribute.setLocation(std::nullopt);
    EXPECT_FALSE(attribute.getLocation().has_value());
}

TEST(CustAttr, OutlivesItsContainerWithoutAPlace) {
    auto mark = Mark::create();
    const auto depth = addCustom(*mark, "Depth", 3);

    mark.reset();

    EXPECT_EQ(depth->getName(), "");
    EXPECT_EQ(depth->getToken(), AttrContainer::noToken);
    EXPECT_FALSE(depth->getLocation().has_value());
    EXPECT_EQ(depth->inqObjPath(), std::nullopt);
}
