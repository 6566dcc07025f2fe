#include "support/RegistryStores.h"

namespace QOR::AttributeContainer::Testing {

std::vector<keystore::Testing::StoreKind> registryStores() {
    return keystore::Testing::ownStores();
}

}  // namespace QOR::AttributeContainer::Testing
