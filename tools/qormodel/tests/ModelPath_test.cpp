// Where paths of users lead.
#include "model/ModelPath.h"

#include "support/Sample.h"

#include <gtest/gtest.h>

#include <string>

using namespace qormodel;
using qormodel::testing::LoadedText;
using qormodel::testing::projectText;

namespace {

// The class and the stored name of the element at a path.
std::string elementAt(const LoadedText& loaded, const std::string& path) {
    const auto element = inqElement(loaded.document, path);
    return element ? element->container->getClassName() + ' ' + element->container->getName() : "";
}

}  // namespace

TEST(ModelPath, LeadsToTheRootToObjectsAndToFields) {
    const LoadedText loaded(projectText);

    EXPECT_EQ(elementAt(loaded, "/"), "Object Project");
    EXPECT_EQ(elementAt(loaded, "/Scans"), "Object Scans");
    EXPECT_EQ(elementAt(loaded, "/Scans/First"), "Object First");
    EXPECT_EQ(elementAt(loaded, "/Scans/Box"), "AttrContainer Box");
}

TEST(ModelPath, MayLackTheFirstSeparatorAndHaveOneTooMany) {
    const LoadedText loaded(projectText);

    EXPECT_EQ(elementAt(loaded, "Scans/First"), "Object First");
    EXPECT_EQ(elementAt(loaded, "/Scans/First/"), "Object First");
    EXPECT_EQ(elementAt(loaded, ""), "Object Project");
    EXPECT_EQ(elementAt(loaded, "//"), "Object Project");
}

TEST(ModelPath, ComparesNamesOfObjectsWithoutCase) {
    EXPECT_EQ(elementAt(LoadedText(projectText), "/SCANS/first"), "Object First");
}

TEST(ModelPath, LeadsNowhereForANameThatIsNotThere) {
    const LoadedText loaded(projectText);

    EXPECT_FALSE(inqElement(loaded.document, "/Scans/Second"));
    EXPECT_FALSE(inqElement(loaded.document, "/First"));
    EXPECT_FALSE(inqElement(loaded.document, "/Scans/Count"));  // an attribute
    EXPECT_FALSE(inqAttribute(loaded.document, "/Scans/First"));
    EXPECT_FALSE(inqAttribute(loaded.document, "/None/Count"));
}

TEST(ModelPath, TellsFieldsFromObjects) {
    const LoadedText loaded(projectText);

    EXPECT_TRUE(inqElement(loaded.document, "/Scans/Box")->isField);
    EXPECT_FALSE(inqElement(loaded.document, "/Scans/First")->isField);
    EXPECT_FALSE(inqElement(loaded.document, "/")->isField);
}

TEST(ModelPath, LeadsToAttributesOfAllElements) {
    const LoadedText loaded(projectText);

    EXPECT_EQ(inqAttribute(loaded.document, "/Origin")->attribute->getValueString(), "1 2.5 -3");
    EXPECT_EQ(inqAttribute(loaded.document, "/Scans/Box/Size")->attribute->getValueString(), "2.5");
    EXPECT_EQ(inqAttribute(loaded.document, "Scans/Count")->path, "/Scans/Count");
}

TEST(ModelPath, SplitsIntoElementAndName) {
    using Parts = std::pair<std::string, std::string>;

    EXPECT_EQ(splitPath("/A/B/c"), Parts("/A/B", "c"));
    EXPECT_EQ(splitPath("/c"), Parts("/", "c"));
    EXPECT_EQ(splitPath("A/c/"), Parts("/A", "c"));
    EXPECT_EQ(splitPath("/"), Parts("/", ""));
}
