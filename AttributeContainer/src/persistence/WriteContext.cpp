#include <AttributeContainer/WriteContext.h>

namespace QOR::AttributeContainer {

WriteContextBase::WriteContextBase(int streamFormat) : format(streamFormat) {}
WriteContextBase::~WriteContextBase() = default;

}  // namespace QOR::AttributeContainer
