#include "model/Document.h"

#include "io/InstanceNumbering.h"
#include "io/ProgressBuffer.h"
#include "io/SourceBuffer.h"
#include "io/TargetBuffer.h"
#include "model/Elements.h"
#include "model/ErrorText.h"
#include "terminal/Progress.h"

#include <AttributeContainer/FieldFactory.h>
#include <AttributeContainer/ModelInFormat.h>
#include <AttributeContainer/ModelOutFormat.h>
#include <AttributeContainer/Picture.h>
#include <AttributeContainer/ReadContext.h>
#include <AttributeContainer/ReferenceDictionary.h>
#include <AttributeContainer/SharedInstanceCollection.h>
#include <AttributeContainer/ValueTypes.h>
#include <AttributeContainer/Version.h>
#include <AttributeContainer/WriteContext.h>
#include <AttributeContainer/XMLSerialization.h>

#include <QOR/Time.h>

#include <algorithm>
#include <istream>
#include <set>
#include <stdexcept>
#include <string>
#include <unordered_set>
#include <utility>

namespace qormodel {

namespace {
using LibraryError = QOR::ErrorHandling::ErrorWithCode<ac::ErrorCode>;

// References lead to what stands ahead of them, so the numbers of all elements are declared.
std::unique_ptr<ac::ReferenceDictionary> dictionaryOf(const Outline& outline) {
    std::vector<std::uint64_t> keys = outline.instances;
    for (const auto& element : outline.elements)
        if (element.instance) keys.push_back(*element.instance);
    std::sort(keys.begin(), keys.end());
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    auto dictionary = std::make_unique<ac::ReferenceDictionary>();
    dictionary->initializeFromVector(keys);
    return dictionary;
}

void checkForm(const Document& document) {
    const Outline& outline = document.outline;
    // What has no header at all is broken in any way by chance.
    if (const auto& broken = outline.broken; broken && outline.hasHeader)
        throw Failure(document.placeOf(broken->element, broken->line), broken->text);
    if (!outline.isTextForm)
        throw Failure(document.placeOf(0, 1),
                      "is an XML form, which nothing reads back whole; expected a header text "
                      "in quotes");
    if (!outline.hasHeader || outline.versions.empty())
        throw Failure(document.placeOf(0, 1),
                      "is no model file: expected a header text in quotes and a version");
}

// What the library read last. It passes the end of the blocks around a fault before it tells.
Place placeBefore(const Document& document, std::uint64_t offset, std::uint64_t line) {
    for (; offset > document.outline.bodyBegin; --offset) {
        const std::string last = document.source->slice(offset - 1, offset);
        if (last == "\n") --line;
        else if (last != " " && last != "}") break;
    }
    return document.placeOf(document.outline.elementAt(offset == 0 ? 0 : offset - 1), line);
}

// A warning of the library comes when all is read; the outline knows the place of some.
Warning warningOf(const Document& document, const LibraryError& error, const Place& end) {
    Warning warning{end, textOf(error), error.getCode()};
    if (error.getCode() != ac::ErrorCode::ObjectNotCreated &&
        error.getCode() != ac::ErrorCode::ElementSkipped)
        return warning;
    const auto known = ac::FieldFactory::the()->getAllRegisteredFields();
    const std::set<std::string> classes(known.begin(), known.end());
    const auto& elements = document.outline.elements;
    const auto unknown = std::find_if(elements.begin() + 1, elements.end(), [&](const auto& each) {
        return !classes.contains(each.className);
    });
    if (unknown != elements.end())
        warning.place =
            document.placeOf(static_cast<std::size_t>(unknown - elements.begin()), unknown->line);
    return warning;
}

bool isTypeOfStreams(const std::string& word) {
    const ac::AttrType type = ac::AttrContainer::getTypeFromString(word);
    bool isFound = false;
    ac::ValueTypes::forEach(
        [&]<class Row>() { isFound = isFound || (Row::token == type && Row::isCreated); });
    return isFound;
}

// The first attribute of an element that has no type which a stream can hold; there the library
// stops.
std::optional<Failure> unknownTypeIn(const Document& document, std::size_t element) {
    const auto& attributes = document.outline.elements[element].attributes;
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [](const auto& each) { return !isTypeOfStreams(each.type); });
    if (found == attributes.end()) return std::nullopt;
    Place place = document.placeOf(element, found->line);
    place.path = pathBelow(place.path, found->name);
    return Failure(place, found->type +
                              " is no type of an attribute: expected one such as "
                              "Attr<double>");
}

std::size_t depthOf(const Outline& outline, std::size_t element) {
    std::size_t depth = 0;
    for (; element != 0; element = outline.elements[element].parent) ++depth;
    return depth;
}

// What the library's error means for those who see the text.
[[noreturn]] void failToRead(const Document& document, const LibraryError& error,
                             std::uint64_t offset, const Place& place) {
    const std::size_t element = document.outline.elementAt(offset == 0 ? 0 : offset - 1);
    if (error.getCode() == ac::ErrorCode::AttributeNotCreated)
        if (const auto failure = unknownTypeIn(document, element)) throw *failure;
    const unsigned maxDepth = ac::ReadContextBase().getMaxDepth();
    if (error.getCode() == ac::ErrorCode::ParseFailed &&
        depthOf(document.outline, element) > maxDepth)
        throw Failure(place, "lies too deep: expected " + std::to_string(maxDepth) +
                                 " levels of objects and fields at most");
    throw Failure(place, textOf(error));
}

// Whether only white space is left. A value that is no value of its type stops the library without
// a word; what it left unread tells.
bool isAtEnd(std::streambuf& buffer) {
    using Traits = std::streambuf::traits_type;
    int next = buffer.sgetc();
    while (next == ' ' || (next >= '\t' && next <= '\r')) next = buffer.snextc();
    return Traits::eq_int_type(next, Traits::eof());
}

// Reads the blocks of the root. The header is passed: the outline has it.
void readBody(Document& document) {
    Progress progress("reading " + document.source->getName(), document.source->getSize());
    SourceBuffer buffer(*document.source, document.outline.bodyBegin, document.outline.bodyLine,
                        progress);
    std::istream stream(&buffer);
    const auto context = std::make_shared<ac::ReadContextBase>();
    context->setReferenceDictionary(dictionaryOf(document.outline));
    const auto place = [&] { return placeBefore(document, buffer.getOffset(), buffer.getLine()); };
    try {
        const auto error = document.root->readFrom(stream, context);
        if (error && !error->isWarning()) failToRead(document, *error, buffer.getOffset(), place());
        if (error) document.warnings.push_back(warningOf(document, *error, place()));
        const Place stop = place();
        if (!isAtEnd(buffer))
            throw Failure(stop, "cannot be read on: expected a value of the attribute's type");
    } catch (const std::invalid_argument&) {
        throw Failure(place(), "expected a number");
    }
}

// A picture without a TimeStamp in its file has that of its making, a moment of the reading. All
// such pictures of one run get the same, so that a file is the same as itself.
void settleTimeStamps(const Document& document, double begin) {
    static const double ofThisRun = QOR::Time{}.getCurrentTime();
    const double end = QOR::Time{}.getCurrentTime();
    forEachElement(document.root, [&](const Element& element) {
        const auto picture = std::dynamic_pointer_cast<ac::Picture>(element.object);
        const bool isOfReading =
            picture && picture->TimeStamp() >= begin && picture->TimeStamp() <= end;
        if (isOfReading) picture->TimeStamp(ofThisRun);
        return true;
    });
}

void resolveRelations(const Document& document) {
    forEachElement(document.root, [](const Element& element) {
        forEachAttribute(*element.container,
                         [](const auto& attribute) { attribute->updateObserverLists(true); });
        return true;
    });
}

// The containers that hang in more than one place: they are written once and referred to.
void collectShared(const Document& document, ac::SharedInstanceCollection& collection,
                   bool& isShared) {
    std::unordered_set<const ac::AttrContainer*> seen;
    forEachElement(document.root, [&](const Element& element) {
        if (seen.insert(element.container.get()).second) return true;
        collection.insert(element.container->getInstanceIdentifier());
        isShared = true;
        return false;
    });
}

// A target that is a file knows more than that its stream has failed.
[[noreturn]] void failToWrite(std::streambuf& target, const std::string& name,
                              const LibraryError& error) {
    if (auto* const file = dynamic_cast<TargetBuffer*>(&target)) file->finish();
    throw Failure(Place{name}, textOf(error));
}

// The marks that a write with shared instances leaves behind.
void clearSerialized(const Document& document) {
    forEachElement(document.root, [](const Element& element) {
        element.container->setIsSerialized(false);
        return true;
    });
}
}  // namespace

