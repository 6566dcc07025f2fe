#include "compare/Pairing.h"

#include <map>
#include <string>
#include <unordered_map>

namespace qormodel {

namespace {
class Pairer {
public:
    Pairer(const FlatTree& first, const FlatTree& second, NameRule rule)
        : first(first), second(second), rule(rule) {
        pairs.toSecond.assign(first.nodes.size(), FlatTree::none);
        pairs.toFirst.assign(second.nodes.size(), FlatTree::none);
    }

    Pairing run() {
        join(0, 0);
        pairByIdentifier();
        for (std::size_t i = 0; i < first.nodes.size(); ++i) {
            const std::size_t other = pairs.toSecond[i];
            if (other == FlatTree::none) continue;
            pairByName(first.nodes[i].fields, second.nodes[other].fields);
            pairByName(first.nodes[i].children, second.nodes[other].children);
        }
        return std::move(pairs);
    }

private:
    using Identified = std::map<QOR::uuids::uuid, std::size_t>;

    static Identified identified(const FlatTree& tree) {
        Identified found;
        for (std::size_t i = 1; i < tree.nodes.size(); ++i) {
            if (tree.nodes[i].id.is_nil()) continue;
            const auto [place, isNew] = found.emplace(tree.nodes[i].id, i);
            if (!isNew) place->second = FlatTree::none;
        }
        return found;
    }

    void pairByIdentifier() {
        const Identified others = identified(second);
        for (const auto& [id, index] : identified(first)) {
            const auto other = others.find(id);
            if (index == FlatTree::none || other == others.end()) continue;
            if (other->second != FlatTree::none && isOneClass(index, other->second))
                join(index, other->second);
        }
    }

    void pairByName(const std::vector<std::size_t>& ours, const std::vector<std::size_t>& theirs) {
        std::unordered_map<std::string, std::vector<std::size_t>> open;
        for (auto index = theirs.rbegin(); index != theirs.rend(); ++index)
            if (pairs.toFirst[*index] == FlatTree::none)
                open[foldedName(second.nodes[*index].slot)].push_back(*index);
        for (const std::size_t index : ours) {
            if (pairs.toSecond[index] != FlatTree::none) continue;
            const auto found = open.find(foldedName(first.nodes[index].slot));
            if (found == open.end() || found->second.empty()) continue;
            if (!mayPairByName(index, found->second.back())) continue;
            join(index, found->second.back());
            found->second.pop_back();
        }
    }

    bool mayPairByName(std::size_t a, std::size_t b) const {
        if (!isOneClass(a, b)) return false;
        if (rule == NameRule::Pairs) return true;
        return first.nodes[a].id.is_nil() || second.nodes[b].id.is_nil();
    }
    bool isOneClass(std::size_t a, std::size_t b) const {
        return classOf(*first.nodes[a].element.container) ==
               classOf(*second.nodes[b].element.container);
    }
    void join(std::size_t a, std::size_t b) {
        pairs.toSecond[a] = b;
        pairs.toFirst[b] = a;
    }

    const FlatTree& first;
    const FlatTree& second;
    NameRule rule;
    Pairing pairs;
};
}  // namespace

Pairing pairUp(const FlatTree& first, const FlatTree& second, NameRule rule) {
    return Pairer(first, second, rule).run();
}

}  // namespace qormodel
