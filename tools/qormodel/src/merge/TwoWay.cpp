#include "merge/TwoWay.h"

#include "compare/FlatTree.h"
#include "compare/OutlineDiff.h"
#include "compare/Pairing.h"
#include "merge/Assembly.h"
#include "merge/AttributeMerge.h"
#include "merge/RelationMerge.h"
#include "model/ModelPath.h"

#include <cstddef>

namespace qormodel {

namespace {
using Merger = ac::AttrContMerger;
constexpr std::size_t none = FlatTree::none;

unsigned int flagsOf(const TwoWayOptions& options) {
    unsigned int flags = Merger::ASSIGN_ONLY_CHANGED_VALUES;
    if (options.keep || !options.onlyMarked.empty()) flags |= Merger::KEEP_NON_EXISTENT_IN_SOURCE;
    if (!options.onlyMarked.empty()) flags |= Merger::CONSIDER_ONLY_MARKED;
    if (options.telling == Telling::Never) flags |= Merger::BLOCK_OBSERVERS;
    if (options.telling == Telling::AtTheEnd)
        flags |= Merger::TRIGGER_OBSERVERS_AFTER_MERGE_IS_COMPLETE;
    return flags;
}

// Marks what stands at and below a path.
void mark(const Document& source, const std::string& path) {
    if (const auto found = inqAttribute(source, path)) return found->attribute->setMarked(true);
    const auto element = inqElement(source, path);
    if (!element) throw Failure(source.placeOf(0, 0), "there is nothing at " + path);
    forEachElementBelow(*element, [](const Element& each) {
        forEachAttribute(*each.container,
                         [](const auto& attribute) { attribute->setMarked(true); });
        return true;
    });
}

class Merge {
public:
    Merge(Document& targetDocument, Document& sourceDocument, const TwoWayOptions& options)
        : options(options),
          targetDocument(targetDocument),
          sourceDocument(sourceDocument),
          flags(flagsOf(options)),
          target(flatten(targetDocument.root)),
          source(flatten(sourceDocument.root)),
          pairs(pairUp(target, source)),
          isWanted(source.nodes.size(), options.onlyMarked.empty()),
          relations(listRelationChanges(targetDocument, targetDocument, sourceDocument)) {
        if (options.onlyMarked.empty()) targetDocument.outline.title = sourceDocument.outline.title;
    }

    TwoWayResult run() {
        if (!options.onlyMarked.empty()) findWanted();
        auto wanted = parts();
        for (std::size_t i = 0; i < source.nodes.size(); ++i) mergeValues(i);
        followCopies(wanted);
        assemble(wanted, false, [this](const Part& part, const std::string& former) {
            result.notes.push_back(former + " is named " + part.container->getName() +
                                   " here: the name is taken");
        });
        if (options.onlyMarked.empty()) takeRelations();
        noteContents();
        return std::move(result);
    }

private:
    bool isKeeping() const { return options.keep || !options.onlyMarked.empty(); }

    // What holds something marked, itself or further down.
    void findWanted() {
        for (std::size_t i = source.nodes.size(); i-- > 0;) {
            forEachAttribute(*source.nodes[i].element.container, [&](const auto& attribute) {
                isWanted[i] = isWanted[i] || attribute->isMarked();
            });
            if (isWanted[i]) isWanted[source.nodes[i].parent] = true;
        }
        for (std::size_t i = source.nodes.size(); i-- > 0;) {
            const Node& node = source.nodes[i];
            if (!isWanted[i] && node.element.isField)  // the merger would take it as it is
                source.nodes[node.parent].element.container->rmField(node.element.container);
        }
    }

    void mergeValues(std::size_t index) {
        const std::size_t other = pairs.toFirst[index];
        const Node& node = source.nodes[index];
        if (other == none || node.element.isField || !isWanted[index]) return;
        ac::AttrContainer& into = *target.nodes[other].element.container;
        alignTypes(into, *node.element.container);
        Merger::merge(into, *node.element.container, flags, &result.values);
        noteRefusals(target.nodes[other], *node.element.container);
    }

    // The merger keeps the type of an attribute; the state of the source has the other one.
    void alignTypes(ac::AttrContainer& into, const ac::AttrContainer& from) {
        forEachAttribute(from, [&](const auto& attribute) {
            const auto there = into.getAttribute(attribute->getName()).lock();
            const bool isOther = there && there->getClassName() != attribute->getClassName();
            if (!isOther || (!options.onlyMarked.empty() && !attribute->isMarked())) return;
            if (takeAttribute(into, *attribute)) ++result.values.numChanged;
        });
    }

