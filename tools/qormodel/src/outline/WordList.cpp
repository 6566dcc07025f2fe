#include "outline/WordList.h"

#include <algorithm>
#include <array>

namespace qormodel {

bool isWordList(std::string_view type) {
    static constexpr std::array<std::string_view, 5> lists{
        "Attr<BoolVector>", "Attr<Int8Vector>", "Attr<UInt8Vector>", "Attr<UuidSet>",
        "Attr<UuidVector>"};
    return std::find(lists.begin(), lists.end(), type) != lists.end();
}

}  // namespace qormodel
