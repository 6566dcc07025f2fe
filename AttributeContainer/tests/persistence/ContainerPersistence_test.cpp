// What a container writes.
#include <AttributeContainer/kVAttrContainer.h>

#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/UnknownAttrContainer.h>

#include "support/Containers.h"
#include "support/NamelessContainer.h"
#include "support/Streams.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

/// Opens the writing of one field.
class Opened : public ContainerClass<Opened, AttrContainer, "Opened"> {
public:
    using Block::Block;
    using Block::writeField;
};

std::shared_ptr<WriteContextBase> textContext() { return std::make_shared<WriteContextBase>(); }

std::shared_ptr<WriteContextBase> markedOnly() {
    const auto context = textContext();
    context->setWriteOnlyMarked(true);
    return context;
}

}  // namespace

TEST(ContainerWriting, NeedsAContext) {
    const auto container = Opened::create();
    std::ostringstream out;
    EXPECT_EQ(codeOf(container->writeTo(out, nullptr)), ErrorCode::ContextMissing);
    EXPECT_EQ(codeOf(container->writeField(out, 0, nullptr)), ErrorCode::ContextMissing);
    EXPECT_EQ(out.str(), "");
}

TEST(ContainerWriting, WritesItsAttributesInTheOrderOfTheirTokens) {
    const auto mark = TallMark::create();
    mark->Label("a b");
    mark->Count(5);
    mark->Attr_Count().setWriteFlag(true);
    mark->Cached(9);  // never stored
    addCustom(*mark, "Depth", 0.5);

    EXPECT_EQ(written(*mark), R"(
AttrContainer { 
Attr<String> { 
Name "Name"
Value "TallMark"
}
Attr<String> { 
Name "Label"
Value "a b"
}
Attr<double> { 
Name "Height"
Value 1.75
}
Attr<int> { 
Name "Count"
Value 5
Write 1
}
Attr<bool> { 
Name "Lit"
Value true
}
Attr<double> { 
Name "Depth"
Value 0.5
}
})");
}

TEST(ContainerWriting, WritesTheBlockOfADefaultWithoutAValue) {
    const auto mark = nameless();
    addCustom(*mark, "Depth", 0);

    EXPECT_EQ(written(*mark), R"(
AttrContainer { 
Attr<String> { 
Name "Name"
}
Attr<int> { 
Name "Depth"
}
})");
    const auto context = textContext();
    context->setWriteDefaultValues(true);
    EXPECT_EQ(written(*mark, context), R"(
AttrContainer { 
Attr<String> { 
Name "Name"
}
Attr<int> { 
Name "Depth"
Value 0
}
})");
}

TEST(ContainerWriting, WritesItsFieldsBehindItsAttributes) {
    const auto container = nameless();
    const auto first = nameless();
    const auto inner = nameless();
    ASSERT_TRUE(container->addField(first, "first one", 0));
    ASSERT_TRUE(container->addField(nameless(), "gone", 0));
    ASSERT_TRUE(container->addField(Mark::create(), "second", 0));
    ASSERT_TRUE(first->addField(inner, "inner", 0));
    container->setField(1, nullptr);
    std::dynamic_pointer_cast<Mark>(container->getField("second").lock())->Height(0);

    EXPECT_EQ(written(*container), R"(
AttrContainer { 
Attr<String> { 
Name "Name"
}
SubContainer { 
"AttrContainer" "first one"
AttrContainer { 
Attr<String> { 
Name "Name"
}
SubContainer { 
"AttrContainer" "inner"
AttrContainer { 
Attr<String> { 
Name "Name"
}
}
}
}
}
SubContainer { 
"Mark" "second"
AttrContainer { 
Attr<String> { 
Name "Name"
Value "Mark"
}
Attr<String> { 
Name "Label"
Value "none"
}
Attr<double> { 
Name "Height"
}
Attr<int> { 
Name "Count"
Value 7
}
}
}
})");
}

TEST(ContainerWriting, LeavesItsFieldsOutWhereItIsTold) {
    const auto container = AttrContainer::create();
    addNamedField(*container, "inner");
    const auto context = textContext();
    context->setWriteFields(false);

    EXPECT_EQ(written(*container, context), written(*AttrContainer::create()));
}

