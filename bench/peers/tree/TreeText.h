// Our text of a BenchObject, byte for byte, written and read without any of our duties.
#pragma once

#include "support/FloorNumbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <streambuf>
#include <string>
#include <string_view>

namespace bench::text {

inline constexpr std::size_t numAttributes = 14;
/// By token: the name, five of Object, eight of BenchObject.
inline constexpr std::array<std::string_view, numAttributes> attributeKeys = {
    "Name", "Action",  "Event",   "MajorVersion", "MinorVersion",   "UUID",      "Count",
    "Gain", "Comment", "Visible", "Position",     "Transformation", "Reference", "Label"};
inline constexpr std::array<std::string_view, numAttributes> attributeTypes = {
    "Attr<String>", "Attr<String>", "Attr<String>", "Attr<uint16_t>", "Attr<uint16_t>",
    "Attr<Uuid>",   "Attr<int>",    "Attr<double>", "Attr<String>",   "Attr<bool>",
    "Attr<Vec3dd>", "Attr<Mat4dd>", "Attr<String>", "Attr<String>"};

// Writing.
// ------------------------------------------------------------------------------------------

/// Appends to a text.
struct StringSink {
    std::string& text;
    void newLine() { text += '\n'; }
    void put(std::string_view part) { text += part; }
};

/// Flushes each new line, as the library does.
struct StreamSink {
    std::streambuf& buffer;
    void newLine() {
        buffer.sputc('\n');
        buffer.pubsync();
    }
    void put(std::string_view part) {
        buffer.sputn(part.data(), static_cast<std::streamsize>(part.size()));
    }
};

inline std::string_view viewOf(const char* start, const char* end) {
    return {start, static_cast<std::size_t>(end - start)};
}

template <class Sink> void putCharacter(Sink& sink, char c) {
    switch (c) {
        case '"': return sink.put("\\\"");
        case '\\': return sink.put("\\\\");
        case '\n': return sink.put("\\n");
        case '\t': return sink.put("\\t");
        case '\r': return sink.put("\\r");
        default: sink.put({&c, 1});
    }
}

template <class Sink> void putString(Sink& sink, std::string_view string) {
    const bool hasEscapes = std::ranges::any_of(string, [](char c) {
        return static_cast<unsigned char>(c) < ' ' || c == '"' || c == '\\';
    });
    sink.put("\"");
    if (hasEscapes)
        for (const char c : string) putCharacter(sink, c);
    else sink.put(string);
    sink.put("\"");
}

template <class Sink> void putDouble(Sink& sink, double number) {
    char text[440];
    number = finite(number);
    sink.put(viewOf(text, putExact(text, number, digitsOf(number))));
}

template <class Sink> void putPosition(Sink& sink, const std::array<double, 3>& position) {
    char text[1400];
    sink.put(viewOf(text, putTriple<Exactly>(text, position[0], position[1], position[2])));
}

template <class Sink> void putMatrix(Sink& sink, const std::array<double, 16>& matrix) {
    char text[1024];
    char* end = text;
    for (std::size_t i = 0; i < matrix.size(); ++i) {
        if (end - text > 500) {
            sink.put(viewOf(text, end));
            end = text;
        }
        const double number = finite(matrix[i]);
        end = putExact(end, number, digitsOf(number));
        *end++ = ' ';
        if (i % 4 == 3) *end++ = ' ';
    }
    sink.put(viewOf(text, end));
}

template <class Sink> void putInteger(Sink& sink, std::int64_t number) {
    char text[24];
    sink.put(viewOf(text, std::to_chars(text, text + sizeof text, number).ptr));
}

template <class Sink> void openBlock(Sink& sink, std::string_view name) {
    sink.newLine();
    sink.put(name);
    sink.put(" { ");
}
template <class Sink> void closeBlock(Sink& sink) {
    sink.newLine();
    sink.put("}");
}

/// The block of one attribute; `putValue` is called where it has a value.
template <class Sink, class PutValue>
void putAttribute(Sink& sink, std::size_t token, bool hasValue, PutValue&& putValue) {
    openBlock(sink, attributeTypes[token]);
    sink.newLine();
    sink.put("Name ");
    putString(sink, attributeKeys[token]);
    if (hasValue) {
        sink.newLine();
        sink.put("Value ");
        putValue();
    }
    closeBlock(sink);
}

/// The head of a child's block, behind which its own text follows.
template <class Sink> void openChild(Sink& sink, std::string_view name) {
    openBlock(sink, "Child");
    sink.newLine();
    sink.put("\"BenchObject\" ");
    putString(sink, name);
}

// Reading.
// ------------------------------------------------------------------------------------------

/// Takes words, strings and numbers off a text. Nothing is checked: the text is ours.
class Source {
public:
    explicit Source(std::string_view text) : at(text.data()), end(at + text.size()) {}

    /// The next word or brace; empty at the end.
    std::string_view word() {
        skipBlanks();
        if (at < end && (*at == '{' || *at == '}')) return {at++, 1};
        const char* const start = at;
        while (at < end && !isBlank(*at)) ++at;
        return viewOf(start, at);
    }
    void read(std::string& string) {
        skipBlanks();
        if (at >= end || *at != '"') return;
        const char* const start = ++at;
        bool hasEscapes = false;
        for (; at < end && *at != '"'; ++at) {
            if (*at != '\\' || at + 1 == end) continue;
            hasEscapes = true;
            ++at;
        }
        string.assign(start, at);
        if (at < end) ++at;
        if (hasEscapes) resolveEscapes(string);
    }
    void read(double& number) {
        skipBlanks();
        at = std::from_chars(at, end, number).ptr;
    }
    void read(std::int32_t& number) {
        skipBlanks();
        at = std::from_chars(at, end, number).ptr;
    }
    void read(std::uint16_t& number) {
        skipBlanks();
        at = std::from_chars(at, end, number).ptr;
    }
    void read(bool& truth) { truth = word() == "true"; }
    template <std::size_t Size> void read(std::array<double, Size>& numbers) {
        for (double& number : numbers) read(number);
    }

private:
    void skipBlanks() {
        while (at < end && isBlank(*at)) ++at;
    }
    static void resolveEscapes(std::string& string) {
        std::size_t to = 0;
        for (std::size_t from = 0; from < string.size(); ++from) {
            char c = string[from];
            if (c == '\\' && from + 1 < string.size()) {
                c = string[++from];
                c = c == 'n' ? '\n' : c == 't' ? '\t' : c == 'r' ? '\r' : c;
            }
            string[to++] = c;
        }
        string.resize(to);
    }

    const char* at;
    const char* end;
};

/// The token of a key. The one behind the last is tried first: streams keep the order of the table.
inline std::size_t tokenOf(std::string_view key, std::size_t guess) {
    if (guess < numAttributes && key == attributeKeys[guess]) return guess;
    return static_cast<std::size_t>(std::ranges::find(attributeKeys, key) - attributeKeys.begin());
}

}  // namespace bench::text
