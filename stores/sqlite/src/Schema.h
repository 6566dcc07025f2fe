// The form of the file.
#pragma once

#include "Database.h"

#include <cstdint>
#include <string>

namespace QOR::keystore {

/// Makes an opened file ready for use, and a new store of an empty one. A file that is no store of
/// ours stays as it is.
/// \param session takes a number that no other opening of this file has.
/// \return the reason why that cannot be; an empty text if all is well.
std::string prepareStore(const Database& database, std::int64_t& session);

}  // namespace QOR::keystore
