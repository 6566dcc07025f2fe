#include "page/PageData.h"

#include "page/NodeData.h"
#include "page/PageTree.h"
#include "page/Plan.h"
#include "page/RelationData.h"
#include "page/Thumbnail.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace qormodel {

namespace {
// Without its folder: that is not what a page that is passed on should tell.
std::string baseName(const std::string& file) {
    return std::filesystem::path(file).filename().string();
}

Json describeFile(const Document& document) {
    Json warnings = Json::array();
    for (const auto& warning : document.warnings) {
        Place place = warning.place;
        place.file = baseName(place.file);
        warnings.push_back(describe(place, warning.text));
    }
    if (document.isNewerThanLibrary())
        warnings.push_back("the format is newer than this program: parts may be missing");
    const auto& versions = document.outline.versions;
    return {{"name", baseName(document.source ? document.source->getName() : document.file)},
            {"title", document.outline.title},
            {"formatVersion", versions.empty() ? "" : versions.front()},
            {"size", document.source ? document.source->getSize() : 0},
            {"warnings", std::move(warnings)}};
}

Json countChanges(const std::vector<Change>& changes) {
    Json counts = Json::object();
    for (const char sign : {'-', '+', '~', '?'})
        counts[std::string(1, sign)] = std::ranges::count(changes, sign, &Change::sign);
    return counts;
}

PointSets collectPointSets(const PageTree& tree) {
    PointSets found;
    for (std::size_t i = 0; i < tree.getNodes().size(); ++i)
        if (auto points = inqPointSet(*tree.shown(tree.getNodes()[i]).element.container))
            found.emplace(i, std::move(*points));
    return found;
}

Json describePointSets(const PointSets& sets) {
    Json described = Json::array();
    for (const auto& [node, points] : sets) {
        Json set{{"n", node},
                 {"a", points.attribute->getName()},
                 {"c", points.numPoints},
                 {"min", points.min},
                 {"max", points.max}};
        if (described.size() < maxNumThumbnails) {
            const Thumbnail thumbnail =
                makeThumbnail(points, sideFor(sets.size(), points.numPoints));
            set["w"] = thumbnail.numColumns;
            set["h"] = thumbnail.numRows;
            set["d"] = packCells(thumbnail);
        }
        described.push_back(std::move(set));
    }
    return described;
}
}  // namespace

Json describePage(const Document& first, const Document* second, const Tolerance& tolerance) {
    const PageTree tree(first, second);
    const auto changes =
        second ? compareDocuments(first, *second, tolerance) : std::vector<Change>{};
    const PointSets points = collectPointSets(tree);
    Json files = Json::array({describeFile(first)});
    if (second) files.push_back(describeFile(*second));
    Json page{{"version", 1},
              {"command", "html"},
              {"files", std::move(files)},
              {"changes", second ? countChanges(changes) : Json()}};
    addNodes(page, tree, changes, first, second);
    page["relations"] = describeRelations(tree, changes, first, second);
    page["pointSets"] = describePointSets(points);
    page["plan"] = describePlan(tree, points, tolerance);
    return page;
}

}  // namespace qormodel
