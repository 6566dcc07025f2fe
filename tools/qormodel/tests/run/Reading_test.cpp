// The reading commands as their users run them, with all that they print.
#include "support/RunProgram.h"
#include "support/Sample.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

using namespace qormodel::testing;
using Json = nlohmann::json;

namespace {

// Runs the program in a folder that has a file "file.model" of this text, and expects silence on
// the standard error output.
RunResult runOn(const std::string& text, const std::vector<std::string>& arguments) {
    const TemporaryFile file(text);
    RunOptions options;
    options.folder = file.getFolder().string();
    return runQormodel(arguments, options);
}

std::string outputOn(const std::string& text, const std::vector<std::string>& arguments,
                     int status = 0) {
    const RunResult result = runOn(text, arguments);
    EXPECT_EQ(result.status, status) << result.err;
    EXPECT_EQ(result.err, "");
    return result.out;
}

Json jsonOn(const std::string& text, const std::vector<std::string>& arguments, int status = 0) {
    const Json json = Json::parse(outputOn(text, arguments, status));
    EXPECT_EQ(json.at("version"), 1);
    EXPECT_EQ(json.at("command"), arguments[0]);
    return json;
}

const std::string emptyModel = modelText("AttrContainer { \n}\n");

// Two objects that watch each other, and one that watches nothing that is there.
const std::string watchers = modelText(R"(AttrContainer { 
}
Child { 
"Object" "A"
AttrContainer { 
Attr<int> { 
Name "N"
PostObserver 
ObserverPath { 
Path "/B"
Priority 5
Action "Notify"
}
PreObserver 
ObserverPath { 
Path "/Gone"
Action "PreNotify"
}
}
}
}
Child { 
"Object" "B"
AttrContainer { 
PostObserver 
ObserverPath { 
Path "/A"
Priority 0
Action "Notify"
}
}
}
)");

const std::string brokenModel =
    modelText("AttrContainer { \nAttr<double> { \nName \"D\"\nValue x\n");

}  // namespace

TEST(RunInfo, TellsFormVersionsSizeAndCounts) {
    EXPECT_EQ(outputOn(projectText, {"info", "file.model"}), R"(file.model
  form        text, "Test"
  version     9.1.0.0 (the same as ours, 9.1.0.0)
  size        )" + std::to_string(projectText.size()) + R"( bytes
  objects     3
  fields      1
  attributes  24
  points      2
  unknown     0
  relations   1
  classes
           1  AttrContainer
           3  Object
)");
}

TEST(RunInfo, TellsTheSameAsJson) {
    const Json file = jsonOn(projectText, {"info", "--json", "file.model"}).at("files").at(0);

    EXPECT_EQ(file, (Json{{"file", "file.model"},
                          {"form", "text"},
                          {"title", "Test"},
                          {"formatVersion", "9.1.0.0"},
                          {"ourFormatVersion", "9.1.0.0"},
                          {"isNewer", false},
                          {"bytes", projectText.size()},
                          {"objects", 3},
                          {"fields", 1},
                          {"attributes", 24},
                          {"points", 2},
                          {"unknown", 0},
                          {"relations", 1},
                          {"classes", {{"AttrContainer", 1}, {"Object", 3}}}}));
}

TEST(RunInfo, CountsPointsWithNormalsOnce) {
    const std::string list = "Value { 1 2 3 4 5 6 7 8 9 } \n}\n";
    const std::string text =
        modelText("AttrContainer { \nAttr<Vec3ddVector> { \nName \"Points\"\n" + list +
                  "Attr<Vec3ddVector> { \nName \"Normals\"\n" + list + "}\n");

    EXPECT_EQ(jsonOn(text, {"info", "--json", "file.model"}).at("files").at(0).at("points"), 3);
}

