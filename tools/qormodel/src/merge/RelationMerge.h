// The relations of a document in three versions.
#pragma once

#include "merge/Conflict.h"
#include "model/Document.h"
#include "model/Relations.h"

#include <vector>

namespace qormodel {

/// What theirs changed in the relations of elements, and ours has not.
struct RelationChanges {
    std::vector<Relation> added;
    std::vector<Relation> removed;
};

/// Compares the relations as the texts of the documents have them, by the path of what is watched.
RelationChanges listRelationChanges(const Document& base, const Document& ours,
                                    const Document& theirs);

/// Makes the changes in `ours`, once its tree is merged. What came with a whole element is there
/// already. One that cannot be made is a conflict, also with a preferred side: nothing that theirs
/// changed gets lost without a word.
void mergeRelations(const RelationChanges& changes, const Document& ours,
                    std::vector<Conflict>& conflicts);

}  // namespace qormodel
