#include <QOR/ErrorBase.h>
#include <QOR/Uuid.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

enum class Trouble { Small, Large };

bool isWarning(const Trouble& trouble) { return trouble == Trouble::Small; }

using QOR::ErrorHandling::ErrorBase;
using Error = QOR::ErrorHandling::ErrorWithCode<Trouble>;

Error makeFailure() { return {"reader.cpp", 42, Trouble::Large}; }

std::string textInfo(const ErrorBase& error, const std::string& key) {
    return std::any_cast<std::string>(error.getInfos().at(key));
}

TEST(ErrorBase, IsAbstractWithAVirtualDestructor) {
    EXPECT_TRUE(std::is_abstract_v<ErrorBase>);
    EXPECT_TRUE(std::has_virtual_destructor_v<ErrorBase>);
}

TEST(ErrorBase, TellsFileAndLineAsItsLocation) {
    EXPECT_EQ(makeFailure().getLocation(), "reader.cpp:42");
}

TEST(ErrorBase, TakesANullFileForAnUnknownOne) {
    EXPECT_EQ(Error(nullptr, 7, Trouble::Large).getLocation(), "unknown file:7");
}

TEST(ErrorBase, KeepsItsOwnCopyOfTheFileName) {
    std::string name = "writer.cpp";
    const Error error(name.c_str(), 3, Trouble::Large);

    name.assign("overwritten");

    EXPECT_EQ(error.getLocation(), "writer.cpp:3");
}

TEST(ErrorBase, HasAUuidOfItsOwn) {
    const auto first = makeFailure();
    const auto second = makeFailure();

    EXPECT_TRUE(QOR::uuids::uuid::parse(first.getUuid()).has_value());
    EXPECT_NE(first.getUuid(), second.getUuid());
    EXPECT_EQ(first.getUuid(), first.getUuid());
}

TEST(ErrorBase, HasNoDescriptionUntilOneIsSet) {
    auto error = makeFailure();
    EXPECT_FALSE(error.getDescription().has_value());

    error.setDescription("no such key");
    EXPECT_EQ(error.getDescription(), "no such key");

    error.setDescription("");
    EXPECT_EQ(error.getDescription(), "");
}

TEST(ErrorBase, CollectsInfosAndOverwritesThoseOfTheSameKey) {
    auto error = makeFailure();
    EXPECT_TRUE(error.getInfos().empty());

    error.addInfos({{"Name", std::string("old")}, {"Count", 3}});
    error.addInfos({{"Name", std::string("new")}});

    EXPECT_EQ(error.getInfos().size(), 2u);
    EXPECT_EQ(textInfo(error, "Name"), "new");
    EXPECT_EQ(std::any_cast<int>(error.getInfos().at("Count")), 3);
}

TEST(ErrorBase, KeepsCopiesOfItsReasonsWithTheirCodesInTheOrderOfAdding) {
    auto error = makeFailure();
    {
        auto first = Error("inner.cpp", 1, Trouble::Small);
        first.setDescription("the first");
        error.addReason(first);
        first.setDescription("changed later");
        error.addReason(Error("inner.cpp", 2, Trouble::Large));
    }

    ASSERT_EQ(error.getReasons().size(), 2u);
    const auto* first = dynamic_cast<const Error*>(error.getReasons()[0].get());
    const auto* second = dynamic_cast<const Error*>(error.getReasons()[1].get());
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(first->getCode(), Trouble::Small);
    EXPECT_EQ(first->getDescription(), "the first");
    EXPECT_EQ(second->getCode(), Trouble::Large);
    EXPECT_EQ(second->getLocation(), "inner.cpp:2");
}

TEST(ErrorBase, KeepsTheReasonsOfAReason) {
    auto middle = makeFailure();
    middle.addReason(Error("deep.cpp", 9, Trouble::Small));
    auto outer = makeFailure();

    outer.addReason(middle);

    ASSERT_EQ(outer.getReasons().size(), 1u);
    ASSERT_EQ(outer.getReasons()[0]->getReasons().size(), 1u);
    EXPECT_EQ(outer.getReasons()[0]->getReasons()[0]->getLocation(), "deep.cpp:9");
}

TEST(ErrorBase, CanHaveItselfAsAReason) {
    auto error = makeFailure();

    error.addReason(error);

    ASSERT_EQ(error.getReasons().size(), 1u);
    EXPECT_TRUE(error.getReasons()[0]->getReasons().empty());
}

TEST(ErrorWithCode, TellsItsCodeAndWhetherThatIsAWarning) {
    const Error small("a.cpp", 1, Trouble::Small);
    const Error large("a.cpp", 1, Trouble::Large);

    EXPECT_EQ(small.getCode(), Trouble::Small);
    EXPECT_TRUE(small.isWarning());
    EXPECT_EQ(large.getCode(), Trouble::Large);
    EXPECT_FALSE(large.isWarning());
}

TEST(ErrorWithCode, CloningKeepsCodePlaceUuidDescriptionInfosAndReasons) {
    auto error = makeFailure();
    error.setDescription("what happened");
    error.addInfos({{"Key", std::string("value")}});
    error.addReason(Error("inner.cpp", 1, Trouble::Small));
    std::unique_ptr<Error> copy;

    error.clone(copy);

    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->getCode(), Trouble::Large);
    EXPECT_EQ(copy->getLocation(), "reader.cpp:42");
    EXPECT_EQ(copy->getUuid(), error.getUuid());
    EXPECT_EQ(copy->getDescription(), "what happened");
    EXPECT_EQ(textInfo(*copy, "Key"), "value");
    ASSERT_EQ(copy->getReasons().size(), 1u);
    EXPECT_EQ(copy->getReasons()[0]->getLocation(), "inner.cpp:1");
}

TEST(ErrorWithCode, ACloneGoesItsOwnWay) {
    auto error = makeFailure();
    std::unique_ptr<Error> copy;
    error.clone(copy);

    error.setDescription("of the original");
    error.addInfos({{"Key", 1}});
    error.addReason(makeFailure());

    EXPECT_FALSE(copy->getDescription().has_value());
    EXPECT_TRUE(copy->getInfos().empty());
    EXPECT_TRUE(copy->getReasons().empty());
}

TEST(ErrorWithCode, ClonesIntoThePointerThatHoldsIt) {
    auto error = std::make_unique<Error>("self.cpp", 5, Trouble::Small);
    const auto uuid = error->getUuid();

    error->clone(error);

    EXPECT_EQ(error->getUuid(), uuid);
    EXPECT_EQ(error->getCode(), Trouble::Small);
}

}  // namespace
