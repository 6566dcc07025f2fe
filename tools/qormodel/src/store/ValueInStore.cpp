#include "store/ValueInStore.h"

#include "model/ValueText.h"
#include "model/Values.h"

#include <QOR/Text.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace qormodel {

namespace {
bool isUtf8(const std::string& text) { return QOR::narrow(QOR::wide(text), '?') == text; }

// Parentheses only group the elements of a list; the library's own reading does not know them.
std::string withoutGroups(std::string text) {
    std::ranges::replace_if(
        text, [](char each) { return each == '(' || each == ')'; }, ' ');
    return text;
}
}  // namespace

std::optional<std::string> storedTextOf(const ac::Attribute& attribute) {
    const std::string wanted = valueText(attribute);
    const std::array<std::string, 3> candidates{attribute.getValueString(), withoutGroups(wanted),
                                                wanted};
    for (const auto& text : candidates) {
        if (!isUtf8(text)) continue;
        std::string expected;
        const auto draft = readStoredText(attribute, text, expected);
        if (draft && valueText(*draft) == wanted) return text;
    }
    return std::nullopt;
}

std::shared_ptr<ac::Attribute> readStoredText(const ac::Attribute& like, const std::string& text,
                                              std::string& expected) {
    const auto draft = like.duplicate(ac::CreateEmpty, std::nullopt);
    try {
        draft->assignFrom(text);
        if (draft->getValueString() == text) return draft;
    } catch (const std::invalid_argument&) {  // a number that is none: the reading below tells more
    }
    return parseValue(like, text, expected);
}

std::string attributeTextOf(const StoredValue& value) {
    const auto texts = inqTexts(value);
    if (!texts) return valueText(value);
    std::string list = "{";
    for (const auto& each : *texts) {
        std::string text = nameText(each);
        QOR::controlsToEsc(text, true);
        list += " \"" + text + '"';
    }
    return list + " }";
}

std::string attributeTypeOf(const StoredValue& value) {
    if (inqTexts(value)) return "Attr<StringArray>";
    if (!inqNumber(value)) return "Attr<String>";
    return value.type == TypeDword ? "Attr<uint32_t>" : "Attr<uint64_t>";
}

}  // namespace qormodel
