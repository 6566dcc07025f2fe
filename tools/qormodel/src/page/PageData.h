// What a page shows of one document, or of the differences between two.
#pragma once

#include "compare/Diff.h"
#include "model/Values.h"

namespace qormodel {

/// How many characters of a value a page shows, about. A longer one ends in dots; a list tells how
/// many elements it has.
constexpr std::size_t pageValueLength = 500;

/// The data of a page, which its script reads.
///
/// `files`: one or two, each with its name, title, formatVersion, size and warnings.
/// `changes`: how many of each sign; null for one document.
/// `classes`, `types`: words that nodes and attributes name by their index.
/// `nodes`: the tree, each behind its parent and directly behind what is below the one before:
///   n name, c class, p parent; f field, u unknown (where true); s sign (where not blank);
///   a attributes: [name, type, value, isDefault] and for those that differ [sign, before, after];
///   m marks: [sign, text] of what else is to be said of the node, [sign, text, 1] for a
///   difference.
/// `relations`: n node, a attribute (empty for the node itself), t target node (-1 for none),
///   b target's attribute, o path as stored, c action, k priority, q asked before a change,
///   u leads nowhere or has no known action, s sign.
/// `pointSets`: n node, a attribute, c count, min, max; w, h, d cells of the thumbnail, where it
///   has one.
/// `plan`: as `describePlan` tells.
/// \param second null for the page of one document
/// \param tolerance for numbers, also those of places in the plan
Json describePage(const Document& first, const Document* second = nullptr,
                  const Tolerance& tolerance = {});

}  // namespace qormodel