TEST(RunInfo, TellsThatAFormatIsNewerOrOlder) {
    const auto versionOf = [](const std::string& version) {
        const std::string out = outputOn("\"T\"\n\"kVLib\" " + version + "\nAttrContainer { \n}\n",
                                         {"info", "file.model"});
        return out.substr(out.find("9.1.0.0)") - 30, 38);
    };

    EXPECT_NE(versionOf("9.2.0.0").find("9.2.0.0 (newer than ours, "), std::string::npos);
    EXPECT_NE(versionOf("9.0.0.0").find("9.0.0.0 (older than ours, "), std::string::npos);
}

TEST(RunInfo, TellsFormAndVersionOfAnXmlFile) {
    const std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- XML v. 2 -->\n<!-- A title -->\n"
        "<!-- NEXT: Version Information -->\n<!-- 'kVLib' 9.1.0.0 -->\n<ZELK>\n</ZELK>";
    EXPECT_EQ(outputOn(text, {"info", "file.model"}), R"(file.model
  form        XML, "A title"
  version     9.1.0.0 (the same as ours, 9.1.0.0)
  size        )" + std::to_string(text.size()) + " bytes\n");
    EXPECT_EQ(jsonOn(text, {"info", "--json", "file.model"}).at("files").at(0),
              (Json{{"file", "file.model"},
                    {"form", "xml"},
                    {"title", "A title"},
                    {"formatVersion", "9.1.0.0"},
                    {"ourFormatVersion", "9.1.0.0"},
                    {"isNewer", false},
                    {"bytes", text.size()}}));
}

TEST(RunInfo, TellsAnXmlFileWithoutAVersion) {
    const std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- XML v. 2 -->\n<!-- 'T' -->\n"
        "<!-- NEXT: XML Root Element -->\n<ZELK>\n</ZELK>";
    EXPECT_EQ(outputOn(text, {"info", "file.model"}),
              "file.model\n  form        XML, \"T\"\n  version     not told\n  size        " +
                  std::to_string(text.size()) + " bytes\n");
}

TEST(RunInfo, TellsAnExport) {
    const std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Root version=\"9.1.0.0\" "
        "format=\"0\">\n</Root>";
    EXPECT_EQ(outputOn(text, {"info", "file.model"}),
              "file.model\n  form        XML export\n  version     9.1.0.0 (the same as ours, "
              "9.1.0.0)\n  size        " +
                  std::to_string(text.size()) + " bytes\n");
}

TEST(RunTree, ShowsObjectsAndFields) {
    EXPECT_EQ(outputOn(projectText, {"tree", "file.model"}),
              "/ Object\n  Scans Object\n    . Box AttrContainer\n    First Object\n");
}

TEST(RunTree, ShowsAttributesWithTheirValues) {
    EXPECT_EQ(outputOn(projectText, {"tree", "-a", "file.model", "/Scans"}), R"(/Scans Object
    Name = Scans Attr<String>
    Action =  Attr<String>
    Event =  Attr<String>
    MajorVersion = 0 Attr<uint16_t>
    MinorVersion = 0 Attr<uint16_t>
    UUID = 00000000-0000-0000-0000-000000000000 Attr<Uuid>
    Count = 2 Attr<int>
  . Box AttrContainer
      Name = Box Attr<String>
      Size = 2.5 Attr<double>
  First Object
      Name = First Attr<String>
      Action =  Attr<String>
      Event =  Attr<String>
      MajorVersion = 0 Attr<uint16_t>
      MinorVersion = 0 Attr<uint16_t>
      UUID = 00000000-0000-0000-0000-000000000000 Attr<Uuid>
      Points = { (1 2 3) (4 5 6) } Attr<Vec3ddVector>
)");
}

TEST(RunTree, GoesDownAsManyLevelsAsAsked) {
    EXPECT_EQ(outputOn(projectText, {"tree", "-L", "0", "file.model"}), "/ Object\n");
    EXPECT_EQ(outputOn(projectText, {"tree", "-L", "1", "file.model"}),
              "/ Object\n  Scans Object\n");
}

