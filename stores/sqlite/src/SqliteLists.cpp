#include "SqliteStore.h"

#include "NameText.h"

#include <algorithm>
#include <limits>

namespace QOR::keystore {

Status SqliteStore::getSubkey(Node key, std::size_t index, std::wstring& name) {
    return getName(Subkeys, key, index, name);
}

Status SqliteStore::getValueName(Node key, std::size_t index, std::wstring& name) {
    return getName(Values, key, index, name);
}

// An index costs as many steps as it is high, unless it lies next to the one asked for last.
const Statement& SqliteStore::statementFor(List list, const Cursor& cursor,
                                           std::size_t index) const {
    const ListStatements& statements = lists[list];
    if (cursor.key == 0) return statements.at;
    if (index == cursor.index) return statements.same;
    if (index == cursor.index + 1) return statements.next;
    if (index + 1 == cursor.index) return statements.former;
    return statements.at;
}

Status SqliteStore::getName(List list, Node key, std::size_t index, std::wstring& name) {
    if (const Status status = ready(); status != Success) return status;
    if (index > std::numeric_limits<std::int32_t>::max()) {
        const Status status = checkKey(key);
        return status == Success ? NoMoreItems : status;
    }
    Cursor& cursor = cursors[list];
    if (cursor.key != key) cursor.key = 0;
    const Statement& statement = statementFor(list, cursor, index);
    int result;
    {
        Run run(statement);
        run.bind(static_cast<std::int64_t>(key));
        if (&statement == &lists[list].at) {
            run.bind(static_cast<std::int64_t>(index));
        } else {
            run.bind(cursor.folded);
        }
        result = run.step();
        if (result == SQLITE_ROW) {
            name = nameOfText(run.text(0));
            std::string folded(run.text(1));
            cursor = {key, index, std::move(folded)};
        }
    }
    if (result == SQLITE_ROW) return Success;
    const bool isCertain = cursor.key == 0;
    cursor.key = 0;
    if (result != SQLITE_DONE) return statusOf(result);
    // Another program may have removed the name from which this one was looked for.
    if (!isCertain) return getName(list, key, index, name);
    const Status status = checkKey(key);
    return status == Success ? NoMoreItems : status;
}

Status SqliteStore::getContents(Node key, KeyContents& contents) {
    if (const Status status = checkKey(key); status != Success) return status;
    Run subkeys(lists[Subkeys].all);
    subkeys.bind(static_cast<std::int64_t>(key));
    int result;
    while ((result = subkeys.step()) == SQLITE_ROW) {
        ++contents.numSubkeys;
        contents.longestSubkey =
            std::max(contents.longestSubkey, lengthOf(nameOfText(subkeys.text(0))));
    }
    if (result != SQLITE_DONE) return statusOf(result);
    Run values(lists[Values].all);
    values.bind(static_cast<std::int64_t>(key));
    while ((result = values.step()) == SQLITE_ROW) {
        ++contents.numValues;
        contents.longestValueName =
            std::max(contents.longestValueName, lengthOf(nameOfText(values.text(0))));
        contents.largestValue =
            std::max(contents.largestValue, static_cast<std::size_t>(values.number(2)));
    }
    return statusOf(result);
}

}  // namespace QOR::keystore
