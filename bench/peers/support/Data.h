// The data of all workloads: from a fixed seed, the same for every peer.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// splitmix64: the same numbers on every system.
class Random {
public:
    explicit Random(std::uint64_t seed) : state(seed) {}
    std::uint64_t next() {
        std::uint64_t z = (state += 0x9e37'79b9'7f4a'7c15);
        z = (z ^ (z >> 30)) * 0xbf58'476d'1ce4'e5b9;
        z = (z ^ (z >> 27)) * 0x94d0'49bb'1331'11eb;
        return z ^ (z >> 31);
    }
    /// A number from 0 up to and without `bound`.
    std::uint32_t below(std::uint32_t bound) {
        return static_cast<std::uint32_t>((next() >> 32) * bound >> 32);
    }
    /// A number from 0 up to and without 1.
    double unit() { return static_cast<double>(next() >> 11) * 0x1p-53; }

private:
    std::uint64_t state;
};

// Points. -----------------------------------------------------------------------------------------

template <class T> struct Point {
    T x, y, z;
    bool operator==(const Point&) const = default;
};

void setPointCount(std::size_t count);
/// Six significant digits, as a scanner exports them: -3.79521.
const std::vector<Point<double>>& scanPoints();
const std::vector<Point<float>>& scanPointsAsFloat();
/// The scan turned by a rotation, so that every double has a full mantissa.
const std::vector<Point<double>>& turnedPoints();

// The tree. ---------------------------------------------------------------------------------------

/// The name and the eight values of one object.
struct ObjectData {
    std::string name;
    std::int32_t count;  // never 0
    double gain;
    std::string comment;
    bool visible;
    std::array<double, 3> position;
    std::array<double, 16> matrix;
    std::string reference;
    std::string label;
};

inline constexpr std::size_t fanOut = 10;

struct TreeData {
    std::vector<ObjectData> nodes;   // level by level: the children of i are 10 i + 1 to 10 i + 10
    std::vector<std::string> paths;  // 100,000 absolute paths such as "/a/b/c"
    std::int64_t pathCountSum = 0;   // of the counts that the paths lead to
    std::int64_t countSum = 0;       // of all nodes
    /// The nodes below this index have children.
    std::size_t numInner() const { return (nodes.size() - 1) / fanOut; }
};

const TreeData& treeData(int depth);
std::vector<std::string> wideNames(std::size_t count);

// Settings. ---------------------------------------------------------------------------------------

struct SettingGroup {
    std::string group;  // "Section_012/Sub_3"
    std::array<std::string, 5> values;
};

/// 2,000 groups of five texts.
const std::vector<SettingGroup>& settingGroups();
inline constexpr const char* settingNames[5] = {"Name", "Transformation", "Gain", "Comment",
                                                "Uuid"};

}  // namespace bench
