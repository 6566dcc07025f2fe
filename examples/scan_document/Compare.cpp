#include "Compare.h"

#include "Scan.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>
#include <memory>
#include <optional>
#include <sstream>
#include <utility>

namespace example {

using model::AttrContainer;
using model::Attribute;
using model::Object;

namespace {

using PointsAttribute = model::Attr<std::vector<Point>>;

std::string pathBelow(const std::string& path, const std::string& name) {
    return path == "/" ? path + name : path + "/" + name;
}

// With all digits, so that the smallest difference shows.
std::string text(const Point& point) {
    std::ostringstream stream;
    stream.precision(std::numeric_limits<double>::max_digits10);
    stream << point.x << ' ' << point.y << ' ' << point.z;
    return std::move(stream).str();
}

std::string tell(const std::string& what, const std::string& first, const std::string& second) {
    return what + " in the first tree " + first + ", in the second " + second;
}

// What differs between two values; long lists of points are not shown whole.
std::string tellValues(const Attribute& first, const Attribute& second) {
    const auto* const firstPoints = dynamic_cast<const PointsAttribute*>(&first);
    const auto* const secondPoints = dynamic_cast<const PointsAttribute*>(&second);
    if (!firstPoints || !secondPoints)
        return tell("value", first.getValueString(), second.getValueString());
    const std::vector<Point>& a = firstPoints->get();
    const std::vector<Point>& b = secondPoints->get();
    if (a.size() != b.size())
        return tell("number of points", std::to_string(a.size()), std::to_string(b.size()));
    const auto [inFirst, inSecond] = std::ranges::mismatch(a, b);
    if (inFirst == a.end()) return "the values differ";
    const auto index = std::distance(a.begin(), inFirst);
    return tell("point " + std::to_string(index), text(*inFirst), text(*inSecond));
}

class TreeComparer {
public:
    void compareObjects(const Object& first, const Object& second, const std::string& path);
    Comparison take() { return std::move(result); }

private:
    void compareContainers(const AttrContainer& first, const AttrContainer& second,
                           const std::string& path);
    void compareAttributes(const AttrContainer& first, const AttrContainer& second,
                           const std::string& path);
    void compareFields(const AttrContainer& first, const AttrContainer& second,
                       const std::string& path);
    /// Notes a difference where two texts or numbers are unlike. \return whether they are alike
    bool expectSame(const std::string& path, const std::string& what, const std::string& first,
                    const std::string& second);
    bool expectSame(const std::string& path, const std::string& what, std::uint64_t first,
                    std::uint64_t second);
    void note(const std::string& path, const std::string& what) {
        result.differences.push_back(path + ": " + what);
    }

    Comparison result;
};

bool TreeComparer::expectSame(const std::string& path, const std::string& what,
                              const std::string& first, const std::string& second) {
    if (first == second) return true;
    note(path, tell(what, "\"" + first + "\"", "\"" + second + "\""));
    return false;
}

bool TreeComparer::expectSame(const std::string& path, const std::string& what, std::uint64_t first,
                              std::uint64_t second) {
    if (first == second) return true;
    note(path, tell(what, std::to_string(first), std::to_string(second)));
    return false;
}

void TreeComparer::compareObjects(const Object& first, const Object& second,
                                  const std::string& path) {
    ++result.numObjects;
    compareContainers(first, second, path);
    // Not by index, which costs as many steps as the index says.
    auto firstChild = first.getChildren().begin();
    auto secondChild = second.getChildren().begin();
    for (; firstChild != first.getChildren().end() && secondChild != second.getChildren().end();
         ++firstChild, ++secondChild)
        compareObjects(**firstChild, **secondChild, pathBelow(path, (*firstChild)->getName()));
    expectSame(path, "number of children", first.getNumChildren(), second.getNumChildren());
}

void TreeComparer::compareContainers(const AttrContainer& first, const AttrContainer& second,
                                     const std::string& path) {
    expectSame(path, "name", first.getName(), second.getName());
    expectSame(path, "class", first.getClassName(), second.getClassName());
    compareAttributes(first, second, path);
    compareFields(first, second, path);
}

// Tokens of attributes count from 0, those of the class first, then those that were added.
void TreeComparer::compareAttributes(const AttrContainer& first, const AttrContainer& second,
                                     const std::string& path) {
    const auto count = first.getNumAttributes();
    result.numAttributes += count;
    if (!expectSame(path, "number of attributes", count, second.getNumAttributes())) return;
    for (std::uint64_t token = 0; token < count; ++token) {
        const auto a = first.getAttribute(token).lock();
        const auto b = second.getAttribute(token).lock();
        const std::string place = path + "#" + first.getAttrName(token).value_or("");
        if (!a || !b) {
            if (a != b) note(place, "only one has this attribute");
            continue;
        }
        const bool isSameName = expectSame(place, "name", a->getName(), b->getName());
        if (!expectSame(place, "type", a->getClassName(), b->getClassName()) || !isSameName)
            continue;
        if (*a != *b) note(place, tellValues(*a, *b));
    }
}

// Tokens of fields count from 0 as well; a slot that a class declares may be empty.
void TreeComparer::compareFields(const AttrContainer& first, const AttrContainer& second,
                                 const std::string& path) {
    const auto count = first.getNumFields();
    if (!expectSame(path, "number of fields", count, second.getNumFields())) return;
    for (std::uint64_t token = 0; token < count; ++token) {
        const auto a = first.getField(token).lock();
        const auto b = second.getField(token).lock();
        const std::string name = first.getFieldName(token).value_or("");
        const std::string place = pathBelow(path, name);
        expectSame(place, "name of the field", name, second.getFieldName(token).value_or(""));
        if (a && b) {
            ++result.numFields;
            compareContainers(*a, *b, place);
        } else if (a || b) {
            note(place, "only one has this field");
        }
    }
}

}  // namespace

Comparison compareTrees(const Object& first, const Object& second) {
    TreeComparer comparer;
    comparer.compareObjects(first, second, "/");
    return comparer.take();
}

}  // namespace example
