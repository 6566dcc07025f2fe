// What a codec reads from a text, for tests.
#pragma once

#include <AttributeContainer/DataInFormat.h>
#include <AttributeContainer/ModelFormat.h>

#include <cstddef>
#include <ios>
#include <sstream>
#include <string>

namespace QOR::AttributeContainer::Testing {

/// The value, what is left of the text behind it, and how the stream stands.
template <class T> struct Reading {
    T value;
    std::string rest;
    std::ios::iostate state;
};

template <class T> Reading<T> reading(const std::string& text, int format = ModelFormat::Text) {
    std::istringstream stream(text);
    DataInFormat<T> codec(stream, format);
    Reading<T> result{codec.get(), {}, {}};
    result.state = stream.rdstate();
    stream.clear();
    result.rest = text.substr(static_cast<std::size_t>(stream.tellg()));
    return result;
}

template <class T> T read(const std::string& text, int format = ModelFormat::Text) {
    return reading<T>(text, format).value;
}

inline constexpr auto good = std::ios::goodbit;
inline constexpr auto atEnd = std::ios::eofbit;
inline constexpr auto failed = std::ios::failbit;
inline constexpr auto failedAtEnd = std::ios::eofbit | std::ios::failbit;

}  // namespace QOR::AttributeContainer::Testing
