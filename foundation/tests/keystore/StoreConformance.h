// What every key store must do: one suite, run against each of them.
//
// A test program compiles the sources of this folder and names its stores:
//
//     INSTANTIATE_TEST_SUITE_P(Stores, StoreConformance, testing::Values(StoreKind{...}));
#pragma once

#include "StoreKind.h"

#include <QOR/KeyStore.h>

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace QOR::keystore::Testing {

/// Closes its handle.
class Handle {
public:
    Handle() = default;
    explicit Handle(HKEY key) : key(key) {}
    Handle(Handle&& other) noexcept : key(other.key) { other.key = nullptr; }
    Handle& operator=(Handle&& other) noexcept {
        std::swap(key, other.key);
        return *this;
    }
    ~Handle() {
        if (key) RegCloseKey(key);
    }

    operator HKEY() const { return key; }

private:
    HKEY key = nullptr;
};

/// Opens a key; a null handle where that fails.
Handle opened(HKEY root, const wchar_t* path, unsigned long access = KeyAllAccess);
Handle created(HKEY root, const wchar_t* path, unsigned long access = KeyAllAccess);
Status openStatus(HKEY root, const wchar_t* path, unsigned long access = KeyRead);
Status createStatus(HKEY root, const wchar_t* path);
Status setBytes(HKEY key, const wchar_t* name, const std::string& bytes,
                unsigned long type = TypeBinary);

struct Answer {
    Status status;
    std::string bytes;
    unsigned long type;
    unsigned long size;
};
/// Asks for a value with a buffer of `capacity` bytes.
Answer query(HKEY key, const wchar_t* name, std::size_t capacity = 4096);

using Names = std::set<std::wstring>;
/// The names that the indices from 0 on give; a status other than NoMoreItems fails the test.
Names subkeysOf(HKEY key);
Names valuesOf(HKEY key);

class StoreConformance : public testing::TestWithParam<StoreKind> {
protected:
    void SetUp() override {
        store = GetParam().make();
        ASSERT_TRUE(store);
        root = store->root();
    }

    std::shared_ptr<Store> store;
    HKEY root = nullptr;
};

}  // namespace QOR::keystore::Testing
