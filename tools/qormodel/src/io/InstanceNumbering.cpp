#include "io/InstanceNumbering.h"

#include <array>
#include <cstring>
#include <string_view>

namespace qormodel {

namespace {
// No string can hold a line that begins so: a line feed in a string is escaped.
constexpr std::array<std::string_view, 2> starts{"InstanceID ", "Instances { "};

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}
}  // namespace

InstanceNumbering::int_type InstanceNumbering::overflow(int_type character) {
    if (!traits_type::eq_int_type(character, traits_type::eof()))
        take(traits_type::to_char_type(character));
    return traits_type::not_eof(character);
}

std::streamsize InstanceNumbering::xsputn(const char* data, std::streamsize count) {
    const char* const end = data + count;
    while (data != end) {
        if (line != Line::Plain) {
            take(*data++);
            continue;
        }
        const void* const found = std::memchr(data, '\n', static_cast<std::size_t>(end - data));
        const char* const stop = found ? static_cast<const char*>(found) : end;
        if (target.sputn(data, stop - data) != stop - data) return 0;
        data = stop;
        if (data != end) take(*data++);
    }
    return count;
}

void InstanceNumbering::take(char character) {
    if (character == '\n') {
        flushNumber();
        target.sputc('\n');
        line = Line::Undecided;
        return;
    }
    if (line == Line::Plain) {
        target.sputc(character);
    } else if (line == Line::Undecided) {
        held += character;
        decide();
    } else if (isDigit(character)) {
        held += character;
    } else {
        flushNumber();
        target.sputc(character);
    }
}

void InstanceNumbering::decide() {
    bool isPossible = false;
    for (const std::string_view start : starts) {
        if (held == start) line = Line::Numbers;
        isPossible = isPossible || start.starts_with(held);
    }
    if (line == Line::Undecided && isPossible) return;
    if (line == Line::Undecided) line = Line::Plain;
    target.sputn(held.data(), static_cast<std::streamsize>(held.size()));
    held.clear();
}

// What is held back goes on: a number replaced, anything else as it is.
void InstanceNumbering::flushNumber() {
    std::string text = std::move(held);
    held.clear();
    if (line == Line::Numbers && !text.empty())
        text = std::to_string(numbers.try_emplace(text, numbers.size() + 1).first->second);
    target.sputn(text.data(), static_cast<std::streamsize>(text.size()));
}

}  // namespace qormodel
