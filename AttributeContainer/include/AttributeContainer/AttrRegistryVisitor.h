// The visitors that lay a container tree into a key store and take it out again.
//
// Each level of the tree is a key, each attribute a named value with the text form of its value.
// The container on which the walk begins is the key that the visitor was given.
#pragma once

#include <AttributeContainer/Export.h>
#include <AttributeContainer/RegKeys.h>
#include <AttributeContainer/Visitor.h>

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace QOR::AttributeContainer {

/// The base of both: moves the prefixes of its keys along with the walk, and leaves the attributes
/// to derived classes. A walk needs at least one key that could be opened, or it ends at its first
/// container.
class QOR_API AttrRegistryVisitor : public AttributeVisitor {
public:
    ~AttrRegistryVisitor() override;
    AttrRegistryVisitor(const AttrRegistryVisitor&) = delete;
    AttrRegistryVisitor& operator=(const AttrRegistryVisitor&) = delete;

    VisitResult visit(Attribute& attribute) override = 0;
    using AttributeVisitor::visitDone;
    VisitResult visitDone(AttrContainer& container) override;
    /// Goes a level down. Of two siblings of one name only the first is entered.
    VisitResult visit(AttrContainer& container) override;

protected:
    /// Opens a handle of its own on each key, for reading or writing; keys that are null or cannot
    /// be opened are left out.
    AttrRegistryVisitor(const RegKeysArray& keys, bool writing, unsigned first, unsigned last);

    /// The keys of the level where the walk is.
    const std::vector<std::shared_ptr<RegKeys>>& getKeys() const { return keys; }
    /// Whether an attribute belongs into a store: its row does not keep it out.
    static bool isStored(const Attribute& attribute);

private:
    /// A container on the way down.
    struct LevelFrame {
        std::optional<std::string> name;  // its part of the path
        AttrContainer& container;
        std::set<std::string> usedNames;  // what its fields have taken so far
    };

    /// Moves the keys to the level on top; when writing, makes the key there.
    bool updateKeys();

    bool writing;
    std::vector<std::shared_ptr<RegKeys>> keys;
    std::vector<std::string> basePrefixes;
    std::vector<LevelFrame> frames;
};

/// Loads attributes from one or several keys; of several that hold a value the last one wins.
///
/// An attribute with no stored text stays as it is, and so does one of floating-point numbers whose
/// stored text is a malformed number, such as "1.2.3" or "1e". A text that begins as no number at
/// all gives 0, for whole and for floating-point numbers; a bool is false unless it reads "true" in
/// whatever case. Nothing is thrown.
class QOR_API AttrReadRegistry : public AttrRegistryVisitor {
public:
    /// \param notify whether observers hear of the load.
    AttrReadRegistry(const RegKeysArray& keys, bool notify, unsigned int first, unsigned int last);
    AttrReadRegistry(std::shared_ptr<const RegKeys> key, bool notify, unsigned int first,
                     unsigned int last);
    ~AttrReadRegistry() override;

    using AttrRegistryVisitor::visit;
    VisitResult visit(Attribute& attribute) override;

    /// How many attributes took a stored text so far, be it the value that they had.
    int getNumRead() const { return numRead; }

private:
    bool notify;
    int numRead = 0;
};

/// Stores attributes under one or several keys.
///
/// What a key refuses, be it for a full disk, is left out and the walk goes on: store within a
/// `keystore::Transaction` and look at what its `commit` returns. A walk that could not make the
/// key of a container passes that one by and does not return Continue.
class QOR_API AttrWriteRegistry : public AttrRegistryVisitor {
public:
    AttrWriteRegistry(const RegKeysArray& keys, unsigned int first, unsigned int last);
    AttrWriteRegistry(std::shared_ptr<const RegKeys> key, unsigned int first, unsigned int last);
    ~AttrWriteRegistry() override;

    using AttrRegistryVisitor::visit;
    VisitResult visit(Attribute& attribute) override;
};

}  // namespace QOR::AttributeContainer
