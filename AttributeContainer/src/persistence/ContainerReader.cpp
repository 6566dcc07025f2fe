#include "persistence/ContainerReader.h"

#include <AttributeContainer/DataInFormat.h>
#include <AttributeContainer/ModelFormat.h>

#include "containers/ObserverObservable.h"
#include "persistence/BlockEnd.h"
#include "persistence/ContainerWords.h"
#include "persistence/NothingNew.h"
#include "persistence/SpareAttributes.h"

#include <string_view>
#include <utility>

namespace QOR::AttributeContainer {

namespace {
// Whether a container knows what to do at this word. Those of fields mean nothing outside of one.
bool beginsBlock(const std::string& keyword) {
    const std::uint64_t word = AttrContainer::keyTable.keyToToken(keyword);
    return word < numAttrTypes || word == ContainerWords::Container ||
           word == ContainerWords::Name || word == ContainerWords::SubContainer;
}
}  // namespace

ErrorPtr AttrContainer::readFrom(std::istream& stream,
                                 std::shared_ptr<const ReadContextBase> context) {
    if (!context) return QOR_ERROR(ContextMissing, "AttrContainer::readFrom");
    const SpareAttributes::Scope spares;
    return ContainerReader(*this, stream, context).read();
}

void AttrContainer::initRead() {
    for (std::uint64_t token = 0; token < getNumFields(); ++token)
        if (const auto field = getField(token).lock()) field->initRead();
}

ContainerReader::ContainerReader(AttrContainer& container, std::istream& stream,
                                 const std::shared_ptr<const ReadContextBase>& context)
    : container(container),
      stream(stream),
      context(context),
      scope(stream, context),
      imf(scope.getImf()) {}

ErrorPtr ContainerReader::read() {
    while (const std::string* const keyword = imf.peekKeyword()) {
        if (isBlockEnd(*keyword)) break;
        if (auto error = firstWarning.take(readBlock(*keyword)))
            return ReadFromScope::fail(std::move(error));
    }
    return firstWarning.release();
}

// Reads what the keyword begins, and moves on to the next keyword.
ErrorPtr ContainerReader::readBlock(const std::string& keyword) {
    // Every second word, which needs no search.
    if (std::string_view(keyword) == "Name") return readAttribute();
    const std::uint64_t word = AttrContainer::keyTable.keyToToken(keyword);
    if (word < numAttrTypes || word == ContainerWords::Container) {
        if (word < numAttrTypes) pendingType = static_cast<AttrType>(word);
        imf.nextKeyword();  // past the word, and below past its "{"
        imf.nextKeyword();
        return nullptr;
    }
    if (word == ContainerWords::SubContainer) {
        imf.nextKeyword();
        auto error = container.readField(stream, context);
        imf.nextKeyword();  // the "}" of the field, and below past it
        imf.nextKeyword();
        return error;
    }
    if (pendingType == unknownAttrType) return readOwnRelations();
    imf.nextKeyword();
    return nullptr;
}

ErrorPtr ContainerReader::readAttribute() {
    const std::string name = DataInFormat<std::string>(stream, context->getFormat()).get();
    const AttrType type = pendingType;
    auto read = SpareAttributes::take(type);
    if (!read) return QOR_ERROR(AttributeNotCreated, "AttrContainer::readFrom");
    imf.nextKeyword();
    if (auto error = firstWarning.take(read->readFrom(stream, context))) return error;
    pendingType = unknownAttrType;
    // The "}" of the block first: who is told of the value may read a stream of its own, on which
    // the keyword must not wait for it.
    imf.nextKeyword();
    auto error = takeAttribute(name, type, read);
    SpareAttributes::giveBack(type, std::move(read));
    imf.nextKeyword();  // past the "}"
    return error;
}

// Leaves an attribute that went into the container to it alone.
ErrorPtr ContainerReader::takeAttribute(const std::string& name, AttrType type,
                                        std::shared_ptr<Attribute>& read) {
    const std::uint64_t token = container.getAttrToken(name);
    if (container.untouchedTable(token)) {
        // Streams name all attributes; one that has its default need not be made for that.
        const auto& untouched = container.lookAtAttribute(token);
        if (untouched && isNothingNew(type, *read, *untouched)) return nullptr;
    }
    const auto existing = container.attributeAt(token);
    if (!existing) {
        if (!name.empty())
            container.addAttribute(std::move(read), container.generateUniqueName(name));
        read = nullptr;
        return nullptr;
    }
    if (context->readMarked() && !existing->isMarked()) return nullptr;
    *existing = *read;
    existing->copyFrom(*read);
    existing->setWriteFlag(read->hasWriteFlag());
    existing->setMarked(read->isMarked());
    return nullptr;
}

ErrorPtr ContainerReader::readOwnRelations() {
    auto error = container.ownObservable().readFrom(stream, context);
    if (error && error->getCode() == ErrorCode::ParseFailed) {
        const std::string* const keyword = imf.peekKeyword();
        if (keyword && beginsBlock(*keyword))
            return nullptr;  // the relations are over, and a block of this container begins
        auto unknown = QOR_ERROR(UnknownAttributeType, "AttrContainer::readFrom");
        unknown->addReason(*error);
        error = std::move(unknown);
    }
    imf.nextKeyword();
    return error;
}

}  // namespace QOR::AttributeContainer
