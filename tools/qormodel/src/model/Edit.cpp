#include "model/Edit.h"

#include "model/ErrorText.h"
#include "model/ModelPath.h"
#include "model/TypeWords.h"
#include "model/ValueText.h"
#include "model/Values.h"
#include "model/WrittenCopy.h"

#include <AttributeContainer/Attr.h>
#include <AttributeContainer/ValueTypes.h>

#include <utility>

namespace qormodel {

namespace {
// A free attribute of the type of that word; empty for an unknown word.
std::shared_ptr<ac::Attribute> makeAttribute(const std::string& type) {
    std::shared_ptr<ac::Attribute> made;
    const auto word = inqTypeWord(type);
    if (!word) return made;
    ac::ValueTypes::forEach([&]<class Row>() {
        if constexpr (Row::isCreated && Row::hasKey)
            if (Row::word == *word)
                made = std::make_shared<ac::CustAttr<typename Row::Value>>(std::nullopt);
    });
    return made;
}

std::string textOfNoType(const std::string& type) {
    std::string known;
    for (const auto& word : listTypeWords()) known += (known.empty() ? "" : ", ") + word;
    return '"' + type + "\" is no type of an attribute: expected one of " + known;
}

std::shared_ptr<ac::Attribute> addAttribute(const Document& document, const std::string& path,
                                            const std::string& type) {
    const auto [holder, name] = splitPath(path);
    const auto element = inqElement(document, holder);
    if (!element) throw Failure(document.placeOf(0, 0), "there is no element " + holder);
    auto attribute = makeAttribute(type);
    if (!attribute) throw Failure(textOfNoType(type));
    if (!ac::AttrContainer::isNameValid(name))
        throw Failure(document.placeOf(0, 0), textOfNoName(name));
    if (!element->container->addAttribute(attribute, name).lock())
        throw Failure(document.placeOf(0, 0), '"' + name + "\" is taken in " + holder);
    return attribute;
}

// Takes the text for a value of the attribute's type, without touching the attribute.
std::shared_ptr<ac::Attribute> parsed(const ac::Attribute& attribute, const std::string& text,
                                      const Document& document, const std::string& path) {
    std::string expected;
    auto draft = parseValue(attribute, text, expected);
    if (!draft)
        throw Failure(Place{document.placeOf(0, 0).file, 0, path},
                      '"' + text + "\" is no value of type " + attribute.getClassName() +
                          ": expected " + expected);
    return draft;
}

// What an attribute would hold once it were written and read again. A document of its own keeps the
// cost to that of its value.
std::string textBehindAWrite(const ac::Attribute& attribute) {
    const auto copy = makeAttribute(attribute.getClassName());
    if (!copy) return valueText(attribute);  // no stream holds this type
    *copy = attribute;
    Document alone;
    alone.root = ac::Object::create();
    alone.root->addAttribute(copy, "Written");
    const WrittenCopy written(alone);
    const Document reread = loadDocument(written.getName());
    const auto found = inqAttribute(reread, "/Written");
    return found ? valueText(*found->attribute) : "";
}

// Whether the text would be the name of a second child; paths would lead to the first one alone.
bool isNameTaken(const FoundAttribute& found, const std::string& text) {
    const auto& object = found.element.object;
    if (found.attribute->getToken() != 0 || !object || !object->getParent()) return false;
    const auto other = object->getParent()->inqChild(text);
    return other && other != object;
}
}  // namespace

EditResult setValue(const Document& document, const std::string& path, const std::string& text,
                    const std::string& addType) {
    const auto found = inqAttribute(document, path);
    if (!found && addType.empty())
        throw Failure(document.placeOf(0, 0),
                      "there is no attribute " + path + "; --add TYPE adds one");
    const auto attribute = found ? found->attribute : addAttribute(document, path, addType);
    const auto draft = parsed(*attribute, text, document, path);
    EditResult result{path, found ? valueText(*attribute) : "", "", !found, std::nullopt};
    if (found && isNameTaken(*found, text)) {
        result.refusal = "another child of the same parent has the name \"" + text + '"';
        return result;
    }
    *attribute = *draft;
    result.after = valueText(*attribute);
    if (*attribute == *draft) return result;
    const bool isNoName = attribute->getToken() == 0 && !ac::AttrContainer::isNameValid(text);
    result.refusal = isNoName ? textOfNoName(text)
                              : "the change to \"" + valueText(*draft) +
                                    "\" was refused by an observer";
    return result;
}

std::vector<Relation> listRelationsTo(const Document& document, const std::string& path) {
    const auto isWithin = [&](const std::string& other) {
        return other.starts_with(path) &&
               (other.size() == path.size() || other[path.size()] == '/' || path == "/");
    };
    std::vector<Relation> found;
    for (auto& relation : listRelations(document))
        if (isWithin(relation.target) && !isWithin(relation.observable))
            found.push_back(std::move(relation));
    return found;
}

EditResult removeElement(const Document& document, const std::string& path) {
    const auto [holder, name] = splitPath(path);
    if (const auto found = inqAttribute(document, path)) {
        EditResult result{path, valueText(*found->attribute), "", false, std::nullopt};
        if (!found->element.container->rmAttribute(found->attribute->getName()))
            throw Failure(document.placeOf(0, 0),
                          path + " cannot be removed: its class declares it");
        return result;
    }
    const auto element = inqElement(document, path);
    const auto parent = inqElement(document, holder);
    if (!element || !parent || name.empty())
        throw Failure(document.placeOf(0, 0), "there is nothing to remove at " + path);
    EditResult result{path, classOf(*element->container), "", false, std::nullopt};
    const bool isRemoved = element->object && element->object->getParent()
                               ? parent->object->rmChild(*element->object, 0)
                               : parent->container->rmField(element->container);
    if (!isRemoved) throw Failure(document.placeOf(0, 0), path + " cannot be removed");
    return result;
}

std::optional<std::string> findRounded(const Document& document,
                                       const std::vector<EditResult>& edits) {
    for (const auto& edit : edits) {
        const auto found = inqAttribute(document, edit.path);
        if (!found) continue;
        const std::string before = valueText(*found->attribute);
        const std::string after = textBehindAWrite(*found->attribute);
        if (after != before)
            return edit.path + ": \"" + before + "\" would come back as \"" + after + '"';
    }
    return std::nullopt;
}

}  // namespace qormodel
