#include <AttributeContainer/Object.h>

#include "support/Containers.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// Sets the path root of the thread, which only observers can do.
class Rooted : public ContainerClass<Rooted, Object, "Rooted"> {
public:
    using Block::Block;
    static void makeRoot(std::shared_ptr<Observer> root) { currentPathRoot(std::move(root)); }
};

class ScopedRoot {
public:
    explicit ScopedRoot(std::shared_ptr<Observer> root) { Rooted::makeRoot(std::move(root)); }
    ~ScopedRoot() { Rooted::makeRoot(nullptr); }
};

// Lies at a path of its own making.
class Elsewhere : public ContainerClass<Elsewhere, Object, "Elsewhere"> {
public:
    using Block::Block;
    using Object::inqObjPath;
    std::optional<std::string> inqObjPath() const override { return path; }

    std::optional<std::string> path;
};

// root with the children Sub, which has the child Deep, and Other; Gain is an attribute of the
// first two.
class ObjectPaths : public testing::Test {
protected:
    std::shared_ptr<Object> root = Object::create();
    std::shared_ptr<Object> sub = addNamed(*root, "Sub");
    std::shared_ptr<Object> other = addNamed(*root, "Other");
    std::shared_ptr<Object> deep = addNamed(*sub, "Deep");
    std::shared_ptr<Attribute> rootGain = addCustom(*root, "Gain", 1.5);
    std::shared_ptr<Attribute> subGain = addCustom(*sub, "Gain", 2.5);

    using Found = std::shared_ptr<const ObservingObject>;

    static Found find(const Object& from, const std::optional<std::string>& path) {
        return from.inqObserver(path).lock();
    }
};

}  // namespace

// The absolute path -------------------------------------------------------------------------------

TEST_F(ObjectPaths, OfARootIsASlash) {
    EXPECT_EQ(root->inqObjPath(), "/");
}

TEST_F(ObjectPaths, NameOneChildAfterTheOther) {
    EXPECT_EQ(sub->inqObjPath(), "/Sub");
    EXPECT_EQ(deep->inqObjPath(), "/Sub/Deep");
}

TEST_F(ObjectPaths, OfAnAttributeHaveNoLeadingSlashAtTheRoot) {
    EXPECT_EQ(rootGain->inqObjPath(), "Gain");
    EXPECT_EQ(subGain->inqObjPath(), "/Sub/Gain");
    EXPECT_EQ(root->Attr_Event().inqObjPath(), "Event");
    EXPECT_EQ(deep->Attr_Event().inqObjPath(), "/Sub/Deep/Event");
}

TEST_F(ObjectPaths, OfAnAttributeAreItsNameWhereTheContainerHasNoPath) {
    const auto field = addNamedField(*root, "field");
    const auto gain = addCustom(*field, "Gain", 1);

    EXPECT_EQ(field->inqObjPath(), std::nullopt);
    EXPECT_EQ(gain->inqObjPath(), "Gain");
}

TEST_F(ObjectPaths, AreMissingForAnAttributeInNoContainer) {
    const CustAttr<int> loose(std::nullopt);

    EXPECT_EQ(loose.inqObjPath(), std::nullopt);
}

TEST_F(ObjectPaths, GoOnBehindWhatTheParentSays) {
    const auto top = Elsewhere::create();
    const auto child = addNamed(*top, "child");

    top->path = "/mounted";
    EXPECT_EQ(child->inqObjPath(), "/mounted/child");
    top->path = "/mounted/";
    EXPECT_EQ(child->inqObjPath(), "/mounted/child");
    top->path = std::nullopt;
    EXPECT_EQ(child->inqObjPath(), std::nullopt);
}

// The path seen from another object ---------------------------------------------------------------

TEST_F(ObjectPaths, SeenFromTheObjectItselfAreADot) {
    EXPECT_EQ(deep->inqObjPath(*deep), ".");
    EXPECT_EQ(root->inqObjPath(*root), ".");
}

TEST_F(ObjectPaths, SeenFromAnotherObjectGoUpWithTildes) {
    EXPECT_EQ(deep->inqObjPath(*other), "~/Sub/Deep");
    EXPECT_EQ(other->inqObjPath(*deep), "~/~/Other");
    EXPECT_EQ(deep->inqObjPath(*sub), "Deep");
    EXPECT_EQ(deep->inqObjPath(*root), "Sub/Deep");
    EXPECT_EQ(sub->inqObjPath(*deep), "~");
    EXPECT_EQ(root->inqObjPath(*deep), "~/~");
}

