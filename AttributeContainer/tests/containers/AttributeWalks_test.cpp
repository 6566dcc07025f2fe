// The walk of a visitor over the attributes of a container and its fields.
#include <AttributeContainer/kVAttrContainer.h>

#include <AttributeContainer/AttrCountMarkedVisitor.h>

#include "support/Containers.h"
#include "support/Visitors.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

/// Notes what it meets, by the name of the container or the path of the attribute, and answers as
/// it is told for some notes.
class AttributeLog : public AttributeVisitor {
public:
    explicit AttributeLog(unsigned firstLevel = 0, unsigned maxLevel = anyLevel)
        : AttributeVisitor(firstLevel, maxLevel) {}

    Result visit(AttrContainer& container) override { return note("(" + container.getName()); }
    Result visitDone(AttrContainer& container) override { return note(container.getName() + ")"); }
    Result visit(Attribute& attribute) override {
        return note(attribute.lookupObject()->get().getName() + "." + attribute.getName());
    }

    Log log;
    std::map<std::string, Result> answers;

private:
    Result note(const std::string& text) {
        log.push_back(text);
        const auto answer = answers.find(text);
        return answer != answers.end() ? answer->second : Continue;
    }
};

// "r", with a declared attribute and two custom ones, and in it "f" and "g", with one custom each.
struct AttributeWalks : testing::Test {
    AttributeWalks() {
        root->name("r");
        addCustom(*root, "C1", 1);
        addCustom(*root, "C2", 2);
        addCustom(*f, "C", 1);
        addCustom(*g, "C", 1);
    }

    Log walk(AttributeLog& visitor, bool recurse, Result expected = VisitorCore::Continue) {
        EXPECT_EQ(root->attributeVisitor(visitor, recurse), expected);
        EXPECT_EQ(visitor.getHierLevel(), 0u);
        return visitor.log;
    }

    std::shared_ptr<AttrContainer> root = AttrContainer::create();
    std::shared_ptr<AttrContainer> f = addField(*root, "f");
    std::shared_ptr<AttrContainer> g = addField(*root, "g");
};

const Log inF{"(f", "f.Name", "f.C", "f)"};
const Log inG{"(g", "g.Name", "g.C", "g)"};

Log operator+(Log a, const Log& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

}  // namespace

TEST(AttributeVisitor, GoesOnByItself) {
    class Bare : public AttributeVisitor {
    public:
        using AttributeVisitor::AttributeVisitor;
        using AttributeVisitor::visit;
        Result visit(Attribute&) override { return Continue; }
    };
    Bare visitor(0, 0);
    const auto container = AttrContainer::create();
    EXPECT_EQ(visitor.visit(*container), VisitorCore::Continue);
    EXPECT_EQ(visitor.visitDone(*container), VisitorCore::Continue);
    EXPECT_EQ(visitor.visitDone(container->Attr_Name()), VisitorCore::Continue);
}

TEST_F(AttributeWalks, VisitHardCodedThenCustomThenFields) {
    AttributeLog visitor;
    EXPECT_EQ(walk(visitor, true),
              (Log{"(r", "r.Name", "r.C1", "r.C2"} + inF + inG + Log{"r)"}));
}

TEST_F(AttributeWalks, VisitTheContainersOwnAttributesAloneWithoutRecursion) {
    AttributeLog visitor;
    EXPECT_EQ(walk(visitor, false), (Log{"(r", "r.Name", "r.C1", "r.C2", "r)"}));
}

TEST_F(AttributeWalks, VisitOnlyTheStartAtMaxLevelZero) {
    AttributeLog visitor(0, 0);
    EXPECT_EQ(walk(visitor, true, VisitorCore::Prune),
              (Log{"(r", "r.Name", "r.C1", "r.C2", "r)"}));
}

TEST_F(AttributeWalks, VisitTheContainersAboveTheFirstLevelButNotTheirAttributes) {
    AttributeLog visitor(1);
    EXPECT_EQ(walk(visitor, true), (Log{"(r"} + inF + inG + Log{"r)"}));
}

TEST_F(AttributeWalks, DoNotBeginAboveTheMaxLevel) {
    AttributeLog visitor(0, 3);
    visitor.setHierLevel(4);
    EXPECT_EQ(root->attributeVisitor(visitor, true), VisitorCore::Prune);
    EXPECT_TRUE(visitor.log.empty());
}

