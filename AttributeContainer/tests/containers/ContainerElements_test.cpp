// Adding elements to a container, and taking them out again.
#include <AttributeContainer/kVAttrContainer.h>

#include "support/Containers.h"
#include "support/FreeAttribute.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

constexpr std::uint64_t none = AttrContainer::noToken;

std::vector<std::string> callsOf(const Guest& guest) {
    std::vector<std::string> names;
    for (const auto& call : guest.calls) names.push_back(call.what);
    return names;
}
using Calls = std::vector<std::string>;

}  // namespace

TEST(AddFlags, HaveTheirValues) {
    EXPECT_EQ(AddFlags::SkipNameTest, 4);
    EXPECT_EQ(AddFlags::MakeNameUnique, 16);
}

// Custom attributes -------------------------------------------------------------------------------

TEST(AddAttribute, PutsTheAttributeIntoTheContainer) {
    const auto mark = Mark::create();
    const auto depth = attributeOf(3);

    EXPECT_EQ(mark->addAttribute(depth, "Depth").lock(), depth);

    EXPECT_EQ(mark->getAttribute("Depth").lock(), depth);
    EXPECT_EQ(mark->getAttribute(4).lock(), depth);
    EXPECT_EQ(mark->getAttrToken(*depth), 4u);
    EXPECT_EQ(mark->getAttrName(4), "Depth");
    EXPECT_EQ(&depth->getLocation()->get(), mark.get());
}

TEST(AddAttribute, RefusesAnInvalidName) {
    const auto mark = Mark::create();
    for (const char* name : {"", "a b", "a/b", "ä"})
        EXPECT_TRUE(mark->addAttribute(attributeOf(3), name).expired()) << name;
    EXPECT_EQ(mark->getNumAttributes(), 4u);
}

TEST(AddAttribute, RefusesANameThatIsTakenAndLeavesNoListBehind) {
    const auto mark = Mark::create();
    addNamedField(*mark, "inner");
    const auto depth = attributeOf(3);

    EXPECT_TRUE(mark->addAttribute(depth, "Height").expired());
    EXPECT_TRUE(mark->addAttribute(depth, "inner").expired());
    EXPECT_EQ(mark->getNumAttributes(), 4u);
    EXPECT_FALSE(depth->getLocation().has_value());

    addCustom(*mark, "Depth", 1);
    EXPECT_TRUE(mark->addAttribute(depth, "Depth").expired());
    EXPECT_EQ(mark->getNumAttributes(), 5u);
}

TEST(AddAttribute, RefusesAHardCodedAttributeAndNone) {
    const auto mark = Mark::create();
    const auto hardCoded = mark->Attr_Height().duplicate(CreateDeep, *mark);

    EXPECT_TRUE(mark->addAttribute(hardCoded, "Second").expired());
    EXPECT_TRUE(mark->addAttribute(nullptr, "Third").expired());
    EXPECT_EQ(mark->getNumAttributes(), 4u);
}

TEST(RmAttribute, RemovesACustomAttribute) {
    const auto mark = Mark::create();
    const auto depth = addCustom(*mark, "Depth", 3);

    EXPECT_TRUE(mark->rmAttribute("Depth"));

    EXPECT_TRUE(mark->getAttribute("Depth").expired());
    EXPECT_EQ(mark->getNumAttributes(), 4u);
    EXPECT_EQ(depth->getName(), "");
    EXPECT_EQ(depth->getToken(), none);
}

TEST(RmAttribute, LetsTheLastOneTakeOverTheToken) {
    const auto mark = Mark::create();
    addCustom(*mark, "First", 1);
    const auto middle = addCustom(*mark, "Middle", 2);
    const auto last = addCustom(*mark, "Last", 3);
    const std::uint64_t token = middle->getToken();

    EXPECT_TRUE(mark->rmAttribute("Middle"));

    EXPECT_EQ(last->getToken(), token);
    EXPECT_EQ(mark->getAttrToken("Last"), token);
    EXPECT_EQ(mark->getAttrName(token), "Last");
    EXPECT_EQ(mark->getAttribute(token).lock(), last);
}

