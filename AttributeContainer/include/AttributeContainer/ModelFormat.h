// The forms of the model stream and the fixed texts that writer and reader share.
#pragma once

#include <AttributeContainer/Export.h>

#include <cstdint>
#include <string>

namespace QOR::AttributeContainer {

/// The constants of the model stream. The library defines the texts, so that there is one of each
/// whatever compiler a host uses; they stand before the static objects of a host.
class QOR_API ModelFormat {
public:
    enum Format : std::int32_t {
        Text = 0,   ///< plain block text, the form that is read back whole
        XmlV1 = 1,  ///< of `XMLSerialization` alone; a `writeTo` with it is no valid XML
        XmlV2 = 2,  ///< the XML form that `ModelInFormat::determineFormat` recognises
    };

    static constexpr wchar_t START_OF_BLOCK = L'{';
    static constexpr wchar_t END_OF_BLOCK = L'}';
    static const std::string START_OF_BLOCK_STR;  ///< `{`
    static const std::string END_OF_BLOCK_STR;    ///< `}`

    static const std::string XML_HEADER;         ///< `<?xml version="1.0" encoding="UTF-8"?>`
    static const std::string XML_V2_COMMENT;     ///< `<!-- XML v. 2 -->`
    static const std::string XML_START_COMMENT;  ///< `<!-- `
    static const std::string XML_END_COMMENT;    ///< ` -->`
    static const std::string XML_NEXT_ROOT;      ///< `<!-- NEXT: XML Root Element -->`
    static const std::string XML_NEXT_VERSION;   ///< `<!-- NEXT: Version Information -->`
    /// Reserved: the XML header has no place for a root model version, so nobody writes it.
    static const std::string XML_NEXT_ROOT_MODEL;  ///< `<!-- NEXT: Root Model Information -->`
    static const std::string XML_ROOT_START_TAG;   ///< `<ZELK>`
    /// Reserved: the footer is what is written.
    static const std::string XML_ROOT_END_TAG;  ///< `</ZELK>`
    static const std::string XML_FOOTER;        ///< `</ZELK>`
};

}  // namespace QOR::AttributeContainer
