// error: token of Second does not continue the rows before
#include <AttributeContainer/AttributeContainer.h>

namespace AC = QOR::AttributeContainer;

class Gap : public AC::ContainerClass<Gap, AC::AttrContainer, "Gap"> {
public:
    using Block::Block;
    QOR_ATTRIBUTE(1, int, First);
    QOR_ATTRIBUTE(3, int, Second);
};

int main() { Gap::create(); }
