// The memory that the attributes of a table share.
#include "attributes/AttributeBlock.h"

#include <AttributeContainer/Object.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

using namespace QOR;
using namespace QOR::AttributeContainer;

namespace {

constexpr std::optional<std::reference_wrapper<const Attribute>> noSource;

template <class T> std::shared_ptr<HardCodedAttr<T>> createIn(AttributeBlock& block) {
    return block.create<T>(noSource);
}

template <class T> constexpr std::size_t roomFor = AttributeBlock::roomFor<T>();

std::size_t distance(const void* a, const void* b) {
    const auto first = reinterpret_cast<std::uintptr_t>(a);
    const auto second = reinterpret_cast<std::uintptr_t>(b);
    return first < second ? second - first : first - second;
}

}  // namespace

TEST(AttributeBlock, HoldsAttributesSideBySide) {
    const auto object = Object::create();
    AttributeBlock block(*object, roomFor<double> + roomFor<std::string>);
    const auto number = createIn<double>(block);
    const auto text = createIn<std::string>(block);
    constexpr auto room = roomFor<double> + roomFor<std::string>;
    EXPECT_LE(distance(number.get(), text.get()), room);
    EXPECT_LE(distance(number.get(), &number->get()), room);
    EXPECT_LE(distance(text.get(), &text->get()), room);
    number->set(2.5);
    text->set("a text that is too long for the inside of a string object");
    EXPECT_EQ(number->get(), 2.5);
    EXPECT_EQ(text->get(), "a text that is too long for the inside of a string object");
}

TEST(AttributeBlock, LastsUntilItsLastAttributeHasEnded) {
    const auto object = Object::create();
    std::shared_ptr<HardCodedAttr<std::string>> kept;
    std::weak_ptr<Attribute> ended;
    {
        AttributeBlock block(*object, roomFor<double> + roomFor<std::string>);
        ended = createIn<double>(block);
        kept = createIn<std::string>(block);
    }
    EXPECT_TRUE(ended.expired());
    kept->set("still there");
    EXPECT_EQ(kept->get(), "still there");
}

TEST(AttributeBlock, TellsAllItsAttributesTheirContainer) {
    auto object = Object::create();
    AttributeBlock block(*object, roomFor<double> + roomFor<int>);
    const auto first = createIn<double>(block);
    const auto second = createIn<int>(block);
    ASSERT_TRUE(first->getLocation());
    EXPECT_EQ(&first->getLocation()->get(), object.get());
    ASSERT_TRUE(second->getLocation());
    EXPECT_EQ(&second->getLocation()->get(), object.get());
    object.reset();
    EXPECT_FALSE(first->getLocation());
    EXPECT_FALSE(second->getLocation());
}

TEST(AttributeBlock, GivesMemoryOfItsOwnToWhatDoesNotFitIn) {
    const auto object = Object::create();
    std::shared_ptr<HardCodedAttr<double>> second;
    {
        AttributeBlock block(*object, roomFor<double>);
        const auto first = createIn<double>(block);
        second = createIn<double>(block);
        first->set(1.0);
        second->set(2.0);
        EXPECT_EQ(first->get(), 1.0);
    }
    EXPECT_EQ(second->get(), 2.0);
}

TEST(AttributeBlock, NeedsNoAttributeAtAll) {
    const auto object = Object::create();
    const AttributeBlock block(*object, 0);
    EXPECT_EQ(object.use_count(), 1);
}

// One attribute that somebody keeps keeps the memory of the others, and nothing else of them.
TEST(AttributeBlock, EndsTheOtherAttributesWithTheirContainer) {
    std::shared_ptr<Attribute> kept;
    std::weak_ptr<Attribute> other;
    {
        const auto object = Object::create();
        kept = object->getAttribute("Name").lock();
        other = object->getAttribute("Event");
        ASSERT_TRUE(kept);
        ASSERT_FALSE(other.expired());
    }
    EXPECT_TRUE(other.expired());
    EXPECT_EQ(kept->getValueString(), "Object");
    EXPECT_FALSE(kept->getLocation());
}
