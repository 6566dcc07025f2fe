// Whether two values are the same, exactly or nearly.
#pragma once

#include <AttributeContainer/Attribute.h>

#include <cstdint>
#include <optional>
#include <string>

namespace qormodel {

namespace ac = QOR::AttributeContainer;

/// How near numbers must be to each other to count as the same.
struct Tolerance {
    bool isLibrary = false;            ///< as the library's comparer takes them
    std::optional<double> greatest{};  ///< the greatest difference of two numbers; none for exact

    /// From "library" or a number. \return none for another text, and for a negative number
    static std::optional<Tolerance> parse(const std::string& text);
};

/// Same type and same value. Exactly, a not-a-number is the same as itself alone; the library's way
/// takes it for the same as anything.
bool isSameValue(const ac::Attribute& first, const ac::Attribute& second,
                 const Tolerance& tolerance = {});

/// In how many elements two lists differ.
struct ListDelta {
    std::uint64_t firstSize = 0;
    std::uint64_t secondSize = 0;
    std::uint64_t numDifferent = 0;  ///< among those that both have
    std::uint64_t place = 0;         ///< of the first of these
};

/// \return none for what are not two lists of one type
std::optional<ListDelta> compareLists(const ac::Attribute& first, const ac::Attribute& second,
                                      const Tolerance& tolerance = {});

}  // namespace qormodel
