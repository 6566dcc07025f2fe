// W3: pugixml; an element is named like its object, values are its attributes.
#include "support/XmlText.h"
#include "tree/Tree.h"

#include <pugixml.hpp>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace {

void setNumbers(pugi::xml_attribute attribute, std::span<const double> numbers) {
    char text[800];
    char* end = text;
    for (const double number : numbers) {
        end = std::to_chars(end, end + 40, number).ptr;
        *end++ = ' ';
    }
    end[-1] = '\0';
    attribute.set_value(text);
}

void fill(pugi::xml_node node, const bench::TreeData& tree, std::size_t index) {
    const bench::ObjectData& data = tree.nodes[index];
    node.append_attribute("i").set_value(data.count);
    setNumbers(node.append_attribute("d"), {&data.gain, 1});
    node.append_attribute("s").set_value(data.comment.c_str());
    node.append_attribute("b").set_value(data.visible);
    setNumbers(node.append_attribute("p"), data.position);
    setNumbers(node.append_attribute("m"), data.matrix);
    node.append_attribute("u").set_value(data.reference.c_str());
    node.append_attribute("t").set_value(data.label.c_str());
    if (index >= tree.numInner()) return;
    for (std::size_t k = 1; k <= bench::fanOut; ++k) {
        const std::size_t child = index * bench::fanOut + k;
        fill(node.append_child(tree.nodes[child].name.c_str()), tree, child);
    }
}

bool isSame(pugi::xml_node first, pugi::xml_node second) {
    if (std::strcmp(first.name(), second.name()) != 0) return false;
    auto a = first.first_attribute(), b = second.first_attribute();
    for (; a && b; a = a.next_attribute(), b = b.next_attribute())
        if (std::strcmp(a.name(), b.name()) != 0 || std::strcmp(a.value(), b.value()) != 0)
            return false;
    if (a || b) return false;
    auto x = first.first_child(), y = second.first_child();
    for (; x && y; x = x.next_sibling(), y = y.next_sibling())
        if (!isSame(x, y)) return false;
    return !x && !y;
}

std::int64_t countSumOf(pugi::xml_node node) {
    std::int64_t sum = node.attribute("i").as_int();
    for (const auto child : node.children()) sum += countSumOf(child);
    return sum;
}

class XmlTree {
public:
    void build(const bench::TreeData& data) {
        fill(document.append_child(data.nodes[0].name.c_str()), data, 0);
    }
    std::string write() const {
        bench::XmlText writer;
        document.save(writer, "", pugi::format_indent | pugi::format_no_declaration);
        return std::move(writer.text);
    }
    void read(const std::string& text) { document.load_buffer(text.data(), text.size()); }
    std::unique_ptr<XmlTree> copy() const {
        auto result = std::make_unique<XmlTree>();
        result->document.reset(document);
        return result;
    }
    bool equal(const XmlTree& other) const {
        return isSame(document.document_element(), other.document.document_element());
    }
    void poke() {
        auto node = document.document_element();
        while (node.first_child()) node = node.last_child();
        node.attribute("d").set_value("1e9");
    }
    int lookup(std::string_view path) const {
        const std::string relative(path.substr(1));
        return document.document_element()
            .first_element_by_path(relative.c_str())
            .attribute("i")
            .as_int();
    }
    std::int64_t countSum() const { return countSumOf(document.document_element()); }

    class Wide {
    public:
        bool add(const std::string& name) {
            if (parent.child(name.c_str())) return false;
            parent.append_child(name.c_str());
            return true;
        }

    private:
        pugi::xml_document document;
        pugi::xml_node parent = document.append_child("parent");
    };

private:
    pugi::xml_document document;
};

BENCH_PEER("W3", "pugixml_dom", Peer, [](bench::Run& run) { bench::tree::runAll<XmlTree>(run); });

}  // namespace
