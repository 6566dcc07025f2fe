#include "model/PathCompletion.h"

#include "support/Sample.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace qormodel;
using namespace qormodel::testing;

namespace {

std::vector<std::string> complete(const std::string& prefix,
                                  const std::string& content = projectText) {
    const TemporaryFile file(content);
    const SourceFile source(file.getName());
    return completePaths(readOutline(source), prefix);
}

using Paths = std::vector<std::string>;

}  // namespace

TEST(PathCompletion, OffersElementsAheadOfAttributes) {
    EXPECT_EQ(complete("/"), (Paths{"/Scans/", "/Name", "/Action", "/Event", "/MajorVersion",
                                    "/MinorVersion", "/UUID", "/Origin", "/Map"}));
    EXPECT_EQ(complete("/Scans/B"), Paths{"/Scans/Box/"});
    EXPECT_EQ(complete("/Scans/Box/"), (Paths{"/Scans/Box/Name", "/Scans/Box/Size"}));
}

TEST(PathCompletion, GoesOnFromPartOfAName) {
    EXPECT_EQ(complete("/Sc"), Paths{"/Scans/"});
    EXPECT_EQ(complete("/M"), (Paths{"/MajorVersion", "/MinorVersion", "/Map"}));
    EXPECT_EQ(complete("/Scans/Count"), Paths{"/Scans/Count"});
}

TEST(PathCompletion, BeginsPathsAsTheyWereTyped) {
    EXPECT_EQ(complete("Scans/F"), Paths{"Scans/First/"});
    EXPECT_EQ(complete("Sc"), Paths{"Scans/"});
    EXPECT_EQ(complete("/scans/F"), Paths{"/scans/First/"});
    EXPECT_EQ(complete("").front(), "/Scans/");
}

TEST(PathCompletion, OffersNothingWhereNothingFits) {
    EXPECT_EQ(complete("/None/"), Paths{});
    EXPECT_EQ(complete("/Scans/Count/"), Paths{});
    EXPECT_EQ(complete("//"), Paths{});
    EXPECT_EQ(complete("/", "no model"), Paths{});
    EXPECT_EQ(complete("/", ""), Paths{});
}

TEST(PathCompletion, OffersWhatABrokenFileHolds) {
    const std::string cut = projectText.substr(0, projectText.find("Attr<int>"));

    EXPECT_EQ(complete("/Sc", cut), Paths{"/Scans/"});
    EXPECT_EQ(complete("/Scans/U", cut), Paths{"/Scans/UUID"});
}

TEST(PathCompletion, LeavesOutNamesThatNoPathLeadsTo) {
    std::string root = "AttrContainer { \n";
    for (const std::string name : {"$(id)", "a b", "Good-1.x_y"})
        root += "Attr<int> { \nName \"" + name + "\"\nValue 1\n}\n";
    root += "}\n";
    const std::string child = "Child { \n\"Object\" \"`id`\"\nAttrContainer { \n}\n}\n";

    EXPECT_EQ(complete("/", modelText(root + child)), Paths{"/Good-1.x_y"});
    EXPECT_EQ(complete("/$", modelText(root + child)), Paths{});
}
