// Holds the table of a container class against the class, a test case a row.
#pragma once

#include <AttributeContainer/AttrDefinition.h>
#include <AttributeContainer/FieldFactory.h>
#include <AttributeContainer/kVAttrContainer.h>

#include "support/ValueSamples.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <type_traits>
#include <utility>

namespace QOR::AttributeContainer::Testing {

/// What a table says of one attribute, and how the tests of `ClassTable_test.cpp` get at it.
struct ClassRow {
    std::uint64_t token;
    std::string key;
    std::string typeName;  // of the attribute's class
    int category;
    std::function<std::shared_ptr<AttrContainer>()> create;
    std::function<void(const AttrContainer&)> expectDefault;
    std::function<void(AttrContainer&)> expectAccessors;
};

inline std::ostream& operator<<(std::ostream& stream, const ClassRow& row) {
    return stream << "row " << row.token << ", " << row.key;
}

/// A value that is no default in any table.
template <class T> T otherValue() {
    if constexpr (std::is_same_v<T, bool>) return true;
    else return Sample<T>::value();
}

/// The three accessors of one attribute of class `X`.
template <class X, class T> struct Accessors {
    Attr<T>& (X::*attribute)();
    const Attr<T>& (X::*constAttribute)() const;
    const T& (X::*get)() const;
    void (X::*set)(const T&);
};

template <class X, class T>
void expectAccessorsOf(X& object, const Accessors<X, T>& accessors, std::uint64_t token) {
    const X& constObject = object;
    EXPECT_EQ(&(object.*accessors.attribute)(), object.getAttribute(token).lock().get());
    EXPECT_EQ(&(constObject.*accessors.constAttribute)(), object.getAttribute(token).lock().get());

    const T before = (constObject.*accessors.get)();
    const T other = before == otherValue<T>() ? T{} : otherValue<T>();
    ASSERT_FALSE(before == other);
    (object.*accessors.set)(other);

    EXPECT_EQ((constObject.*accessors.get)(), other);
    EXPECT_EQ((object.*accessors.attribute)().get(), other);
}

/// A row of class `X` as a test case; with no default where the value differs from one object to
/// the next.
template <class X, class T>
ClassRow classRow(std::uint64_t token, std::string key, std::string typeName, int category,
                  std::optional<T> defaultValue, Accessors<X, T> accessors) {
    ClassRow row{token, std::move(key), std::move(typeName), category, nullptr, nullptr, nullptr};
    row.create = [] { return X::create(); };
    row.expectDefault = [=](const AttrContainer& container) {
        if (!defaultValue) return;
        EXPECT_EQ((dynamic_cast<const X&>(container).*accessors.get)(), *defaultValue);
    };
    row.expectAccessors = [=](AttrContainer& container) {
        expectAccessorsOf(dynamic_cast<X&>(container), accessors, token);
    };
    return row;
}

/// The suite over all rows. A class test has its rows in a list and instantiates the suite with
/// QOR_CLASS_TABLE.
class ClassTable : public testing::TestWithParam<ClassRow> {};

/// Expects of an object that it has the rows of `base` as they stand there.
inline void expectRowsOf(const AttrContainer& base, const AttrContainer& object) {
    for (std::uint64_t token = 0; token <= base.getMaxAttrToken(); ++token) {
        const auto key = base.getAttrName(token);
        ASSERT_TRUE(key) << token;
        EXPECT_EQ(object.getAttrName(token), key);
        EXPECT_EQ(object.getAttrToken(*key), token) << *key;
        const AttrDefinition* const row = object.getAttrDefinition(token);
        const AttrDefinition* const rowOfBase = base.getAttrDefinition(token);
        ASSERT_TRUE(row && rowOfBase) << *key;
        EXPECT_EQ(row->token, token) << *key;
        EXPECT_EQ(row->name, *key);
        EXPECT_EQ(row->type, rowOfBase->type) << *key;
        EXPECT_EQ(row->category, rowOfBase->category) << *key;
        EXPECT_EQ(object.getAttribute(token).lock()->getName(), *key);
    }
}

/// Expects of class `X` its name, its base with the rows of that, its own tokens, and that the
/// factory knows it.
template <class X, class Base>
void expectClass(const std::string& name, std::uint64_t firstToken, std::uint64_t lastToken) {
    EXPECT_TRUE((std::is_base_of_v<Base, X>));
    EXPECT_EQ(X::getStaticClassName(), name);
    const auto object = X::create();
    EXPECT_EQ(object->getClassName(), name);
    EXPECT_EQ(Base::lastAttrToken() + 1, firstToken);
    EXPECT_EQ(object->getMaxAttrToken(), lastToken);
    EXPECT_EQ(object->getNumAttributes(), lastToken + 1);
    EXPECT_EQ(object->getAttrDefinition(lastToken + 1), nullptr);
    expectRowsOf(*Base::create(), *object);
    const auto made = FieldFactory::the()->createField(name);
    ASSERT_NE(made, nullptr);
    EXPECT_NE(std::dynamic_pointer_cast<X>(made), nullptr);
}

}  // namespace QOR::AttributeContainer::Testing

/// A row: class, token, key, class name of the attribute, category, default.
#define QOR_CLASS_ROW(CLASS, TOKEN, KEY, TYPE, CATEGORY, ...)                          \
    ::QOR::AttributeContainer::Testing::classRow<                                      \
        CLASS, std::remove_cvref_t<decltype(std::declval<const CLASS&>().KEY())>>(     \
        TOKEN, #KEY, TYPE, CATEGORY,                                                   \
        std::remove_cvref_t<decltype(std::declval<const CLASS&>().KEY())> __VA_ARGS__, \
        {&CLASS::Attr_##KEY, &CLASS::Attr_##KEY, &CLASS::KEY, &CLASS::KEY})

/// The same for a value that is not a constant.
#define QOR_CLASS_ROW_MADE_ANEW(CLASS, TOKEN, KEY, TYPE, CATEGORY)                 \
    ::QOR::AttributeContainer::Testing::classRow<                                  \
        CLASS, std::remove_cvref_t<decltype(std::declval<const CLASS&>().KEY())>>( \
        TOKEN, #KEY, TYPE, CATEGORY, std::nullopt,                                 \
        {&CLASS::Attr_##KEY, &CLASS::Attr_##KEY, &CLASS::KEY, &CLASS::KEY})

/// Runs the suite over the rows of a class.
#define QOR_CLASS_TABLE(CLASS, ROWS)                                     \
    INSTANTIATE_TEST_SUITE_P(CLASS, ClassTable, testing::ValuesIn(ROWS), \
                             [](const auto& row) { return row.param.key; })
