// The ordered list of an object's children.
#pragma once

#include <AttributeContainer/Export.h>

#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <string>

namespace QOR::AttributeContainer {

class ChildIndex;
class FewNames;
class Object;

/// The children of one object, in the order in which they were added.
///
/// Owns its children. Names compare without case, because paths do. One thread at a time.
///
/// From some 16 children on the list looks names up in an index, which follows every change of a
/// name attribute. A class whose `getName` takes the name from elsewhere costs its siblings the
/// index, not the right answer, as long as the two differ when the child is indexed. A shorter list
/// is walked; where it is searched again and again, over names that are kept side by side.
class QOR_API ChildList {
public:
    using Children = std::list<std::shared_ptr<Object>>;

    ChildList();
    ChildList(const ChildList&) = delete;
    ChildList& operator=(const ChildList&) = delete;
    ~ChildList();

    std::uint64_t getNumChildren() const { return children.size(); }
    /// The child at `index`, 0 being the oldest; costs `index` steps.
    /// \return an empty pointer past the end. The reference lasts until the list changes.
    const std::shared_ptr<Object>& getChild(std::uint64_t index) const;
    /// The oldest child of that name; an empty pointer if none matches or `name` is empty. Costs
    /// the logarithm of the number of children, but for the first search, which looks at them all.
    const std::shared_ptr<Object>& inqChild(const std::string& name) const;
    /// The index of a child, found by identity; costs that many steps.
    std::optional<std::uint64_t> lookupChild(const Object& child) const;

    /// For walks that cost the number of the children; they last until the list changes.
    Children::const_iterator begin() const { return children.begin(); }
    Children::const_iterator end() const { return children.end(); }

private:
    friend class Object;  // adds and removes, since it keeps the child's parent link in step
    friend class ChildWalk;

    void append(std::shared_ptr<Object> child);
    std::shared_ptr<Object> remove(Children::const_iterator place);
    Children removeAll();
    /// Where a child stands, found by identity; `end()` for what is no child.
    Children::const_iterator find(const Object& child) const;
    /// Takes note of a child's name. \return its former one, where that is known.
    std::optional<std::string> nameStored(const Object& child);
    const std::shared_ptr<Object>& scan(const std::string& name) const;
    ChildIndex* lookupIndex() const;
    const FewNames* lookupNames() const;
    void forgetNames() const;

    Children children;
    std::uint64_t numRemoved = 0;  // tells walks when their place may be gone
    mutable std::unique_ptr<ChildIndex> index;  // none until a search makes it worth its cost
    mutable std::unique_ptr<FewNames> names;    // the same for a short list
    mutable std::uint8_t numScans = 0;          // of a short list since its last change
};

}  // namespace QOR::AttributeContainer
