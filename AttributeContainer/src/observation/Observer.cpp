#include <AttributeContainer/Observer.h>

#include <AttributeContainer/Observable.h>
#include <AttributeContainer/ObserverRelation.h>

#include <QOR/Text.h>

#include "observation/ObserverRelationTable.h"
#include "observation/PathText.h"

#include <algorithm>
#include <utility>

namespace QOR::AttributeContainer {

namespace {
constexpr std::uint64_t none = ~std::uint64_t{0};

thread_local std::shared_ptr<Observer> pathRoot;

bool isSame(const std::weak_ptr<Observable>& entry,
            const std::weak_ptr<const ObservingObject>& of) {
    return !entry.owner_before(of) && !of.owner_before(entry);
}
}  // namespace

Observer::Params::~Params() = default;

bool Observer::Params::empty() const { return observedByMe.empty(); }

Observer::Observer(const std::optional<std::reference_wrapper<const Observer>>& source) {
    if (source) Observer::copyFrom(source->get());
}

Observer::~Observer() {
    rmAllObservers(true);
    leaveLingering();
    forgetInCurrentTable(*this);
}

const std::string& Observer::getStaticClassName() {
    static const std::string name{"Observer"};
    return name;
}

const std::string& Observer::getClassName() const { return getStaticClassName(); }

std::weak_ptr<const ObservingObject> Observer::inqObserver(
    const std::optional<const std::string>& path) const {
    if (!path) return {};
    if (path->empty()) return weak_from_this();
    const PathStep step;
    if (step.isTooDeep()) return {};
    if (const int start = findNonWS(*path, 0); start > 0)
        return std::as_const(*this).inqObserver(path->substr(static_cast<std::size_t>(start)));
    if (path->front() == '/' || path->front() == '#') {
        const std::shared_ptr<const Observer> root = pathRoot;
        if (!root) return {};
        return root->inqObserver(path->front() == '/' ? path->substr(1) : *path);
    }
    return resolveSegments(*this, *path);
}

int Observer::copyFrom(const Observer& source) {
    const PreserveObserverRelation scope;
    // Nobody looks for the copy of an observer to which no relation leads.
    if (!source.params.empty()) scope.getTable()->insert(&source, this);
    return 1;
}

Action::ExecReturn Observer::changedNotify(Observable&, Initiator&) {
    return Action::ExecUnchanged;
}

Action::ExecReturn Observer::toChangeNotify(Observable&, Initiator&) {
    return Action::ExecUnchanged;
}

std::optional<std::string> Observer::inqDisplayPath() const { return std::nullopt; }

std::optional<std::string> Observer::inqObjPath() const { return std::nullopt; }

bool Observer::checkLocking(const ActionForCheckLocking&) const { return true; }

void Observer::informDelete(const Observable& observable) { informRmObserve(observable); }

std::optional<std::reference_wrapper<const Observer>> Observer::lookupObject() const {
    return *this;
}

// The handshake -------------------------------------------------------------------------------

bool Observer::informAddObserve(Observable& observable) {
    params.observedByMe.push_back(
        std::static_pointer_cast<Observable>(observable.weak_from_this().lock()));
    return true;
}

std::uint64_t Observer::lookupObservedByMe(const Observable& observable) const {
    const std::weak_ptr<const ObservingObject> self = observable.weak_from_this();
    if (self.expired()) throw std::bad_weak_ptr{};
    const auto& entries = params.observedByMe;
    for (std::uint64_t i = entries.size(); i-- > 0;)
        if (isSame(entries[i], self)) return i;
    return none;
}

void Observer::informRmObserve(
    const std::optional<std::reference_wrapper<const Observable>>& observable) {
    if (!observable) return;
    const std::uint64_t index = lookupObservedByMe(observable->get());
    if (index == none) return;  // who never told is not known, and nothing is to forget
    params.observedByMe.erase(params.observedByMe.begin() + static_cast<std::ptrdiff_t>(index));
}

void Observer::informRmObserveAll(
    const std::optional<std::reference_wrapper<const Observable>>& observable) {
    if (!observable || params.observedByMe.empty()) return;
    const std::weak_ptr<const ObservingObject> self = observable->get().weak_from_this();
    if (self.expired()) throw std::bad_weak_ptr{};
    std::erase_if(params.observedByMe, [&](const auto& entry) { return isSame(entry, self); });
}

void Observer::noteLingering(Observable& observable) {
    if (!lingering) lingering = std::make_shared<std::vector<std::weak_ptr<Observable>>>();
    const auto self = std::static_pointer_cast<Observable>(observable.weak_from_this().lock());
    if (!self) return;
    for (const auto& entry : *lingering)
        if (isSame(entry, self)) return;
    lingering->push_back(self);
}

void Observer::rmAllObservers(bool) {
    // Taken over as a whole, since each observable that is left wants to change the list itself.
    const auto observed = std::exchange(params.observedByMe, {});
    for (const auto& entry : observed)
        if (const auto observable = entry.lock()) observable->rmObserver(*this);
    params.observedByMe.clear();
}

void Observer::leaveLingering() {
    const auto stayed = std::exchange(lingering, nullptr);
    if (!stayed) return;
    for (const auto& entry : *stayed)
        if (const auto observable = entry.lock()) observable->forgetObserver(*this);
}

// Taking over -----------------------------------------------------------------------------------

namespace {
struct RelationRecord {
    short priority;
    std::uint64_t action;
    bool temporary;
    bool isPre;
};

// The relations of `observable` to `observer`, each list from its last entry to its first.
std::vector<RelationRecord> collectRelations(const Observable& observable,
                                             const Observer& observer) {
    std::vector<RelationRecord> records;
    const std::uint64_t numPre = observable.getNumPreObservers();
    const std::uint64_t count = numPre + observable.getNumPostObservers();
    const auto collect = [&](std::uint64_t first, std::uint64_t last, bool isPre) {
        for (std::uint64_t i = last; i-- > first;) {
            const ObserverPath& path = observable.getPath(i);
            if (path.isGone()) continue;
            if (!path.isActive()) throw std::bad_optional_access{};
            if (&path.getObserver().value().get() != &observer) continue;
            records.push_back(
                {path.getPriority(), path.getActionToken(), path.isTemporary(), isPre});
        }
    };
    collect(0, numPre, true);
    collect(numPre, count, false);
    return records;
}
}  // namespace

std::uint64_t Observer::copyObservationsFrom(Observer& other) {
    std::uint64_t numCopied = 0;
    const auto observed = other.params.observedByMe;
    for (std::uint64_t i = observed.size(); i-- > 0;) {
        const auto observable = observed[i].lock();
        if (!observable) continue;
        if (&observable->lookupObject().value().get() == &other) continue;
        const auto records = collectRelations(*observable, other);
        for (const RelationRecord& record : records) {
            if (record.isPre) {
                observable->addPreObserver(*this, record.priority, record.action, record.temporary);
            } else {
                observable->addObserver(*this, record.priority, record.action, record.temporary);
            }
        }
        numCopied += records.size();
    }
    return numCopied;
}

std::uint64_t Observer::takeOverObservationsFrom(Observer& other) {
    if (&other == this) return 0;
    std::uint64_t numTaken = 0;
    const auto& observed = other.params.observedByMe;
    for (std::uint64_t i = observed.size(); i-- > 0;) {
        if (i >= observed.size()) continue;
        const auto observable = observed[i].lock();
        if (!observable) continue;
        const auto object = observable->lookupObject();
        if (object && &object->get() == &other) continue;
        const std::uint64_t count =
            observable->getNumPreObservers() + observable->getNumPostObservers();
        const std::uint64_t numBefore = observed.size();
        for (std::uint64_t k = count; k-- > 0;) {
            ObserverPath& path = observable->getPath(k);
            if (!path.isActive() || &path.getObserver()->get() != &other) continue;
            path.setObserver(*this, true);
            ++numTaken;
        }
        // The walk makes up for one entry that went; each further one went from below it.
        const std::uint64_t numGone = numBefore - observed.size();
        if (numGone > 1) i -= std::min(i, numGone - 1);
    }
    return numTaken;
}

// The path root ---------------------------------------------------------------------------------

std::optional<std::reference_wrapper<Observer>> Observer::currentPathRoot() {
    if (!pathRoot) return std::nullopt;
    return *pathRoot;
}

void Observer::currentPathRoot(std::shared_ptr<Observer> root) { pathRoot = std::move(root); }

}  // namespace QOR::AttributeContainer
