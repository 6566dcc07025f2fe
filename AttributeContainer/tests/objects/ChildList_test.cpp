#include <AttributeContainer/ChildList.h>

#include <AttributeContainer/CachedAttributeInfo.h>
#include <AttributeContainer/Object.h>

#include "support/Trees.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// Enough children for searches to go through an index.
constexpr int wide = 40;

std::shared_ptr<Object> makeWideParent() {
    const auto parent = Object::create();
    for (int i = 0; i < wide; ++i) addNamed(*parent, "child" + std::to_string(i));
    return parent;
}

// Goes by a name that is not the one that it stores.
class Disguised : public ContainerClass<Disguised, Object, "Disguised"> {
public:
    using Block::Block;
    std::string getName() const override { return mask; }

    std::string mask = "mask";
};

}  // namespace

TEST(ChildList, IsEmptyAtFirst) {
    const auto parent = Object::create();

    EXPECT_EQ(parent->getChildren().getNumChildren(), 0u);
    EXPECT_EQ(parent->getChildren().begin(), parent->getChildren().end());
}

TEST(ChildList, KeepsTheOrderOfInsertion) {
    const auto parent = Object::create();
    const auto first = addNamed(*parent, "b");
    const auto second = addNamed(*parent, "a");

    EXPECT_EQ(parent->getChildren().getNumChildren(), 2u);
    EXPECT_EQ(parent->getChildren().getChild(0), first);
    EXPECT_EQ(parent->getChildren().getChild(1), second);
    EXPECT_EQ(childNames(*parent), (Names{"b", "a"}));
}

TEST(ChildList, GivesTheSameEmptyPointerPastTheEndOfAnyList) {
    const auto one = Object::create();
    const auto other = Object::create();
    addNamed(*one, "child");

    const auto& answer = one->getChildren().getChild(one->getNumChildren());

    EXPECT_EQ(answer, nullptr);
    EXPECT_EQ(&answer, &other->getChildren().getChild(~std::uint64_t{0}));
    EXPECT_EQ(&answer, &other->getChildren().inqChild("child"));
}

TEST(ChildList, FindsTheOldestOfTwoNamesThatDifferInCase) {
    const auto parent = Object::create();
    const auto older = addNamed(*parent, "scan");
    addNamed(*parent, "SCAN");

    EXPECT_EQ(parent->getChildren().inqChild("Scan"), older);
}

TEST(ChildList, FindsNothingForAnUnknownOrAnEmptyName) {
    const auto parent = Object::create();
    const auto child = addNamed(*parent, "scan");
    {
        const BlockObserver unasked;
        child->Name("");
    }
    ASSERT_EQ(child->getName(), "");

    EXPECT_EQ(parent->getChildren().inqChild(""), nullptr);
    EXPECT_EQ(parent->getChildren().inqChild("scan"), nullptr);
}

TEST(ChildList, TellsTheIndexOfAChildByIdentity) {
    const auto parent = Object::create();
    const auto first = addNamed(*parent, "twin");
    const auto second = addNamed(*parent, "twin");
    const auto stranger = named("twin");

    EXPECT_EQ(parent->getChildren().lookupChild(*first), 0u);
    EXPECT_EQ(parent->getChildren().lookupChild(*second), 1u);
    EXPECT_EQ(parent->getChildren().lookupChild(*stranger), std::nullopt);
}

TEST(ChildList, FindsEveryChildOfAWideParentWhateverTheCase) {
    const auto parent = makeWideParent();

    for (int i = 0; i < wide; ++i)
        EXPECT_EQ(parent->inqChild("CHILD" + std::to_string(i)),
                  parent->getChild(static_cast<std::uint64_t>(i)));
    EXPECT_EQ(parent->inqChild("child40"), nullptr);
    EXPECT_EQ(parent->inqChild(""), nullptr);
}

TEST(ChildList, FindsTheOldestOfManyEqualNamesInAWideParent) {
    const auto parent = Object::create();
    for (int i = 0; i < wide; ++i) addNamed(*parent, i % 2 == 0 ? "twin" : "TWIN");
    EXPECT_EQ(parent->inqChild("Twin"), parent->getChild(0));

    parent->rmChild(std::uint64_t{0}, 0);

    EXPECT_EQ(parent->inqChild("Twin"), parent->getChild(0));
}

TEST(ChildList, FindsChildrenThatCameBehindTheFirstSearch) {
    const auto parent = makeWideParent();
    EXPECT_EQ(parent->inqChild("late"), nullptr);

    const auto late = addNamed(*parent, "late");

    EXPECT_EQ(parent->inqChild("late"), late);
}

TEST(ChildList, FindsNoChildThatHasLeft) {
    const auto parent = makeWideParent();
    const auto child = parent->inqChild("child7");
    ASSERT_NE(child, nullptr);

    ASSERT_TRUE(parent->rmChild(*child, 0));

    EXPECT_EQ(parent->inqChild("child7"), nullptr);
    EXPECT_EQ(parent->lookupChild(*child), std::nullopt);
    EXPECT_EQ(parent->getNumChildren(), 39u);
}

// Every road by which a name can change, on a parent that has searched by the old name.
struct Road {
    const char* name;
    void (*rename)(Object& child);
};

class ChildListRename : public testing::TestWithParam<Road> {};

