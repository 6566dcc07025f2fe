// error: token of Second does not continue the rows before
#include <AttributeContainer/AttributeContainer.h>

namespace AC = QOR::AttributeContainer;

class Lower : public AC::ContainerClass<Lower, AC::AttrContainer, "Lower"> {
public:
    using Block::Block;
    QOR_ATTRIBUTE(1, int, First);
};
class Upper : public AC::ContainerClass<Upper, Lower, "Upper"> {
public:
    using Block::Block;
    QOR_ATTRIBUTE(1, int, Second);
};

int main() { Upper::create(); }
