// Makes the data: scans of points, a tree of objects, groups of settings.
#include "support/Data.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>

namespace bench {

namespace {

std::size_t numPoints = 1'000'000;

double sixDigits(double number) {  // as a decimal text gives them
    char text[40];
    std::snprintf(text, sizeof text, "%.6g", number);
    return std::strtod(text, nullptr);
}

std::string uuidText(Random& random) {
    char text[40];
    const auto high = random.next();
    const auto low = random.next();
    std::snprintf(text, sizeof text, "%08x-%04x-%04x-%04x-%012llx",
                  static_cast<unsigned>(high >> 32), static_cast<unsigned>(high >> 16) & 0xffff,
                  static_cast<unsigned>(high) & 0xffff, static_cast<unsigned>(low >> 48),
                  static_cast<unsigned long long>(low & 0xffff'ffff'ffff));
    return text;
}

std::string words(Random& random, int count) {
    static constexpr const char* known[] = {
        "scan",   "tower", "north", "facade", "level",   "merged", "raw",     "target",
        "sphere", "plane", "floor", "roof",   "station", "import", "checked", "draft"};
    std::string text;
    for (int i = 0; i < count; ++i) {
        if (i > 0) text += ' ';
        text += known[random.below(16)];
    }
    return text;
}

ObjectData makeObject(Random& random, std::size_t index) {
    ObjectData object;
    object.name = "Obj" + std::to_string(index);
    object.count = static_cast<std::int32_t>(random.below(2'000'000)) + 1;
    object.gain = sixDigits(random.unit() * 100 - 50);
    object.comment = words(random, 4);
    object.visible = random.below(2) != 0;
    for (double& number : object.position) number = sixDigits(random.unit() * 200 - 100);
    const double angle = random.unit() * 6.28;
    const double c = std::cos(angle), s = std::sin(angle);
    const double x = random.unit() * 50, y = random.unit() * 50, z = random.unit() * 5;
    object.matrix = {c, -s, 0, sixDigits(x), s, c, 0, sixDigits(y),
                     0, 0,  1, sixDigits(z), 0, 0, 0, 1};
    // So that every text form gives it back exactly.
    for (double& number : object.matrix) number = sixDigits(number);
    object.reference = uuidText(random);
    object.label = words(random, 2);
    return object;
}

void addPaths(TreeData& tree, Random& random, int depth) {
    for (int i = 0; i < 100'000; ++i) {
        const int length = depth - static_cast<int>(random.below(3));
        std::size_t at = 0;
        std::string path;
        for (int level = 0; level < length; ++level) {
            at = at * fanOut + 1 + random.below(fanOut);
            path += '/';
            path += tree.nodes[at].name;
        }
        tree.pathCountSum += tree.nodes[at].count;
        tree.paths.push_back(std::move(path));
    }
}

SettingGroup makeGroup(Random& random, int index) {
    SettingGroup group;
    char text[64];
    std::snprintf(text, sizeof text, "Section_%03d/Sub_%d", index / 10, index % 10);
    group.group = text;
    group.values[0] = words(random, 1) + "_" + std::to_string(index);
    for (int i = 0; i < 6; ++i) {
        std::snprintf(text, sizeof text, "%s%.6g", i > 0 ? " " : "", random.unit() * 100 - 50);
        group.values[1] += text;
    }
    std::snprintf(text, sizeof text, "%.6g", random.unit() * 10);
    group.values[2] = text;
    group.values[3] = words(random, 5);
    group.values[4] = uuidText(random);
    return group;
}

}  // namespace

void setPointCount(std::size_t count) { numPoints = count; }

const std::vector<Point<double>>& scanPoints() {
    static std::vector<Point<double>> points;
    if (points.size() == numPoints) return points;
    points.clear();
    points.reserve(numPoints);
    Random random(12345);
    for (std::size_t i = 0; i < numPoints; ++i) {
        const double azimuth = 6.283185307179586 * random.unit();
        const double elevation = -0.9 + 2.2 * random.unit();
        // 1.2 to 60 m, near ones more often
        const double near = random.unit(), nearer = random.unit(), spread = random.unit();
        const double range = std::exp(0.2 + 3.6 * near * nearer + 0.4 * spread);
        points.push_back({sixDigits(range * std::cos(elevation) * std::cos(azimuth)),
                          sixDigits(range * std::cos(elevation) * std::sin(azimuth)),
                          sixDigits(range * std::sin(elevation))});
    }
    return points;
}

const std::vector<Point<float>>& scanPointsAsFloat() {
    static std::vector<Point<float>> points;
    if (points.size() == numPoints) return points;
    points.clear();
    for (const auto& p : scanPoints())
        points.push_back(
            {static_cast<float>(p.x), static_cast<float>(p.y), static_cast<float>(p.z)});
    return points;
}

const std::vector<Point<double>>& turnedPoints() {
    static std::vector<Point<double>> points;
    if (points.size() == numPoints) return points;
    points.clear();
    const double c = std::cos(0.7), s = std::sin(0.7);
    for (const auto& p : scanPoints())
        points.push_back(
            {c * p.x - s * p.y + 0.123456789, s * p.x + c * p.y, p.z * 1.0000123 + 1.7});
    return points;
}

const TreeData& treeData(int depth) {
    static std::map<int, std::unique_ptr<TreeData>> made;
    auto& tree = made[depth];
    if (tree) return *tree;
    tree = std::make_unique<TreeData>();
    std::size_t numNodes = 0, levelSize = 1;
    for (int level = 0; level <= depth; ++level, levelSize *= fanOut) numNodes += levelSize;
    Random random(777);
    tree->nodes.reserve(numNodes);
    for (std::size_t i = 0; i < numNodes; ++i) {
        tree->nodes.push_back(makeObject(random, i));
        tree->countSum += tree->nodes.back().count;
    }
    addPaths(*tree, random, depth);
    return *tree;
}

std::vector<std::string> wideNames(std::size_t count) {
    std::vector<std::string> names;
    names.reserve(count);
    for (std::size_t i = 0; i < count; ++i) names.push_back("Item_" + std::to_string(i));
    return names;
}

const std::vector<SettingGroup>& settingGroups() {
    static const auto groups = [] {
        std::vector<SettingGroup> made;
        Random random(4242);
        for (int i = 0; i < 2000; ++i) made.push_back(makeGroup(random, i));
        return made;
    }();
    return groups;
}

}  // namespace bench