    void noteRefusals(const Node& node, const ac::AttrContainer& from) {
        forEachAttribute(from, [&](const auto& attribute) {
            if (!options.onlyMarked.empty() && !attribute->isMarked()) return;
            const auto there = node.element.container->getAttribute(attribute->getName()).lock();
            if (there && *there == *attribute) return;
            result.notes.push_back(pathBelow(node.element.path, attribute->getName()) +
                                   ": the value was refused, or is of another type");
        });
    }

    void takeRelations() {
        if (options.keep) relations.removed.clear();
        std::vector<Conflict> conflicts;
        mergeRelations(relations, targetDocument, conflicts);
        for (const auto& conflict : conflicts)
            result.notes.push_back(conflict.path + ": relation " + conflict.text);
    }

    // Content that no class understands is not merged.
    void noteContents() {
        const Contents here = listContents(targetDocument, target);
        const Contents there = listContents(sourceDocument, source);
        for (std::size_t i = 0; i < source.nodes.size(); ++i) {
            const std::size_t other = pairs.toFirst[i];
            if (other == none || !isWanted[i]) continue;
            const std::string& path = target.nodes[other].element.path;
            if (contentAt(here, other) != contentAt(there, i))
                result.notes.push_back(path + ": other content that is not understood stays here");
        }
    }

    // The children in the order of the source; what stays of the target alone comes behind.
    std::vector<Part> parts() {
        std::vector<Part> parts;
        std::vector<std::size_t> ofTarget(target.nodes.size(), none);
        std::vector<std::size_t> ofSource(source.nodes.size(), none);
        const auto add = [&](const Node& node, std::size_t parent) {
            parts.push_back({node.element.container,
                             parent,
                             node.element.isField,
                             node.slot,
                             {homeOf(node), ""}});
            return parts.size() - 1;
        };
        if (isKeeping()) addTarget(ofTarget, add);
        for (std::size_t i = 0; i < source.nodes.size(); ++i) {
            const std::size_t other = pairs.toFirst[i];
            const std::size_t parent = i == 0 ? none : ofSource[source.nodes[i].parent];
            if (other != none && ofTarget[other] != none) {
                ofSource[i] = ofTarget[other];
                parts[ofSource[i]].homes[1] = homeOf(source.nodes[i]);
                if (i > 0 && isWanted[i] && !source.nodes[i].element.isField)
                    moveTo(parts[ofSource[i]], parent);
            } else if (i == 0 || (parent != none && isWanted[i])) {
                const Node& node = other != none ? target.nodes[other] : source.nodes[i];
                ofSource[i] = add(node, parent);
                parts.back().homes = {"", homeOf(source.nodes[i])};
                if (other != none) countMove(i, other);
                else if (!node.element.isField) ++result.numObjectsAdded;
            }
        }
        countRemoved();
        return parts;
    }

    // The merger adds a copy of a field that the target does not have, and children of an object
    // are not copied: they are to hang below that copy.
    static void followCopies(std::vector<Part>& parts) {
        for (Part& part : parts) {
            if (!part.isField) continue;
            const auto& holder = parts[part.parent].container;
            const auto field = holder->getField(holder->getFieldToken(part.slot)).lock();
            if (field) part.container = field;
        }
    }

    template <class Add> void addTarget(std::vector<std::size_t>& ofTarget, const Add& add) const {
        for (std::size_t i = 0; i < target.nodes.size(); ++i)
            ofTarget[i] = add(target.nodes[i], i == 0 ? none : ofTarget[target.nodes[i].parent]);
    }

    // Hangs a part of the target where the source has it.
    void moveTo(Part& part, std::size_t parent) {
        if (parent == none || parent == part.parent) return;
        part.parent = parent;
        ++result.numObjectsMoved;
    }

    void countMove(std::size_t index, std::size_t other) {
        if (index == 0 || source.nodes[index].element.isField) return;
        if (pairs.toFirst[source.nodes[index].parent] != target.nodes[other].parent)
            ++result.numObjectsMoved;
    }

    void countRemoved() {
        if (isKeeping()) return;
        for (std::size_t i = 0; i < target.nodes.size(); ++i)
            if (pairs.toSecond[i] == none && !target.nodes[i].element.isField)
                ++result.numObjectsRemoved;
    }

    const TwoWayOptions& options;
    const Document& targetDocument;
    const Document& sourceDocument;
    unsigned int flags;
    const FlatTree target;
    const FlatTree source;
    const Pairing pairs;
    std::vector<bool> isWanted;  // nodes of the source
    RelationChanges relations;
    TwoWayResult result;
};
}  // namespace

TwoWayResult mergeTwoWays(Document& target, Document& source, const TwoWayOptions& options) {
    for (const auto& path : options.onlyMarked) mark(source, path);
    return Merge(target, source, options).run();
}

}  // namespace qormodel
