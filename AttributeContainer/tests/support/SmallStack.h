// Runs a piece of code on a thread with a call stack of a given size, for tests.
#pragma once

#include <cstddef>

#if __has_include(<pthread.h>)
#include <pthread.h>

namespace QOR::AttributeContainer::Testing {

/// Calls `act` on such a thread and waits for its end. \return false if there is no such thread.
template <class Act> bool runOnStackOf(std::size_t bytes, Act act) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_t thread;
    const auto call = [](void* argument) -> void* {
        (*static_cast<Act*>(argument))();
        return nullptr;
    };
    const bool isRunning = pthread_attr_setstacksize(&attributes, bytes) == 0 &&
                           pthread_create(&thread, &attributes, call, &act) == 0;
    pthread_attr_destroy(&attributes);
    return isRunning && pthread_join(thread, nullptr) == 0;
}

}  // namespace QOR::AttributeContainer::Testing
#endif
