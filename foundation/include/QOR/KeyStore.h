// A hierarchical key store: keys with subkeys and named values, in memory, in a file or in the
// system's registry.
//
// The operations carry the names, the argument order, the statuses and the manners of the Windows
// registry. They go by handle: one of a store of ours to that store and, on Windows, every other
// one to the system.
//
// - A path is the names of keys with '\' between them. Trailing and doubled separators count for
//   nothing; a leading one is `BadPathname`. The name of a key has 1 to 255 characters, the name
//   of a value up to 16,383; the empty one is the key's default value. Names keep their case and
//   compare without it. Sizes of names count the characters of the wide text.
// - Wide text in stored data is UTF-16, two bytes a unit, low byte first, on every system.
// - Pointers that a caller does not need may be null. A status of 0 is success.
// - A handle serves any number of threads; one that is closed, or whose store is gone, answers with
//   `InvalidHandle`, one whose key was deleted with `KeyDeleted`.
#pragma once

#include <QOR/Export.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#if defined(_WIN32)
struct HKEY__;
#endif

namespace QOR::keystore {

#if defined(_WIN32)
using HKEY = ::HKEY__*;  // the system's own, without its header
#else
struct OpenKeyTag;
using HKEY = OpenKeyTag*;  // never dereferenced
#endif

/// The result of an operation; 0 is success.
using Status = long;

constexpr Status Success = 0;
constexpr Status FileNotFound = 2;  ///< there is no such key or value
constexpr Status AccessDenied = 5;  ///< the handle lacks the right, or the key has subkeys
constexpr Status InvalidHandle = 6;
constexpr Status NotEnoughMemory = 8;
constexpr Status WriteProtected = 19;    ///< the store cannot be written
constexpr Status NotSupported = 50;      ///< this store cannot do that
constexpr Status InvalidParameter = 87;  ///< also: a name that is too long
constexpr Status DiskFull = 112;
constexpr Status BadPathname = 161;     ///< the path begins with a separator
constexpr Status Busy = 170;            ///< another process has kept the store for too long
constexpr Status MoreData = 234;        ///< the buffer is too small
constexpr Status NoMoreItems = 259;     ///< there is nothing at that index
constexpr Status NoAccess = 998;        ///< null data with a size that is not 0
constexpr Status BadStore = 1009;       ///< the store is damaged
constexpr Status StoreIoFailed = 1016;  ///< the store could not be read or written
constexpr Status KeyDeleted = 1018;
constexpr Status UnknownRevision = 1305;

/// What a handle may be used for.
constexpr unsigned long QueryValue = 0x1;
constexpr unsigned long SetValue = 0x2;
constexpr unsigned long EnumerateSubkeys = 0x8;
constexpr unsigned long WriteDac = 0x40000;
constexpr unsigned long KeyRead = 0x20019;
constexpr unsigned long KeyWrite = 0x20006;
constexpr unsigned long KeyReadWrite = 0x2001F;
constexpr unsigned long KeyReadWriteDac = 0x60019;
constexpr unsigned long KeyAllAccess = 0xF003F;

/// The types of values. The store keeps them and gives them no meaning.
constexpr unsigned long TypeText = 1;
constexpr unsigned long TypeExpandText = 2;
constexpr unsigned long TypeBinary = 3;
constexpr unsigned long TypeMultiText = 7;

/// Whether `RegCreateKeyExW` made its key.
constexpr unsigned long CreatedNewKey = 1;
constexpr unsigned long OpenedExistingKey = 2;

/// When a key was last written, in units of 100 ns since 1601. Stores of ours keep no times and
/// give 0.
struct FileTime {
    unsigned long low;
    unsigned long high;
};

/// Who may use a new key.
struct SecurityAttributes {
    unsigned long length;  ///< of this structure: 24
    void* descriptor;
    int inheritHandle;
};

// Keys.
// --------------------------------------------------------------------------------------------

/// Opens a key below `root`; an empty or null path opens `root` itself once more, or gives it back
/// if it is the root of a store.
/// \return FileNotFound where it is missing, with a null handle in `key`.
QOR_API Status RegOpenKeyExW(HKEY root, const wchar_t* subkey, unsigned long options,
                             unsigned long access, HKEY* key);
/// Opens a key with full access and makes all levels that are missing: a store of ours makes all of
/// them or none if it knows transactions. What stands ahead of a name that is too long is made.
QOR_API Status RegCreateKeyW(HKEY root, const wchar_t* subkey, HKEY* key);
/// The same with the access given. Stores of ours keep no security.
QOR_API Status RegCreateKeyExW(HKEY root, const wchar_t* subkey, unsigned long reserved,
                               wchar_t* keyClass, unsigned long options, unsigned long access,
                               const SecurityAttributes* security, HKEY* key,
                               unsigned long* disposition);
/// Closes a handle. The root of a store stays open, and closing it is a success.
QOR_API Status RegCloseKey(HKEY key);
/// Deletes a key and its values; an empty path means the key of the handle itself.
/// \return AccessDenied for a key with subkeys, and for the root of a store.
QOR_API Status RegDeleteKeyW(HKEY key, const wchar_t* subkey);
/// Deletes a key and all below it: a store of ours wholly or not at all if it knows transactions.
/// An empty or null path empties the key of the handle, which itself stays.
QOR_API Status RegDeleteTreeW(HKEY root, const wchar_t* subkey);
/// Copies the values and subkeys of a key into an open one, of the same or of another store. What
/// the target has of other names stays. A copy into the source's own subtree ends. A store of ours
/// copies the source as it was at one moment, and wholly or not at all if it knows transactions.
QOR_API Status RegCopyTreeW(HKEY source, const wchar_t* subkey, HKEY target);

// Values.
// ------------------------------------------------------------------------------------------

/// Stores exactly these bytes, in the place of what the name held. A name keeps the case in which
/// it was first given. \return NoAccess for null data with a size.
QOR_API Status RegSetValueExW(HKEY key, const wchar_t* name, unsigned long reserved,
                              unsigned long type, const unsigned char* data, unsigned long size);
/// Reads them. `size` goes in as the size of the buffer and comes out as the stored one.
/// \return MoreData for a buffer that is too small: it stays as it is, type and size are set. With
/// null data only these are asked for. InvalidParameter for data without a size.
QOR_API Status RegQueryValueExW(HKEY key, const wchar_t* name, unsigned long* reserved,
                                unsigned long* type, unsigned char* data, unsigned long* size);
QOR_API Status RegDeleteValueW(HKEY key, const wchar_t* name);

// Lists.
// -------------------------------------------------------------------------------------------

/// The subkey at an index, in the order of their names without case. `nameSize` goes in as the size
/// of the buffer, terminator included, and comes out as the length of the name without it. Walking
/// up or down the indices costs the same for each.
/// \return NoMoreItems past the last; MoreData for a buffer that is too small, with all untouched.
QOR_API Status RegEnumKeyExW(HKEY key, unsigned long index, wchar_t* name, unsigned long* nameSize,
                             unsigned long* reserved, wchar_t* keyClass, unsigned long* classSize,
                             FileTime* lastWrite);
/// The value at an index; `data` and `dataSize` work as in RegQueryValueExW.
QOR_API Status RegEnumValueW(HKEY key, unsigned long index, wchar_t* name, unsigned long* nameSize,
                             unsigned long* reserved, unsigned long* type, unsigned char* data,
                             unsigned long* dataSize);
/// Numbers of subkeys and values, and the lengths of the longest names and data, in UTF-16 units
/// and in bytes. Stores of ours know no classes and no security.
QOR_API Status RegQueryInfoKeyA(HKEY key, char* keyClass, unsigned long* classSize,
                                unsigned long* reserved, unsigned long* numSubkeys,
                                unsigned long* maxSubkeyLength, unsigned long* maxClassLength,
                                unsigned long* numValues, unsigned long* maxValueNameLength,
                                unsigned long* maxValueSize, unsigned long* securityDescriptorSize,
                                FileTime* lastWrite);

// Security.
// ----------------------------------------------------------------------------------------

/// Sets who may use a key; `what` 4 is the list of those who may. A store of ours checks handle and
/// descriptor and keeps nothing.
QOR_API Status RegSetKeySecurity(HKEY key, unsigned long what, void* descriptor);
/// \return not 0 on success, as the other operations on descriptors. The only revision is 1.
QOR_API int InitializeSecurityDescriptor(void* descriptor, unsigned long revision);
/// A present list that is null gives everybody access.
QOR_API int SetSecurityDescriptorDacl(void* descriptor, int present, void* list, int defaulted);
/// Memory of `size` bytes, zeroed with bit 64 of `flags`; null where there is none.
QOR_API void* LocalAlloc(unsigned int flags, unsigned long size);
/// \return null.
QOR_API void* LocalFree(void* memory);

// Text in stored data.
// -------------------------------------------------------------------------------

/// A wide text as stored data, without a terminator.
QOR_API std::vector<unsigned char> textToData(std::wstring_view text);
/// Stored data as wide text; a last odd byte is left out.
QOR_API std::wstring dataToText(const unsigned char* data, std::size_t size);

/// A store, which lives as long as someone holds it.
class QOR_API Store {
public:
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;
    virtual ~Store();

