#include "keystore/SystemKeys.h"

#if defined(_WIN32)

#include "keystore/SystemRoots.h"

#include <windows.h>

#include <vector>

namespace QOR::keystore::systemKeys {

namespace {

bool isText(unsigned long type) {
    return type == TypeText || type == TypeExpandText || type == TypeMultiText;
}

FILETIME* systemTime(FileTime* time) { return reinterpret_cast<FILETIME*>(time); }

static_assert(sizeof(FileTime) == sizeof(FILETIME));
static_assert(sizeof(SecurityAttributes) == sizeof(SECURITY_ATTRIBUTES));

}  // namespace

Status openKey(HKEY root, const wchar_t* subkey, unsigned long options, unsigned long access,
               HKEY* key) {
    return ::RegOpenKeyExW(root, subkey, options, access, key);
}

Status createKey(HKEY root, const wchar_t* subkey, HKEY* key) {
    return ::RegCreateKeyW(root, subkey, key);
}

Status createKeyEx(HKEY root, const wchar_t* subkey, unsigned long reserved, wchar_t* keyClass,
                   unsigned long options, unsigned long access, const SecurityAttributes* security,
                   HKEY* key, unsigned long* disposition) {
    SECURITY_ATTRIBUTES attributes{};
    if (security) attributes = {security->length, security->descriptor, security->inheritHandle};
    return ::RegCreateKeyExW(root, subkey, reserved, keyClass, options, access,
                             security ? &attributes : nullptr, key, disposition);
}

Status closeKey(HKEY key) {
    if (SystemRoots::the().contains(key)) return Success;
    return ::RegCloseKey(key);
}

Status deleteKey(HKEY key, const wchar_t* subkey) { return ::RegDeleteKeyW(key, subkey); }

Status deleteTree(HKEY root, const wchar_t* subkey) {
    return ::RegDeleteTreeW(root, subkey && *subkey ? subkey : nullptr);
}

Status setValue(HKEY key, const wchar_t* name, unsigned long reserved, unsigned long type,
                const unsigned char* data, unsigned long size) {
    if (!data || size == 0 || !isText(type))
        return ::RegSetValueExW(key, name, reserved, type, data, size);
    // The system looks at the two bytes behind a text and stores them too if they are zero.
    std::vector<unsigned char> guarded(data, data + size);
    guarded.insert(guarded.end(), 2, 0xff);
    return ::RegSetValueExW(key, name, reserved, type, guarded.data(), size);
}

Status queryValue(HKEY key, const wchar_t* name, unsigned long* reserved, unsigned long* type,
                  unsigned char* data, unsigned long* size) {
    return ::RegQueryValueExW(key, name, reserved, type, data, size);
}

Status deleteValue(HKEY key, const wchar_t* name) { return ::RegDeleteValueW(key, name); }

Status enumKey(HKEY key, unsigned long index, wchar_t* name, unsigned long* nameSize,
               unsigned long* reserved, wchar_t* keyClass, unsigned long* classSize,
               FileTime* lastWrite) {
    if (!name || !nameSize) return InvalidParameter;
    return ::RegEnumKeyExW(key, index, name, nameSize, reserved, keyClass, classSize,
                           systemTime(lastWrite));
}

Status enumValue(HKEY key, unsigned long index, wchar_t* name, unsigned long* nameSize,
                 unsigned long* reserved, unsigned long* type, unsigned char* data,
                 unsigned long* dataSize) {
    if (!name || !nameSize) return InvalidParameter;
    return ::RegEnumValueW(key, index, name, nameSize, reserved, type, data, dataSize);
}

Status queryInfo(HKEY key, char* keyClass, unsigned long* classSize, unsigned long* reserved,
                 unsigned long* numSubkeys, unsigned long* maxSubkeyLength,
                 unsigned long* maxClassLength, unsigned long* numValues,
                 unsigned long* maxValueNameLength, unsigned long* maxValueSize,
                 unsigned long* securityDescriptorSize, FileTime* lastWrite) {
    return ::RegQueryInfoKeyA(key, keyClass, classSize, reserved, numSubkeys, maxSubkeyLength,
                              maxClassLength, numValues, maxValueNameLength, maxValueSize,
                              securityDescriptorSize, systemTime(lastWrite));
}

Status setSecurity(HKEY key, unsigned long what, void* descriptor) {
    return ::RegSetKeySecurity(key, what, descriptor);
}

}  // namespace QOR::keystore::systemKeys

#endif
