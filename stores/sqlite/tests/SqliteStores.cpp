#include "support/RegistryStores.h"
#include "StoreFile.h"

namespace QOR::keystore::Testing {

namespace {

// A store on a file that goes with it.
std::shared_ptr<Store> makeSqliteStore() {
    struct StoreOnFile {
        Folder folder;
        std::shared_ptr<Store> store = openSqliteStore(folder.file());
    };
    auto owner = std::make_shared<StoreOnFile>();
    Store* const store = owner->store.get();
    return {std::move(owner), store};
}

const std::vector<StoreKind> kinds{{"Sqlite", makeSqliteStore}};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Stores, StoreConformance, testing::ValuesIn(kinds), nameOfStore);

}  // namespace QOR::keystore::Testing

namespace QOR::AttributeContainer::Testing {

std::vector<keystore::Testing::StoreKind> registryStores() {
    return {{"Sqlite", keystore::Testing::makeSqliteStore}};
}

}  // namespace QOR::AttributeContainer::Testing
