// Writes containers into texts and reads them from texts, for tests.
#pragma once

#include <AttributeContainer/ModelInFormat.h>
#include <AttributeContainer/ReadContext.h>
#include <AttributeContainer/WriteContext.h>
#include <AttributeContainer/kVAttrContainer.h>

#include <QOR/ErrorCode.h>

#include <memory>
#include <optional>
#include <sstream>
#include <string>

namespace QOR::AttributeContainer::Testing {

/// The code of an error; none for success.
inline std::optional<ErrorCode> codeOf(const ErrorPtr& error) {
    return error ? std::optional(error->getCode()) : std::nullopt;
}

/// What a container writes; "failed" where it gives an error or a warning.
template <class Container>
std::string written(Container& container,
                    const std::shared_ptr<const WriteContextBase>& context =
                        std::make_shared<const WriteContextBase>()) {
    std::ostringstream stream;
    const auto error = container.writeTo(stream, context);
    return error ? "failed" : stream.str();
}

/// Reads a text into a container, as the first read of a thread. \return the code of what the read
/// gives.
template <class Container>
std::optional<ErrorCode> readText(Container& container, const std::string& text,
                                  const std::shared_ptr<const ReadContextBase>& context =
                                      std::make_shared<const ReadContextBase>()) {
    ModelInFormat::cleanPropagateKeyword();
    std::istringstream stream(text);
    return codeOf(container.readFrom(stream, context));
}

}  // namespace QOR::AttributeContainer::Testing
