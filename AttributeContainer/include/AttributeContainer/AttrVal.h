// A holder for the value of an attribute.
#pragma once

#include <AttributeContainer/Export.h>

#include <string>

namespace QOR::AttributeContainer {

/// Holds one value of `T`, value-initialised.
template <class T>
class QOR_API AttrVal {
public:
    virtual ~AttrVal() = default;
    virtual T* access() { return &value; }
    virtual const T* read() const { return &value; }
    virtual const T* peek() const { return &value; }

    inline static const std::string nullName{};

private:
    T value{};
};

}  // namespace QOR::AttributeContainer
