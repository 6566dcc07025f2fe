// W3: the floor, plain structs with our text by hand, and what a scan for a taken name costs.
#include "tree/PlainTree.h"
#include "tree/TreeText.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace text = bench::text;
using bench::tree::Node;

namespace {

void writeNode(text::StringSink& sink, const Node& node) {
    const bench::ObjectData& data = node.data;
    const auto putText = [&](std::size_t token, const std::string& string) {
        text::putAttribute(sink, token, !string.empty(), [&] { text::putString(sink, string); });
    };
    text::openBlock(sink, "AttrContainer");
    putText(0, data.name);
    for (std::size_t token = 1; token <= 5; ++token) text::putAttribute(sink, token, false, [] {});
    text::putAttribute(sink, 6, data.count != 0, [&] { text::putInteger(sink, data.count); });
    text::putAttribute(sink, 7, data.gain != 0, [&] { text::putDouble(sink, data.gain); });
    putText(8, data.comment);
    text::putAttribute(sink, 9, data.visible, [&] { sink.put("true"); });
    text::putAttribute(sink, 10, true, [&] { text::putPosition(sink, data.position); });
    text::putAttribute(sink, 11, true, [&] { text::putMatrix(sink, data.matrix); });
    putText(12, data.reference);
    putText(13, data.label);
    text::closeBlock(sink);
    for (const auto& child : node.children) {
        text::openChild(sink, child->data.name);
        writeNode(sink, *child);
        text::closeBlock(sink);
    }
}

class Reader {
public:
    explicit Reader(std::string_view from) : source(from) {}

    void read(Node& node) {
        node.data.visible = false;
        for (auto word = source.word(); isInBlock(word); word = source.word()) {
            if (word == "AttrContainer") readAttributes(node.data);
            if (word == "Child") readChild(node);
        }
    }

private:
    static bool isInBlock(std::string_view word) { return !word.empty() && word != "}"; }

    void readAttributes(bench::ObjectData& data) {
        source.word();  // {
        std::size_t guess = 0;
        for (auto type = source.word(); isInBlock(type); type = source.word()) {
            source.word();  // {
            source.word();  // Name
            source.read(quoted);
            const std::size_t token = text::tokenOf(quoted, guess);
            guess = token + 1;
            for (auto word = source.word(); isInBlock(word); word = source.word())
                if (word == "Value") readValue(data, token);
        }
    }
    void readValue(bench::ObjectData& data, std::size_t token) {
        switch (token) {
            case 0: return source.read(data.name);
            case 6: return source.read(data.count);
            case 7: return source.read(data.gain);
            case 8: return source.read(data.comment);
            case 9: return source.read(data.visible);
            case 10: return source.read(data.position);
            case 11: return source.read(data.matrix);
            case 12: return source.read(data.reference);
            case 13: return source.read(data.label);
            default: return;
        }
    }
    void readChild(Node& node) {
        source.word();        // {
        source.read(quoted);  // the class
        source.read(quoted);  // the name, which is an attribute as well
        auto child = std::make_unique<Node>();
        read(*child);
        node.children.push_back(std::move(child));
    }

    text::Source source;
    std::string quoted;
};

struct OurText {
    static std::string write(const Node& root) {
        std::string result;
        text::StringSink sink{result};
        writeNode(sink, root);
        return result;
    }
    static void read(const std::string& from, Node& root) { Reader(from).read(root); }
};

/// No index: every name is held against all that are there.
class WideByScan {
public:
    bool add(const std::string& name) {
        for (const auto& child : children)
            if (child->data.name == name) return false;
        children.push_back(std::make_unique<Node>());
        children.back()->data.name = name;
        return true;
    }

private:
    std::vector<std::unique_ptr<Node>> children;
};

BENCH_PEER("W3", "plain_struct_text", Floor,
           [](bench::Run& run) { bench::tree::runAll<bench::tree::PlainTree<OurText>>(run); });
BENCH_PEER("W3", "plain_struct_scan", Peer,
           [](bench::Run& run) { bench::tree::runWide<WideByScan>(run, 5); });

}  // namespace
