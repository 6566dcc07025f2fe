// What an object is asked for that stands for one of an unknown class.
#pragma once

#include <AttributeContainer/Export.h>

#include <string>

namespace QOR::AttributeContainer {

/// A placeholder for an object whose class is not known here. Streams name the class that it stands
/// for.
class QOR_API IFallbackObject {
public:
    virtual ~IFallbackObject();

    virtual void setOriginalClassName(const std::string& className) = 0;
    virtual const std::string& getOriginalClassName() const = 0;
};

}  // namespace QOR::AttributeContainer
