// error: would use explicit constructor|no matching constructor for initialization
#include <AttributeContainer/AttributeContainer.h>

namespace AC = QOR::AttributeContainer;

class Plain : public AC::ContainerClass<Plain, AC::AttrContainer, "Plain"> {
public:
    using Block::Block;
    QOR_ATTRIBUTE(1, int, First);
};

int main() { Plain plain({}, AC::CreateDeep, std::nullopt); }
