// Where the settings are kept.
#pragma once

#include <QOR/KeyStore.h>

#include <memory>
#include <string>

namespace settings {

/// Opens the store: the system's registry on Windows, elsewhere a file.
/// \param place the path of the file, or of the key below that of the current user.
/// \param error takes the reason if it cannot be opened.
std::shared_ptr<QOR::keystore::Store> openStore(const std::string& place, std::string& error);

/// A place that nobody else uses.
std::string temporaryPlace();

/// Takes all of a place away.
void removePlace(const std::string& place);

}  // namespace settings
