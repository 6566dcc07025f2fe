// What can be told of a file in one of the XML forms, which nothing reads back.
#pragma once

#include "io/SourceFile.h"

#include <optional>
#include <string>

namespace qormodel {

/// The head of an XML file.
struct XmlForm {
    bool isExport = false;  ///< the export for other tools, else a model stream in XML
    std::string title;      ///< empty for an export, which has none
    std::string version;    ///< numbers of the format; empty where the head has none
};

/// Looks at the first lines of a file. \return none where it is no XML that the library writes
std::optional<XmlForm> inqXmlForm(const SourceFile& source);

}  // namespace qormodel
