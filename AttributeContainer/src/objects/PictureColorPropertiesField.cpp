#include <AttributeContainer/PictureColorPropertiesField.h>

namespace QOR::AttributeContainer {

namespace {
// \return 1 if the attribute differed, 0 if there was nothing to ask for
template <class T>
std::uint64_t setWhereDifferent(Attr<T>& attribute, const T& value,
                                const std::shared_ptr<ObservingObject>& initiator) {
    if (attribute.get() == value) return 0;
    attribute.set(value, initiator);
    return 1;
}
}  // namespace

PictureColorPropertiesFieldDataPackage& PictureColorPropertiesField::getData(
    PictureColorPropertiesFieldDataPackage& package) const {
    package.Event = Event();
    return package;
}

std::uint64_t PictureColorPropertiesField::setData(
    const PictureColorPropertiesFieldDataPackage& package,
    const std::shared_ptr<ObservingObject>& initiator) {
    return setWhereDifferent(Attr_Event(), package.Event, initiator);
}

std::uint64_t PictureColorPropertiesField::setData(
    const PictureColorPropertiesFieldDataPackage& newData,
    const PictureColorPropertiesFieldDataPackage& oldData,
    const std::shared_ptr<ObservingObject>& initiator) {
    if (newData.Event == oldData.Event) return 0;
    return setData(newData, initiator);
}

}  // namespace QOR::AttributeContainer
