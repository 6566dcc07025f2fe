// The system's own registry, to which every handle goes that is none of ours.
#pragma once

#include <QOR/KeyStore.h>

/// The operations of `QOR/KeyStore.h` on handles of the system; trees are copied without its help.
/// Where there is no registry no such handle is valid.
namespace QOR::keystore::systemKeys {

#if defined(_WIN32)

Status openKey(HKEY root, const wchar_t* subkey, unsigned long options, unsigned long access,
               HKEY* key);
Status createKey(HKEY root, const wchar_t* subkey, HKEY* key);
Status createKeyEx(HKEY root, const wchar_t* subkey, unsigned long reserved, wchar_t* keyClass,
                   unsigned long options, unsigned long access, const SecurityAttributes* security,
                   HKEY* key, unsigned long* disposition);
/// Leaves the root of a store open.
Status closeKey(HKEY key);
Status deleteKey(HKEY key, const wchar_t* subkey);
Status deleteTree(HKEY root, const wchar_t* subkey);
/// Keeps the system from storing a zero that happens to lie behind a text.
Status setValue(HKEY key, const wchar_t* name, unsigned long reserved, unsigned long type,
                const unsigned char* data, unsigned long size);
Status queryValue(HKEY key, const wchar_t* name, unsigned long* reserved, unsigned long* type,
                  unsigned char* data, unsigned long* size);
Status deleteValue(HKEY key, const wchar_t* name);
Status enumKey(HKEY key, unsigned long index, wchar_t* name, unsigned long* nameSize,
               unsigned long* reserved, wchar_t* keyClass, unsigned long* classSize,
               FileTime* lastWrite);
Status enumValue(HKEY key, unsigned long index, wchar_t* name, unsigned long* nameSize,
                 unsigned long* reserved, unsigned long* type, unsigned char* data,
                 unsigned long* dataSize);
Status queryInfo(HKEY key, char* keyClass, unsigned long* classSize, unsigned long* reserved,
                 unsigned long* numSubkeys, unsigned long* maxSubkeyLength,
                 unsigned long* maxClassLength, unsigned long* numValues,
                 unsigned long* maxValueNameLength, unsigned long* maxValueSize,
                 unsigned long* securityDescriptorSize, FileTime* lastWrite);
Status setSecurity(HKEY key, unsigned long what, void* descriptor);

#else

constexpr auto noKey = [](const auto&...) -> Status { return InvalidHandle; };
constexpr auto openKey = noKey, createKey = noKey, createKeyEx = noKey, closeKey = noKey,
               deleteKey = noKey, deleteTree = noKey, setValue = noKey, queryValue = noKey,
               deleteValue = noKey, enumKey = noKey, enumValue = noKey, queryInfo = noKey,
               setSecurity = noKey;

#endif

}  // namespace QOR::keystore::systemKeys
