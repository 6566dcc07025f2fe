// The text of single blocks in a stream, for tests.
#pragma once

#include <cstdint>
#include <string>

namespace QOR::AttributeContainer::Testing {

/// The block of a container with that content.
inline std::string containerBlock(const std::string& content = {}) {
    return "\nAttrContainer { " + content + "\n}";
}

/// The block of an attribute, with the text of its value.
inline std::string attributeBlock(const std::string& type, const std::string& name,
                                  const std::string& value) {
    return "\nAttr<" + type + "> { \nName \"" + name + "\"\nValue " + value + "\n}";
}

/// The block of a field, with what follows its class and its name.
inline std::string fieldBlock(const std::string& type, const std::string& name,
                              const std::string& content = containerBlock()) {
    return "\nSubContainer { \n\"" + type + "\" \"" + name + "\"" + content + "\n}";
}

/// The block of a child, with what follows its class and its name.
inline std::string childBlock(const std::string& type, const std::string& name,
                              const std::string& content = containerBlock()) {
    return "\nChild { \n\"" + type + "\" \"" + name + "\"" + content + "\n}";
}

/// The line that gives a field or child a key.
inline std::string instanceLine(std::uint64_t key) { return "\nInstanceID " + std::to_string(key); }

/// What stands in a field or child in the place of its body.
inline std::string referenceTo(std::uint64_t key) {
    return instanceLine(key) + "\nReferenceToShared ";
}

}  // namespace QOR::AttributeContainer::Testing
