// error: template constraint failure|constraints not satisfied
#include <AttributeContainer/AttributeContainer.h>

namespace AC = QOR::AttributeContainer;

struct NoValueType {};

class Odd : public AC::ContainerClass<Odd, AC::AttrContainer, "Odd"> {
public:
    using Block::Block;
    QOR_ATTRIBUTE(1, NoValueType, First);
};

int main() { Odd::create(); }
