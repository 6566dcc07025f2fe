// The path of an observer as seen from another one.
#include <AttributeContainer/Observer.h>

#include "support/ObserverGraph.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

struct Row {
    const char* path;       // of the element
    const char* reference;  // where it is seen from
    const char* relative;
};

// Worked out step by step. A name in the middle of the one path and at the end of the other is not
// taken for the same: see "/a/c" from "/a".
const Row rows[] = {
    {"/a", "/a", ""},
    {"/a/b", "/a/b", ""},
    {"/a/b/c", "/a/b/c", ""},
    {"/", "/", "/"},
    {"/a/b", "/", "/a/b"},
    {"/a", "/", "/a"},
    {"/", "/a", "~/"},
    {"/a/c", "/a", "~/a/c"},
    {"/a", "/a/c", "~/~/a"},
    {"/a/b/c", "/a/d", "~/b/c"},
    {"/a/b", "/a/c", "~/b"},
    {"/a/b", "/c/d", "~/~/a/b"},
    {"/a/b", "/c", "~/a/b"},
    {"/a/b/c/d", "/a/b/x/y", "~/~/c/d"},
    {"/ab/c", "/a/c", "~/~/ab/c"},
    {"/A/b", "/a/b", "~/~/A/b"},
    {"a/b", "/c", "~/a/b"},
    {"b", "a", "b"},
    {"", "/a", "~/"},
    {"/a", "", "/a"},
    {"", "", ""},
};

class RelativePaths : public testing::TestWithParam<Row> {};

}  // namespace

TEST_P(RelativePaths, AreMadeFromBothPaths) {
    const Row& row = GetParam();
    const auto element = listenerAt(row.path);
    const auto reference = listenerAt(row.reference);
    EXPECT_EQ(element->inqObjPath(reference.get()), row.relative)
        << row.path << " from " << row.reference;
}

INSTANTIATE_TEST_SUITE_P(All, RelativePaths, testing::ValuesIn(rows));

TEST(ObserverRelativePath, IsTheFullPathWhereTheReferenceHasNone) {
    const auto element = listenerAt("/a/b");
    const auto reference = std::make_shared<Listener>();
    EXPECT_EQ(element->inqObjPath(reference.get()), "/a/b");
    EXPECT_EQ(reference->inqObjPath(reference.get()), std::nullopt);
}

TEST(ObserverRelativePath, IsTheNameWhereTheReferenceFindsItUnderThat) {
    class Finder : public Listener {
    public:
        using Observer::inqObserver;
        std::weak_ptr<const ObservingObject> inqObserver(
            const std::optional<const std::string>& name) const override {
            return name == "known" ? weak_from_this() : std::weak_ptr<const ObservingObject>{};
        }
    };
    const auto reference = std::make_shared<Finder>();
    reference->path = "/a";
    EXPECT_EQ(Listener("known").inqObjPath(reference.get()), "known");
    EXPECT_EQ(Listener("unknown").inqObjPath(reference.get()), std::nullopt);
}
