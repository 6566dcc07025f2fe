// W3: the model, least code with our duties: every attribute can be watched and is owned by shared
// pointers, those of an object lie in one block, and text is written through a stream's buffer.
#include "support/MemoryBuffer.h"
#include "tree/Tree.h"
#include "tree/TreeText.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <unordered_map>
#include <utility>
#include <vector>

namespace text = bench::text;

namespace {

// What can be watched.
// ------------------------------------------------------------------------------

struct Observing : std::enable_shared_from_this<Observing> {
    virtual ~Observing() = default;
};

struct Relation {
    void* action = nullptr;
    Observing* observer = nullptr;
    Observing* owner = nullptr;
    short priority = 100;
    unsigned char flags = 7;
};
using Relations = std::unique_ptr<std::vector<std::unique_ptr<Relation>>>;  // a word while empty

struct Observable : Observing {
    Relations post, pre;
    std::atomic<std::uint32_t> depth{0};
    std::uint16_t flags = 1;
};

thread_local unsigned blocked = 0;

// Attributes.
// ---------------------------------------------------------------------------------------

using Position = std::array<double, 3>;
using Matrix = std::array<double, 16>;
using Uuid = std::array<unsigned char, 16>;

bool isDefault(const std::string& string) { return string.empty(); }
template <class T> bool isDefault(const T& number) { return number == T{}; }

void putValue(text::StreamSink& sink, const std::string& value) { text::putString(sink, value); }
void putValue(text::StreamSink& sink, double value) { text::putDouble(sink, value); }
void putValue(text::StreamSink& sink, bool value) { sink.put(value ? "true" : "false"); }
void putValue(text::StreamSink& sink, int value) { text::putInteger(sink, value); }
void putValue(text::StreamSink& sink, std::uint16_t value) { text::putInteger(sink, value); }
void putValue(text::StreamSink& sink, const Position& value) { text::putPosition(sink, value); }
void putValue(text::StreamSink& sink, const Matrix& value) { text::putMatrix(sink, value); }
void putValue(text::StreamSink&, const Uuid&) {}  // never set here

struct Attribute : Observable {
    virtual bool isSame(const Attribute& other) const = 0;
    virtual void write(text::StreamSink& sink, std::size_t token) const = 0;
    virtual void read(text::Source& source) = 0;
    virtual void assign(const Attribute& other) = 0;
    virtual void reset() = 0;

    std::uint16_t attributeFlags = 0;
    std::unique_ptr<std::shared_ptr<Observing>> companion;  // made when it is asked for
};

struct Container;

template <class T> class TypedAttribute final : public Attribute {
public:
    explicit TypedAttribute(Container& owner) : container(&owner), value(&place) {}
    const T& get() const { return *value; }
    void set(const T& wanted) {
        if (value != &wanted) *value = wanted;
        if (blocked == 0 && post) depth.store(0, std::memory_order_relaxed);
    }
    bool isSame(const Attribute& other) const override {
        return typeid(other) == typeid(TypedAttribute) &&
               *value == static_cast<const TypedAttribute&>(other).get();
    }
    void write(text::StreamSink& sink, std::size_t token) const override {
        text::putAttribute(sink, token, !isDefault(*value), [&] { putValue(sink, *value); });
    }
    void read(text::Source& source) override {
        if constexpr (!std::is_same_v<T, Uuid>) {
            thread_local T found;
            source.read(found);
            set(found);
        }
    }
    void assign(const Attribute& other) override {
        if (typeid(other) == typeid(TypedAttribute))
            set(static_cast<const TypedAttribute&>(other).get());
    }
    void reset() override {
        if (!isDefault(*value)) set(T{});
    }

private:
    Container* container;
    T* value;  // everybody reaches it through one pointer
    T place{};
};

/// The memory of all attributes of an object. It goes with the last of them.
class Block {
public:
    static Block* make(std::uint32_t size) {
        return new (std::malloc(sizeof(Block) + size)) Block(size);
    }
    void* take(std::size_t size) {
        char* const place = reinterpret_cast<char*>(this + 1) + numUsed;
        numUsed += static_cast<std::uint32_t>((size + 15) & ~std::size_t{15});
        if (numUsed > capacity) std::abort();
        ++numLive;
        return place;
    }
    void release() {
        if (--numLive == 0) std::free(this);
    }
    std::uint32_t used() const { return numUsed; }

private:
    explicit Block(std::uint32_t size) : capacity(size) {}
    std::uint32_t numLive = 1;  // whoever fills it
    std::uint32_t numUsed = 0;
    std::uint32_t capacity;
    std::uint32_t padding = 0;
};

template <class T> struct BlockAllocator {
    using value_type = T;
    explicit BlockAllocator(Block* memory) : block(memory) {}
    template <class U> BlockAllocator(const BlockAllocator<U>& other) : block(other.block) {}
    T* allocate(std::size_t count) { return static_cast<T*>(block->take(count * sizeof(T))); }
    void deallocate(T*, std::size_t) { block->release(); }
    template <class U> bool operator==(const BlockAllocator<U>& other) const {
        return block == other.block;
    }
    Block* block;
};

// Objects.
// ------------------------------------------------------------------------------------------

struct Container : Observing {
    std::vector<std::weak_ptr<Observable>> observed;
    std::uint16_t observerFlags = 1, containerFlags = 0;
    std::unique_ptr<Observable> companion;  // made when it is asked for
    std::vector<std::shared_ptr<Attribute>> attributes;
    std::unique_ptr<std::vector<std::shared_ptr<Attribute>>> customAttributes;
    std::unique_ptr<std::vector<std::shared_ptr<Container>>> fields;
};

bool isSameName(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    return a == b || std::ranges::equal(a, b, [](char x, char y) { return (x | 32) == (y | 32); });
}

class Object final : public Container {
public:
    static std::shared_ptr<Object> create(const Object* source = nullptr) {
        auto object = std::make_shared<Object>();
        object->addAttributes<std::string, std::string, std::string, std::uint16_t, std::uint16_t,
                              Uuid, int, double, std::string, bool, Position, Matrix, std::string,
                              std::string>();
        if (source)
            for (std::size_t i = 0; i < object->attributes.size(); ++i)
                object->attributes[i]->assign(*source->attributes[i]);
        object->watchOwnName();
        return object;
    }

