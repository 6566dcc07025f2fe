// The instances of the typed attributes, one for each type of the list: value and change.
#include "attributes/AttrImpl.h"

namespace QOR::AttributeContainer {

#define QOR_INSTANCE_ROW(KIND, TYPE, TOKEN, WORD) \
    QOR_CLASS_ROW_##KIND(template class AttrVal<TYPE>; template class Attr<TYPE>;)
QOR_VALUE_TYPES(QOR_INSTANCE_ROW)
#undef QOR_INSTANCE_ROW

}  // namespace QOR::AttributeContainer
