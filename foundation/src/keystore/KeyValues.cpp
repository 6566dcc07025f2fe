#include <QOR/KeyStore.h>

#include "keystore/OpenKeys.h"
#include "keystore/SystemKeys.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace QOR::keystore {

namespace {

std::wstring_view nameOf(const wchar_t* name) { return name ? name : L""; }

// Puts a name into a buffer of `*size` characters, with a terminator behind it.
Status giveName(const std::wstring& name, wchar_t* buffer, unsigned long* size) {
    if (name.size() >= *size) return MoreData;
    *std::ranges::copy(name, buffer).out = 0;
    *size = static_cast<unsigned long>(name.size());
    return Success;
}

Status giveData(const StoredValue& value, unsigned long* type, unsigned char* data,
                unsigned long* size) {
    const auto stored = static_cast<unsigned long>(value.data.size());
    const bool fits = !data || stored <= *size;
    if (data && fits) std::ranges::copy(value.data, data);
    if (type) *type = value.type;
    if (size) *size = stored;
    return fits ? Success : MoreData;
}

template <class T> void give(T* place, std::size_t value) {
    if (place) *place = static_cast<T>(value);
}

void giveNoTime(FileTime* time) {
    if (time) *time = {};
}

}  // namespace

Status RegSetValueExW(HKEY key, const wchar_t* name, unsigned long reserved, unsigned long type,
                      const unsigned char* data, unsigned long size) {
    if (!OpenKeys::isOurs(key)) return systemKeys::setValue(key, name, reserved, type, data, size);
    const KeyUse use(key, SetValue);
    if (use.status() != Success) return use.status();
    if (!data && size > 0) return NoAccess;
    if (lengthOf(nameOf(name)) > maxValueName) return InvalidParameter;
    return use.store().setValue(use.node(), nameOf(name), type, data, size);
}

Status RegQueryValueExW(HKEY key, const wchar_t* name, unsigned long* reserved, unsigned long* type,
                        unsigned char* data, unsigned long* size) {
    if (!OpenKeys::isOurs(key))
        return systemKeys::queryValue(key, name, reserved, type, data, size);
    if (data && !size) return InvalidParameter;
    const KeyUse use(key, QueryValue);
    if (use.status() != Success) return use.status();
    StoredValue value;
    const Status status = use.store().inqValue(use.node(), nameOf(name), value);
    if (status == Success) return giveData(value, type, data, size);
    if (status == FileNotFound && !data) give(size, 0);
    return status;
}

Status RegDeleteValueW(HKEY key, const wchar_t* name) {
    if (!OpenKeys::isOurs(key)) return systemKeys::deleteValue(key, name);
    const KeyUse use(key, SetValue);
    if (use.status() != Success) return use.status();
    return use.store().rmValue(use.node(), nameOf(name));
}

Status RegEnumKeyExW(HKEY key, unsigned long index, wchar_t* name, unsigned long* nameSize,
                     unsigned long* reserved, wchar_t* keyClass, unsigned long* classSize,
                     FileTime* lastWrite) {
    if (!OpenKeys::isOurs(key))
        return systemKeys::enumKey(key, index, name, nameSize, reserved, keyClass, classSize,
                                   lastWrite);
    if (!name || !nameSize) return InvalidParameter;
    const KeyUse use(key, EnumerateSubkeys);
    if (use.status() != Success) return use.status();
    std::wstring found;
    const Status status = use.store().getSubkey(use.node(), index, found);
    if (status != Success) return status;
    if (const Status given = giveName(found, name, nameSize); given != Success) return given;
    if (keyClass && classSize && *classSize > 0) *keyClass = 0;
    give(classSize, 0);
    giveNoTime(lastWrite);
    return Success;
}

Status RegEnumValueW(HKEY key, unsigned long index, wchar_t* name, unsigned long* nameSize,
                     unsigned long* reserved, unsigned long* type, unsigned char* data,
                     unsigned long* dataSize) {
    if (!OpenKeys::isOurs(key))
        return systemKeys::enumValue(key, index, name, nameSize, reserved, type, data, dataSize);
    if (!name || !nameSize || (data && !dataSize)) return InvalidParameter;
    const KeyUse use(key, QueryValue);
    if (use.status() != Success) return use.status();
    std::wstring found;
    if (const Status status = use.store().getValueName(use.node(), index, found); status != Success)
        return status;
    if (found.size() >= *nameSize) return MoreData;
    if (type || dataSize) {
        StoredValue value;
        Status status = use.store().inqValue(use.node(), found, value);
        if (status == Success) status = giveData(value, type, data, dataSize);
        if (status != Success) return status;
    }
    return giveName(found, name, nameSize);
}

Status RegQueryInfoKeyA(HKEY key, char* keyClass, unsigned long* classSize, unsigned long* reserved,
                        unsigned long* numSubkeys, unsigned long* maxSubkeyLength,
                        unsigned long* maxClassLength, unsigned long* numValues,
                        unsigned long* maxValueNameLength, unsigned long* maxValueSize,
                        unsigned long* securityDescriptorSize, FileTime* lastWrite) {
    if (!OpenKeys::isOurs(key))
        return systemKeys::queryInfo(key, keyClass, classSize, reserved, numSubkeys,
                                     maxSubkeyLength, maxClassLength, numValues, maxValueNameLength,
                                     maxValueSize, securityDescriptorSize, lastWrite);
    if (keyClass && !classSize) return InvalidParameter;
    const KeyUse use(key, QueryValue);
    if (use.status() != Success) return use.status();
    KeyContents contents;
    const Status status = use.store().getContents(use.node(), contents);
    if (status != Success) return status;
    if (keyClass && *classSize > 0) *keyClass = 0;
    give(classSize, 0);
    give(numSubkeys, contents.numSubkeys);
    give(maxSubkeyLength, contents.longestSubkey);
    give(maxClassLength, 0);
    give(numValues, contents.numValues);
    give(maxValueNameLength, contents.longestValueName);
    give(maxValueSize, contents.largestValue);
    give(securityDescriptorSize, 0);
    giveNoTime(lastWrite);
    return Success;
}

}  // namespace QOR::keystore
