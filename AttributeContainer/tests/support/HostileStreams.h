// Reads streams that are cut off or changed, for tests.
#pragma once

#include "support/StreamContexts.h"
#include "support/Streams.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace QOR::AttributeContainer::Testing {

/// Reads a text, in which these keys may be referred to, into the container.
template <class Container>
void readHostile(Container& root, const std::string& text, const std::vector<std::uint64_t>& keys) {
    bool isEndedHard = true;
    try {
        const auto code = readText(root, text, resolving(keys));
        isEndedHard = code && !isWarning(*code);
    } catch (const std::invalid_argument& malformed) {
        EXPECT_STREQ(malformed.what(), "Invalid number format") << text;
    }
    if (isEndedHard) {
        EXPECT_EQ(keywordOfNextRead(), "clean") << text;
    }
}

/// Reads a text twice into a new container, which must then be one that can be written.
template <class Container>
void readAndWriteHostile(const std::string& text, const std::vector<std::uint64_t>& keys) {
    const auto root = Container::create();
    readHostile(*root, text, keys);
    readHostile(*root, text, keys);
    std::ostringstream out;
    EXPECT_EQ(codeOf(root->writeTo(out, std::make_shared<const WriteContextBase>())), std::nullopt)
        << text;
}

/// Does so with the text cut off at each of its bytes.
template <class Container>
void cutEverywhere(const std::string& text, const std::vector<std::uint64_t>& keys) {
    for (std::size_t size = 0; size <= text.size(); ++size)
        readAndWriteHostile<Container>(text.substr(0, size), keys);
}

/// Does so with each byte of the text changed to each of `bytes`.
template <class Container>
void changeEverywhere(const std::string& text, std::string_view bytes,
                      const std::vector<std::uint64_t>& keys) {
    for (std::size_t at = 0; at < text.size(); ++at)
        for (const char byte : bytes) {
            std::string changed = text;
            changed[at] = byte;
            readAndWriteHostile<Container>(changed, keys);
        }
}

}  // namespace QOR::AttributeContainer::Testing
