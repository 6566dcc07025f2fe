// Compares two trees element by element.
#pragma once

#include <AttributeContainer/Object.h>

#include <cstdint>
#include <string>
#include <vector>

namespace example {

namespace model = QOR::AttributeContainer;

/// What a comparison saw, and where the two trees differ.
struct Comparison {
    std::uint64_t numObjects = 0;
    std::uint64_t numFields = 0;
    std::uint64_t numAttributes = 0;
    std::vector<std::string> differences;  // each as "path: what", in the order of the first tree

    bool isEqual() const { return differences.empty(); }
};

/// Compares names, classes, attributes by token, fields by token and children in order, down to the
/// leaves. Values must be the same; there is no tolerance. The numbers count the first tree.
Comparison compareTrees(const model::Object& first, const model::Object& second);

}  // namespace example
