// Where two versions of a document changed the same in different ways.
#pragma once

#include <string>

namespace qormodel {

/// Whose change stands where both sides have one.
enum class Side { Ours, Theirs };

/// One conflict, with what the versions hold in short; empty where one holds nothing.
struct Conflict {
    std::string path;
    std::string text;  ///< what the conflict is
    std::string base{};
    std::string ours{};
    std::string theirs{};
};

}  // namespace qormodel
