// Streams of a newer program, for tests.
#pragma once

#include <AttributeContainer/FallbackObject.h>

#include "support/BlockText.h"
#include "support/ObjectText.h"
#include "support/Streams.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

namespace QOR::AttributeContainer::Testing {

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
