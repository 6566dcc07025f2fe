// The tree that point files become.
#include "model/ScanTree.h"

#include "compare/Diff.h"
#include "model/WrittenCopy.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

namespace qormodel {
namespace {

using namespace testing;

Document documentOf(const ScanTree& tree) {
    Document document;
    document.file = "made here";
    document.outline.title = "Test";
    document.root = tree.getRoot();
    return document;
}

TEST(ScanTree, HoldsPointsNormalsCountsAndABoundingBox) {
    ScanTree tree("Hall");

    const std::string path =
        tree.addScan({"my scan", {{1, 5, 3}, {4, 2, 6}}, {{0, 0, 1}, {0, 1, 0}}});

    const Document document = documentOf(tree);
    EXPECT_EQ(path, "/Scans/my_scan");
    EXPECT_EQ(valueAt(document, "/Name"), "Hall");
    EXPECT_EQ(valueAt(document, path + "/NumPoints"), "2");
    EXPECT_EQ(valueAt(document, path + "/Points"), "{ (1 5 3) (4 2 6) }");
    EXPECT_EQ(valueAt(document, path + "/Normals"), "{ (0 0 1) (0 1 0) }");
    EXPECT_EQ(valueAt(document, path + "/BoundingBox/Min"), "1 2 3");
    EXPECT_EQ(valueAt(document, path + "/BoundingBox/Max"), "4 5 6");
    EXPECT_NE(valueAt(document, path + "/UUID"), "00000000-0000-0000-0000-000000000000");
    EXPECT_EQ(valueAt(document, "/Scans/NumScans"), "1");
    EXPECT_EQ(valueAt(document, "/Scans/NumPoints"), "2");
}

TEST(ScanTree, AddsScansOfOneNameAndNoNormalsWhereThereAreNone) {
    ScanTree tree("Hall");

    const std::string first = tree.addScan({"a", {{1, 2, 3}}, {}});
    const std::string second = tree.addScan({"a", {{1, 2, 3}}, {}});

    EXPECT_EQ(first, "/Scans/a");
    EXPECT_NE(second, first);
    EXPECT_EQ(valueAt(documentOf(tree), "/Scans/NumScans"), "2");
    EXPECT_EQ(valueAt(documentOf(tree), "/Scans/a/Normals"), "none");
}

TEST(ScanTree, HoldsATrackAsPoses) {
    ScanTree tree("Hall");
    points::Pose pose = points::Pose::identity();
    pose(0, 3) = 7;

    const std::string path = tree.addTrack({"drive", {points::Pose::identity(), pose}});

    EXPECT_EQ(path, "/drive");
    EXPECT_EQ(valueAt(documentOf(tree), "/drive/NumPoses"), "2");
    EXPECT_EQ(valueAt(documentOf(tree), "/drive/Pose1/Transformation"),
              "1 0 0 7 0 1 0 0 0 0 1 0 0 0 0 1");
}

TEST(ScanTree, RefusesWhatIsNoName) {
    EXPECT_THROW(ScanTree("a/b"), Failure);
    EXPECT_THROW(ScanTree(""), Failure);
}

TEST(ScanTree, ComesBackAsItWasWritten) {
    ScanTree tree("Hall");
    tree.addScan({"a", {points::kept(points::Point{1.0 / 3, 2e5 / 7, -1e-9})}, {}});
    tree.addTrack({"drive", {points::Pose::identity()}});
    const Document document = documentOf(tree);

    const WrittenCopy copy(document);
    const Document reread = loadDocument(copy.getName());

    EXPECT_EQ(compareDocuments(document, reread).size(), 0U);
}

}  // namespace
}  // namespace qormodel
