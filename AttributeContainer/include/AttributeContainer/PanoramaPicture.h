// A spherical image that is placed in a scan model.
#pragma once

#include <AttributeContainer/Picture.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace QOR::AttributeContainer {

/// A spherical picture with a role, which is also the name of the folder of its pixels.
///
/// Older programs stored panoramas the wrong way round. A read turns such a one by half a circle
/// about z and notes in `TrafoFixedFlags` that this is done, so it happens once in the life of a
/// stored picture.
class QOR_API PanoramaPicture : public ContainerClass<PanoramaPicture, Picture, "PanoramaPicture"> {
    friend Block;

public:
    using Block::Block;

    /// The bit of `TrafoFixedFlags` that says that the orientation is right. The other bits are the
    /// host's.
    static constexpr unsigned int orientationFixed = 1;

    QOR_ATTRIBUTE(33, std::uint64_t, ThumbnailSize);
    QOR_ATTRIBUTE(34, std::string, ImageRole, "UnknownRole");
    QOR_ATTRIBUTE(35, std::string, ImageRoleName, "Standard");
    QOR_ATTRIBUTE(36, bool, ShowsIn3DViews, true);
    QOR_ATTRIBUTE(37, unsigned int, TrafoFixedFlags);

    /// The role, unless it is empty.
    std::optional<std::string> getStorageSubdirectoryInScan() const override;

    /// Reads the picture and, where the stream does not say that its orientation is right, turns
    /// it; also where the read fails. It is spherical afterwards, whatever the stream says.
    [[nodiscard]] ErrorPtr readFrom(std::istream& stream,
                                    std::shared_ptr<const ReadContextBase> context) override;

protected:
    void init(CreateType type, Source source);

private:
    void settleOrientation();
};

}  // namespace QOR::AttributeContainer
