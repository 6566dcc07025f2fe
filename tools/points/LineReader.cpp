#include "LineReader.h"

#include <charconv>
#include <cmath>
#include <system_error>
#include <utility>

namespace points {

namespace {
constexpr std::string_view blanks = " \t\v\f";

std::uint64_t sizeOf(const std::filesystem::path& file) {
    std::error_code error;
    const auto size = std::filesystem::file_size(file, error);
    return error ? 0 : size;
}
}  // namespace

LineReader::LineReader(const std::filesystem::path& file, ReadProgress progress)
    : file(file),
      stream(file, std::ios::binary),
      progress(std::move(progress)),
      size(sizeOf(file)) {
    // A folder opens like a file on some systems, and then fails at the first read.
    if (std::error_code error; std::filesystem::is_directory(file, error))
        throw BadPointFile(file, 0, "is a folder");
    if (!stream) throw BadPointFile(file, 0, "cannot be opened");
}

bool LineReader::next() {
    if (!std::getline(stream, line)) {
        if (stream.bad()) throw BadPointFile(file, number, "cannot be read on behind this line");
        line.clear();
        remainder = line;
        return false;
    }
    ++number;
    count(line.size() + 1);
    if (line.ends_with('\r')) line.pop_back();
    remainder = line;
    return true;
}

void LineReader::skipBlanks() {
    const auto first = remainder.find_first_not_of(blanks);
    remainder.remove_prefix(first == std::string_view::npos ? remainder.size() : first);
}

std::string_view LineReader::takeWord() {
    skipBlanks();
    const auto word = remainder.substr(0, remainder.find_first_of(blanks));
    remainder.remove_prefix(word.size());
    return word;
}

bool LineReader::takeComma() {
    skipBlanks();
    if (!remainder.starts_with(',')) return false;
    remainder.remove_prefix(1);
    return true;
}

std::optional<double> LineReader::takeNumber() {
    skipBlanks();
    auto text = remainder;
    // `from_chars` does not take a plus sign.
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::invalid_argument) return std::nullopt;
    const std::string_view taken(text.data(), static_cast<std::size_t>(end - text.data()));
    if (error == std::errc::result_out_of_range || !std::isfinite(value))
        fail("\"" + std::string(taken) + "\" is no finite number");
    const auto behind = text.substr(taken.size());
    if (!behind.empty() && behind.front() != ',' &&
        blanks.find(behind.front()) == std::string_view::npos)
        return std::nullopt;  // "1.2.3" and the like
    remainder = behind;
    return value;
}

bool LineReader::isAtEnd() {
    skipBlanks();
    return remainder.empty();
}

std::size_t LineReader::takeBytes(char* target, std::size_t wanted) {
    stream.read(target, static_cast<std::streamsize>(wanted));
    const auto got = static_cast<std::size_t>(stream.gcount());
    if (stream.bad()) failWhole("cannot be read on");
    count(got);
    return got;
}

void LineReader::fail(const std::string& what) const { throw BadPointFile(file, number, what); }

void LineReader::failWhole(const std::string& what) const { throw BadPointFile(file, 0, what); }

void LineReader::count(std::uint64_t bytes) {
    numBytes += bytes;
    if (progress) progress(numBytes, size);
}

}  // namespace points
