#include <AttributeContainer/FieldList.h>

#include <AttributeContainer/FieldFactory.h>
#include <AttributeContainer/kVAttrContainer.h>

#include <utility>

namespace QOR::AttributeContainer {

namespace {
constexpr std::uint64_t none = ~std::uint64_t{0};

bool sharesFields(CreateType type) {
    return type == CreateShareFields || type == CreateShareFieldsAlso;
}
}  // namespace

FieldList::FieldList(std::uint64_t firstToken) : GenAttrList<AttrContainer>(firstToken) {}

FieldList::~FieldList() = default;

bool FieldList::setMinCapacity(std::uint64_t capacity) {
    if (capacity == 0) return false;
    minCapacity = capacity;
    if (elements.size() < capacity) elements.resize(capacity);
    return true;
}

std::uint64_t FieldList::getMinCapacity() const {
    return minCapacity;
}

std::uint64_t FieldList::getToken(const std::string& name) const {
    return names.keyToToken(name);
}

std::optional<std::string> FieldList::getElementName(std::uint64_t token) const {
    return names.tokenToKey(token);
}

bool FieldList::addElement(std::shared_ptr<AttrContainer> field, const std::string& name) {
    elements.push_back(std::move(field));
    names.addEntry(lastToken(), name);
    return true;
}

bool FieldList::setElement(std::uint64_t token, std::shared_ptr<AttrContainer> field) {
    return setElement(token, std::move(field), std::string{});
}

bool FieldList::setElement(std::uint64_t token, std::shared_ptr<AttrContainer> field,
                           const std::string&) {
    if (!isInRange(token)) return false;
    slot(token).swap(field);
    return true;
}

bool FieldList::rmElement(std::uint64_t token, bool compress) {
    if (!setElement(token, nullptr) || token - getFirstToken() < minCapacity) return true;
    if (const auto name = names.tokenToKey(token)) names.rmEntry(token, *name);
    if (!compress) return true;
    const std::uint64_t last = lastToken();
    std::swap(slot(token), slot(last));
    elements.pop_back();
    if (token == last) return true;
    if (const auto name = names.tokenToKey(last)) {
        names.rmEntry(last, *name);
        names.addEntry(token, *name);
    }
    return true;
}

bool FieldList::rmElement(std::shared_ptr<const AttrContainer> field, bool compress) {
    if (!field) return false;
    const std::uint64_t token = GenAttrList<AttrContainer>::getToken(*field);
    return token != none && rmElement(token, compress);
}

std::weak_ptr<AttrContainer> FieldList::getAttrContainer(std::uint64_t token) {
    return get(token);
}

std::weak_ptr<const AttrContainer> FieldList::getAttrContainer(std::uint64_t token) const {
    return get(token);
}

bool FieldList::createFields(AttrContainer& owner, const std::vector<FieldDefinition>& rows,
                             CreateType type, const Source& source) {
    for (const FieldDefinition& row : rows) {
        if (row.token >= minCapacity) return false;
        // The copy of the source's list has come first, and relations lead to its fields already.
        if (source && get(getFirstToken() + row.token)) continue;
        auto field = createField(owner, row, type, source);
        if (field) {
            field->attachToParent(std::static_pointer_cast<AttrContainer>(owner.shared_from_this()));
        } else if (!row.typeName.empty()) {
            return false;
        }
        setElement(row.token, std::move(field), row.name);
    }
    return true;
}

std::shared_ptr<AttrContainer> FieldList::createField(AttrContainer& owner,
                                                      const FieldDefinition& row, CreateType type,
                                                      const Source& source) {
    if (source) {
        const auto from = std::const_pointer_cast<AttrContainer>(
            source->get().getField(row.token).lock());
        if (from) return sharesFields(type) ? from : from->duplicate(type);
    }
    if (auto field = owner.checkCreateChildField(row.typeName, row.name, nullptr)) return field;
    if (auto field = FieldFactory::the()->createField(row.typeName)) {
        [[maybe_unused]] const auto refused = field->setName(row.name);
        return field;
    }
    return owner.checkCreateDefaultChildField(row.typeName, row.name, nullptr);
}

bool FieldList::createAttrContainer(AttrContainer& owner, const FieldList& source,
                                    CreateType type) {
    setMinCapacity(source.getMinCapacity());
    for (std::uint64_t index = 0; index < source.size(); ++index) {
        const std::uint64_t token = source.getFirstToken() + index;
        const auto from = source.get(token);
        auto field = from;
        if (from && !sharesFields(type)) {
            field = from->duplicate(type);
            if (field) [[maybe_unused]] const auto refused = field->setName(from->getName());
        }
        if (field)
            field->attachToParent(std::static_pointer_cast<AttrContainer>(owner.shared_from_this()));
        const std::string name = source.getElementName(token).value_or(std::string{});
        const bool placed = index >= minCapacity
                                ? addElement(std::move(field), name)
                                : setElement(getFirstToken() + index, std::move(field), name);
        if (!placed) return false;
    }
    return true;
}

bool FieldList::replaceField(const std::shared_ptr<const AttrContainer>& old,
                             std::shared_ptr<AttrContainer> replacement) {
    if (!old) return false;
    const std::uint64_t token = GenAttrList<AttrContainer>::getToken(*old);
    if (token == none || token == none - 1) return false;
    return setElement(token, std::move(replacement));
}

}  // namespace QOR::AttributeContainer
