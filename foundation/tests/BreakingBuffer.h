// A source that breaks, for tests of what readers make of it.
#pragma once

#include <stdexcept>
#include <streambuf>
#include <string>
#include <utility>

namespace QOR::Testing {

/// Gives its text and then throws.
class BreakingBuffer : public std::streambuf {
public:
    explicit BreakingBuffer(std::string newText) : text(std::move(newText)) {
        setg(text.data(), text.data(), text.data() + text.size());
    }

private:
    int_type underflow() override { throw std::runtime_error("disk gone"); }

    std::string text;
};

}  // namespace QOR::Testing
