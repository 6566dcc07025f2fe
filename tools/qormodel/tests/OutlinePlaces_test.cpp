// Which element of a tree comes from which text, also where names do not tell.
#include "compare/OutlinePlaces.h"

#include "compare/Diff.h"
#include "page/PageData.h"
#include "support/Sample.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace qormodel;
using namespace qormodel::testing;

namespace {
std::string container(const std::string& name, const std::string& more = "") {
    return "AttrContainer { \nAttr<String> { \nName \"Name\"\nValue \"" + name + "\"\n}\n" + more +
           "}\n";
}

// A child whose count tells the root by that action. With a word that nobody knows its class is one
// that nobody knows either, as other classes do not take such words.
std::string child(const std::string& name, int count, const std::string& action = "Notify",
                  const std::string& word = "") {
    return std::string("Child { \n\"") + (word.empty() ? "Object" : "Radar") + "\" \"" + name +
           "\"\n" + word +
           container(name, "Attr<int> { \nName \"Count\"\nValue " + std::to_string(count) +
                               "\nPostObserver \nObserverPath { \nPath \"/\"\nPriority 3\n"
                               "Action \"" +
                               action + "\"\n}\n}\n") +
           "}\n";
}

std::string model(const std::string& children) { return modelText(container("T") + children); }

std::vector<std::size_t> places(const std::string& text) {
    const LoadedText loaded(text);
    return nodesOf(loaded.document.outline, flatten(loaded.document.root));
}

std::string changesOf(const std::string& first, const std::string& second) {
    const LoadedText a(first);
    const LoadedText b(second);
    std::string text;
    for (const auto& change : compareDocuments(a.document, b.document))
        text += std::string(1, change.sign) + ' ' + wordFor(change.kind) + ' ' + change.path + ' ' +
                change.before + change.after + '\n';
    return text;
}

using Indices = std::vector<std::size_t>;
}  // namespace

TEST(OutlinePlaces, FindsElementsByTheirNames) {
    EXPECT_EQ(places(projectText), (Indices{0, 1, 2, 3}));
}

TEST(OutlinePlaces, TakesThoseOfOneNameInTheirOrder) {
    EXPECT_EQ(places(model(child("Twin", 1) + child("Other", 2) + child("Twin", 3))),
              (Indices{0, 1, 2, 3}));
}

TEST(OutlinePlaces, FindsAnElementWhoseNameWasNotTakenOver) {
    EXPECT_EQ(places(model(child("no name", 1) + child("Other", 2) + child("<b>", 3))),
              (Indices{0, 1, 2, 3}));
}

TEST(OutlinePlaces, LeadsUpFromWhatWasNotTakenOver) {
    const LoadedText loaded(projectText);
    const Indices nodes{0, 1, FlatTree::none, FlatTree::none};

    const auto& outline = loaded.document.outline;  // the root, Scans, Box and First
    EXPECT_EQ(nodeAtOrAbove(outline, nodes, 1), 1u);
    EXPECT_EQ(nodeAtOrAbove(outline, nodes, 2), 1u);
    EXPECT_EQ(nodeAtOrAbove(outline, nodes, 3), 1u);
}

TEST(Twins, HaveRelationsOfTheirOwnInADifference) {
    const std::string first = model(child("Twin", 1) + child("Twin", 2));

    EXPECT_EQ(changesOf(first, first), "");
    EXPECT_EQ(changesOf(first, model(child("Twin", 1, "Other") + child("Twin", 2))),
              "- relation /Twin/Count tells / (Notify, 3)\n"
              "+ relation /Twin/Count tells / (Other, 3)\n");
    // Each has another one, though the paths and texts of all together are the same.
    EXPECT_EQ(changesOf(model(child("Twin", 1, "A") + child("Twin", 2, "B")),
                        model(child("Twin", 1, "B") + child("Twin", 2, "A"))),
              "- relation /Twin/Count tells / (A, 3)\n- relation /Twin/Count tells / (B, 3)\n"
              "+ relation /Twin/Count tells / (B, 3)\n+ relation /Twin/Count tells / (A, 3)\n");
}

TEST(Twins, HaveContentOfTheirOwnInADifference) {
    const std::string first = child("Twin", 1, "Notify", "Ray\n");

    EXPECT_EQ(changesOf(model(first + child("Twin", 2, "Notify", "Ray\n")),
                        model(first + child("Twin", 2, "Notify", "Beam\n"))),
              "? content /Twin 1 parts that are not understood1 of them, others\n");
}

TEST(Twins, ArriveOnThePageWithWhatIsTheirs) {
    const LoadedText first(model(child("Twin", 1) + child("Twin", 2, "Notify", "Beam\n")));
    const LoadedText second(model(child("Twin", 1) + child("Twin", 2, "Other", "Ray\n")));

    const Json page = describePage(first.document, &second.document);

    EXPECT_FALSE(page["nodes"][1].contains("m"));
    ASSERT_EQ(page["nodes"][2]["m"].size(), 2u);
    EXPECT_EQ(page["nodes"][2]["m"][0][0], "?");
    EXPECT_EQ(page["nodes"][2]["m"][1][1], "not understood: Ray");
    const Json relations = page["relations"];
    ASSERT_EQ(relations.size(), 3u);
    for (const auto& [index, node, sign] : {std::tuple{0, 1, ""}, {1, 2, "-"}, {2, 2, "+"}}) {
        EXPECT_EQ(relations[index]["n"], node);
        EXPECT_EQ(relations[index]["a"], "Count");
        EXPECT_EQ(relations[index].value("s", ""), sign);
    }
}

TEST(Twins, ShareTheirPlaceWithNamesThatWereNotTakenOver) {
    const LoadedText text(model(child("no name", 1, "Notify", "Beam\n")));

    const Json page = describePage(text.document);

    EXPECT_EQ(page["nodes"][1]["n"], "FallbackObject");
    EXPECT_EQ(page["nodes"][1]["m"][0], Json({"?", "not understood: Beam"}));
    EXPECT_EQ(page["relations"][0]["n"], 1);
}
