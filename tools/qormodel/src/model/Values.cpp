#include "model/Values.h"

#include "model/ValueVisit.h"

#include <QOR/StringText.h>
#include <QOR/Text.h>

#include <charconv>
#include <cmath>
#include <concepts>
#include <iterator>
#include <limits>
#include <map>
#include <set>
#include <type_traits>
#include <vector>

namespace qormodel {

namespace {
// Ends the writing of a value that is only shown in part.
class Writer {
public:
    explicit Writer(std::size_t limit) : limit(limit) {}

    bool isFull() const { return text.size() >= limit; }
    std::string& target() { return text; }

private:
    std::string text;
    std::size_t limit;
};

template <class T>
concept Number = std::is_arithmetic_v<T> && !std::same_as<T, bool>;
template <class T>
concept Collection = requires(const T& value) {
    value.begin();
    value.size();
} && !std::same_as<T, std::string>;

std::string escaped(std::string text) {
    QOR::controlsToEsc(text, true);
    return text;
}

template <Number T>
void write(Writer& writer, T value) {
    char digits[64];
    const auto end = [&] {
        if constexpr (sizeof(T) == 1) return std::to_chars(digits, digits + 64, int{value}).ptr;
        else return std::to_chars(digits, digits + 64, value).ptr;
    }();
    writer.target().append(digits, end);
}

void write(Writer& writer, bool value) { writer.target() += value ? "true" : "false"; }
void write(Writer& writer, const std::string& value) { writer.target() += escaped(value); }
void write(Writer& writer, const QOR::JsonValue& value) { writer.target() += escaped(value.text); }
void write(Writer& writer, const QOR::uuids::uuid& value) {
    using QOR::operator<<;
    writer.target() << value;
}

template <NumberGroup T>
void write(Writer& writer, const T& value) {
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (i > 0) writer.target() += ' ';
        write(writer, value[i]);
    }
}

void write(Writer& writer, const ac::ScanPt& value) {
    write(writer, value.position);
    for (const std::uint8_t part : value.color) {
        writer.target() += ' ';
        write(writer, part);
    }
}

void write(Writer& writer, const std::pair<const std::string, std::string>& value) {
    writer.target() += '"' + escaped(value.first) + "\" => \"" + escaped(value.second) + '"';
}

template <Collection T>
void write(Writer& writer, const T& value) {
    using Element = typename T::value_type;
    writer.target() += '{';
    for (const auto& each : value) {
        if (writer.isFull()) {
            writer.target() += " ... " + std::to_string(value.size()) + " elements";
            break;
        }
        writer.target() += ' ';
        if constexpr (std::same_as<Element, std::string>)
            writer.target() += '"' + escaped(each) + '"';
        else if constexpr (std::same_as<Element, bool>)
            write(writer, static_cast<bool>(each));
        else {
            const bool isGrouped = NumberGroup<Element> || std::same_as<Element, ac::ScanPt>;
            if (isGrouped) writer.target() += '(';
            write(writer, each);
            if (isGrouped) writer.target() += ')';
        }
    }
    writer.target() += " }";
}

std::string textWithin(const ac::Attribute& attribute, std::size_t limit) {
    Writer writer(limit);
    visitValue(attribute, [&](const auto& value) { write(writer, value); });
    return std::move(writer.target());
}

template <Number T>
Json json(T value) {
    if constexpr (std::floating_point<T>) {
        if (std::isnan(value)) return "nan";
        if (std::isinf(value)) return value > 0 ? "inf" : "-inf";
        return static_cast<double>(value);
    } else if constexpr (sizeof(T) == 1) {
        return int{value};
    } else {
        return value;
    }
}

Json json(bool value) { return value; }
Json json(const std::string& value) { return value; }
Json json(const QOR::JsonValue& value) { return value.text; }
Json json(const QOR::uuids::uuid& value) {
    using QOR::operator<<;
    std::string text;
    text << value;
    return text;
}

template <NumberGroup T>
Json json(const T& value) {
    Json array = Json::array();
    for (std::size_t i = 0; i < value.size(); ++i) array.push_back(json(value[i]));
    return array;
}

Json json(const ac::ScanPt& value) {
    return {{"position", json(value.position)}, {"color", value.color}};
}

Json json(const ac::StringMap& value) {
    Json object = Json::object();
    for (const auto& [key, text] : value) object[key] = text;
    return object;
}

template <Collection T>
Json json(const T& value) {
    Json array = Json::array();
    for (const auto& each : value) {
        if constexpr (std::same_as<typename T::value_type, bool>)
            array.push_back(static_cast<bool>(each));
        else
            array.push_back(json(each));
    }
    return array;
}

// Bytes of a text that are no UTF-8 are replaced: JSON cannot hold them.
void dump(std::ostream& stream, const Json& value) {
    stream << value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

template <class T>
void writeJson(std::ostream& stream, const T& value) {
    dump(stream, json(value));
}

template <Collection T>
    requires(!std::same_as<T, ac::StringMap>)
void writeJson(std::ostream& stream, const T& value) {
    const char* separator = "";
    stream << '[';
    for (const auto& each : value) {
        stream << separator;
        if constexpr (std::same_as<typename T::value_type, bool>)
            writeJson(stream, static_cast<bool>(each));
        else
            writeJson(stream, each);
        separator = ",";
    }
    stream << ']';
}

// Three or four coordinates of a floating-point type.
template <class T>
constexpr bool isPoint = false;
template <>
constexpr bool isPoint<QOR::Vec3d<double>> = true;
template <>
constexpr bool isPoint<QOR::Vec3d<float>> = true;
template <>
constexpr bool isPoint<QOR::Vec4d<double>> = true;
template <>
constexpr bool isPoint<ac::ScanPt> = true;
}  // namespace

std::string valueText(const ac::Attribute& attribute) {
    return textWithin(attribute, std::numeric_limits<std::size_t>::max());
}

std::string shortValueText(const ac::Attribute& attribute, std::size_t maxLength) {
    std::string text = textWithin(attribute, maxLength);
    if (text.size() <= maxLength + 40) return text;
    while (maxLength > 0 && (text[maxLength] & 0xC0) == 0x80) --maxLength;  // inside a character
    return text.substr(0, maxLength) + "...";
}

std::string elementText(const ac::Attribute& attribute, std::size_t index) {
    Writer writer(std::numeric_limits<std::size_t>::max());
    visitValue(attribute, [&]<class T>(const T& value) {
        if constexpr (Collection<T>) {
            if (index >= value.size()) return;
            write(writer, static_cast<const typename T::value_type&>(
                              *std::next(value.begin(), static_cast<std::ptrdiff_t>(index))));
        }
    });
    return std::move(writer.target());
}

Json valueJson(const ac::Attribute& attribute) {
    Json result;
    visitValue(attribute, [&](const auto& value) { result = json(value); });
    return result;
}

void writeValueJson(std::ostream& stream, const ac::Attribute& attribute) {
    visitValue(attribute, [&](const auto& value) { writeJson(stream, value); });
}

std::optional<std::uint64_t> numPoints(const ac::Attribute& attribute) {
    std::optional<std::uint64_t> number;
    visitValue(attribute, [&]<class T>(const T& value) {
        if constexpr (Collection<T>) {
            if constexpr (isPoint<typename T::value_type>) number = value.size();
        }
    });
    return number;
}

bool isDefaultValue(const ac::Attribute& attribute) {
    bool isDefault = false;
    visitValue(attribute, [&]<class T>(const T& value) { isDefault = value == T{}; });
    return isDefault;
}

}  // namespace qormodel
