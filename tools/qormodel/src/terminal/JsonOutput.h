// The JSON that commands print.
#pragma once

#include "terminal/Output.h"

#include <nlohmann/json.hpp>

#include <string>

namespace qormodel {

using Json = nlohmann::ordered_json;

/// Prints one object: the version of the form, the command, and what `content` holds.
void printJson(Output& output, const std::string& command, const Json& content);

}  // namespace qormodel
