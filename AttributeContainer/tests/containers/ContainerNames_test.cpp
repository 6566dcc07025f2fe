// The name of a container, and the guard over it.
#include <AttributeContainer/kVAttrContainer.h>

#include "support/Containers.h"
#include "support/ObserverActors.h"

#include <gtest/gtest.h>

#include <clocale>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

std::string infoOf(const QOR::ErrorHandling::ErrorBase& error, const std::string& key) {
    const auto found = error.getInfos().find(key);
    return found != error.getInfos().end() ? std::any_cast<std::string>(found->second) : "(none)";
}

/// Refuses every name, and counts how often it is asked.
class Strict : public ContainerClass<Strict, AttrContainer, "Strict"> {
public:
    using Block::Block;

    ErrorPtr checkName(const std::string&) const override {
        ++numChecks;
        if (!isStrict) return nullptr;
        return makeError(__FILE__, __LINE__, ErrorCode::InvalidName, "Strict::checkName");
    }

    bool isStrict = false;
    mutable int numChecks = 0;
};

/// No attribute, and in no container.
class PlainObservable : public Observable {
public:
    std::optional<std::reference_wrapper<const Observer>> lookupObject() const override {
        return std::nullopt;
    }
    std::string getName() const override { return "plain"; }
};

/// Sets the locale of the program for its scope.
class ActiveLocale {
public:
    explicit ActiveLocale(const char* name)
        : former(std::setlocale(LC_ALL, nullptr)), found(std::setlocale(LC_ALL, name) != nullptr) {}
    ActiveLocale(const ActiveLocale&) = delete;
    ActiveLocale& operator=(const ActiveLocale&) = delete;
    ~ActiveLocale() { std::setlocale(LC_ALL, former.c_str()); }

    bool isThere() const { return found; }

private:
    std::string former;
    bool found;
};

/// Keeps the veto that a name meets, which is gone once the change ends.
class Listener : public Counter {
public:
    Action::ExecReturn toChangeNotify(Observable& observable, Initiator&) override {
        const auto info = observable.lookupNotifyInfo(typeid(InfoFailed));
        veto = std::static_pointer_cast<InfoFailed>(info);
        return Action::ExecDone;
    }

    std::shared_ptr<InfoFailed> veto;
};

}  // namespace

// Valid names -------------------------------------------------------------------------------------

TEST(IsNameValid, TakesLettersDigitsAndThreeMarks) {
    EXPECT_TRUE(AttrContainer::isNameValid("a"));
    EXPECT_TRUE(AttrContainer::isNameValid("Z9_-."));
    EXPECT_TRUE(AttrContainer::isNameValid("0"));
    EXPECT_TRUE(AttrContainer::isNameValid("..."));
}

TEST(IsNameValid, RefusesEverythingElse) {
    EXPECT_FALSE(AttrContainer::isNameValid(""));
    for (const char* name : {"a b", " a", "a\n", "a/b", "a~", "#", "a:b", "a\"", "\xE4", "\x7F"})
        EXPECT_FALSE(AttrContainer::isNameValid(name)) << name;
    EXPECT_FALSE(AttrContainer::isNameValid(std::string("a\0b", 3)));
}

TEST(MakeNameValid, PutsAnUnderscoreForWhatANameCannotHold) {
    std::string name = "a b/c.d-e_f";
    EXPECT_TRUE(AttrContainer::makeNameValid(name));
    EXPECT_EQ(name, "a_b_c.d-e_f");
}

TEST(MakeNameValid, LeavesAnEmptyText) {
    std::string name;
    EXPECT_FALSE(AttrContainer::makeNameValid(name));
    EXPECT_EQ(name, "");
}

