// What the commands of the key store share.
#pragma once

#include "commands/Commands.h"

#include <memory>
#include <string>

namespace qormodel {

/// The options of the group.
struct StoreOptions {
    std::string file;
};

/// Adds import and export.
void addStoreTransfer(CLI::App& group, const std::shared_ptr<StoreOptions>& store,
                      Session& session);

}  // namespace qormodel
