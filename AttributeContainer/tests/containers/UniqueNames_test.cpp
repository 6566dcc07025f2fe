// Names that are not taken yet, and names that come from outside.
#include <AttributeContainer/kVAttrContainer.h>

#include <QOR/Text.h>

#include "support/Containers.h"

#include <gtest/gtest.h>

#include <random>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

const std::vector<std::string> wanted{"a", "A", "a9", "a09", "Height", "7"};

/// A container whose fields and custom attributes come and go under names that meet.
class Crowd {
public:
    explicit Crowd(std::uint64_t seed) : random(seed) {}

    void act() {
        const std::uint64_t field = below(container->getNumFields() + 1);
        switch (below(12)) {
            case 0:
            case 1:
            case 2: addField(AddFlags::MakeNameUnique); break;
            case 3: addField(AddFlags::SkipNameTest); break;
            case 4: container->rmField(field); break;
            case 5: container->rmField(one()); break;
            case 6: container->rmField(container->getField(field).lock()); break;
            case 7:
                container->setField(field, below(2) == 0 ? nullptr : AttrContainer::create());
                break;
            case 8: addCustom(*container, container->generateUniqueName(one()), 1); break;
            case 9: container->rmAttribute(one()); break;
            case 10:
                container->rmAttribute(container->getAttrName(4 + below(9)).value_or(""));
                break;
            case 11: removeAll(); break;
        }
    }

    void check() const {
        for (const std::string& name : wanted) {
            std::string expected = name;
            while (!container->isNameUnique(expected)) QOR::incrementIndex(expected);
            ASSERT_EQ(container->generateUniqueName(name), expected);
        }
    }

private:
    std::uint64_t below(std::uint64_t end) { return random() % end; }
    const std::string& one() { return wanted[below(wanted.size())]; }
    void addField(int flags) { container->addField(AttrContainer::create(), one(), flags); }
    void removeAll() {
        if (below(20) == 0) container->rmAllCustomFields();
        if (below(20) == 0) container->rmAllCustomAttributes();
    }

    std::mt19937_64 random;
    std::shared_ptr<AttrContainer> container = Mark::create();
};

}  // namespace

TEST(IsNameUnique, SeesAttributesAndFields) {
    const auto mark = Mark::create();
    addNamedField(*mark, "inner");
    addCustom(*mark, "Depth", 1);

    EXPECT_FALSE(mark->isNameUnique("inner"));
    EXPECT_FALSE(mark->isNameUnique("Depth"));
    EXPECT_FALSE(mark->isNameUnique("Height"));
    EXPECT_FALSE(mark->isNameUnique("Name"));
    EXPECT_TRUE(mark->isNameUnique("other"));
    EXPECT_TRUE(mark->isNameUnique("INNER"));
    EXPECT_FALSE(mark->isNameUnique(""));  // an empty path is the container itself
}

TEST(IsNameUnique, ResolvesPaths) {
    const auto mark = Mark::create();
    addNamedField<Mark>(*mark, "inner");
    EXPECT_FALSE(mark->isNameUnique("inner/Height"));
    EXPECT_TRUE(mark->isNameUnique("inner/Depth"));
}

TEST(IsNameUnique, SeesNoEmptySlot) {
    const auto pole = LongPole::create();
    pole->rmField("Top");
    EXPECT_TRUE(pole->isNameUnique("Top"));
}

TEST(GenerateUniqueName, LeavesANameThatIsFree) {
    EXPECT_EQ(Mark::create()->generateUniqueName("inner"), "inner");
}

TEST(GenerateUniqueName, CountsUpANameThatIsTaken) {
    const auto mark = Mark::create();
    EXPECT_EQ(mark->generateUniqueName("Height"), "Height1");
    addNamedField(*mark, "inner");
    EXPECT_EQ(mark->generateUniqueName("inner"), "inner1");
    addNamedField(*mark, "inner1");
    EXPECT_EQ(mark->generateUniqueName("inner"), "inner2");
    addNamedField(*mark, "part9");
    EXPECT_EQ(mark->generateUniqueName("part9"), "part10");
}

TEST(GenerateUniqueName, BeginsWithTheClassNameForAnInvalidOne) {
    const auto mark = Mark::create();
    EXPECT_EQ(mark->generateUniqueName("a b"), "Mark");
    EXPECT_EQ(mark->generateUniqueName(""), "Mark");
    addNamedField(*mark, "Mark");
    EXPECT_EQ(mark->generateUniqueName("a b"), "Mark1");
}

TEST(GenerateUniqueName, GivesTheSameNameUntilItIsTaken) {
    const auto mark = Mark::create();
    addNamedField(*mark, "inner");
    EXPECT_EQ(mark->generateUniqueName("inner"), "inner1");
    EXPECT_EQ(mark->generateUniqueName("inner"), "inner1");
}

