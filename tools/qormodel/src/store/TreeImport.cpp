#include "store/TreeImport.h"

#include "model/Values.h"
#include "store/TreeStructure.h"
#include "store/ValueInStore.h"

#include <AttributeContainer/AttrRegistryVisitor.h>
#include <AttributeContainer/RegKeys.h>

#include <QOR/Text.h>

#include <limits>
#include <utility>

namespace qormodel {

namespace {
constexpr auto allLevels = std::numeric_limits<unsigned>::max();
constexpr std::size_t readLimit = 1024;  // bytes; the library's visitor reads texts that have fewer

TreeStructure structureOf(ac::AttrContainer& container) {
    TreeStructure structure;
    structure.className = classOf(container);
    forEachAttribute(container, [&](const auto& attribute) {
        structure.attributes.emplace_back(attribute->getClassName(), attribute->getName());
    });
    for (std::uint64_t i = 0; i < container.getNumFields(); ++i)
        if (const auto field = container.getField(i).lock())
            structure.fields.push_back(container.getFieldRegistryPrefix(*field).value_or(""));
    if (const auto* const object = dynamic_cast<const ac::Object*>(&container))
        for (const auto& child : object->getChildren())
            structure.children.push_back(child->getName());
    return structure;
}

// Stores texts with their terminator, so that they come back whole, and the structure beside them.
class WholeTreeWriter : public ac::AttrRegistryVisitor {
public:
    WholeTreeWriter(const std::shared_ptr<const ac::RegKeys>& keys, std::string path,
                    const std::string& title, ImportResult& result)
        : AttrRegistryVisitor(ac::RegKeysArray{{keys}}, true, 0, allLevels),
          paths{std::move(path)},
          title(title),
          result(result) {}

    using AttrRegistryVisitor::visitDone;

    VisitResult visit(ac::AttrContainer& container) override {
        const auto entered = AttrRegistryVisitor::visit(container);
        if (entered != Continue) return entered;
        // The first container has its path from the start.
        if (isInside) paths.push_back(pathBelow(paths.back(), container.getName()));
        TreeStructure structure = structureOf(container);
        if (!isInside) structure.title = title;
        isInside = true;
        ++result.numKeys;
        if (!store(std::string(QOR::narrow(std::wstring(structureName), '?')),
                   structureValue(structure)))
            problem(paths.back(), "its key cannot be stored");
        return Continue;
    }

    VisitResult visitDone(ac::AttrContainer& container) override {
        if (paths.size() > 1) paths.pop_back();
        return AttrRegistryVisitor::visitDone(container);
    }

    VisitResult visit(ac::Attribute& attribute) override {
        if (!isStored(attribute)) return Continue;
        const std::string name = attribute.getName();
        const std::string path = pathBelow(paths.back(), name);
        const auto text = storedTextOf(attribute);
        if (!text)
            problem(path, "would not come back: no text of a store stands for " +
                              shortValueText(attribute, 60));
        const auto value = textValue(QOR::wide(text ? *text : attribute.getValueString()),
                                     QOR::keystore::TypeExpandText);
        if (value.data.size() >= readLimit) result.longPaths.push_back(path);
        if (!store(name, value)) problem(path, "cannot be stored");
        else ++result.numValues;
        return Continue;
    }

private:
    bool store(const std::string& name, const StoredValue& value) {
        bool isStoredInAll = !getKeys().empty();
        for (const auto& key : getKeys())
            isStoredInAll =
                key->setKey(name, value.data.data(), static_cast<unsigned long>(value.data.size()),
                            value.type) &&
                isStoredInAll;
        return isStoredInAll;
    }

    void problem(const std::string& path, const std::string& text) {
        result.problems.push_back({path, text});
    }

    std::vector<std::string> paths;
    const std::string& title;
    ImportResult& result;
    bool isInside = false;
};
}  // namespace

ImportResult importTree(const StoreFile& store, const std::wstring& key, const Element& start,
                        const std::string& title) {
    ImportResult result;
    const auto places = planKeys(start, key, result.problems);
    const std::string none;
    for (const auto& place : places) {
        const bool isFirst = &place == &places.front();
        if (place.element.isField && !isFirst) continue;  // the walk over its holder comes to it
        const auto keys =
            std::make_shared<ac::RegKeys>(QOR::narrow(place.key, '?'), store.store->root(), false);
        WholeTreeWriter writer(keys, place.element.path, isFirst ? title : none, result);
        place.element.container->attributeVisitor(writer, true);
    }
    return result;
}

}  // namespace qormodel
