// The list of value types, and what every one of them can do.
#include <AttributeContainer/ValueTypes.h>

#include <AttributeContainer/Attr.h>
#include <AttributeContainer/AttrDefinition.h>
#include <AttributeContainer/CachedAttributeInfo.h>
#include <AttributeContainer/kVAttrContainer.h>

#include "support/Containers.h"
#include "support/FreeAttribute.h"
#include "support/ObserverActors.h"
#include "support/ValueSamples.h"

#include <gtest/gtest.h>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr bool isCreated(std::uint32_t token) { return token != 49 && token != 50; }

}  // namespace

static_assert(AttrValue<int> && AttrValue<StringMap> && AttrValue<JsonValue>);
static_assert(!AttrValue<float> && !AttrValue<char> && !AttrValue<SVec3d<double>>);
static_assert(numAttrTypes == 54 && unknownAttrType == AttrType{54});

TEST(ValueTypes, HaveARowForEveryTokenInTheOrderOfTheKeyTable) {
    std::vector<std::uint32_t> tokens;
    ValueTypes::forEach(
        [&]<class Row>() { tokens.push_back(static_cast<std::uint32_t>(Row::token)); });

    EXPECT_EQ(tokens, (std::vector<std::uint32_t>{
                          0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 15, 13, 14, 16, 17,
                          18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 29, 31, 32, 33, 34, 35, 36, 37,
                          38, 39, 40, 41, 42, 30, 28, 43, 44, 45, 46, 47, 48, 49, 50, 51, 52, 53}));
}

TEST(ValueTypes, NameEachClassOnce) {
    std::map<std::string, int> rows;
    ValueTypes::forEach([&]<class Row>() {
        if constexpr (!Row::isAlias) ++rows[Sample<typename Row::Value>::className];
    });
    EXPECT_EQ(rows.size(), 51u);
    for (const auto& [name, count] : rows) EXPECT_EQ(count, 1) << name;
}

TEST(ValueTypes, HaveASecondTokenForThreeTypes) {
    std::map<std::uint32_t, std::uint32_t> aliases;
    ValueTypes::forEach([&]<class Row>() {
        if constexpr (Row::isAlias)
            aliases[static_cast<std::uint32_t>(Row::token)] =
                Sample<typename Row::Value>::token;
    });
    EXPECT_EQ(aliases, (std::map<std::uint32_t, std::uint32_t>{{5, 0}, {39, 33}, {34, 40}}));
}

TEST(FixedText, GivesItsTextWithoutTheZeroAtItsEnd) {
    constexpr FixedText text("abc");
    EXPECT_EQ(text.view(), "abc");
    EXPECT_EQ(FixedText("").view(), "");
}

// Every type --------------------------------------------------------------------------------------

template <class T>
class EveryValueType : public testing::Test {};
TYPED_TEST_SUITE(EveryValueType, AllValues, WordOfType);

TYPED_TEST(EveryValueType, HasItsTokenAndItsClassName) {
    using T = TypeParam;
    EXPECT_EQ(attrTypeOf<T>, AttrType{Sample<T>::token});
    EXPECT_EQ(Attr<T>::getStaticClassName(), Sample<T>::className);
    EXPECT_EQ(CustAttr<T>(std::nullopt).getClassName(), Sample<T>::className);
    EXPECT_EQ(AttrContainer::getTypeFromString(Sample<T>::className), AttrType{Sample<T>::token});
}

TYPED_TEST(EveryValueType, BeginsWithTheZeroOfItsType) {
    using T = TypeParam;
    const CustAttr<T> attribute(std::nullopt);
    EXPECT_EQ(attribute.get(), T{});
    EXPECT_NE(attribute.get(), Sample<T>::value());
}

