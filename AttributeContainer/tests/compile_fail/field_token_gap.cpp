// error: token of Station does not continue the rows before
#include <AttributeContainer/AttributeContainer.h>

namespace AC = QOR::AttributeContainer;

class Holder : public AC::ContainerClass<Holder, AC::AttrContainer, "Holder"> {
public:
    using Block::Block;
    QOR_FIELD(1, AC::ArrayContainer, Station);
};

int main() { Holder::create(); }