// The one asks for narrow characters and the other for wide ones. In UTF-8 no byte above ASCII is a
// narrow character of its own, while the wide character of that number is a letter.
TEST(MakeNameValid, LeavesSomeNamesInvalidWhereTheLocaleHasMoreLetters) {
    std::string name = "\xE4 b";
    {
        const ActiveLocale locale("C.UTF-8");
#if defined(_WIN32)  // whose only locale with a name is "C"
        if (!locale.isThere()) GTEST_SKIP() << "no locale C.UTF-8";
#endif
        ASSERT_TRUE(locale.isThere());

        EXPECT_TRUE(AttrContainer::makeNameValid(name));

        EXPECT_EQ(name, "\xE4_b");
        EXPECT_FALSE(AttrContainer::isNameValid(name));
    }
    EXPECT_TRUE(AttrContainer::makeNameValid(name));
    EXPECT_EQ(name, "__b");  // the plain locale has no such letter
}

TEST(CheckName, TellsWhichNameIsInvalid) {
    const auto container = AttrContainer::create();

    const auto error = container->checkName("a b");

    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->getCode(), ErrorCode::InvalidName);
    EXPECT_FALSE(error->isWarning());
    EXPECT_EQ(infoOf(*error, "CheckedName"), "a b");
    EXPECT_EQ(error->getInfos().size(), 1u);
}

TEST(CheckName, AllowsAValidNameThatIsTaken) {
    const auto container = AttrContainer::create();
    addNamedField(*container, "inner");
    EXPECT_EQ(container->checkName("inner"), nullptr);
    EXPECT_EQ(container->checkName("Name"), nullptr);
}

// Setting a name ----------------------------------------------------------------------------------

TEST(SetName, RenamesTheContainerOnItsOwnBehalf) {
    const auto container = AttrContainer::create();
    const auto actor = watch<Actor>(container->Attr_Name());
    const ObservingObject* initiator = nullptr;
    actor->after = [&](Observable&, Observer::Initiator& given) {
        initiator = given ? &given->get() : nullptr;
    };

    EXPECT_EQ(container->setName("north"), nullptr);

    EXPECT_EQ(container->getName(), "north");
    EXPECT_EQ(initiator, container.get());
}

TEST(SetName, LeavesTheOldNameWhereTheNewOneIsInvalid) {
    const auto container = AttrContainer::create();
    const auto counter = watch(container->Attr_Name());

    const auto error = container->setName("");

    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->getCode(), ErrorCode::InvalidName);
    EXPECT_EQ(infoOf(*error, "CheckedName"), "");
    EXPECT_EQ(container->getName(), "AttrContainer");
    EXPECT_EQ(counter->asked + counter->told, 0);
}

TEST(SetName, AsksTheClassOnce) {
    const auto strict = Strict::create();
    strict->numChecks = 0;
    EXPECT_EQ(strict->setName("north"), nullptr);
    EXPECT_EQ(strict->numChecks, 1);
}

TEST(SetName, CanBeRefusedByAnObserver) {
    const auto container = AttrContainer::create();
    const auto refuser = watch<Refuser>(container->Attr_Name());
    EXPECT_EQ(container->setName("north"), nullptr);
    EXPECT_EQ(container->getName(), "AttrContainer");
}

TEST(SetName, IsWhatSetsTheDisplayName) {
    const auto container = AttrContainer::create();
    EXPECT_EQ(container->getDisplayName(), "AttrContainer");
    EXPECT_EQ(container->setDisplayName("north"), nullptr);
    EXPECT_EQ(container->getName(), "north");
    EXPECT_EQ(container->getDisplayName(), "north");
    EXPECT_NE(container->setDisplayName("a b"), nullptr);
}

TEST(SetName, FailsOnAnObjectThatNobodyOwns) {
    Loose loose;
    EXPECT_THROW(static_cast<void>(loose.setName("north")), std::bad_weak_ptr);
    EXPECT_NE(loose.setName("a b"), nullptr);
}

// The guard on the attribute ----------------------------------------------------------------------

