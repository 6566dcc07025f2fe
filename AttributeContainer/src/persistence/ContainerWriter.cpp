// Writes a container and its fields into a stream.
#include <AttributeContainer/AttrCountMarkedVisitor.h>
#include <AttributeContainer/DataOutFormat.h>
#include <AttributeContainer/IFallbackObject.h>
#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/SharedInstanceCollection.h>
#include <AttributeContainer/UnknownAttrContainer.h>
#include <AttributeContainer/WriteToScope.h>
#include <AttributeContainer/kVAttrContainer.h>

#include <QOR/FirstWarning.h>

#include "containers/ObserverObservable.h"
#include "persistence/TextLines.h"

#include <limits>
#include <utility>

namespace QOR::AttributeContainer {

namespace {
bool holdsMarkedAttribute(AttrContainer& container) {
    AttrCountMarkedVisitor visitor(std::numeric_limits<unsigned>::max());
    visitor.setPassesUntouched(true);
    container.attributeVisitor(visitor, true);
    return visitor.getNumMarkedAttributes() > 0;
}

// The class that a reader shall make: a placeholder names the class that it stands for.
const std::string& classWord(const AttrContainer& container) {
    if (const auto* const fallback = dynamic_cast<const IFallbackObject*>(&container))
        return fallback->getOriginalClassName();
    if (const auto* const unknown = dynamic_cast<const UnknownAttrContainer*>(&container))
        return unknown->getUnknownTypeName();
    return container.getClassName();
}

ErrorPtr writeAttribute(const Attribute& attribute, const std::string& name, std::ostream& stream,
                        const std::shared_ptr<const WriteContextBase>& context) {
    // Without a scope of its own, which would hold the context once more for each attribute.
    ModelOutFormat mof(stream);
    mof.setFormat(context->getFormat());
    if (mof.getFormat() == ModelFormat::Text) {
        TextLines::startAttribute(stream, attribute.getClassName(), name);
    } else {
        mof.startAttributeBlock(attribute.getClassName());
        mof.startValue("Name");
        DataOutFormat<std::string>(stream, mof.getFormat()).put(name);
        mof.endValue();
    }
    auto error = attribute.writeTo(stream, context);
    if (error && !error->isWarning()) return error;
    mof.setFormat(context->getFormat());
    mof.endBlock();
    return error;
}
}  // namespace

ErrorPtr AttrContainer::writeTo(std::ostream& stream,
                                std::shared_ptr<const WriteContextBase> context) {
    if (!context) return QOR_ERROR(ContextMissing, "AttrContainer::writeTo");
    WriteToScope scope(stream, context);
    FirstWarning firstWarning;
    scope.getMof().startBlock("AttrContainer");
    for (std::uint64_t token = 0; token < getNumAttributes(); ++token) {
        const auto attribute = lookAtAttribute(token);
        if (!attribute) continue;
        const AttrDefinition* const definition = getAttrDefinition(token);
        if (definition && (definition->category & AttrDefinition::notPersistent) != 0) continue;
        if (context->writeOnlyMarked() && !attribute->isMarked()) continue;
        const auto attributeName = getAttrName(token);
        if (!attributeName || attributeName->empty()) continue;
        if (auto error = firstWarning.take(
                writeAttribute(*attribute, *attributeName, stream, context)))
            return error;
    }
    if (observerObservable) {
        if (auto error = firstWarning.take(observerObservable->writeTo(stream, context)))
            return error;
    }
    for (std::uint64_t token = 0; context->writeFields() && token < getNumFields(); ++token) {
        if (getField(token).expired()) continue;
        if (auto error = firstWarning.take(writeField(stream, token, context))) return error;
    }
    scope.getMof().endBlock();
    if (!stream.good()) return QOR_ERROR(StreamFailed, "AttrContainer::writeTo");
    return firstWarning.release();
}

ErrorPtr AttrContainer::writeField(std::ostream& stream, std::uint64_t token,
                                   std::shared_ptr<const WriteContextBase> context) {
    if (!context) return QOR_ERROR(ContextMissing, "AttrContainer::writeField");
    WriteToScope scope(stream, context);
    const auto field = getField(token).lock();
    if (!field) return QOR_ERROR(ElementUnresolved, "AttrContainer::writeField");
    if (context->writeOnlyMarked() && !holdsMarkedAttribute(*field)) return nullptr;
    SharedInstanceCollection* const shared = context->getSharedInstances();
    const bool wasSerialized = shared && field->isSerialized();
    if (shared) field->setIsSerialized(true);
    const int format = context->getFormat();
    scope.getMof().startBlock("SubContainer");
    scope.getMof().startValueAsString(classWord(*field));
    DataOutFormat<std::string>(stream, format).put(getFieldName(token).value_or(std::string{}));
    scope.getMof().endValue();
    const std::uint64_t instanceKey = field->getInstanceIdentifier();
    if (shared) {
        scope.getMof().startValue("InstanceID");
        DataOutFormat<std::uint64_t>(stream, format).put(instanceKey);
        scope.getMof().endValue();
    }
    ErrorPtr result;
    if (wasSerialized) {
        shared->insert(instanceKey);
        scope.getMof().startValue("ReferenceToShared").endValue();
    } else {
        result = field->writeTo(stream, context);
    }
    scope.getMof().endBlock();
    return result;
}

}  // namespace QOR::AttributeContainer
