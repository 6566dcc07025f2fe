// What a command says on the standard output.
#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace qormodel {

/// When signs and values have colours.
enum class ColourMode { Auto, Always, Never };

/// Collects the output of a command, so that one that fails has printed nothing. Long output goes
/// through a pager on a terminal.
class Output {
public:
    enum class Colour { Plain, Added, Removed, Changed, Unknown, Faint, Strong };

    /// \param mode `Auto` means colours on a terminal, unless the environment has NO_COLOR.
    void setColourMode(ColourMode mode);

    template <class... Args>
    void print(fmt::format_string<Args...> format, Args&&... args) {
        fmt::format_to(std::back_inserter(text), format, std::forward<Args>(args)...);
    }
    void add(std::string_view part) { text += part; }
    /// `part` in a colour, where colours are wanted.
    std::string in(Colour colour, std::string_view part) const;

    /// Prints what was collected. \throws Failure, ReaderLeft
    void flush();

private:
    bool flushThroughPager();

    std::string text;
    bool hasColours = false;
};

/// "1 point", "2 points".
std::string counted(std::uint64_t number, std::string_view what);

/// Prints a piece of text on the standard error output. What cannot be printed is dropped.
void printOnErrors(std::string_view text);

/// Prints a line on the standard error output, behind the name of the program.
void printNote(std::string_view line);

}  // namespace qormodel
