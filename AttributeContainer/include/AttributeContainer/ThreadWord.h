// How words of state that belong to a thread are declared.
#pragma once

// A shared library pays a call for each access to a thread's state, unless it asks for a place in
// the block that every thread has from its start. Such places are few: single words only.
#if defined(__ELF__) && defined(__GNUC__)
#define QOR_THREAD_WORD [[gnu::tls_model("initial-exec")]] thread_local constinit
#else
#define QOR_THREAD_WORD thread_local constinit
#endif
