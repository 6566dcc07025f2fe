// Which lists hold words instead of numbers.
#pragma once

#include <string_view>

namespace qormodel {

/// Whether the values of a type, such as "Attr<BoolVector>", are lists of words between braces. In
/// them quotes and opening braces are letters, and the first closing brace at which a word would
/// begin ends the list.
bool isWordList(std::string_view type);

}  // namespace qormodel