// Many elements that want one name must not make each other slow, and a name that has become free
// is found all the same.

TEST(GenerateUniqueName, FindsANameThatHasBecomeFree) {
    const auto container = AttrContainer::create();
    addNamedField(*container, "inner");
    for (int i = 0; i < 5; ++i)
        container->addField(AttrContainer::create(), "inner", AddFlags::MakeNameUnique);
    ASSERT_EQ(container->generateUniqueName("inner"), "inner6");

    container->rmField("inner2");
    EXPECT_EQ(container->generateUniqueName("inner"), "inner2");
    container->setField(container->getFieldToken("inner1"), nullptr);
    EXPECT_EQ(container->generateUniqueName("inner"), "inner1");
    container->rmAllCustomFields();
    EXPECT_EQ(container->generateUniqueName("inner"), "inner");
}

TEST(GenerateUniqueName, FindsTheNameOfAnAttributeThatHasBecomeFree) {
    const auto container = AttrContainer::create();
    addCustom(*container, "Depth", 1);
    addCustom(*container, container->generateUniqueName("Depth"), 1);
    ASSERT_EQ(container->generateUniqueName("Depth"), "Depth2");

    container->rmAttribute("Depth1");
    EXPECT_EQ(container->generateUniqueName("Depth"), "Depth1");
    container->rmAllCustomAttributes();
    EXPECT_EQ(container->generateUniqueName("Depth"), "Depth");
}

TEST(GenerateUniqueName, BeginsAnewInAContainerInThePlaceOfAnother) {
    for (int i = 0; i < 3; ++i) {
        const auto container = AttrContainer::create();
        addNamedField(*container, "inner");
        addNamedField(*container, "inner2");
        EXPECT_EQ(container->generateUniqueName("inner"), "inner1");
        container->addField(AttrContainer::create(), "inner", AddFlags::MakeNameUnique);
        EXPECT_EQ(container->generateUniqueName("inner"), "inner3");
    }
}

TEST(GenerateUniqueName, FindsWhatASearchFromTheBeginningFinds) {
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        Crowd crowd(seed);
        for (int step = 0; step < 2000; ++step) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(step));
            crowd.act();
            if (step % 10 == 9) crowd.check();  // a question too is remembered, so not all the time
            if (HasFailure()) return;
        }
    }
}

TEST(GenerateUniqueName, StaysQuickForManyElementsOfTwoNames) {
    const auto container = AttrContainer::create();
    for (int i = 0; i < 10000; ++i) {
        container->addField(AttrContainer::create(), "a", AddFlags::MakeNameUnique);
        container->addField(AttrContainer::create(), "b", AddFlags::MakeNameUnique);
    }
    EXPECT_EQ(container->getFieldName(19998), "a9999");
    EXPECT_EQ(container->getFieldName(19999), "b9999");
}

// Names from outside ------------------------------------------------------------------------------

TEST(ToTarvoName, LeavesAValidName) {
    EXPECT_EQ(AttrContainer::create()->toTarvoName("a.b-c_1"), "a.b-c_1");
}

TEST(ToTarvoName, PutsAnUnderscoreForWhatANameCannotHold) {
    const auto container = AttrContainer::create();
    EXPECT_EQ(container->toTarvoName("a b"), "a_b");
    EXPECT_EQ(container->toTarvoName("a/b c"), "a_b_c");
    EXPECT_EQ(container->toTarvoName(" "), "_");
    EXPECT_EQ(container->toTarvoName("\xC3\xA4"), "__");
}

TEST(ToTarvoName, CallsAnObjectWhatHasNoName) {
    EXPECT_EQ(AttrContainer::create()->toTarvoName(""), "Object");
}

TEST(ToTarvoName, GoesByTheViewOfTheClass) {
    /// Warns of one name and refuses another.
    class Wary : public ContainerClass<Wary, AttrContainer, "Wary"> {
    public:
        using Block::Block;
        ErrorPtr checkName(const std::string& name) const override {
            if (name == "a b")
                return makeError(__FILE__, __LINE__, ErrorCode::ElementSkipped, "checkName");
            if (name == "bad")
                return makeError(__FILE__, __LINE__, ErrorCode::InvalidName, "checkName");
            return Block::checkName(name);
        }
    };
    const auto wary = Wary::create();
    EXPECT_EQ(wary->toTarvoName("a b"), "a b");  // a warning lets it pass
    EXPECT_EQ(wary->toTarvoName("bad"), "Object");
    EXPECT_EQ(wary->toTarvoName("b d"), "b_d");
}
