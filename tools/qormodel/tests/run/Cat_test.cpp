// The content of files in other forms, whole and in part.
#include "support/RunProgram.h"
#include "support/Sample.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <string>
#include <vector>

using namespace qormodel::testing;
using Json = nlohmann::json;

namespace {

RunResult runCat(const std::string& text, std::vector<std::string> options) {
    const TemporaryFile file(text);
    options.insert(options.begin(), "cat");
    options.push_back("file.model");
    RunOptions run;
    run.folder = file.getFolder().string();
    return runQormodel(options, run);
}

std::string cat(const std::string& text, const std::vector<std::string>& options) {
    const RunResult result = runCat(text, options);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    return result.out;
}

// A small document in canonical text, but for what every object holds besides.
const std::string small = modelText(R"(AttrContainer { 
}
Child { 
"Object" "A"
AttrContainer { 
Attr<int> { 
Name "N"
Value 5
}
Attr<int> { 
Name "M"
Value 6
}
SubContainer { 
"AttrContainer" "F"
AttrContainer { 
Attr<bool> { 
Name "Flag"
Value true
}
}
}
}
}
Child { 
"Object" "B"
AttrContainer { 
}
}
)");

const std::string lossy = valueModel("Attr<double>", "1.#INF");

}  // namespace

TEST(RunCat, PrintsTheCanonicalText) { EXPECT_EQ(cat(projectText, {}), projectText); }

TEST(RunCat, PrintsOnlyWhatAMaskNames) {
    EXPECT_EQ(cat(small, {"--mask", "/A/N"}), R"("Test"
"kVLib" 9.1.0.0
AttrContainer { 
}
Child { 
"Object" "A"
AttrContainer { 
Attr<String> { 
Name "Name"
Value "A"
}
Attr<int> { 
Name "N"
Value 5
}
}
}
)");
}

TEST(RunCat, PrintsAllBelowAnElementThatAMaskNames) {
    const std::string field = cat(small, {"--mask", "/A/F"});

    EXPECT_EQ(field, R"("Test"
"kVLib" 9.1.0.0
AttrContainer { 
}
Child { 
"Object" "A"
AttrContainer { 
Attr<String> { 
Name "Name"
Value "A"
}
SubContainer { 
"AttrContainer" "F"
AttrContainer { 
Attr<String> { 
Name "Name"
Value "F"
}
Attr<bool> { 
Name "Flag"
Value true
}
}
}
}
}
)");
}

TEST(RunCat, PrintsAllButTheRelationsForAMaskOfAll) {
    std::string expected = projectText;
    const auto begin = expected.find("PostObserver");
    expected.erase(begin, expected.find("}\n", begin) + 2 - begin);

    EXPECT_EQ(cat(projectText, {"--mask", "/"}), expected);
}

TEST(RunCat, TakesSeveralPathsInAMask) {
    const std::string both = cat(small, {"--mask", "/A/N,/A/M"});

    EXPECT_NE(both.find("Name \"N\""), std::string::npos);
    EXPECT_NE(both.find("Name \"M\""), std::string::npos);
    EXPECT_EQ(both.find("Name \"Flag\""), std::string::npos);
    EXPECT_EQ(cat(small, {"--mask", "/A/N", "--mask", "a/M"}), both);
}

TEST(RunCat, PrintsXml) {
    EXPECT_EQ(cat(small, {"--as", "xml", "--mask", "/A/N"}),
              R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- XML v. 2 -->
<!-- 'Test' -->
<!-- NEXT: Version Information -->
<!-- 'kVLib' 9.1.0.0 -->
<ZELK>
<AttrContainer>
</AttrContainer>
<Child>
<Object value="'A'" />
<AttrContainer>
<Attr type="String>">
<Name value="'Name'" />
<Value value="'A'" />
</Attr>
<Attr type="int>">
<Name value="'N'" />
<Value value="5" />
</Attr>
</AttrContainer>
</Child>
</ZELK>
)");
}

