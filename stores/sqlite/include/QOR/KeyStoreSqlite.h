// A key store in one file, kept by SQLite.
#pragma once

#include <QOR/KeyStore.h>

#include <memory>
#include <string>

namespace QOR::keystore {

/// Opens the key store in a file, or makes it where there is none or an empty one.
///
/// Each operation is whole or not there at all, whenever the program ends; many at once are a
/// `Transaction`, which also is much faster. Several threads and programs can use one file
/// together: they wait for each other, ten seconds at the most, after which an operation answers
/// with `Busy`. When the power fails, the last operations may be lost, but never a part of one.
/// \param path in UTF-8.
/// \param error if not null, takes the reason why the store cannot be opened: the file is no key
/// store, one of a newer version, cannot be written, or has no room.
/// \return an empty pointer then.
QOR_API std::shared_ptr<Store> openSqliteStore(const std::string& path,
                                               std::string* error = nullptr);

}  // namespace QOR::keystore
