#include "outline/OutlineReader.h"

#include "outline/WordList.h"

#include <algorithm>
#include <charconv>

namespace qormodel {

namespace {
constexpr std::string_view attributePrefix = "Attr<";

bool isAttributeWord(std::string_view word) {
    return word.starts_with(attributePrefix) && word.ends_with('>');
}

bool isAttributeKeyword(std::string_view word) {
    return word == "Name" || word == "Value" || word == "Write" || word == "PostObserver" ||
           word == "PreObserver";
}

bool isRelationKeyword(std::string_view word) {
    return word == "Path" || word == "Priority" || word == "Action";
}

// The number that `text` is; none for another text.
std::optional<std::uint64_t> numberOf(std::string_view text) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return number;
}
}  // namespace

OutlineReader::OutlineReader(const SourceFile& source)
    : source(source), progress("looking through " + source.getName(), source.getSize()),
      scanner(source, &progress) {}

Outline OutlineReader::read() {
    outline.elements.emplace_back();
    outline.elements[0].line = 1;
    frames.push_back({Block::Element, 0, 1, "", 2, false});
    if (readForm()) {
        readHeader();
        readBody();
    }
    outline.elements[0].block.end = source.getSize();
    return std::move(outline);
}

// The XML forms begin with a tag, and no text form does.
bool OutlineReader::readForm() {
    const std::string start = source.slice(0, std::min<std::uint64_t>(1, source.getSize()));
    outline.isTextForm = start != "<";
    return outline.isTextForm;
}

// Title and versions: strings, each version followed by its numbers.
void OutlineReader::readHeader() {
    Token token = scanner.next();
    if (token.kind == Token::Kind::String) {
        outline.hasHeader = true;
        outline.title = token.text;
        if (token.isCut) breakOff(token.line, "the header text has no closing quote");
        token = scanner.next();
    }
    while (token.kind == Token::Kind::String && !token.isCut) {
        token = scanner.next();
        if (token.kind != Token::Kind::Word) break;
        outline.versions.push_back(token.text);
        token = scanner.next();
    }
    outline.bodyBegin = token.begin;
    outline.bodyLine = token.line;
    outline.elements[0].block.begin = token.begin;
    if (!outline.broken) handle(token);
}

void OutlineReader::readBody() {
    while (!outline.broken) {
        const Token& token = scanner.next();
        if (token.kind == Token::Kind::End) break;
        handle(token);
    }
    flushWord();
    if (outline.broken || frames.size() == 1) return;
    const Frame& frame = frames.back();
    breakOff(frame.line, "the block " + frame.word + " that begins here has no end: expected }");
}

void OutlineReader::handle(const Token& token) {
    if (token.isCut)
        return breakOff(token.line, "the string that begins here has no closing quote");
    switch (token.kind) {
        case Token::Kind::Word: return handleWord(token);
        case Token::Kind::String: return handleString(token);
        case Token::Kind::Open: return handleOpen(token);
        case Token::Kind::Close: return handleClose(token);
        case Token::Kind::End: return;
    }
}

void OutlineReader::handleWord(const Token& token) {
    flushWord();
    if (isIn(Block::Instances)) return takeNumber(token.text);
    if (isIn(Block::Relation)) {
        if (isRelationKeyword(token.text)) {
            keyword = token.text;
        } else if (keyword == "Priority") {
            relation.priority = token.text;
        }
        return;
    }
    if (isIn(Block::Attribute) && !isAttributeKeyword(token.text) && token.text != "ObserverPath")
        return growValue(token);
    if (isIn(Block::Attribute)) keyword = token.text;
    word = token;
    isWordPending = true;
}

void OutlineReader::handleString(const Token& token) {
    Frame& frame = frames.back();
    if (isIn(Block::Element) && frame.numNames < 2 && !isWordPending) {
        (frame.numNames++ == 0 ? element().className : element().name) = token.text;
        return;
    }
    if (isIn(Block::Relation)) {
        if (keyword == "Path") relation.path = token.text;
        if (keyword == "Action") relation.action = token.text;
        return;
    }
    if (isIn(Block::Attribute)) {
        isWordPending = false;
        if (keyword == "Name" && attribute().name.empty()) return takeAttributeName(token);
        return growValue(token);
    }
    flushWord();
    noteStray(token.begin, token.end, token.line);
}

