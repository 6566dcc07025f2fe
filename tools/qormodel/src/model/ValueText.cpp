#include "model/ValueText.h"

#include "model/ValueVisit.h"

#include <QOR/Text.h>

#include <nlohmann/json.hpp>

#include <charconv>
#include <cmath>
#include <concepts>
#include <limits>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace qormodel {

namespace {
using QOR::uuids::uuid;

template <class T> concept NumberGroup = requires(const T& value) {
    value.size();
    { value[0] } -> std::convertible_to<double>;
}
&&!requires(const T& value) { value.begin(); };
template <class T>
constexpr bool isTexts = std::same_as<T, std::vector<std::string>> ||
                         std::same_as<T, std::set<std::string>> || std::same_as<T, ac::StringMap>;
template <class T> concept Collection = requires(const T& value) {
    value.begin();
    value.size();
}
&&!std::same_as<T, std::string> && !isTexts<T>;

// The words of a text of numbers, flags or identifiers; braces only group them.
class Words {
public:
    explicit Words(const std::string& text) : rest(text) {}

    std::string_view next() {
        const auto begin = rest.find_first_not_of(separators);
        if (begin == std::string_view::npos) return rest = {};
        rest.remove_prefix(begin);
        const auto word = rest.substr(0, rest.find_first_of(separators));
        rest.remove_prefix(word.size());
        return word;
    }

private:
    static constexpr std::string_view separators = " \t\n\r{}";
    std::string_view rest;
};

template <class T> bool isWordFor(const T& value, std::string_view word) {
    if constexpr (std::same_as<T, bool>) {
        return QOR::compareIgnoreCase(std::string(word), value ? "true" : "false") == 0;
    } else if constexpr (std::same_as<T, uuid>) {
        return uuid::parse(std::string(word)) == value;
    } else {
        if (word.starts_with('+')) word.remove_prefix(1);
        T number{};
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
        return error == std::errc{} && end == word.data() + word.size() && number == value;
    }
}

// Whether the words of the text are the parts of the value, one by one.
template <class T> bool isSpelled(const T& value, Words& words) {
    if constexpr (Collection<T>) {
        for (const auto& each : value)
            if (!isSpelled(static_cast<const typename T::value_type&>(each), words)) return false;
        return true;
    } else if constexpr (std::same_as<T, uuid> || std::is_arithmetic_v<T>) {
        return isWordFor(value, words.next());
    } else if constexpr (NumberGroup<T>) {
        for (std::size_t i = 0; i < value.size(); ++i)
            if (!isWordFor(value[i], words.next())) return false;
        return true;
    } else {
        return false;
    }
}

bool isInBraces(const std::string& text) {
    const auto begin = text.find_first_not_of(" \t\n\r");
    const auto end = text.find_last_not_of(" \t\n\r");
    return begin != std::string::npos && text[begin] == '{' && text[end] == '}' && begin < end;
}

// Texts in quotes within braces, as `get` prints them, with what stands between them.
class QuotedTexts {
public:
    explicit QuotedTexts(const std::string& text) : rest(text) {}

    bool takeSign(std::string_view sign) {
        skipBlanks();
        if (!rest.starts_with(sign)) return false;
        rest.remove_prefix(sign.size());
        return true;
    }
    std::optional<std::string> takeText() {
        if (!takeSign("\"")) return std::nullopt;
        std::string text;
        while (!rest.empty() && rest.front() != '"') {
            const std::size_t length = rest.front() == '\\' && rest.size() > 1 ? 2 : 1;
            text += rest.substr(0, length);
            rest.remove_prefix(length);
        }
        if (rest.empty()) return std::nullopt;
        rest.remove_prefix(1);
        QOR::escToControls(text, true);
        return text;
    }
    bool isAtEnd() {
        skipBlanks();
        return rest.empty();
    }

private:
    void skipBlanks() {
        const auto begin = rest.find_first_not_of(" \t\n\r");
        rest.remove_prefix(begin == std::string_view::npos ? rest.size() : begin);
    }

    std::string_view rest;
};

template <class T> std::optional<T> parseTexts(const std::string& text) {
    QuotedTexts source(text);
    T value;
    if (!source.takeSign("{")) return std::nullopt;
    while (!source.takeSign("}")) {
        auto each = source.takeText();
        if (!each) return std::nullopt;
        if constexpr (std::same_as<T, ac::StringMap>) {
            if (!source.takeSign("=>")) return std::nullopt;
            auto mapped = source.takeText();
            if (!mapped) return std::nullopt;
            value[*each] = *mapped;
        } else {
            value.insert(value.end(), *each);
        }
    }
    if (!source.isAtEnd()) return std::nullopt;
    return value;
}

// The value of a text that the library is not asked about.
template <class T> std::optional<T> parseOwn(const std::string& text) {
    if constexpr (std::same_as<T, std::string>) {
        return text;
    } else if constexpr (std::same_as<T, QOR::JsonValue>) {
        if (nlohmann::json::accept(text)) return QOR::JsonValue{text};
        return std::nullopt;
    } else {
        return parseTexts<T>(text);
    }
}

template <class T>
constexpr bool isOwn =
    std::same_as<T, std::string> || std::same_as<T, QOR::JsonValue> || isTexts<T>;

// Whether a value that the library has read is what the text says.
template <class T> bool isValue(const T& value, const std::string& text) {
    if (Collection<T> && !isInBraces(text)) return false;
    Words words(text);
    return isSpelled(value, words) && words.next().empty();
}

template <class T> std::string nameOf() {
    if constexpr (std::same_as<T, bool>) return "true or false";
    else if constexpr (std::floating_point<T>) return "a number";
    else if constexpr (std::integral<T>)
        return "a whole number from " + std::to_string(std::numeric_limits<T>::min()) + " to " +
               std::to_string(std::numeric_limits<T>::max());
    else if constexpr (std::same_as<T, uuid>) return "32 hexadecimal digits";
    else if constexpr (std::same_as<T, QOR::JsonValue>) return "JSON";
    else if constexpr (std::same_as<T, ac::StringMap>)
        return "pairs \"key\" => \"text\", all in braces";
    else if constexpr (isTexts<T>) return "texts in quotes, all in braces";
    else if constexpr (Collection<T>)
        return "a list in braces, each element " + nameOf<typename T::value_type>();
    else if constexpr (NumberGroup<T>)
        return std::to_string(T{}.size()) + " times " +
               nameOf<std::remove_cvref_t<decltype(T{}[0])>>();
    else return "a text";
}

// Gives the attribute the value of the text. False for a text that is none.
template <class T> bool take(ac::Attr<T>& attribute, std::string text) {
    if constexpr (isOwn<T>) {
        auto value = parseOwn<T>(text);
        if (value) attribute.set(*value);
        return value.has_value();
    } else {
        for (char& character : text)  // they only group
            if (character == ',' || character == '(' || character == ')') character = ' ';
        try {
            attribute.assignFrom(text);
        } catch (const std::invalid_argument&) {
            return false;
        }
        return isValue(attribute.get(), text);
    }
}
}  // namespace

std::shared_ptr<ac::Attribute> parseValue(const ac::Attribute& like, const std::string& text,
                                          std::string& expected) {
    auto draft = like.duplicate(ac::CreateEmpty, std::nullopt);
    bool isGood = false;
    visitValue(like, [&]<class T>(const T&) {
        expected = nameOf<T>();
        const auto typed = std::dynamic_pointer_cast<ac::Attr<T>>(draft);
        isGood = typed && take(*typed, text);
    });
    return isGood ? draft : nullptr;
}

}  // namespace qormodel