TEST(RunTree, ShowsOnlyWhatIsNotKnown) {
    const std::string text = modelText(
        "AttrContainer { \n}\nChild { \n\"Station\" \"A\"\n"
        "AttrContainer { \n}\n}\n");
    EXPECT_EQ(outputOn(text, {"tree", "--unknown", "file.model"}), "  ? A Station\n");
    EXPECT_EQ(outputOn(projectText, {"tree", "--unknown", "file.model"}), "");
}

TEST(RunTree, ListsElementsAsJson) {
    const Json elements =
        jsonOn(projectText, {"tree", "-a", "--json", "file.model"}).at("elements");

    ASSERT_EQ(elements.size(), 4u);
    EXPECT_EQ(elements.at(2),
              (Json{{"path", "/Scans/Box"},
                    {"class", "AttrContainer"},
                    {"kind", "field"},
                    {"unknown", false},
                    {"attributes",
                     {{{"name", "Name"}, {"type", "Attr<String>"}, {"value", "Box"}},
                      {{"name", "Size"}, {"type", "Attr<double>"}, {"value", 2.5}}}}}));
    EXPECT_EQ(elements.at(3).at("path"), "/Scans/First");
    EXPECT_EQ(elements.at(3).at("kind"), "object");
}

TEST(RunGet, PrintsValuesOneALine) {
    EXPECT_EQ(outputOn(projectText, {"get", "file.model", "/Origin", "Scans/Count", "/Map"}),
              "1 2.5 -3\n2\n{ \"a b\" => \"x } y\" }\n");
}

TEST(RunGet, PrintsAllValuesBelowAnElement) {
    EXPECT_EQ(outputOn(projectText, {"get", "-r", "file.model", "/Scans/Box"}),
              "/Scans/Box/Name = Box\n/Scans/Box/Size = 2.5\n");
}

TEST(RunGet, PrintsJsonWithPathsAndTypes) {
    EXPECT_EQ(
        jsonOn(projectText, {"get", "--json", "file.model", "/Origin"}).at("values"),
        Json::array({{{"path", "/Origin"}, {"type", "Attr<Vec3dd>"}, {"value", {1, 2.5, -3}}}}));
}

TEST(RunGet, KeepsAllDigitsOfANumber) {
    const std::string text = valueModel("Attr<double>", "0.12345678901234566");

    EXPECT_EQ(outputOn(text, {"get", "file.model", "/Tested"}), "0.12345678901234566\n");
    EXPECT_NE(
        outputOn(text, {"get", "--json", "file.model", "/Tested"}).find("0.12345678901234566"),
        std::string::npos);
}

TEST(RunGet, TellsAPathThatHasNoValue) {
    const RunResult quiet = runOn(projectText, {"get", "file.model", "/None", "/Scans/Count"});
    EXPECT_EQ(quiet.status, 0);
    EXPECT_EQ(quiet.out, "2\n");
    EXPECT_EQ(quiet.err, "qormodel: file.model: /: there is no attribute /None\n");

    const RunResult strict = runOn(projectText, {"get", "-e", "file.model", "/Scans"});
    EXPECT_EQ(strict.status, 1);
    EXPECT_EQ(strict.err,
              "qormodel: file.model: /: /Scans is no attribute: -r gives all that it holds\n");
}

TEST(RunCheck, SaysNothingOfACleanFile) {
    EXPECT_EQ(outputOn(projectText, {"check", "file.model"}), "");
    EXPECT_EQ(jsonOn(projectText, {"check", "--json", "file.model"}).at("findings"), Json::array());
}

TEST(RunCheck, ListsProblemsAndExitsWithOne) {
    EXPECT_EQ(
        outputOn(valueModel("Attr<double>", "1.#INF"), {"check", "--strict", "file.model"}, 1),
        "problem file.model:6: /Tested: \"1.#INF\" would be \"0\": infinities and "
        "not-a-numbers are written as 0\n");
}

