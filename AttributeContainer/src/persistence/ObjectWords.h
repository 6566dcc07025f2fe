// The words of an object's block, by their tokens in `Object::keyTable`.
#pragma once

#include <cstdint>

namespace QOR::AttributeContainer::ObjectWords {

inline constexpr std::uint64_t Wrapper = 0;
inline constexpr std::uint64_t Child = 1;
inline constexpr std::uint64_t MajorVersion = 2;
inline constexpr std::uint64_t MinorVersion = 3;
inline constexpr std::uint64_t EndOfTable = 4;

}  // namespace QOR::AttributeContainer::ObjectWords
