// The attributes that the classes of a container declare.
#pragma once

#include <AttributeContainer/AttrDefinition.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace QOR::AttributeContainer {

/// A flat table of attributes, indexed by token. It grows by one table of rows at each level of a
/// class derivation and never shrinks.
class QOR_API AttrList {
public:
    explicit AttrList(AttrContainer& container) : container(container) {}

    std::uint64_t size() const { return elements.size(); }
    /// The attribute of that token; an empty pointer past the end.
    const std::shared_ptr<Attribute>& get(std::uint64_t token) const;
    /// The token of an attribute, found by identity; all ones when it is not here.
    std::uint64_t getToken(const Attribute& attribute) const;
    /// Makes the attributes of one table; with a source list each takes the value of its token.
    /// \throws std::out_of_range when the source list is too short for a row.
    bool createAttributes(const std::vector<AttrDefinition>& rows, CreateType type,
                          const AttrList* source);

private:
    AttrContainer& container;
    std::vector<std::shared_ptr<Attribute>> elements;
};

}  // namespace QOR::AttributeContainer
