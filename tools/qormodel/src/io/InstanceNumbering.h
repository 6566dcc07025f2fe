// Makes the instance numbers of a model stream the same in every process.
#pragma once

#include <cstdint>
#include <streambuf>
#include <string>
#include <unordered_map>

namespace qormodel {

/// Passes a model stream on with its instance numbers replaced by 1, 2, 3 in the order in which
/// they come. The library takes them from a counter of the process, so that the same document would
/// else have another text each time.
class InstanceNumbering : public std::streambuf {
public:
    explicit InstanceNumbering(std::streambuf& target) : target(target) {}

protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* data, std::streamsize count) override;
    int sync() override { return target.pubsync(); }

private:
    /// How a line begins whose numbers are replaced.
    enum class Line { Undecided, Plain, Numbers };

    void take(char character);
    void decide();
    void flushNumber();

    std::streambuf& target;
    Line line = Line::Undecided;
    std::string held;  // the start of a line while it is undecided, then the digits of a number
    std::unordered_map<std::string, std::uint64_t> numbers;
};

}  // namespace qormodel
