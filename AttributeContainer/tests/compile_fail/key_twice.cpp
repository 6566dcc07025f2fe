// error: cannot be overloaded with|class member cannot be redeclared
#include <AttributeContainer/AttributeContainer.h>

namespace AC = QOR::AttributeContainer;

class Twice : public AC::ContainerClass<Twice, AC::AttrContainer, "Twice"> {
public:
    using Block::Block;
    QOR_ATTRIBUTE(1, int, Same);
    QOR_ATTRIBUTE(2, int, Same);
};

int main() { Twice::create(); }
