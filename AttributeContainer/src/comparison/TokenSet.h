// A set of tokens of one container.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace QOR::AttributeContainer {

/// Tokens that begin at 0 and have few gaps. The first 64 cost no allocation.
class TokenSet {
public:
    void insert(std::uint64_t token) {
        if (contains(token)) return;
        ++count;
        if (token < numInline) {
            first |= std::uint64_t{1} << token;
            return;
        }
        const std::size_t index = token - numInline;
        if (index >= others.size()) others.resize(index + 1);
        others[index] = true;
    }
    /// Inserts the first `number` tokens.
    void insertBelow(std::uint64_t number) {
        for (std::uint64_t token = 0; token < number; ++token) insert(token);
    }
    bool contains(std::uint64_t token) const {
        if (token < numInline) return (first >> token & 1) != 0;
        return token - numInline < others.size() && others[token - numInline];
    }
    std::uint64_t size() const { return count; }

private:
    static constexpr std::uint64_t numInline = 64;

    std::uint64_t first = 0;
    std::vector<bool> others;
    std::uint64_t count = 0;
};

}  // namespace QOR::AttributeContainer
