// The tokens of the system's own actions, by name.
#pragma once

#include <cstdint>

namespace QOR::AttributeContainer {

/// What a host passes where a relation wants the token of an action, as in
/// `addObserver(observer, 1, ActionToken::Notify, true)`.
///
/// The system's actions are always registered first, so their tokens do not move. Those of further
/// sets depend on the order of registration: ask `ActionContainer::getToken` for them by name.
struct ActionToken {
    static constexpr std::uint64_t None = ~std::uint64_t{0};  ///< a relation that does nothing

    static constexpr std::uint64_t Notify = 0;     ///< tells the observer after a change
    static constexpr std::uint64_t PreNotify = 1;  ///< asks the observer before a change
    static constexpr std::uint64_t Propagate = 2;  ///< copies the value to another attribute

    // Labels of a link between two objects, spelled as documents store them.
    // -----------------------
    static constexpr std::uint64_t Correspondence = 3;
    static constexpr std::uint64_t CorrespondenceChronological = 4;
    static constexpr std::uint64_t CorrespondenceSensor = 5;
    static constexpr std::uint64_t CorrespondenceUserHints = 6;
    static constexpr std::uint64_t CorespondenceUserConfirmed = 7;
    static constexpr std::uint64_t CorrespondenceTemp = 8;
    static constexpr std::uint64_t CorrespondenceTemp2 = 9;
    static constexpr std::uint64_t CorrespondenceFineVeryLikely = 10;
    static constexpr std::uint64_t CorrespondenceFineLikely = 11;
    static constexpr std::uint64_t AntiCorrespondence_UserConfirmed = 12;
};

}  // namespace QOR::AttributeContainer