TEST_F(ObjectPaths, SeenFromAnotherObjectCompareElementsExactly) {
    const auto small = addNamed(*root, "sub");
    const auto inSmall = addNamed(*small, "Deep");

    EXPECT_EQ(inSmall->inqObjPath(*sub), "~/sub/Deep");
}

TEST_F(ObjectPaths, SeenFromAnotherObjectTakeBackslashesForSeparators) {
    const auto one = Elsewhere::create();
    const auto two = Elsewhere::create();
    one->path = "/A\\B/C";
    two->path = "\\A/D";

    EXPECT_EQ(one->inqObjPath(*two), "~/B/C");
    EXPECT_EQ(two->inqObjPath(*one), "~/~/D");
}

TEST_F(ObjectPaths, SeenFromAnotherObjectHaveATildeForTwoDots) {
    const auto one = Elsewhere::create();
    const auto two = Elsewhere::create();
    one->path = "/A/../B";
    two->path = "/A";

    EXPECT_EQ(one->inqObjPath(*two), "~/B");
}

TEST_F(ObjectPaths, SeenFromAnotherObjectAreMissingWhereOneHasNoPath) {
    const auto lost = Elsewhere::create();

    EXPECT_EQ(lost->inqObjPath(*root), std::nullopt);
    EXPECT_EQ(sub->inqObjPath(*lost), std::nullopt);
}

TEST_F(ObjectPaths, SeenFromAnotherObjectAreMissingWhereOnlyOneIsAbsolute) {
    const auto relative = Elsewhere::create();
    relative->path = "A/B";

    EXPECT_EQ(relative->inqObjPath(*root), std::nullopt);
    EXPECT_EQ(root->inqObjPath(*relative), std::nullopt);
}

// Finding -----------------------------------------------------------------------------------------

TEST_F(ObjectPaths, LeadToTheElementItselfWhereTheyAreEmpty) {
    EXPECT_EQ(find(*sub, ""), sub);
    EXPECT_EQ(find(*sub, std::nullopt), nullptr);
}

TEST_F(ObjectPaths, LeadToAChildWhateverTheCase) {
    EXPECT_EQ(find(*root, "Sub"), sub);
    EXPECT_EQ(find(*root, "SUB"), sub);
    EXPECT_EQ(find(*root, "SUB/dEEP"), deep);
}

TEST_F(ObjectPaths, LeadToAttributesByTheirExactName) {
    EXPECT_EQ(find(*root, "Gain"), rootGain);
    EXPECT_EQ(find(*root, "gain"), nullptr);
    EXPECT_EQ(find(*root, "Sub/Gain"), subGain);
    EXPECT_EQ(find(*root, "SUB/Gain"), subGain);
    EXPECT_EQ(find(*root, "Sub/Event"), sub->getAttribute("Event").lock());
}

TEST_F(ObjectPaths, LeadToFields) {
    const auto field = addNamedField(*sub, "field");
    const auto width = addCustom(*field, "Width", 1);

    EXPECT_EQ(find(*sub, "field"), field);
    EXPECT_EQ(find(*root, "Sub/field"), field);
    EXPECT_EQ(find(*root, "Sub/field/Width"), width);
}

TEST_F(ObjectPaths, PreferAChildToAnAttributeAndThatToAField) {
    const auto child = addNamed(*root, "Event");
    EXPECT_EQ(find(*root, "Event"), child);

    const auto field = AttrContainer::create();
    ASSERT_TRUE(root->addField(field, "Gain", AddFlags::SkipNameTest));
    EXPECT_EQ(find(*root, "Gain"), rootGain);
}

TEST_F(ObjectPaths, BeginAtTheRootOfTheTreeWithASlash) {
    EXPECT_EQ(find(*deep, "/"), root);
    EXPECT_EQ(find(*deep, "/Other"), other);
    EXPECT_EQ(find(*deep, "/Sub/Gain"), subGain);
    EXPECT_EQ(find(*deep, "/Nothing"), nullptr);
}

TEST_F(ObjectPaths, PreferTheRootOfTheTreeToThatOfTheThread) {
    const auto elsewhere = Object::create();
    addNamed(*elsewhere, "Other");
    const ScopedRoot scope(elsewhere);

    EXPECT_EQ(find(*deep, "/Other"), other);
}

TEST_F(ObjectPaths, LeadUpWithATilde) {
    EXPECT_EQ(find(*deep, "~"), sub);
    EXPECT_EQ(find(*deep, "~/"), sub);
    EXPECT_EQ(find(*deep, "~/~"), root);
    EXPECT_EQ(find(*deep, "~/~/Other"), other);
    EXPECT_EQ(find(*deep, "~/Gain"), subGain);
}

