// What becomes of a track in a document.
#include "../Compare.h"
#include "../Document.h"
#include "../DocumentFile.h"

#include <AttributeContainer/Transform.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace example {
namespace {

TEST(TrackInADocument, IsAContainerOfTransformsThatComesBack) {
    const Pose first({0, -1, 0, 1, 1, 0, 0, 2, 0, 0, 1, 3, 0, 0, 0, 1});
    const Pose second({1, 0, 0, 4, 0, 1, 0, 5, 0, 0, 1, 6, 0, 0, 0, 1});
    Document document;
    const auto poses = document.addTrack({"drive", {first, second}});

    const auto copy = readDocument(writeDocument(document.getRoot(), 0));

    EXPECT_EQ(poses->getClassName(), "Container");
    EXPECT_EQ(compareTrees(document.getRoot(), *copy).differences, std::vector<std::string>{});
    const auto pose =
        std::dynamic_pointer_cast<model::Transform>(copy->inqObject("/drive/Pose1"));
    ASSERT_NE(pose, nullptr);
    EXPECT_EQ(pose->Transformation(), second);
}

}  // namespace
}  // namespace example