void OutlineReader::handleOpen(const Token& token) {
    const bool isNamed = isWordPending;
    const std::string name = isNamed ? word.text : "";
    if (isIn(Block::Instances)) return open(Block::Instances, token);
    if (isIn(Block::Attribute) && name != "ObserverPath") {
        isWordPending = false;
        if (attribute().type == "Attr<Uuid>") {  // a word, which may stand in braces
            growValue(token);
            return growValue(scanner.next());
        }
        const std::uint64_t line = token.line;
        growValue(token);
        const Token& end =
            isWordList(attribute().type) ? scanner.skipWordList() : scanner.skipBlock();
        if (end.kind == Token::Kind::End)
            return breakOff(line, "the list that begins here has no end: expected }");
        attribute().value.end = scanner.getOffset();
        return;
    }
    if (isIn(Block::Element) && name == "AttrContainer") return open(Block::Container, token);
    if (isIn(Block::Element) && name == "Child")
        return openElement(ElementText::Kind::Child, token);
    if (isIn(Block::Element) && name == "Object") {
        open(Block::Element, token);
        frames.back().numNames = 2;
        frames.back().isWrapper = true;
        return;
    }
    if (isIn(Block::Element) && name == "SharedInstanceCollection")
        return open(Block::Instances, token);
    if (isIn(Block::Container) && name == "SubContainer")
        return openElement(ElementText::Kind::Field, token);
    if (isIn(Block::Container) && isAttributeWord(name)) return openAttribute(token);
    if (name == "ObserverPath" && (isIn(Block::Container) || isIn(Block::Attribute))) {
        relation = {};
        relation.isAsked = isAsked;
        relation.line = word.line;
        keyword.clear();
        return open(Block::Relation, token);
    }
    passBlock(token);
}

void OutlineReader::handleClose(const Token& token) {
    flushWord();
    if (frames.size() == 1) return breakOff(token.line, "unexpected }: no block is open here");
    if (isIn(Block::Relation)) addRelation();
    if (isIn(Block::Element) && !frames.back().isWrapper) element().block.end = token.end;
    keyword.clear();
    frames.pop_back();
    if (!isIn(Block::Attribute)) scanner.setBracesEndWords(false);
}

// A block of a kind that this program knows.
void OutlineReader::open(Block block, const Token& token) {
    const std::size_t current = frames.back().element;
    frames.push_back({block, current, isWordPending ? word.line : token.line,
                      isWordPending ? word.text : "{"});
    isWordPending = false;
}

void OutlineReader::openElement(ElementText::Kind kind, const Token& token) {
    const std::size_t parent = frames.back().element;
    const std::size_t index = outline.elements.size();
    ElementText added;
    added.kind = kind;
    added.line = word.line;
    added.parent = parent;
    added.block = {word.begin, source.getSize(), word.line};
    outline.elements.push_back(std::move(added));
    auto& above = outline.elements[parent];
    (kind == ElementText::Kind::Child ? above.children : above.fields).push_back(index);
    open(Block::Element, token);
    frames.back().element = index;
}

void OutlineReader::openAttribute(const Token& token) {
    AttributeText added;
    added.type = word.text;
    added.line = word.line;
    scanner.setBracesEndWords(isOfNumbers(added.type));
    element().attributes.push_back(std::move(added));
    open(Block::Attribute, token);
    keyword.clear();
}

void OutlineReader::takeAttributeName(const Token& token) {
    attribute().name = token.text;
    keyword.clear();
}

// Everything behind "Value" that is no other keyword belongs to the value, over the end of the
// line as well, since the reader of the library takes it so.
void OutlineReader::growValue(const Token& token) {
    Slice& value = attribute().value;
    if (keyword == "Write") {
        attribute().isWrite = token.text != "0";
        return;
    }
    if (value.isEmpty()) value = {token.begin, token.end, token.line};
    value.end = std::max(value.end, token.end);
}

// A block of a kind that no class of ours writes.
void OutlineReader::passBlock(const Token& token) {
    const std::uint64_t begin = isWordPending ? word.begin : token.begin;
    const std::uint64_t line = isWordPending ? word.line : token.line;
    const std::string name = isWordPending ? word.text : "{";
    isWordPending = false;
    const Token& end = scanner.skipBlock();
    if (end.kind == Token::Kind::End)
        return breakOff(line, "the block " + name + " that begins here has no end: expected }");
    noteStray(begin, end.end, line);
}

void OutlineReader::takeNumber(const std::string& text) {
    if (const auto number = numberOf(text)) outline.instances.push_back(*number);
    word.text = text;  // "Instances", ahead of its brace
}

void OutlineReader::addRelation() {
    frames.back().word.clear();
    const bool isOfAttribute = frames[frames.size() - 2].block == Block::Attribute;
    (isOfAttribute ? attribute().relations : element().relations).push_back(std::move(relation));
    relation = {};
}

// A word that turned out to open no block.
void OutlineReader::flushWord() {
    if (!isWordPending) return;
    isWordPending = false;
    const std::string& text = word.text;
    if (text == "PreObserver" || text == "PostObserver") {
        isAsked = text == "PreObserver";
        return;
    }
    if (isIn(Block::Attribute)) return;
    if (isIn(Block::Element)) {
        if (text == "ReferenceToShared") {
            element().isReference = true;
            return;
        }
        if (text == "InstanceID") {
            keyword = text;
            return;
        }
        if (keyword == "InstanceID") {
            keyword.clear();
            element().instance = numberOf(text);
            return;
        }
    }
    noteStray(word.begin, word.end, word.line);
}

void OutlineReader::noteStray(std::uint64_t begin, std::uint64_t end, std::uint64_t line) {
    element().strays.push_back({begin, end, line});
}

void OutlineReader::breakOff(std::uint64_t line, const std::string& text) {
    if (!outline.broken) outline.broken = BrokenBlock{line, frames.back().element, text};
}

}  // namespace qormodel
