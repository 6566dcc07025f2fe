#include <AttributeContainer/GenAttrList.h>

#include <AttributeContainer/kVAttrContainer.h>

namespace QOR::AttributeContainer {

template <class T>
GenAttrList<T>::GenAttrList(std::uint64_t firstToken) : firstToken(firstToken) {}

template <class T>
GenAttrList<T>::~GenAttrList() = default;

template <class T>
std::uint64_t GenAttrList<T>::getToken(const T& element) const {
    for (std::uint64_t i = 0; i < elements.size(); ++i)
        if (elements[i].get() == &element) return firstToken + i;
    return ~std::uint64_t{0};
}

template <class T>
bool GenAttrList<T>::setMinCapacity(std::uint64_t) {
    return false;
}

template <class T>
std::uint64_t GenAttrList<T>::getMinCapacity() const {
    return 0;
}

template <class T>
std::weak_ptr<T> GenAttrList<T>::addElement(std::shared_ptr<T>& element, const std::string&) {
    elements.push_back(element);
    return element;
}

template <class T>
bool GenAttrList<T>::setElement(std::uint64_t token, std::shared_ptr<T>& element,
                                const std::string&) {
    if (!isInRange(token)) return false;
    slot(token) = element;
    return true;
}

template <class T>
bool GenAttrList<T>::rmElement(std::uint64_t token, bool compress) {
    if (!isInRange(token)) return false;
    const std::uint64_t index = token - firstToken;
    const auto removed = std::move(elements[index]);
    elements[index] = nullptr;
    if (index >= getMinCapacity() && compress)
        elements.erase(elements.begin() + static_cast<std::ptrdiff_t>(index));
    return true;
}

template <class T>
bool GenAttrList<T>::rmElement(std::shared_ptr<const T>& element, bool compress) {
    if (!element) return false;
    const std::uint64_t token = getToken(*element);
    return token != ~std::uint64_t{0} && rmElement(token, compress);
}

template <class T>
const std::shared_ptr<T>& GenAttrList<T>::get(std::uint64_t token) const {
    static const std::shared_ptr<T> none;
    return isInRange(token) ? elements[token - firstToken] : none;
}

template class GenAttrList<Attribute>;
template class GenAttrList<AttrContainer>;

}  // namespace QOR::AttributeContainer
