// The index over the children's names, held against a look at each child in turn.
#include "objects/ChildIndex.h"

#include <AttributeContainer/CachedAttributeInfo.h>
#include <AttributeContainer/Object.h>

#include <QOR/Text.h>

#include "support/FreeAttribute.h"
#include "support/ObserverActors.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <string>
#include <vector>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// Few enough to meet often; several differ in case alone, or by the number at their end.
const Names validNames{"a",     "A",     "b",     "B",      "scan",  "Scan",   "SCAN",
                       "scan1", "SCAN1", "scan2", "scan02", "scan9", "scan10", "x-y",
                       "X-Y",   "x_y",   "0",     "00",     "a.b",   "A.B",    "longer-name",
                       "Event", "UUID",  "event", "z",      "Z",     "z9z",    "LONGER-NAME"};
// No guard stands in their way where observing is blocked.
const Names anyNames{"", " ", "a b", "A B", "\xC4", "\xE4", "x/y", "[", "{", "scan", "b", "z"};

/// Two parents that children come to, move between and leave, beside what they should look like.
class Families {
public:
    explicit Families(std::uint64_t seed) : random(seed) {}

    void act() {
        Family& family = families[below(2)];
        const bool isSmall = family.children.size() < 12 + below(50);
        if (below(3) == 0) return isSmall ? add(family) : remove(family);
        if (!family.children.empty()) rename(*family.children[below(family.children.size())]);
    }

    void check() const {
        for (const Family& family : families) {
            ASSERT_EQ(family.parent->getNumChildren(), family.children.size());
            for (const Names* names : {&validNames, &anyNames})
                for (const std::string& name : *names)
                    ASSERT_EQ(family.parent->inqChild(name), family.seek(name)) << name;
        }
    }

    bool happens() { return below(2) == 0; }

private:
    struct Family {
        std::shared_ptr<Object> parent = Object::create();
        std::vector<std::shared_ptr<Object>> children;

        std::shared_ptr<Object> seek(const std::string& name) const {
            if (name.empty()) return nullptr;
            for (const auto& child : children)
                if (QOR::compareIgnoreCase(child->getName(), name) == 0) return child;
            return nullptr;
        }
        bool isTaken(const std::string& name) const {
            return seek(name) || parent->getAttrToken(name) != AttrContainer::noToken;
        }
    };

    std::size_t below(std::size_t end) { return static_cast<std::size_t>(random() % end); }
    const std::string& oneOf(const Names& names) { return names[below(names.size())]; }

    std::shared_ptr<Object> newcomer() {
        if (below(3) == 0 && !departed.empty()) return departed[below(departed.size())];
        return named(oneOf(validNames));
    }

    void add(Family& family) {
        const auto child = newcomer();
        const bool hasParent = child->getParent() != nullptr;
        const std::string name = child->getName();
        // Names that are no valid ones can read as paths, so only a child's own list decides here.
        const std::size_t way = AttrContainer::isNameValid(name) ? below(3) : 0;
        std::string expectedName = name;
        while (way == 2 && family.isTaken(expectedName)) QOR::incrementIndex(expectedName);
        const bool isAccepted = !hasParent && (way != 1 || !family.isTaken(name));

        constexpr std::array flags{AddFlags::SkipNameTest, 0, AddFlags::MakeNameUnique};
        ASSERT_EQ(family.parent->addChild(child, flags[way]), isAccepted) << name;
        if (!isAccepted) return;
        ASSERT_EQ(child->getName(), expectedName);
        family.children.push_back(child);
    }

    void remove(Family& family) {
        const std::size_t place = below(family.children.size());
        const auto child = family.children[place];
        const bool isRemoved = happens() ? family.parent->rmChild(*child, 0)
                                         : family.parent->rmChild(std::uint64_t{place}, 0);
        ASSERT_TRUE(isRemoved);
        family.children.erase(family.children.begin() + static_cast<std::ptrdiff_t>(place));
        if (departed.size() < 20) departed.push_back(child);
        else departed[below(20)] = child;
    }

    // By every road by which a name can change, and by some that lead nowhere.
    void rename(Object& child) {
        const std::string& name = oneOf(validNames);
        switch (below(9)) {
            case 0: EXPECT_EQ(child.setName(name), nullptr); break;
            case 1: child.name(name); break;
            case 2: child.Attr_Name().assignFrom(name); break;
            case 3: child.Attr_Name() = named(name)->Attr_Name(); break;
            case 4: return renameUnheard(child, oneOf(anyNames));
            case 5: return renameByPendingValue(child, name);
            case 6: return showPendingValue(child, name);
            case 7: return refuse(child, name);
            case 8: return renameDeparted(name);
        }
        EXPECT_EQ(child.getName(), name);
    }

