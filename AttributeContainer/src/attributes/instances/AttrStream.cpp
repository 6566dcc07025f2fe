// The instances of the typed attributes, one for each type of the list: their blocks in a stream.
#include "persistence/AttrStream.h"

namespace QOR::AttributeContainer {

#define QOR_INSTANCE_ROW(KIND, TYPE, TOKEN, WORD) \
    QOR_CLASS_ROW_##KIND(                                                                          \
        template ErrorPtr Attr<TYPE>::writeTo(std::ostream&,                                        \
                                              std::shared_ptr<const WriteContextBase>) const;       \
        template ErrorPtr Attr<TYPE>::readFrom(std::istream&,                                       \
                                               std::shared_ptr<const ReadContextBase>);)
QOR_VALUE_TYPES(QOR_INSTANCE_ROW)
#undef QOR_INSTANCE_ROW

}  // namespace QOR::AttributeContainer
