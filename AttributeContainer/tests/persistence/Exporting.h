// Exports containers as XML documents, for tests.
#pragma once

#include <AttributeContainer/WriteContext.h>
#include <AttributeContainer/XMLSerialization.h>

#include <memory>
#include <sstream>
#include <string>

namespace QOR::AttributeContainer::Testing {

/// How every document begins and ends.
inline const std::string head =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Root version=\"9.1.0.0\" format=\"0\">\n";
inline const std::string foot = "</Root>";

inline std::shared_ptr<WriteContextBase> makeContext() {
    return std::make_shared<WriteContextBase>();
}

/// The whole document of a container; "failed" where the export gives an error or a warning.
inline std::string exported(AttrContainer& container,
                            const std::shared_ptr<WriteContextBase>& context = makeContext()) {
    std::ostringstream stream;
    const auto error = XMLSerialization::to(stream, container, context);
    return error ? "failed" : stream.str();
}

/// The document of a plain container with these attributes behind its name.
inline std::string plainDocument(const std::string& name, const std::string& attributes) {
    return head + "<" + name + " type=\"AttrContainer\"><fields>\n</fields>\n<attrs>\n" +
           "<Name type=\"String\">\"" + name + "\"</Name>\n" + attributes + "</attrs>\n</" + name +
           ">\n" + foot;
}

inline std::shared_ptr<AttrContainer> plain(const std::string& name) {
    const auto container = AttrContainer::create();
    container->name(name);
    return container;
}

}  // namespace QOR::AttributeContainer::Testing
