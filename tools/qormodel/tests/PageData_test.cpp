#include "page/PageData.h"
#include "page/PageText.h"

#include "support/Sample.h"
#include "support/Trees.h"

#include <AttributeContainer/Container.h>
#include <AttributeContainer/MarkerBase.h>
#include <AttributeContainer/Picture.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>

using namespace qormodel;
using namespace qormodel::testing;

namespace {
// The project with its count at 3.
std::string changedProject() {
    std::string text = projectText;
    return text.replace(text.find("Value 2\n"), 8, "Value 3\n");
}

const Json& nodeOf(const Json& page, const std::string& name) {
    for (const auto& node : page["nodes"])
        if (node["n"] == name) return node;
    throw std::runtime_error("there is no node " + name);
}

Json attributeOf(const Json& page, const std::string& node, const std::string& name) {
    for (const auto& attribute : nodeOf(page, node).value("a", Json::array()))
        if (attribute[0] == name) return attribute;
    return nullptr;
}

template <class T> std::shared_ptr<T> addPlaced(ac::Object& parent, const std::string& name) {
    const auto object = T::create();
    object->name(name);
    parent.addChild(object, 0);
    return object;
}

// A turn about z by a quarter, then a way.
QOR::Mat4d<double> quarterTurn(double x, double y) {
    return QOR::Mat4d<double>({0, -1, 0, x, 1, 0, 0, y, 0, 0, 1, 0, 0, 0, 0, 1});
}
}  // namespace

TEST(PageData, HoldsTheTreeWithValuesAndTypes) {
    const LoadedText text(projectText);

    const Json page = describePage(text.document);

    EXPECT_EQ(page["version"], 1);
    EXPECT_EQ(page["files"][0]["title"], "Test");
    EXPECT_EQ(page["files"][0]["formatVersion"], "9.1.0.0");
    EXPECT_EQ(page["files"][0]["size"], projectText.size());
    EXPECT_TRUE(page["changes"].is_null());
    ASSERT_EQ(page["nodes"].size(), 4u);
    EXPECT_EQ(nodeOf(page, "Box")["f"], true);
    EXPECT_EQ(nodeOf(page, "First")["p"], 1);
    EXPECT_EQ(page["classes"][nodeOf(page, "Box")["c"].get<std::size_t>()], "AttrContainer");
    const Json origin = attributeOf(page, "Project", "Origin");
    EXPECT_EQ(page["types"][origin[1].get<std::size_t>()], "Attr<Vec3dd>");
    EXPECT_EQ(origin[2], "1 2.5 -3");
    EXPECT_EQ(origin[3], 0);
    EXPECT_EQ(attributeOf(page, "Project", "Action")[3], 1);  // nothing in it
}

TEST(PageData, CutsLongValuesAndTellsHowManyElementsTheyHave) {
    const Document document = makeDocument();
    put(*document.root, "Long", std::string(2000, 'x'));
    std::string numbers;
    for (int i = 0; i < 3000; ++i) numbers += std::to_string(i) + ' ';
    const LoadedText text(valueModel("Attr<Vec3ddVector>", "{ " + numbers + "} "));

    const std::string longText =
        attributeOf(describePage(document), "Project", "Long")[2].get<std::string>();
    const Json list = describePage(text.document)["nodes"][0]["a"].back()[2];

    EXPECT_EQ(longText, std::string(pageValueLength, 'x') + "...");
    EXPECT_LT(list.get<std::string>().size(), pageValueLength + 60);
    EXPECT_NE(list.get<std::string>().find(" ... 1000 elements"), std::string::npos);
}

TEST(PageData, LinksRelationsToTheirTargets) {
    const LoadedText text(projectText);

    const Json relations = describePage(text.document)["relations"];

    ASSERT_EQ(relations.size(), 1u);
    EXPECT_EQ(relations[0], Json({{"n", 1},
                                  {"a", "Count"},
                                  {"t", 0},
                                  {"b", ""},
                                  {"o", "/"},
                                  {"c", "Notify"},
                                  {"k", "3"},
                                  {"q", false}}));
}

TEST(PageData, MarksRelationsThatLeadNowhere) {
    std::string dead = projectText;
    const LoadedText text(dead.replace(dead.find("Path \"/\""), 8, "Path \"/None\""));

    const Json relation = describePage(text.document)["relations"][0];

    EXPECT_EQ(relation["t"], -1);
    EXPECT_EQ(relation["o"], "/None");
    EXPECT_EQ(relation["u"], true);
}

TEST(PageData, MarksUnknownClassesAndContent) {
    const LoadedText text(textWithUnknown("Beam"));

    const Json page = describePage(text.document);

    EXPECT_EQ(nodeOf(page, "r")["u"], true);
    EXPECT_EQ(nodeOf(page, "r")["m"][0], Json({"?", "not understood: Beam"}));
    EXPECT_FALSE(page["nodes"][0].contains("u"));
    EXPECT_EQ(page["files"][0]["warnings"].size(), 1u);
}

