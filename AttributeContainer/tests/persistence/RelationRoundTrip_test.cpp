// Relations of a whole tree: written with it, read back, and in force again.
#include <AttributeContainer/Object.h>

#include "support/Containers.h"
#include "support/ObserverGraph.h"
#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// Relations of a tree are put in force attribute by attribute.
class Resolver : public AttributeVisitor {
public:
    Resolver() : AttributeVisitor(0, ~0u) {}
    using AttributeVisitor::visit;
    VisitResult visit(Attribute& attribute) override {
        if (!attribute.updateObserverLists(false)) ++numUnresolved;
        return Continue;
    }
    int numUnresolved = 0;
};

// project / early, with a "Gain" that project / late watches, and an attribute behind it.
struct Tree {
    std::shared_ptr<Object> project = named("project");
    std::shared_ptr<Object> early = addNamed(*project, "early");
    std::shared_ptr<Object> late = addNamed(*project, "late");
    std::shared_ptr<Attr<double>> gain = addCustom<double>(*early, "Gain", 2.5);
    std::shared_ptr<Attr<int>> behind = addCustom<int>(*early, "Behind", 7);
};

std::shared_ptr<Attribute> attributeAt(Object& project, const std::string& child,
                                       const std::string& name) {
    return project.inqObject(child)->getAttribute(name).lock();
}

}  // namespace

TEST(RelationRoundTrip, FindsObserversThatAreReadLater) {
    Tree tree;
    tree.gain->addObserver(*tree.late, 3, tellAction, false);
    const std::string text = written(*tree.project);
    const auto back = Object::create();

    EXPECT_EQ(readText(*back, text + "\n"), std::nullopt);

    const auto gain = attributeAt(*back, "early", "Gain");
    ASSERT_EQ(gain->getNumPostObservers(), 1u);
    EXPECT_EQ(gain->getPath(0).getPath(), "/late");
    EXPECT_TRUE(gain->updateObserverLists(false));
    EXPECT_EQ(&gain->getPath(0).getObserver()->get(), back->inqObject("late").get());
    EXPECT_NE(back->inqObject("late")->lookupObservedByMe(*gain), notFound);
    EXPECT_EQ(written(*back), text);
}

TEST(RelationRoundTrip, KeepsTheAttributeAndWhatStandsBehindIt) {
    Tree tree;
    tree.gain->addObserver(*tree.late, 3, tellAction, false);
    tree.gain->addObserver(*tree.project, 4, linkAction, false);
    tree.gain->addPreObserver("not yet", 0, askAction, false);
    const auto back = Object::create();

    EXPECT_EQ(readText(*back, written(*tree.project) + "\n"), std::nullopt);

    const auto gain = attributeAt(*back, "early", "Gain");
    EXPECT_EQ(gain->getValueString(), "2.5");
    EXPECT_EQ(gain->getNumPostObservers(), 2u);
    EXPECT_EQ(gain->getNumPreObservers(), 1u);
    EXPECT_EQ(attributeAt(*back, "early", "Behind")->getValueString(), "7");
    EXPECT_EQ(back->getNumChildren(), 2u);
}

TEST(RelationRoundTrip, WaitsAsTextForAnObserverThatComesLater) {
    Tree tree;
    tree.gain->addObserver("/later", 3, tellAction, false);
    const auto back = Object::create();
    readText(*back, written(*tree.project) + "\n");
    const auto gain = attributeAt(*back, "early", "Gain");
    EXPECT_FALSE(gain->updateObserverLists(false));

    const auto later = addNamed(*back, "later");

    EXPECT_TRUE(gain->updateObserverLists(false));
    EXPECT_EQ(&gain->getPath(0).getObserver()->get(), later.get());
}

TEST(RelationRoundTrip, LosesARelationWithAnUnknownActionAndNoMore) {
    Tree tree;
    tree.gain->addObserver("a", 3, tellAction, false);
    tree.gain->addObserver("b", 2, linkAction, false);
    tree.gain->addObserver("c", 1, linkAction, false);
    std::string text = written(*tree.project);
    for (auto at = text.find("\"Correspondence\""); at != std::string::npos;
         at = text.find("\"Correspondence\""))
        text.replace(at, 16, "\"Weld\"");
    const auto back = Object::create();

    EXPECT_EQ(readText(*back, text + "\n"), ErrorCode::ObserverEntryDropped);

    const auto gain = attributeAt(*back, "early", "Gain");
    ASSERT_EQ(gain->getNumPostObservers(), 1u);
    EXPECT_EQ(gain->getPath(0).getPath(), "a");
    EXPECT_EQ(gain->getValueString(), "2.5");
    EXPECT_EQ(attributeAt(*back, "early", "Behind")->getValueString(), "7");
    EXPECT_NE(back->inqObject("late"), nullptr);
}

TEST(RelationRoundTrip, IsPutInForceByAWalkOverTheTree) {
    Tree tree;
    tree.gain->addObserver(*tree.late, 3, tellAction, false);
    tree.behind->addObserver("/nobody", 3, tellAction, false);
    const auto back = Object::create();
    readText(*back, written(*tree.project) + "\n");
    Resolver resolver;
    for (const auto& child : back->getChildren()) child->attributeVisitor(resolver, true);
    EXPECT_EQ(resolver.numUnresolved, 1);
    EXPECT_TRUE(attributeAt(*back, "early", "Gain")->getPath(0).isActive());
}

TEST(RelationRoundTrip, OwnRelationsOfAContainerAreResolvedByIt) {
    const std::string text =
        "\nAttrContainer { "
        "\nAttr<String> { \nName \"Name\"\nValue \"root\"\n}"
        "\nPostObserver \nObserverPath { \nPath \"late\"\nPriority 3\nAction \"Notify\"\n}"
        "\nPostObserver \nObserverPath { \nPath \"never\"\nPriority 2\nAction \"Notify\"\n}"
        "\n}\n";
    const auto back = named("before");
    const auto late = addNamed(*back, "late");

    EXPECT_EQ(readText(*back, text), std::nullopt);

    ASSERT_EQ(late->setName("later"), nullptr);
    const std::string again = written(*back);
    EXPECT_NE(again.find("Path \"/later\""), std::string::npos) << "it goes with the observer";
    EXPECT_NE(again.find("Path \"never\""), std::string::npos) << "it is still a text";
    EXPECT_EQ(again.find("Path \"late\""), std::string::npos);
}