TEST_P(ChildListRename, IsSeenByTheParent) {
    for (const bool isWide : {false, true}) {
        const auto parent = isWide ? makeWideParent() : Object::create();
        const auto child = addNamed(*parent, "before");
        ASSERT_EQ(parent->inqChild("before"), child);

        GetParam().rename(*child);

        EXPECT_EQ(child->getName(), "after");
        EXPECT_EQ(parent->inqChild("after"), child);
        EXPECT_EQ(parent->inqChild("before"), nullptr);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Roads, ChildListRename,
    testing::Values(
        Road{"SetName", [](Object& child) { EXPECT_EQ(child.setName("after"), nullptr); }},
        Road{"Accessor", [](Object& child) { child.name("after"); }},
        Road{"AttributeSet", [](Object& child) { child.Attr_Name().set("after"); }},
        Road{"AssignFrom", [](Object& child) { child.Attr_Name().assignFrom("after"); }},
        Road{"Assignment",
             [](Object& child) {
                 const auto other = named("after");
                 child.Attr_Name() = other->Attr_Name();
             }},
        Road{"ObservingBlocked",
             [](Object& child) {
                 const BlockObserver unasked;
                 child.name("after");
             }},
        Road{"CachedValue",
             [](Object& child) {
                 const auto next = std::make_shared<CustAttr<std::string>>(std::nullopt);
                 next->set("after");
                 child.Attr_Name().addNotifyInfo(std::make_shared<CachedAttributeInfo>(next));
                 Attribute::setIsCachedAttributePending(true);
                 child.Attr_Name().touch(nullptr, nullptr);
             }}),
    [](const auto& road) { return road.param.name; });

TEST(ChildList, KeepsTheOrderOfChildrenThatAreRenamed) {
    const auto parent = makeWideParent();
    ASSERT_NE(parent->inqChild("child20"), nullptr);

    EXPECT_EQ(parent->getChild(30)->setName("twin"), nullptr);
    EXPECT_EQ(parent->inqChild("twin"), parent->getChild(30));
    EXPECT_EQ(parent->getChild(10)->setName("TWIN"), nullptr);

    EXPECT_EQ(parent->inqChild("twin"), parent->getChild(10));
}

TEST(ChildList, GoesByAPendingNameForAsLongAsItIsPending) {
    const auto parent = makeWideParent();
    const auto child = parent->inqChild("child3");
    const auto next = std::make_shared<CustAttr<std::string>>(std::nullopt);
    next->set("coming");
    child->Attr_Name().addNotifyInfo(std::make_shared<CachedAttributeInfo>(next));

    Attribute::setIsCachedAttributePending(true);
    EXPECT_EQ(parent->inqChild("coming"), child);
    EXPECT_EQ(parent->inqChild("child3"), nullptr);
    const auto added = addNamed(*parent, "added");
    Attribute::setIsCachedAttributePending(false);

    EXPECT_EQ(parent->inqChild("coming"), nullptr);
    EXPECT_EQ(parent->inqChild("child3"), child);
    EXPECT_EQ(parent->inqChild("added"), added);
}

TEST(ChildList, ForgetsAChildThatIsRenamedAfterItLeft) {
    const auto parent = makeWideParent();
    const auto child = parent->inqChild("child3");
    ASSERT_TRUE(parent->rmChild(*child, 0));

    EXPECT_EQ(child->setName("elsewhere"), nullptr);

    EXPECT_EQ(parent->inqChild("elsewhere"), nullptr);
    EXPECT_EQ(parent->inqChild("child4"), parent->getChild(3));
}

TEST(ChildList, AsksAChildForItsNameWhereItsClassHasAnother) {
    const auto parent = makeWideParent();
    ASSERT_EQ(parent->inqChild("mask"), nullptr);
    const auto child = addNamed<Disguised>(*parent, "stored");

    EXPECT_EQ(parent->inqChild("mask"), child);
    EXPECT_EQ(parent->inqChild("stored"), nullptr);
    child->mask = "face";
    EXPECT_EQ(parent->inqChild("face"), child);
    EXPECT_EQ(parent->inqChild("child5"), parent->getChild(5));
}

TEST(ChildList, TakesFortyThousandChildrenWithATestOfEachName) {
    const auto parent = Object::create();
    for (int i = 0; i < 40000; ++i)
        ASSERT_TRUE(parent->addChild(named("c" + std::to_string(i)), 0));

    EXPECT_EQ(parent->getNumChildren(), 40000u);
    EXPECT_FALSE(parent->addChild(named("C39999"), 0));
}

TEST(ChildList, MakesUniqueNamesForThousandsOfEqualOnes) {
    const auto parent = Object::create();
    for (int i = 0; i < 10000; ++i)
        ASSERT_TRUE(parent->addChild(named("scan"), AddFlags::MakeNameUnique));

    EXPECT_EQ(parent->getChild(0)->getName(), "scan");
    EXPECT_EQ(parent->getChild(9999)->getName(), "scan9999");
}

TEST(ChildList, LosesThousandsOfChildrenOneByOne) {
    const auto parent = Object::create();
    std::vector<std::shared_ptr<Object>> all;
    for (int i = 0; i < 20000; ++i) all.push_back(addNamed(*parent, "c"));

    for (auto child = all.rbegin(); child != all.rend(); ++child)
        ASSERT_TRUE(parent->rmChild(**child, 0));

    EXPECT_EQ(parent->getNumChildren(), 0u);
    EXPECT_EQ(parent->inqChild("c"), nullptr);
}
