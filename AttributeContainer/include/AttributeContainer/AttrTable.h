// The attributes that one class of a chain declares, and what they are like while untouched.
#pragma once

#include <AttributeContainer/AttrDefinition.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace QOR::AttributeContainer {

class AttrList;

/// The rows of one class with their defaults, linked to those of its base. Lists make the attributes
/// of a table when the first of them is asked for: nobody can tell, and of most objects some class
/// level is never looked at.
class QOR_API AttrTable {
public:
    /// Gives the attributes of the table in a list their defaults.
    using SetDefaults = void (*)(AttrList& list);

    /// \param rows with ascending tokens without a gap; they outlive the table, as `base` does
    /// \param base the table of the next class up that has one; may be null
    AttrTable(const std::vector<AttrDefinition>& rows, SetDefaults setDefaults,
              const AttrTable* base);

    const std::vector<AttrDefinition>& getRows() const { return rows; }
    std::uint64_t getFirstToken() const { return firstToken; }
    std::uint64_t getLastToken() const { return firstToken + rows.size() - 1; }
    /// The token of a row that makes an attribute, for a row may be of a type that no table can
    /// make; all ones if there is none.
    std::uint64_t getMadeToken() const { return madeToken; }
    /// The table with the row of that token, this or one up the chain; null if there is none.
    const AttrTable* find(std::uint64_t token) const {
        const AttrTable* table = this;
        while (table && token - table->firstToken >= table->rows.size()) table = table->base;
        return table;
    }
    /// Makes all attributes of the table in a list.
    void makeAttributes(AttrList& list) const;
    /// Gives those in a list their defaults.
    void giveDefaults(AttrList& list) const { setDefaults(list); }
    /// An attribute like those that nobody has touched, to look at; an empty pointer where a row
    /// makes none. It lives to the end of the program and has no container.
    const std::shared_ptr<Attribute>& getSample(std::uint64_t token) const;

private:
    const AttrList& makeSamples() const;

    const std::vector<AttrDefinition>& rows;
    SetDefaults setDefaults;
    const AttrTable* base;
    std::uint64_t firstToken;
    std::uint64_t madeToken;
    mutable std::once_flag samplesMade;
    // For ever: streams are written to the very end.
    mutable std::atomic<const AttrList*> samples{nullptr};
};

}  // namespace QOR::AttributeContainer
