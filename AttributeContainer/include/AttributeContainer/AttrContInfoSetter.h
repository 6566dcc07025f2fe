// A side container for the time of a scope.
#pragma once

#include <AttributeContainer/kVAttrContainer.h>

#include <memory>

namespace QOR::AttributeContainer {

/// Hangs a side container on a container, and takes it off when the scope ends.
class QOR_API AttrContInfoSetter {
public:
    AttrContInfoSetter(std::weak_ptr<AttrContainer> target, std::shared_ptr<AttrContainer> info);
    AttrContInfoSetter(const AttrContInfoSetter&) = delete;
    AttrContInfoSetter& operator=(const AttrContInfoSetter&) = delete;
    ~AttrContInfoSetter();

private:
    std::weak_ptr<AttrContainer> target;
};

}  // namespace QOR::AttributeContainer
