// The members that every container class has around its definition tables.
#pragma once

#include <AttributeContainer/kVAttrContainer.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace QOR::AttributeContainer {

/// A token as a type, so that an overload can be chosen by it.
template <std::uint64_t Token>
struct At {};

/// What one attribute line of a container class says beside its token.
template <class T>
struct AttrRow {
    const char* key;
    std::optional<T> defaultValue{};
    int category = AttrDefinition::domain | AttrDefinition::flagged;
};

/// The block of members around the tables of a container class, written once.
///
/// `X` is the class, `B` its base, `Name` its stored name. `X` lists its rows with QOR_ATTRIBUTE and
/// QOR_FIELD; tokens continue those of `B`, and a gap or an overlap does not compile. A class with
/// more to do at its making declares an `init` of its own that calls `Block::init`, and befriends
/// `Block`.
template <class X, class B, FixedText Name>
class ContainerClass : public B {
public:
    using Source = std::optional<std::reference_wrapper<const X>>;

    ContainerClass(const typename B::ConstructorProtector& key, CreateType type,
                   const Source& source)
        : B(key, type, source) {}

    /// A new object, with the values of `source` if one is given and else with the defaults.
    static std::shared_ptr<X> create(CreateType type = CreateDeep, Source source = std::nullopt) {
        const auto object =
            std::make_shared<X>(typename B::ConstructorProtector{}, type, source);
        object->init(type, source);  // the second step: shared_from_this works from here on
        return object;
    }
    std::shared_ptr<AttrContainer> duplicate(CreateType type) const override {
        return create(type, type == CreateEmpty ? Source{} : Source{static_cast<const X&>(*this)});
    }

    static const std::string& getStaticClassName() {
        static const std::string name{Name.view()};
        return name;
    }
    const std::string& getClassName() const override { return getStaticClassName(); }

    using B::getAttrDefinition;
    const AttrDefinition* getAttrDefinition(std::uint64_t token) const override {
        // The rows have the tokens from the first one on without a gap, so none is searched for.
        const auto& rows = tables().definitions;
        const std::uint64_t index = token - B::lastAttrToken() - 1;
        const bool isNamed = index < rows.size() && !rows[index].name.empty();
        return isNamed ? &rows[index] : B::getAttrDefinition(token);
    }
    std::optional<std::string> getAttrName(std::uint64_t token) const override {
        auto name = tables().attrKeyTable.tokenToKey(token);
        return name ? name : B::getAttrName(token);
    }
    using B::getAttrToken;
    std::uint64_t getAttrToken(const std::string& key) const override {
        const auto token = tables().attrKeyTable.keyToToken(key);
        return token != AttrContainer::noToken ? token : B::getAttrToken(key);
    }
    using B::getFieldToken;
    std::uint64_t getFieldToken(const std::string& name) const override {
        const auto token = tables().fieldKeyTable.keyToToken(name);
        return token != AttrContainer::noToken ? token : B::getFieldToken(name);
    }
    std::optional<std::string> getFieldName(std::uint64_t token) const override {
        auto name = tables().fieldKeyTable.tokenToKey(token);
        return name ? name : B::getFieldName(token);
    }
    std::uint64_t getMaxAttrToken() const override { return lastAttrToken(); }
    std::uint64_t getMaxFieldToken() const override { return lastFieldToken(); }

    /// The last token of the class: it goes up for as long as the class has a row.
    template <std::uint64_t Last = B::lastAttrToken()>
    static constexpr std::uint64_t lastAttrToken() {
        if constexpr (requires { X::attrRow(At<Last + 1>{}); }) {
            return lastAttrToken<Last + 1>();
        } else {
            return Last;
        }
    }
    template <std::uint64_t Last = B::lastFieldToken()>
    static constexpr std::uint64_t lastFieldToken() {
        if constexpr (requires { X::fieldRow(At<Last + 1>{}); }) {
            return lastFieldToken<Last + 1>();
        } else {
            return Last;
        }
    }

protected:
    using Block = ContainerClass;

    void init(CreateType type, Source source) {
        const bool hasFields = !tables().fieldDefinitions.empty();
        {
            const BlockUpdateObservers block(source ? this->self() : nullptr);
            B::init(type, source);
            if (hasFields) {  // whose hooks may look at attributes before they get their defaults
                this->createAttributes(tables().definitions, type, source);
                this->createFields(tables().fieldDefinitions, type, source);
            } else {
                this->declareAttributes(tables().attrTable, source);
            }
        }
        if (source) return;  // the values came with it
        this->name(this->getClassName());
        setDefaults();
    }
    static const AttrTable* attrTable() { return &tables().attrTable; }

    static consteval bool ownsAttrToken(std::uint64_t token) {
        return token - B::lastAttrToken() - 1 < lastAttrToken() - B::lastAttrToken();
    }
    static consteval bool ownsFieldToken(std::uint64_t token) {
        return token - B::lastFieldToken() - 1 < lastFieldToken() - B::lastFieldToken();
    }

private:
    template <std::uint64_t Token = B::lastAttrToken() + 1, class Visit>
    static void forEachAttrRow(const Visit& visit) {
        if constexpr (requires { X::attrRow(At<Token>{}); }) {
            visit(Token, X::attrRow(At<Token>{}));
            forEachAttrRow<Token + 1>(visit);
        }
    }
    template <std::uint64_t Token = B::lastFieldToken() + 1, class Visit>
    static void forEachFieldRow(const Visit& visit) {
        if constexpr (requires { X::fieldRow(At<Token>{}); }) {
            visit(X::fieldRow(At<Token>{}));
            forEachFieldRow<Token + 1>(visit);
        }
    }

