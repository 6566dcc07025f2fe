// The container classes of the library as their definitions have them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace class_tables {

/// One attribute that a class declares.
struct AttributeRow {
    std::uint64_t token;
    std::string key;
    std::string type;         // of the value, in C++
    std::string streamType;   // of the attribute, in a stream
    std::string defaultText;  // for people
    int category;
};

/// One field that a class declares.
struct FieldRow {
    std::uint64_t token;
    std::string key;
    std::string className;
};

/// A value with which a class begins where its base begins with another one.
struct OtherStart {
    std::string key;
    std::string text;  // for people
};

/// One class with its own rows; those of its bases stand there.
struct ClassTable {
    std::string name;
    std::string base;       // empty for the class above all others
    std::string firstName;  // what a new object is named
    bool isRegistered;      // with the factory, so that streams can make it
    std::vector<AttributeRow> attributes;
    std::vector<FieldRow> fields;
    std::vector<OtherStart> otherStarts;
};

/// All container classes of the library, each behind its base.
/// \throws std::logic_error for a class that the factory knows and this list does not.
std::vector<ClassTable> collectClasses();

}  // namespace class_tables
