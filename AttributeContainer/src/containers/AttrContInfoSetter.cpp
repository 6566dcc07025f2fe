#include <AttributeContainer/AttrContInfoSetter.h>

#include <utility>

namespace QOR::AttributeContainer {

AttrContInfoSetter::AttrContInfoSetter(std::weak_ptr<AttrContainer> target,
                                       std::shared_ptr<AttrContainer> info)
    : target(std::move(target)) {
    const auto living = this->target.lock();
    if (living && info) living->addAttrContInfo(std::move(info));
}

AttrContInfoSetter::~AttrContInfoSetter() {
    if (const auto living = target.lock()) living->rmAttrContInfo();
}

}  // namespace QOR::AttributeContainer
