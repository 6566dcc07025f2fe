#include <QOR/KeyStore.h>

#if defined(_WIN32)

#include "keystore/SystemRoots.h"

#include <windows.h>

namespace QOR::keystore {

namespace {

// A part of the system's registry: its handles are the system's own.
class SystemStore : public Store {
public:
    explicit SystemStore(HKEY key) : key(key) { SystemRoots::the().add(key); }
    ~SystemStore() override {
        SystemRoots::the().remove(key);
        ::RegCloseKey(key);
    }

    HKEY root() override { return key; }

private:
    HKEY key;
};

}  // namespace

std::shared_ptr<Store> openSystemStore(const std::wstring& pathBelowCurrentUser) {
    HKEY key = nullptr;
    const Status status = ::RegCreateKeyExW(HKEY_CURRENT_USER, pathBelowCurrentUser.c_str(), 0,
                                            nullptr, 0, KeyAllAccess, nullptr, &key, nullptr);
    if (status != Success) return nullptr;
    return std::make_shared<SystemStore>(key);
}

}  // namespace QOR::keystore

#endif
