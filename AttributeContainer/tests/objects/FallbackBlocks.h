// Blocks of objects of unknown classes, for tests.
#pragma once

#include "support/BlockText.h"
#include "support/ObjectText.h"

#include <string>

namespace QOR::AttributeContainer::Testing {

/// A container part that can be read.
inline const std::string countBlock = R"(AttrContainer { 
Attr<int> { 
Name "Count"
Value 5
}
}
)";

/// What the object writes in its place.
inline const std::string countBlockRewritten =
    body("FallbackObject", attributeBlock("int", "Count", "5"));

/// A container part that ends in a hard error, behind an attribute, a field and a child that can be
/// read.
inline const std::string brokenBlock = R"(AttrContainer { 
Attr<int> { 
Name "Count"
Value 5
}
SubContainer { 
"AttrContainer" "field"
AttrContainer { 
}
}
}
Child { 
"Object" "child"
AttrContainer { 
}
}
AttrContainer { 
Attr<Foo> { 
Name "odd"
Value 1
}
}
)";

}  // namespace QOR::AttributeContainer::Testing
