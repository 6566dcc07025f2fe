#include <AttributeContainer/ObserverList.h>

#include <algorithm>
#include <stdexcept>

namespace QOR::AttributeContainer {

namespace {
constexpr std::uint64_t none = ~std::uint64_t{0};

// Between two relations, of which only one is live, that one is the stronger; else the priority
// decides. The new one goes behind those of equal priority and is reached before them.
bool belongsBehind(const ObserverPath& added, const ObserverPath& listed) {
    if (listed.isGone()) return false;  // it has no place in the order any more
    if (added.isActive() != listed.isActive()) return added.isActive();
    return added.getPriority() >= listed.getPriority();
}
}  // namespace

ObserverList::Paths& ObserverList::made() {
    if (!paths) paths = std::make_unique<Paths>();
    return *paths;
}

ObserverPath& ObserverList::get(std::uint64_t index) {
    if (index >= size()) throw std::out_of_range("invalid vector subscript");
    return at(index);
}

const ObserverPath& ObserverList::get(std::uint64_t index) const {
    if (index >= size()) throw std::out_of_range("invalid vector subscript");
    return at(index);
}

ObserverPath* ObserverList::add(std::unique_ptr<ObserverPath> path) {
    if (!path) return nullptr;
    made().push_back(std::move(path));
    return paths->back().get();
}

ObserverPath* ObserverList::addAfter(std::uint64_t index, std::unique_ptr<ObserverPath> path) {
    if (!path) return nullptr;
    if (index != none && index + 1 >= size()) return add(std::move(path));
    const auto place = made().begin() + static_cast<std::ptrdiff_t>(index + 1);
    return paths->insert(place, std::move(path))->get();
}

void ObserverList::compress(bool) {
    if (!paths) return;
    std::erase_if(*paths, [](const auto& path) { return !path->getAction() || path->isGone(); });
}

std::uint64_t ObserverList::lookup(const ObserverPath& path) const {
    for (std::uint64_t i = size(); i-- > 0;)
        if (at(i) == path) return i;
    return none;
}

std::uint64_t ObserverList::lookupContent(ObserverPath& path) const {
    return lookup(path);  // a second search cannot find what the first one missed
}

std::unique_ptr<ObserverPath> ObserverList::remove(std::uint64_t index, std::uint64_t depth) {
    if (depth != 0) {
        get(index).setAction(std::uint64_t{0});
        return nullptr;
    }
    if (index >= size()) return nullptr;
    auto removed = std::move((*paths)[index]);
    paths->erase(paths->begin() + static_cast<std::ptrdiff_t>(index));
    return removed;
}

bool ObserverList::removeElement(const ObserverPath& path, std::uint64_t depth) {
    if (lookup(path) != none) return false;
    remove(none, depth);
    return true;
}

void ObserverList::sort() {
    if (!paths) return;
    std::ranges::sort(*paths,
                      [](const auto& a, const auto& b) { return ObserverPath::comp(*a, *b) < 0; });
}

std::uint64_t ObserverList::findInsertionPoint(const ObserverPath& path) const {
    for (std::uint64_t i = size(); i-- > 0;)
        if (belongsBehind(path, at(i))) return i;
    return none;
}

}  // namespace QOR::AttributeContainer
