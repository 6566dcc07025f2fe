#include "model/Check.h"

#include "model/Elements.h"
#include "model/Relations.h"
#include "survival/Survival.h"

#include <AttributeContainer/FieldFactory.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <set>
#include <unordered_set>
#include <utility>

namespace qormodel {

namespace {
using Severity = Finding::Severity;

std::string lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char each) { return static_cast<char>(std::tolower(each)); });
    return text;
}

// One look at one document.
class Checker {
public:
    explicit Checker(const Document& document) : document(document) {
        for (auto& name : ac::FieldFactory::the()->getAllRegisteredFields())
            knownClasses.insert(std::move(name));
    }

    std::vector<Finding> run() {
        if (document.isNewerThanLibrary())
            add(Severity::Problem, "version", 0, 1,
                "format " + document.outline.versions.front() + " is newer than this program");
        for (std::size_t i = 0; i < document.outline.elements.size(); ++i) checkElement(i);
        checkRelations();
        checkSurvival();
        for (const auto& warning : document.warnings)
            if (!isToldOf(warning.code))
                findings.push_back({Severity::Warning, "read", warning.place, warning.text});
        return std::move(findings);
    }

private:
    void add(Severity severity, const std::string& kind, std::size_t element, std::uint64_t line,
             const std::string& text) {
        findings.push_back({severity, kind, document.placeOf(element, line), text});
    }

    void checkElement(std::size_t index) {
        const ElementText& element = document.outline.elements[index];
        if (index != 0) checkClass(index, element);
        if (index != 0) checkName(index, element.line, element.name);
        checkAttributes(index, element);
        checkSiblings(index, element);
        checkInstance(index, element);
        for (const auto& stray : element.strays)
            add(Severity::Warning, "class", index, stray.line,
                "holds content that no class of this program writes");
    }

    void checkName(std::size_t index, std::uint64_t line, const std::string& name) {
        if (!ac::AttrContainer::isNameValid(name))
            add(Severity::Problem, "name", index, line, "\"" + name + "\" is no valid name");
    }

    void checkClass(std::size_t index, const ElementText& element) {
        if (!knownClasses.contains(element.className))
            add(Severity::Warning, "class", index, element.line,
                "the class " + element.className + " is not known to this program");
    }

    void checkAttributes(std::size_t index, const ElementText& element) {
        std::set<std::string> names;
        for (const auto& attribute : element.attributes) {
            if (!names.insert(attribute.name).second)
                add(Severity::Problem, "name", index, attribute.line,
                    "the attribute " + attribute.name + " is there twice");
            if (ac::AttrContainer::getTypeFromString(attribute.type) == ac::unknownAttrType)
                add(Severity::Problem, "type", index, attribute.line,
                    attribute.type + " is no type of an attribute");
        }
    }

    // Names compare without case, as paths do.
    void checkSiblings(std::size_t index, const ElementText& element) {
        std::set<std::string> names;
        for (const auto& attribute : element.attributes) names.insert(lower(attribute.name));
        for (const auto* const list : {&element.fields, &element.children})
            for (const std::size_t each : *list)
                if (!names.insert(lower(document.outline.elements[each].name)).second)
                    add(Severity::Problem, "name", each, document.outline.elements[each].line,
                        "the name is taken already in " + document.outline.pathOf(index));
    }

    void checkInstance(std::size_t index, const ElementText& element) {
        if (!element.instance) {
            if (element.isReference)
                add(Severity::Problem, "reference", index, element.line,
                    "refers to a shared instance without its number");
            return;
        }
        const bool isNew = instances.insert(*element.instance).second;
        if (element.isReference && isNew)
            add(Severity::Problem, "reference", index, element.line,
                "refers to instance " + std::to_string(*element.instance) +
                    ", which does not stand ahead of it");
        if (!element.isReference && !isNew)
            add(Severity::Problem, "reference", index, element.line,
                "has the number " + std::to_string(*element.instance) +
                    " of another instance");
    }

    void checkRelations() {
        for (const auto& relation : listRelations(document)) {
            Place place = document.placeOf(0, relation.line);
            place.path = relation.observable;
            if (!relation.isActionKnown)
                findings.push_back({Severity::Problem, "relation", place,
                                    "the action \"" + relation.action + "\" is not known"});
            if (relation.target.empty())
                findings.push_back({Severity::Problem, "relation", place,
                                    "the observer " + relation.observer + " is not there"});
        }
    }

    // Of unknown classes and of references that lead nowhere each element tells by itself.
    static bool isToldOf(ac::ErrorCode code) {
        return code == ac::ErrorCode::ObjectNotCreated || code == ac::ErrorCode::ElementSkipped;
    }

    void checkSurvival() {
        for (const auto& loss : findLosses(document)) {
            Place place = document.placeOf(0, loss.line);
            place.path = loss.path;
            findings.push_back({Severity::Problem, "survival", place, describe(loss)});
        }
    }

    const Document& document;
    std::set<std::string> knownClasses;
    std::unordered_set<std::uint64_t> instances;
    std::vector<Finding> findings;
};
}  // namespace

std::vector<Finding> checkDocument(const Document& document) {
    return Checker(document).run();
}

}  // namespace qormodel
