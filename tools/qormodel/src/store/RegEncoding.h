// The bytes of registry files as text.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qormodel {

/// Bytes of code page 1252 as characters.
std::wstring fromCodePage(std::string_view bytes);
/// The reverse; none where a character is not in the code page.
std::optional<std::string> toCodePage(std::wstring_view text);

}  // namespace qormodel
