#include <AttributeContainer/CachedAttributeInfo.h>

#include <utility>

namespace QOR::AttributeContainer {

CachedAttributeInfo::CachedAttributeInfo(std::shared_ptr<Attribute> attribute)
    : cachedAttribute(std::move(attribute)) {
    setExpire(false);
}

CachedAttributeInfo::~CachedAttributeInfo() = default;

const std::string& CachedAttributeInfo::getStaticClassName() {
    static const std::string name{"CachedAttributeInfo"};
    return name;
}

const std::string& CachedAttributeInfo::getClassName() const {
    return getStaticClassName();
}

}  // namespace QOR::AttributeContainer
