// The comparison on which the exit status of the example rests: it sees every kind of difference.
#include "../Compare.h"
#include "../Document.h"
#include "../DocumentFile.h"
#include "../Scan.h"

#include <AttributeContainer/Container.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace example {
namespace {

Scan smallScan() { return {"small", {{1, 2, 3}, {4, 5, 6}}, {{0, 0, 1}, {0, 1, 0}}}; }

// A document with one scan, and the copy of it that came through a stream.
class CompareTrees : public testing::Test {
protected:
    CompareTrees() {
        document.addScan(smallScan());
        copy = readDocument(writeDocument(document.getRoot(), 0));
        scan = copy->inqObject("/Scans/small");
    }

    std::vector<std::string> differences() const {
        return compareTrees(document.getRoot(), *copy).differences;
    }
    template <class T> void set(const std::string& attribute, const T& value) {
        std::dynamic_pointer_cast<model::Attr<T>>(scan->getAttribute(attribute).lock())->set(value);
    }

    using Differences = std::vector<std::string>;

    Document document;
    std::shared_ptr<model::Object> copy;
    std::shared_ptr<model::Object> scan;
};

TEST_F(CompareTrees, FindsNothingInACopyAndCountsWhatItSaw) {
    const Comparison comparison = compareTrees(document.getRoot(), *copy);

    EXPECT_EQ(comparison.differences, Differences{});
    EXPECT_TRUE(comparison.isEqual());
    // The project, the scans, the scan, two markers and the panorama.
    EXPECT_EQ(comparison.numObjects, 6U);
    // The properties of the scan, the colours of the panorama and their tone mapping.
    EXPECT_EQ(comparison.numFields, 3U);
    // Those of the classes, two more of the scans and three more of the scan.
    EXPECT_EQ(comparison.numAttributes, 2U * 9 + 2 + 7 + 3 + 2 * 12 + 38 + 34 + 2 + 15);
}

TEST_F(CompareTrees, ShowsTheFirstPointThatDiffersWithAllItsDigits) {
    set(std::string("Points"), std::vector<Point>{{1, 2, 3}, {4, std::nextafter(5.0, 6.0), 6}});

    EXPECT_EQ(differences(), Differences{"/Scans/small#Points: point 1 in the first tree 4 5 6, in "
                                         "the second 4 5.0000000000000009 6"});
}

TEST_F(CompareTrees, ShowsTheNumbersOfPointsWhereTheyDiffer) {
    set("Normals", std::vector<Point>{{0, 0, 1}});

    EXPECT_EQ(differences(), Differences{"/Scans/small#Normals: number of points in the first tree "
                                         "2, in the second 1"});
}

TEST_F(CompareTrees, ShowsBothValuesOfAnyOtherAttribute) {
    set("NumPoints", std::uint64_t{7});

    EXPECT_EQ(differences(),
              Differences{"/Scans/small#NumPoints: value in the first tree 2, in the second 7"});
}

TEST_F(CompareTrees, LooksIntoFields) {
    const auto properties = scan->getField("ScanProperties").lock();
    properties->getAttribute("HasNormals").lock()->assignFrom("false");

    EXPECT_EQ(differences(), Differences{"/Scans/small/ScanProperties#HasNormals: value in the "
                                         "first tree true, in the second false"});
}

TEST_F(CompareTrees, LooksIntoFieldsOfFields) {
    const auto colours = scan->inqChild("Panorama")->getField(0).lock();
    colours->getField(0).lock()->getAttribute("Gamma").lock()->assignFrom("2.5");

    EXPECT_EQ(differences(), Differences{"/Scans/small/Panorama/PictureColorPropertiesField/"
                                         "HDRParameterField#Gamma: value in the first tree 1.6, in "
                                         "the second 2.5"});
}

TEST_F(CompareTrees, NoticesAMissingField) {
    scan->rmField("ScanProperties");

    EXPECT_EQ(differences(), Differences{"/Scans/small: number of fields in the first tree 1, in "
                                         "the second 0"});
}

TEST_F(CompareTrees, NoticesAMissingChild) {
    scan->getParent()->rmChild(*scan, 0);

    EXPECT_EQ(differences(), Differences{"/Scans: number of children in the first tree 1, in the "
                                         "second 0"});
}

TEST_F(CompareTrees, NoticesAnAttributeOfAnotherNameOrType) {
    scan->rmAttribute("Normals");
    const auto number = std::make_shared<model::CustAttr<int>>(std::nullopt);
    ASSERT_FALSE(scan->addAttribute(number, "Extra").expired());

    EXPECT_EQ(
        differences(),
        (Differences{"/Scans/small#Normals: name in the first tree \"Normals\", in the second "
                     "\"Extra\"",
                     "/Scans/small#Normals: type in the first tree \"Attr<Vec3ddVector>\", in "
                     "the second \"Attr<int>\""}));
}

TEST_F(CompareTrees, NoticesAnotherClass) {
    scan->getParent()->rmChild(*scan, 0);
    const auto other = model::Container::create();
    ASSERT_EQ(other->setName("small"), nullptr);
    ASSERT_TRUE(copy->inqObject("/Scans")->addChild(other, 0));

    const Differences found = differences();

    ASSERT_FALSE(found.empty());
    EXPECT_EQ(found.front(),
              "/Scans/small: class in the first tree \"Transform\", in the second \"Container\"");
}

TEST(Kept, RoundsToEightDigitsBehindThePoint) {
    EXPECT_EQ(kept(1.234567891), 1.23456789);
    EXPECT_EQ(kept(-0.060181), -0.060181);
    EXPECT_EQ(kept(1e300), 1e300);
    EXPECT_FALSE(std::signbit(kept(-1e-12)));
}

TEST(Kept, ComesBackFromAStreamInFull) {
    Scan scan{"large", {}, {}};
    // Each would lose digits unrounded: a vector has as many as its largest number asks for, or
    // eight where all are below 1.
    scan.points = {{1.0000000001, 0.1234567891, 0.98765432109},
                   {0.123456789012, -0.99999999999, 1e-12},
                   {123456789.123456789, 0.1234567891, -1e300},
                   {9.9999999999, 1000.0000000001, std::numeric_limits<double>::denorm_min()}};
    for (Point& point : scan.points) point = kept(point);
    Document document;
    document.addScan(scan);

    const auto copy = readDocument(writeDocument(document.getRoot(), 0));

    EXPECT_EQ(compareTrees(document.getRoot(), *copy).differences, std::vector<std::string>{});
}

}  // namespace
}  // namespace example
