// W3: protobuf messages as text, compared by the differencer, and their binary form.
#include "tree/Tree.h"

#include <google/protobuf/text_format.h>
#include <google/protobuf/util/message_differencer.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "messages.pb.h"

namespace {

using Message = bench::messages::TreeObject;

void fill(Message& message, const bench::TreeData& tree, std::size_t index) {
    const bench::ObjectData& data = tree.nodes[index];
    message.set_name(data.name);
    message.set_count(data.count);
    message.set_gain(data.gain);
    message.set_comment(data.comment);
    message.set_visible(data.visible);
    for (const double number : data.position) message.add_position(number);
    for (const double number : data.matrix) message.add_matrix(number);
    message.set_reference(data.reference);
    message.set_label(data.label);
    if (index >= tree.numInner()) return;
    for (std::size_t k = 1; k <= bench::fanOut; ++k)
        fill(*message.add_children(), tree, index * bench::fanOut + k);
}

std::int64_t countSumOf(const Message& message) {
    std::int64_t sum = message.count();
    for (const Message& child : message.children()) sum += countSumOf(child);
    return sum;
}

const Message* findChild(const Message& message, std::string_view name) {
    const auto found = std::ranges::find_if(
        message.children(), [&](const Message& child) { return child.name() == name; });
    return found != message.children().end() ? &*found : nullptr;
}

template <bool IsText> class MessageTree {
public:
    void build(const bench::TreeData& data) { fill(root, data, 0); }
    std::string write() const {
        if (!IsText) return root.SerializeAsString();
        google::protobuf::TextFormat::Printer printer;
        printer.SetUseShortRepeatedPrimitives(true);
        std::string text;
        printer.PrintToString(root, &text);
        return text;
    }
    void read(const std::string& text) {
        if (IsText) google::protobuf::TextFormat::ParseFromString(text, &root);
        else root.ParseFromString(text);
    }
    std::unique_ptr<MessageTree> copy() const {
        auto result = std::make_unique<MessageTree>();
        result->root.CopyFrom(root);
        return result;
    }
    bool equal(const MessageTree& other) const {
        return google::protobuf::util::MessageDifferencer::Equals(root, other.root);
    }
    void poke() {
        Message* message = &root;
        while (message->children_size() > 0)
            message = message->mutable_children(message->children_size() - 1);
        message->set_gain(1e9);
    }
    int lookup(std::string_view path) const {
        const Message* message = &root;
        for (std::string_view name; bench::tree::nextSegment(path, name);) {
            message = findChild(*message, name);
            if (!message) return 0;
        }
        return message->count();
    }
    std::int64_t countSum() const { return countSumOf(root); }

    class Wide {
    public:
        bool add(const std::string& name) {
            if (findChild(parent, name)) return false;
            parent.add_children()->set_name(name);
            return true;
        }

    private:
        Message parent;
    };

private:
    Message root;
};

BENCH_PEER("W3", "protobuf_text", Peer,
           [](bench::Run& run) { bench::tree::runAll<MessageTree<true>>(run); });
BENCH_PEER("W3", "protobuf_binary", NotText, [](bench::Run& run) {
    bench::tree::runAll<MessageTree<false>>(run, {.hasWide = false});
});

}  // namespace
