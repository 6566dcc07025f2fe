// The counters of a merge, as tests write them down.
#pragma once

#include <AttributeContainer/AttrContMerger.h>

#include <cstdint>
#include <ostream>

namespace QOR::AttributeContainer::Testing {

/// Those that a test leaves out are zero.
struct Counters {
    std::uint32_t changed = 0;
    std::uint32_t unchanged = 0;
    std::uint32_t attributesAdded = 0;
    std::uint32_t attributesRemoved = 0;
    std::uint32_t fieldsAdded = 0;
    std::uint32_t fieldsRemoved = 0;

    static Counters of(const AttrContMerger::Result& result) {
        return {result.numChanged,           result.numUnchanged,   result.numAttributesAdded,
                result.numAttributesRemoved, result.numFieldsAdded, result.numFieldsRemoved};
    }
    bool operator==(const Counters&) const = default;
    friend std::ostream& operator<<(std::ostream& stream, const Counters& counters) {
        return stream << "changed " << counters.changed << ", unchanged " << counters.unchanged
                      << ", attributes +" << counters.attributesAdded << " -"
                      << counters.attributesRemoved << ", fields +" << counters.fieldsAdded << " -"
                      << counters.fieldsRemoved;
    }
};

/// Merges, and gives what the counters say that began at zero.
inline Counters mergeResult(AttrContainer& target, const AttrContainer& source, unsigned flags) {
    AttrContMerger::Result result;
    AttrContMerger::merge(target, source, flags, &result);
    return Counters::of(result);
}

}  // namespace QOR::AttributeContainer::Testing
