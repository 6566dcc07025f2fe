// An image that is placed in a scan model.
#pragma once

#include <AttributeContainer/PictureColorPropertiesField.h>
#include <AttributeContainer/Transform.h>

#include <QOR/Time.h>

#include <optional>
#include <string>

namespace QOR::AttributeContainer {

/// An image placed in a scan model, with the data of its camera. The pixels are kept by the host,
/// under a name that this object gives; the library decodes none. What the numbers stand for is the
/// host's affair as well.
class QOR_API Picture : public ContainerClass<Picture, Transform, "Picture"> {
public:
    using Block::Block;

    QOR_ATTRIBUTE(7, int, DataSize);
    QOR_ATTRIBUTE(8, std::string, Extension);
    QOR_ATTRIBUTE(9, int, InScan);
    QOR_ATTRIBUTE(10, int, InitialLoadData);
    QOR_ATTRIBUTE(11, int, PortraitMode);
    QOR_ATTRIBUTE(12, int, Orientation);
    QOR_ATTRIBUTE(13, int, Spherical);
    QOR_ATTRIBUTE(14, double, HorizontalFOV);
    QOR_ATTRIBUTE(15, double, VerticalFOV);
    QOR_ATTRIBUTE(16, std::string, CameraInfo);
    QOR_ATTRIBUTE(17, std::string, LensInfo);
    QOR_ATTRIBUTE(18, double, FocalLength);
    QOR_ATTRIBUTE(19, std::string, CameraMount);
    QOR_ATTRIBUTE(20, Mat4d<double>, CameraMatrix, Mat4d<double>::identity());
    QOR_ATTRIBUTE(21, double, HorizontalAngle);
    QOR_ATTRIBUTE(22, double, VerticalAngle);
    QOR_ATTRIBUTE(23, int, HorizontalEncoder);
    QOR_ATTRIBUTE(24, int, VerticalEncoder);
    QOR_ATTRIBUTE(25, std::string, LensCalibration);
    QOR_ATTRIBUTE(26, std::string, LensDistortion);
    QOR_ATTRIBUTE(27, Vec4d<double>, WBFactor);
    QOR_ATTRIBUTE(28, int, Cols);
    QOR_ATTRIBUTE(29, int, Rows);
    QOR_ATTRIBUTE(30, double, ExposureTime);
    QOR_ATTRIBUTE(31, double, Gain);
    QOR_ATTRIBUTE(32, double, TimeStamp, Time{}.getCurrentTime());  // seconds, when it was made

    QOR_FIELD(0, AttributeContainer::PictureColorPropertiesField, PictureColorPropertiesField);

    /// The folder below that of all pictures in which the pixels lie; here none.
    virtual std::optional<std::string> getStorageSubdirectoryInScan() const;

    /// The name under which the host stores the pixels, as in "Pictures/P1".
    std::optional<std::string> getSaveBinaryDataStreamName() const;
};

}  // namespace QOR::AttributeContainer
