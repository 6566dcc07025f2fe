#include <AttributeContainer/AttrContMerger.h>

#include "comparison/FieldNames.h"

#include <string>

namespace QOR::AttributeContainer {

namespace {

using Changed = std::vector<std::weak_ptr<Attribute>>;
using Result = AttrContMerger::Result;

constexpr unsigned notificationFlags =
    AttrContMerger::TRIGGER_OBSERVERS_AFTER_MERGE_IS_COMPLETE | AttrContMerger::BLOCK_OBSERVERS;

// The block for one assignment. Not a `BlockObserver`, which would leave the caller's block as it
// is: a merge that defers has always left the thread unblocked.
class AssignmentBlock {
public:
    AssignmentBlock() { Attribute::setObservingBlocked(true); }
    AssignmentBlock(const AssignmentBlock&) = delete;
    AssignmentBlock& operator=(const AssignmentBlock&) = delete;
    ~AssignmentBlock() { Attribute::setObservingBlocked(false); }
};

// A copy that nobody hears of, although it has the relations of its original.
std::shared_ptr<Attribute> copyOf(const Attribute& attribute) {
    const BlockObserver silent;
    return attribute.duplicate(CreateDeep, std::nullopt);
}
std::shared_ptr<AttrContainer> copyOf(const AttrContainer& field) {
    const BlockObserver silent;
    return field.duplicate(CreateDeep);
}

// The passes over one container. Observers may change the trees meanwhile, so nothing is counted
// ahead.
class Merge {
public:
    Merge(AttrContainer& target, const AttrContainer& source, unsigned flags, Changed& changed,
          Result& result)
        : target(target), source(source), flags(flags), changed(changed), result(result) {}

    void takeAttributes();
    void rmAttributes();
    void rmFields();
    /// For who merges the fields that both have.
    template <class MergeBoth> void takeFields(const MergeBoth& mergeBoth);

private:
    bool has(unsigned flag) const { return (flags & flag) != 0; }
    bool isDeferred() const { return has(notificationFlags); }
    void assign(const std::shared_ptr<Attribute>& to, const Attribute& from);
    void keep(const std::shared_ptr<Attribute>& equal);
    void add(const Attribute& from, const std::string& name);
    void markChanged(Attribute& attribute) const {
        if (has(AttrContMerger::MARK_CHANGED_WITH_AUXILIARY)) attribute.setMarked(true);
    }

    AttrContainer& target;
    const AttrContainer& source;
    unsigned flags;
    Changed& changed;
    Result& result;
};

void Merge::takeAttributes() {
    for (std::uint64_t token = 0; token < source.getNumAttributes(); ++token) {
        const auto from = source.getAttribute(token).lock();
        if (!from || (has(AttrContMerger::CONSIDER_ONLY_MARKED) && !from->isMarked())) continue;
        const std::string name = from->getName();
        const auto to = target.getAttribute(target.getAttrToken(name)).lock();
        if (!to) {
            add(*from, name);
        } else if (*to != *from) {
            assign(to, *from);
        } else {
            keep(to);
        }
    }
}

void Merge::assign(const std::shared_ptr<Attribute>& to, const Attribute& from) {
    if (isDeferred()) {
        const AssignmentBlock block;
        *to = from;
        changed.push_back(to);
    } else {
        *to = from;
        to->touch(nullptr, nullptr);
    }
    ++result.numChanged;
    markChanged(*to);
}

void Merge::keep(const std::shared_ptr<Attribute>& equal) {
    ++result.numUnchanged;
    if (has(AttrContMerger::ASSIGN_ONLY_CHANGED_VALUES)) return;
    if (isDeferred()) {
        changed.push_back(equal);
    } else {
        equal->touch(nullptr, nullptr);
    }
}

void Merge::add(const Attribute& from, const std::string& name) {
    if (target.addAttribute(copyOf(from), name).expired()) return;
    ++result.numAttributesAdded;
    if (const auto added = target.getAttribute(name).lock()) markChanged(*added);
}

// From the last one down: a removal moves only what has had its turn.
void Merge::rmAttributes() {
    for (std::uint64_t token = target.getNumAttributes(); token-- > 0;) {
        const auto attribute = target.getAttribute(token).lock();
        if (!attribute) continue;
        const std::string name = attribute->getName();
        if (!source.getAttribute(source.getAttrToken(name)).expired()) continue;
        target.rmAttribute(name);
        ++result.numAttributesRemoved;
    }
}

template <class MergeBoth> void Merge::takeFields(const MergeBoth& mergeBoth) {
    for (std::uint64_t token = 0; token < source.getNumFields(); ++token) {
        const auto from = source.getField(token).lock();
        if (!from) continue;
        const std::string name = fieldNameAt(source, token, from.get());
        if (const auto to = target.getField(target.getFieldToken(name)).lock())
            mergeBoth(*to, *from);
        else if (target.addField(copyOf(*from), name, AddFlags::MakeNameUnique))
            ++result.numFieldsAdded;
    }
}

void Merge::rmFields() {
    for (std::uint64_t token = target.getNumFields(); token-- > 0;) {
        const auto field = target.getField(token).lock();
        const std::string name = fieldNameAt(target, token, field.get());
        if (!source.getField(source.getFieldToken(name)).expired()) continue;
        target.rmField(name);
        ++result.numFieldsRemoved;
    }
}

}  // namespace

void AttrContMerger::merge(AttrContainer& target, const AttrContainer& source, unsigned int flags,
                           Result* result) {
    Changed changed;
    merge_Internal(target, source, flags, changed, result);
    if ((flags & notificationFlags) != TRIGGER_OBSERVERS_AFTER_MERGE_IS_COMPLETE) return;
    for (const auto& attribute : changed)  // who is told may end one whose turn is to come
        if (const auto living = attribute.lock()) living->touch(nullptr, nullptr);
}

void AttrContMerger::merge_Internal(AttrContainer& target, const AttrContainer& source,
                                    unsigned int flags, Changed& changed, Result* result) {
    Result unwanted;
    Merge merge(target, source, flags, changed, result ? *result : unwanted);
    const bool rmMissing = (flags & KEEP_NON_EXISTENT_IN_SOURCE) == 0;
    merge.takeAttributes();
    if (rmMissing) merge.rmAttributes();
    merge.takeFields([&](AttrContainer& to, const AttrContainer& from) {
        merge_Internal(to, from, flags, changed, result);
    });
    if (rmMissing) merge.rmFields();
}

}  // namespace QOR::AttributeContainer
