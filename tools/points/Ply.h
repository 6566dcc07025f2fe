// PLY files: a header that tells the elements and their properties, and these in text or binary.
#pragma once

#include "LineReader.h"
#include "Scan.h"

namespace points {

/// Whether the reader, which stands on the first line of a file, has PLY before it.
bool isPly(const LineReader& lines);

/// Reads the points of the element "vertex": its properties x, y and z, and the normals nx, ny and
/// nz where it has all three. Other elements and properties are passed over.
/// \throws BadPointFile
void readPly(LineReader& lines, Scan& scan);

}  // namespace points
