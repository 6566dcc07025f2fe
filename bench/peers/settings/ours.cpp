// W4: our keys, over the store in memory and, where it is built, over the store in a file.
#include "settings/Settings.h"

#include <AttributeContainer/RegKeys.h>

#include <QOR/KeyStore.h>
#ifdef PEERS_HAVE_SQLITE_STORE
#include <QOR/KeyStoreSqlite.h>
#endif

#include <algorithm>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

namespace keystore = QOR::keystore;
using QOR::AttributeContainer::RegKeys;

namespace {

struct InMemory {
    static constexpr bool isOnDisk = false;
    static constexpr bool isGrouped = false;
    static std::shared_ptr<keystore::Store> open(const std::string&) {
        return keystore::makeMemoryStore();
    }
};

#ifdef PEERS_HAVE_SQLITE_STORE
struct ValueByValue {
    static constexpr bool isOnDisk = true;
    static constexpr bool isGrouped = false;
    static std::shared_ptr<keystore::Store> open(const std::string& directory) {
        return keystore::openSqliteStore(directory + "/ours.db");
    }
};
/// All values up to a commit are one transaction.
struct Grouped : ValueByValue {
    static constexpr bool isGrouped = true;
};
#endif

// A text comes back without its last character, which is taken for a terminator: each is written
// with one more.
template <class Kind> class OurStore {
public:
    explicit OurStore(const std::string& path) : directory(path), store(Kind::open(path)) {
        if (!store) throw std::runtime_error("the store cannot be opened");
    }
    void set(const std::string& group, const char* name, const std::string& value) {
        if (Kind::isGrouped && !transaction) transaction.emplace(*store);
        if (!keysOf(group).setKey(name, value + '.')) throw std::runtime_error("not stored");
    }
    void commit() {
        if (!transaction) return;
        if (transaction->commit() != keystore::Success) throw std::runtime_error("not committed");
        transaction.reset();
    }
    void reopen() {
        if constexpr (Kind::isOnDisk) {
            store.reset();
            store = Kind::open(directory);
        }
        if constexpr (Kind::isGrouped) transaction.emplace(*store);  // reads are one as well
    }
    std::string get(const std::string& group, const char* name) {
        return keysOf(group).queryKey(name);
    }

private:
    RegKeys keysOf(const std::string& group) const {
        std::string path = group;
        std::ranges::replace(path, '/', '\\');
        return RegKeys(path, store->root(), false);
    }

    std::string directory;
    std::shared_ptr<keystore::Store> store;
    std::optional<keystore::Transaction> transaction;
};

BENCH_PEER("W4", "ours_memory", Ours, [](bench::Run& run) {
    bench::settings::runAll<OurStore<InMemory>>(run);
    run.note("nothing reaches the disk");
});
#ifdef PEERS_HAVE_SQLITE_STORE
BENCH_PEER("W4", "ours_sqlite", Ours,
           [](bench::Run& run) { bench::settings::runAll<OurStore<ValueByValue>>(run); });
BENCH_PEER("W4", "ours_sqlite_grouped", Ours,
           [](bench::Run& run) { bench::settings::runAll<OurStore<Grouped>>(run); });
#endif

}  // namespace
