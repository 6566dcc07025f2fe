// Values that come and go as text.
#include <AttributeContainer/Attr.h>

#include <AttributeContainer/CachedAttributeInfo.h>

#include "support/FreeAttribute.h"
#include "support/ObserverActors.h"
#include "support/ResultPromises.h"

#include <gtest/gtest.h>

#include <limits>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

template <class T>
std::string textOf(const T& value) {
    return attributeOf(value)->getValueString();
}

template <class T>
T assigned(const std::string& text, const T& former = T{}) {
    const auto attribute = attributeOf(former);
    attribute->assignFrom(text);
    return attribute->get();
}

}  // namespace

// The text of a value -----------------------------------------------------------------------------

TEST(AttrValueString, HasTheDefaultPrecisionOfAStream) {
    EXPECT_EQ(textOf(3.14159265), "3.14159");
    EXPECT_EQ(textOf(1234567.0), "1.23457e+06");
    EXPECT_EQ(textOf(0.1), "0.1");
    EXPECT_EQ(textOf(1.0), "1");
    EXPECT_EQ(textOf(-0.0), "-0");
    EXPECT_EQ(textOf(1e300), "1e+300");
}

TEST(AttrValueString, HasThatPrecisionInComponentsAndElementsToo) {
    EXPECT_EQ(textOf(Vec3d<double>(1.23456789, 2, -3)), "1.23457 2 -3");
    EXPECT_EQ(textOf(Vec3d<float>(0.1f, 100000, 1234567)), "0.1 100000 1.23457e+06");
    EXPECT_EQ(textOf(std::vector<double>{1.23456789, 2}), "{ 1.23457 2 } ");
    EXPECT_EQ(textOf(std::vector<Vec3d<double>>{{1.23456789, 2, 3}}), "{ 1.23457 2 3 } ");
    Mat4d<double> matrix;
    matrix[0] = 1.23456789;
    EXPECT_EQ(textOf(matrix), "1.23457 0 0 0  0 0 0 0  0 0 0 0  0 0 0 0  ");
}

TEST(AttrValueString, NamesWhatIsNotFinite) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(textOf(infinity), "inf");
    EXPECT_EQ(textOf(-infinity), "-inf");
    EXPECT_EQ(textOf(std::numeric_limits<double>::quiet_NaN()), "nan");
    EXPECT_EQ(textOf(SVec2d<double>(infinity, 1)), "inf 1");
}

TEST(AttrValueString, WritesSmallIntegersAsNumbers) {
    EXPECT_EQ(textOf<signed char>(-128), "-128");
    EXPECT_EQ(textOf<unsigned char>(65), "65");
    EXPECT_EQ(textOf(std::vector<signed char>{65, -1}), "{ 65 -1 } ");
    EXPECT_EQ(textOf(std::vector<unsigned char>{65, 255}), "{ 65 255 } ");
}

