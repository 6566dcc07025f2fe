// How an attribute resolves a path that it is asked for.
#include <AttributeContainer/Attr.h>
#include <AttributeContainer/Attribute.h>

#include "support/Containers.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using Path = std::optional<const std::string>;
using Found = std::shared_ptr<const ObservingObject>;

/// Notes the paths that it is asked to resolve, and resolves none of its own.
class Resolver : public ContainerClass<Resolver, AttrContainer, "Resolver"> {
public:
    using Block::Block;
    using Block::inqObserver;

    std::weak_ptr<const ObservingObject> inqObserver(const Path& path) const override {
        asked.push_back(path.value_or("(none)"));
        return Block::inqObserver(path);
    }

    mutable std::vector<std::string> asked;
};

struct AttributeResolution : testing::Test {
    AttributeResolution() { resolver->asked.clear(); }

    Found resolve(const Path& path) { return std::as_const(*attribute).inqObserver(path).lock(); }

    std::shared_ptr<Resolver> resolver = Resolver::create();
    std::shared_ptr<AttrContainer> field = addNamedField(*resolver, "inner");
    std::shared_ptr<Attribute> attribute = addCustom(*resolver, "Depth", 3);
};

}  // namespace

TEST_F(AttributeResolution, HandsAnAbsolutePathToTheContainer) {
    resolve("/a/b");
    ASSERT_FALSE(resolver->asked.empty());
    EXPECT_EQ(resolver->asked.front(), "/a/b");
}

TEST_F(AttributeResolution, HandsAPathFromTheRootOfTheThreadToTheContainer) {
    resolve("#a/b");
    ASSERT_FALSE(resolver->asked.empty());
    EXPECT_EQ(resolver->asked.front(), "#a/b");
}

TEST_F(AttributeResolution, HandsThePathBehindItsParentToTheContainer) {
    EXPECT_EQ(resolve("~/inner"), field);
    EXPECT_EQ(resolver->asked, std::vector<std::string>{"inner"});
}

TEST_F(AttributeResolution, TakesTheContainerForItsParent) {
    EXPECT_EQ(resolve("~"), resolver);
    EXPECT_TRUE(resolver->asked.empty());
}

TEST_F(AttributeResolution, TakesTheContainerForAnEmptyPathBehindItsParent) {
    EXPECT_EQ(resolve("~/"), resolver);
}

TEST_F(AttributeResolution, LeavesOtherPathsToTheObservable) {
    EXPECT_EQ(resolve("inner"), nullptr);
    EXPECT_EQ(resolve("~inner"), nullptr);
    EXPECT_TRUE(resolver->asked.empty());
}

TEST_F(AttributeResolution, WalksNameByNameOverItsParent) {
    EXPECT_EQ(resolve("~/inner/Name"), field->getAttribute("Name").lock());
}

TEST_F(AttributeResolution, FindsNothingForNoPathAndAnEmptyOne) {
    EXPECT_EQ(resolve(std::nullopt), nullptr);
    EXPECT_EQ(resolve(""), nullptr);  // an attribute is no observer
    EXPECT_TRUE(resolver->asked.empty());
}

TEST_F(AttributeResolution, GivesTheSameInItsNonConstForm) {
    EXPECT_EQ(attribute->inqObserver(Path("~/inner")).lock(), field);
    EXPECT_EQ(attribute->inqObserver(Path("~")).lock(), resolver);
    EXPECT_EQ(attribute->inqObserver(Path("nowhere")).lock(), nullptr);
}

TEST_F(AttributeResolution, LeadsNowhereFromAnAttributeWithoutALocation) {
    const auto free = std::make_shared<CustAttr<int>>(std::nullopt);
    for (const char* path : {"~", "~/inner", "/a", "#a", "", "a/b"})
        EXPECT_TRUE(free->inqObserver(Path(path)).expired()) << path;
}
