#include "containers/UniqueNames.h"

#include <AttributeContainer/kVAttrContainer.h>

#include "observation/ThreadWord.h"

#include <cstddef>
#include <map>
#include <utility>

namespace QOR::AttributeContainer {

namespace {
// The last name made, by container and by what it was made from. Several, because a stream can ask
// for two names in turn.
using Made = std::map<std::pair<const AttrContainer*, std::string>, std::string>;
constexpr std::size_t maxMade = 1000;

// Null before the first name and when the thread has ended: containers may go later than that.
QOR_THREAD_WORD Made* inUse = nullptr;

struct Keeper {
    Keeper() { inUse = &made; }
    ~Keeper() { inUse = nullptr; }
    Made made;
};
}  // namespace

std::string UniqueNames::resume(const AttrContainer& container, const std::string& candidate) {
    if (!inUse) return candidate;
    const auto last = inUse->find({&container, candidate});
    if (last == inUse->end()) return candidate;
    // The name was taken since, or else the world has changed and the search begins anew.
    return container.isNameUnique(last->second) ? candidate : last->second;
}

void UniqueNames::remember(const AttrContainer& container, const std::string& candidate,
                           const std::string& found) {
    thread_local Keeper keeper;
    if (!inUse) return;
    if (inUse->size() >= maxMade) inUse->clear();
    inUse->insert_or_assign({&container, candidate}, found);
}

void UniqueNames::forget() {
    if (inUse) inUse->clear();
}

void UniqueNames::forget(const AttrContainer& container) {
    if (!inUse || inUse->empty()) return;
    auto first = inUse->lower_bound({&container, std::string{}});
    while (first != inUse->end() && first->first.first == &container) first = inUse->erase(first);
}

}  // namespace QOR::AttributeContainer
