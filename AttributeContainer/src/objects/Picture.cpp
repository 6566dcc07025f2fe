#include <AttributeContainer/Picture.h>

namespace QOR::AttributeContainer {

std::optional<std::string> Picture::getStorageSubdirectoryInScan() const { return std::nullopt; }

std::optional<std::string> Picture::getSaveBinaryDataStreamName() const {
    if (!findRoot()) return std::nullopt;
    std::string path = "Pictures/";
    if (const auto folder = getStorageSubdirectoryInScan()) path += *folder + '/';
    return path += getName();
}

}  // namespace QOR::AttributeContainer
