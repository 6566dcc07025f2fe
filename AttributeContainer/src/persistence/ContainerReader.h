// Reads the content of one container from a stream.
#pragma once

#include <AttributeContainer/ReadFromScope.h>
#include <AttributeContainer/kVAttrContainer.h>

#include <QOR/FirstWarning.h>

#include <iosfwd>
#include <memory>
#include <string>

namespace QOR::AttributeContainer {

/// One run of `AttrContainer::readFrom`: takes the blocks of a container one after the other.
class ContainerReader {
public:
    ContainerReader(AttrContainer& container, std::istream& stream,
                    const std::shared_ptr<const ReadContextBase>& context);

    /// Reads up to the end of the container's block, whose "}" stays the current keyword.
    [[nodiscard]] ErrorPtr read();

private:
    ErrorPtr readBlock(const std::string& keyword);
    ErrorPtr readAttribute();
    ErrorPtr takeAttribute(const std::string& name, AttrType type,
                                         std::shared_ptr<Attribute>& read);
    ErrorPtr readOwnRelations();

    AttrContainer& container;
    std::istream& stream;
    const std::shared_ptr<const ReadContextBase>& context;
    ReadFromScope scope;
    ModelInFormat& imf;
    AttrType pendingType = unknownAttrType;
    FirstWarning firstWarning;
};

}  // namespace QOR::AttributeContainer
