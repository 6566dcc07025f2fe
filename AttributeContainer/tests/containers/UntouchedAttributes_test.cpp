// The attributes of a class level that nobody has asked for: they are made later, and nobody sees it.
#include <AttributeContainer/AttrContComparer.h>
#include <AttributeContainer/AttrTable.h>
#include <AttributeContainer/Object.h>
#include <AttributeContainer/kVAttrContainer.h>

#include "support/BlockText.h"
#include "support/ObserverActors.h"
#include "support/RecordingComparer.h"
#include "support/Streams.h"
#include "support/Visitors.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>
#include <thread>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

/// Shows which of its levels are untouched.
class Lamp : public ContainerClass<Lamp, Object, "Lamp"> {
public:
    using Block::Block;
    using Block::lookAtAttribute;
    using Block::untouchedTable;

    QOR_ATTRIBUTE(6, std::string, Label, "none");
    QOR_ATTRIBUTE(7, double, Height, 1.75);
    QOR_ATTRIBUTE(8, int, Count, 7);

    bool isUntouched() const { return untouchedTable(LabelToken) != nullptr; }
    bool isObjectUntouched() const { return untouchedTable(UUIDToken) != nullptr; }
};

/// A level more, with a row of a type that no table makes ahead of others.
class Beacon : public ContainerClass<Beacon, Lamp, "Beacon"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(9, ScanPt, Point);
    QOR_ATTRIBUTE(10, bool, Lit, true);

    bool isBeaconUntouched() const { return untouchedTable(LitToken) != nullptr; }
};

/// What a hook of its field sees of its attribute.
class Post : public ContainerClass<Post, AttrContainer, "Post"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(1, int, Size, 3);
    QOR_FIELD(0, AttrContainer, Foot);

    std::shared_ptr<AttrContainer> checkCreateChildField(const std::string&, const std::string&,
                                                         std::uint64_t*) override {
        sizeSeen = Size();
        return nullptr;
    }

    int sizeSeen = -1;
};

/// A number without a default of its own.
class Dial : public ContainerClass<Dial, AttrContainer, "Dial"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(1, double, Angle);
};

/// A default where no table makes the attribute.
class Misdeclared : public ContainerClass<Misdeclared, AttrContainer, "Misdeclared"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(1, int, Count);
    QOR_ATTRIBUTE(2, ScanPt, Point, ScanPt{});
};

/// A default that is another one for each object.
class Serial : public ContainerClass<Serial, AttrContainer, "Serial"> {
public:
    using Block::Block;

    static inline int next = 0;

    QOR_ATTRIBUTE(1, int, Number, ++next);
};

/// A default that is a setting of the host, beside one that stays.
class Rated : public ContainerClass<Rated, AttrContainer, "Rated"> {
public:
    using Block::Block;

    static inline int rating = 0;

    QOR_ATTRIBUTE(1, int, Rating, rating);
    QOR_ATTRIBUTE(2, std::string, Text, "kept");
};

/// Counts how often it is asked about its name.
class Polled : public ContainerClass<Polled, AttrContainer, "Polled"> {
public:
    using Block::Block;

    Action::ExecReturn toChangeNotify(Observable& observable, Initiator& initiator) override {
        ++numAsked;
        return Block::toChangeNotify(observable, initiator);
    }

    int numAsked = 0;
};

std::shared_ptr<Lamp> touchedLamp() {
    const auto lamp = Lamp::create();
    lamp->Label();
    lamp->Action();
    return lamp;
}

// The block of an attribute whose value is left out.
std::string bareBlock(const std::string& type, const std::string& name) {
    return "\nAttr<" + type + "> { \nName \"" + name + "\"\n}";
}

}  // namespace

TEST(UntouchedAttributes, AreThoseOfALevelOfWhichNoneWasAskedFor) {
    const auto lamp = Lamp::create();
    EXPECT_TRUE(lamp->isUntouched());
    EXPECT_TRUE(lamp->isObjectUntouched());

    EXPECT_EQ(lamp->Count(), 7);

    EXPECT_FALSE(lamp->isUntouched());
    EXPECT_TRUE(lamp->isObjectUntouched());
}

TEST(UntouchedAttributes, HaveTheirDefaultsWhenOneIsAskedFor) {
    const auto lamp = Lamp::create();
    lamp->Count(8);

    EXPECT_EQ(lamp->Label(), "none");
    EXPECT_EQ(lamp->Height(), 1.75);
    EXPECT_EQ(lamp->Count(), 8);
    EXPECT_TRUE(lamp->Attr_Height().hasDefinitionFlag());
    EXPECT_EQ(&lamp->Attr_Height().getLocation()->get(), lamp.get());
    EXPECT_EQ(lamp->Attr_Height().getName(), "Height");
    EXPECT_EQ(lamp->Attr_Height().getToken(), 7u);
}

