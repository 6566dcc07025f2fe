// The parts of a page that are the same for all data; the build makes them from the folder `page`.
#pragma once

#include <string_view>

namespace qormodel {

extern const std::string_view pageHead;  ///< up to where the data begins, with style and script
extern const std::string_view pageTail;

}  // namespace qormodel
