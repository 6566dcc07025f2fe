// A handle of a key store for the length of one operation.
#pragma once

#include <QOR/KeyStore.h>

#include <string>

namespace QOR::AttributeContainer {

/// Closes what it opened, unless that is the root itself, as an empty path gives it.
class OpenedKey {
public:
    explicit OpenedKey(keystore::HKEY root) : root(root) {}
    OpenedKey(const OpenedKey&) = delete;
    OpenedKey& operator=(const OpenedKey&) = delete;
    ~OpenedKey() {
        if (key && key != root) keystore::RegCloseKey(key);
    }

    bool open(const std::wstring& path, unsigned long access) {
        return accept(keystore::RegOpenKeyExW(root, path.c_str(), 0, access, &key));
    }
    bool create(const std::wstring& path) {
        return accept(keystore::RegCreateKeyW(root, path.c_str(), &key));
    }
    bool create(const std::wstring& path, const keystore::SecurityAttributes* security) {
        return accept(keystore::RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0,
                                                keystore::KeyAllAccess, security, &key, nullptr));
    }
    keystore::HKEY get() const { return key; }

private:
    bool accept(keystore::Status status) {
        if (status != keystore::Success) key = nullptr;
        return status == keystore::Success;
    }

    keystore::HKEY root;
    keystore::HKEY key = nullptr;
};

}  // namespace QOR::AttributeContainer
