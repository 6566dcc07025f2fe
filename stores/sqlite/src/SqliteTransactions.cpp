#include "SqliteStore.h"

namespace QOR::keystore {

Status SqliteStore::ready() const {
    return depth > 0 && database.isIdle() ? StoreIoFailed : Success;
}

Status SqliteStore::begin() {
    mutex.lock();  // until the transaction ends: other threads must not write into it
    Status status = ready();
    if (status == Success)
        status = statusOf(database.execute(depth == 0 ? "BEGIN IMMEDIATE" : "SAVEPOINT inner"));
    if (status != Success) {
        mutex.unlock();
        return status;
    }
    checkKnown();
    ++depth;
    return Success;
}

Status SqliteStore::endOutermost(bool isKept) {
    Status status = database.isIdle() ? StoreIoFailed : Success;
    if (isKept && status == Success) status = statusOf(database.execute("COMMIT"));
    if (!database.isIdle()) database.execute("ROLLBACK");
    if (!isKept || status != Success) {
        known.clear();
        cursors = {};
    }
    return status;
}

Status SqliteStore::commit() {
    if (depth == 0) return NotSupported;
    --depth;
    Status status = Success;
    if (depth == 0) {
        status = endOutermost(true);
    } else {
        status = database.isIdle() ? StoreIoFailed : statusOf(database.execute("RELEASE inner"));
    }
    mutex.unlock();
    return status;
}

void SqliteStore::rollback() {
    if (depth == 0) return;
    --depth;
    if (depth == 0) {
        endOutermost(false);
    } else {
        if (!database.isIdle()) database.execute("ROLLBACK TO inner; RELEASE inner");
        known.clear();
        cursors = {};
    }
    mutex.unlock();
}

}  // namespace QOR::keystore
