// Follows the blocks of a file and notes what they are.
#pragma once

#include "outline/Outline.h"
#include "outline/Scanner.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qormodel {

/// One read of one file. Keeps its own stack of blocks, since a file may nest them without end.
class OutlineReader {
public:
    explicit OutlineReader(const SourceFile& source);
    Outline read();

private:
    /// What kind of block the reader is in.
    enum class Block { Element, Container, Attribute, Relation, Instances };
    struct Frame {
        Block block;
        std::size_t element;
        std::uint64_t line;
        std::string word;  // that opened it
        int numNames = 0;  // strings at the front of an element's block
        bool isWrapper = false;  // a block whose content counts as that of the block around it
    };

    bool readForm();
    void readHeader();
    void readBody();
    void handle(const Token& token);
    void handleString(const Token& token);
    void handleOpen(const Token& token);
    void handleClose(const Token& token);
    void handleWord(const Token& token);

    void open(Block block, const Token& token);
    void openElement(ElementText::Kind kind, const Token& token);
    void openAttribute(const Token& token);
    void takeAttributeName(const Token& token);
    void growValue(const Token& token);
    void passBlock(const Token& token);
    void takeNumber(const std::string& text);
    void addRelation();
    void flushWord();
    void noteStray(std::uint64_t begin, std::uint64_t end, std::uint64_t line);
    void breakOff(std::uint64_t line, const std::string& text);
    bool isIn(Block block) const { return frames.back().block == block; }
    ElementText& element() { return outline.elements[frames.back().element]; }
    AttributeText& attribute() { return element().attributes.back(); }

    const SourceFile& source;
    Progress progress;
    Scanner scanner;
    Outline outline;
    std::vector<Frame> frames;
    Token word;              // read, but not known yet whether it opens a block
    bool isWordPending = false;
    std::string keyword;     // of an attribute or a relation, whose value comes
    bool isAsked = false;    // the next relation is asked before the change
    RelationText relation;
};

}  // namespace qormodel
