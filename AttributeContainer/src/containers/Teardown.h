// Taking a deep tree apart without a deep recursion.
#pragma once

#include <AttributeContainer/Export.h>

#include <memory>

namespace QOR::AttributeContainer {

/// Ends the ownership of an element of a tree. Where a destruction runs already on this thread, the
/// element waits for its turn, so that a chain of any length ends on a flat call stack. Elements end
/// in the order in which they were given up, before the outermost destruction returns.
QOR_API void releaseInTurn(std::shared_ptr<void> element);

}  // namespace QOR::AttributeContainer
