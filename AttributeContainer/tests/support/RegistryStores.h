// The stores against which the tests of the registry run: a program that compiles them names these.
#pragma once

#include "StoreKind.h"

#include <QOR/KeyStore.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace QOR::AttributeContainer::Testing {

std::vector<keystore::Testing::StoreKind> registryStores();

/// A test on an empty store.
class OnStore : public testing::TestWithParam<keystore::Testing::StoreKind> {
protected:
    void SetUp() override {
        store = GetParam().make();
        ASSERT_TRUE(store);
        root = store->root();
    }

    /// Whether a key is there.
    bool hasKey(const std::wstring& path) const {
        keystore::HKEY key = nullptr;
        const auto status = keystore::RegOpenKeyExW(root, path.c_str(), 0, keystore::KeyRead, &key);
        if (status == keystore::Success && key != root) keystore::RegCloseKey(key);
        return status == keystore::Success;
    }
    void makeKey(const std::wstring& path) const {
        const keystore::HKEY key = openKey(path, keystore::KeyRead);
        if (key && key != root) keystore::RegCloseKey(key);
    }
    /// A handle on a key, which is made where it is missing; the test closes it.
    keystore::HKEY openKey(const std::wstring& path,
                           unsigned long access = keystore::KeyAllAccess) const {
        keystore::HKEY key = nullptr;
        EXPECT_EQ(keystore::RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, access, nullptr,
                                            &key, nullptr),
                  keystore::Success);
        return key;
    }
    /// The bytes of a value as text, "-" if there is none.
    std::wstring valueAt(const std::wstring& path, const std::wstring& name) const {
        keystore::HKEY key = nullptr;
        if (keystore::RegOpenKeyExW(root, path.c_str(), 0, keystore::KeyRead, &key) !=
            keystore::Success)
            return L"-";
        unsigned char data[4096];
        unsigned long size = sizeof data;
        const auto status =
            keystore::RegQueryValueExW(key, name.c_str(), nullptr, nullptr, data, &size);
        if (key != root) keystore::RegCloseKey(key);
        return status == keystore::Success ? keystore::dataToText(data, size) : L"-";
    }

    std::shared_ptr<keystore::Store> store;
    keystore::HKEY root = nullptr;
};

}  // namespace QOR::AttributeContainer::Testing
