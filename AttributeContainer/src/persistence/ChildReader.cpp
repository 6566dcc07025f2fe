#include "persistence/ChildReader.h"

#include <AttributeContainer/DataInFormat.h>
#include <AttributeContainer/FallbackObject.h>
#include <AttributeContainer/FieldFactory.h>
#include <AttributeContainer/GenericBinaryObjectV2.h>
#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ReferenceDictionary.h>

#include <QOR/Logger.h>

#include "persistence/BlockEnd.h"
#include "persistence/ContainerWords.h"
#include "persistence/ObjectWords.h"
#include "persistence/OpenContainers.h"
#include "persistence/ReadDepth.h"

#include <utility>

namespace QOR::AttributeContainer {

namespace {
// The older class, whose block has a name of its own inside.
constexpr auto oldBinaryObject = "GenericBinaryObject";

// The words of an object's block come first; words of containers can stand there as well.
std::uint64_t wordOf(const std::string& keyword) {
    const std::uint64_t word = Object::keyTable.keyToToken(keyword);
    return word != AttrContainer::noToken ? word : AttrContainer::keyTable.keyToToken(keyword);
}

bool hasCode(const ErrorPtr& error, ErrorCode code) {
    return error && error->getCode() == code;
}
}  // namespace

ErrorPtr Object::readChild(std::istream& stream, std::shared_ptr<const ReadContextBase> context) {
    if (!context) return QOR_ERROR(ContextMissing, "Object::readChild");
    const ReadDepth depth(*context);
    if (depth.isTooDeep()) return ReadFromScope::fail(QOR_ERROR(ParseFailed, "Object::readChild"));
    const OpenContainer open(*this, *context);
    return ChildReader(*this, stream, context).read();
}

ChildReader::ChildReader(Object& parent, std::istream& stream,
                         const std::shared_ptr<const ReadContextBase>& context)
    : parent(parent),
      stream(stream),
      context(context),
      scope(stream, context),
      imf(scope.getImf()) {}

ErrorPtr ChildReader::read() {
    type = readString();
    name = readString();
    imf.nextKeyword();
    while (const std::string* const keyword = imf.peekKeyword()) {
        if (isBlockEnd(*keyword)) break;
        if (auto error = firstWarning.take(readWord(*keyword)))
            return ReadFromScope::fail(std::move(error));
        imf.nextKeyword();
    }
    return firstWarning.release();
}

std::string ChildReader::readString() {
    return DataInFormat<std::string>(stream, context->getFormat()).get();
}

ErrorPtr ChildReader::readWord(const std::string& keyword) {
    const int format = context->getFormat();
    switch (wordOf(keyword)) {
        case ObjectWords::MajorVersion:
            version.major = DataInFormat<unsigned short>(stream, format).get();
            return nullptr;
        case ObjectWords::MinorVersion:
            version.minor = DataInFormat<unsigned short>(stream, format).get();
            return nullptr;
        case ContainerWords::InstanceID:
            instance = DataInFormat<std::uint64_t>(stream, format).get();
            return nullptr;
        case ContainerWords::ReferenceToShared:
            return readReference();
        default:
            return readBody();
    }
}

ErrorPtr ChildReader::readReference() {
    const std::uint64_t key = std::exchange(instance, 0);
    ReferenceDictionary* const dictionary = context->getReferenceDictionary();
    if (!dictionary || key == 0) return QOR_ERROR(ElementUnresolved, "Object::readChild");
    const auto object = std::dynamic_pointer_cast<Object>(dictionary->resolveReference(key));
    if (!object) return QOR_ERROR(ElementSkipped, "Object::readChild");
    if (object->getParent()) return nullptr;  // and stays there
    if (!OpenContainer::acceptsReference(*object, *context))
        return QOR_ERROR(ElementSkipped, "Object::readChild");
    parent.addChild(object, AddFlags::SkipNameTest);
    return nullptr;
}

ErrorPtr ChildReader::readBody() {
    if (type == oldBinaryObject) {
        convertOldBinaryObject();
        return nullptr;
    }
    std::shared_ptr<Object> object;
    ErrorPtr result = createObject(object);
    if (!object) return QOR_ERROR(ChildNotCreated, "Object::readChild");
    [[maybe_unused]] const auto refused = object->setName(name);
    object->setClassVersion(version);
    trace("Object::readChild - ", " ...");
    parent.addChild(object, AddFlags::SkipNameTest);
    ErrorPtr read = readInto(object);
    if (read && (!result || !read->isWarning())) result = std::move(read);
    result = settle(object, std::move(result));
    trace("... Object::readChild - ", " done");
    instance = 0;
    return result;
}

// The keyword that led here goes with the older class; the next one begins the body.
void ChildReader::convertOldBinaryObject() {
    type = GenericBinaryObjectV2::getStaticClassName();
    name = readString();
    version = {};
}

// A class that is not known gives a placeholder and a warning.
ErrorPtr ChildReader::createObject(std::shared_ptr<Object>& object) const {
    object = FieldFactory::the()->createObject(type);
    if (!object) object = FallbackObject::create();
    auto* const fallback = dynamic_cast<IFallbackObject*>(object.get());
    if (!fallback) return nullptr;
    fallback->setOriginalClassName(type);
    return QOR_ERROR(ObjectNotCreated, "Object::createObject");
}

ErrorPtr ChildReader::readInto(const std::shared_ptr<Object>& object) {
    // Known before its body is read, so that a reference in there resolves.
    ReferenceDictionary* const dictionary = context->getReferenceDictionary();
    if (dictionary && instance != 0) dictionary->registerReference(instance, object);
    return object->readFrom(stream, context);
}

// Takes back a child that shall not stay after its body was read with this result.
ErrorPtr ChildReader::settle(const std::shared_ptr<Object>& object, ErrorPtr result) {
    if (hasCode(result, ErrorCode::ObjectBlockBroken)) parent.rmChild(*object, 0);
    if (hasCode(result, ErrorCode::UnknownAttributeType) &&
        !std::dynamic_pointer_cast<FallbackObject>(object))
        return replaceByFallback(*object);
    if (hasCode(result, ErrorCode::AttributeNotMarked)) {
        ReferenceDictionary* const dictionary = context->getReferenceDictionary();
        if (dictionary && instance != 0) dictionary->unregisterReference(instance);
        parent.rmChild(*object, 0);
        return nullptr;
    }
    return result;
}

ErrorPtr ChildReader::replaceByFallback(Object& object) {
    parent.rmChild(object, 0);
    const auto fallback = FallbackObject::create(CreateDeep, object);
    fallback->setOriginalClassName(type);
    parent.addChild(fallback, AddFlags::SkipNameTest);
    return QOR_ERROR(ElementSkipped, "Object::readChild");
}

void ChildReader::trace(const char* before, const char* behind) const {
    if (!Logger::hasSink()) return;
    Logger::appendLogMsgExt(before + name + " of type " + type + behind, 8, __FILE__, __LINE__,
                            nullptr);
}

}  // namespace QOR::AttributeContainer
