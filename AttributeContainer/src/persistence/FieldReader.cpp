#include "persistence/FieldReader.h"

#include <AttributeContainer/DataInFormat.h>
#include <AttributeContainer/FallbackObject.h>
#include <AttributeContainer/FieldFactory.h>
#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ReferenceDictionary.h>

#include <QOR/Logger.h>

#include "persistence/BlockEnd.h"
#include "persistence/ContainerWords.h"
#include "persistence/OpenContainers.h"
#include "persistence/ReadDepth.h"

#include <typeinfo>
#include <utility>

namespace QOR::AttributeContainer {

ErrorPtr AttrContainer::readField(std::istream& stream,
                                  std::shared_ptr<const ReadContextBase> context) {
    if (!context) return QOR_ERROR(ContextMissing, "AttrContainer::readField");
    const ReadDepth depth(*context);
    if (depth.isTooDeep())
        return ReadFromScope::fail(QOR_ERROR(ParseFailed, "AttrContainer::readField"));
    const OpenContainer open(*this, *context);
    return FieldReader(*this, stream, context).read();
}

FieldReader::FieldReader(AttrContainer& container, std::istream& stream,
                         const std::shared_ptr<const ReadContextBase>& context)
    : container(container), stream(stream), context(context), scope(stream, context),
      imf(scope.getImf()) {}

ErrorPtr FieldReader::read() {
    const int format = context->getFormat();
    typeName = DataInFormat<std::string>(stream, format).get();
    fieldName = DataInFormat<std::string>(stream, format).get();
    imf.nextKeyword();
    token = container.getFieldToken(fieldName);
    while (const std::string* const keyword = imf.peekKeyword()) {
        if (isBlockEnd(*keyword)) break;
        if (auto error = firstWarning.take(readWord(*keyword)))
            return ReadFromScope::fail(std::move(error));
        imf.nextKeyword();
    }
    propagateEnd(imf);
    return firstWarning.release();
}

ErrorPtr FieldReader::readWord(const std::string& keyword) {
    const int format = context->getFormat();
    switch (AttrContainer::keyTable.keyToToken(keyword)) {
        case ContainerWords::FieldHandle: {
            const SVec2d<int> handle = DataInFormat<SVec2d<int>>(stream, format).get();
            if (const auto field = container.lookupField(handle).lock()) attach(field);
            return nullptr;
        }
        case ContainerWords::FieldToken: {
            const int old = DataInFormat<int>(stream, format).get();
            token = container.convertToNewFieldToken(static_cast<std::uint64_t>(old));
            return nullptr;
        }
        case ContainerWords::ReferenceToShared:
            return readReference();
        case ContainerWords::InstanceID:
            instanceKey = DataInFormat<std::uint64_t>(stream, format).get();
            return nullptr;
        default:
            return readBody(keyword);
    }
}

ErrorPtr FieldReader::readReference() {
    ReferenceDictionary* const dictionary = context->getReferenceDictionary();
    if (!dictionary || instanceKey == 0)
        return QOR_ERROR(ElementUnresolved, "AttrContainer::readField");
    const auto field = dictionary->resolveReference(instanceKey);
    if (!field || !OpenContainer::acceptsReference(*field, *context))
        return QOR_ERROR(ElementSkipped, "AttrContainer::readField");
    attach(field);
    return nullptr;
}

ErrorPtr FieldReader::readBody(const std::string& keyword) {
    auto made = makeField();
    if (!made) made = makePlaceholder();
    if (!made) return refuseUnknown(keyword);
    const auto field = chooseTarget(std::move(made));
    ErrorPtr result = readInto(field);
    token = AttrContainer::noToken;
    instanceKey = 0;
    return result;
}

std::shared_ptr<AttrContainer> FieldReader::makeField() {
    if (auto field = container.checkCreateChildField(typeName, fieldName, &token)) return field;
    if (auto field = FieldFactory::the()->createField(typeName)) return field;
    return container.checkCreateDefaultChildField(typeName, fieldName, &token);
}

std::shared_ptr<AttrContainer> FieldReader::makePlaceholder() {
    Logger::appendLogMsgExt("Error creating container with typeName " + typeName, 3, __FILE__,
                            __LINE__, "QOR::AttributeContainer::AttrContainer::readField");
    if (!context->areUnknownContainersAccepted()) return nullptr;
    auto placeholder = FallbackObject::create();
    placeholder->setOriginalClassName(typeName);
    return placeholder;
}

ErrorPtr FieldReader::refuseUnknown(const std::string& keyword) {
    Logger::appendLogMsgExt("Failed to create container of type " + typeName +
                                ". Using UnknownAttrContainer instead.",
                            3, __FILE__, __LINE__,
                            "QOR::AttributeContainer::AttrContainer::readField");
    auto error = QOR_ERROR(ParseFailed, "AttrContainer::readField");
    error->setDescription("Unknown Key: " + keyword + " Unknown type: " + typeName);
    return error;
}

// A token that moved between versions finds its field through the name; a field whose class has
// changed is replaced.
std::shared_ptr<AttrContainer> FieldReader::chooseTarget(std::shared_ptr<AttrContainer> made) {
    const auto isOfSameClass = [&](const std::shared_ptr<AttrContainer>& there) {
        if (!there) return false;
        const AttrContainer& existing = *there;
        const AttrContainer& created = *made;
        return typeid(existing) == typeid(created);
    };
    if (token != AttrContainer::noToken) {
        if (auto there = container.getField(token).lock(); isOfSameClass(there)) return there;
    }
    if (!fieldName.empty()) {
        const std::uint64_t named = container.getFieldToken(fieldName);
        if (auto there = container.getField(named).lock(); isOfSameClass(there)) {
            token = named;
            return there;
        }
    }
    return made;
}

ErrorPtr FieldReader::readInto(const std::shared_ptr<AttrContainer>& field) {
    [[maybe_unused]] const auto refused = field->setName(fieldName);
    ReferenceDictionary* const dictionary = context->getReferenceDictionary();
    if (dictionary && instanceKey != 0) dictionary->registerReference(instanceKey, field);
    ErrorPtr result = field->readFrom(stream, context);
    if (result && result->getCode() == ErrorCode::AttributeNotMarked) {
        if (dictionary) dictionary->unregisterReference(instanceKey);
        return nullptr;
    }
    attach(field);  // also behind a hard error, so that what was read so far stays
    return result;
}

void FieldReader::attach(const std::shared_ptr<AttrContainer>& field) {
    if (token != AttrContainer::noToken && container.setField(token, field)) return;
    container.addField(field, fieldName, AddFlags::MakeNameUnique);
}

}  // namespace QOR::AttributeContainer
