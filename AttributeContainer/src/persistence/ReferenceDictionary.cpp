#include <AttributeContainer/ReferenceDictionary.h>

#include <algorithm>
#include <utility>

namespace QOR::AttributeContainer {

const std::string& ReferenceDictionary::getStaticClassName() {
    static const std::string className = "ReferenceDictionary";
    return className;
}

const std::string& ReferenceDictionary::getClassName() const { return getStaticClassName(); }

ReferenceDictionary::ReferenceDictionary() = default;
ReferenceDictionary::~ReferenceDictionary() = default;

ReferenceDictionary::Entry* ReferenceDictionary::find(std::uint64_t key) {
    const auto found = std::ranges::lower_bound(entries, key, {}, &Entry::key);
    return found != entries.end() && found->key == key ? &*found : nullptr;
}

std::shared_ptr<AttrContainer> ReferenceDictionary::resolveReference(std::uint64_t key) {
    const auto* entry = find(key);
    return entry ? entry->container : nullptr;
}

bool ReferenceDictionary::registerReference(std::uint64_t key,
                                            std::shared_ptr<AttrContainer> container) {
    if (!container) return false;
    auto* entry = find(key);
    if (!entry) return false;
    if (entry->container && entry->container != container) return false;
    entry->container = std::move(container);
    return true;
}

bool ReferenceDictionary::unregisterReference(std::uint64_t key) {
    auto* entry = find(key);
    if (!entry) return false;
    entry->container.reset();
    return true;
}

void ReferenceDictionary::initializeFromVector(std::vector<std::uint64_t>& keys) {
    referenced.clear();
    std::ranges::sort(keys);
    entries.clear();
    entries.reserve(keys.size());
    for (const auto key : keys) entries.push_back({key, nullptr});
}

ErrorPtr ReferenceDictionary::writeTo(std::ostream&, std::shared_ptr<const WriteContextBase>) {
    return nullptr;
}

ErrorPtr ReferenceDictionary::readFrom(std::istream&, std::shared_ptr<const ReadContextBase>) {
    return QOR_ERROR(ReadNotSupported, "ReferenceDictionary::readFrom");
}

}  // namespace QOR::AttributeContainer
