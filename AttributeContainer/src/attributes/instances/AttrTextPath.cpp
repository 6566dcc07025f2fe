// The instances of the typed attributes, one for each type of the list: the road through text.
#include "attributes/AttrTextPath.h"

namespace QOR::AttributeContainer {

#define QOR_INSTANCE_ROW(KIND, TYPE, TOKEN, WORD) \
    QOR_CLASS_ROW_##KIND(                                                                          \
        template void Attr<TYPE>::assignFrom(const std::string&,                                    \
                                             const std::shared_ptr<ObservingObject>&,               \
                                             ResultPromise&, ResultPromise&);                       \
        template std::string Attr<TYPE>::getValueString() const;                                    \
        template void Attr<TYPE>::readValueFrom(std::istream&,                                      \
                                                std::shared_ptr<const ReadContextBase>);)
QOR_VALUE_TYPES(QOR_INSTANCE_ROW)
#undef QOR_INSTANCE_ROW

}  // namespace QOR::AttributeContainer
