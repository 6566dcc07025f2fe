// The containers that the reads of this thread are in the middle of.
#pragma once

#include <AttributeContainer/ReadContext.h>

namespace QOR::AttributeContainer {

class AttrContainer;

/// Notes a container as being read, for as long as it lives.
///
/// A stream can put a reference to a container that it declared into another one. One that would
/// close a ring of containers is refused, since a ring can neither be walked nor be destroyed.
class OpenContainer {
public:
    explicit OpenContainer(const AttrContainer& container);
    OpenContainer(const OpenContainer&) = delete;
    OpenContainer& operator=(const OpenContainer&) = delete;
    ~OpenContainer();

    /// Whether `target` may become a part of the container that is being read: not when it is being
    /// read itself, nor while a container is read again that stands in several places already and
    /// could be a part of the target.
    static bool acceptsReference(const AttrContainer& target, const ReadContextBase& context);

private:
    const AttrContainer* container;
    OpenContainer* outer;
};

}  // namespace QOR::AttributeContainer
