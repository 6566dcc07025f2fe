#include "page/PageText.h"

#include "page/PageParts.h"

#include <string_view>

namespace qormodel {

std::string embeddedJson(const Json& data) {
    const std::string plain = data.dump(-1, ' ', false, Json::error_handler_t::replace);
    std::string text;
    text.reserve(plain.size() + plain.size() / 16);
    for (std::size_t i = 0; i < plain.size(); ++i) {
        const std::string_view rest = std::string_view(plain).substr(i);
        if (rest.front() == '<') text += "\\u003c";
        else if (rest.front() == '>') text += "\\u003e";
        else if (rest.front() == '&') text += "\\u0026";
        else if (rest.starts_with("\xE2\x80\xA8")) text += "\\u2028", i += 2;
        else if (rest.starts_with("\xE2\x80\xA9")) text += "\\u2029", i += 2;
        else text += rest.front();
    }
    return text;
}

std::string makePage(const Json& data) {
    return std::string(pageHead) + embeddedJson(data) + std::string(pageTail);
}

}  // namespace qormodel
