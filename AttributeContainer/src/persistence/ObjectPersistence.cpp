// Writes and reads an object with its children.
#include <AttributeContainer/Object.h>

#include <AttributeContainer/DataOutFormat.h>
#include <AttributeContainer/IFallbackObject.h>
#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ReadFromScope.h>
#include <AttributeContainer/SharedInstanceCollection.h>
#include <AttributeContainer/WriteToScope.h>

#include <QOR/FirstWarning.h>

#include "objects/ChildWalk.h"
#include "persistence/BlockEnd.h"
#include "persistence/ObjectWords.h"
#include "persistence/SpareAttributes.h"

#include <typeinfo>
#include <utility>
#include <vector>

namespace QOR::AttributeContainer {

const DataStructures::KeyTable Object::keyTable{
    std::vector<DataStructures::KeyTableEntry>{{ObjectWords::Wrapper, "Object"},
                                               {ObjectWords::Child, "Child"},
                                               {ObjectWords::MajorVersion, "MajorVersion"},
                                               {ObjectWords::MinorVersion, "MinorVersion"},
                                               {ObjectWords::EndOfTable, ""}}};

// Writing -----------------------------------------------------------------------------------------

namespace {
// A child counts as marked if its first attribute is, which is its name.
bool isMarked(const Object& child) {
    const auto first = child.getAttribute(0).lock();
    return first && first->isMarked();
}

// The class words of children, where most stand between others of their class: it takes a search
// to tell whether a class is that of a placeholder.
class ClassWords {
public:
    const std::string& of(const Object& child) {
        if (&typeid(child) == noPlaceholder) return child.getClassName();
        if (const auto* const fallback = dynamic_cast<const IFallbackObject*>(&child))
            return fallback->getOriginalClassName();
        noPlaceholder = &typeid(child);
        return child.getClassName();
    }

private:
    const std::type_info* noPlaceholder = nullptr;
};

// What tells a reader which child comes: class, name, and its identity where it can be shared.
void writeHead(Object& child, const std::string& word, ModelOutFormat& mof, bool isShared) {
    mof.startValueAsString(word);
    DataOutFormat<std::string>(mof.output(), mof.getFormat()).put(child.getName());
    mof.endValue();
    child.setClassVersion(child.getStoredClassVersion());
    if (!isShared) return;
    mof.startValue("InstanceID");
    DataOutFormat<std::uint64_t>(mof.output(), mof.getFormat()).put(child.getInstanceIdentifier());
    mof.endValue();
}

ErrorPtr writeChild(Object& child, ClassWords& words, WriteToScope& scope,
                    const std::shared_ptr<const WriteContextBase>& context) {
    if (context->writeOnlyMarkedObjects() && !isMarked(child)) return nullptr;
    SharedInstanceCollection* const shared = context->getSharedInstances();
    const bool wasSerialized = shared && child.isSerialized();
    if (shared) child.setIsSerialized(true);
    scope.getMof().startBlock("Child");
    writeHead(child, words.of(child), scope.getMof(), shared != nullptr);
    ErrorPtr result;
    if (wasSerialized) {
        shared->insert(child.getInstanceIdentifier());
        scope.getMof().startValue("ReferenceToShared").endValue();
    } else {
        result = child.writeTo(scope.getMof().output(), context);
        if (result && !result->isWarning()) return result;
    }
    scope.getMof().endBlock();
    return result;
}
}  // namespace

ErrorPtr Object::writeTo(std::ostream& stream, std::shared_ptr<const WriteContextBase> context) {
    if (!context) return QOR_ERROR(ContextMissing, "Object::writeTo");
    WriteToScope scope(stream, context);
    FirstWarning firstWarning;
    if (context->createObjectUuid()) getUuid();  // one is made where there is none
    if (auto error = firstWarning.take(AttrContainer::writeTo(stream, context))) return error;
    if (context->writeChildren()) {
        ClassWords words;
        std::shared_ptr<Object> child;
        for (ChildWalk walk(children); walk.next(child);) {
            if (!child) continue;
            if (auto error = firstWarning.take(writeChild(*child, words, scope, context)))
                return error;
        }
    }
    if (!stream.good()) return QOR_ERROR(StreamFailed, "Object::writeTo");
    return firstWarning.release();
}

// Reading -----------------------------------------------------------------------------------------

ErrorPtr Object::readFrom(std::istream& stream, std::shared_ptr<const ReadContextBase> context) {
    if (!context) return QOR_ERROR(ContextMissing, "Object::readFrom");
    const SpareAttributes::Scope spares;
    ModelInFormat imf(stream);
    imf.setFormat(context->getFormat());
    FirstWarning firstWarning;
    while (const std::string* const keyword = imf.peekKeyword()) {
        if (isBlockEnd(*keyword)) break;
        const std::uint64_t word = keyTable.keyToToken(*keyword);
        ErrorPtr result;
        if (word == ObjectWords::Wrapper) {
            imf.nextKeyword();  // past the word, and below past its "{"
        } else if (word == ObjectWords::Child) {
            imf.nextKeyword();
            result = readChild(stream, context);
        } else {
            result = AttrContainer::readFrom(stream, context);
            // Behind an attribute of an unknown type nobody can tell where the block ends.
            if (result && result->getCode() == ErrorCode::UnknownAttributeType) {
                ModelInFormat::cleanPropagateKeyword();
                return QOR_ERROR(ObjectBlockBroken, "Object::readFrom");
            }
        }
        if (auto error = firstWarning.take(std::move(result)))
            return ReadFromScope::fail(std::move(error));
        imf.nextKeyword();
    }
    propagateEnd(imf);
    return firstWarning.release();
}

}  // namespace QOR::AttributeContainer
