// Several changes of a store that belong together.
#pragma once

#include <QOR/KeyStore.h>

namespace QOR::keystore {

/// One change where the store knows transactions, and else one by one.
class WholeChange {
public:
    explicit WholeChange(Store& store) : transaction(store) {}

    /// Whether the changes may begin.
    Status status() const {
        return transaction.status() == NotSupported ? Success : transaction.status();
    }
    /// Makes the changes last if `done` is a success; else they are undone with this object.
    Status finish(Status done) {
        if (done != Success) return done;
        const Status committed = transaction.commit();
        return committed == NotSupported ? Success : committed;
    }

private:
    Transaction transaction;
};

}  // namespace QOR::keystore
