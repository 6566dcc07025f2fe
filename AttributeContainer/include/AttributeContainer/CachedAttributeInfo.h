// A value that is shown before it is set.
#pragma once

#include <AttributeContainer/Attribute.h>

namespace QOR::AttributeContainer {

/// Hung on an attribute, it makes readers of this thread see the value of another attribute of the
/// same type while `Attribute::setIsCachedAttributePending` is on. The next change takes it away.
class QOR_API CachedAttributeInfo : public ObserverInfo {
public:
    explicit CachedAttributeInfo(std::shared_ptr<Attribute> attribute);
    ~CachedAttributeInfo() override;

    const std::string& getClassName() const override;
    static const std::string& getStaticClassName();
    const std::shared_ptr<Attribute>& getCachedAttribute() const { return cachedAttribute; }

private:
    std::shared_ptr<Attribute> cachedAttribute;
};

}  // namespace QOR::AttributeContainer
