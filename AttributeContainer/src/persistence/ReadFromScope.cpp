#include <AttributeContainer/ReadFromScope.h>

#include <utility>

namespace QOR::AttributeContainer {

ReadFromScope::ReadFromScope(std::istream& stream, std::shared_ptr<const ReadContextBase> context)
    : imf(stream),
      readContext(context ? std::move(context) : std::make_shared<const ReadContextBase>()) {
    imf.setFormat(readContext->getFormat());
}

ReadFromScope::~ReadFromScope() = default;

ErrorPtr ReadFromScope::fail(ErrorPtr error) {
    if (error && !error->isWarning()) ModelInFormat::cleanPropagateKeyword();
    return error;
}

}  // namespace QOR::AttributeContainer