TEST(UntouchedAttributes, StayWhereTheyAreOnceMade) {
    const auto lamp = Lamp::create();
    const Attr<int>* const count = &lamp->Attr_Count();
    lamp->Action("shine");
    EXPECT_EQ(&lamp->Attr_Count(), count);
    EXPECT_EQ(lamp->getAttribute(Lamp::CountToken).lock().get(), count);
}

TEST(UntouchedAttributes, CountAsAttributesAndAreFoundByName) {
    const auto lamp = Lamp::create();
    EXPECT_EQ(lamp->getNumAttributes(), 9u);
    EXPECT_EQ(lamp->getAttrToken("Count"), 8u);
    EXPECT_TRUE(lamp->isUntouched());
    const auto attribute = lamp->getAttribute("Count").lock();
    ASSERT_NE(attribute, nullptr);
    EXPECT_EQ(attribute->getValueString(), "7");
}

TEST(UntouchedAttributes, CanBeAskedForWhileObservingIsBlocked) {
    const auto lamp = Lamp::create();
    const BlockObserver block;
    EXPECT_EQ(lamp->Count(), 7);
}

TEST(UntouchedAttributes, OfARowThatNoTableMakesAreNone) {
    const auto beacon = Beacon::create();
    EXPECT_TRUE(beacon->isBeaconUntouched());
    EXPECT_EQ(beacon->getAttribute(Beacon::PointToken).lock(), nullptr);
    EXPECT_FALSE(beacon->isBeaconUntouched());  // it was asked for, and those beside it are there
    EXPECT_THROW(beacon->Point(), std::out_of_range);
    EXPECT_TRUE(beacon->Lit());
    const auto* const lit = &beacon->Attr_Lit();
    EXPECT_EQ(beacon->getAttribute(Beacon::PointToken).lock(), nullptr);
    EXPECT_EQ(&beacon->Attr_Lit(), lit);
}

TEST(UntouchedAttributes, CannotBeMadeWhereADefaultIsThatOfARowThatNoTableMakes) {
    EXPECT_THROW(Misdeclared::create(), std::out_of_range);
    EXPECT_THROW(Misdeclared::create(), std::out_of_range);
}

TEST(UntouchedAttributes, HaveTheDefaultsThatWereWorkedOutForTheirObject) {
    Serial::next = 5;
    const auto first = Serial::create();
    const auto second = Serial::create();
    const auto third = Serial::create();
    const auto copy = std::dynamic_pointer_cast<Serial>(second->duplicate(CreateDeep));
    EXPECT_NE(first->Number(), second->Number());
    EXPECT_EQ(third->Number(), first->Number() + 2);
    EXPECT_EQ(second->Number(), first->Number() + 1);
    EXPECT_EQ(copy->Number(), second->Number());
    EXPECT_EQ(Serial::next, third->Number()) << "once for each object, and not for a copy";
    EXPECT_EQ(AttrContComparer(AttrContComparer::allCategories, 0).compare(*first, *second), 1u);
}

TEST(UntouchedAttributes, HaveTheDefaultsOfTheirTimeWheneverTheyAreAskedFor) {
    Rated::rating = 1;
    const auto poor = Rated::create();
    Rated::rating = 2;
    const auto good = Rated::create();
    Rated::rating = 3;
    EXPECT_EQ(poor->Rating(), 1);
    EXPECT_EQ(good->Rating(), 2);
    EXPECT_EQ(poor->Text(), "kept");
    EXPECT_EQ(good->Text(), "kept");
}

TEST(UntouchedAttributes, NameTheirObjectAtEachLevelThroughTheChangeProtocol) {
    const auto polled = Polled::create();
    EXPECT_EQ(polled->numAsked, 1) << "the level above set it ahead of the guard";
}

TEST(UntouchedAttributes, AreMadeAtOnceInAClassWithFieldsWhoseHooksComeBeforeTheDefaults) {
    const auto post = Post::create();
    EXPECT_EQ(post->sizeSeen, 0);
    EXPECT_EQ(post->Size(), 3);
}

// Copies ------------------------------------------------------------------------------------------

TEST(UntouchedAttributes, StayUntouchedInACopy) {
    const auto lamp = Lamp::create();
    lamp->name("north");

    const auto copy = std::dynamic_pointer_cast<Lamp>(lamp->duplicate(CreateDeep));

    ASSERT_NE(copy, nullptr);
    EXPECT_TRUE(lamp->isUntouched());
    EXPECT_TRUE(copy->isUntouched());
    EXPECT_EQ(copy->getName(), "north");
    EXPECT_EQ(copy->Height(), 1.75);
    EXPECT_EQ(&copy->Attr_Height().getLocation()->get(), copy.get());
}

