// A key store in a file, as the commands use it: every operation succeeds or throws.
#pragma once

#include "Failure.h"
#include "store/StoreCopy.h"

#include <QOR/KeyStore.h>
#include <QOR/KeyTreeStore.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qormodel {

namespace keystore = QOR::keystore;
using keystore::StoredValue;

/// What to do where there is no store in the file.
enum class WhenMissing {
    Fail,
    FailForReading,  ///< as `Fail`; a store that may only be read is opened as a copy
    Make
};

/// An open store with the name of its file, for messages.
struct StoreFile {
    std::string file;
    std::unique_ptr<StoreCopy> copy;  ///< mostly null; goes behind what is open in it
    std::shared_ptr<keystore::Store> store;

    /// \throws Failure where the file is no key store, or cannot be read and written.
    StoreFile(const std::string& name, WhenMissing whenMissing);
    StoreFile(const StoreFile&) = delete;
    StoreFile& operator=(const StoreFile&) = delete;
    /// A file that was made here goes again where nothing came into it.
    ~StoreFile();

    /// A failure at a key or value of this store.
    Failure failure(const std::wstring& path, keystore::Status status) const;
    Failure failure(const std::wstring& path, const std::string& text) const;

private:
    bool isNew = false;
};

/// Many changes as one: without `commit` none of them stays.
class StoreChange {
public:
    /// \throws Failure where other programs keep the store.
    explicit StoreChange(const StoreFile& file);
    /// \throws Failure, and nothing is changed then.
    void commit();

private:
    const StoreFile& file;
    keystore::Transaction transaction;
};

/// An open key. Its operations throw Failure with the path of the key.
class StoreKey {
public:
    /// The key at a path with `\` between its names, the empty one being the root.
    /// \return none where it is missing.
    static std::optional<StoreKey> inq(const StoreFile& file, const std::wstring& path);
    /// The same, made with all levels above it where it is missing.
    static StoreKey make(const StoreFile& file, const std::wstring& path);
    StoreKey(StoreKey&& other) noexcept;
    StoreKey& operator=(StoreKey&&) = delete;
    ~StoreKey();

    const std::wstring& getPath() const { return path; }
    std::vector<std::wstring> listSubkeys() const;
    std::vector<std::wstring> listValues() const;
    std::optional<StoredValue> inqValue(const std::wstring& name) const;
    void setValue(const std::wstring& name, const StoredValue& value) const;
    /// \return false where there is none of that name.
    bool rmValue(const std::wstring& name) const;

private:
    template <class Get> std::vector<std::wstring> listNames(const Get& get) const;

    StoreKey(const StoreFile& file, std::wstring path) : file(file), path(std::move(path)) {}

    const StoreFile& file;
    std::wstring path;
    keystore::HKEY key = nullptr;
};

/// Removes a key with all below it; of the root what is below it. \return false where it is
/// missing.
bool rmTree(const StoreFile& file, const std::wstring& path);

/// A path or name that a user gives, as the store wants it. \throws Failure for what is no UTF-8.
std::wstring storeName(const std::string& text);
/// The path of a key as a user writes it, without separators that part nothing.
std::wstring keyPath(const std::string& text);
/// A path or name as UTF-8.
std::string nameText(const std::wstring& name);
/// Halves of pairs joined, as names of the store have them.
std::wstring joinPairs(const std::wstring& text);
/// The path of what hangs under `path` by that name.
std::wstring keyBelow(const std::wstring& path, const std::wstring& name);

}  // namespace qormodel
