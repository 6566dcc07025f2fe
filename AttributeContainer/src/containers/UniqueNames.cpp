#include "containers/UniqueNames.h"

#include <AttributeContainer/ThreadWord.h>
#include <AttributeContainer/kVAttrContainer.h>

#include <QOR/Text.h>

#include <cstddef>
#include <iterator>
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

// Where the number at the end of a name begins.
std::size_t numberOf(const std::string& name) {
    return name.find_last_not_of("0123456789") + 1;  // 0 as well where the name is nothing else
}

// Whether `name` is one of those that are tried from `candidate` on, ahead of `found`.
bool isTried(const std::string& name, const std::string& candidate, const std::string& found) {
    const std::size_t stem = numberOf(candidate);
    if (numberOf(name) > stem || name.size() < candidate.size() || name.size() > found.size())
        return false;
    if (compareIgnoreCase(name.substr(0, stem), candidate.substr(0, stem)) != 0) return false;
    const std::string number = name.substr(stem);
    if (name.size() == candidate.size() && number < candidate.substr(stem)) return false;
    if (name.size() > candidate.size() && number.front() == '0') return false;
    return name.size() < found.size() || number < found.substr(stem);
}
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

void UniqueNames::forget(const AttrContainer& container) {
    if (!inUse || inUse->empty()) return;
    auto first = inUse->lower_bound({&container, std::string{}});
    while (first != inUse->end() && first->first.first == &container) first = inUse->erase(first);
}

void UniqueNames::forget(const AttrContainer& container, const std::string& name) {
    if (!inUse || inUse->empty()) return;
    auto made = inUse->lower_bound({&container, std::string{}});
    while (made != inUse->end() && made->first.first == &container) {
        const bool isFree =
            isTried(name, made->first.second, made->second) && container.isNameUnique(name);
        made = isFree ? inUse->erase(made) : std::next(made);
    }
}

}  // namespace QOR::AttributeContainer
