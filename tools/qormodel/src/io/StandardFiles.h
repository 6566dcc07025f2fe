// The three files that every program begins with.
#pragma once

namespace qormodel {

/// Opens a stand-in for each of standard input, output and error output that was closed when the
/// program began, so that no file which it opens later gets their descriptors. Reading or writing
/// the stand-in fails, as it would without one.
void openStandardFiles();

}  // namespace qormodel
