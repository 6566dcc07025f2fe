// The roots of stores on the system's registry, which nobody but their store closes.
#pragma once

#include <QOR/KeyStore.h>

#include <mutex>
#include <set>

namespace QOR::keystore {

class SystemRoots {
public:
    /// Never destroyed, as the table of our own handles.
    static SystemRoots& the() {
        static SystemRoots& roots = *new SystemRoots;
        return roots;
    }

    bool contains(HKEY key) {
        const std::lock_guard lock(mutex);
        return roots.contains(key);
    }
    void add(HKEY key) {
        const std::lock_guard lock(mutex);
        roots.insert(key);
    }
    void remove(HKEY key) {
        const std::lock_guard lock(mutex);
        roots.erase(key);
    }

private:
    std::mutex mutex;
    std::set<HKEY> roots;
};

}  // namespace QOR::keystore
