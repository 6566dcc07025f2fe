// The colour settings of a picture.
#pragma once

#include <AttributeContainer/HDRParameterField.h>

#include <cstdint>
#include <memory>
#include <string>

namespace QOR::AttributeContainer {

/// The values of a `PictureColorPropertiesField` in one record.
struct QOR_API PictureColorPropertiesFieldDataPackage {
    std::string Event;
};

/// The colour settings of a picture, a field of it. They hold the parameters for pictures of high
/// dynamic range as a field of their own, whose class a stream can replace by one below it.
class QOR_API PictureColorPropertiesField
    : public ContainerClass<PictureColorPropertiesField, AttrContainer,
                            "PictureColorPropertiesField"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(1, std::string, Event);
    QOR_FIELD(0, AttributeContainer::HDRParameterField, HDRParameterField);

    /// Fills `package` with the values of the attributes. \return `package`
    PictureColorPropertiesFieldDataPackage& getData(
        PictureColorPropertiesFieldDataPackage& package) const;

    /// Sets the attributes that differ from `package`, on behalf of `initiator`.
    /// \return the number of attributes for which a change was asked, also where it was refused.
    std::uint64_t setData(const PictureColorPropertiesFieldDataPackage& package,
                          const std::shared_ptr<ObservingObject>& initiator);

    /// The same for those values alone that differ between the two packages: what the host did not
    /// change stays as it is by now.
    std::uint64_t setData(const PictureColorPropertiesFieldDataPackage& newData,
                          const PictureColorPropertiesFieldDataPackage& oldData,
                          const std::shared_ptr<ObservingObject>& initiator);
};

}  // namespace QOR::AttributeContainer
