#include <AttributeContainer/WriteToScope.h>

#include <utility>

namespace QOR::AttributeContainer {

WriteToScope::WriteToScope(std::ostream& stream, std::shared_ptr<const WriteContextBase> context)
    : mof(stream),
      writeContext(context ? std::move(context) : std::make_shared<const WriteContextBase>()) {
    mof.setFormat(writeContext->getFormat());
}

WriteToScope::~WriteToScope() = default;

}  // namespace QOR::AttributeContainer
