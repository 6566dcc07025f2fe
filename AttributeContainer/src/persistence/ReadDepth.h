// How deep the children and fields lie that the thread is reading.
#pragma once

#include <AttributeContainer/ReadContext.h>

namespace QOR::AttributeContainer {

/// Counts one nested child or field of a read for as long as it lives, so that a stream cannot nest
/// them until the call stack is used up. All reads that the thread has open count together, since
/// they share its stack. Costs nothing but the counting.
class ReadDepth {
public:
    explicit ReadDepth(const ReadContextBase& context)
        : tooDeep(++openLevels > context.getMaxDepth()) {}
    ReadDepth(const ReadDepth&) = delete;
    ReadDepth& operator=(const ReadDepth&) = delete;
    ~ReadDepth() { --openLevels; }

    /// Whether this level lies below the deepest one that the context accepts. The limit is the one
    /// that stood when the level was opened.
    bool isTooDeep() const { return tooDeep; }

private:
    static inline constinit thread_local unsigned openLevels = 0;

    bool tooDeep;
};

}  // namespace QOR::AttributeContainer
