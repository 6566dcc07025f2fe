#include "model/TypeWords.h"

#include <AttributeContainer/ValueTypes.h>

#include <algorithm>

namespace qormodel {

namespace {
namespace ac = QOR::AttributeContainer;

constexpr std::string_view prefix = "Attr<";

char lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool isSameWord(std::string_view first, std::string_view second) {
    return std::ranges::equal(first, second, {}, lower, lower);
}
}  // namespace

std::vector<std::string> listTypeWords() {
    std::vector<std::string> words;
    ac::ValueTypes::forEach([&]<class Row>() {
        if (Row::isCreated && Row::hasKey) words.emplace_back(Row::word);
    });
    return words;
}

std::optional<std::string> inqTypeWord(std::string_view text) {
    if (isSameWord(text.substr(0, prefix.size()), prefix) && text.ends_with('>'))
        text = text.substr(prefix.size(), text.size() - prefix.size() - 1);
    for (auto& word : listTypeWords())
        if (isSameWord(word, text)) return std::move(word);
    return std::nullopt;
}

}  // namespace qormodel
