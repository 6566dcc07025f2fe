#include <AttributeContainer/PanoramaPicture.h>

#include <cstddef>
#include <utility>

namespace QOR::AttributeContainer {

namespace {
// Half a circle about z. Its cosine is -1 and its sine 0; computed from pi the sine would not be.
constexpr Mat4d<double> halfTurn{{-1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};

constexpr Mat4d<double> product(const Mat4d<double>& left, const Mat4d<double>& right) {
    Mat4d<double> result;
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
            for (std::size_t i = 0; i < 4; ++i)
                result(row, column) += left(row, i) * right(i, column);
    return result;
}
}  // namespace

void PanoramaPicture::init(CreateType type, Source source) {
    Block::init(type, source);
    Spherical(1);
    TrafoFixedFlags(orientationFixed);
}

std::optional<std::string> PanoramaPicture::getStorageSubdirectoryInScan() const {
    if (ImageRole().empty()) return std::nullopt;
    return ImageRole();
}

ErrorPtr PanoramaPicture::readFrom(std::istream& stream,
                                   std::shared_ptr<const ReadContextBase> context) {
    TrafoFixedFlags(0);  // what a stream means that says nothing of it
    ErrorPtr result;
    try {
        result = Object::readFrom(stream, std::move(context));
    } catch (...) {
        settleOrientation();
        throw;
    }
    settleOrientation();
    return result;
}

void PanoramaPicture::settleOrientation() {
    Spherical(1);
    const unsigned int flags = TrafoFixedFlags();
    if ((flags & orientationFixed) == 0) Transformation(product(halfTurn, Transformation()));
    TrafoFixedFlags(flags | orientationFixed);
}

}  // namespace QOR::AttributeContainer
