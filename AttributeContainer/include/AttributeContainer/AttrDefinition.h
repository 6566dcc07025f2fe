// The rows by which a container class declares its attributes and fields.
#pragma once

#include <AttributeContainer/Attribute.h>
#include <AttributeContainer/ValueTypes.h>

#include <QOR/KeyTable.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace QOR::AttributeContainer {

class AttributeBlock;

/// One attribute of a container class.
struct QOR_API AttrDefinition {
    /// The category bits, as filters ask for them.
    static constexpr int flagged = 2;        ///< the attribute gets its definition flag
    static constexpr int nameRow = 4;        ///< the name of a container carries this alone
    static constexpr int domain = 16;        ///< an attribute of a class of the domain
    static constexpr int notPersistent = 32; ///< no stream and no key store holds it
    static constexpr int custom = 64;        ///< in no row: what an element without a row answers

    std::uint64_t token;  ///< also the index in the container's list
    std::string name;     ///< the key, in look-ups and streams
    AttrType type;
    int category;

    /// Makes the attribute of this row: in `location`, or free where none is given.
    /// \return an empty pointer for a type that no table can make.
    std::shared_ptr<Attribute> createAttr(
        CreateType type, const std::optional<std::reference_wrapper<const Attribute>>& source,
        const Attribute::Location& location) const;

private:
    friend class AttrList;  // makes the attributes of a table in one piece of memory
    friend class AttrTable;

    /// Whether a table can make an attribute of its type.
    bool isMade() const { return roomInBlock() > 0; }

    /// What the attribute takes there.
    std::size_t roomInBlock() const;
    std::shared_ptr<Attribute> createAttr(
        const std::optional<std::reference_wrapper<const Attribute>>& source,
        AttributeBlock& block) const;
    std::shared_ptr<Attribute> marked(std::shared_ptr<Attribute> attribute) const;
};

/// One field of a container class.
struct QOR_API FieldDefinition {
    std::uint64_t token;
    std::string name;      ///< the key under which the field is held
    std::string typeName;  ///< the class to make; may be empty
};

/// The rows of one class, by token.
using AttrDefMap = std::map<const std::uint64_t, const AttrDefinition*>;

}  // namespace QOR::AttributeContainer
