#include <AttributeContainer/ObservingObject.h>

namespace QOR::AttributeContainer {

ObservingObject::~ObservingObject() = default;

std::weak_ptr<ObservingObject> ObservingObject::inqObserver(
    const std::optional<const std::string>& path) {
    const ObservingObject& self = *this;
    return std::const_pointer_cast<ObservingObject>(self.inqObserver(path).lock());
}

std::weak_ptr<const ObservingObject> ObservingObject::inqObserver(
    const std::optional<const std::string>&) const {
    return {};
}

}  // namespace QOR::AttributeContainer