TYPED_TEST(EveryValueType, IsMadeFromADefinition) {
    using T = TypeParam;
    const AttrDefinition row{0, "Row", AttrType{Sample<T>::token}, 18};
    const auto container = AttrContainer::create();

    const auto free = row.createAttr(CreateDeep, std::nullopt, std::nullopt);
    const auto placed = row.createAttr(CreateDeep, std::nullopt, *container);

    if (isCreated(Sample<T>::token)) {
        EXPECT_NE(dynamic_cast<CustAttr<T>*>(free.get()), nullptr);
        EXPECT_NE(dynamic_cast<HardCodedAttr<T>*>(placed.get()), nullptr);
    } else {
        EXPECT_EQ(free, nullptr);
        EXPECT_EQ(placed, nullptr);
    }
}

TYPED_TEST(EveryValueType, IsStoredAndNotified) {
    using T = TypeParam;
    const auto attribute = std::make_shared<CustAttr<T>>(std::nullopt);
    const auto counter = watch(*attribute);

    attribute->set(Sample<T>::value());

    EXPECT_EQ(attribute->get(), Sample<T>::value());
    EXPECT_EQ(counter->asked, 1);
    EXPECT_EQ(counter->told, 1);
}

TYPED_TEST(EveryValueType, ShowsItsNewValueToTheObserversThatAreAsked) {
    using T = TypeParam;
    const auto attribute = std::make_shared<CustAttr<T>>(std::nullopt);
    const auto actor = watch<Actor>(*attribute);
    bool seen = false;
    actor->before = [&](Observable& observable, auto&) {
        const auto info = observable.lookupNotifyInfo(typeid(NewValueInfo<T>));
        seen = info && static_cast<NewValueInfo<T>&>(*info).getValue() == Sample<T>::value();
    };

    attribute->set(Sample<T>::value());

    EXPECT_TRUE(seen);
}

TYPED_TEST(EveryValueType, IsDuplicated) {
    using T = TypeParam;
    const auto attribute = attributeOf(Sample<T>::value());

    const auto copy = attribute->duplicate(CreateDeep, std::nullopt);
    const auto empty = attribute->duplicate(CreateEmpty, std::nullopt);

    EXPECT_TRUE(*copy == *attribute);
    EXPECT_EQ(dynamic_cast<Attr<T>&>(*empty).get(), T{});
    EXPECT_FALSE(*empty == *attribute);
}

TYPED_TEST(EveryValueType, HasATextThatItReadsBack) {
    using T = TypeParam;
    const auto attribute = attributeOf(Sample<T>::value());
    const std::string text = attribute->getValueString();

    if constexpr (std::is_same_v<T, std::string>) {
        EXPECT_EQ(text, Sample<T>::value());
    } else {
        EXPECT_EQ(text, Sample<T>::text);
    }
    CustAttr<T> copy(std::nullopt);
    copy.Attribute::assignFrom(text);
    EXPECT_EQ(copy.get(), Sample<T>::value());
}

TYPED_TEST(EveryValueType, ShowsACachedValue) {
    using T = TypeParam;
    const auto attribute = std::make_shared<CustAttr<T>>(std::nullopt);
    attribute->addNotifyInfo(
        std::make_shared<CachedAttributeInfo>(attributeOf(Sample<T>::value())));
    Attribute::setIsCachedAttributePending(true);

    EXPECT_EQ(attribute->get(), Sample<T>::value());
    attribute->touch(nullptr, nullptr);

    EXPECT_FALSE(Attribute::isCachedAttributePending());
    EXPECT_EQ(attribute->get(), Sample<T>::value());
}

TYPED_TEST(EveryValueType, CanBeACustomAttribute) {
    using T = TypeParam;
    const auto container = AttrContainer::create();

    const auto attribute = addCustom(*container, "Custom", Sample<T>::value());

    ASSERT_NE(attribute, nullptr);
    EXPECT_EQ(container->getAttribute("Custom").lock(), attribute);
    const auto copy = container->duplicate(CreateDeep);
    ASSERT_FALSE(copy->getAttribute("Custom").expired());
    EXPECT_TRUE(*copy->getAttribute("Custom").lock() == *attribute);
}
