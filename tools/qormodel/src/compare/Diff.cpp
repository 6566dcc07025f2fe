#include "compare/Diff.h"

#include "compare/OutlineDiff.h"
#include "model/Values.h"

#include <algorithm>
#include <utility>

namespace qormodel {

namespace {
using Kind = Change::Kind;

constexpr std::size_t valueLength = 60;

std::string placeWord(const Node& first, const Node& second, bool isMoved) {
    if (!isMoved) return "renamed";
    return first.slot == second.slot ? "moved" : "moved and renamed";
}

class Comparison {
public:
    Comparison(const Document& first, const Document& second, const Tolerance& tolerance)
        : tolerance(tolerance),
          first(flatten(first.root)),
          second(flatten(second.root)),
          pairs(pairUp(this->first, this->second)) {
        if (first.source && second.source && first.outline.title != second.outline.title)
            changes.push_back(
                {'~', Kind::Title, "", "", first.outline.title, second.outline.title});
        outlines.emplace(first, second, this->first, this->second, pairs);
    }

    std::vector<Change> run() {
        for (std::size_t i = 0; i < first.nodes.size(); ++i) {
            const std::size_t other = pairs.toSecond[i];
            if (other != FlatTree::none) {
                comparePair(i, other);
            } else if (pairs.toSecond[first.nodes[i].parent] != FlatTree::none) {
                addWhole('-', first, i, pairs.toSecond);
            }
        }
        outlines->addRelations(changes);
        return std::move(changes);
    }

private:
    void comparePair(std::size_t i, std::size_t other) {
        const Node& a = first.nodes[i];
        const Node& b = second.nodes[other];
        if (i > 0) comparePlaces(i, a, b);
        compareAttributes(a, b);
        compareOrder(i, a, b);
        outlines->addContent(i, other, changes);
        for (const auto* const list : {&b.fields, &b.children})
            for (const std::size_t added : *list)
                if (pairs.toFirst[added] == FlatTree::none)
                    addWhole('+', second, added, pairs.toFirst);
    }

    void comparePlaces(std::size_t index, const Node& a, const Node& b) {
        const bool isMoved = pairs.toSecond[a.parent] != b.parent;
        if (!isMoved && a.slot == b.slot) return;
        Change change{'~', Kind::Place, a.element.path, b.element.path, placeWord(a, b, isMoved)};
        change.index = index;
        changes.push_back(std::move(change));
    }

    void compareAttributes(const Node& a, const Node& b) {
        const bool isNamedAbove = !a.element.isField && a.element.depth > 0;
        forEachAttribute(*a.element.container, [&](const auto& attribute) {
            if (isNamedAbove && attribute->getToken() == 0) return;
            const auto other = b.element.container->getAttribute(attribute->getName()).lock();
            if (other && isSameValue(*attribute, *other, tolerance)) return;
            addAttribute(a, attribute, other);
        });
        forEachAttribute(*b.element.container, [&](const auto& attribute) {
            if (a.element.container->getAttribute(attribute->getName()).expired())
                addAttribute(b, nullptr, attribute);
        });
    }

    void addAttribute(const Node& node, const std::shared_ptr<const ac::Attribute>& before,
                      const std::shared_ptr<const ac::Attribute>& after) {
        Change change{!after   ? '-'
                      : before ? '~'
                               : '+',
                      Kind::Attribute,
                      pathBelow(node.element.path, (before ? before : after)->getName()), ""};
        if (before) change.before = shortValueText(*before, valueLength);
        if (after) change.after = shortValueText(*after, valueLength);
        if (before && after) describeLists(*before, *after, change);
        change.first = before;
        change.second = after;
        changes.push_back(std::move(change));
    }

    // Where a list differs says more than how it begins.
    void describeLists(const ac::Attribute& before, const ac::Attribute& after, Change& change) {
        if (before.getClassName() != after.getClassName()) {
            change.before += ' ' + before.getClassName();
            change.after += ' ' + after.getClassName();
            return;
        }
        const auto delta = compareLists(before, after, tolerance);
        if (!delta) return;
        change.before = std::to_string(delta->firstSize) + " elements";
        change.after = std::to_string(delta->secondSize) + " elements";
        if (delta->numDifferent == 0) return;
        change.after += ", " + std::to_string(delta->numDifferent) +
                        " of them others, the first at " + std::to_string(delta->place) + ": " +
                        elementText(before, delta->place) + " -> " +
                        elementText(after, delta->place);
    }

    // Compares the order of those children that both have here.
    void compareOrder(std::size_t index, const Node& a, const Node& b) {
        std::vector<std::size_t> expected;
        for (const std::size_t child : a.children) {
            const std::size_t other = pairs.toSecond[child];
            if (other != FlatTree::none && &second.nodes[second.nodes[other].parent] == &b)
                expected.push_back(other);
        }
        if (std::is_sorted(expected.begin(), expected.end())) return;
        Change change{'~', Kind::Order, a.element.path, "", "children in another order"};
        change.index = index;
        changes.push_back(std::move(change));
    }

    void addWhole(char sign, const FlatTree& tree, std::size_t index,
                  const std::vector<std::size_t>& partners) {
        const Node& node = tree.nodes[index];
        std::string text = classOf(*node.element.container);
        if (const std::size_t more = countBelow(tree, index, partners))
            text += " with " + std::to_string(more) + " below";
        Change change{sign, node.element.isField ? Kind::Field : Kind::Object, node.element.path,
                      ""};
        (sign == '-' ? change.before : change.after) = std::move(text);
        changes.push_back(std::move(change));
    }

    // How many elements go with it; those that have a partner stand elsewhere.
    static std::size_t countBelow(const FlatTree& tree, std::size_t index,
                                  const std::vector<std::size_t>& partners) {
        std::size_t count = 0;
        std::vector<std::size_t> waiting{index};
        while (!waiting.empty()) {
            const Node& node = tree.nodes[waiting.back()];
            waiting.pop_back();
            for (const auto* const list : {&node.fields, &node.children}) {
                for (const std::size_t each : *list) {
                    if (partners[each] != FlatTree::none) continue;
                    ++count;
                    waiting.push_back(each);
                }
            }
        }
        return count;
    }

    const Tolerance& tolerance;
    const FlatTree first;
    const FlatTree second;
    const Pairing pairs;
    std::optional<OutlineDiff> outlines;
    std::vector<Change> changes;
};
}  // namespace

const char* wordFor(Change::Kind kind) {
    switch (kind) {
        case Kind::Title: return "title";
        case Kind::Object: return "object";
        case Kind::Field: return "field";
        case Kind::Attribute: return "attribute";
        case Kind::Relation: return "relation";
        case Kind::Place: return "place";
        case Kind::Order: return "order";
        case Kind::Content: break;
    }
    return "content";
}

std::vector<Change> compareDocuments(const Document& first, const Document& second,
                                     const Tolerance& tolerance) {
    return Comparison(first, second, tolerance).run();
}

bool hasSameAttributes(const ac::AttrContainer& first, const ac::AttrContainer& second) {
    if (first.getNumAttributes() != second.getNumAttributes()) return false;
    bool isSame = true;
    forEachAttribute(first, [&](const auto& attribute) {
        const auto other = second.getAttribute(attribute->getName()).lock();
        isSame = isSame && other && isSameValue(*attribute, *other);
    });
    return isSame;
}

}  // namespace qormodel
