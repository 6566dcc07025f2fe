// Free attributes that a read uses again and again.
#pragma once

#include <AttributeContainer/Attribute.h>
#include <AttributeContainer/ValueTypes.h>

#include <array>
#include <memory>

namespace QOR::AttributeContainer {

/// Each value of a stream is read into a free attribute first. One of each type waits here between
/// two values, so that making and destroying them is not half of the work. They last as long as the
/// outermost read of the thread.
class SpareAttributes {
public:
    /// Keeps the spare attributes of the thread for as long as it lives. Costs nothing inside of
    /// another one.
    class Scope {
    public:
        Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;
        ~Scope();

    private:
        std::unique_ptr<SpareAttributes> own;  // of the outermost one
    };

    /// A free attribute, with any value; an empty pointer for a type that no stream can make.
    static std::shared_ptr<Attribute> take(AttrType type);

    /// Keeps the attribute for the next read of its type, unless something of it would be seen
    /// there or it holds much.
    static void giveBack(AttrType type, std::shared_ptr<Attribute> attribute);

private:
    std::array<std::shared_ptr<Attribute>, numAttrTypes> spares;
};

}  // namespace QOR::AttributeContainer
