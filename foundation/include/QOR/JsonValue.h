// A JSON document as a value.
#pragma once

#include <QOR/Export.h>

#include <string>

namespace QOR {

/// The text of a JSON document. Nothing tests that the text is one; two are equal if their bytes
/// are.
struct QOR_API JsonValue {
    std::string text;

    bool operator==(const JsonValue&) const = default;
};

}  // namespace QOR
