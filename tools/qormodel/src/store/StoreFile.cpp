#include "store/StoreFile.h"

#include <QOR/KeyStoreSqlite.h>
#include <QOR/Text.h>

#include <filesystem>
#include <system_error>
#include <utility>

namespace qormodel {

namespace {
std::string textOf(keystore::Status status) {
    switch (status) {
        case keystore::FileNotFound: return "is not there";
        case keystore::AccessDenied: return "has keys below it";
        case keystore::WriteProtected: return "the store cannot be written";
        case keystore::InvalidParameter: return "a name is too long";
        case keystore::DiskFull: return "there is no room for it";
        case keystore::BadPathname: return "the path begins with \\: expected the name of a key";
        case keystore::Busy: return "another program keeps the store for itself";
        case keystore::BadStore: return "the store is damaged";
        case keystore::StoreIoFailed: return "the store cannot be read or written";
        case keystore::KeyDeleted: return "was removed by another program";
        default: return "the store answers with status " + std::to_string(status);
    }
}
}  // namespace

StoreFile::StoreFile(const std::string& name, WhenMissing whenMissing) : file(name) {
    std::error_code error;
    // Opening would make an empty store.
    if (whenMissing != WhenMissing::Make && !std::filesystem::exists(name, error))
        throw Failure(Place{name}, "cannot be read: there is no such file");
    isNew = !std::filesystem::exists(name, error);
    if (whenMissing == WhenMissing::FailForReading) copy = StoreCopy::inqFor(name);
    std::string why;
    store = keystore::openSqliteStore(copy ? copy->getName() : name, &why);
    if (store) return;
    // The copy's name says nothing to anybody.
    if (copy && why.starts_with(copy->getName())) why.replace(0, copy->getName().size(), name);
    throw Failure(why);
}

StoreFile::~StoreFile() {
    if (!isNew || !store) return;
    unsigned long numKeys = 0;
    unsigned long numValues = 0;
    const auto status =
        keystore::RegQueryInfoKeyA(store->root(), nullptr, nullptr, nullptr, &numKeys, nullptr,
                                   nullptr, &numValues, nullptr, nullptr, nullptr, nullptr);
    if (status != keystore::Success || numKeys != 0 || numValues != 0) return;
    store.reset();
    std::error_code ignored;
    for (const char* const end : {"", "-wal", "-shm"}) std::filesystem::remove(file + end, ignored);
}

Failure StoreFile::failure(const std::wstring& path, keystore::Status status) const {
    return failure(path, textOf(status));
}

Failure StoreFile::failure(const std::wstring& path, const std::string& text) const {
    return Failure(Place{file, 0, nameText(path)}, text);
}

StoreChange::StoreChange(const StoreFile& file) : file(file), transaction(*file.store) {
    if (transaction.status() != keystore::Success) throw file.failure({}, transaction.status());
}

void StoreChange::commit() {
    const auto status = transaction.commit();
    if (status != keystore::Success) throw file.failure({}, status);
}

std::optional<StoreKey> StoreKey::inq(const StoreFile& file, const std::wstring& path) {
    StoreKey opened(file, path);
    const auto status = keystore::RegOpenKeyExW(file.store->root(), path.c_str(), 0,
                                                keystore::KeyReadWrite, &opened.key);
    if (status == keystore::FileNotFound) return std::nullopt;
    if (status != keystore::Success) throw file.failure(path, status);
    return opened;
}

StoreKey StoreKey::make(const StoreFile& file, const std::wstring& path) {
    StoreKey opened(file, path);
    const auto status = keystore::RegCreateKeyW(file.store->root(), path.c_str(), &opened.key);
    if (status != keystore::Success) throw file.failure(path, status);
    return opened;
}

StoreKey::StoreKey(StoreKey&& other) noexcept
    : file(other.file), path(std::move(other.path)), key(std::exchange(other.key, nullptr)) {}

StoreKey::~StoreKey() {
    if (key) keystore::RegCloseKey(key);
}

std::vector<std::wstring> StoreKey::listSubkeys() const {
    return listNames([&](unsigned long index, wchar_t* name, unsigned long* size) {
        return keystore::RegEnumKeyExW(key, index, name, size, nullptr, nullptr, nullptr, nullptr);
    });
}

std::vector<std::wstring> StoreKey::listValues() const {
    return listNames([&](unsigned long index, wchar_t* name, unsigned long* size) {
        return keystore::RegEnumValueW(key, index, name, size, nullptr, nullptr, nullptr, nullptr);
    });
}

template <class Get> std::vector<std::wstring> StoreKey::listNames(const Get& get) const {
    std::vector<std::wstring> names;
    std::wstring buffer(16384, L'\0');  // the longest name is that of a value
    for (unsigned long index = 0;; ++index) {
        auto size = static_cast<unsigned long>(buffer.size());
        const auto status = get(index, buffer.data(), &size);
        if (status == keystore::NoMoreItems) return names;
        if (status != keystore::Success) throw file.failure(path, status);
        names.push_back(buffer.substr(0, size));
    }
}

std::optional<StoredValue> StoreKey::inqValue(const std::wstring& name) const {
    StoredValue value;
    unsigned long size = 0;
    for (;;) {  // another program may store a longer one in between
        const bool isSizeAsked = value.data.empty();
        const auto status =
            keystore::RegQueryValueExW(key, name.c_str(), nullptr, &value.type,
                                       isSizeAsked ? nullptr : value.data.data(), &size);
        if (status == keystore::FileNotFound) return std::nullopt;
        if (status != keystore::Success && status != keystore::MoreData)
            throw file.failure(keyBelow(path, name), status);
        if (status == keystore::Success && (!isSizeAsked || size == 0)) {
            value.data.resize(size);
            return value;
        }
        value.data.resize(size);
    }
}

void StoreKey::setValue(const std::wstring& name, const StoredValue& value) const {
    const auto status =
        keystore::RegSetValueExW(key, name.c_str(), 0, value.type, value.data.data(),
                                 static_cast<unsigned long>(value.data.size()));
    if (status != keystore::Success) throw file.failure(keyBelow(path, name), status);
}

bool StoreKey::rmValue(const std::wstring& name) const {
    const auto status = keystore::RegDeleteValueW(key, name.c_str());
    if (status == keystore::FileNotFound) return false;
    if (status != keystore::Success) throw file.failure(keyBelow(path, name), status);
    return true;
}

bool rmTree(const StoreFile& file, const std::wstring& path) {
    const auto status = keystore::RegDeleteTreeW(file.store->root(), path.c_str());
    if (status == keystore::FileNotFound) return false;
    if (status != keystore::Success) throw file.failure(path, status);
    return true;
}

std::wstring storeName(const std::string& text) {
    std::wstring name = QOR::wide(text);
    if (QOR::narrow(name, '?') != text) throw Failure('"' + nameText(name) + "\" is no UTF-8");
    return name;
}

std::wstring keyPath(const std::string& text) {
    std::wstring path = storeName(text);
    const std::size_t begin = path.find_first_not_of(L'\\');
    if (begin == std::wstring::npos || begin > 0) return path;  // which the store refuses
    for (auto place = path.find(L"\\\\"); place != std::wstring::npos;
         place = path.find(L"\\\\", place))
        path.erase(place, 1);
    if (path.ends_with(L'\\')) path.pop_back();
    return path;
}

std::string nameText(const std::wstring& name) { return QOR::narrow(name, '?'); }

std::wstring joinPairs(const std::wstring& text) {
    std::wstring joined;
    joined.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto unit = static_cast<char32_t>(text[i]);
        const char32_t next = i + 1 < text.size() ? static_cast<char32_t>(text[i + 1]) : 0;
        if ((unit & 0xfffffc00) == 0xd800 && (next & 0xfffffc00) == 0xdc00) {
            joined += static_cast<wchar_t>(0x10000 + ((unit & 0x3ff) << 10) + (next & 0x3ff));
            ++i;
        } else {
            joined += text[i];
        }
    }
    return joined;
}

std::wstring keyBelow(const std::wstring& path, const std::wstring& name) {
    if (name.empty()) return path;
    return path.empty() ? name : path + L'\\' + name;
}

}  // namespace qormodel