TEST(RunCat, PrintsXmlThatInfoKnows) {
    RunOptions options;
    options.input = cat(projectText, {"--as", "xml"});

    const RunResult info = runQormodel({"info", "-"}, options);

    EXPECT_EQ(info.status, 0) << info.err;
    EXPECT_TRUE(info.out.starts_with("-\n  form        XML, \"Test\"\n  version     9.1.0.0 (the"))
        << info.out;
}

TEST(RunCat, PrintsTheExportOfTheRoot) {
    const std::string text = modelText(R"(AttrContainer { 
Attr<int> { 
Name "N"
Value 5
}
SubContainer { 
"AttrContainer" "F"
AttrContainer { 
Attr<String> { 
Name "Text"
Value "a & b"
}
}
}
}
)");
    EXPECT_EQ(cat(text, {"--as", "export", "--mask", "/N,/F/Text"}),
              R"(<?xml version="1.0" encoding="UTF-8"?>
<Root version="9.1.0.0" format="0">
<Object type="Object"><fields>
<F type="AttrContainer" fieldname="F"><fields>
</fields>
<attrs>
<Text type="String">"a &amp; b"</Text>
</attrs>
</F>
</fields>
<attrs>
<N type="int">5</N>
</attrs>
</Object>
</Root>
)");
}

TEST(RunCat, PrintsJson) {
    const std::string text = cat(projectText, {"--as", "json", "--mask", "/Scans/Box,/Origin"});

    EXPECT_EQ(
        Json::parse(text),
        (Json{{"version", 1},
              {"command", "cat"},
              {"files",
               {{{"file", "file.model"},
                 {"title", "Test"},
                 {"formatVersion", "9.1.0.0"},
                 {"elements",
                  {{{"path", "/"},
                    {"class", "Object"},
                    {"kind", "object"},
                    {"unknown", false},
                    {"attributes",
                     {{{"name", "Origin"}, {"type", "Attr<Vec3dd>"}, {"value", {1, 2.5, -3}}}}}},
                   {{"path", "/Scans"},
                    {"class", "Object"},
                    {"kind", "object"},
                    {"unknown", false},
                    {"attributes",
                     {{{"name", "Name"}, {"type", "Attr<String>"}, {"value", "Scans"}}}}},
                   {{"path", "/Scans/Box"},
                    {"class", "AttrContainer"},
                    {"kind", "field"},
                    {"unknown", false},
                    {"attributes",
                     {{{"name", "Name"}, {"type", "Attr<String>"}, {"value", "Box"}},
                      {{"name", "Size"}, {"type", "Attr<double>"}, {"value", 2.5}}}}}}}}}}}));
}

TEST(RunCat, PrintsAllValuesAsTreeDoes) {
    const Json content = Json::parse(cat(projectText, {"--as", "json"}));
    RunOptions options;
    options.input = projectText;
    const Json tree = Json::parse(runQormodel({"tree", "-a", "--json", "-"}, options).out);

    EXPECT_EQ(content.at("files").at(0).at("elements"), tree.at("elements"));
}

TEST(RunCat, PrintsSeveralFilesOneBehindTheOther) {
    const TemporaryFile file(projectText);

    EXPECT_EQ(runQormodel({"cat", file.getName(), file.getName()}).out, projectText + projectText);
    const Json both =
        Json::parse(runQormodel({"cat", "--as", "json", file.getName(), file.getName()}).out);
    EXPECT_EQ(both.at("files").size(), 2u);
}

TEST(RunCat, WritesAFileAsAWholeAndKeepsTheOldOne) {
    const TemporaryFile file(projectText);
    const std::string name = file.getName();

    EXPECT_EQ(runQormodel({"cat", "--mask", "/Scans", "-o", name, name}).status, 0);

    EXPECT_EQ(contentOf(name + '~'), projectText);
    EXPECT_EQ(contentOf(name).find("Origin"), std::string::npos);
    EXPECT_NE(contentOf(name).find("Count"), std::string::npos);
}