TEST(ContainerWriting, LeavesOutAnAttributeThatHasNoName) {
    /// Declares a row without a key.
    class Keyless : public ContainerClass<Keyless, AttrContainer, "Keyless"> {
        friend Block;

    public:
        using Block::Block;

    protected:
        void init(CreateType type, Source source) {
            Block::init(type, source);
            createAttributes({{1, "", AttrType{0}, 18}}, type, source);
        }
    };
    const auto keyless = Keyless::create();
    ASSERT_EQ(keyless->getNumAttributes(), 2u);
    EXPECT_EQ(written(*keyless), R"(
AttrContainer { 
Attr<String> { 
Name "Name"
Value "Keyless"
}
})");
}

TEST(ContainerWriting, NamesTheTypeThatAnUnknownFieldStandsFor) {
    const auto container = nameless();
    const auto unknown = UnknownAttrContainer::create();
    unknown->setUnknownTypeName("survey::Prism");
    container->addField(unknown, "prism", 0);

    EXPECT_NE(written(*container).find("SubContainer { \n\"survey::Prism\" \"prism\"\n"),
              std::string::npos);
}

TEST(ContainerWriting, WritesAFieldWithoutANameUnderAnEmptyOne) {
    const auto container = nameless();
    container->addField(nameless(), "x", 0);
    container->addField(nameless(), "x", AddFlags::SkipNameTest);
    EXPECT_NE(written(*container).find("\"AttrContainer\" \"\"\n"), std::string::npos);
}

TEST(ContainerWriting, TellsThatTheStreamFailed) {
    std::ostringstream out;
    out.setstate(std::ios::badbit);
    EXPECT_EQ(codeOf(AttrContainer::create()->writeTo(out, textContext())),
              ErrorCode::StreamFailed);
    EXPECT_EQ(codeOf(nameless()->writeTo(out, textContext())), ErrorCode::StreamFailed);
}

TEST(ContainerWriting, WritesTheXmlForm) {
    const auto container = nameless();
    addCustom(*container, "Count", 5);
    container->addField(nameless(), "child", 0);

    EXPECT_EQ(written(*container, std::make_shared<WriteContextBase>(ModelFormat::XmlV2)),
              R"(<AttrContainer>
<Attr type="String>">
<Name value="'Name'" />
</Attr>
<Attr type="int>">
<Name value="'Count'" />
<Value value="5" />
</Attr>
<SubContainer>
<AttrContainer value="'child'" />
<AttrContainer>
<Attr type="String>">
<Name value="'Name'" />
</Attr>
</AttrContainer>
</SubContainer>
</AttrContainer>
)");
}

// One field ---------------------------------------------------------------------------------------

TEST(FieldWriting, NeedsAFieldBehindTheToken) {
    const auto container = Opened::create();
    addNamedField(*container, "inner");
    container->setField(0, nullptr);
    std::ostringstream out;
    for (const std::uint64_t token : {std::uint64_t{0}, std::uint64_t{1}, AttrContainer::noToken})
        EXPECT_EQ(codeOf(container->writeField(out, token, textContext())),
                  ErrorCode::ElementUnresolved);
    EXPECT_EQ(out.str(), "");
}

// Marks -------------------------------------------------------------------------------------------

TEST(MarkedWriting, LeavesOutWhatIsNotMarked) {
    const auto mark = Mark::create();
    mark->Attr_Height().setMarked(true);

    EXPECT_EQ(written(*mark, markedOnly()), R"(
AttrContainer { 
Attr<double> { 
Name "Height"
Value 1.75
}
})");
}

TEST(MarkedWriting, LeavesOutAFieldWithoutAMarkedAttribute) {
    const auto container = AttrContainer::create();
    const auto plain = addNamedField(*container, "plain");
    const auto marked = addNamedField(*container, "marked");
    const auto deep = addNamedField(*addNamedField(*container, "outer"), "deep");
    marked->Attr_Name().setMarked(true);
    deep->Attr_Name().setMarked(true);

    EXPECT_EQ(written(*container, markedOnly()), R"(
AttrContainer { 
SubContainer { 
"AttrContainer" "marked"
AttrContainer { 
Attr<String> { 
Name "Name"
Value "AttrContainer"
}
}
}
SubContainer { 
"AttrContainer" "outer"
AttrContainer { 
SubContainer { 
"AttrContainer" "deep"
AttrContainer { 
Attr<String> { 
Name "Name"
Value "AttrContainer"
}
}
}
}
}
})");
}
