// Reads one child of an object from a stream.
#pragma once

#include <AttributeContainer/Object.h>
#include <AttributeContainer/ReadFromScope.h>

#include <QOR/FirstWarning.h>

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>

namespace QOR::AttributeContainer {

/// One run of `Object::readChild`: makes the child that a block names, adds it to its parent, and
/// lets it read its body.
class ChildReader {
public:
    ChildReader(Object& parent, std::istream& stream,
                const std::shared_ptr<const ReadContextBase>& context);

    /// Reads up to the end of the child's block, whose "}" stays the current keyword.
    [[nodiscard]] ErrorPtr read();

private:
    std::string readString();
    ErrorPtr readWord(const std::string& keyword);
    ErrorPtr readReference();
    ErrorPtr readBody();
    void convertOldBinaryObject();
    ErrorPtr createObject(std::shared_ptr<Object>& object) const;
    ErrorPtr readInto(const std::shared_ptr<Object>& object);
    ErrorPtr settle(const std::shared_ptr<Object>& object, ErrorPtr result);
    ErrorPtr replaceByFallback(Object& object);
    void trace(const char* before, const char* behind) const;

    Object& parent;
    std::istream& stream;
    const std::shared_ptr<const ReadContextBase>& context;
    ReadFromScope scope;
    ModelInFormat& imf;
    std::string type;
    std::string name;
    ClassVersion version;
    std::uint64_t instance = 0;  // the key under which the stream knows the child; 0 for none
    FirstWarning firstWarning;
};

}  // namespace QOR::AttributeContainer
