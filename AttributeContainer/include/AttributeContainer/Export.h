// The export macro of the library, shared with its foundation.
#pragma once

#include <QOR/Export.h>
