#include <AttributeContainer/AttrContComparer.h>

#include "comparison/FieldNames.h"
#include "comparison/TokenSet.h"
#include "comparison/Tolerance.h"

#include <typeinfo>

namespace QOR::AttributeContainer {

namespace {
// The token by which a container knows an attribute that it has found by name: one that was added
// under two names is known by the first of them. A class declares each of its attributes once, and
// what nobody holds beside its slot and the caller has no second slot.
std::uint64_t tokenOf(const std::shared_ptr<const Attribute>& attribute, std::uint64_t found,
                      const AttrContainer& container) {
    const bool isThereOnce =
        attribute.use_count() <= 2 || found < container.getNumHardCodedAttributes();
    return isThereOnce ? found : container.getAttrToken(*attribute);
}
}  // namespace

AttrContComparer::AttrContComparer(int categories, int compareMode)
    : categories(categories), compareMode(compareMode) {}

std::uint64_t AttrContComparer::compare(const AttrContainer& first,
                                        const AttrContainer& second) const {
    reset();
    return runComparison(first, second);
}

void AttrContComparer::reset() const { fieldStack.clear(); }

void AttrContComparer::enterField(OptionalContainer field) const { fieldStack.push_back(field); }

void AttrContComparer::exitField(OptionalContainer) const {
    if (!fieldStack.empty()) fieldStack.pop_back();
}

std::uint64_t AttrContComparer::handleAttributes(const Attribute* first,
                                                 const Attribute* second) const {
    if ((compareMode & withTolerance) == 0) return 1;
    // Null is not caught: a tolerance is for trees of like shape.
    if (typeid(*first) != typeid(*second)) return 1;
    return isWithinTolerance(*first, *second) ? 0 : 1;
}

std::uint64_t AttrContComparer::runComparison(OptionalContainer first,
                                              OptionalContainer second) const {
    if (!first) {
        if (!second || (compareMode & ignoreOnlyInSecond) != 0) return 0;
        return addAttributes(second, true);
    }
    if (!second) return (compareMode & ignoreOnlyInFirst) != 0 ? 0 : addAttributes(first, false);
    const std::uint64_t numDifferences = compareAttributes(*first, *second);
    return numDifferences + compareFields(*first, *second);
}

std::uint64_t AttrContComparer::addAttributes(OptionalContainer container, bool isSecond) const {
    if (!container) return 0;
    const AttrContainer& from = *container;
    std::uint64_t numDifferences = 0;
    for (std::uint64_t token = 0; token < from.getNumAttributes(); ++token) {
        if (!isActive(from, token)) continue;
        const auto attribute = from.getAttribute(token).lock();
        if (!attribute) continue;
        numDifferences += isSecond ? handleAttributes(nullptr, attribute.get())
                                   : handleAttributes(attribute.get(), nullptr);
    }
    for (std::uint64_t token = 0; token < from.getNumFields(); ++token) {
        const auto field = from.getField(token).lock();
        const auto entered = asOptional(field.get());
        enterField(entered);
        numDifferences += addAttributes(entered, isSecond);
        exitField(entered);
    }
    return numDifferences;
}

std::uint64_t AttrContComparer::compareAttributes(const AttrContainer& first,
                                                  const AttrContainer& second) const {
    std::uint64_t numDifferences = 0;
    TokenSet matched;
    const std::uint64_t numInPlace = compareInPlace(first, second, numDifferences);
    matched.insertBelow(numInPlace);
    for (std::uint64_t token = numInPlace; token < first.getNumAttributes(); ++token) {
        const auto a = first.getAttribute(token).lock();
        if (!a) continue;
        const std::uint64_t counterpart = second.getAttrToken(a->getName());
        const auto b = second.getAttribute(counterpart).lock();
        if (!b) {
            if ((compareMode & ignoreOnlyInFirst) == 0 && isActive(first, token))
                numDifferences += handleAttributes(a.get(), nullptr);
            continue;
        }
        matched.insert(tokenOf(b, counterpart, second));
        // The second one's category is that of its attribute at the same token, which is another
        // than `b` where the two are of unlike shape: what has ever been counted stays so.
        if (!isActive(first, token) && !isActive(second, token)) continue;
        if (*a != *b) numDifferences += handleAttributes(a.get(), b.get());
    }
    const std::uint64_t numInSecond = second.getNumAttributes();
    if ((compareMode & ignoreOnlyInSecond) != 0 || matched.size() == numInSecond)
        return numDifferences;
    for (std::uint64_t token = 0; token < numInSecond; ++token) {
        if (matched.contains(token) || !isActive(second, token)) continue;
        const auto b = second.getAttribute(token).lock();
        if (b) numDifferences += handleAttributes(nullptr, b.get());
    }
    return numDifferences;
}

std::uint64_t AttrContComparer::compareInPlace(const AttrContainer& first,
                                               const AttrContainer& second,
                                               std::uint64_t& numDifferences) const {
    if (typeid(first) != typeid(second)) return 0;
    const std::uint64_t number = first.getNumHardCodedAttributes();
    if (number != second.getNumHardCodedAttributes() || !isFoundInPlace(first)) return 0;
    for (std::uint64_t token = 0; token < number; ++token) {
        const AttrTable* const untouched = first.untouchedTable(token);
        if (untouched && untouched == second.untouchedTable(token)) {
            token = untouched->getLastToken();  // all are as at first on both sides
            continue;
        }
        const auto& a = first.lookAtAttribute(token);
        const auto& b = second.lookAtAttribute(token);
        if (!a || !b) return token;
        if (!(*a != *b) || !isActive(first, token)) continue;
        numDifferences += handleAttributes(first.attributeAt(token).get(),
                                           second.attributeAt(token).get());
    }
    return number;
}

bool AttrContComparer::isFoundInPlace(const AttrContainer& container) const {
    if (knownClass == &typeid(container)) return isKnownInPlace;
    const auto leadsToItself = [&](std::uint64_t token) {
        const auto name = container.getAttrName(token);
        return name && container.getAttrToken(*name) == token;
    };
    isKnownInPlace = true;
    for (std::uint64_t token = 0; token < container.getNumHardCodedAttributes(); ++token)
        if (!leadsToItself(token)) isKnownInPlace = false;
    knownClass = &typeid(container);
    return isKnownInPlace;
}

std::uint64_t AttrContComparer::compareFields(const AttrContainer& first,
                                              const AttrContainer& second) const {
    std::uint64_t numDifferences = 0;
    const std::uint64_t numInFirst = first.getNumFields();
    for (std::uint64_t token = 0; token < numInFirst; ++token) {
        const auto field = first.getField(token).lock();
        const auto entered = asOptional(field.get());
        enterField(entered);
        const auto counterpart =
            second.getField(second.getFieldToken(fieldNameAt(first, token, field.get()))).lock();
        numDifferences += runComparison(entered, asOptional(counterpart.get()));
        exitField(entered);
    }
    if ((compareMode & ignoreOnlyInSecond) != 0) return numDifferences;
    // By place and not by name, unlike attributes: what the second one has alone is reached behind
    // the length of the first list only. Counts that are known to hosts rely on it.
    for (std::uint64_t token = numInFirst; token < second.getNumFields(); ++token) {
        const auto field = second.getField(token).lock();
        const auto entered = asOptional(field.get());
        enterField(entered);
        numDifferences += runComparison(std::nullopt, entered);
        exitField(entered);
    }
    return numDifferences;
}

bool AttrContComparer::isActive(const AttrContainer& container, std::uint64_t token) const {
    return (container.getAttrCategory(token) & categories) != 0;
}

}  // namespace QOR::AttributeContainer
