// Reads one field of a container from a stream.
#pragma once

#include <AttributeContainer/ReadFromScope.h>
#include <AttributeContainer/kVAttrContainer.h>

#include <QOR/FirstWarning.h>

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>

namespace QOR::AttributeContainer {

/// One run of `AttrContainer::readField`: finds or makes the field that a block names, and lets it
/// read its body.
class FieldReader {
public:
    FieldReader(AttrContainer& container, std::istream& stream,
                const std::shared_ptr<const ReadContextBase>& context);

    /// Reads up to the end of the field's block, whose "}" the caller sees again.
    [[nodiscard]] ErrorPtr read();

private:
    ErrorPtr readWord(const std::string& keyword);
    ErrorPtr readReference();
    ErrorPtr readBody(const std::string& keyword);
    std::shared_ptr<AttrContainer> makeField();
    std::shared_ptr<AttrContainer> makePlaceholder();
    ErrorPtr refuseUnknown(const std::string& keyword);
    std::shared_ptr<AttrContainer> chooseTarget(std::shared_ptr<AttrContainer> made);
    ErrorPtr readInto(const std::shared_ptr<AttrContainer>& field);
    void attach(const std::shared_ptr<AttrContainer>& field);

    AttrContainer& container;
    std::istream& stream;
    const std::shared_ptr<const ReadContextBase>& context;
    ReadFromScope scope;
    ModelInFormat& imf;
    std::string typeName;
    std::string fieldName;
    std::uint64_t token = AttrContainer::noToken;
    std::uint64_t instanceKey = 0;
    FirstWarning firstWarning;
};

}  // namespace QOR::AttributeContainer