TEST(RunCat, RefusesTextInWhichAValueWouldNotComeBack) {
    const RunResult result = runCat(lossy, {});

    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err,
              "qormodel: file.model:6: /Tested: \"1.#INF\" would be \"0\": infinities and "
              "not-a-numbers are written as 0\n"
              "qormodel: file.model: /: is not written; --force does so all the same\n");
    EXPECT_EQ(runCat(lossy, {"--force"}).status, 0);
    EXPECT_EQ(runCat(lossy, {"--as", "json"}).status, 0);
}

TEST(RunCat, MindsNoLossOutsideOfTheMask) {
    EXPECT_EQ(runCat(lossy, {"--mask", "/Name"}).status, 0);
    EXPECT_EQ(runCat(lossy, {"--mask", "/tested"}).status, 1);
}

TEST(RunFmt, PrintsTheCanonicalText) {
    RunOptions options;
    options.input = modelText(R"(AttrContainer { Attr<Vec3dd> { Name "At" Value 1.0 +2 3e0 } }
        Child { "Object" "A" AttrContainer { } })");

    const RunResult result = runQormodel({"fmt", "-"}, options);

    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, modelText("AttrContainer { \nAttr<String> { \nName \"Name\"\nValue "
                                    "\"Object\"\n}\n" +
                                    unsetObjectRows +
                                    "Attr<Vec3dd> { \nName \"At\"\n"
                                    "Value 1 2 3\n}\n}\nChild { \n\"Object\" \"A\"\n"
                                    "AttrContainer { \nAttr<String> { \nName \"Name\"\n"
                                    "Value \"A\"\n}\n" +
                                    unsetObjectRows + "}\n}\n"));
}

TEST(RunFmt, ChecksFormatsInPlaceAndThenFindsNothing) {
    const TemporaryFile file(small);
    const std::string name = file.getName();

    const RunResult unformatted = runQormodel({"fmt", "--check", name});
    EXPECT_EQ(unformatted.status, 1);
    EXPECT_EQ(unformatted.out, name + '\n');
    EXPECT_EQ(runQormodel({"fmt", "-i", name}).status, 0);
    EXPECT_EQ(contentOf(name + '~'), small);
    const RunResult formatted = runQormodel({"fmt", "--check", name});
    EXPECT_EQ(formatted.status, 0);
    EXPECT_EQ(formatted.out, "");
}

TEST(RunFmt, LeavesACanonicalFileAlone) {
    const TemporaryFile file(projectText);

    EXPECT_EQ(runQormodel({"fmt", "-i", file.getName()}).status, 0);

    EXPECT_FALSE(std::filesystem::exists(file.getName() + '~'));
}

TEST(RunFmt, RefusesWhatWouldNotComeBack) {
    const TemporaryFile file(lossy);

    EXPECT_EQ(runQormodel({"fmt", "-i", file.getName()}).status, 1);
    EXPECT_EQ(contentOf(file.getName()), lossy);
    EXPECT_EQ(runQormodel({"fmt", "-i", "--force", "--dry-run", file.getName()}).status, 0);
    EXPECT_EQ(contentOf(file.getName()), lossy);
    EXPECT_EQ(runQormodel({"fmt", "-i", "--force", "--no-backup", file.getName()}).status, 0);
    EXPECT_NE(contentOf(file.getName()), lossy);
    EXPECT_FALSE(std::filesystem::exists(file.getName() + '~'));
}

TEST(RunFmt, RefusesANewerFormat) {
    RunOptions options;
    options.input = "\"T\"\n\"kVLib\" 99.0.0.0\nAttrContainer { \n}\n";

    const RunResult result = runQormodel({"fmt", "-"}, options);

    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err,
              "qormodel: stdin:1: /: format 99.0.0.0 is newer than this program: parts of it may "
              "get lost\nqormodel: stdin: /: is not written; --force does so all the same\n");
}
