// The tree of a page: that of one document, or those of two in one.
#pragma once

#include "compare/FlatTree.h"
#include "compare/Pairing.h"
#include "model/Document.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace qormodel {

/// One element of a page, with its places in the two trees; `FlatTree::none` where it is not there.
struct PageNode {
    std::size_t first = FlatTree::none;
    std::size_t second = FlatTree::none;
    std::size_t parent = 0;  ///< the root's is its own
};

/// The elements of one document, or of two, in which each pair is one element at its first place.
/// What only the second has follows the sibling behind which it stands there, and what was removed
/// behind that one.
class PageTree {
public:
    /// \param second null for the page of one document. Both outlive this.
    explicit PageTree(const Document& first, const Document* second = nullptr);

    /// Each behind its parent, and all that is below it directly behind it.
    const std::vector<PageNode>& getNodes() const { return nodes; }
    bool isComparison() const { return compared; }
    const FlatTree& getFirst() const { return first; }
    const FlatTree& getSecond() const { return second; }  ///< empty for the page of one document

    /// The element in that document; null where it is not there.
    const Node* inqFirst(const PageNode& node) const;
    const Node* inqSecond(const PageNode& node) const;
    /// The element as the page shows it: as it is in the second document, if it is there.
    const Node& shown(const PageNode& node) const;
    /// '-' for what only the first document has, '+' for the second, else a blank.
    char signOf(const PageNode& node) const;

    /// The node of a path; none where nothing stands. Of two of one path it is the first.
    std::size_t findFirst(const std::string& path) const { return find(firstPaths, path); }
    std::size_t findSecond(const std::string& path) const { return find(secondPaths, path); }

    /// The node that stands for a node of the first or of the second document.
    std::size_t pageNodeOfFirst(std::size_t node) const { return ofFirst[node]; }
    std::size_t pageNodeOfSecond(std::size_t node) const { return ofSecond[node]; }

private:
    using Paths = std::unordered_map<std::string, std::size_t>;

    static std::size_t find(const Paths& paths, const std::string& path);
    std::vector<PageNode> below(std::size_t index) const;
    void appendBelow(const PageNode& node, std::vector<std::size_t> Node::*list,
                     std::vector<PageNode>& found) const;
    void collect();

    bool compared;
    FlatTree first;
    FlatTree second;
    Pairing pairs;
    std::vector<PageNode> nodes;
    Paths firstPaths;
    Paths secondPaths;
    std::vector<std::size_t> ofFirst;
    std::vector<std::size_t> ofSecond;
};

}  // namespace qormodel
