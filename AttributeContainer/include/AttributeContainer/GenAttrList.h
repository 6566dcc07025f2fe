// Token-numbered lists of elements.
#pragma once

#include <AttributeContainer/Attribute.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace QOR::AttributeContainer {

class QOR_API AttrContainer;  // an instance over a type is as visible as the type

/// Elements with consecutive tokens from a first one on; a slot may be empty.
template <class T>
class QOR_API GenAttrList {
public:
    explicit GenAttrList(std::uint64_t firstToken);
    GenAttrList(const GenAttrList&) = delete;
    GenAttrList& operator=(const GenAttrList&) = delete;
    virtual ~GenAttrList();

    /// The token of an element, found by identity; all ones when it is not here.
    virtual std::uint64_t getToken(const T& element) const;
    virtual bool setMinCapacity(std::uint64_t capacity);
    virtual std::uint64_t getMinCapacity() const;
    /// Appends.
    virtual std::weak_ptr<T> addElement(std::shared_ptr<T>& element, const std::string& name);
    /// Places an element. \return false when the token is out of range.
    virtual bool setElement(std::uint64_t token, std::shared_ptr<T>& element,
                            const std::string& name);
    /// Empties a slot and, with `compress`, closes it up keeping the order.
    /// \return false when the token is out of range.
    virtual bool rmElement(std::uint64_t token, bool compress);
    virtual bool rmElement(std::shared_ptr<const T>& element, bool compress);

    std::uint64_t getFirstToken() const { return firstToken; }
    /// How many slots there are, empty ones included.
    std::uint64_t size() const { return elements.size(); }
    bool empty() const { return elements.empty(); }
    /// The element of a token; an empty pointer for an empty slot or out of range.
    const std::shared_ptr<T>& get(std::uint64_t token) const;

protected:
    bool isInRange(std::uint64_t token) const {
        return token >= firstToken && token - firstToken < elements.size();
    }
    std::shared_ptr<T>& slot(std::uint64_t token) { return elements[token - firstToken]; }
    std::uint64_t lastToken() const { return firstToken + elements.size() - 1; }

    std::vector<std::shared_ptr<T>> elements;

private:
    std::uint64_t firstToken;
};

extern template class GenAttrList<Attribute>;
extern template class GenAttrList<AttrContainer>;

}  // namespace QOR::AttributeContainer