TEST(UntouchedAttributes, AreCopiedLevelByLevel) {
    const auto beacon = Beacon::create();
    beacon->Height(2.5);

    const auto copy = std::dynamic_pointer_cast<Beacon>(beacon->duplicate(CreateDeep));

    ASSERT_NE(copy, nullptr);
    EXPECT_TRUE(copy->isBeaconUntouched());
    EXPECT_TRUE(copy->isObjectUntouched());
    EXPECT_FALSE(copy->isUntouched());
    EXPECT_EQ(copy->Height(), 2.5);
    EXPECT_TRUE(copy->Lit());
}

TEST(UntouchedAttributes, OfACopyKnowNothingOfItsSource) {
    const auto lamp = Lamp::create();
    const auto copy = std::dynamic_pointer_cast<Lamp>(lamp->duplicate(CreateDeep));
    lamp->Count(9);
    EXPECT_EQ(copy->Count(), 7);
}

// Streams -----------------------------------------------------------------------------------------

TEST(UntouchedAttributes, AreWrittenLikeThoseThatAreThere) {
    const auto lamp = Lamp::create();
    const std::string text = written(*lamp);
    EXPECT_TRUE(lamp->isUntouched());
    EXPECT_TRUE(lamp->isObjectUntouched());
    EXPECT_EQ(text, written(*touchedLamp()));
    EXPECT_NE(text.find("Name \"Height\"\nValue 1.75\n"), std::string::npos);
}

TEST(UntouchedAttributes, StayUntouchedWhereAStreamHasTheirDefaults) {
    const auto lamp = Lamp::create();
    const auto error = readText(*lamp, containerBlock(attributeBlock("String", "Label", "\"none\"") +
                                                attributeBlock("int", "Count", "7") +
                                                bareBlock("String", "Action") +
                                                bareBlock("Uuid", "UUID")));
    EXPECT_EQ(error, std::nullopt);
    EXPECT_TRUE(lamp->isUntouched());
    EXPECT_TRUE(lamp->isObjectUntouched());
    EXPECT_EQ(lamp->Count(), 7);
}

TEST(UntouchedAttributes, TakeTheValuesOfAStream) {
    const auto lamp = Lamp::create();
    readText(*lamp, containerBlock(attributeBlock("int", "Count", "8")));
    EXPECT_EQ(lamp->Count(), 8);
    EXPECT_EQ(lamp->Label(), "none");
}

TEST(UntouchedAttributes, TakeTheZeroOfTheirTypeWhereAStreamLeavesItOut) {
    const auto lamp = Lamp::create();
    readText(*lamp, containerBlock(bareBlock("int", "Count")));
    EXPECT_EQ(lamp->Count(), 0);
}

TEST(UntouchedAttributes, TakeTheirDefaultInAnotherTypeThanTheirOwn) {
    const auto lamp = Lamp::create();
    readText(*lamp, containerBlock(attributeBlock("String", "Count", "\"7\"")));
    EXPECT_EQ(lamp->Count(), 7);
    EXPECT_EQ(lamp->Attr_Count().getClassName(), "Attr<int>");
}

TEST(UntouchedAttributes, TakeTheWriteFlagThatComesWithTheirDefault) {
    const auto lamp = Lamp::create();
    readText(*lamp, containerBlock(attributeBlock("int", "Count", "7\nWrite 1")));
    EXPECT_FALSE(lamp->isUntouched());
    EXPECT_TRUE(lamp->Attr_Count().hasWriteFlag());
}

TEST(UntouchedAttributes, TakeTheRelationsThatComeWithTheirDefault) {
    const auto lamp = Lamp::create();
    const std::string relation =
        "\nPostObserver \nObserverPath { \nPath \"elsewhere\"\nPriority 7\nAction \"Notify\"\n}";
    EXPECT_EQ(readText(*lamp, containerBlock(attributeBlock("int", "Count", "7" + relation))),
              std::nullopt);
    EXPECT_EQ(lamp->Attr_Count().getNumPostObservers(), 1u);
    EXPECT_EQ(lamp->Count(), 7);
}

TEST(UntouchedAttributes, TakeANumberThatOnlyComparesAsTheirDefault) {
    const auto dial = Dial::create();
    EXPECT_EQ(readText(*dial, containerBlock(attributeBlock("double", "Angle", "-0"))),
              std::nullopt);
    EXPECT_TRUE(std::signbit(dial->Angle()));
}

// Comparisons and walks ---------------------------------------------------------------------------

TEST(UntouchedAttributes, CompareAsTheSameOnBothSidesAndStayUntouched) {
    const auto a = Lamp::create();
    const auto b = Lamp::create();
    EXPECT_EQ(AttrContComparer(AttrContComparer::allCategories, 0).compare(*a, *b), 0u);
    EXPECT_TRUE(a->isUntouched());
    EXPECT_TRUE(b->isUntouched());
}