    static std::vector<AttrDefinition> makeDefinitions() {
        std::vector<AttrDefinition> rows;
        forEachAttrRow([&rows]<class T>(std::uint64_t token, const AttrRow<T>& row) {
            rows.push_back({token, row.key, attrTypeOf<T>, row.category});
        });
        return rows;
    }
    // Each object has its defaults worked out, which need not be those of the others. What is as in
    // the first object need not be made for that.
    void setDefaults() {
        const AttrTable& table = tables().attrTable;
        const bool isUntouched = this->untouchedTable(table.getFirstToken()) == &table;
        if (isUntouched && table.takeDefaults([&table] { giveDefaults(table); })) return;
        forEachAttrRow([&]<class T>(std::uint64_t token, const AttrRow<T>& row) {
            if (!row.defaultValue) return;
            if (isUntouched) {
                const auto& sample = static_cast<const Attr<T>&>(*table.getSample(token));
                if (sample.get() == *row.defaultValue) return;
            }
            this->template typedAttribute<T>(token).set(*row.defaultValue);
        });
    }
    static void giveDefaults(const AttrTable& table) {
        forEachAttrRow([&table]<class T>(std::uint64_t token, const AttrRow<T>& row) {
            if (row.defaultValue)
                static_cast<Attr<T>&>(table.takeDefault(token)).set(*row.defaultValue);
        });
    }

    // One object, because what indexes the rows must be made after them.
    struct Tables {
        std::vector<AttrDefinition> definitions = makeDefinitions();
        std::vector<FieldDefinition> fieldDefinitions;
        DataStructures::KeyTable attrKeyTable;
        DataStructures::KeyTable fieldKeyTable;
        AttrTable attrTable{definitions, B::attrTable()};

        Tables() {
            forEachFieldRow(
                [this](FieldDefinition row) { fieldDefinitions.push_back(std::move(row)); });
            attrKeyTable = Block::createKeyTableFromAttrDefinitions(definitions);
            fieldKeyTable = Block::createKeyTableFromFieldDefinitions(fieldDefinitions);
        }
    };
    // Local, so that a container made by another file's static initialiser finds it ready; never
    // ended, so that one that lasts longer than this file's statics can still be asked.
    static const Tables& tables() {
        static const Tables& tables = *new Tables;
        return tables;
    }
};

}  // namespace QOR::AttributeContainer

/// One attribute of a container class: token, type, key, and where wanted the default and the
/// category. Gives the accessors `Attr_Key()`, `Key()` and `Key(value)`, and `KeyToken`.
#define QOR_ATTRIBUTE(TOKEN, TYPE, KEY, ...)                                                        \
    static ::QOR::AttributeContainer::AttrRow<TYPE> attrRow(::QOR::AttributeContainer::At<TOKEN>) { \
        static_assert(ownsAttrToken(TOKEN), "token of " #KEY " does not continue the rows before"); \
        return {#KEY __VA_OPT__(, ) __VA_ARGS__};                                                   \
    }                                                                                               \
    ::QOR::AttributeContainer::Attr<TYPE>& Attr_##KEY() {                                           \
        return this->template typedAttribute<TYPE>(TOKEN);                                          \
    }                                                                                               \
    const ::QOR::AttributeContainer::Attr<TYPE>& Attr_##KEY() const {                               \
        return this->template typedAttribute<TYPE>(TOKEN);                                          \
    }                                                                                               \
    const TYPE& KEY() const { return Attr_##KEY().get(); }                                          \
    void KEY(const TYPE& value) { Attr_##KEY().set(value); }                                        \
    [[maybe_unused]] static constexpr std::uint64_t KEY##Token = TOKEN

/// One field of a container class: token, class, key. Gives the accessor `Key()`, a weak pointer,
/// and `KeyField`.
#define QOR_FIELD(TOKEN, TYPE, KEY)                                                                  \
    static ::QOR::AttributeContainer::FieldDefinition fieldRow(                                      \
        ::QOR::AttributeContainer::At<TOKEN>) {                                                      \
        static_assert(ownsFieldToken(TOKEN), "token of " #KEY " does not continue the rows before"); \
        return {TOKEN, #KEY, TYPE::getStaticClassName()};                                            \
    }                                                                                                \
    std::weak_ptr<TYPE> KEY() {                                                                      \
        return std::dynamic_pointer_cast<TYPE>(this->getField(TOKEN).lock());                        \
    }                                                                                                \
    std::weak_ptr<const TYPE> KEY() const {                                                          \
        return std::dynamic_pointer_cast<const TYPE>(this->getField(TOKEN).lock());                  \
    }                                                                                                \
    [[maybe_unused]] static constexpr std::uint64_t KEY##Field = TOKEN
