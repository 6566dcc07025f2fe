#include "store/KeyPlan.h"

#include "store/StoreFile.h"
#include "store/TreeStructure.h"

#include <AttributeContainer/AttrDefinition.h>

#include <QOR/Text.h>

#include <set>
#include <utility>

namespace qormodel {

namespace {
// The names that are taken in one key; a store takes those for the same that differ in case alone.
class Names {
public:
    bool take(const std::string& name) {
        return names.insert(keystore::foldName(QOR::wide(name))).second;
    }

private:
    std::set<std::wstring> names;
};

class Planner {
public:
    explicit Planner(std::vector<KeyProblem>& problems) : problems(problems) {}

    std::vector<KeyPlace> run(const Element& start, const std::wstring& key) {
        waiting.push_back({start, key});
        while (!waiting.empty()) {
            places.push_back(std::move(waiting.back()));
            waiting.pop_back();
            const KeyPlace place = places.back();
            checkValues(place.element);
            addBelow(place);
        }
        return std::move(places);
    }

private:
    void addBelow(const KeyPlace& place) {
        Names names;
        std::vector<KeyPlace> found;
        const auto add = [&](const std::shared_ptr<ac::AttrContainer>& container,
                             const std::string& name, bool isField) {
            const std::string path = pathBelow(place.element.path, name);
            if (!isKeyName(name))
                return problem(path, "its name cannot be that of a key in a store");
            if (!names.take(name))
                return problem(path,
                               "another element has its key: a store takes names for the "
                               "same that differ in case alone");
            found.push_back({{container, std::dynamic_pointer_cast<ac::Object>(container), path,
                              place.element.depth + 1, isField},
                             keyBelow(place.key, storeName(name))});
        };
        const auto& container = *place.element.container;
        for (std::uint64_t i = 0; i < container.getNumFields(); ++i)
            if (const auto field = place.element.container->getField(i).lock())
                add(field, container.getFieldRegistryPrefix(*field).value_or(""), true);
        if (place.element.object)
            for (const auto& child : place.element.object->getChildren())
                add(child, child->getName(), false);
        while (!found.empty()) {
            waiting.push_back(std::move(found.back()));
            found.pop_back();
        }
    }

    void checkValues(const Element& element) {
        Names names;
        forEachAttribute(*element.container, [&](const auto& attribute) {
            const std::string name = attribute->getName();
            if (name.empty() || QOR::wide(name) == structureName || !isUtf8(name))
                problem(pathBelow(element.path, name),
                        "its name cannot be that of a value in a store");
            else if (!names.take(name))
                problem(pathBelow(element.path, name),
                        "another attribute has its value: a store takes names for the same that "
                        "differ in case alone");
        });
    }

    static bool isUtf8(const std::string& name) {
        return QOR::narrow(QOR::wide(name), '?') == name;
    }

    static bool isKeyName(const std::string& name) {
        return !name.empty() && name.find('\\') == std::string::npos && isUtf8(name) &&
               keystore::lengthOf(QOR::wide(name)) <= 255;
    }

    void problem(const std::string& path, const std::string& text) {
        problems.push_back({path, text});
    }

    std::vector<KeyProblem>& problems;
    std::vector<KeyPlace> waiting;
    std::vector<KeyPlace> places;
};
}  // namespace

std::vector<KeyPlace> planKeys(const Element& start, const std::wstring& key,
                               std::vector<KeyProblem>& problems) {
    return Planner(problems).run(start, key);
}

}  // namespace qormodel
