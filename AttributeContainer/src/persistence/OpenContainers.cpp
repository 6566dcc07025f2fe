#include "persistence/OpenContainers.h"

#include <AttributeContainer/ReferenceDictionary.h>
#include <AttributeContainer/ThreadWord.h>

namespace QOR::AttributeContainer {

namespace {
QOR_THREAD_WORD OpenContainer* innermost = nullptr;
}  // namespace

OpenContainer::OpenContainer(const AttrContainer& container, const ReadContextBase& context)
    : container(&container),
      outer(innermost),
      depth(outer ? outer->depth + 1 : 1),
      isPartOfTarget(outer && outer->isPartOfTarget) {
    const ReferenceDictionary* const dictionary = context.getReferenceDictionary();
    if (dictionary && dictionary->inqTargetPart(container)) isPartOfTarget = true;
    innermost = this;
}

OpenContainer::~OpenContainer() { innermost = outer; }

bool OpenContainer::acceptsReference(const AttrContainer& target, const ReadContextBase& context) {
    ReferenceDictionary& dictionary = *context.getReferenceDictionary();
    if (innermost->isPartOfTarget) return false;
    const bool isAnyNew = dictionary.noteTarget(target);
    const auto* const part = dictionary.inqTargetPart(target);
    if (part && innermost->depth + part->height > context.getMaxDepth()) return false;
    if (part && !dictionary.takeIn(*part)) return false;
    if (!isAnyNew) return true;
    // What is being read was opened before its place in the target was known.
    const OpenContainer* outermostPart = nullptr;
    for (const OpenContainer* open = innermost; open; open = open->outer)
        if (dictionary.inqTargetPart(*open->container)) outermostPart = open;
    if (!outermostPart) return true;
    for (OpenContainer* open = innermost; open != outermostPart->outer; open = open->outer)
        open->isPartOfTarget = true;
    return false;
}

}  // namespace QOR::AttributeContainer
