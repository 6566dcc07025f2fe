// Names as the database holds them.
#pragma once

#include <string>
#include <string_view>

namespace QOR::keystore {

/// A name as UTF-8. Any name comes back as it was: half of a surrogate pair, which is no valid text
/// but a valid name, has three bytes as every character of its size.
std::string textOfName(std::wstring_view name);
/// The same of the folded name.
std::string foldedTextOfName(std::wstring_view name);
/// The reverse of the first.
std::wstring nameOfText(std::string_view text);

}  // namespace QOR::keystore
