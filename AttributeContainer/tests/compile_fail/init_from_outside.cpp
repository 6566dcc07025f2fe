// error: is protected within this context|is a protected member
#include <AttributeContainer/AttributeContainer.h>

namespace AC = QOR::AttributeContainer;

class Plain : public AC::ContainerClass<Plain, AC::AttrContainer, "Plain"> {
public:
    using Block::Block;
    QOR_ATTRIBUTE(1, int, First);
};

int main() { Plain::create()->init(AC::CreateDeep, std::nullopt); }
