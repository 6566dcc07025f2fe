// An attribute with nothing but what the base class gives.
#pragma once

#include <AttributeContainer/Attribute.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace QOR::AttributeContainer::Testing {

/// Implements only what is pure in `Attribute`; lies where a test puts it. All are equal.
class BareAttribute : public Attribute {
public:
    BareAttribute() : Attribute(std::nullopt) {}

    std::string getName() const override { return "bare"; }
    std::shared_ptr<Attribute> duplicate(CreateType, Location) const override {
        return std::make_shared<BareAttribute>();
    }
    BareAttribute& operator=(const Attribute&) override { return *this; }
    bool operator==(const Attribute&) const override { return areEqual; }
    Location getLocation() const override { return location; }
    const AttrDefinition* getDefinition() const override { return nullptr; }
    std::uint64_t getToken() const override { return 0; }

    using Attribute::getAttributeTempFlags;
    using Attribute::isAnyTempFlagSet;
    using Attribute::setAttributeTempFlags;

    Location location;
    bool areEqual = true;
};

}  // namespace QOR::AttributeContainer::Testing