TEST_F(AttributeWalks, LeaveOutAContainerThatIsNotEntered) {
    for (const Result answer : {VisitorCore::Prune, VisitorCore::Skip}) {
        AttributeLog visitor;
        visitor.answers["(f"] = answer;
        EXPECT_EQ(walk(visitor, true, answer),
                  (Log{"(r", "r.Name", "r.C1", "r.C2", "(f"} + inG + Log{"r)"}));
    }
}

TEST_F(AttributeWalks, EndAtAContainerThatStops) {
    AttributeLog visitor;
    visitor.answers["(f"] = VisitorCore::Stop;
    EXPECT_EQ(walk(visitor, true, VisitorCore::Stop),
              (Log{"(r", "r.Name", "r.C1", "r.C2", "(f", "r)"}));
}

TEST_F(AttributeWalks, RunOneCustomAttributeFurtherBehindAResult) {
    const auto mark = Mark::create();
    mark->name("m");
    addCustom(*mark, "C1", 1);
    addCustom(*mark, "C2", 2);
    AttributeLog visitor;
    visitor.answers["m.Label"] = VisitorCore::Prune;

    EXPECT_EQ(mark->attributeVisitor(visitor, true), VisitorCore::Prune);

    EXPECT_EQ(visitor.log, (Log{"(m", "m.Name", "m.Label", "m.C1", "m)"}));
}

TEST_F(AttributeWalks, LeaveTheCustomAttributesAtAResult) {
    AttributeLog visitor;
    visitor.answers["r.C1"] = VisitorCore::Prune;
    EXPECT_EQ(walk(visitor, true, VisitorCore::Prune),
              (Log{"(r", "r.Name", "r.C1"} + inF + inG + Log{"r)"}));
}

TEST_F(AttributeWalks, FollowTheirStepsAlsoBehindAStop) {
    AttributeLog visitor;
    visitor.answers["r.Name"] = VisitorCore::Stop;
    EXPECT_EQ(walk(visitor, true, VisitorCore::Stop),
              (Log{"(r", "r.Name", "r.C1"} + inF + Log{"r)"}));
}

TEST_F(AttributeWalks, LeaveTheOtherFieldsBehindAStopInOne) {
    AttributeLog visitor;
    visitor.answers["f.C"] = VisitorCore::Stop;
    EXPECT_EQ(walk(visitor, true, VisitorCore::Stop),
              (Log{"(r", "r.Name", "r.C1", "r.C2"} + inF + Log{"r)"}));
}

TEST_F(AttributeWalks, LeaveOnlyTheOneContainerAtAPrune) {
    AttributeLog visitor;
    visitor.answers["f.Name"] = VisitorCore::Prune;
    EXPECT_EQ(walk(visitor, true, VisitorCore::Prune),
              (Log{"(r", "r.Name", "r.C1", "r.C2"} + inF + inG + Log{"r)"}));
}

TEST_F(AttributeWalks, CombineTheResultOfTheEnd) {
    AttributeLog visitor;
    visitor.answers["f)"] = VisitorCore::Prune;
    visitor.answers["r)"] = VisitorCore::Skip;
    walk(visitor, true, VisitorCore::Prune | VisitorCore::Skip);
}

TEST_F(AttributeWalks, SurviveAVisitorThatRemovesAttributes) {
    class Remover : public AttributeLog {
    public:
        using AttributeLog::visit;
        Result visit(Attribute& attribute) override {
            AttributeLog::visit(attribute);
            if (attribute.getName() == "Name")
                const_cast<AttrContainer&>(attribute.getLocation()->get()).rmAllCustomAttributes();
            return Continue;
        }
    };
    Remover visitor;
    EXPECT_EQ(root->attributeVisitor(visitor, false), VisitorCore::Continue);
    EXPECT_EQ(visitor.log, (Log{"(r", "r.Name", "r)"}));
}

// Counting marks ----------------------------------------------------------------------------------

TEST_F(AttributeWalks, CountMarkedAttributes) {
    AttrCountMarkedVisitor none(anyLevel);
    root->attributeVisitor(none, true);
    EXPECT_EQ(none.getNumMarkedAttributes(), 0u);

    root->Attr_Name().setMarked(true);
    root->getAttribute("C2").lock()->setMarked(true);
    g->getAttribute("C").lock()->setMarked(true);

    AttrCountMarkedVisitor all(anyLevel);
    root->attributeVisitor(all, true);
    EXPECT_EQ(all.getNumMarkedAttributes(), 3u);
    AttrCountMarkedVisitor top(0);
    root->attributeVisitor(top, true);
    EXPECT_EQ(top.getNumMarkedAttributes(), 2u);
}
