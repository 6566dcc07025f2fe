// Streams of a newer program, for tests.
#pragma once

#include <AttributeContainer/FallbackObject.h>

#include "support/ObjectText.h"
#include "support/Streams.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

namespace QOR::AttributeContainer::Testing {

/// The block of one attribute, behind a line feed as in all that is written.
inline std::string attribute(const std::string& type, const std::string& name,
                             const std::string& value) {
    return "\nAttr<" + type + "> { \nName \"" + name + "\"\nValue " + value + "\n}";
}

/// The body of an object with attributes of its own and what lies in its container behind them.
inline std::string bodyWith(const std::string& name, const std::string& more) {
    std::string text = body(name);
    return text.insert(text.size() - 2, more);  // ahead of the last "\n}"
}

inline std::string childOf(const std::string& type, const std::string& name,
                           const std::string& content) {
    return "\nChild { \n\"" + type + "\" \"" + name + "\"" + content + "\n}";
}

inline std::string fieldOf(const std::string& type, const std::string& name,
                           const std::string& content) {
    return "\nSubContainer { \n\"" + type + "\" \"" + name + "\"" + content + "\n}";
}

/// The stream of an object named "root", with children.
inline std::string rootWith(const std::string& children) { return body("root") + children; }

/// A root that was read from a stream, and what the read gave.
struct Read {
    std::shared_ptr<Object> root = Object::create();
    std::optional<ErrorCode> code;

    explicit Read(const std::string& stream) : code(readText(*root, stream)) {}

    std::shared_ptr<FallbackObject> fallback(const std::string& path) const {
        return std::dynamic_pointer_cast<FallbackObject>(root->inqObject(path));
    }
};

/// Expects that a stream with objects of unknown classes is written as it was read.
inline void expectComesBack(const std::string& stream) {
    const Read read(stream);

    EXPECT_EQ(read.code, ErrorCode::ObjectNotCreated);
    EXPECT_EQ(written(*read.root), stream);
}

}  // namespace QOR::AttributeContainer::Testing