TEST_F(ObjectPaths, LeadFromARootWithATildeToWhatHasThatName) {
    EXPECT_EQ(find(*root, "~"), nullptr);
    EXPECT_EQ(find(*root, "~/Sub"), nullptr);

    const auto tilde = Object::create();
    {
        const BlockObserver unasked;
        tilde->name("~");
    }
    root->addChild(tilde, AddFlags::SkipNameTest);
    EXPECT_EQ(find(*root, "~"), tilde);
}

TEST_F(ObjectPaths, WithOtherTextBehindATildeAreNames) {
    const auto odd = Object::create();
    {
        const BlockObserver unasked;
        odd->name("~odd");
    }
    sub->addChild(odd, AddFlags::SkipNameTest);

    EXPECT_EQ(find(*sub, "~odd"), odd);
    EXPECT_EQ(find(*deep, "~odd"), nullptr);
}

TEST_F(ObjectPaths, LeadToAChildWithASlashInItsNameAheadOfAllSplitting) {
    const auto odd = Object::create();
    {
        const BlockObserver unasked;
        odd->name("Sub/Deep");
    }
    root->addChild(odd, AddFlags::SkipNameTest);

    EXPECT_EQ(find(*root, "Sub/Deep"), odd);
    EXPECT_EQ(find(*root, "/Sub/Deep"), odd);
}

TEST_F(ObjectPaths, LeadNowhereWithASingleUnknownName) {
    EXPECT_EQ(find(*root, "Nothing"), nullptr);
    EXPECT_EQ(find(*root, "Sub/Nothing"), nullptr);
    EXPECT_EQ(find(*root, "Nothing/Deep"), nullptr);
}

TEST_F(ObjectPaths, PassOverEmptyNamesAndWhiteSpaceInFront) {
    EXPECT_EQ(find(*root, "Sub//Deep/"), deep);
    EXPECT_EQ(find(*root, "  Sub/Deep"), deep);
    EXPECT_EQ(find(*root, "Sub/"), nullptr);
}

TEST_F(ObjectPaths, LeadFromAnAttributeByWayOfItsContainer) {
    EXPECT_EQ(std::as_const(*subGain).inqObserver("~").lock(), sub);
    EXPECT_EQ(std::as_const(*subGain).inqObserver("~/Deep").lock(), deep);
    EXPECT_EQ(std::as_const(*subGain).inqObserver("~/~").lock(), root);
    EXPECT_EQ(std::as_const(*subGain).inqObserver("/Other").lock(), other);
}

TEST_F(ObjectPaths, GiveWhatCanBeChangedToWhoMayChangeIt) {
    const std::weak_ptr<ObservingObject> found = root->inqObserver("Sub");

    EXPECT_EQ(found.lock(), sub);
}

TEST_F(ObjectPaths, EndWithoutHarmWhereAPlainObjectIsAskedForWhatOnlyAHostKnows) {
    const ScopedRoot scope(root);

    EXPECT_EQ(find(*deep, "#anything"), nullptr);
}

TEST_F(ObjectPaths, OfAnyLengthEndWithoutHarm) {
    std::string up;
    for (int i = 0; i < 20000; ++i) up += "~/";
    const std::string slashes(20000, '/');

    EXPECT_EQ(find(*deep, up), nullptr);
    EXPECT_EQ(find(*deep, slashes + "Other"), nullptr);
}

// Objects only ------------------------------------------------------------------------------------

TEST_F(ObjectPaths, LeadToObjects) {
    EXPECT_EQ(deep->inqObject("/"), root);
    EXPECT_EQ(deep->inqObject("/Other"), other);
    EXPECT_EQ(deep->inqObject("~"), sub);
    EXPECT_EQ(std::as_const(*deep).inqObject("/Other"), other);
    EXPECT_EQ(root->inqObject(*deep->inqObjPath()), deep);
}

TEST_F(ObjectPaths, LeadToNoObjectWhereSomethingElseStands) {
    addNamedField(*root, "field");

    EXPECT_EQ(root->inqObject("Gain"), nullptr);
    EXPECT_EQ(root->inqObject("field"), nullptr);
    EXPECT_EQ(root->inqObject("Nothing"), nullptr);
    EXPECT_EQ(root->inqObject(std::nullopt), nullptr);
    EXPECT_EQ(std::as_const(*root).inqObject("Gain"), nullptr);
}
