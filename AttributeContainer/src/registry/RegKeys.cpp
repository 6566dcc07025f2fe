#include <AttributeContainer/RegKeys.h>

#include "registry/OpenedKey.h"

#include <QOR/Text.h>

#include <algorithm>
#include <array>
#include <memory>

namespace QOR::AttributeContainer {

using namespace keystore;

namespace {

constexpr char separator = '\\';
constexpr char unknownCharacter = '_';
constexpr std::size_t textLimit = 1024;  // a stored text has fewer bytes

struct LocalDeleter {
    void operator()(void* memory) const { LocalFree(memory); }
};
using Descriptor = std::unique_ptr<void, LocalDeleter>;

// A descriptor with a null list, which gives everybody access; null where none can be made.
Descriptor descriptorForEveryone() {
    constexpr unsigned zeroed = 64;
    constexpr unsigned long descriptorSize = 40;
    Descriptor descriptor(LocalAlloc(zeroed, descriptorSize));
    if (!descriptor || !InitializeSecurityDescriptor(descriptor.get(), 1)) return nullptr;
    if (!SetSecurityDescriptorDacl(descriptor.get(), 1, nullptr, 0)) return nullptr;
    return descriptor;
}

// The root's own handle is used with no path, and closed by nobody here.
bool openPrefix(OpenedKey& opened, const std::wstring& prefix, unsigned long access) {
    return prefix.empty() || opened.open(prefix, access);
}

}  // namespace

RegKeys::RegKeys(const std::string& prefix, HKEY root, bool owned) {
    setPrefix(prefix, root, owned);
}

RegKeys::~RegKeys() {
    if (owned) RegCloseKey(root);
}

void RegKeys::setPrefix(const std::string& newPrefix) {
    prefix = newPrefix;
    widePrefix = wide(newPrefix);
}

void RegKeys::setPrefix(const std::string& newPrefix, HKEY newRoot, bool nowOwned) {
    // Another text for the same root is ignored: callers rely on a prefix that stays once set.
    if (!prefix.empty() && root == newRoot && compareIgnoreCase(prefix, newPrefix) != 0) return;
    if (owned) RegCloseKey(root);
    owned = nowOwned;
    root = newRoot;
    // Below the old prefix, which still stands.
    if (!newPrefix.empty()) createKey(newPrefix, false);
    setPrefix(newPrefix);
}

std::wstring RegKeys::pathOf(const std::string& key) const {
    return wide(prefix.empty() ? key : prefix + separator + key);
}

bool RegKeys::checkKey(const std::string& key, bool forWrite) const {
    OpenedKey opened(root);
    return opened.open(pathOf(key), forWrite ? KeyWrite : KeyRead);
}

bool RegKeys::createKey(const std::string& key, bool everyone) const {
    const std::wstring path = key.empty() ? widePrefix : pathOf(key);
    OpenedKey opened(root);
    if (!everyone) return opened.create(path);
    const Descriptor descriptor = descriptorForEveryone();
    if (!descriptor) return false;
    const SecurityAttributes security{sizeof(SecurityAttributes), descriptor.get(), 1};
    return opened.create(path, &security);
}

bool RegKeys::deleteKey(const std::string& key) const {
    return RegDeleteKeyW(root, wide(key).c_str()) == Success;
}

bool RegKeys::deleteTree(const std::string& key) const {
    const bool isJoined = prefix.ends_with(separator) || key.starts_with(separator);
    const std::string path = isJoined ? prefix + key : prefix + separator + key;
    return RegDeleteTreeW(root, wide(path).c_str()) == Success;
}

bool RegKeys::deleteValue(const std::string& name) const {
    return RegDeleteValueW(root, wide(name).c_str()) == Success;
}

bool RegKeys::copyTree(const std::string& source, const std::string& target) {
    if (source.empty() || target.empty()) return false;
    OpenedKey from(root);
    if (!from.open(wide(prefix + source), KeyRead)) return false;
    OpenedKey to(root);
    if (!to.create(wide(prefix + target), nullptr)) return false;
    return RegCopyTreeW(from.get(), L"", to.get()) == Success;
}

bool RegKeys::setKey(const std::string& name, const std::string& value) const {
    auto data = textToData(wide(value));
    const auto size = static_cast<unsigned long>(data.size());
    data.push_back(0);  // an empty text must not be null data, which deletes a key
    return setKey(name, data.data(), size, TypeExpandText);
}

bool RegKeys::setKey(const std::string& name, const unsigned char* data, unsigned long size,
                     unsigned long type) const {
    OpenedKey opened(root);
    if (!openPrefix(opened, widePrefix, KeyWrite)) return false;
    const HKEY key = prefix.empty() ? root : opened.get();
    const std::wstring wideName = wide(name);
    const Status status = data ? RegSetValueExW(key, wideName.c_str(), 0, type, data, size)
                               : RegDeleteKeyW(key, wideName.c_str());
    return status == Success;
}

std::string RegKeys::queryKey(const std::string& name) const {
    std::array<unsigned char, textLimit> buffer;
    unsigned long size = textLimit - 1;
    unsigned long type = 0;
    if (!queryKey(name, buffer.data(), &size, &type)) return {};
    // The last character counts as a terminator, which setKey leaves out: readers and writers of
    // stored settings rely on the difference.
    const unsigned long numUnits = size / 2;
    if (numUnits < 2) return {};
    return narrow(dataToText(buffer.data(), 2 * (numUnits - 1)), unknownCharacter);
}

bool RegKeys::queryKey(const std::string& name, unsigned char* data, unsigned long* size,
                       unsigned long* type) const {
    if (!data || !size || !type || *size == 0) return false;
    OpenedKey opened(root);
    if (!openPrefix(opened, widePrefix, KeyRead)) return false;
    const HKEY key = prefix.empty() ? root : opened.get();
    return RegQueryValueExW(key, wide(name).c_str(), nullptr, type, data, size) == Success;
}

std::vector<std::string> RegKeys::enumerateKeys() {
    std::vector<std::string> names;
    OpenedKey opened(root);
    if (!opened.open(widePrefix, KeyRead)) return names;
    unsigned long numKeys = 0;
    unsigned long longest = 0;
    if (RegQueryInfoKeyA(opened.get(), nullptr, nullptr, nullptr, &numKeys, &longest, nullptr,
                         nullptr, nullptr, nullptr, nullptr, nullptr) != Success)
        return names;
    std::wstring buffer(longest + 1, L'\0');
    for (unsigned long index = 0; index < numKeys; ++index) {
        auto size = static_cast<unsigned long>(buffer.size());
        FileTime time;
        if (RegEnumKeyExW(opened.get(), index, buffer.data(), &size, nullptr, nullptr, nullptr,
                          &time) != Success)
            return names;
        names.push_back(narrow(buffer.substr(0, size), unknownCharacter));
    }
    return names;
}

std::string RegKeys::getSubKey(int index) const {
    std::array<wchar_t, 260> name;
    unsigned long size = name.size();
    FileTime time;
    const Status status = RegEnumKeyExW(root, static_cast<unsigned long>(index), name.data(), &size,
                                        nullptr, nullptr, nullptr, &time);
    if (status != Success) return {};
    return narrow(std::wstring(name.data(), size), unknownCharacter);
}

std::string RegKeys::getSubValue(int index) const {
    std::array<wchar_t, 260> name;
    unsigned long size = name.size();
    const Status status = RegEnumValueW(root, static_cast<unsigned long>(index), name.data(), &size,
                                        nullptr, nullptr, nullptr, nullptr);
    if (status != Success) return {};
    return narrow(std::wstring(name.data(), size), unknownCharacter);
}

bool RegKeys::setAccessToEveryOne(const std::string& key) const {
    constexpr unsigned long listOfUsers = 4;
    OpenedKey opened(root);
    if (!opened.open(pathOf(key), KeyReadWriteDac)) return false;
    const Descriptor descriptor = descriptorForEveryone();
    return descriptor && RegSetKeySecurity(opened.get(), listOfUsers, descriptor.get()) == Success;
}

std::shared_ptr<RegKeys> RegKeys::createFrom(bool forWrite) const {
    HKEY key = nullptr;
    const Status status =
        RegOpenKeyExW(root, widePrefix.c_str(), 0, forWrite ? KeyReadWrite : KeyRead, &key);
    if (status != Success) return nullptr;
    return std::make_shared<RegKeys>("", key, true);
}

int RegKeys::stringToMultiSZ(unsigned char* buffer, std::uint64_t size, const std::string& text) {
    const std::uint64_t needed = 2 * std::uint64_t{text.size()} + 4;
    if (!buffer || size == 0 || text.empty() || needed > size) return 0;
    // UTF-8 never has fewer bytes than UTF-16 has units, so the characters always have room.
    const auto data = textToData(wide(text));
    auto* const end = std::ranges::copy(data, buffer).out;
    std::fill(end, buffer + needed, static_cast<unsigned char>(0));
    return static_cast<int>(needed);
}

}  // namespace QOR::AttributeContainer
