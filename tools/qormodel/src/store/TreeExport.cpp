#include "store/TreeExport.h"

#include "model/Values.h"
#include "store/TreeStructure.h"
#include "store/ValueInStore.h"

#include <AttributeContainer/AttrRegistryVisitor.h>
#include <AttributeContainer/RegKeys.h>
#include <AttributeContainer/Version.h>

#include <QOR/Text.h>

#include <cstdio>
#include <limits>
#include <set>
#include <utility>

#include <unistd.h>

namespace qormodel {

namespace {
constexpr auto allLevels = std::numeric_limits<unsigned>::max();
constexpr int maxDepth = 500;  // the stack and the library's reader take no more

std::string quoted(std::string text) {
    QOR::controlsToEsc(text, true);
    return '"' + text + '"';
}

// The text of a model file without values. The library reads it as any other, so that classes that
// it does not know get the same placeholders.
class Skeleton {
public:
    Skeleton(const StoreFile& store, std::vector<KeyProblem>& problems)
        : store(store), problems(problems) {}

    std::string write(const std::wstring& path) {
        const auto key = StoreKey::inq(store, path);
        if (!key) throw store.failure(path, "is not there");
        auto structure = inqStructure(*key).value_or(TreeStructure{});
        const std::string title = structure.title.empty() ? "qormodel settings" : structure.title;
        text = quoted(title) + "\n\"kVLib\" " +
               ac::version.getFormatVersion()->getReleaseNumbers() + '\n';
        addContent(*key, structure);
        return std::move(text);
    }

private:
    void addContent(const StoreKey& key, TreeStructure& structure) {
        if (++depth > maxDepth) throw store.failure(key.getPath(), "lies too deep for a model");
        text += "AttrContainer { \n";
        addAttributes(key, structure);
        const auto subkeys = completed(key, structure);
        for (const auto& name : structure.fields)
            addElement(key, name, "SubContainer", "AttrContainer", subkeys);
        text += "}\n";
        for (const auto& name : structure.children)
            addElement(key, name, "Child", "Object", subkeys);
        --depth;
    }

    // Keys that the structure does not tell of are fields. \return the names of all, folded
    static std::set<std::wstring> completed(const StoreKey& key, TreeStructure& structure) {
        std::set<std::wstring> told;
        for (const auto* const list : {&structure.fields, &structure.children})
            for (const auto& name : *list) told.insert(keystore::foldName(QOR::wide(name)));
        std::set<std::wstring> there;
        for (const auto& name : key.listSubkeys()) {
            const std::wstring folded = keystore::foldName(joinPairs(name));
            there.insert(folded);
            if (told.insert(folded).second) structure.fields.push_back(nameText(name));
        }
        return there;
    }

    void addElement(const StoreKey& parent, const std::string& name, const std::string& block,
                    const std::string& defaultClass, const std::set<std::wstring>& subkeys) {
        const std::wstring path = keyBelow(parent.getPath(), QOR::wide(name));
        if (!subkeys.contains(keystore::foldName(QOR::wide(name)))) return;  // removed since
        if (!ac::AttrContainer::isNameValid(name))
            return problem(path, "is no valid name of an object or field");
        const auto key = StoreKey::inq(store, path);
        if (!key) return;
        auto structure = inqStructure(*key).value_or(TreeStructure{});
        const std::string& className =
            structure.className.empty() ? defaultClass : structure.className;
        text += block + " { \n" + quoted(className) + ' ' + quoted(name) + '\n';
        addContent(*key, structure);
        text += "}\n";
    }

    void addAttributes(const StoreKey& key, const TreeStructure& structure) {
        std::set<std::wstring> told{keystore::foldName(structureName)};
        for (const auto& [type, name] : structure.attributes) {
            told.insert(keystore::foldName(QOR::wide(name)));
            addAttribute(keyBelow(key.getPath(), QOR::wide(name)), type, name);
        }
        for (const auto& name : key.listValues()) {
            if (!told.insert(keystore::foldName(joinPairs(name))).second) continue;
            if (const auto value = key.inqValue(name))
                addAttribute(keyBelow(key.getPath(), name), attributeTypeOf(*value),
                             nameText(name));
        }
    }

    void addAttribute(const std::wstring& path, const std::string& type, const std::string& name) {
        if (!ac::AttrContainer::isNameValid(name))
            return problem(path, '"' + name + "\" is no valid name of an attribute");
        if (!isKnownType(type)) return problem(path, type + " is no type of an attribute");
        text += type + " { \nName " + quoted(name) + "\n}\n";
    }

    static bool isKnownType(const std::string& type) {
        return ac::AttrContainer::getTypeFromString(type) <
               ac::AttrContainer::getTypeFromString("no such type");
    }

    void problem(const std::wstring& path, const std::string& what) {
        problems.push_back({nameText(path), what});
    }

