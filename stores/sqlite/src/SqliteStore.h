// A key store in a file: the operations on its tables.
#pragma once

#include "Database.h"
#include "KnownKeys.h"

#include <QOR/KeyTreeStore.h>

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace QOR::keystore {

class SqliteStore : public KeyTreeStore {
public:
    /// \param session a number that no other opening of the file has.
    SqliteStore(Database database, std::int64_t session);

    Status begin() override;
    Status commit() override;
    void rollback() override;

    Status checkKey(Node key) override;
    Status inqSubkey(Node key, std::wstring_view name, Node& subkey) override;
    Status inqPath(Node key, std::span<const std::wstring_view> names, Node& found) override;
    Status makeSubkey(Node key, std::wstring_view name, Node& subkey) override;
    Status rmKey(Node key) override;
    Status getSubkey(Node key, std::size_t index, std::wstring& name) override;
    Status setValue(Node key, std::wstring_view name, unsigned long type, const unsigned char* data,
                    std::size_t size) override;
    Status inqValue(Node key, std::wstring_view name, StoredValue& value) override;
    Status rmValue(Node key, std::wstring_view name) override;
    Status getValueName(Node key, std::size_t index, std::wstring& name) override;
    Status getContents(Node key, KeyContents& contents) override;

private:
    /// The tables that are listed, and where the last question about an index led.
    enum List { Subkeys, Values };
    struct Cursor {
        Node key = 0;  // none
        std::size_t index = 0;
        std::string folded;
    };
    struct ListStatements {
        Statement at, same, next, former, all;
    };

    /// Whether operations may go on: SQLite ends a transaction by itself after grave errors.
    Status ready() const;
    /// Makes sure that what is known of keys is so today.
    void checkKnown() {
        if (depth == 0) known.checkChanges(database, dataVersion);  // else nobody else writes
    }
    /// \param isThere whether `key` is known to be there.
    Status findSubkey(Node key, std::string folded, bool isThere, Node& subkey);
    /// Outside of a transaction a change was just committed.
    void passOwnChange() {
        if (depth == 0) known.passOwnChange(database);
    }
    Status getName(List list, Node key, std::size_t index, std::wstring& name);
    const Statement& statementFor(List list, const Cursor& cursor, std::size_t index) const;
    Status endOutermost(bool isKept);

    Database database;
    Statement keyOf, subkeyOf, insertKey, deleteKey;
    Statement insertValue, valueOf, deleteValue, dataVersion;
    std::array<ListStatements, 2> lists;
    std::array<Cursor, 2> cursors;
    Node nextNode;
    int depth = 0;  // of transactions
    KnownKeys known;
};

}  // namespace QOR::keystore
