// How a container resolves a path that it is asked for.
#include <AttributeContainer/kVAttrContainer.h>

#include "support/Containers.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

using Path = std::optional<const std::string>;

struct ContainerResolution : testing::Test {
    std::shared_ptr<Mark> mark = Mark::create();
    std::shared_ptr<Mark> inner = addNamedField<Mark>(*mark, "inner");
    std::shared_ptr<Attribute> depth = addCustom(*mark, "Depth", 3);

    std::shared_ptr<ObservingObject> resolve(const Path& path) {
        const auto found = mark->inqObserver(path).lock();
        EXPECT_EQ(std::as_const(*mark).inqObserver(path).lock(), found);
        return found;
    }
};

}  // namespace

TEST_F(ContainerResolution, FindsAttributesAndFieldsByName) {
    EXPECT_EQ(resolve("Depth"), depth);
    EXPECT_EQ(resolve("Height").get(), &mark->Attr_Height());
    EXPECT_EQ(resolve("inner"), inner);
}

TEST_F(ContainerResolution, FindsWhatLiesDeeper) {
    EXPECT_EQ(resolve("inner/Height").get(), &inner->Attr_Height());
    EXPECT_EQ(resolve("inner/Depth"), nullptr);
}

TEST_F(ContainerResolution, PrefersAnAttributeOverAField) {
    const auto named = AttrContainer::create();
    ASSERT_TRUE(mark->addField(named, "Depth", AddFlags::SkipNameTest));
    EXPECT_EQ(resolve("Depth"), depth);
}

TEST_F(ContainerResolution, IsItselfForAnEmptyPath) {
    EXPECT_EQ(resolve(""), mark);
    EXPECT_EQ(resolve(std::nullopt), nullptr);
}

TEST_F(ContainerResolution, LeadsNowhereOtherwise) {
    for (const char* path : {"missing", "/inner", "~", "#inner", "inner/missing", "a b"})
        EXPECT_EQ(resolve(path), nullptr) << path;
}
