// error: cannot be overloaded with|class member cannot be redeclared
#include <AttributeContainer/AttributeContainer.h>

namespace AC = QOR::AttributeContainer;

class Twice : public AC::ContainerClass<Twice, AC::AttrContainer, "Twice"> {
public:
    using Block::Block;
    QOR_ATTRIBUTE(1, int, First);
    QOR_ATTRIBUTE(1, int, Second);
};

int main() { Twice::create(); }
