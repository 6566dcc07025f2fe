// W3: RapidJSON's document; the children stand in an object, by their names.
#include "tree/Tree.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace {

using rapidjson::Value;
using Allocator = rapidjson::Document::AllocatorType;

Value makeString(const std::string& string, Allocator& allocator) {
    return Value(string.data(), static_cast<rapidjson::SizeType>(string.size()), allocator);
}

template <class Numbers> Value makeArray(const Numbers& numbers, Allocator& allocator) {
    Value array(rapidjson::kArrayType);
    array.Reserve(static_cast<rapidjson::SizeType>(numbers.size()), allocator);
    for (const double number : numbers) array.PushBack(number, allocator);
    return array;
}

Value makeNode(const bench::TreeData& tree, std::size_t index, Allocator& allocator) {
    const bench::ObjectData& data = tree.nodes[index];
    Value node(rapidjson::kObjectType);
    node.AddMember("n", makeString(data.name, allocator), allocator);
    node.AddMember("i", data.count, allocator);
    node.AddMember("d", data.gain, allocator);
    node.AddMember("s", makeString(data.comment, allocator), allocator);
    node.AddMember("b", data.visible, allocator);
    node.AddMember("p", makeArray(data.position, allocator), allocator);
    node.AddMember("m", makeArray(data.matrix, allocator), allocator);
    node.AddMember("u", makeString(data.reference, allocator), allocator);
    node.AddMember("t", makeString(data.label, allocator), allocator);
    if (index >= tree.numInner()) return node;
    Value children(rapidjson::kObjectType);
    for (std::size_t k = 1; k <= bench::fanOut; ++k) {
        const std::size_t child = index * bench::fanOut + k;
        children.AddMember(makeString(tree.nodes[child].name, allocator),
                           makeNode(tree, child, allocator), allocator);
    }
    node.AddMember("c", children, allocator);
    return node;
}

std::int64_t countSumOf(const Value& node) {
    std::int64_t sum = node["i"].GetInt();
    const auto children = node.FindMember("c");
    if (children == node.MemberEnd()) return sum;
    for (const auto& child : children->value.GetObject()) sum += countSumOf(child.value);
    return sum;
}

class DocumentTree {
public:
    void build(const bench::TreeData& data) {
        Value node = makeNode(data, 0, root.GetAllocator());
        static_cast<Value&>(root) = std::move(node);
    }
    std::string write() const {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        root.Accept(writer);
        return std::string(buffer.GetString(), buffer.GetSize());
    }
    void read(const std::string& text) {
        root.Parse<rapidjson::kParseFullPrecisionFlag>(text.c_str(), text.size());
    }
    std::unique_ptr<DocumentTree> copy() const {
        auto result = std::make_unique<DocumentTree>();
        result->root.CopyFrom(root, result->root.GetAllocator());
        return result;
    }
    bool equal(const DocumentTree& other) const { return root == other.root; }
    void poke() {
        Value* node = &root;
        while (node->HasMember("c")) node = &((*node)["c"].MemberEnd() - 1)->value;
        (*node)["d"] = 1e9;
    }
    int lookup(std::string_view path) const {
        const Value* node = &root;
        for (std::string_view name; bench::tree::nextSegment(path, name);) {
            const Value& children = (*node)["c"];
            const Value key(rapidjson::StringRef(name.data(), name.size()));
            const auto child = children.FindMember(key);
            if (child == children.MemberEnd()) return 0;
            node = &child->value;
        }
        return (*node)["i"].GetInt();
    }
    std::int64_t countSum() const { return countSumOf(root); }

    class Wide {
    public:
        bool add(const std::string& name) {
            const Value key(rapidjson::StringRef(name.data(), name.size()));
            if (parent.FindMember(key) != parent.MemberEnd()) return false;
            parent.AddMember(makeString(name, parent.GetAllocator()), Value(rapidjson::kObjectType),
                             parent.GetAllocator());
            return true;
        }

    private:
        rapidjson::Document parent{rapidjson::kObjectType};
    };

private:
    rapidjson::Document root;
};

BENCH_PEER("W3", "rapidjson_dom", Peer,
           [](bench::Run& run) { bench::tree::runAll<DocumentTree>(run); });

}  // namespace
