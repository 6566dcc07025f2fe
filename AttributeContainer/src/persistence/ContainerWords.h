// The words of a container block, by their tokens in `AttrContainer::keyTable`.
#pragma once

#include <cstdint>

namespace QOR::AttributeContainer::ContainerWords {

inline constexpr std::uint64_t Container = 55;
inline constexpr std::uint64_t Name = 56;
inline constexpr std::uint64_t SubContainer = 57;
inline constexpr std::uint64_t FieldHandle = 58;
inline constexpr std::uint64_t FieldToken = 59;
inline constexpr std::uint64_t ReferenceToShared = 60;
inline constexpr std::uint64_t InstanceID = 61;

}  // namespace QOR::AttributeContainer::ContainerWords
