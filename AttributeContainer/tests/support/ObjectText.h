// The text of plain objects in a stream, for tests.
#pragma once

#include <string>

namespace QOR::AttributeContainer::Testing {

/// The body of a plain object of that name, with the blocks of further attributes.
inline std::string body(const std::string& name, const std::string& further = {}) {
    return "\nAttrContainer { "
           "\nAttr<String> { \nName \"Name\"\nValue \"" +
           name +
           "\"\n}"
           "\nAttr<String> { \nName \"Action\"\n}"
           "\nAttr<String> { \nName \"Event\"\n}"
           "\nAttr<uint16_t> { \nName \"MajorVersion\"\n}"
           "\nAttr<uint16_t> { \nName \"MinorVersion\"\n}"
           "\nAttr<Uuid> { \nName \"UUID\"\n}" +
           further + "\n}";
}

/// A child block with such an object, and what is below it.
inline std::string child(const std::string& name, const std::string& below = {}) {
    return "\nChild { \n\"Object\" \"" + name + "\"" + body(name) + below + "\n}";
}

}  // namespace QOR::AttributeContainer::Testing
