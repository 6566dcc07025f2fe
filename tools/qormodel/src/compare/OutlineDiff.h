// What only the texts of two documents tell: relations, and content that no class understands.
#pragma once

#include "compare/FlatTree.h"
#include "compare/Pairing.h"
#include "model/Document.h"
#include "model/Relations.h"

#include <map>
#include <string>
#include <vector>

namespace qormodel {

struct Change;

/// A relation as a change tells of it.
std::string relationText(const Relation& relation);

/// The content that no class understands, by the node that holds it. That of an element which was
/// not taken over belongs to the one above.
using Contents = std::map<std::size_t, std::vector<std::string>>;

Contents listContents(const Document& document, const FlatTree& tree);

/// What a node holds; empty for nothing.
std::vector<std::string> contentAt(const Contents& contents, std::size_t node);

/// The name of the attribute that a relation belongs to; empty for the container's own.
std::string attributeOf(const Relation& relation);

/// Compares the outlines of two documents along the pairs of their trees. All of it outlives this.
class OutlineDiff {
public:
    OutlineDiff(const Document& firstDocument, const Document& secondDocument,
                const FlatTree& first, const FlatTree& second, const Pairing& pairs);

    /// Adds a change where a pair holds other content that is not understood.
    void addContent(std::size_t first, std::size_t second, std::vector<Change>& changes) const;
    /// Adds the relations that one side alone has. Those of paired elements are held against each
    /// other, wherever they stand.
    void addRelations(std::vector<Change>& changes) const;

private:
    const Document& firstDocument;
    const Document& secondDocument;
    const FlatTree& first;
    const FlatTree& second;
    const Pairing& pairs;
    Contents firstContents;
    Contents secondContents;
};

}  // namespace qormodel
