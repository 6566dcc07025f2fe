// The document of the example, damaged at every byte of its first 20 kB: a read returns, and what
// came of it is a tree that can be written.
#include "../Document.h"
#include "../DocumentFile.h"
#include "../Room.h"

#include <AttributeContainer/AttributeContainer.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <iostream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

namespace example {
namespace {

constexpr std::size_t damagedBytes = 20'000;

// The stream of the document, as far as it is damaged and a little further.
const std::string& beginning() {
    static const std::string text = [] {
        std::ostringstream talk;  // the document tells what it does
        std::streambuf* const console = std::cout.rdbuf(talk.rdbuf());
        Document document;
        document.addScan(makeRoom());
        std::string whole = writeDocument(document.getRoot(), 0);
        std::cout.rdbuf(console);
        return whole.substr(0, damagedBytes + 1'000);
    }();
    return text;
}

enum class Outcome { Done, Warning, Error, MalformedNumber };

// Reads a stream as a host does. The tree is given back whatever the outcome.
Outcome read(const std::string& text, model::Object& root) {
    std::istringstream stream(text);
    const auto context = std::make_shared<model::ReadContextBase>();
    try {
        {
            model::ModelInFormat format(stream);
            context->setFormat(format.determineFormat());
            std::string header;
            format.readHeader(header);
            model::VersionNum version;
            format.readVersion(version);
        }
        const auto error = root.readFrom(stream, context);
        if (!error) return Outcome::Done;
        return error->isWarning() ? Outcome::Warning : Outcome::Error;
    } catch (const std::invalid_argument& malformed) {
        EXPECT_STREQ(malformed.what(), "Invalid number format");
        return Outcome::MalformedNumber;
    }
}

// Whether a tree can be written and read again; the second text must be the first one.
void expectValid(model::Object& root, const std::string& where) {
    const auto write = [](model::Object& tree) {
        std::ostringstream stream;
        const auto error = tree.writeTo(stream, std::make_shared<model::WriteContextBase>());
        EXPECT_TRUE(!error || error->isWarning());
        return std::move(stream).str();
    };
    const std::string text = write(root);
    ASSERT_FALSE(text.empty()) << where;
    const auto again = model::Container::create();
    std::istringstream stream(text);
    const auto error = again->readFrom(stream, std::make_shared<model::ReadContextBase>());
    EXPECT_TRUE(!error || error->isWarning()) << where;
}

TEST(DamagedDocument, StandsInFullWhereNothingIsDamaged) {
    ASSERT_GT(beginning().size(), damagedBytes);
    const auto root = model::Container::create();

    EXPECT_EQ(read(beginning(), *root), Outcome::Done);  // the end of the input is a quiet end

    EXPECT_EQ(root->getName(), "Project");
    EXPECT_EQ(root->getNumChildren(), 1U);
}

TEST(DamagedDocument, CanBeReadUpToAnyByte) {
    for (std::size_t length = 0; length < damagedBytes; ++length) {
        const auto root = model::Container::create();

        const Outcome outcome = read(beginning().substr(0, length), *root);

        // A number that is cut in its middle is malformed at most; nothing else is wrong with it.
        EXPECT_NE(outcome, Outcome::Error) << "cut at byte " << length;
        if (length % 64 == 0) expectValid(*root, "cut at byte " + std::to_string(length));
    }
}

TEST(DamagedDocument, CanBeReadWithAnyByteChanged) {
    std::size_t numUnharmed = 0;
    for (std::size_t at = 0; at < damagedBytes; ++at) {
        std::string text = beginning();
        text[at] = static_cast<char>(text[at] ^ (1 << (at % 8)));
        const auto root = model::Container::create();

        if (read(text, *root) == Outcome::Done) ++numUnharmed;

        if (at % 64 == 0) expectValid(*root, "changed at byte " + std::to_string(at));
    }
    EXPECT_GT(numUnharmed, 0U);             // a digit may become another one
    EXPECT_LT(numUnharmed, damagedBytes);  // and other damage is told
}

}  // namespace
}  // namespace example