TEST(AttrValueString, WritesIntegersWhole) {
    EXPECT_EQ(textOf(1234567890), "1234567890");
    EXPECT_EQ(textOf(~std::uint64_t{0}), "18446744073709551615");
    EXPECT_EQ(textOf(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
}

TEST(AttrValueString, LeavesAStringBare) {
    EXPECT_EQ(textOf<std::string>("a \"b\"\n"), "a \"b\"\n");
    EXPECT_EQ(textOf<std::string>(""), "");
}

TEST(AttrValueString, QuotesWhatItsReaderWantsQuoted) {
    EXPECT_EQ(textOf(JsonValue{R"({"a":1})"}), R"("{\"a\":1}")");
    EXPECT_EQ(textOf(std::vector<std::string>{"a b", ""}), R"(2 "a b" "")");
    EXPECT_EQ(textOf(std::set<std::string>{"b", "a"}), R"(2 "a" "b")");
    EXPECT_EQ(textOf(StringMap{{"k", "v w"}}), R"(1 "k"=>"v w")");
}

TEST(AttrValueString, WritesBoolAsAWord) {
    EXPECT_EQ(textOf(true), "true");
    EXPECT_EQ(textOf(false), "false");
}

// The value of a text -----------------------------------------------------------------------------

TEST(AttrAssignFrom, ReadsWhatTheTextStandsFor) {
    EXPECT_EQ(assigned<int>("12"), 12);
    EXPECT_EQ(assigned<double>(" 1.5"), 1.5);
    EXPECT_EQ(assigned<bool>("TRUE"), true);
    EXPECT_EQ(assigned<signed char>("-5"), -5);
    EXPECT_EQ(assigned<std::vector<int>>("{ 1 2 } "), (std::vector<int>{1, 2}));
    EXPECT_EQ(assigned<SVec2d<int>>("3 4"), (SVec2d<int>(3, 4)));
    EXPECT_EQ(assigned<JsonValue>(R"("{\"a\":1}")"), (JsonValue{R"({"a":1})"}));
}

TEST(AttrAssignFrom, TakesAStringAsItIs) {
    EXPECT_EQ(assigned<std::string>("a \"b\"\\n"), "a \"b\"\\n");
    EXPECT_EQ(assigned<std::string>("", "former"), "");
}

TEST(AttrAssignFrom, GivesTheDefaultForABadText) {
    EXPECT_EQ(assigned<int>("many", 7), 0);
    EXPECT_EQ(assigned<int>("", 7), 0);
    EXPECT_EQ(assigned<bool>("yes", true), false);
    EXPECT_EQ(assigned<uuids::uuid>("none", uuids::uuid::generate()), uuids::uuid());
    EXPECT_EQ(assigned<JsonValue>("{}", JsonValue{"[]"}), JsonValue{});
    EXPECT_EQ(assigned<double>("many", 7.0), 0.0);  // not one character of a number
}

TEST(AttrAssignFrom, ThrowsForAMalformedNumber) {
    const auto attribute = attributeOf(7.0);
    try {
        attribute->assignFrom("1e");
        ADD_FAILURE() << "no exception";
    } catch (const std::invalid_argument& error) {
        EXPECT_STREQ(error.what(), "Invalid number format");
    }
    EXPECT_EQ(attribute->get(), 7.0);
}

TEST(AttrAssignFrom, ReadsWhatGetValueStringWrote) {
    EXPECT_EQ(assigned<Vec3d<double>>(textOf(Vec3d<double>(1.5, 0, -2))),
              (Vec3d<double>(1.5, 0, -2)));
    EXPECT_EQ(assigned<std::string>(textOf<std::string>("a\tb")), "a\tb");
    EXPECT_EQ(assigned<StringMap>(textOf(StringMap{{"a b", "\"c\""}})),
              (StringMap{{"a b", "\"c\""}}));
}

// Who is asked and told ---------------------------------------------------------------------------

TEST(AttrAssignFrom, AsksAndTells) {
    const auto attribute = attributeOf(1);
    const auto actor = watch<Actor>(*attribute);
    std::vector<int> seen;
    actor->before = [&](Observable&, auto&) { seen.push_back(attribute->get()); };
    actor->after = actor->before;

    attribute->assignFrom("2");

    EXPECT_EQ(seen, (std::vector<int>{1, 2}));
}

TEST(AttrAssignFrom, GoesOnWhereAnObserverRefuses) {
    const auto attribute = attributeOf(1);
    const auto refuser = watch<Refuser>(*attribute);

    attribute->assignFrom("2");

    EXPECT_EQ(attribute->get(), 2);
    EXPECT_EQ(refuser->asked, 1);
    EXPECT_EQ(refuser->told, 1);
}

TEST(AttrAssignFrom, ShowsNoNewValueToObservers) {
    const auto attribute = attributeOf(1);
    const auto actor = watch<Actor>(*attribute);
    bool found = false;
    actor->before = [&](Observable& observable, auto&) {
        found = observable.lookupNotifyInfo(typeid(NewValueInfo<int>)) != nullptr;
    };

    attribute->assignFrom("2");

    EXPECT_EQ(actor->asked, 1);
    EXPECT_FALSE(found);
}

TEST(AttrAssignFrom, AsksAlsoWhileObservingIsBlockedAndTellsNobody) {
    const auto attribute = attributeOf(1);
    const auto counter = watch(*attribute);
    const BlockObserver block;

    attribute->assignFrom("2");

    EXPECT_EQ(attribute->get(), 2);
    EXPECT_EQ(counter->asked, 1);
    EXPECT_EQ(counter->told, 0);
}

TEST(AttrAssignFrom, FulfilsBothPromises) {
    const auto attribute = attributeOf(1);
    const auto counter = watch(*attribute);
    const auto initiator = std::make_shared<Counter>();
    ResultPromises promises;

    attribute->assignFrom("2", initiator, promises.pre, promises.post);

    promises.expectConsumed();
    const Results asked = promises.preAnswers.get();
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].observer.lock(), counter);
    EXPECT_EQ(promises.postAnswers.get().size(), 1u);
}

TEST(AttrAssignFrom, FulfilsBothPromisesAlsoWhereAnObserverRefuses) {
    const auto attribute = attributeOf(1);
    const auto refuser = watch<Refuser>(*attribute);
    ResultPromises promises;

    attribute->assignFrom("2", nullptr, promises.pre, promises.post);

    const Results asked = promises.preAnswers.get();
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].result, Action::ExecRefused);
    EXPECT_EQ(promises.postAnswers.get().size(), 1u);
}

TEST(AttrAssignFrom, FulfilsThePostPromiseWithNothingWhileObservingIsBlocked) {
    const auto attribute = attributeOf(1);
    const auto counter = watch(*attribute);
    ResultPromises promises;
    const BlockObserver block;

    attribute->assignFrom("2", nullptr, promises.pre, promises.post);

    EXPECT_EQ(promises.preAnswers.get().size(), 1u);
    EXPECT_TRUE(promises.postAnswers.get().empty());
}

TEST(AttrAssignFrom, TakesACachedValueThatComesWhileObserversAreAsked) {
    const auto attribute = attributeOf(1);
    const auto actor = watch<Actor>(*attribute);
    actor->before = [](Observable& observable, auto&) {
        observable.addNotifyInfo(std::make_shared<CachedAttributeInfo>(attributeOf(7)));
        Attribute::setIsCachedAttributePending(true);
    };

    attribute->assignFrom("2");

    // The text is stored first, and the notification then flushes what is pending by now.
    EXPECT_FALSE(Attribute::isCachedAttributePending());
    EXPECT_EQ(attribute->get(), 7);
}

TEST(AttrAssignFrom, PassesItsInitiator) {
    const auto attribute = attributeOf(1);
    const auto counter = watch(*attribute);
    ResultPromise noPre;
    ResultPromise noPost;

    attribute->assignFrom("2", counter, noPre, noPost);

    EXPECT_EQ(counter->asked + counter->told, 0);
}

TEST(AttrAssignFrom, RunsTheWholeProtocolForAString) {
    const auto text = attributeOf<std::string>("old");
    const auto refuser = watch<Refuser>(*text);

    ResultPromises promises;
    text->assignFrom("new", nullptr, promises.pre, promises.post);
    EXPECT_EQ(text->get(), "old");
    EXPECT_EQ(refuser->asked, 1);
    EXPECT_EQ(refuser->told, 0);
    promises.expectConsumed();
    EXPECT_EQ(promises.preAnswers.get().size(), 1u);
    expectBroken(promises.postAnswers);

    const BlockObserver block;
    text->assignFrom("new");
    EXPECT_EQ(text->get(), "new");
    EXPECT_EQ(refuser->asked, 1);
}
