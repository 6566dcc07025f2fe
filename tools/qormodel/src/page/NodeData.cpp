#include "page/NodeData.h"

#include "compare/OutlineDiff.h"
#include "page/PageData.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>

namespace qormodel {

namespace {
using Kind = Change::Kind;

constexpr std::size_t contentLength = 200;  // bytes of what is not understood

// Words, each with the number under which nodes name it.
class Words {
public:
    std::size_t numberOf(const std::string& word) {
        const auto [place, isNew] = numbers.emplace(word, list.size());
        if (isNew) list.push_back(word);
        return place->second;
    }
    Json take() { return std::move(list); }

private:
    std::unordered_map<std::string, std::size_t> numbers;
    Json list = Json::array();
};

// One text on one line; the bytes that are left out are no part of a character.
std::string excerptOf(std::string text) {
    std::ranges::replace(text, '\n', ' ');
    if (text.size() <= contentLength) return text;
    std::size_t length = contentLength;
    while (length > 0 && (text[length] & 0xC0) == 0x80) --length;
    return text.substr(0, length) + "...";
}

class NodeList {
public:
    NodeList(const PageTree& tree, const std::vector<Change>& changes, const Document& first,
             const Document* second)
        : tree(tree), firstContents(listContents(first, tree.getFirst())) {
        if (second) secondContents = listContents(*second, tree.getSecond());
        for (const auto& change : changes) sortIn(change);
    }

    void addTo(Json& page) {
        Json nodes = Json::array();
        for (std::size_t i = 0; i < tree.getNodes().size(); ++i) nodes.push_back(describe(i));
        page["classes"] = classes.take();
        page["types"] = types.take();
        page["nodes"] = std::move(nodes);
    }

private:
    void sortIn(const Change& change) {
        switch (change.kind) {
            case Kind::Attribute:
                if (change.first) attributeChanges.emplace(change.first.get(), &change);
                if (change.second) attributeChanges.emplace(change.second.get(), &change);
                break;
            case Kind::Title:
                addMark(0, '~', "title: " + change.before + " -> " + change.after);
                break;
            case Kind::Place:
                addMark(tree.pageNodeOfFirst(change.index), '~',
                        change.before + ": " + change.path + " -> " + change.otherPath);
                break;
            case Kind::Order:
                addMark(tree.pageNodeOfFirst(change.index), '~', change.before);
                break;
            case Kind::Content:
                addMark(tree.pageNodeOfFirst(change.index), '?',
                        change.before + " -> " + change.after);
                break;
            case Kind::Object:  // the tree itself tells
            case Kind::Field:
            case Kind::Relation: break;  // in a list of their own
        }
    }

    void addMark(std::size_t node, char sign, const std::string& text) {
        if (node != FlatTree::none) marks[node].push_back({std::string(1, sign), text, 1});
    }

    Json describe(std::size_t index) {
        const PageNode& node = tree.getNodes()[index];
        const Node& shown = tree.shown(node);
        const ac::AttrContainer& container = *shown.element.container;
        Json described{{"n", index == 0 ? container.getName() : shown.slot},
                       {"c", classes.numberOf(classOf(container))},
                       {"p", node.parent}};
        if (shown.element.isField) described["f"] = true;
        if (isUnknownClass(container)) described["u"] = true;
        bool isChanged = marks.contains(index);
        Json attributes = describeAttributes(node, isChanged);
        if (const char sign = tree.signOf(node); sign != ' ') described["s"] = std::string(1, sign);
        else if (isChanged) described["s"] = "~";
        if (!attributes.empty()) described["a"] = std::move(attributes);
        if (Json list = marksOf(index); !list.empty()) described["m"] = std::move(list);
        return described;
    }

    Json describeAttributes(const PageNode& node, bool& isChanged) {
        Json described = Json::array();
        const auto add = [&](const auto& attribute, bool onlyRemoved) {
            const auto found = attributeChanges.find(attribute.get());
            const Change* const change = found == attributeChanges.end() ? nullptr : found->second;
            if (onlyRemoved && (!change || change->second)) return;
            isChanged = isChanged || change;
            described.push_back(describeAttribute(*attribute, change));
        };
        forEachAttribute(*tree.shown(node).element.container,
                         [&](const auto& attribute) { add(attribute, false); });
        if (node.first == FlatTree::none || node.second == FlatTree::none) return described;
        forEachAttribute(*tree.inqFirst(node)->element.container,
                         [&](const auto& attribute) { add(attribute, true); });
        return described;
    }

    Json describeAttribute(const ac::Attribute& attribute, const Change* change) {
        Json described{attribute.getName(), types.numberOf(attribute.getClassName()),
                       shortValueText(attribute, pageValueLength),
                       isDefaultValue(attribute) ? 1 : 0};
        if (!change) return described;
        described.push_back(std::string(1, change->sign));
        // Of a list the change tells more than the beginning of its values.
        const bool isInFull = change->first && change->second &&
                              change->first->getClassName() == change->second->getClassName() &&
                              !compareLists(*change->first, *change->second);
        const auto text = [&](const auto& side, const std::string& brief) {
            return isInFull ? shortValueText(*side, pageValueLength) : brief;
        };
        described.push_back(text(change->first, change->before));
        described.push_back(text(change->second, change->after));
        return described;
    }

    // What was sorted in, and content that no class understands.
    Json marksOf(std::size_t index) const {
        const PageNode& node = tree.getNodes()[index];
        const bool isSecond = node.second != FlatTree::none;
        Json list = Json::array();
        if (const auto found = marks.find(index); found != marks.end()) list = found->second;
        for (const auto& content : isSecond ? contentAt(secondContents, node.second)
                                            : contentAt(firstContents, node.first))
            list.push_back({"?", "not understood: " + excerptOf(content)});
        return list;
    }

    const PageTree& tree;
    Contents firstContents;
    Contents secondContents;
    std::unordered_map<const ac::Attribute*, const Change*> attributeChanges;
    std::unordered_map<std::size_t, Json> marks;
    Words classes;
    Words types;
};
}  // namespace

void addNodes(Json& page, const PageTree& tree, const std::vector<Change>& changes,
              const Document& first, const Document* second) {
    NodeList(tree, changes, first, second).addTo(page);
}

}  // namespace qormodel