TEST(NameGuard, RefusesAnInvalidNameThatIsWrittenDirectly) {
    const auto container = AttrContainer::create();
    const auto listener = std::make_shared<Listener>();
    // Asked behind the container, whose relation has the priority 100.
    container->Attr_Name().addPreObserver(*listener, 1, askAction, true);

    container->Attr_Name().set("a b");

    EXPECT_EQ(container->getName(), "AttrContainer");
    ASSERT_NE(listener->veto, nullptr);
    const auto& error = listener->veto->getError();
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->getCode(), ErrorCode::InvalidName);
    EXPECT_EQ(infoOf(*error, "CheckedName"), "a b");
    EXPECT_EQ(infoOf(*error, "CurrentName"), "AttrContainer");
    EXPECT_EQ(infoOf(*error, "NewName"), "a b");
    EXPECT_EQ(container->Attr_Name().lookupNotifyInfo(typeid(InfoFailed)), nullptr);
}

TEST(NameGuard, AnswersThatItRefused) {
    const auto container = AttrContainer::create();
    ResultPromise pre = std::make_unique<ResultPromise::element_type>();
    ResultPromise post;
    auto answers = pre->get_future();

    container->Attr_Name().set("a b", nullptr, pre, post);

    const auto results = answers.get();
    ASSERT_EQ(results.size(), 1u);
    EXPECT_EQ(results[0].observer.lock(), container);
    EXPECT_EQ(results[0].result, Action::ExecRefused);
}

TEST(NameGuard, LetsAValidNamePass) {
    const auto container = AttrContainer::create();
    container->Attr_Name().set("north");
    EXPECT_EQ(container->getName(), "north");
    container->name("south");
    EXPECT_EQ(container->getName(), "south");
    container->name("a b");
    EXPECT_EQ(container->getName(), "south");
    container->Name("west");
    EXPECT_EQ(container->getName(), "west");
}

TEST(NameGuard, DoesNotCheckAChangeOfCaseAlone) {
    const auto strict = Strict::create();
    strict->isStrict = true;
    strict->numChecks = 0;

    strict->name("STRICT");
    EXPECT_EQ(strict->getName(), "STRICT");
    EXPECT_EQ(strict->numChecks, 0);

    strict->name("other");
    EXPECT_EQ(strict->getName(), "STRICT");
    EXPECT_EQ(strict->numChecks, 1);
}

// It goes by the attribute's token in its own container.
TEST(NameGuard, ReachesANameOfAnotherContainerThatItIsAskedFor) {
    const auto strict = Strict::create();
    const auto other = Mark::create();
    strict->isStrict = true;
    other->Attr_Name().addPreObserver(*strict, 5, askAction, true);
    other->Attr_Label().addPreObserver(*strict, 5, askAction, true);

    other->name("north");
    other->Label("north");

    EXPECT_EQ(other->getName(), "Mark");
    EXPECT_EQ(other->Label(), "north");
}

TEST(NameGuard, IsBlockedWithAllObserving) {
    const auto container = AttrContainer::create();
    const BlockObserver block;
    container->name("a b");
    EXPECT_EQ(container->getName(), "a b");
}

TEST(NameGuard, PassesEverythingElse) {
    const auto mark = Mark::create();
    Observer::Initiator nobody;
    const auto other = AttrContainer::create();

    EXPECT_EQ(mark->toChangeNotify(mark->Attr_Height(), nobody), Action::ExecDone);
    EXPECT_EQ(mark->toChangeNotify(other->Attr_Name(), nobody), Action::ExecDone);
    EXPECT_EQ(mark->toChangeNotify(mark->Attr_Name(), nobody), Action::ExecDone);  // no new value
    EXPECT_EQ(mark->Attr_Name().lookupNotifyInfo(typeid(InfoFailed)), nullptr);
    PlainObservable plain;
    EXPECT_EQ(mark->toChangeNotify(plain, nobody), Action::ExecUnchanged);
}

TEST(NameGuard, IsOneTemporaryPreObserverOfPriorityHundred) {
    const auto container = AttrContainer::create();
    ASSERT_EQ(container->Attr_Name().getNumPreObservers(), 1u);
    const ObserverPath& path = container->Attr_Name().getPath(0);
    EXPECT_EQ(path.getPriority(), 100);
    EXPECT_TRUE(path.isTemporary());
    ASSERT_TRUE(path.getAction().has_value());
    EXPECT_EQ(path.getAction()->get().getToken(), 1u);
    EXPECT_EQ(&path.getObserver()->get(), container.get());
}
