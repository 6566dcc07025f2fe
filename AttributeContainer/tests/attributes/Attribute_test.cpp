#include <AttributeContainer/Attribute.h>

#include <AttributeContainer/Attr.h>
#include <AttributeContainer/kVAttrContainer.h>

#include "support/BareAttribute.h"
#include "support/Containers.h"
#include "support/ObserverActors.h"
#include "support/ResultPromises.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

TEST(Attribute, HasItsClassName) {
    EXPECT_EQ(Attribute::getStaticClassName(), "Attribute");
    EXPECT_EQ(BareAttribute().getClassName(), "Attribute");
}

// Flags -------------------------------------------------------------------------------------------

TEST(AttributeFlags, HaveTheStoredBitValues) {
    EXPECT_EQ(Attribute::Flags::writeFlag, 1);
    EXPECT_EQ(Attribute::Flags::definitionFlag, 2);
    EXPECT_EQ(Attribute::Flags::marked, 4);
}

TEST(AttributeFlags, AreAllClearAtFirst) {
    const BareAttribute attribute;

    EXPECT_EQ(Attribute::nullFlags, 0);
    EXPECT_EQ(attribute.getFlags(), 0);
    EXPECT_EQ(attribute.getFlags(), Attribute::nullFlags);
    EXPECT_FALSE(attribute.isMarked());
    EXPECT_FALSE(attribute.hasWriteFlag());
    EXPECT_FALSE(attribute.hasDefinitionFlag());
}

TEST(AttributeFlags, AreSetAndClearedOneByOne) {
    BareAttribute attribute;

    attribute.setMarked(true);
    EXPECT_EQ(attribute.getFlags(), 4);
    attribute.setWriteFlag(true);
    EXPECT_EQ(attribute.getFlags(), 5);
    EXPECT_TRUE(attribute.isMarked());
    EXPECT_TRUE(attribute.hasWriteFlag());
    attribute.setMarked(false);
    EXPECT_EQ(attribute.getFlags(), 1);
    attribute.setWriteFlag(false);
    EXPECT_EQ(attribute.getFlags(), 0);
}

TEST(AttributeFlags, AreNotCopiedFromASource) {
    const auto source = std::make_shared<CustAttr<int>>(std::nullopt);
    source->setMarked(true);
    source->setWriteFlag(true);

    const auto copy = source->duplicate(CreateDeep, std::nullopt);

    EXPECT_EQ(copy->getFlags(), 0);
}

// Keywords ----------------------------------------------------------------------------------------

TEST(AttributeKeyTable, HoldsTheWordsOfAnAttributeBlock) {
    const auto& table = Attribute::keyTable;

    EXPECT_EQ(table.keyToToken("Name"), 1u);
    EXPECT_EQ(table.keyToToken("Value"), 3u);
    EXPECT_EQ(table.keyToToken("Write"), 4u);
    EXPECT_EQ(table.keyToToken(""), 5u);
    EXPECT_EQ(table.tokenToKey(1), "Name");
    EXPECT_EQ(table.tokenToKey(3), "Value");
    EXPECT_EQ(table.tokenToKey(4), "Write");
    EXPECT_EQ(table.tokenToKey(5), "");
}

TEST(AttributeKeyTable, HoldsNothingElse) {
    const auto& table = Attribute::keyTable;

    for (const std::uint64_t token : {0u, 2u, 6u}) EXPECT_EQ(table.tokenToKey(token), std::nullopt);
    EXPECT_EQ(table.keyToToken("value"), AttrContainer::noToken);
    EXPECT_EQ(table.keyToToken("Observer"), AttrContainer::noToken);
}

// What the base class does ------------------------------------------------------------------------

TEST(Attribute, HasTheTextOfNothing) {
    EXPECT_EQ(BareAttribute().getValueString(), "(NULL)");
}

TEST(Attribute, ReadsNoValue) {
    BareAttribute attribute;
    std::istringstream in("5");

    attribute.readValueFrom(in, nullptr);

    EXPECT_EQ(in.tellg(), std::streampos(0));
}

TEST(Attribute, AnswersAnAssignmentWithEmptyResults) {
    const auto attribute = std::make_shared<BareAttribute>();
    const auto counter = watch(*attribute);
    ResultPromises promises;

    attribute->assignFrom("5", nullptr, promises.pre, promises.post);

    promises.expectConsumed();
    EXPECT_TRUE(promises.preAnswers.get().empty());
    EXPECT_TRUE(promises.postAnswers.get().empty());
    EXPECT_EQ(counter->asked + counter->told, 0);
}

