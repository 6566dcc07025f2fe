// What an export leaves out for its options, and what it gives where something fails.
#include <AttributeContainer/XMLSerialization.h>

#include <AttributeContainer/Object.h>

#include "persistence/Exporting.h"
#include "support/BareAttribute.h"
#include "support/Containers.h"
#include "support/Streams.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// A custom attribute whose writing gives an error of some code.
class Failing : public BareAttribute, public CustomAttribute {
public:
    explicit Failing(ErrorCode code) : code(code) {}

    ErrorPtr writeTo(std::ostream& stream, std::shared_ptr<const WriteContextBase>) const override {
        stream << "before";
        return makeError(__FILE__, __LINE__, code, "Failing::writeTo");
    }

private:
    ErrorCode code;
};

}  // namespace

TEST(XMLSerializationOptions, WritesOnlyTheRootTagsForARootThatIsNotMarked) {
    const auto root = named<Object>("root");
    const auto context = makeContext();
    context->setWriteOnlyMarkedObjects(true);

    EXPECT_EQ(exported(*root, context), head + foot);
}

TEST(XMLSerializationOptions, LeavesOutFieldsThatAreNotMarked) {
    const auto root = plain("root");
    root->Attr_Name().setMarked(true);
    const auto marked = addNamedField(*root, "marked");
    marked->name("marked");
    marked->Attr_Name().setMarked(true);
    const auto other = addNamedField(*root, "other");
    addNamedField(*other, "below")->Attr_Name().setMarked(true);
    const auto context = makeContext();
    context->setWriteOnlyMarkedObjects(true);

    EXPECT_EQ(exported(*root, context),
              head +
                  "<root type=\"AttrContainer\"><fields>\n"
                  "<marked type=\"AttrContainer\" fieldname=\"marked\"><fields>\n</fields>\n"
                  "<attrs>\n<Name type=\"String\">\"marked\"</Name>\n</attrs>\n</marked>\n"
                  "</fields>\n<attrs>\n<Name type=\"String\">\"root\"</Name>\n</attrs>\n"
                  "</root>\n" +
                  foot);
}

TEST(XMLSerializationOptions, LeavesOutAContainerThatHasNoNameToBeMarked) {
    const auto container = Hasty<AttrContainer>::make();
    const auto context = makeContext();
    context->setWriteOnlyMarkedObjects(true);

    EXPECT_EQ(exported(*container, context), head + foot);
}

TEST(XMLSerializationOptions, LeavesOutAttributesThatAreNotMarked) {
    const auto root = plain("root");
    addCustom(*root, "Count", 5)->setMarked(true);
    addCustom(*root, "Other", 6);
    const auto context = makeContext();
    context->setWriteOnlyMarked(true);

    EXPECT_EQ(exported(*root, context),
              head +
                  "<root type=\"AttrContainer\"><fields>\n</fields>\n<attrs>\n"
                  "<Count type=\"int\">5</Count>\n</attrs>\n</root>\n" +
                  foot);
}

TEST(XMLSerializationOptions, NeedsAContext) {
    std::ostringstream stream;

    EXPECT_EQ(codeOf(XMLSerialization::to(stream, *plain("x"), nullptr)),
              ErrorCode::ContextMissing);

    EXPECT_EQ(stream.str(), "");
}

TEST(XMLSerializationOptions, ClosesTheRootAlsoWhereAnAttributeFails) {
    const auto container = plain("x");
    ASSERT_FALSE(container->addAttribute(std::make_shared<Failing>(ErrorCode::ParseFailed), "Bad")
                     .expired());
    addCustom(*container, "Behind", 1);
    std::ostringstream stream;

    const auto error = XMLSerialization::to(stream, *container, makeContext());

    EXPECT_EQ(codeOf(error), ErrorCode::ParseFailed);
    EXPECT_EQ(stream.str(), head +
                                "<x type=\"AttrContainer\"><fields>\n</fields>\n<attrs>\n"
                                "<Name type=\"String\">\"x\"</Name>\n"
                                "<Bad type=\"but\">before" +
                                foot);
}

TEST(XMLSerializationOptions, EndsAtAFieldThatFails) {
    const auto container = plain("x");
    const auto field = addField(*container, "part");
    ASSERT_FALSE(
        field->addAttribute(std::make_shared<Failing>(ErrorCode::ParseFailed), "Bad").expired());
    addField(*container, "behind");
    std::ostringstream stream;

    const auto error = XMLSerialization::to(stream, *container, makeContext());

    EXPECT_EQ(codeOf(error), ErrorCode::ParseFailed);
    EXPECT_EQ(stream.str(), head +
                                "<x type=\"AttrContainer\"><fields>\n"
                                "<part type=\"AttrContainer\" fieldname=\"part\"><fields>\n"
                                "</fields>\n<attrs>\n<Name type=\"String\">\"part\"</Name>\n"
                                "<Bad type=\"but\">before" +
                                foot);
}

TEST(XMLSerializationOptions, GivesTheFirstWarningAndGoesOn) {
    const auto container = plain("x");
    const auto field = addNamedField(*container, "part");
    field->name("part");
    ASSERT_FALSE(
        field->addAttribute(std::make_shared<Failing>(ErrorCode::ElementSkipped), "Odd").expired());
    ASSERT_FALSE(
        container->addAttribute(std::make_shared<Failing>(ErrorCode::AttributeNotMarked), "Odd")
            .expired());
    addCustom(*container, "Behind", 1);
    std::ostringstream stream;

    const auto error = XMLSerialization::to(stream, *container, makeContext());

    EXPECT_EQ(codeOf(error), ErrorCode::ElementSkipped);
    EXPECT_TRUE(
        stream.str().ends_with("<Odd type=\"but\">before</Odd>\n"
                               "<Behind type=\"int\">1</Behind>\n"
                               "</attrs>\n</x>\n</Root>"));
}

TEST(XMLSerializationOptions, TellsOfAStreamThatTakesNoMore) {
    std::ostringstream stream;
    stream.setstate(std::ios::failbit);
    const auto unmarked = makeContext();
    unmarked->setWriteOnlyMarkedObjects(true);

    EXPECT_EQ(codeOf(XMLSerialization::to(stream, *plain("x"), makeContext())),
              ErrorCode::StreamFailed);
    EXPECT_EQ(codeOf(XMLSerialization::to(stream, *plain("x"), unmarked)), ErrorCode::StreamFailed);
}