    /// The root key, with full access. The handle is never closed and ends with the store.
    virtual HKEY root() = 0;

    /// Begins a transaction on this thread, within the running one if there is one.
    /// \return NotSupported for a store that knows none.
    virtual Status begin();
    /// Ends the innermost transaction; the outermost makes all changes last.
    /// \return why that cannot be; the changes are undone then.
    virtual Status commit();
    /// Ends the innermost transaction and undoes its changes.
    virtual void rollback();

protected:
    Store();
};

/// Many operations as one: all of them last, or none. Other threads and programs wait, or see what
/// stood before. Transactions nest; one thread begins and ends them.
///
///     Transaction transaction(*store);
///     ...
///     if (transaction.commit() != Success) ...
class QOR_API Transaction {
public:
    explicit Transaction(Store& store);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    /// Undoes what was not committed. The store must still be there.
    ~Transaction();

    /// Whether it began; NotSupported on a store that knows no transactions.
    Status status() const { return state; }
    /// Makes the operations last, once. \return why they do not; they are undone then.
    Status commit();

private:
    Store& store;
    Status state;
    bool isOpen;
};

/// An empty store in memory. It ends with the last pointer to it and knows no transactions.
QOR_API std::shared_ptr<Store> makeMemoryStore();

#if defined(_WIN32)
/// The system's registry from a key of the current user on; the key is made where it is missing.
/// \return an empty pointer where that cannot be.
QOR_API std::shared_ptr<Store> openSystemStore(const std::wstring& pathBelowCurrentUser);
#endif

}  // namespace QOR::keystore
