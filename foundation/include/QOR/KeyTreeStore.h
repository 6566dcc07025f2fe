// What a key store of one's own is made from.
#pragma once

#include <QOR/KeyStore.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace QOR::keystore {

/// A value as a store holds it.
struct StoredValue {
    unsigned long type = 0;
    std::vector<unsigned char> data;
};

/// What a key contains. Lengths count UTF-16 units, sizes bytes.
struct KeyContents {
    std::size_t numSubkeys = 0;
    std::size_t longestSubkey = 0;
    std::size_t numValues = 0;
    std::size_t longestValueName = 0;
    std::size_t largestValue = 0;
};

/// The base of stores: these few operations are all that a new one writes. Paths, handles, access
/// rights, buffers and whole trees are dealt with ahead of them.
///
/// A key is a number that no other key of the store ever gets, deleted ones included; the root
/// is 1. A key that is not there, or no more, answers with `KeyDeleted`. Names arrive valid and
/// compare by `foldName`. One thread at a time is in an operation.
class QOR_API KeyTreeStore : public Store, public std::enable_shared_from_this<KeyTreeStore> {
public:
    using Node = std::uint64_t;
    static constexpr Node rootNode = 1;

    KeyTreeStore();
    ~KeyTreeStore() override;

    HKEY root() final;

    /// Success if the key is there.
    virtual Status checkKey(Node key) = 0;
    /// Looks a subkey up. \return FileNotFound for none of that name.
    virtual Status inqSubkey(Node key, std::wstring_view name, Node& subkey) = 0;
    /// Follows several names down; a store that remembers paths has a shorter way.
    /// \param names at least one.
    virtual Status inqPath(Node key, std::span<const std::wstring_view> names, Node& found);
    /// Makes a subkey that was found missing, or gives the one that came meanwhile.
    virtual Status makeSubkey(Node key, std::wstring_view name, Node& subkey) = 0;
    /// Removes a key without subkeys, with its values; never the root.
    /// \return AccessDenied for a key with subkeys.
    virtual Status rmKey(Node key) = 0;
    /// The subkey at an index, by folded name. \return NoMoreItems past the last.
    virtual Status getSubkey(Node key, std::size_t index, std::wstring& name) = 0;

    virtual Status setValue(Node key, std::wstring_view name, unsigned long type,
                            const unsigned char* data, std::size_t size) = 0;
    virtual Status inqValue(Node key, std::wstring_view name, StoredValue& value) = 0;
    virtual Status rmValue(Node key, std::wstring_view name) = 0;
    /// The value name at an index, by folded name. \return NoMoreItems past the last.
    virtual Status getValueName(Node key, std::size_t index, std::wstring& name) = 0;
    virtual Status getContents(Node key, KeyContents& contents) = 0;

    /// Held around every operation, and by a transaction from begin to end.
    std::recursive_mutex mutex;

private:
    std::once_flag rootOpened;
    HKEY rootKey = nullptr;
};

/// A character as names compare it: its capital letter, if the two belong to each other alone.
QOR_API wchar_t foldCharacter(wchar_t character);
/// A name as names compare. Two names are the same if they are the same folded.
QOR_API std::wstring foldName(std::wstring_view name);
/// Whether `left` comes ahead of `right` in the order of the folded names.
QOR_API bool isLessFolded(std::wstring_view left, std::wstring_view right);
/// The length in UTF-16 units.
QOR_API std::size_t lengthOf(std::wstring_view text);

}  // namespace QOR::keystore
