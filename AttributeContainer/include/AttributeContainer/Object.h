// The hierarchical member of the container family: an object of a tree.
#pragma once

#include <AttributeContainer/ChildList.h>
#include <AttributeContainer/ContainerClass.h>

#include <QOR/Uuid.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace QOR::AttributeContainer {

/// The version of an object's class, as it is stored with the object; each number has 16 bits.
struct ClassVersion {
    std::uint32_t major = 0;
    std::uint32_t minor = 0;

    bool operator==(const ClassVersion&) const = default;
};

/// An object of a tree: beside its attributes and fields it has children, of which it is the owner,
/// and a weak link to its parent.
class QOR_API Object : public ContainerClass<Object, AttrContainer, "Object"> {
public:
    using Block::Block;
    ~Object() override;

    QOR_ATTRIBUTE(1, std::string, Action);
    QOR_ATTRIBUTE(2, std::string, Event);
    QOR_ATTRIBUTE(3, unsigned short, MajorVersion);
    QOR_ATTRIBUTE(4, unsigned short, MinorVersion);
    QOR_ATTRIBUTE(5, uuids::uuid, UUID);

    /// The keywords of an object's block in a stream.
    static const DataStructures::KeyTable keyTable;

    // The tree. ------------------------------------------------------------------------------------
    /// Adds a child at the end. A child has one parent at a time and is never moved by this. Names
    /// are compared now and not at a later rename. The caller does not add a root below itself.
    /// \param flags bits of `AddFlags`.
    /// \return false, and both objects as they were, for an empty pointer, a child that has a
    /// parent, a hook that says no, and a name that is taken.
    bool addChild(std::shared_ptr<Object> child, int flags);
    /// Removes a child; it lives on as long as somebody holds it. The number is for overriding
    /// classes. \return false for what is no child of this object.
    virtual bool rmChild(Object& child, int);
    virtual bool rmChild(std::uint64_t index, int);
    /// Hooks that are asked on the future parent and on the future child.
    virtual bool isChildAllowed(std::shared_ptr<Object> child, int flags);
    virtual bool isParentAllowed(Object& parent);
    /// Whether nothing of this object itself is kept without being understood; children and fields
    /// are asked by a walk.
    virtual bool holdsNoUnknownData();
    std::shared_ptr<Object> getParent() const { return parent.lock(); }
    const ChildList& getChildren() const { return children; }
    std::uint64_t getNumChildren() const { return children.getNumChildren(); }
    const std::shared_ptr<Object>& getChild(std::uint64_t index) const {
        return children.getChild(index);
    }
    const std::shared_ptr<Object>& inqChild(const std::string& name) const {
        return children.inqChild(name);
    }
    std::optional<std::uint64_t> lookupChild(const Object& child) const {
        return children.lookupChild(child);
    }
    /// The topmost ancestor; this object where it has no parent.
    std::shared_ptr<Object> findRoot();
    std::shared_ptr<const Object> findRoot() const;

    // Identity. ------------------------------------------------------------------------------------
    /// The identifier of this object, generated and stored at the first call.
    uuids::uuid getUuid();
    /// The identifier as it stands; nil until one was generated or set.
    uuids::uuid getUuid() const;
    void setUuid(const uuids::uuid& uuid);
    ClassVersion getStoredClassVersion() const;
    void setClassVersion(const ClassVersion& version);

    // Walks. ---------------------------------------------------------------------------------------
    /// Walks over this object and its children; `mode` as in `fieldVisitor`.
    virtual VisitorCore::VisitResult structureVisitor(GeneralVisitor<Object&>& visitor, int mode);
    VisitorCore::VisitResult structureVisitor(GeneralVisitor<const Object&>& visitor,
                                              int mode) const;
    VisitorCore::VisitResult fieldAndStructureVisitor(GeneralVisitor<AttrContainer&>& visitor,
                                                      int mode) override;
    VisitorCore::VisitResult observerVisitor(ObserverVisitor& visitor, bool recurse) override;

    // Paths. ---------------------------------------------------------------------------------------
    using AttrContainer::inqObserver;
    std::weak_ptr<const ObservingObject> inqObserver(
        const std::optional<const std::string>& path) const override;
    using AttrContainer::inqObjPath;
    /// The absolute path, "/" for a root.
    std::optional<std::string> inqObjPath() const override;
    /// The path as seen from `reference`, by the text of both paths; "." for the object itself, which
    /// no look-up takes.
    std::optional<std::string> inqObjPath(const Object& reference) const;
    /// The object that a path leads to; empty where it leads nowhere or to something else. Names
    /// between '/', matched without case; "/" in front is the root, "~" a parent.
    std::shared_ptr<Object> inqObject(const std::optional<std::string>& path);
    std::shared_ptr<const Object> inqObject(const std::optional<std::string>& path) const;

    // Streams. -------------------------------------------------------------------------------------
    /// Reads as `AttrContainer::readFrom` does, and up to the end of the stream or a "}"; children
    /// are added to those that are there. Where all is well with a document of one object, the
    /// stream is at its end afterwards.
    /// \return also ObjectBlockBroken, where the end of a block cannot be told.
    /// \throws std::invalid_argument for a malformed floating-point number.
    [[nodiscard]] ErrorPtr readFrom(std::istream& stream,
                                    std::shared_ptr<const ReadContextBase> context) override;
    [[nodiscard]] ErrorPtr writeTo(std::ostream& stream,
                                   std::shared_ptr<const WriteContextBase> context) override;

protected:
    /// Reads one child and adds it; a child of an unknown class becomes a `FallbackObject`.
    [[nodiscard]] virtual ErrorPtr readChild(std::istream& stream,
                                             std::shared_ptr<const ReadContextBase> context);

private:
    void nameStored() const override;
    void detach(ChildList::Children::const_iterator place);

    std::weak_ptr<Object> parent;
    ChildList children;
};

}  // namespace QOR::AttributeContainer
