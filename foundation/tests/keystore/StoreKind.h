// The stores that tests run against.
#pragma once

#include <QOR/KeyStore.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace QOR::keystore::Testing {

/// A way to an empty store.
struct StoreKind {
    std::string name;
    std::function<std::shared_ptr<Store>()> make;
    /// The system's registry has its own order, and its own limits beyond those that it documents.
    bool isSystem = false;
};

inline void PrintTo(const StoreKind& kind, std::ostream* stream) { *stream << kind.name; }

/// For the names of tests.
inline std::string nameOfStore(const testing::TestParamInfo<StoreKind>& info) {
    return info.param.name;
}

#if defined(_WIN32)
/// An empty part of the system's registry, which goes with the last pointer to it.
inline std::shared_ptr<Store> makeSystemStore() {
    // Of this program alone: several run at a time.
    static const std::wstring path =
        L"Software\\QORAttributeContainerTests_" + std::to_wstring(std::random_device{}());
    static const auto remove = [] {
        const auto currentUser = static_cast<std::intptr_t>(static_cast<std::int32_t>(0x80000001));
        RegDeleteTreeW(reinterpret_cast<HKEY>(currentUser), path.c_str());
    };
    remove();
    auto store = openSystemStore(path);
    return std::shared_ptr<Store>(store.get(), [store](Store*) mutable {
        store.reset();
        remove();
    });
}
#endif

/// The stores that come with the foundation.
inline std::vector<StoreKind> ownStores() {
    std::vector<StoreKind> kinds{{"Memory", [] { return makeMemoryStore(); }}};
#if defined(_WIN32)
    kinds.push_back({"System", makeSystemStore, true});
#endif
    return kinds;
}

}  // namespace QOR::keystore::Testing