    template <class T> const T& get(std::size_t token) const { return typed<T>(token).get(); }
    template <class T> void set(std::size_t token, const T& value) { typed<T>(token).set(value); }
    const std::string& name() const { return get<std::string>(0); }

    void fill(const bench::ObjectData& data) {
        set(0, data.name);
        set<int>(6, data.count);
        set(7, data.gain);
        set(8, data.comment);
        set(9, data.visible);
        set(10, data.position);
        set(11, data.matrix);
        set(12, data.reference);
        set(13, data.label);
    }
    void addChild(std::shared_ptr<Object> child) {
        child->parent = std::static_pointer_cast<Object>(shared_from_this());
        children.push_back(std::move(child));
    }
    std::shared_ptr<Object> findChild(std::string_view wanted) const {
        for (const auto& child : children)
            if (isSameName(child->name(), wanted)) return child;
        return {};
    }

    std::list<std::shared_ptr<Object>> children;

private:
    template <class T> TypedAttribute<T>& typed(std::size_t token) const {
        return static_cast<TypedAttribute<T>&>(*attributes[token]);
    }
    template <class... T> void addAttributes() {
        static std::uint32_t size = 4096;  // the first object finds out what is needed
        Block* const block = Block::make(size);
        attributes.reserve(sizeof...(T));
        (attributes.push_back(std::allocate_shared<TypedAttribute<T>>(
             BlockAllocator<TypedAttribute<T>>(block), *this)),
         ...);
        size = block->used();
        block->release();
    }
    void watchOwnName() {
        Attribute& ownName = *attributes[0];
        ownName.pre = std::make_unique<std::vector<std::unique_ptr<Relation>>>();
        ownName.pre->push_back(std::make_unique<Relation>(Relation{nullptr, this, &ownName}));
        observed.push_back(attributes[0]);
    }

    std::weak_ptr<Object> parent;
};

std::shared_ptr<Object> makeNode(const bench::TreeData& data, std::size_t index) {
    auto object = Object::create();
    object->fill(data.nodes[index]);
    if (index >= data.numInner()) return object;
    for (std::size_t k = 1; k <= bench::fanOut; ++k)
        object->addChild(makeNode(data, index * bench::fanOut + k));
    return object;
}

// Text.
// ---------------------------------------------------------------------------------------------

void writeNode(text::StreamSink& sink, const Object& object) {
    text::openBlock(sink, "AttrContainer");
    for (std::size_t token = 0; token < object.attributes.size(); ++token)
        object.attributes[token]->write(sink, token);
    text::closeBlock(sink);
    for (const auto& child : object.children) {
        text::openChild(sink, child->name());
        writeNode(sink, *child);
        text::closeBlock(sink);
    }
}

class Reader {
public:
    explicit Reader(std::string_view from) : source(from) {}

