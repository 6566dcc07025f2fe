#include "page/Plan.h"

#include "model/ValueVisit.h"

#include <AttributeContainer/Container.h>
#include <AttributeContainer/Picture.h>

#include <QOR/Mat4d.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <concepts>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace qormodel {

namespace {
using Matrix = QOR::Mat4d<double>;
using Point = std::array<double, 3>;

// The value of an attribute in a type or in its like with less digits.
template <class T, class Like>
std::optional<T> inqValue(const ac::AttrContainer& container, const std::string& name) {
    std::optional<T> found;
    const auto attribute = container.getAttribute(name).lock();
    if (!attribute) return found;
    visitValue(*attribute, [&]<class V>(const V& value) {
        if constexpr (std::same_as<V, T> || std::same_as<V, Like>) {
            found.emplace();
            for (std::size_t i = 0; i < T::size(); ++i) (*found)[i] = value[i];
        }
    });
    return found;
}

std::optional<Matrix> inqTransformation(const ac::AttrContainer& container) {
    return inqValue<Matrix, QOR::Mat4d<float>>(container, "Transformation");
}

std::optional<QOR::Vec3d<double>> inqPosition(const ac::AttrContainer& container) {
    return inqValue<QOR::Vec3d<double>, QOR::Vec3d<float>>(container, "Position");
}

Matrix product(const Matrix& a, const Matrix& b) {
    Matrix result;
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
            for (std::size_t i = 0; i < 4; ++i) result(row, column) += a(row, i) * b(i, column);
    return result;
}

Point moved(const Matrix& matrix, const Point& point) {
    Point result{};
    for (std::size_t row = 0; row < 3; ++row)
        result[row] = matrix(row, 0) * point[0] + matrix(row, 1) * point[1] +
                      matrix(row, 2) * point[2] + matrix(row, 3);
    return result;
}

bool isFinite(const Point& point) {
    return std::ranges::all_of(point, [](double each) { return std::isfinite(each); });
}

// The elements of one document with the matrices into the coordinates of their root.
class Places {
public:
    explicit Places(const FlatTree& tree) : tree(tree) {
        matrices.reserve(tree.nodes.size());
        for (const Node& node : tree.nodes) {
            const Matrix above = matrices.empty() ? Matrix::identity() : matrices[node.parent];
            const auto own = inqTransformation(*node.element.container);
            matrices.push_back(own ? product(above, *own) : above);
        }
    }

    const Matrix& matrixOf(std::size_t index) const { return matrices[index]; }

    std::optional<Point> inqPlace(std::size_t index) const {
        Point local{};
        if (const auto position = inqPosition(*tree.nodes[index].element.container))
            local = {(*position)[0], (*position)[1], (*position)[2]};
        const Point place = moved(matrices[index], local);
        return isFinite(place) ? std::optional(place) : std::nullopt;
    }

private:
    const FlatTree& tree;
    std::vector<Matrix> matrices;
};

bool isSamePlace(const Point& before, const Point& after, const Tolerance& tolerance) {
    if (before == after) return true;
    ac::CustAttr<QOR::Vec3d<double>> first(std::nullopt);
    ac::CustAttr<QOR::Vec3d<double>> second(std::nullopt);
    first.set({before[0], before[1], before[2]});
    second.set({after[0], after[1], after[2]});
    return isSameValue(first, second, tolerance);
}

// The kind of symbol; empty for what has none.
const char* kindOf(const ac::AttrContainer& container, bool hasPoints) {
    if (inqTransformation(container)) {
        if (dynamic_cast<const ac::Picture*>(&container)) return "picture";
        const bool onlyHolds = dynamic_cast<const ac::Container*>(&container) && !hasPoints;
        return onlyHolds ? "" : "station";
    }
    if (inqPosition(container)) return "marker";
    return hasPoints ? "station" : "";
}

Json symbolOf(std::size_t index, const std::string& kind, const Point& place,
              const Matrix& matrix) {
    Json symbol{{"k", kind}, {"n", index}, {"x", place[0]}, {"y", place[1]}, {"z", place[2]}};
    const double heading = std::atan2(matrix(1, 0), matrix(0, 0));
    if (kind == "station" && std::isfinite(heading)) symbol["h"] = heading;
    return symbol;
}

Json cornersOf(const PointSet& points, const Matrix& matrix) {
    Json corners = Json::array();
    for (const auto& [x, y] : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 1}}) {
        const Point corner = moved(matrix, {x ? points.max[0] : points.min[0],
                                            y ? points.max[1] : points.min[1], points.min[2]});
        if (!isFinite(corner)) return nullptr;
        corners.push_back(corner[0]);
        corners.push_back(corner[1]);
    }
    return corners;
}
}  // namespace

Json describePlan(const PageTree& tree, const PointSets& points, const Tolerance& tolerance) {
    const Places before(tree.getFirst());
    const Places after(tree.getSecond());
    Json symbols = Json::array();
    Json areas = Json::array();
    for (std::size_t i = 0; i < tree.getNodes().size(); ++i) {
        const PageNode& node = tree.getNodes()[i];
        const bool isThere = node.second != FlatTree::none;
        const Places& places = isThere ? after : before;
        const std::size_t index = isThere ? node.second : node.first;
        const auto own = points.find(i);
        const bool hasPoints = own != points.end();
        const std::string kind = kindOf(*tree.shown(node).element.container, hasPoints);
        const auto place = places.inqPlace(index);
        if (kind.empty() || !place) continue;
        Json symbol = symbolOf(i, kind, *place, places.matrixOf(index));
        if (isThere && node.first != FlatTree::none) {
            const auto former = before.inqPlace(node.first);
            if (former && !isSamePlace(*former, *place, tolerance))
                symbol["from"] = {(*former)[0], (*former)[1]};
        }
        symbols.push_back(std::move(symbol));
        if (!hasPoints) continue;
        Json corners = cornersOf(own->second, places.matrixOf(index));
        if (!corners.is_null()) areas.push_back({{"n", i}, {"c", std::move(corners)}});
    }
    return {{"symbols", std::move(symbols)}, {"areas", std::move(areas)}};
}

}  // namespace qormodel
