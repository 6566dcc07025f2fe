#include <AttributeContainer/FallbackObject.h>

#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ReadFromScope.h>
#include <AttributeContainer/ThreadWord.h>

#include "objects/ChildWalk.h"
#include "objects/RawBlock.h"

#include <istream>
#include <ostream>
#include <streambuf>
#include <utility>
#include <vector>

namespace QOR::AttributeContainer {

namespace {
// A text as the buffer of a stream, without a copy.
class TextBuffer : public std::streambuf {
public:
    explicit TextBuffer(const std::string& text) {
        char* const begin = const_cast<char*>(text.data());  // nothing is put into a stream of input
        setg(begin, begin, begin + text.size());
    }
};

QOR_THREAD_WORD unsigned numParseLevels = 0;

// Counts the container parts that are being parsed inside one another. Each holds its own copy of
// what lies inside, so a stream could make much of little by nesting blocks of unknown classes.
class ParseLevel {
public:
    ParseLevel() { ++numParseLevels; }
    ParseLevel(const ParseLevel&) = delete;
    ParseLevel& operator=(const ParseLevel&) = delete;
    ~ParseLevel() { --numParseLevels; }

    bool isTooDeep() const { return numParseLevels > 16; }
};
}  // namespace

IFallbackObject::~IFallbackObject() = default;

FallbackObject::FallbackObject(const ConstructorProtector& key, CreateType type,
                               const Source& source)
    : Object(key, type, source) {}

FallbackObject::~FallbackObject() = default;

std::shared_ptr<FallbackObject> FallbackObject::create(CreateType type, Source source) {
    const auto object = std::make_shared<FallbackObject>(ConstructorProtector{}, type, source);
    object->init(type, source);
    return object;
}

const std::string& FallbackObject::getStaticClassName() {
    static const std::string name{"FallbackObject"};
    return name;
}

const std::string& FallbackObject::getClassName() const {
    return getStaticClassName();
}

std::shared_ptr<AttrContainer> FallbackObject::duplicate(CreateType type) const {
    return create(type, type == CreateEmpty ? Source{} : Source{*this});
}

void FallbackObject::setOriginalClassName(const std::string& className) {
    originalClassName = className;
}

bool FallbackObject::holdsNoUnknownData() {
    return !containerParsed && prefixText.empty() && containerText.empty();
}

// Reading -----------------------------------------------------------------------------------------

ErrorPtr FallbackObject::readFrom(std::istream& stream,
                                  std::shared_ptr<const ReadContextBase> context) {
    if (!context) return QOR_ERROR(ContextMissing, "FallbackObject::readFrom");
    ReadFromScope scope(stream, context);
    auto block = RawBlock::read(scope.getImf().getKeyword().value_or(std::string{}), stream);
    const bool isWhole = block.isEnded && stream.good();
    const bool hasContainer = block.containerBegin != RawBlock::noContainer;
    prefixText = hasContainer ? block.text.substr(0, block.containerBegin) : std::string{};
    containerText = std::move(block.text.erase(0, prefixText.size()));
    containerParsed = false;
    if (hasContainer) parseContainer(context);
    if (!isWhole) return ReadFromScope::fail(QOR_ERROR(StreamFailed, "FallbackObject::readFrom"));
    // The brace that ends the block is taken, and the caller waits for it.
    ModelInFormat::setPropagateKeyword(ModelFormat::END_OF_BLOCK_STR);
    return QOR_ERROR(ElementSkipped, "FallbackObject::readFrom");
}

// Makes the container part this object's own, where it can be read whole.
void FallbackObject::parseContainer(const std::shared_ptr<const ReadContextBase>& context) {
    const ParseLevel level;
    if (level.isTooDeep()) return;  // as text it loses nothing
    const std::uint64_t numFormerChildren = getNumChildren();
    std::string text = std::exchange(containerText, {});
    try {
        containerParsed = readContainer(text, context);
    } catch (...) {
        containerText = std::move(text);
        rmContainer(numFormerChildren);
        throw;
    }
    if (containerParsed) return;
    containerText = std::move(text);
    rmContainer(numFormerChildren);
}

bool FallbackObject::readContainer(const std::string& text,
                                   const std::shared_ptr<const ReadContextBase>& context) {
    TextBuffer buffer(text);
    std::istream stream(&buffer);
    const ErrorPtr error = Object::readFrom(stream, context);
    return !error || error->isWarning();
}

// Takes back what was read of a container part that stays text. Fields stay: they are not written,
// and a host that looks at them sees more than nothing.
void FallbackObject::rmContainer(std::uint64_t numFormerChildren) {
    rmAllCustomAttributes();
    std::vector<std::shared_ptr<Object>> added;
    std::shared_ptr<Object> child;
    for (ChildWalk walk(getChildren()); walk.next(child);) {
        if (numFormerChildren > 0) {
            --numFormerChildren;
        } else {
            added.push_back(child);
        }
    }
    for (const auto& each : added) rmChild(*each, 0);
}

// Writing -----------------------------------------------------------------------------------------

ErrorPtr FallbackObject::writeTo(std::ostream& stream,
                                 std::shared_ptr<const WriteContextBase> context) {
    if (!context) return QOR_ERROR(ContextMissing, "FallbackObject::writeTo");
    if (!prefixText.empty()) stream << std::endl << prefixText;
    ErrorPtr result;
    if (containerParsed) {
        result = Object::writeTo(stream, context);
    } else if (!containerText.empty()) {
        stream << std::endl << containerText;
    }
    if (!stream.good()) return QOR_ERROR(StreamFailed, "FallbackObject::writeTo");
    return result;
}

}  // namespace QOR::AttributeContainer
