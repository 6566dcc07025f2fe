// The mark for what a shared library of this house shows to its users.
#pragma once

#if defined(_WIN32)
// The build exports every symbol there, so that the mark has nothing to add.
#define QOR_API
#else
#define QOR_API __attribute__((visibility("default")))
#endif
