#include <AttributeContainer/CustAttrList.h>

#include <AttributeContainer/kVAttrContainer.h>

#include <utility>

namespace QOR::AttributeContainer {

CustAttrList::CustAttrList(std::uint64_t firstToken) : GenAttrList<Attribute>(firstToken) {}

CustAttrList::~CustAttrList() = default;

std::weak_ptr<Attribute> CustAttrList::addElement(std::shared_ptr<Attribute>& attribute,
                                                  const std::string& name) {
    if (!name.empty() && !names.addEntry(getFirstToken() + size(), name)) return {};
    auto added = GenAttrList<Attribute>::addElement(attribute, name);
    noteSlot(lastToken());
    return added;
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
    noteSlot(token);
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
        noteSlot(token);
    }
    elements.pop_back();
    return true;
}

std::uint64_t CustAttrList::getToken(const Attribute& attribute) const {
    const auto* const custom = dynamic_cast<const CustomAttribute*>(&attribute);
    if (custom && custom->slot < size() && elements[custom->slot].get() == &attribute)
        return getFirstToken() + custom->slot;
    return GenAttrList<Attribute>::getToken(attribute);
}

// Of two slots with the same attribute the first one noted stays, as long as it holds it.
void CustAttrList::noteSlot(std::uint64_t token) {
    const auto& element = slot(token);
    auto* const custom = dynamic_cast<CustomAttribute*>(element.get());
    if (!custom) return;
    const std::uint64_t index = token - getFirstToken();
    const bool isNoted = custom->slot < size() && elements[custom->slot] == element;
    if (!isNoted || index < custom->slot) custom->slot = index;
}

std::uint64_t CustAttrList::getToken(const std::string& name) const {
    return names.keyToToken(name);
}

std::optional<std::string> CustAttrList::getElementName(std::uint64_t token) const {
    return names.tokenToKey(token);
}

}  // namespace QOR::AttributeContainer