TEST(RunCheck, ExitsWithThreeForWarningsOnlyUnderStrict) {
    const std::string text = modelText(
        "AttrContainer { \n}\nChild { \n\"Station\" \"A\"\n"
        "AttrContainer { \n}\n}\n");
    const std::string expected =
        "warning file.model:5: /A: the class Station is not known to this program\n";

    EXPECT_EQ(outputOn(text, {"check", "file.model"}, 0), expected);
    EXPECT_EQ(outputOn(text, {"check", "--strict", "file.model"}, 3), expected);
    EXPECT_EQ(jsonOn(text, {"check", "--json", "file.model"}).at("findings"),
              Json::array({{{"severity", "warning"},
                            {"kind", "class"},
                            {"file", "file.model"},
                            {"line", 5},
                            {"path", "/A"},
                            {"text", "the class Station is not known to this program"}}}));
}

TEST(RunRelations, ListsWhoWatchesWhom) {
    EXPECT_EQ(outputOn(watchers, {"relations", "file.model"}),
              "/A/N tells /B (Notify, after, priority 5)\n"
              "? /A/N asks /Gone (PreNotify, before, priority 0)\n"
              "/B tells /A (Notify, after, priority 0)\n");
}

TEST(RunRelations, FindsCirclesAndExitsWithOne) {
    EXPECT_EQ(outputOn(watchers, {"relations", "--cycles", "file.model"}, 1), "/A -> /B -> /A\n");
    EXPECT_EQ(outputOn(projectText, {"relations", "--cycles", "file.model"}, 0), "");
    EXPECT_EQ(jsonOn(watchers, {"relations", "--cycles", "--json", "file.model"}, 1).at("cycles"),
              Json::array({Json::array({"/A", "/B"})}));
}

TEST(RunRelations, FindsWhatLeadsNowhereAndExitsWithOne) {
    EXPECT_EQ(outputOn(watchers, {"relations", "--dangling", "file.model"}, 1),
              "? /A/N asks /Gone (PreNotify, before, priority 0)\n");
    EXPECT_EQ(outputOn(projectText, {"relations", "--dangling", "file.model"}, 0), "");
}

TEST(RunRelations, PrintsAGraph) {
    EXPECT_EQ(outputOn(watchers, {"relations", "--dot", "file.model"}), R"(digraph relations {
  rankdir=LR;
  "/A/N" -> "/B" [label="Notify"];
  "/A/N" -> "/Gone" [label="PreNotify before", style=dashed];
  "/B" -> "/A" [label="Notify"];
}
)");
}

TEST(RunRelations, PrintsJson) {
    const Json relations = jsonOn(watchers, {"relations", "--json", "file.model"}).at("relations");

    ASSERT_EQ(relations.size(), 3u);
    EXPECT_EQ(relations.at(1), (Json{{"observable", "/A/N"},
                                     {"observer", "/Gone"},
                                     {"target", nullptr},
                                     {"action", "PreNotify"},
                                     {"actionKnown", true},
                                     {"priority", ""},
                                     {"when", "before"},
                                     {"line", 17}}));
}

TEST(RunBroken, PrintsNothingButLinePathAndWhatWasExpected) {
    for (const char* const command : {"info", "tree", "check", "relations", "fmt", "cat"}) {
        const RunResult result = runOn(brokenModel, {command, "file.model"});
        EXPECT_EQ(result.status, 2) << command;
        EXPECT_EQ(result.out, "") << command;
        EXPECT_EQ(result.err,
                  "qormodel: file.model:4: /: the block Attr<double> that begins here "
                  "has no end: expected }\n")
            << command;
    }
    EXPECT_EQ(runOn(brokenModel, {"get", "file.model", "/D"}).status, 2);
}

TEST(RunBroken, PrintsNothingOfTheFilesAheadOfIt) {
    const TemporaryFile good(projectText);
    const TemporaryFile broken(brokenModel);
    for (const char* const command : {"info", "check", "fmt", "cat"}) {
        const RunResult result = runQormodel({command, good.getName(), broken.getName()});
        EXPECT_EQ(result.status, 2) << command;
        EXPECT_EQ(result.out, "") << command;
    }
}