TEST(PageData, SignsWhatDiffers) {
    const LoadedText first(projectText);
    std::string renamed = changedProject();
    const LoadedText second(
        renamed.replace(renamed.find("\"Object\" \"First\""), 16, "\"Object\" \"Other\""));

    const Json page = describePage(first.document, &second.document);

    EXPECT_EQ(page["files"].size(), 2u);
    EXPECT_EQ(nodeOf(page, "Scans")["s"], "~");
    const Json count = attributeOf(page, "Scans", "Count");
    EXPECT_EQ(count[2], "3");
    EXPECT_EQ(count[4], "~");
    EXPECT_EQ(count[5], "2");
    EXPECT_EQ(count[6], "3");
    EXPECT_FALSE(nodeOf(page, "Box").contains("s"));
}

TEST(PageData, CountsTheChangesOfEachSign) {
    const Document first = makeDocument();
    const Document second = makeDocument();
    addObject(*first.root, "Old");
    addObject(*second.root, "New");
    addObject(*second.root, "Newer");
    put(*first.root, "Gone", 1);
    put(*first.root, "Count", 1);
    put(*second.root, "Count", 2);

    const Json page = describePage(first, &second);

    EXPECT_EQ(page["changes"], Json({{"-", 2}, {"+", 2}, {"~", 1}, {"?", 0}}));
    EXPECT_EQ(nodeOf(page, "Old")["s"], "-");
    EXPECT_EQ(nodeOf(page, "New")["s"], "+");
    EXPECT_EQ(attributeOf(page, "Project", "Gone")[4], "-");
    EXPECT_EQ(attributeOf(page, "Project", "Gone")[5], "1");
}

TEST(PageData, TellsOfMovesAndOfOrder) {
    const Document first = makeDocument();
    const Document second = makeDocument();
    addObject(*first.root, "A", 1);
    addObject(*first.root, "B", 2);
    addObject(*second.root, "B", 2);
    addObject(*second.root, "C", 1);

    const Json page = describePage(first, &second);

    EXPECT_EQ(page["nodes"][0]["m"][0], Json({"~", "children in another order", 1}));
    EXPECT_EQ(nodeOf(page, "C")["m"][0], Json({"~", "renamed: /A -> /C", 1}));
}

TEST(PageData, SignsRelationsOfOneSide) {
    const LoadedText with(projectText);
    const LoadedText without(textWithoutRelation());

    EXPECT_EQ(describePage(with.document, &without.document)["relations"][0]["s"], "-");
    EXPECT_EQ(describePage(without.document, &with.document)["relations"][0]["s"], "+");
    EXPECT_FALSE(describePage(with.document, &with.document)["relations"][0].contains("s"));
    EXPECT_EQ(describePage(with.document, &with.document)["relations"].size(), 1u);
}

TEST(PageData, HoldsThumbnailsOfPointSets) {
    const LoadedText text(projectText);

    const Json sets = describePage(text.document)["pointSets"];

    ASSERT_EQ(sets.size(), 1u);
    EXPECT_EQ(sets[0]["n"], 3);
    EXPECT_EQ(sets[0]["a"], "Points");
    EXPECT_EQ(sets[0]["c"], 2);
    EXPECT_EQ(sets[0]["min"], Json({1.0, 2.0, 3.0}));
    EXPECT_EQ(sets[0]["max"], Json({4.0, 5.0, 6.0}));
    EXPECT_EQ(sets[0]["w"], 16);
    EXPECT_EQ(sets[0]["d"].get<std::string>().size(), 172u);  // 128 bytes
}

TEST(PagePlan, PlacesStationsPicturesAndMarkersInTheCoordinatesOfTheRoot) {
    const Document document = makeDocument();
    const auto group = addPlaced<ac::Container>(*document.root, "Group");
    group->Transformation(quarterTurn(10, 20));
    addPlaced<ac::Transform>(*group, "Station")->Transformation(quarterTurn(1, 2));
    addPlaced<ac::Picture>(*document.root, "Photo")->Transformation(quarterTurn(7, 8));
    addPlaced<ac::MarkerBase>(*group, "Mark")->Position({3, 4, 5});

    const Json symbols = describePage(document)["plan"]["symbols"];

    ASSERT_EQ(symbols.size(), 3u);
    EXPECT_EQ(symbols[0]["k"], "station");
    EXPECT_EQ(symbols[0]["n"], 2);
    EXPECT_DOUBLE_EQ(symbols[0]["x"], 8);   // 10 - 2
    EXPECT_DOUBLE_EQ(symbols[0]["y"], 21);  // 20 + 1
    EXPECT_NEAR(symbols[0]["h"], 3.14159265358979, 1e-12);
    EXPECT_EQ(symbols[1]["k"], "marker");
    EXPECT_DOUBLE_EQ(symbols[1]["x"], 6);   // 10 - 4
    EXPECT_DOUBLE_EQ(symbols[1]["y"], 23);  // 20 + 3
    EXPECT_DOUBLE_EQ(symbols[1]["z"], 5);
    EXPECT_EQ(symbols[2]["k"], "picture");
    EXPECT_DOUBLE_EQ(symbols[2]["x"], 7);
}

