// Stream buffers of many kinds to read from, for tests.
#pragma once

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <utility>

namespace QOR::AttributeContainer::Testing {

/// Gives a text in get areas of a few characters.
class SmallAreas : public std::streambuf {
public:
    SmallAreas(std::string newText, std::size_t newStep) : text(std::move(newText)), step(newStep) {
        setg(text.data(), text.data(), text.data());
    }

private:
    int_type underflow() override {
        const auto left = static_cast<std::size_t>(text.data() + text.size() - gptr());
        if (left == 0) return traits_type::eof();
        setg(eback(), gptr(), gptr() + std::min(left, step));
        return traits_type::to_int_type(*gptr());
    }
    std::string text;
    const std::size_t step;
};

/// Has no get area at all, though it says how much there is to read.
class NoArea : public std::streambuf {
public:
    explicit NoArea(std::string newText) : text(std::move(newText)) {}

private:
    int_type underflow() override {
        return at < text.size() ? traits_type::to_int_type(text[at]) : traits_type::eof();
    }
    int_type uflow() override {
        const auto character = underflow();
        if (at < text.size()) ++at;
        return character;
    }
    int_type pbackfail(int_type) override {
        return at > 0 ? traits_type::to_int_type(text[--at]) : traits_type::eof();
    }
    std::streamsize showmanyc() override { return static_cast<std::streamsize>(text.size() - at); }

    std::string text;
    std::size_t at = 0;
};

/// Throws when it has given its text.
class BreakingBuffer : public std::streambuf {
public:
    explicit BreakingBuffer(std::string newText) : text(std::move(newText)) {
        setg(text.data(), text.data(), text.data() + text.size());
    }

private:
    int_type underflow() override { throw std::runtime_error("disk gone"); }
    std::string text;
};

}  // namespace QOR::AttributeContainer::Testing
