// The attributes that the classes of a container declare.
#pragma once

#include <AttributeContainer/AttrDefinition.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace QOR::AttributeContainer {

class AttrTable;

/// A flat table of attributes, indexed by token. It grows by one table of rows at each level of a
/// class derivation and never shrinks.
class QOR_API AttrList {
public:
    explicit AttrList(AttrContainer& container) : container(container) {}

    std::uint64_t size() const { return elements.size(); }
    /// Makes room at once for the levels to come.
    void reserve(std::uint64_t size) { elements.reserve(size); }
    /// The attribute of that token; an empty pointer past the end.
    const std::shared_ptr<Attribute>& get(std::uint64_t token) const {
        if (token < elements.size() && elements[token]) [[likely]]
            return elements[token];
        return make(token);
    }
    /// The token of an attribute, found by identity; all ones when it is not here.
    std::uint64_t getToken(const Attribute& attribute) const;
    /// Makes the attributes of one table; with a source list each takes the value of its token.
    /// \throws std::out_of_range when the source list is too short for a row.
    bool createAttributes(const std::vector<AttrDefinition>& rows, CreateType type,
                          const AttrList* source);

    /// The same for the table of a class, whose base is that of the table before: without values
    /// to take over, its attributes are made when the first of them is asked for.
    void declare(const AttrTable& table, const AttrList* source);
    /// The table whose attributes, that of the token among them, are still to be made: they hold
    /// their defaults, have no marks and are watched by nobody. Null if they are there.
    const AttrTable* untouchedTable(std::uint64_t token) const {
        return token < elements.size() && !elements[token] ? findUntouched(token) : nullptr;
    }
    /// The attribute of that token to look at. One that is still to be made stays so: another that
    /// is like it, of no container, stands for it.
    const std::shared_ptr<Attribute>& look(std::uint64_t token) const {
        if (token < elements.size() && elements[token]) [[likely]]
            return elements[token];
        return lookAtUntouched(token);
    }

private:
    friend class AttrTable;  // makes what is asked for

    const std::shared_ptr<Attribute>& make(std::uint64_t token) const;
    const std::shared_ptr<Attribute>& lookAtUntouched(std::uint64_t token) const;
    const AttrTable* findUntouched(std::uint64_t token) const;
    void extend(std::uint64_t number) { elements.resize(elements.size() + number); }
    void makeRows(const std::vector<AttrDefinition>& rows, const AttrList* source);

    AttrContainer& container;
    std::vector<std::shared_ptr<Attribute>> elements;
    const AttrTable* table = nullptr;  // of the last level that was declared
};

}  // namespace QOR::AttributeContainer