TEST(RmAttribute, RemovesNoOtherAttribute) {
    const auto mark = Mark::create();
    EXPECT_FALSE(mark->rmAttribute("Depth"));
    addCustom(*mark, "Depth", 3);
    EXPECT_FALSE(mark->rmAttribute("Height"));
    EXPECT_FALSE(mark->rmAttribute("Missing"));
    EXPECT_FALSE(mark->rmAttribute(""));
    EXPECT_EQ(mark->getNumAttributes(), 5u);
}

TEST(RmAttribute, LetsTheAttributeBeAddedElsewhere) {
    const auto mark = Mark::create();
    const auto other = AttrContainer::create();
    const auto depth = addCustom(*mark, "Depth", 3);

    mark->rmAttribute("Depth");

    EXPECT_EQ(other->addAttribute(depth, "Depth").lock(), depth);
    EXPECT_EQ(depth->getToken(), 1u);
}

TEST(RmAllCustomAttributes, RemovesThemAndAlwaysSucceeds) {
    const auto mark = Mark::create();
    EXPECT_TRUE(mark->rmAllCustomAttributes());
    const auto depth = addCustom(*mark, "Depth", 3);
    addCustom(*mark, "Width", 3);

    EXPECT_TRUE(mark->rmAllCustomAttributes());

    EXPECT_EQ(mark->getNumAttributes(), 4u);
    EXPECT_TRUE(mark->getAttribute("Depth").expired());
    EXPECT_EQ(depth->getToken(), none);
    EXPECT_EQ(addCustom(*mark, "Width", 4)->getToken(), 4u);
}

TEST(RmAllCustomAttributes, LeavesAnAttributeThatHasMovedOn) {
    const auto mark = Mark::create();
    const auto other = AttrContainer::create();
    const auto depth = addCustom(*mark, "Depth", 3);
    ASSERT_FALSE(other->addAttribute(depth, "Depth").expired());

    mark->rmAllCustomAttributes();

    EXPECT_EQ(&depth->getLocation()->get(), other.get());
    EXPECT_EQ(depth->getName(), "Depth");
}

// Adding fields -----------------------------------------------------------------------------------

TEST(AddField, PutsTheFieldIntoTheContainerAndTellsIt) {
    const auto container = AttrContainer::create();
    const auto guest = Guest::create();

    EXPECT_TRUE(container->addField(guest, "guest", 0));

    EXPECT_EQ(container->getField("guest").lock(), guest);
    EXPECT_EQ(container->getFieldToken("guest"), 0u);
    EXPECT_EQ(container->getFieldToken(*guest), 0u);
    EXPECT_EQ(container->getFieldName(0), "guest");
    EXPECT_EQ(guest->getName(), "Guest");
    EXPECT_EQ(callsOf(*guest), (Calls{"attach"}));
    EXPECT_EQ(guest->calls[0].parent.lock(), container);
}

TEST(AddField, RefusesNone) {
    const auto container = AttrContainer::create();
    EXPECT_FALSE(container->addField(nullptr, "guest", AddFlags::SkipNameTest));
    EXPECT_EQ(container->getNumFields(), 0u);
}

TEST(AddField, TakesTheFieldsOwnNameForAnEmptyOne) {
    const auto container = AttrContainer::create();
    const auto field = AttrContainer::create();
    field->name("own");

    EXPECT_TRUE(container->addField(field, "", 0));

    EXPECT_EQ(container->getFieldName(0), "own");
}

TEST(AddField, RefusesANameThatIsTaken) {
    const auto mark = Mark::create();
    const auto guest = Guest::create();
    addNamedField(*mark, "inner");

    EXPECT_FALSE(mark->addField(guest, "inner", 0));
    EXPECT_FALSE(mark->addField(guest, "Height", 0));
    EXPECT_EQ(mark->getNumFields(), 1u);
    EXPECT_TRUE(guest->calls.empty());
}

TEST(AddField, MakesANameUnique) {
    const auto mark = Mark::create();
    addNamedField(*mark, "inner");

    EXPECT_TRUE(mark->addField(AttrContainer::create(), "inner", AddFlags::MakeNameUnique));
    EXPECT_TRUE(mark->addField(AttrContainer::create(), "inner", AddFlags::MakeNameUnique));
    EXPECT_TRUE(mark->addField(AttrContainer::create(), "free", AddFlags::MakeNameUnique));

    EXPECT_EQ(mark->getFieldName(1), "inner1");
    EXPECT_EQ(mark->getFieldName(2), "inner2");
    EXPECT_EQ(mark->getFieldName(3), "free");
}

