// The containers that the reads of this thread are in the middle of.
#pragma once

#include <AttributeContainer/ReadContext.h>

namespace QOR::AttributeContainer {

class AttrContainer;

/// Notes a container as being read, for as long as it lives.
///
/// A stream can put a reference to a container that it declared into another one. One that would
/// close a ring of containers is refused, since a ring can neither be walked nor be destroyed, and
/// so is one that would nest containers deeper than blocks may be, or bring in more of them than
/// the dictionary takes.
class OpenContainer {
public:
    OpenContainer(const AttrContainer& container, const ReadContextBase& context);
    OpenContainer(const OpenContainer&) = delete;
    OpenContainer& operator=(const OpenContainer&) = delete;
    ~OpenContainer();

    /// Whether `target` may become a part of the container that is being read: not when one that is
    /// being read is a part of the target, nor while one is read again that is a part of what was
    /// referred to before, nor below the deepest level that the context accepts. The dictionary of
    /// `context` remembers what was looked at, so that all references together cost no more than
    /// one walk over what they lead to.
    static bool acceptsReference(const AttrContainer& target, const ReadContextBase& context);

private:
    const AttrContainer* container;
    OpenContainer* outer;
    unsigned depth;       // how many are open, with this one
    bool isPartOfTarget;  // this container, or one that it is read for, is part of a target
};

}  // namespace QOR::AttributeContainer