TEST(Attribute, TakesAnAssignmentThatNobodyWaitsFor) {
    BareAttribute attribute;
    ResultPromise none;
    ResultPromise noneEither;

    attribute.assignFrom("5", nullptr, none, noneEither);

    EXPECT_EQ(none, nullptr);
    EXPECT_EQ(noneEither, nullptr);
}

TEST(Attribute, IsUnequalWhereItIsNotEqual) {
    BareAttribute attribute;
    const BareAttribute other;

    EXPECT_FALSE(attribute != other);
    attribute.areEqual = false;
    EXPECT_TRUE(static_cast<const Attribute&>(attribute) != static_cast<const Attribute&>(other));
}

TEST(Attribute, AsksAndTellsItsObservers) {
    const auto attribute = std::make_shared<BareAttribute>();
    const auto counter = watch(*attribute);
    Results results;

    attribute->preTouch(nullptr, &results);
    EXPECT_EQ(counter->asked, 1);
    EXPECT_EQ(counter->told, 0);
    ASSERT_EQ(results.size(), 1u);
    EXPECT_EQ(results[0].observer.lock(), counter);
    EXPECT_EQ(results[0].result, Action::ExecDone);

    attribute->touch(nullptr, nullptr);
    EXPECT_EQ(counter->asked, 1);
    EXPECT_EQ(counter->told, 1);
}

// The companion observer --------------------------------------------------------------------------

TEST(AttributeObserver, IsTheSameEachTime) {
    const auto attribute = std::make_shared<BareAttribute>();

    const auto first = attribute->getObserver().lock();

    ASSERT_NE(first, nullptr);
    EXPECT_EQ(attribute->getObserver().lock(), first);
}

TEST(AttributeObserver, GoesWithTheAttribute) {
    auto attribute = std::make_shared<BareAttribute>();
    const std::weak_ptr<Attribute> watched = attribute;
    const auto companion = attribute->getObserver();

    attribute.reset();

    EXPECT_TRUE(watched.expired());
    EXPECT_TRUE(companion.expired());
}

TEST(AttributeObserver, CannotBeMadeForAnAttributeThatNobodyOwns) {
    BareAttribute attribute;
    EXPECT_THROW(attribute.getObserver(), std::bad_weak_ptr);
}

// Paths -------------------------------------------------------------------------------------------

TEST(AttributePath, IsThePathOfTheContainerAndTheName) {
    const auto place = Placed::create();
    const auto attribute = addCustom(*place, "Depth", 3);

    place->path = "/rooms/hall";

    EXPECT_EQ(attribute->inqObjPath(), "/rooms/hall/Depth");
}

TEST(AttributePath, IsTheBareNameAtTheRoot) {
    const auto place = Placed::create();
    const auto attribute = addCustom(*place, "Depth", 3);

    place->path = "/";

    EXPECT_EQ(attribute->inqObjPath(), "Depth");
}

TEST(AttributePath, IsTheBareNameWhereTheContainerEndsInASlash) {
    const auto place = Placed::create();
    const auto attribute = addCustom(*place, "Depth", 3);

    place->path = "/rooms/";

    EXPECT_EQ(attribute->inqObjPath(), "Depth");
}

TEST(AttributePath, IsTheBareNameWhereTheContainerHasNoPath) {
    const auto place = Placed::create();
    const auto attribute = addCustom(*place, "Depth", 3);

    place->path = std::nullopt;
    EXPECT_EQ(attribute->inqObjPath(), "Depth");
    place->path = "";
    EXPECT_EQ(attribute->inqObjPath(), "Depth");
}

TEST(AttributePath, IsThatOfAHardCodedAttributeToo) {
    const auto place = Placed::create();
    place->path = "/rooms";

    EXPECT_EQ(place->Attr_Name().inqObjPath(), "/rooms/Name");
}

TEST(AttributePath, IsEmptyForACustomAttributeWithoutALocation) {
    const auto attribute = std::make_shared<CustAttr<int>>(std::nullopt);
    EXPECT_EQ(attribute->inqObjPath(), std::nullopt);
}

TEST(Attribute, StandsForItsContainerAsAnObserver) {
    const auto container = Mark::create();
    const auto attribute = addCustom(*container, "Depth", 3);

    ASSERT_TRUE(attribute->lookupObject().has_value());
    EXPECT_EQ(&attribute->lookupObject()->get(), container.get());
    EXPECT_EQ(&container->Attr_Label().lookupObject()->get(), container.get());
}

TEST(Attribute, StandsForNothingWithoutALocation) {
    EXPECT_FALSE(BareAttribute().lookupObject().has_value());
}