    const StoreFile& store;
    std::vector<KeyProblem>& problems;
    std::string text;
    int depth = 0;
};

// Takes values whole, whatever their length, with and without a terminator.
class WholeTreeReader : public ac::AttrRegistryVisitor {
public:
    WholeTreeReader(const StoreFile& store, const std::shared_ptr<const ac::RegKeys>& keys,
                    const KeyPlace& place, std::vector<EditResult>& edits,
                    std::set<std::wstring>& met)
        : AttrRegistryVisitor(ac::RegKeysArray{{keys}}, false, 0, allLevels),
          store(store),
          place(place),
          edits(edits),
          met(met) {}

    using AttrRegistryVisitor::visit;

    VisitResult visit(ac::Attribute& attribute) override {
        if (!isStored(attribute)) return Continue;
        for (const auto& key : getKeys())
            if (const auto value = inqValue(*key, attribute.getName()))
                take(attribute, *value, key->getPrefix());
        return Continue;
    }

private:
    static std::optional<StoredValue> inqValue(const ac::RegKeys& key, const std::string& name) {
        StoredValue value;
        value.data.resize(1024);
        for (;;) {
            auto size = static_cast<unsigned long>(value.data.size());
            const bool isRead = key.queryKey(name, value.data.data(), &size, &value.type);
            const bool isTooLong = size > value.data.size();
            if (!isRead && !isTooLong) return std::nullopt;
            value.data.resize(size);
            if (isRead) return value;
        }
    }

    std::wstring keyOf(const std::string& prefix) const {
        return keyBelow(place.key, QOR::wide(prefix));
    }

    void take(ac::Attribute& attribute, const StoredValue& value, const std::string& prefix) {
        const std::wstring stored = keyBelow(keyOf(prefix), QOR::wide(attribute.getName()));
        met.insert(keystore::foldName(stored));
        const std::string text = attributeTextOf(value);
        std::string expected;
        const auto draft = readStoredText(attribute, text, expected);
        // An empty text is no number: the library's own visitor passes it over as well.
        if (!draft && text.empty()) return;
        if (!draft)
            throw store.failure(stored, '"' + text + "\" is no value of type " +
                                            attribute.getClassName() + ": expected " + expected);
        EditResult edit{pathOf(prefix, attribute.getName()), valueText(attribute),
                        valueText(*draft), false, std::nullopt};
        if (edit.before != edit.after) attribute = *draft;
        if (valueText(attribute) != edit.after)
            edit.refusal = "the change to \"" + edit.after + "\" was refused by an observer";
        edits.push_back(std::move(edit));
    }

    std::string pathOf(std::string prefix, const std::string& name) const {
        QOR::replaceAll(prefix, "\\", "/");
        const std::string holder =
            prefix.empty() ? place.element.path : pathBelow(place.element.path, prefix);
        return pathBelow(holder, name);
    }

    const StoreFile& store;
    const KeyPlace& place;
    std::vector<EditResult>& edits;
    std::set<std::wstring>& met;  // folded
};

std::vector<std::wstring> listOthers(const StoreFile& store, const std::wstring& start,
                                     const std::set<std::wstring>& met) {
    std::vector<std::wstring> others;
    std::vector<std::wstring> waiting{start};
    while (!waiting.empty()) {
        const auto key = StoreKey::inq(store, waiting.back());
        waiting.pop_back();
        if (!key) continue;
        for (const auto& name : key->listValues()) {
            const std::wstring path = keyBelow(key->getPath(), name.empty() ? L"@" : name);
            const bool isStructure = keystore::foldName(name) == keystore::foldName(structureName);
            if (!isStructure && !met.contains(keystore::foldName(joinPairs(path))))
                others.push_back(path);
        }
        const auto subkeys = key->listSubkeys();
        for (auto name = subkeys.rbegin(); name != subkeys.rend(); ++name)
            waiting.push_back(keyBelow(key->getPath(), *name));
    }
    return others;
}
}  // namespace

Document makeTree(const StoreFile& store, const std::wstring& key,
                  std::vector<KeyProblem>& problems) {
    const std::string text = Skeleton(store, problems).write(key);
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::tmpfile(), &std::fclose);
    if (!file || std::fwrite(text.data(), 1, text.size(), file.get()) != text.size() ||
        std::fflush(file.get()) != 0)
        throw Failure("no temporary file can be made");
    Document document = loadDocument("/proc/self/fd/" + std::to_string(::fileno(file.get())));
    document.file = store.file;
    return document;
}

std::vector<EditResult> readValues(const StoreFile& store, const std::wstring& key,
                                   const Element& start, std::vector<std::wstring>* left) {
    std::set<std::wstring> met;
    std::vector<EditResult> edits;
    std::vector<KeyProblem> ignored;  // what has no key has no values either
    const auto places = planKeys(start, key, ignored);
    for (const auto& place : places) {
        if (place.element.isField && &place != &places.front()) continue;
        if (!StoreKey::inq(store, place.key)) continue;
        const auto keys =
            std::make_shared<ac::RegKeys>(QOR::narrow(place.key, '?'), store.store->root(), false);
        WholeTreeReader reader(store, keys, place, edits, met);
        place.element.container->attributeVisitor(reader, true);
    }
    if (left) *left = listOthers(store, key, met);
    return edits;
}

}  // namespace qormodel
