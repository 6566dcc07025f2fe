#include <AttributeContainer/ChildList.h>

#include <AttributeContainer/Object.h>

#include <QOR/Text.h>

#include "objects/ChildIndex.h"
#include "objects/FewNames.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace QOR::AttributeContainer {

namespace {
// The answer of a search that finds nothing, for every list, so that answers can be references.
const std::shared_ptr<Object> noChild;

// Below, a walk over the names is as fast as a search.
constexpr std::uint64_t worthAnIndex = FewNames::maxSize + 1;
// The names of fewer are looked up at the children.
constexpr std::uint64_t worthNames = 3;
}  // namespace

ChildList::ChildList() = default;

ChildList::~ChildList() = default;

const std::shared_ptr<Object>& ChildList::getChild(std::uint64_t position) const {
    if (position >= children.size()) return noChild;
    return *std::next(children.begin(), static_cast<std::ptrdiff_t>(position));
}

const std::shared_ptr<Object>& ChildList::inqChild(const std::string& name) const {
    if (name.empty()) return noChild;
    const ChildIndex* const known = lookupIndex();
    if (!known) {
        const FewNames* const few = lookupNames();
        if (!few) return scan(name);
        const auto* const found = few->find(name);
        return found ? *found : noChild;
    }
    const auto found = known->find(name);
    if (!found) return noChild;
    const auto& child = **found;
    if (compareIgnoreCase(child->getName(), name) == 0) return child;
    index.reset();  // a name has changed unheard
    return scan(name);
}

const std::shared_ptr<Object>& ChildList::scan(const std::string& name) const {
    const auto found = std::ranges::find_if(children, [&](const auto& child) {
        return child && compareIgnoreCase(child->getName(), name) == 0;
    });
    return found != children.end() ? *found : noChild;
}

std::optional<std::uint64_t> ChildList::lookupChild(const Object& child) const {
    std::uint64_t position = 0;
    for (const auto& each : children) {
        if (each.get() == &child) return position;
        ++position;
    }
    return std::nullopt;
}

void ChildList::append(std::shared_ptr<Object> child) {
    if (children.size() >= children.max_size()) throw std::length_error("list too long");
    forgetNames();
    children.push_back(std::move(child));
    // A name that is not the stored one lasts no longer than the thread's announcement of it.
    if (!index) return;
    if (Attribute::isCachedAttributePending() || !index->add(std::prev(children.end())))
        index.reset();
}

std::shared_ptr<Object> ChildList::remove(Children::const_iterator place) {
    auto child = *place;
    forgetNames();
    if (index) index->remove(*child);
    children.erase(place);
    ++numRemoved;
    return child;
}

ChildList::Children ChildList::removeAll() {
    forgetNames();
    index.reset();
    numRemoved += children.size();
    return std::exchange(children, {});
}

ChildList::Children::const_iterator ChildList::find(const Object& child) const {
    if (const ChildIndex* const known = lookupIndex()) return known->find(child).value_or(end());
    return std::ranges::find_if(children, [&](const auto& each) { return each.get() == &child; });
}

std::optional<std::string> ChildList::nameStored(const Object& child) {
    forgetNames();
    if (!index) return std::nullopt;
    auto former = index->getName(child);
    if (Attribute::isCachedAttributePending() || !index->rename(child)) index.reset();
    return former;
}

// The index, made where it is worth its cost; null where the children must be looked at.
ChildIndex* ChildList::lookupIndex() const {
    if (children.size() < worthAnIndex || Attribute::isCachedAttributePending()) return nullptr;
    if (!index) index = ChildIndex::make(*this);
    return index.get();
}

// The names of a short list, side by side from the second search behind a change on: lists that
// grow name check by name check never need them.
const FewNames* ChildList::lookupNames() const {
    if (children.size() < worthNames || children.size() >= worthAnIndex) return nullptr;
    if (Attribute::isCachedAttributePending()) return nullptr;
    if (numScans < 2 && ++numScans == 2) names = FewNames::make(*this);
    return names.get();
}

void ChildList::forgetNames() const {
    names.reset();
    numScans = 0;
}

}  // namespace QOR::AttributeContainer
