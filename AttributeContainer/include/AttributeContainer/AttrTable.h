// The attributes that one class of a chain declares, and what they are like while untouched.
#pragma once

#include <AttributeContainer/AttrDefinition.h>

#include <atomic>
#include <cstdint>
#include <functional>
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
    /// \param rows with ascending tokens without a gap; they outlive the table, as `base` does
    /// \param base the table of the next class up that has one; may be null
    AttrTable(const std::vector<AttrDefinition>& rows, const AttrTable* base);
    AttrTable(const AttrTable&) = delete;
    AttrTable& operator=(const AttrTable&) = delete;
    ~AttrTable();

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

    /// The defaults are those of the first object that is made: lets `take` give them to the samples,
    /// by `takeDefault`, and is done with it once it returns.
    /// \return whether this was the first object
    bool takeDefaults(const std::function<void()>& take) const {
        return !areDefaultsTaken.load(std::memory_order_acquire) && takeFirstDefaults(take);
    }
    /// The sample of a row that has a default, to be given its value.
    /// \throws std::out_of_range where the row makes no attribute
    Attribute& takeDefault(std::uint64_t token) const;

    /// Makes all attributes of the table in a list, with the defaults that were taken; none where
    /// an exception leaves the call.
    void makeAttributes(AttrList& list) const;
    /// An attribute like those that nobody has touched, to look at; an empty pointer where a row
    /// makes none. It lives to the end of the program and has no container.
    const std::shared_ptr<Attribute>& getSample(std::uint64_t token) const;

private:
    bool takeFirstDefaults(const std::function<void()>& take) const;
    const AttrList& getSamples() const;

    const std::vector<AttrDefinition>& rows;
    const AttrTable* base;
    std::uint64_t firstToken;
    std::uint64_t madeToken;
    // Made by the first who wants them, whatever thread that is on.
    mutable std::mutex defaultsMutex;
    mutable std::mutex samplesMutex;
    mutable std::atomic<bool> areDefaultsTaken{false};
    mutable std::atomic<const AttrList*> samples{nullptr};
    mutable std::vector<std::uint64_t> withDefault;  // the tokens of rows
};

}  // namespace QOR::AttributeContainer
