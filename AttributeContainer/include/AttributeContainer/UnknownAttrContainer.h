// What stands for a container whose class is not known here.
#pragma once

#include <AttributeContainer/ContainerClass.h>

#include <string>

namespace QOR::AttributeContainer {

/// Holds the attributes and fields of a container of an unknown class, so that they can be written
/// back under the name of that class.
class QOR_API UnknownAttrContainer
    : public ContainerClass<UnknownAttrContainer, AttrContainer, "UnknownAttrContainer"> {
    friend Block;

public:
    using Block::Block;

    /// The class name that the stream gave.
    const std::string& getUnknownTypeName() const { return unknownTypeName; }
    void setUnknownTypeName(const std::string& typeName) { unknownTypeName = typeName; }

    /// A field of an unknown container is unknown as well; the factory is not asked.
    std::shared_ptr<AttrContainer> checkCreateChildField(const std::string& typeName,
                                                         const std::string& name,
                                                         std::uint64_t* token) override;

protected:
    void init(CreateType type, const Source& source);

private:
    std::string unknownTypeName;
};

}  // namespace QOR::AttributeContainer
