// The switches of a thread that every change looks at.
#pragma once

#include "observation/ThreadWord.h"

namespace QOR::AttributeContainer {

/// Whether observing is blocked, whether a cached value is pending: bits of `Attribute`.
QOR_THREAD_WORD extern int tempFlags;

}  // namespace QOR::AttributeContainer
