#include <AttributeContainer/CustAttrList.h>

#include <AttributeContainer/kVAttrContainer.h>

#include <utility>

namespace QOR::AttributeContainer {

CustAttrList::CustAttrList(std::uint64_t firstToken) : GenAttrList<Attribute>(firstToken) {}

CustAttrList::~CustAttrList() = default;

std::weak_ptr<Attribute> CustAttrList::addElement(std::shared_ptr<Attribute>& attribute,
                                                  const std::string& name) {
    if (!name.empty() && !names.addEntry(getFirstToken() + size(), name)) return {};
    return GenAttrList<Attribute>::addElement(attribute, name);
}

bool CustAttrList::setElement(std::uint64_t token, std::shared_ptr<Attribute>& attribute,
                              const std::string& name) {
    const bool isLast = isInRange(token) && token == lastToken();
    if (!rmElement(token, false)) return false;
    const std::uint64_t holder = name.empty() ? token : names.keyToToken(name);
    if (holder != token && holder != AttrContainer::noToken) return false;
    if (isLast) {
        elements.emplace_back();  // the removal took the slot with it
    } else if (const auto moved = names.tokenToKey(token)) {
        names.rmEntry(token, *moved);  // the element that moved here goes with its name
    }
    if (!name.empty()) names.addEntry(token, name);
    slot(token) = attribute;
    return true;
}

bool CustAttrList::rmElement(std::uint64_t token, bool) {
    if (!isInRange(token)) return false;
    const auto name = names.tokenToKey(token);
    if (name && !names.rmEntry(token, *name)) return false;
    const auto removed = std::move(slot(token));
    const std::uint64_t last = lastToken();
    if (token != last) {
        if (const auto lastName = names.tokenToKey(last)) {
            names.rmEntry(last, *lastName);
            names.addEntry(token, *lastName);
        }
        slot(token) = std::move(slot(last));
    }
    elements.pop_back();
    return true;
}

std::uint64_t CustAttrList::getToken(const std::string& name) const {
    return names.keyToToken(name);
}

std::optional<std::string> CustAttrList::getElementName(std::uint64_t token) const {
    return names.tokenToKey(token);
}

}  // namespace QOR::AttributeContainer