bool isNewerThanLibrary(const std::string& version) {
    ac::VersionNum stored(0, 0, 0, 0, 0, "");
    std::string numbers = version;
    stored.setVersionNumbersFrom(numbers);
    return ac::VersionNum::isVersionNumberNewer(*ac::version.getFormatVersion(), stored);
}

bool Document::isNewerThanLibrary() const {
    return !outline.versions.empty() && qormodel::isNewerThanLibrary(outline.versions.front());
}

Place Document::placeOf(std::size_t element, std::uint64_t line) const {
    return {source ? source->getName() : file, line, outline.pathOf(element)};
}

Document loadDocument(const std::string& file) {
    return loadDocument(file, std::make_unique<SourceFile>(file));
}

Document loadDocument(const std::string& file, std::unique_ptr<SourceFile> source) {
    Document document;
    document.file = file;
    document.source = std::move(source);
    document.outline = readOutline(*document.source);
    checkForm(document);
    document.root = ac::Object::create();
    const double begin = QOR::Time{}.getCurrentTime();
    readBody(document);
    settleTimeStamps(document, begin);
    resolveRelations(document);
    return document;
}

void writeDocument(const Document& document, std::streambuf& target, const std::string& name,
                   const WriteOptions& options) {
    const std::uint64_t size = document.source ? document.source->getSize() : 0;
    Progress progress("writing " + name, size);
    ProgressBuffer counted(target, progress);
    InstanceNumbering numbering(counted);
    std::ostream stream(&numbering);
    const auto context = std::make_shared<ac::WriteContextBase>(options.format);
    context->setWriteOnlyMarked(options.onlyMarked);
    context->setWriteOnlyMarkedObjects(options.onlyMarked);
    ac::SharedInstanceCollection shared;
    bool isShared = false;
    collectShared(document, shared, isShared);
    if (isShared) context->setSharedInstances(&shared);

    ac::ModelOutFormat format(stream);
    format.setFormat(options.format);
    format.writeHeader(document.outline.title, ac::version, document.outline.versions.size() > 1);
    auto error = isShared ? shared.writeTo(stream, context) : nullptr;
    if (!error) error = document.root->writeTo(stream, context);
    clearSerialized(document);
    format.writeFooter();
    if (error && !error->isWarning()) failToWrite(target, name, *error);
    stream << '\n';
}

void exportDocument(const Document& document, std::streambuf& target, const std::string& name,
                    bool onlyMarked) {
    std::ostream stream(&target);
    const auto context = std::make_shared<ac::WriteContextBase>();
    context->setWriteOnlyMarked(onlyMarked);
    const auto error = ac::XMLSerialization::to(stream, *document.root, context);
    if (error && !error->isWarning()) failToWrite(target, name, *error);
    stream << '\n';
}

}  // namespace qormodel