TEST(UntouchedAttributes, CompareWithThoseThatAreThere) {
    const auto untouched = Lamp::create();
    const auto same = touchedLamp();
    const AttrContComparer comparer(AttrContComparer::allCategories, 0);
    EXPECT_EQ(comparer.compare(*untouched, *same), 0u);
    EXPECT_EQ(comparer.compare(*same, *untouched), 0u);
    EXPECT_TRUE(untouched->isUntouched());
}

TEST(UntouchedAttributes, AreHandedToAComparerAsThoseOfTheirContainer) {
    const auto untouched = Lamp::create();
    const auto other = Lamp::create();
    other->Count(8);
    const RecordingComparer comparer;
    EXPECT_EQ(comparer.compare(*untouched, *other), 1u);
    EXPECT_EQ(comparer.calls, std::vector<std::string>{"Count|Count"});
    EXPECT_FALSE(untouched->isUntouched());
}

TEST(UntouchedAttributes, CompareBesideARowThatNoTableMakes) {
    const auto a = Beacon::create();
    const auto b = Beacon::create();
    const AttrContComparer comparer(AttrContComparer::allCategories, 0);
    EXPECT_EQ(comparer.compare(*a, *b), 0u);
    b->Lit(false);
    EXPECT_EQ(comparer.compare(*a, *b), 1u);
    a->Lit();
    EXPECT_EQ(comparer.compare(*a, *b), 1u);
}

TEST(UntouchedAttributes, AreEqualToThoseThatAreThere) {
    const auto a = Lamp::create();
    const auto b = touchedLamp();
    EXPECT_TRUE(a->isEqualTo(*b, nullptr, nullptr));
    b->Height(2);
    EXPECT_FALSE(Lamp::create()->isEqualTo(*b, nullptr, nullptr));
}

namespace {
class CountingVisitor : public AttributeVisitor {
public:
    CountingVisitor() : AttributeVisitor(0, 100) {}
    using AttributeVisitor::visit;
    VisitResult visit(Attribute&) override {
        ++numVisited;
        return Continue;
    }

    int numVisited = 0;
};
}  // namespace

TEST(UntouchedAttributes, AreVisitedUnlessTheVisitorPassesOverThem) {
    const auto lamp = Lamp::create();
    lamp->Count(8);
    CountingVisitor passing;
    passing.setPassesUntouched(true);
    lamp->attributeVisitor(passing, true);
    EXPECT_EQ(passing.numVisited, 4);  // the name and those of the level of the count
    EXPECT_TRUE(lamp->isObjectUntouched());

    CountingVisitor visitor;
    EXPECT_FALSE(visitor.passesUntouched());
    lamp->attributeVisitor(visitor, true);
    EXPECT_EQ(visitor.numVisited, 9);
    EXPECT_FALSE(lamp->isObjectUntouched());
}

TEST(UntouchedAttributes, AreLookedAtInOneThatStandsForThemAndHasNoContainer) {
    const auto lamp = Lamp::create();
    const auto sample = lamp->lookAtAttribute(Lamp::HeightToken);
    ASSERT_NE(sample, nullptr);
    EXPECT_EQ(sample->getValueString(), "1.75");
    EXPECT_TRUE(sample->hasDefinitionFlag());
    EXPECT_FALSE(sample->getLocation().has_value());
    EXPECT_EQ(sample, Lamp::create()->lookAtAttribute(Lamp::HeightToken));
    EXPECT_TRUE(lamp->isUntouched());

    lamp->Height(2);
    EXPECT_EQ(lamp->lookAtAttribute(Lamp::HeightToken).get(), &lamp->Attr_Height());
    EXPECT_EQ(sample->getValueString(), "1.75");
}

TEST(UntouchedAttributes, AreLookedAtFromSeveralThreadsAtOnce) {
    std::string texts[2];
    {
        std::jthread first([&] { texts[0] = written(*Beacon::create()); });
        std::jthread second([&] { texts[1] = written(*Beacon::create()); });
    }
    EXPECT_EQ(texts[0], texts[1]);
    EXPECT_NE(texts[0].find("Name \"Lit\"\nValue true\n"), std::string::npos);
}

TEST(UntouchedAttributes, HaveAClassVersionThatIsWrittenWithoutMakingThem) {
    const auto lamp = Lamp::create();
    EXPECT_EQ(lamp->getStoredClassVersion(), ClassVersion{});
    lamp->setClassVersion(ClassVersion{});
    EXPECT_TRUE(lamp->isObjectUntouched());

    lamp->setClassVersion(ClassVersion{2, 1});
    EXPECT_EQ(lamp->MajorVersion(), 2);
    EXPECT_EQ(lamp->MinorVersion(), 1);
    EXPECT_EQ(lamp->getStoredClassVersion(), (ClassVersion{2, 1}));
}