TEST(AddField, SkipsTheTestOfTheNameWhereItIsTold) {
    const auto container = AttrContainer::create();
    const auto first = addNamedField(*container, "inner");

    EXPECT_TRUE(container->addField(AttrContainer::create(), "inner",
                                    AddFlags::SkipNameTest | AddFlags::MakeNameUnique));

    EXPECT_EQ(container->getNumFields(), 2u);
    EXPECT_EQ(container->getField("inner").lock(), first);
    EXPECT_EQ(container->getFieldName(1), std::nullopt);
}

TEST(AddField, TakesANameThatIsNoValidOne) {
    const auto container = AttrContainer::create();
    EXPECT_TRUE(container->addField(AttrContainer::create(), "a b", 0));
    EXPECT_EQ(container->getFieldToken("a b"), 0u);
}

// Setting and replacing ---------------------------------------------------------------------------

TEST(SetField, ExchangesTheFieldOfASlotAndTellsBoth) {
    const auto container = AttrContainer::create();
    const auto old = addNamedField<Guest>(*container, "guest");
    const auto guest = Guest::create();

    EXPECT_TRUE(container->setField(0, guest));

    EXPECT_EQ(container->getField("guest").lock(), guest);
    EXPECT_EQ(callsOf(*old), (Calls{"attach", "detach"}));
    EXPECT_EQ(old->calls[1].parent.lock(), container);
    EXPECT_EQ(callsOf(*guest), (Calls{"attach"}));
    EXPECT_EQ(guest->calls[0].parent.lock(), container);
}

TEST(SetField, EmptiesASlot) {
    const auto container = AttrContainer::create();
    const auto old = addNamedField<Guest>(*container, "guest");

    EXPECT_TRUE(container->setField(0, nullptr));

    EXPECT_TRUE(container->getField("guest").expired());
    EXPECT_EQ(container->getFieldName(0), "guest");
    EXPECT_EQ(callsOf(*old), (Calls{"attach", "detach"}));
}

TEST(SetField, FillsADeclaredSlotThatIsEmpty) {
    const auto pole = Pole::create();
    pole->rmField("Top");
    const auto top = TallMark::create();
    EXPECT_TRUE(pole->setField(Pole::TopField, top));
    EXPECT_EQ(pole->Top().lock(), top);
}

TEST(SetField, RefusesATokenOutOfRange) {
    const auto container = AttrContainer::create();
    const auto guest = Guest::create();
    EXPECT_FALSE(container->setField(0, guest));  // no list yet
    addNamedField(*container, "inner");
    EXPECT_FALSE(container->setField(1, guest));
    EXPECT_FALSE(container->setField(none, guest));
    EXPECT_TRUE(guest->calls.empty());
}

TEST(ReplaceField, PutsAFieldInThePlaceOfAnother) {
    const auto container = AttrContainer::create();
    const auto old = addNamedField<Guest>(*container, "guest");
    const auto guest = Guest::create();

    EXPECT_TRUE(container->replaceField(old, guest));

    EXPECT_EQ(container->getField("guest").lock(), guest);
    EXPECT_EQ(callsOf(*old), (Calls{"attach", "detach"}));
    EXPECT_EQ(callsOf(*guest), (Calls{"attach"}));
}

TEST(ReplaceField, CallsNoHookWhereNothingWasReplaced) {
    const auto container = AttrContainer::create();
    const auto old = Guest::create();
    const auto guest = Guest::create();

    EXPECT_FALSE(container->replaceField(old, guest));  // no list yet
    addNamedField(*container, "inner");
    EXPECT_FALSE(container->replaceField(old, guest));
    EXPECT_FALSE(container->replaceField(nullptr, guest));
    EXPECT_FALSE(container->replaceField(old, nullptr));
    EXPECT_TRUE(old->calls.empty());
    EXPECT_TRUE(guest->calls.empty());
}
