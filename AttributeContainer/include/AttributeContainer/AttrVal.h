// A holder for the value of an attribute.
#pragma once

#include <AttributeContainer/Export.h>
#include <AttributeContainer/ValueTypes.h>

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

    /// An empty text, one for each type.
    static const std::string nullName;

private:
    T value{};
};

template <class T>
const std::string AttrVal<T>::nullName;

// The library holds the texts of all types of the list, so that no host makes its own.
#define QOR_INSTANCE_ROW(KIND, TYPE, TOKEN, WORD) \
    QOR_CLASS_ROW_##KIND(extern template class AttrVal<TYPE>;)
QOR_VALUE_TYPES(QOR_INSTANCE_ROW)
#undef QOR_INSTANCE_ROW

}  // namespace QOR::AttributeContainer
