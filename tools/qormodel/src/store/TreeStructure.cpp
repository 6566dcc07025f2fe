#include "store/TreeStructure.h"

namespace qormodel {

namespace {
// The word at the front of a line, which is cut off with the blank behind it.
std::string takeWord(std::string& line) {
    const auto blank = std::min(line.find(' '), line.size());
    std::string word = line.substr(0, blank);
    line.erase(0, blank + 1);
    return word;
}

void takeLine(std::string line, TreeStructure& structure) {
    const std::string word = takeWord(line);
    if (word == "title") structure.title = line;
    if (word == "class") structure.className = line;
    if (word == "field") structure.fields.push_back(line);
    if (word == "child") structure.children.push_back(line);
    if (word != "attribute") return;
    std::string type = takeWord(line);
    structure.attributes.emplace_back(std::move(type), line);
}
}  // namespace

StoredValue structureValue(const TreeStructure& structure) {
    std::vector<std::wstring> lines;
    const auto add = [&](const std::string& word, const std::string& text) {
        lines.push_back(storeName(word + ' ' + text));
    };
    if (!structure.title.empty()) add("title", structure.title);
    add("class", structure.className);
    for (const auto& [type, name] : structure.attributes) add("attribute", type + ' ' + name);
    for (const auto& name : structure.fields) add("field", name);
    for (const auto& name : structure.children) add("child", name);
    return textsValue(lines);
}

std::optional<TreeStructure> inqStructure(const StoreKey& key) {
    const auto value = key.inqValue(std::wstring(structureName));
    const auto lines = value ? inqTexts(*value) : std::nullopt;
    if (!lines) return std::nullopt;
    TreeStructure structure;
    for (const auto& line : *lines) takeLine(nameText(line), structure);
    return structure;
}

}  // namespace qormodel
