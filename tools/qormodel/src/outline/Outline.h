// What a model file holds, as its text says it: blocks and values with their places.
#pragma once

#include "io/SourceFile.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qormodel {

/// A range of bytes of the file.
struct Slice {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
    std::uint64_t line = 0;  ///< where it begins, counted from 1

    bool isEmpty() const { return begin == end; }
};

/// A relation to an observer.
struct RelationText {
    bool isAsked = false;  ///< before the change, else told after it
    std::string path;
    std::string action;
    std::string priority;
    std::uint64_t line = 0;
};

/// An attribute's block.
struct AttributeText {
    std::string type;  ///< as in "Attr<int>"
    std::string name;
    Slice value;       ///< empty where there is none
    bool isWrite = false;
    std::vector<RelationText> relations;
    std::uint64_t line = 0;
};

/// An object or a field.
struct ElementText {
    enum class Kind { Root, Child, Field };

    Kind kind = Kind::Root;
    std::string className;  ///< empty for the root: a file does not tell
    std::string name;       ///< as its block begins; for the root as its attribute says
    std::uint64_t line = 0;
    std::size_t parent = 0;                 ///< index in `Outline::elements`; the root's is its own
    std::vector<std::size_t> fields;        ///< indices, in the order of the file
    std::vector<std::size_t> children;
    std::vector<AttributeText> attributes;
    std::vector<RelationText> relations;    ///< of the container itself
    std::vector<Slice> strays;              ///< words and blocks that no class of ours writes
    std::optional<std::uint64_t> instance;  ///< its number, where it can be referred to
    bool isReference = false;
    Slice block;                            ///< from its first word to behind its closing brace
};

/// What is wrong with the blocks of a file.
struct BrokenBlock {
    std::uint64_t line = 0;
    std::size_t element = 0;  ///< the innermost one around the place
    std::string text;
};

/// Whether the values of a type, such as "Attr<double>", are numbers behind which a brace counts
/// also without a blank between.
bool isOfNumbers(std::string_view type);

/// The outline of one file.
struct Outline {
    std::string title;                  ///< the header text
    std::vector<std::string> versions;  ///< numbers of the header, the format's first
    std::uint64_t bodyBegin = 0;        ///< where the blocks of the root begin
    std::uint64_t bodyLine = 1;
    bool isTextForm = true;             ///< the other forms have no outline but the root
    bool hasHeader = false;
    std::vector<std::uint64_t> instances;  ///< of a block of shared instances
    std::vector<ElementText> elements;     ///< the root first, each behind its parent
    std::optional<BrokenBlock> broken;     ///< the first fault, behind which nothing is read

    /// The path of an element, as in "/Scans/First"; fields stand in it like children.
    std::string pathOf(std::size_t element) const;
    /// The innermost element whose block holds that place.
    std::size_t elementAt(std::uint64_t offset) const;
};

/// Reads the outline of a file. Costs one pass, and memory by the number of attributes, not by
/// the size of their values. \throws Failure when the file cannot be read
Outline readOutline(const SourceFile& source);

}  // namespace qormodel
