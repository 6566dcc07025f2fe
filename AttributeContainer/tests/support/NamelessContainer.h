// A container that has no name to write, for tests.
#pragma once

#include <AttributeContainer/kVAttrContainer.h>

#include <memory>

namespace QOR::AttributeContainer::Testing {

inline std::shared_ptr<AttrContainer> nameless() {
    const auto container = AttrContainer::create();
    const BlockObserver unasked;
    container->name("");
    return container;
}

}  // namespace QOR::AttributeContainer::Testing
