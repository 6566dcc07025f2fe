// Tells whether what was read is what an attribute holds that is still to be made.
#pragma once

#include <AttributeContainer/Attribute.h>
#include <AttributeContainer/ValueTypes.h>

namespace QOR::AttributeContainer {

/// Whether taking over the value of `read`, a free attribute of the type, would leave nothing in an
/// attribute that now is like `untouched`. May be false where it would not, since values are told
/// by their bits: those with a fraction, of which some compare as the same and are not, never are.
bool isNothingNew(AttrType type, const Attribute& read, const Attribute& untouched);

}  // namespace QOR::AttributeContainer
