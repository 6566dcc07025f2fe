#include "persistence/OpenContainers.h"

#include <AttributeContainer/ReferenceDictionary.h>

#include "observation/ThreadWord.h"

namespace QOR::AttributeContainer {

namespace {
QOR_THREAD_WORD OpenContainer* innermost = nullptr;
}  // namespace

OpenContainer::OpenContainer(const AttrContainer& container)
    : container(&container), outer(innermost) {
    innermost = this;
}

OpenContainer::~OpenContainer() {
    innermost = outer;
}

bool OpenContainer::acceptsReference(const AttrContainer& target, const ReadContextBase& context) {
    const ReferenceDictionary* const dictionary = context.getReferenceDictionary();
    for (const OpenContainer* open = innermost; open; open = open->outer) {
        if (open->container == &target) return false;
        if (dictionary && dictionary->wasReferenced(*open->container)) return false;
    }
    return true;
}

}  // namespace QOR::AttributeContainer
