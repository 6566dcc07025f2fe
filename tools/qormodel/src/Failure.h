// How a command ends when it cannot do its work, and the exit statuses of all commands.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace qormodel {

/// The exit status of the program.
enum class Exit {
    Done = 0,       ///< done, same, clean
    Found = 1,      ///< differences, problems or conflicts found, or no value where one was asked for
    Failed = 2,     ///< bad usage, unreadable, unwritable or broken input
    Warned = 3,     ///< warnings where --strict makes them count
};

/// Where in which file something is, as far as that is known.
struct Place {
    std::string file{};
    std::uint64_t line = 0;  ///< counted from 1; 0 for none
    std::string path{};      ///< of the object; empty for none
};

/// "FILE:LINE: PATH: text", without the parts that are not known.
std::string describe(const Place& place, const std::string& text);

/// Ends a command without a word, with the status that it has so far: who reads its standard output
/// wants no more of it.
struct ReaderLeft {};

/// Ends a command with the status `Failed`; nothing of its output is printed.
class Failure : public std::runtime_error {
public:
    explicit Failure(const std::string& text) : std::runtime_error(text) {}
    Failure(const Place& place, const std::string& text)
        : std::runtime_error(describe(place, text)) {}
};

}  // namespace qormodel
