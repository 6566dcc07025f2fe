// Reads a point file line by line and keeps count of the lines.
#pragma once

#include "PointFile.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

namespace points {

/// The lines of one file, and the place in it for what has to be said about them.
class LineReader {
public:
    /// \throws BadPointFile for what cannot be opened.
    LineReader(const std::filesystem::path& file, ReadProgress progress);

    /// Moves on to the next line. \return false at the end of the file.
    /// \throws BadPointFile when the file cannot be read on.
    bool next();
    /// The rest of the line, without a carriage return at its end; lasts until the next `next`.
    std::string_view rest() const { return remainder; }
    /// Takes the next word of the line: what stands between blanks and tabs. Empty at its end.
    std::string_view takeWord();
    /// Takes a comma. \return false, and the line as it was, where none comes next.
    bool takeComma();
    /// Takes a number; empty where none comes next.
    /// \throws BadPointFile for a number that a `double` cannot hold, an infinity and a NaN.
    std::optional<double> takeNumber();
    /// Whether nothing but white space is left of the line.
    bool isAtEnd();
    /// Takes bytes from behind the line. \return how many there were, fewer only at the end.
    /// \throws BadPointFile when the file cannot be read on.
    std::size_t takeBytes(char* target, std::size_t count);

    /// Says what is wrong with the current line.
    [[noreturn]] void fail(const std::string& what) const;
    /// Says what is wrong with the file, or with the bytes behind its last line.
    [[noreturn]] void failWhole(const std::string& what) const;

private:
    void skipBlanks();
    void count(std::uint64_t bytes);

    std::filesystem::path file;
    std::ifstream stream;
    ReadProgress progress;
    std::string line;
    std::string_view remainder;
    std::uint64_t number = 0;
    std::uint64_t numBytes = 0;
    std::uint64_t size = 0;
};

}  // namespace points
