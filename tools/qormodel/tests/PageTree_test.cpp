#include "page/PageTree.h"

#include "support/Trees.h"

#include <gtest/gtest.h>

using namespace qormodel;
using namespace qormodel::testing;

namespace {
// The elements of a page, each with its sign and depth.
std::string shapeOf(const PageTree& tree) {
    std::string shape;
    std::vector<int> depths;
    for (const PageNode& node : tree.getNodes()) {
        depths.push_back(depths.empty() ? 0 : depths[node.parent] + 1);
        shape += std::string(static_cast<std::size_t>(depths.back()), ' ') + tree.signOf(node) +
                 tree.shown(node).slot + '\n';
    }
    return shape;
}
}  // namespace

TEST(PageTree, HoldsTheElementsOfOneDocumentInTheirOrder) {
    const Document document = makeDocument();
    const auto scans = addObject(*document.root, "Scans");
    addField(*scans, "Box");
    addObject(*scans, "First");
    addObject(*document.root, "Notes");

    const PageTree tree(document);

    EXPECT_FALSE(tree.isComparison());
    EXPECT_EQ(shapeOf(tree), " \n  Scans\n   Box\n   First\n  Notes\n");
}

TEST(PageTree, PutsWhatIsAddedBehindTheSiblingThatItFollows) {
    const Document first = makeDocument();
    const Document second = makeDocument();
    for (const char* const name : {"A", "B", "C"}) addObject(*first.root, name);
    for (const char* const name : {"New", "A", "B", "Newer", "Newest"})
        addObject(*second.root, name);

    const PageTree tree(first, &second);

    EXPECT_TRUE(tree.isComparison());
    EXPECT_EQ(shapeOf(tree), " \n +New\n  A\n  B\n -C\n +Newer\n +Newest\n");
}

TEST(PageTree, ShowsAMovedObjectOnceWhereItWas) {
    const Document first = makeDocument();
    const Document second = makeDocument();
    const auto from = addObject(*first.root, "From", 1);
    addObject(*first.root, "To", 2);
    addObject(*from, "Moved", 3);
    addObject(*second.root, "From", 1);
    const auto to = addObject(*second.root, "To", 2);
    addObject(*to, "Moved", 3);

    const PageTree tree(first, &second);

    EXPECT_EQ(shapeOf(tree), " \n  From\n   Moved\n  To\n");
    EXPECT_EQ(tree.findFirst("/From/Moved"), 2u);
    EXPECT_EQ(tree.findSecond("/To/Moved"), 2u);
    EXPECT_EQ(tree.findSecond("/From/Moved"), FlatTree::none);
}

TEST(PageTree, HoldsAllThatIsBelowWhatOneSideHas) {
    const Document first = makeDocument();
    const Document second = makeDocument();
    addObject(*addObject(*first.root, "Old"), "Below");
    addField(*addObject(*second.root, "New"), "Box");

    EXPECT_EQ(shapeOf(PageTree(first, &second)), " \n -Old\n  -Below\n +New\n  +Box\n");
}
