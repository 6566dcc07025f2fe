// The memory of one copying action: which observer became which, so that copied relations follow.
#pragma once

#include <AttributeContainer/Observer.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>

namespace QOR::AttributeContainer {

class AttrContainer;

/// The table of one copying action, from an old observer to its copy. One is current per thread,
/// and it lives as long as a scope of that thread holds it.
class QOR_API ObserverRelationTableObserver : public Observer {
public:
    ObserverRelationTableObserver();
    ~ObserverRelationTableObserver() override;

    std::string getName() const override;
    /// The copy of `old`; empty when it is not known.
    std::optional<std::reference_wrapper<Observer>> lookup(const Observer* old) const;
    /// Whether `observer` is the copy of another.
    bool isCopy(const Observer& observer) const { return originals.contains(&observer); }
    /// Notes a pair; the first copy of an observer stays.
    void insert(const Observer* old, Observer* copy);
    /// How many pairs are known.
    std::uint64_t size() const { return relations.size(); }

    /// Drops every pair of which `observer` is a part: it goes away.
    void forget(const Observer& observer);

private:
    friend class PreserveObserverRelation;  // counts the scopes
    friend class BlockUpdateObservers;

    void clear();

    std::atomic<std::uint64_t> scopeCount{0};
    std::map<const Observer*, Observer*> relations;
    // From each copy to its originals, also where another copy was the first.
    std::multimap<const Observer*, const Observer*> originals;
    std::uint64_t blockCount = 0;
};

/// Keeps the thread's table alive for a scope. Scopes end in the reverse order of their beginning.
class QOR_API PreserveObserverRelation {
public:
    PreserveObserverRelation();
    PreserveObserverRelation(const PreserveObserverRelation&) = delete;
    PreserveObserverRelation& operator=(const PreserveObserverRelation&) = delete;
    /// The last scope of a thread empties the table.
    virtual ~PreserveObserverRelation();

    const std::shared_ptr<ObserverRelationTableObserver>& getTable() const { return table; }

private:
    std::shared_ptr<ObserverRelationTableObserver> table;
};

/// Puts off the swapping of copied relations until the outermost such scope ends, when both sides
/// of each relation exist. That scope updates the container that it names.
class QOR_API BlockUpdateObservers : public PreserveObserverRelation {
public:
    explicit BlockUpdateObservers(std::shared_ptr<AttrContainer> toBeUpdated);
    ~BlockUpdateObservers() override;

    const std::shared_ptr<AttrContainer>& getToBeUpdated() const { return toBeUpdated; }
    void setToBeUpdated(std::shared_ptr<AttrContainer> container);

private:
    std::shared_ptr<AttrContainer> toBeUpdated;
};

}  // namespace QOR::AttributeContainer
