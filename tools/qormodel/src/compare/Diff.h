// What differs between two documents.
#pragma once

#include "compare/FlatTree.h"
#include "compare/Pairing.h"
#include "compare/ValueEquality.h"
#include "model/Document.h"

#include <memory>
#include <string>
#include <vector>

namespace qormodel {

/// One difference.
struct Change {
    enum class Kind { Title, Object, Field, Attribute, Relation, Place, Order, Content };

    char sign = '~';  ///< '-' only in the first, '+' only in the second, '~' in both, '?' unknown
    Kind kind = Kind::Attribute;
    std::string path;       ///< in the first document; where it is only in the second, in that
    std::string otherPath;  ///< in the second one, where an object has another place or name there
    std::string before{};   ///< in short; empty where nothing stands there
    std::string after{};
    std::shared_ptr<const ac::Attribute> first{};  ///< for attributes: that which stands there
    std::shared_ptr<const ac::Attribute> second{};
    /// For places, orders and contents the node of the first tree, as `flatten` counts; for
    /// relations the element in the outline of the document that has it.
    std::size_t index = FlatTree::none;
};

/// The word for a kind, as in "attribute".
const char* wordFor(Change::Kind kind);

/// All differences in the order of the first document, additions behind their parent. Objects are
/// paired as `pairUp` tells. An object or field that one side alone has is one difference, with all
/// that is below it. The order of children counts, that of attributes does not.
std::vector<Change> compareDocuments(const Document& first, const Document& second,
                                     const Tolerance& tolerance = {});

/// Whether two containers have the same attributes, by name, with the same values. Fields are not
/// looked at.
bool hasSameAttributes(const ac::AttrContainer& first, const ac::AttrContainer& second);

}  // namespace qormodel