    void renameUnheard(Object& child, const std::string& name) {
        const BlockObserver block;
        child.Attr_Name().set(name);
        EXPECT_EQ(child.getName(), name);
    }
    void renameByPendingValue(Object& child, const std::string& name) {
        child.Attr_Name().addNotifyInfo(std::make_shared<CachedAttributeInfo>(attributeOf(name)));
        Attribute::setIsCachedAttributePending(true);
        if (happens()) check();
        child.Attr_Name().touch(nullptr, nullptr);
        EXPECT_FALSE(Attribute::isCachedAttributePending());
        EXPECT_EQ(child.getName(), name);
    }
    void showPendingValue(Object& child, const std::string& name) {
        const std::string stored = child.getName();
        child.Attr_Name().addNotifyInfo(std::make_shared<CachedAttributeInfo>(attributeOf(name)));
        Attribute::setIsCachedAttributePending(true);
        EXPECT_EQ(child.getName(), name);
        if (happens()) check();
        Attribute::setIsCachedAttributePending(false);
        EXPECT_EQ(child.getName(), stored);
    }
    void refuse(Object& child, const std::string& name) {
        const std::string stored = child.getName();
        const auto refuser = watch<Refuser>(child.Attr_Name());
        child.name(name);
        EXPECT_EQ(child.getName(), stored);
    }
    void renameDeparted(const std::string& name) {
        if (!departed.empty()) departed[below(departed.size())]->name(name);
    }

    std::mt19937_64 random;
    std::array<Family, 2> families;
    std::vector<std::shared_ptr<Object>> departed;  // some have found a parent again
};

class ChildIndexAtRandom : public testing::TestWithParam<int> {};

}  // namespace

TEST_P(ChildIndexAtRandom, FindsWhatALookAtEachChildFinds) {
    const auto seed = static_cast<std::uint64_t>(GetParam());
    Families families(seed);
    for (int step = 0; step < 3000; ++step) {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(step));
        families.act();
        if (families.happens()) families.check();
        if (HasFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ChildIndexAtRandom, testing::Range(1, 21));

// One by one --------------------------------------------------------------------------------------

TEST(ChildIndex, FindsChildrenByNameAndByIdentity) {
    const auto parent = Object::create();
    const auto older = addNamed(*parent, "scan");
    const auto younger = addNamed(*parent, "SCAN");
    const auto stranger = named("scan");

    const auto index = ChildIndex::make(parent->getChildren());

    ASSERT_NE(index, nullptr);
    ASSERT_TRUE(index->find("Scan").has_value());
    EXPECT_EQ(**index->find("Scan"), older);
    EXPECT_EQ(**index->find(*younger), younger);
    EXPECT_EQ(index->find("other"), std::nullopt);
    EXPECT_EQ(index->find(*stranger), std::nullopt);
    EXPECT_EQ(index->getName(*younger), "SCAN");
    EXPECT_EQ(index->getName(*stranger), std::nullopt);
}

TEST(ChildIndex, LeavesTheNextOldestWhereTheOldestIsRemoved) {
    const auto parent = Object::create();
    const auto older = addNamed(*parent, "scan");
    const auto younger = addNamed(*parent, "SCAN");
    const auto index = ChildIndex::make(parent->getChildren());

    index->remove(*older);
    index->remove(*older);  // no more to do

    EXPECT_EQ(**index->find("scan"), younger);
    EXPECT_EQ(index->find(*older), std::nullopt);
}

TEST(ChildIndex, KeepsTheAgeOfAChildThatIsRenamed) {
    const auto parent = Object::create();
    const auto older = addNamed(*parent, "a");
    const auto younger = addNamed(*parent, "b");
    const auto index = ChildIndex::make(parent->getChildren());

    EXPECT_EQ(older->setName("B"), nullptr);
    EXPECT_TRUE(index->rename(*older));

    EXPECT_EQ(**index->find("b"), older);
    EXPECT_EQ(index->find("a"), std::nullopt);
    EXPECT_EQ(index->getName(*older), "B");
    EXPECT_TRUE(index->rename(*named("stranger")));
}

TEST(ChildIndex, IsNotMadeOverAChildThatGoesByAnotherName) {
    /// Goes by a name that it does not store.
    class Disguised : public ContainerClass<Disguised, Object, "Disguised"> {
    public:
        using Block::Block;
        std::string getName() const override { return "mask"; }
    };
    const auto parent = Object::create();
    const auto child = addNamed<Disguised>(*parent, "stored");

    EXPECT_EQ(ChildIndex::make(parent->getChildren()), nullptr);

    const auto index = ChildIndex::make(Object::create()->getChildren());
    EXPECT_FALSE(index->add(parent->getChildren().begin()));
    EXPECT_EQ(index->find(*child), std::nullopt);
}
