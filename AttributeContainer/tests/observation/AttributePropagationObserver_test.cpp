#include <AttributeContainer/AttributePropagationObserver.h>

#include <AttributeContainer/Attr.h>

#include "support/FreeAttribute.h"
#include "support/ObserverGraph.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

TEST(AttributePropagationObserver, StandsForItsAttribute) {
    const auto number = attributeOf<int>(1);
    const auto companion =
        std::dynamic_pointer_cast<AttributePropagationObserver>(number->getObserver().lock());
    ASSERT_NE(companion, nullptr);
    EXPECT_EQ(companion->getAttribute(), number);
    EXPECT_EQ(companion->getName(), "AttributePropagationObserver");
}

TEST(AttributePropagationObserver, IsOneForEachAttribute) {
    const auto number = attributeOf<int>(1);
    const auto other = attributeOf<int>(1);
    EXPECT_EQ(number->getObserver().lock(), number->getObserver().lock());
    EXPECT_NE(number->getObserver().lock(), other->getObserver().lock());
}

TEST(AttributePropagationObserver, LivesAsLongAsItsAttribute) {
    auto number = attributeOf<int>(1);
    const auto companion = number->getObserver();
    const auto held = std::dynamic_pointer_cast<AttributePropagationObserver>(companion.lock());
    EXPECT_EQ(number.use_count(), 1) << "the companion holds it weakly";
    number.reset();
    EXPECT_EQ(held->getAttribute(), nullptr);
    EXPECT_EQ(held.use_count(), 1);
}

TEST(AttributePropagationObserver, AnswersLikeAnyObserver) {
    const auto number = attributeOf<int>(1);
    const auto companion = number->getObserver().lock();
    Observer::Initiator nobody;
    EXPECT_EQ(companion->changedNotify(*number, nobody), Action::ExecUnchanged);
    EXPECT_EQ(companion->toChangeNotify(*number, nobody), Action::ExecUnchanged);
    EXPECT_EQ(companion->inqObjPath(), std::nullopt);
}

TEST(AttributePropagationObserver, LeavesTheSourceWhenTheTargetGoes) {
    const auto source = attributeOf<int>(1);
    auto target = attributeOf<int>(2);
    source->addObserver(*target->getObserver().lock(), 1, propagateAction, false);
    target.reset();
    EXPECT_EQ(source->getNumPostObservers(), 0u);
    source->set(3);
    EXPECT_EQ(source->get(), 3);
}

TEST(AttributePropagationObserver, NeedsAnAttributeThatIsOwned) {
    CustAttr<int> unowned(std::nullopt);
    EXPECT_THROW(unowned.getObserver(), std::bad_weak_ptr);
}
