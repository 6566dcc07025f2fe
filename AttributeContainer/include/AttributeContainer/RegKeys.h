// Keys and values of a key store, addressed below a root key and a prefix.
#pragma once

#include <AttributeContainer/Export.h>

#include <QOR/KeyStore.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace QOR::AttributeContainer {

/// A root key and the path of a key below it, from which keys and values are addressed.
///
/// Nothing here makes an error or a log line: an operation that fails answers with false, an empty
/// text or a null pointer. Paths have '\' between their names. One thread at a time.
///
/// It does not keep the store of its root: once that has gone, every operation fails.
class QOR_API RegKeys {
public:
    using HKEY = keystore::HKEY;

    /// Starts from nothing and goes on as `setPrefix` with these arguments.
    RegKeys(const std::string& prefix, HKEY root, bool owned);
    RegKeys(const RegKeys&) = delete;
    RegKeys& operator=(const RegKeys&) = delete;
    /// Closes the root if it is owned.
    ~RegKeys();

    /// Addresses another path below the same root.
    void setPrefix(const std::string& newPrefix);
    /// Takes another root, and closes an owned one. A prefix that is not empty is made as a key
    /// below the prefix so far. With the same root a prefix that is not empty stays as it is,
    /// unless it is given once more: then, too, an owned root is closed.
    /// \param nowOwned whether this object is to close `newRoot`.
    void setPrefix(const std::string& newPrefix, HKEY newRoot, bool nowOwned);
    const std::string& getPrefix() const { return prefix; }

    // Below the prefix. --------------------------------------------------------------------------
    /// Whether the key can be opened for reading or writing; an empty text means the prefix itself,
    /// which tells whether the constructor could make it.
    bool checkKey(const std::string& key, bool forWrite) const;
    /// Makes a key and all levels above it; an empty text means the prefix itself.
    /// \param everyone give everybody access to it.
    bool createKey(const std::string& key, bool everyone) const;
    /// Deletes a key and all below it. Prefix and key are joined with one separator if neither
    /// brings one, also if the prefix is empty.
    bool deleteTree(const std::string& key) const;
    /// Copies a tree. Both paths follow the prefix as they are and so begin with a separator.
    bool copyTree(const std::string& source, const std::string& target);
    bool setAccessToEveryOne(const std::string& key) const;
    /// Names of the subkeys of the prefix.
    std::vector<std::string> enumerateKeys();

    /// Stores a text without a terminator, as expandable text.
    bool setKey(const std::string& name, const std::string& value) const;
    /// Stores data of any type. Null data deletes the *subkey* of that name, if it has no subkeys.
    bool setKey(const std::string& name, const unsigned char* data, unsigned long size,
                unsigned long type) const;
    /// Reads a text and takes its last character for a terminator: one that `setKey` stored comes
    /// back without it. A value of 1,024 bytes or more is an empty text.
    std::string queryKey(const std::string& name) const;
    /// Reads data. `*size` goes in as the size of the buffer, which must not be 0, and comes out as
    /// the stored one. No pointer may be null.
    bool queryKey(const std::string& name, unsigned char* data, unsigned long* size,
                  unsigned long* type) const;

    // Below the root, whatever the prefix. -------------------------------------------------------
    /// Deletes a key that has no subkeys.
    bool deleteKey(const std::string& key) const;
    bool deleteValue(const std::string& name) const;
    /// The names at an index; names of 260 characters or more are an empty text.
    std::string getSubKey(int index) const;
    std::string getSubValue(int index) const;

    /// A second handle: the prefix of this one as root, with no prefix.
    /// \return a null pointer if the key cannot be opened.
    std::shared_ptr<RegKeys> createFrom(bool forWrite) const;

    /// Writes a list of one text: UTF-16 and two terminators. Counts two bytes for each byte of
    /// `text` and fills with zeros what the characters leave.
    /// \return the number of bytes, 2 * length + 4; 0 if they exceed `size`, and for no text.
    static int stringToMultiSZ(unsigned char* buffer, std::uint64_t size, const std::string& text);

private:
    /// The prefix, a separator if it is not empty, and the key.
    std::wstring pathOf(const std::string& key) const;

    std::string prefix;
    HKEY root = nullptr;
    bool owned = false;
    std::wstring widePrefix;  // the prefix as the store wants it: it stays for many operations
};

/// Several places to read from or write to, in order.
struct RegKeysArray {
    std::vector<std::shared_ptr<const RegKeys>> keys;
};

}  // namespace QOR::AttributeContainer