    void read(Object& object) {
        for (auto word = source.word(); isInBlock(word); word = source.word()) {
            if (word == "AttrContainer") readAttributes(object);
            if (word == "Child") readChild(object);
        }
    }

private:
    static bool isInBlock(std::string_view word) { return !word.empty() && word != "}"; }

    void readAttributes(Object& object) {
        source.word();  // {
        std::size_t guess = 0;
        for (auto type = source.word(); isInBlock(type); type = source.word()) {
            source.word();  // {
            source.word();  // Name
            source.read(quoted);
            const std::size_t token = text::tokenOf(quoted, guess);
            guess = token + 1;
            Attribute& attribute = *object.attributes[token];
            bool hasValue = false;
            for (auto word = source.word(); isInBlock(word); word = source.word()) {
                if (word != "Value") continue;
                attribute.read(source);
                hasValue = true;
            }
            if (!hasValue) attribute.reset();
        }
    }
    void readChild(Object& object) {
        source.word();  // {
        source.read(quoted);
        source.read(quoted);
        auto child = Object::create();
        child->set(0, quoted);
        object.addChild(child);
        read(*child);
    }

    text::Source source;
    std::string quoted;
};

// The workload.
// -------------------------------------------------------------------------------------

bool isSame(const Object& first, const Object& second) {
    return std::ranges::equal(first.attributes, second.attributes,
                              [](const auto& a, const auto& b) { return a->isSame(*b); }) &&
           std::ranges::equal(first.children, second.children,
                              [](const auto& a, const auto& b) { return isSame(*a, *b); });
}

std::shared_ptr<Object> cloneOf(const Object& object) {
    auto clone = Object::create(&object);
    for (const auto& child : object.children) clone->addChild(cloneOf(*child));
    return clone;
}

std::int64_t countSumOf(const Object& object) {
    std::int64_t sum = object.get<int>(6);
    for (const auto& child : object.children) sum += countSumOf(*child);
    return sum;
}

class ModelTree {
public:
    void build(const bench::TreeData& data) { root = makeNode(data, 0); }
    std::string write() const {
        bench::MemorySink buffer;
        text::StreamSink sink{buffer};
        writeNode(sink, *root);
        return buffer.take();
    }
    void read(const std::string& from) { Reader(from).read(*root); }
    std::unique_ptr<ModelTree> copy() const {
        auto result = std::make_unique<ModelTree>();
        result->root = cloneOf(*root);
        return result;
    }
    bool equal(const ModelTree& other) const { return isSame(*root, *other.root); }
    void poke() {
        auto leaf = root;
        while (!leaf->children.empty()) leaf = leaf->children.back();
        leaf->set(7, leaf->get<double>(7) + 1);
    }
    int lookup(std::string_view path) const {
        auto object = root;
        for (std::string_view name; bench::tree::nextSegment(path, name);) {
            object = object->findChild(name);
            if (!object) return 0;
        }
        return object->get<int>(6);
    }
    std::int64_t countSum() const { return countSumOf(*root); }

    /// An index by folded name beside the list.
    class Wide {
    public:
        bool add(const std::string& name) {
            const std::size_t hash = foldedHash(name);
            const auto [first, last] = index.equal_range(hash);
            const bool isTaken = std::any_of(first, last, [&](const auto& entry) {
                return isSameName(entry.second->name(), name);
            });
            if (isTaken ||
                std::ranges::find(text::attributeKeys, name) != text::attributeKeys.end())
                return false;
            auto child = Object::create();
            child->set(0, name);
            index.emplace(hash, child.get());
            parent->addChild(std::move(child));
            return true;
        }

    private:
        static std::size_t foldedHash(std::string_view name) {
            std::size_t hash = 1469598103934665603u;
            for (const char c : name)
                hash = (hash ^ (static_cast<unsigned char>(c) | 32u)) * 1099511628211u;
            return hash;
        }

        std::shared_ptr<Object> parent = Object::create();
        std::unordered_multimap<std::size_t, Object*> index;
    };

private:
    std::shared_ptr<Object> root = Object::create();
};

BENCH_PEER("W3", "model", Model, [](bench::Run& run) { bench::tree::runAll<ModelTree>(run); });

}  // namespace
