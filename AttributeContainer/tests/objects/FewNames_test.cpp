// Searches through short lists of children, which look at the names side by side.
#include "objects/FewNames.h"

#include <AttributeContainer/CachedAttributeInfo.h>
#include <AttributeContainer/Object.h>

#include "support/Trees.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

/// Goes by the name that it stores until it gets a mask.
class Masked : public ContainerClass<Masked, Object, "Masked"> {
public:
    using Block::Block;
    std::string getName() const override { return mask.empty() ? Object::getName() : mask; }

    std::string mask;
};

/// A parent of few children, with names that have been looked for often.
class FewChildren : public testing::Test {
protected:
    FewChildren() {
        search();
        search();
        search();
    }

    void search() const {
        EXPECT_EQ(parent->inqChild("A"), a);
        EXPECT_EQ(parent->inqChild("b"), b);
        EXPECT_EQ(parent->inqChild("C"), c);
        EXPECT_EQ(parent->inqChild("d"), nullptr);
    }

    const std::shared_ptr<Object> parent = Object::create();
    const std::shared_ptr<Object> a = addNamed(*parent, "a");
    const std::shared_ptr<Object> b = addNamed(*parent, "B");
    const std::shared_ptr<Object> c = addNamed(*parent, "c");
};

}  // namespace

TEST_F(FewChildren, AreFoundByTheirNewNames) {
    EXPECT_EQ(b->setName("d"), nullptr);

    EXPECT_EQ(parent->inqChild("D"), b);
    EXPECT_EQ(parent->inqChild("b"), nullptr);
}

TEST_F(FewChildren, AreFoundByNewNamesOfWhichNobodyIsTold) {
    {
        const BlockObserver block;
        b->name("d");
    }

    EXPECT_EQ(parent->inqChild("D"), b);
    EXPECT_EQ(parent->inqChild("b"), nullptr);
}

TEST_F(FewChildren, AreNotFoundWhenTheyHaveLeft) {
    const auto twin = addNamed(*parent, "b");
    for (int i = 0; i < 3; ++i) EXPECT_EQ(parent->inqChild("b"), b);

    EXPECT_TRUE(parent->rmChild(*b, 0));

    for (int i = 0; i < 3; ++i) EXPECT_EQ(parent->inqChild("B"), twin);
}

TEST_F(FewChildren, AreFoundWhenTheyCameBehindTheSearches) {
    const auto d = addNamed(*parent, "D");

    EXPECT_EQ(parent->inqChild("d"), d);
    EXPECT_EQ(parent->inqChild("a"), a);
}

TEST_F(FewChildren, AreFoundByAPendingNameForAsLongAsItIsPending) {
    const auto next = std::make_shared<CustAttr<std::string>>(std::nullopt);
    next->set("d");
    b->Attr_Name().addNotifyInfo(std::make_shared<CachedAttributeInfo>(next));
    Attribute::setIsCachedAttributePending(true);

    EXPECT_EQ(parent->inqChild("d"), b);
    EXPECT_EQ(parent->inqChild("b"), nullptr);

    Attribute::setIsCachedAttributePending(false);
    b->Attr_Name().removeNotifyInfos(true);
    search();
}

TEST_F(FewChildren, AreAskedWhereAClassHasANameOfItsOwn) {
    const auto masked = addNamed<Masked>(*parent, "stored");
    for (int i = 0; i < 3; ++i) EXPECT_EQ(parent->inqChild("stored"), masked);

    masked->mask = "face";

    for (int i = 0; i < 3; ++i) EXPECT_EQ(parent->inqChild("FACE"), masked);
    EXPECT_EQ(parent->inqChild("stored"), nullptr);
}

TEST(FewNames, TellLongNamesApartByTheirEnds) {
    const auto parent = Object::create();
    // 15, 16, 17 and 16 characters: the first 15 are the same.
    const std::array<std::string, 4> names{"scanner-station", "scanner-station1",
                                           "scanner-station12", "scanner-station2"};
    for (const std::string& name : names) addNamed(*parent, name);

    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(parent->inqChild("SCANNER-STATION"), parent->getChild(0));
        EXPECT_EQ(parent->inqChild("scanner-STATION1"), parent->getChild(1));
        EXPECT_EQ(parent->inqChild("scanner-station12"), parent->getChild(2));
        EXPECT_EQ(parent->inqChild("Scanner-Station2"), parent->getChild(3));
        EXPECT_EQ(parent->inqChild("scanner-station3"), nullptr);
        EXPECT_EQ(parent->inqChild("scanner-statio"), nullptr);
    }
}

TEST(FewNames, FindTheOldestOfTwoNamesThatDifferInCase) {
    const auto parent = Object::create();
    addNamed(*parent, "a");
    const auto older = addNamed(*parent, "Scan");
    addNamed(*parent, "scan");

    for (int i = 0; i < 3; ++i) EXPECT_EQ(parent->inqChild("scan"), older);
}

TEST(FewNames, AreNotMadeOverAClassWithANameOfItsOwn) {
    const auto parent = Object::create();
    addNamed(*parent, "plain");
    addNamed<Masked>(*parent, "stored");  // which is what it goes by

    EXPECT_EQ(FewNames::make(parent->getChildren()), nullptr);
}