TEST(PagePlan, DrawsTheBoxAroundPoints) {
    const LoadedText text(projectText);

    const Json plan = describePage(text.document)["plan"];

    ASSERT_EQ(plan["symbols"].size(), 1u);
    EXPECT_EQ(plan["symbols"][0]["k"], "station");
    EXPECT_EQ(plan["areas"][0]["c"], Json({1.0, 2.0, 4.0, 2.0, 4.0, 5.0, 1.0, 5.0}));
}

TEST(PagePlan, TellsWhereAnElementWas) {
    const Document first = makeDocument();
    const Document second = makeDocument();
    addPlaced<ac::Transform>(*first.root, "S")->Transformation(quarterTurn(1, 2));
    addPlaced<ac::Transform>(*second.root, "S")->Transformation(quarterTurn(5, 2));

    const Json symbols = describePage(first, &second)["plan"]["symbols"];

    ASSERT_EQ(symbols.size(), 1u);
    EXPECT_DOUBLE_EQ(symbols[0]["x"], 5);
    EXPECT_EQ(symbols[0]["from"], Json({1.0, 2.0}));
}

TEST(PagePlan, TakesPlacesWithinTheToleranceForTheSame) {
    const Document first = makeDocument();
    const Document second = makeDocument();
    addPlaced<ac::Transform>(*first.root, "S")->Transformation(quarterTurn(1, 2));
    addPlaced<ac::Transform>(*second.root, "S")->Transformation(quarterTurn(1.25, 2));

    const Json within = describePage(first, &second, *Tolerance::parse("0.25"));
    const Json beyond = describePage(first, &second, *Tolerance::parse("0.2"));

    EXPECT_FALSE(within["plan"]["symbols"][0].contains("from"));
    EXPECT_EQ(within["changes"]["~"], 0);
    EXPECT_EQ(beyond["plan"]["symbols"][0]["from"], Json({1.0, 2.0}));
    EXPECT_EQ(beyond["changes"]["~"], 1);
}

TEST(PagePlan, LeavesOutWhatHasNoFinitePlace) {
    const Document document = makeDocument();
    addPlaced<ac::Transform>(*document.root, "S")
        ->Transformation(quarterTurn(std::numeric_limits<double>::infinity(), 0));

    EXPECT_EQ(describePage(document)["plan"]["symbols"].size(), 0u);
}

TEST(PageText, HoldsNothingThatIsMarkup) {
    const Json data{{"<a>", "</script><!--&\xE2\x80\xA8\xE2\x80\xA9-->\xE2\x80\xAA"}};

    EXPECT_EQ(embeddedJson(data),
              "{\"\\u003ca\\u003e\":\"\\u003c/script\\u003e\\u003c!--\\u0026\\u2028\\u2029--\\u003e"
              "\xE2\x80\xAA\"}");
    EXPECT_EQ(Json::parse(embeddedJson(data)), data);
}

TEST(PageText, ReplacesBytesThatAreNoText) {
    EXPECT_EQ(embeddedJson(Json("a\xFF<\xE2\x80")), "\"a\xEF\xBF\xBD\\u003c\xEF\xBF\xBD\"");
}

TEST(PageText, IsOnePageWithTheDataInIt) {
    const std::string page = makePage({{"a", "</script>"}});

    EXPECT_TRUE(page.starts_with("<!DOCTYPE html>"));
    EXPECT_TRUE(page.ends_with("</html>\n"));
    EXPECT_NE(page.find("id=\"data\">{\"a\":\"\\u003c/script\\u003e\"}</script>"),
              std::string::npos);
    for (const char* const mark : {"@data@", "@script@", "@style@", "@script_hash@"})
        EXPECT_EQ(page.find(mark), std::string::npos) << mark;
    for (const char* const address : {"src=", "href=", "url(", "@import", "http://", "https://"}) {
        const bool isNamespace = std::string(address) == "http://";
        const auto place = page.find(address);
        if (!isNamespace) EXPECT_EQ(place, std::string::npos) << address;
        else EXPECT_TRUE(page.substr(place).starts_with("http://www.w3.org/2000/svg'"));
    }
}

TEST(PageText, HasNoWayFromATextToMarkup) {
    const std::string page = makePage(Json::object());

    for (const char* const way : {"innerHTML", "outerHTML", "insertAdjacentHTML", "document.write",
                                  "eval(", "new Function", "DOMParser", "srcdoc"})
        EXPECT_EQ(page.find(way), std::string::npos) << way;
    EXPECT_NE(page.find("default-src 'none'"), std::string::npos);
    EXPECT_EQ(page.find("unsafe-inline"), std::string::npos);
}
