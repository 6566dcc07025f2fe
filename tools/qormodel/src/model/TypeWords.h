// The words by which people name the types of attributes.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qormodel {

/// The words of all types that a stream holds, as in "double", in the order of the library's table.
std::vector<std::string> listTypeWords();

/// The word of the list that is meant: its case does not matter, and it may stand in "Attr<...>".
std::optional<std::string> inqTypeWord(std::string_view text);

}  // namespace qormodel
