// Where the elements of a page are, seen from above.
#pragma once

#include "compare/ValueEquality.h"
#include "model/Values.h"
#include "page/PageTree.h"
#include "page/Thumbnail.h"

#include <map>

namespace qormodel {

/// The point sets of a page by their nodes.
using PointSets = std::map<std::size_t, PointSet>;

/// The places of stations, pictures and markers, and the corners of the boxes around point sets.
///
/// An element with a `Transformation` is a picture where it is of that class, else a station; a
/// container that holds others together is one only if it has points of its own. What has a
/// `Position` is a marker. A transformation leads into the coordinates of the element above, its
/// last column being the place. What has no finite place is left out.
/// \return {"symbols": [{"k": "station" | "picture" | "marker", "n": node, "x", "y", "z",
/// "h": direction of the x axis in radians, for stations; "from": [x, y] where it was before}],
/// "areas": [{"n": node, "c": [x, y of four corners]}]}
/// \param tolerance within it a place is the same as before
Json describePlan(const PageTree& tree, const PointSets& points, const Tolerance& tolerance = {});

}  // namespace qormodel
