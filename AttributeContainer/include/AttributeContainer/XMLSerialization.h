// Writes a container as an XML document for other tools.
#pragma once

#include <AttributeContainer/WriteContext.h>
#include <AttributeContainer/kVAttrContainer.h>

#include <QOR/ErrorCode.h>

#include <iosfwd>
#include <memory>

namespace QOR::AttributeContainer {

/// The XML export. Its document is not a form of the model stream and nothing reads it back:
/// elements bear the names of the model, values stand as their text, and relations, marks and the
/// children of objects are left out.
class QOR_API XMLSerialization {
public:
    /// Writes `container` with its fields and attributes, each value also where it is a default.
    /// Of the options those that leave out what is not marked count. The context keeps the format
    /// of the export, `XmlV1`.
    ///
    /// Names go out as they are: one that XML does not allow for an element, such as "2nd", makes a
    /// document that XML parsers refuse.
    /// \return ContextMissing, with nothing written, StreamFailed, or what an attribute gives. The
    /// closing tag of the root is written in any case.
    [[nodiscard]] static ErrorPtr to(std::ostream& stream, AttrContainer& container,
                                     std::shared_ptr<WriteContextBase> context);
};

}  // namespace QOR::AttributeContainer
