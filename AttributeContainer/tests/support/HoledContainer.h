// A container that lacks one of its attributes.
#pragma once

#include "support/Containers.h"

#include <memory>
#include <optional>

namespace QOR::AttributeContainer::Testing {

/// Declares an attribute of a type that no table can make, so token 1 is there and holds nothing.
class Holed : public ContainerClass<Holed, AttrContainer, "Holed"> {
public:
    using Block::Block;

    std::uint64_t getMaxAttrToken() const override { return 1; }

    static std::shared_ptr<Holed> make() {
        auto container = create();
        container->createAttributes({{1, "Point", AttrType{49}, 18}}, CreateDeep, std::nullopt);
        return container;
    }
};

}  // namespace QOR::AttributeContainer::Testing
