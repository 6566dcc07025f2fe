// W3: objects of ours, in a class of a host's own.
#include "tree/BenchObject.h"
#include "tree/Tree.h"

#include <AttributeContainer/AttributeContainer.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace ac = QOR::AttributeContainer;
using bench::tree::BenchObject;

namespace {

const auto benchObjectRegistered =
    ac::FieldFactory::addField<BenchObject>(BenchObject::getStaticClassName());

void check(const ac::ErrorPtr& error) {
    if (error) throw std::runtime_error("a call failed");
}

const BenchObject& asBenchObject(const ac::Object& object) {
    return static_cast<const BenchObject&>(object);
}

void fill(BenchObject& object, const bench::ObjectData& data) {
    check(object.setName(data.name));
    object.Count(data.count);
    object.Gain(data.gain);
    object.Comment(data.comment);
    object.Visible(data.visible);
    object.Position({data.position[0], data.position[1], data.position[2]});
    object.Transformation(QOR::Mat4d<double>(data.matrix));
    object.Reference(data.reference);
    object.Label(data.label);
}

std::shared_ptr<BenchObject> makeNode(const bench::TreeData& data, std::size_t index) {
    auto object = BenchObject::create();
    fill(*object, data.nodes[index]);
    if (index >= data.numInner()) return object;
    for (std::size_t k = 1; k <= bench::fanOut; ++k)
        object->addChild(makeNode(data, index * bench::fanOut + k), ac::AddFlags::SkipNameTest);
    return object;
}

std::shared_ptr<ac::Object> cloneOf(const ac::Object& original) {
    auto clone =
        std::static_pointer_cast<ac::Object>(original.duplicate(ac::CreateType::CreateDeep));
    for (const auto& child : original.getChildren())
        clone->addChild(cloneOf(*child), ac::AddFlags::SkipNameTest);
    return clone;
}

bool isSame(const ac::AttrContComparer& comparer, const ac::Object& first,
            const ac::Object& second) {
    return comparer.compare(first, second) == 0 &&
           std::ranges::equal(
               first.getChildren(), second.getChildren(),
               [&](const auto& a, const auto& b) { return isSame(comparer, *a, *b); });
}

std::int64_t countSumOf(const ac::Object& object) {
    std::int64_t sum = asBenchObject(object).Count();
    for (const auto& child : object.getChildren()) sum += countSumOf(*child);
    return sum;
}

class OurTree {
public:
    void build(const bench::TreeData& data) { root = makeNode(data, 0); }
    std::string write() const {
        std::ostringstream stream;
        check(root->writeTo(stream, std::make_shared<const ac::WriteContextBase>()));
        return std::move(stream).str();
    }
    void read(const std::string& text) {
        std::istringstream stream(text);
        check(root->readFrom(stream, std::make_shared<const ac::ReadContextBase>()));
    }
    std::unique_ptr<OurTree> copy() const {
        auto result = std::make_unique<OurTree>();
        result->root = cloneOf(*root);
        return result;
    }
    bool equal(const OurTree& other) const {
        return isSame(ac::AttrContComparer(ac::AttrContComparer::allCategories, 0), *root,
                      *other.root);
    }
    void poke() {
        auto leaf = root;
        while (leaf->getNumChildren() > 0) leaf = leaf->getChild(leaf->getNumChildren() - 1);
        static_cast<BenchObject&>(*leaf).Gain(1e9);
    }
    int lookup(std::string_view path) const {
        const auto found = root->inqObject(std::string(path));
        return found ? asBenchObject(*found).Count() : 0;
    }
    std::int64_t countSum() const { return countSumOf(*root); }

    class Wide {
    public:
        bool add(const std::string& name) {
            auto child = BenchObject::create();
            check(child->setName(name));
            return parent->addChild(std::move(child), 0);
        }

    private:
        std::shared_ptr<BenchObject> parent = BenchObject::create();
    };

private:
    std::shared_ptr<ac::Object> root = BenchObject::create();
};

/// Bytes that each of many new objects holds, untouched or with all its attributes asked for.
template <class Class> double heapOfNew(bool isTouched) {
    constexpr std::size_t numObjects = 10'000;
    std::vector<std::shared_ptr<Class>> objects(numObjects);
    Class::create();  // what the class makes once
    const auto before = bench::heapBytes();
    for (auto& object : objects) {
        object = Class::create();
        for (std::uint64_t token = 0; isTouched && token < object->getNumAttributes(); ++token)
            std::ignore = object->getAttribute(token);
    }
    return static_cast<double>(bench::heapBytes() - before) / numObjects;
}

// A class attribute costs what a class with eight of them holds more than its base.
void recordNewObjects(bench::Run& run) {
    constexpr double numOwnAttributes = BenchObject::lastAttrToken() - ac::Object::lastAttrToken();
    for (const bool isTouched : {false, true}) {
        const double heap = heapOfNew<BenchObject>(isTouched);
        const double heapOfBase = heapOfNew<ac::Object>(isTouched);
        run.record(isTouched ? "heap_touched" : "heap_new", heap, "B/object");
        run.record(isTouched ? "heap_attr_touched" : "heap_attr",
                   (heap - heapOfBase) / numOwnAttributes, "B/attribute");
    }
}

BENCH_PEER("W3", "ours", Ours, [](bench::Run& run) {
    bench::tree::runAll<OurTree>(run);
    recordNewObjects(run);
});

}  // namespace
