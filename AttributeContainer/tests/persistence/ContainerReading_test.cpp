// What a container takes out of a stream.
#include <AttributeContainer/kVAttrContainer.h>

#include <AttributeContainer/ModelFormat.h>

#include "support/BlockText.h"
#include "support/Containers.h"
#include "support/ObserverActors.h"
#include "support/Streams.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

std::string valueOf(const AttrContainer& container, const std::string& name) {
    const auto attribute = container.getAttribute(name).lock();
    return attribute ? attribute->getValueString() : "(missing)";
}

// The block of one attribute in that of a container.
std::string inContainer(const std::string& blocks) {
    return "\nAttrContainer { \n" + blocks + "}\n";
}

/// Counts how often it is told that a read begins.
class Prepared : public ContainerClass<Prepared, AttrContainer, "Prepared"> {
public:
    using Block::Block;

    void initRead() override {
        order.push_back(getName());
        Block::initRead();
    }

    static inline std::vector<std::string> order;
};

}  // namespace

TEST(ContainerReading, NeedsAContext) {
    std::istringstream in(inContainer(""));
    EXPECT_EQ(codeOf(AttrContainer::create()->readFrom(in, nullptr)), ErrorCode::ContextMissing);
    EXPECT_EQ(in.tellg(), std::streampos(0));
}

TEST(ContainerReading, TakesTheValuesOfItsOwnAttributes) {
    const auto mark = Mark::create();
    EXPECT_EQ(readText(*mark, R"(
AttrContainer { 
Attr<int> { 
Name "Count"
Value 5
Write 1
}
Attr<String> { 
Name "Label"
Value "a b"
}
})"),
              std::nullopt);
    EXPECT_EQ(mark->Count(), 5);
    EXPECT_TRUE(mark->Attr_Count().hasWriteFlag());
    EXPECT_EQ(mark->Label(), "a b");
    EXPECT_EQ(mark->Height(), 1.75);  // what the stream does not name keeps its value
    EXPECT_EQ(mark->getNumAttributes(), 4u);
}

TEST(ContainerReading, TakesNothingOfOneAttributeIntoTheNextOneOfItsType) {
    const auto count = [](const std::string& content) {
        return "Attr<int> { \nName \"Count\"\n" + content + "}\n";
    };
    const auto label = [](const std::string& content) {
        return "Attr<String> { \nName \"Label\"\n" + content + "}\n";
    };
    const auto mark = Mark::create();
    EXPECT_EQ(readText(*mark, inContainer(count("Value 5\n") + label("Value \"a b\"\n"))),
              std::nullopt);
    EXPECT_EQ(mark->Count(), 5);
    EXPECT_EQ(mark->Label(), "a b");
    const std::string longText(5000, 'x');
    EXPECT_EQ(readText(*mark, inContainer(count("Value 6\nWrite 1\n") + count("") +
                                          label("Value \"" + longText + "\"\n") + label(""))),
              std::nullopt);
    EXPECT_EQ(mark->Count(), 0);
    EXPECT_FALSE(mark->Attr_Count().hasWriteFlag());
    EXPECT_EQ(mark->Label(), "");
    EXPECT_EQ(readText(*mark, inContainer(count("Value 7\n") +
                                          "Attr<int> { \nName \"Other\"\nValue 8\n}\n" +
                                          "Attr<int> { \nName \"Another\"\n}\n")),
              std::nullopt);
    EXPECT_EQ(mark->Count(), 7);
    EXPECT_EQ(valueOf(*mark, "Other"), "8");
    EXPECT_EQ(valueOf(*mark, "Another"), "0");
}

TEST(ContainerReading, GoesByTheNameAndNotByTheOrder) {
    const auto mark = Mark::create();
    EXPECT_EQ(readText(*mark, inContainer("Attr<int> { \nName \"Count\"\nValue 5\n}\n"
                                          "Attr<String> { \nName \"Name\"\nValue \"north\"\n}\n")),
              std::nullopt);
    EXPECT_EQ(mark->Count(), 5);
    EXPECT_EQ(mark->getName(), "north");
}

TEST(ContainerReading, TakesABlockWithoutAValueForTheDefault) {
    const auto mark = Mark::create();
    EXPECT_EQ(readText(*mark, inContainer("Attr<int> { \nName \"Count\"\n}\n")), std::nullopt);
    EXPECT_EQ(mark->Count(), 0);
}

TEST(ContainerReading, NotifiesOfItsChanges) {
    const auto mark = Mark::create();
    const auto counter = watch(mark->Attr_Count());
    readText(*mark, inContainer("Attr<int> { \nName \"Count\"\nValue 5\n}\n"));
    EXPECT_EQ(counter->asked, 1);
    EXPECT_EQ(counter->told, 1);
}

TEST(ContainerReading, GoesOnWhereAnObserverReadsAStreamOfItsOwn) {
    const auto mark = Mark::create();
    const auto reader = watch<Actor>(mark->Attr_Count());
    const auto other = Mark::create();
    reader->after = [&](Observable&, Observer::Initiator&) {
        std::istringstream in(containerBlock(attributeBlock("double", "Height", "2.5")));
        EXPECT_EQ(codeOf(other->readFrom(in, std::make_shared<const ReadContextBase>())),
                  std::nullopt);
    };

    EXPECT_EQ(readText(*mark, containerBlock(attributeBlock("int", "Count", "5") +
                                             attributeBlock("String", "Label", "\"a\""))),
              std::nullopt);

    EXPECT_EQ(mark->Count(), 5);
    EXPECT_EQ(mark->Label(), "a");
    EXPECT_EQ(other->Height(), 2.5);
}

TEST(ContainerReading, KeepsItsNameWhereThatOfTheStreamIsInvalid) {
    const auto mark = Mark::create();
    EXPECT_EQ(readText(*mark, inContainer("Attr<String> { \nName \"Name\"\nValue \"a b\"\n}\n")),
              std::nullopt);
    EXPECT_EQ(mark->getName(), "Mark");
}

TEST(ContainerReading, ConvertsAnotherTypeThroughText) {
    const auto mark = Mark::create();
    EXPECT_EQ(readText(*mark, inContainer("Attr<int> { \nName \"Height\"\nValue 3\n}\n"
                                          "Attr<double> { \nName \"Label\"\nValue 2.5\n}\n"
                                          "Attr<String> { \nName \"Count\"\nValue \"9\"\n}\n")),
              std::nullopt);
    EXPECT_EQ(mark->Height(), 3.0);
    EXPECT_EQ(mark->Label(), "2.5");
    EXPECT_EQ(mark->Count(), 9);
}

TEST(ContainerReading, TakesAnUnknownAttributeForACustomOne) {
    const auto mark = Mark::create();
    EXPECT_EQ(readText(*mark, inContainer("Attr<DVector> { \nName \"Depths\"\nValue { 1 2 } \n"
                                          "Write 1\n}\n")),
              std::nullopt);

    const auto depths = mark->getAttribute("Depths").lock();
    ASSERT_NE(depths, nullptr);
    EXPECT_EQ(depths->getClassName(), "Attr<DVector>");
    EXPECT_EQ(depths->getValueString(), "{ 1 2 } ");
    EXPECT_EQ(depths->getToken(), 4u);
    EXPECT_TRUE(depths->hasWriteFlag());
    EXPECT_FALSE(depths->hasDefinitionFlag());
}

TEST(ContainerReading, TakesACustomAttributeThatIsThereForTheTarget) {
    const auto mark = Mark::create();
    const auto depth = addCustom(*mark, "Depth", 3);
    readText(*mark, inContainer("Attr<int> { \nName \"Depth\"\nValue 8\n}\n"));
    EXPECT_EQ(depth->get(), 8);
    EXPECT_EQ(mark->getNumAttributes(), 5u);
}

TEST(ContainerReading, MakesANameForACustomAttribute) {
    const auto mark = Mark::create();
    addNamedField(*mark, "inner");
    readText(*mark, inContainer("Attr<int> { \nName \"inner\"\nValue 1\n}\n"
                                "Attr<int> { \nName \"a b\"\nValue 2\n}\n"));
    EXPECT_EQ(valueOf(*mark, "inner1"), "1");
    EXPECT_EQ(valueOf(*mark, "Mark"), "2");
}

TEST(ContainerReading, DropsAnAttributeWithAnEmptyName) {
    const auto mark = Mark::create();
    EXPECT_EQ(readText(*mark, inContainer("Attr<int> { \nName \"\"\nValue 1\n}\n"
                                          "Attr<int> { \nName \"Count\"\nValue 2\n}\n")),
              std::nullopt);
    EXPECT_EQ(mark->getNumAttributes(), 4u);
    EXPECT_EQ(mark->Count(), 2);
}

TEST(ContainerReading, CopiesTheWriteFlagAndTheMarkAndKeepsTheDefinitionFlag) {
    const auto mark = Mark::create();
    mark->Attr_Count().setWriteFlag(true);
    mark->Attr_Count().setMarked(true);
    readText(*mark, inContainer("Attr<int> { \nName \"Count\"\nValue 5\n}\n"));
    EXPECT_EQ(mark->Attr_Count().getFlags(), Attribute::Flags::definitionFlag);
}

TEST(ContainerReading, LeavesAnUnmarkedAttributeWhereItReadsMarkedOnes) {
    const auto mark = Mark::create();
    mark->Attr_Count().setMarked(true);
    const auto context = std::make_shared<ReadContextBase>();
    context->setReadMarked(true);

    EXPECT_EQ(readText(*mark, inContainer("Attr<int> { \nName \"Count\"\nValue 5\n}\n"
                                          "Attr<double> { \nName \"Height\"\nValue 9\n}\n"
                                          "Attr<int> { \nName \"Depth\"\nValue 1\n}\n"),
                       context),
              std::nullopt);

    EXPECT_EQ(mark->Count(), 5);
    EXPECT_FALSE(mark->Attr_Count().isMarked());  // the stream has no marks
    EXPECT_EQ(mark->Height(), 1.75);
    EXPECT_EQ(valueOf(*mark, "Depth"), "1");
}

TEST(ContainerReading, TakesBothWordsOfATypeForTheSame) {
    const auto container = AttrContainer::create();
    readText(*container, inContainer("Attr<int32_t> { \nName \"A\"\nValue 1\n}\n"
                                     "Attr<Int32Vector> { \nName \"B\"\nValue { 1 } \n}\n"));
    EXPECT_EQ(container->getAttribute("A").lock()->getClassName(), "Attr<int>");
    EXPECT_EQ(container->getAttribute("B").lock()->getClassName(), "Attr<IntVector>");
}

TEST(ContainerReading, LeavesTheEndOfItsBlockToItsCaller) {
    std::istringstream in(inContainer("") + "Next ");
    ModelInFormat outer(in);
    const auto container = AttrContainer::create();

    EXPECT_EQ(codeOf(container->readFrom(in, std::make_shared<const ReadContextBase>())),
              std::nullopt);

    EXPECT_EQ(outer.getKeyword(), "}");
    outer.nextKeyword();
    EXPECT_EQ(outer.getKeyword(), "Next");
}

TEST(ContainerReading, EndsQuietlyWithTheInput) {
    const auto mark = Mark::create();
    EXPECT_EQ(readText(*mark, ""), std::nullopt);
    EXPECT_EQ(readText(*mark, "\nAttrContainer { \nAttr<int> { \nName \"Count\"\nValue 5"),
              std::nullopt);
    EXPECT_EQ(mark->Count(), 5);
}

TEST(ContainerReading, PreparesItsFieldsInTheirOrder) {
    const auto root = Prepared::create();
    for (const char* name : {"a", "b"}) addNamedField<Prepared>(*root, name)->name(name);
    addNamedField<Prepared>(*root->getField("a").lock(), "a1")->name("a1");
    root->setField(root->getFieldToken(*addNamedField<Prepared>(*root, "gone")), nullptr);
    Prepared::order.clear();

    root->initRead();

    EXPECT_EQ(Prepared::order, (std::vector<std::string>{"Prepared", "a", "a1", "b"}));
}

// What it does not understand ---------------------------------------------------------------------

TEST(ContainerReading, WarnsOfAnUnknownWordAndGoesOn) {
    const auto mark = Mark::create();
    std::istringstream in(inContainer("Colour \nAttr<int> { \nName \"Count\"\nValue 5\n}\n"));

    const auto error = mark->readFrom(in, std::make_shared<const ReadContextBase>());

    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->getCode(), ErrorCode::UnknownAttributeType);
    EXPECT_TRUE(error->isWarning());
    ASSERT_EQ(error->getReasons().size(), 1u);
    const auto* const reason = dynamic_cast<const QOR::ErrorHandling::ErrorWithCode<ErrorCode>*>(
        error->getReasons()[0].get());
    ASSERT_NE(reason, nullptr);
    EXPECT_EQ(reason->getCode(), ErrorCode::ParseFailed);
    EXPECT_EQ(mark->Count(), 5);
    ModelInFormat::cleanPropagateKeyword();
}

TEST(ContainerReading, CountsTheWordsOfFieldsAsUnknown) {
    for (const char* word : {"FieldHandle", "FieldToken", "ReferenceToShared", "InstanceID"}) {
        const auto mark = Mark::create();
        EXPECT_EQ(readText(*mark, inContainer(std::string(word) +
                                              " \nAttr<int> { \nName \"Count\"\nValue 5\n}\n")),
                  ErrorCode::UnknownAttributeType)
            << word;
        EXPECT_EQ(mark->Count(), 5) << word;
    }
}

TEST(ContainerReading, PassesAnyWordBetweenATypeAndItsName) {
    const auto mark = Mark::create();
    EXPECT_EQ(readText(*mark, inContainer("Attr<int> { \nColour\nFieldToken\n"
                                          "Name \"Count\"\nValue 5\n}\n")),
              std::nullopt);
    EXPECT_EQ(mark->Count(), 5);
}

TEST(ContainerReading, TakesTheLastTypeAheadOfAName) {
    const auto container = AttrContainer::create();
    readText(*container, inContainer("Attr<int> { \nAttr<bool> { \nName \"A\"\nValue true\n}\n"));
    EXPECT_EQ(container->getAttribute("A").lock()->getClassName(), "Attr<bool>");
}

TEST(ContainerReading, EndsAtANameWithoutAType) {
    const auto mark = Mark::create();
    EXPECT_EQ(readText(*mark, inContainer("Attr<int> { \nName \"Count\"\nValue 5\n}\n"
                                          "Name \"Height\"\nValue 1\n")),
              ErrorCode::AttributeNotCreated);
    EXPECT_EQ(mark->Count(), 5);  // what was read stays
}

TEST(ContainerReading, EndsAtATypeThatIsNotKnown) {
    const auto mark = Mark::create();
    EXPECT_EQ(readText(*mark, inContainer("Attr<Foo> { \nName \"Count\"\nValue 5\n}\n")),
              ErrorCode::AttributeNotCreated);
    EXPECT_EQ(mark->Count(), 7);
}

TEST(ContainerReading, EndsAtATypeThatNoStreamCanMake) {
    const auto container = AttrContainer::create();
    EXPECT_EQ(readText(*container,
                       inContainer("Attr<ScanPt> { \nName \"P\"\nValue 1 2 3 4 5 6 7\n}\n")),
              ErrorCode::AttributeNotCreated);
}

TEST(ContainerReading, EndsAtAnUnknownWordInAnAttribute) {
    const auto mark = Mark::create();
    EXPECT_EQ(readText(*mark, inContainer("Attr<int> { \nName \"Count\"\nColour 5\n}\n")),
              ErrorCode::ParseFailed);
    EXPECT_EQ(mark->Count(), 7);
    // Nothing of it is left for the next read of the thread.
    EXPECT_EQ(readText(*mark, inContainer("Attr<int> { \nName \"Count\"\nValue 5\n}\n")),
              std::nullopt);
}

TEST(ContainerReading, EndsAtTheFirstNameOfTheXmlForm) {
    const auto mark = Mark::create();
    const auto format = std::make_shared<WriteContextBase>(ModelFormat::XmlV2);
    const auto context = std::make_shared<ReadContextBase>();
    context->setFormat(ModelFormat::XmlV2);

    EXPECT_EQ(readText(*mark, written(*mark, format), context), ErrorCode::AttributeNotCreated);
}

TEST(ContainerReading, MovesOnOverEmptyKeywordsOfTheXmlForm) {
    const auto container = AttrContainer::create();
    const auto context = std::make_shared<ReadContextBase>();
    context->setFormat(ModelFormat::XmlV2);
    EXPECT_EQ(readText(*container, "<AttrContainer>\nabc\n</AttrContainer>\n", context),
              ErrorCode::UnknownAttributeType);
}

TEST(ContainerReading, EndsItsBlockBehindUnknownWords) {
    const auto container = AttrContainer::create();
    std::istringstream in(inContainer("Colour Shape "));
    const auto error = container->readFrom(in, std::make_shared<const ReadContextBase>());
    EXPECT_EQ(codeOf(error), ErrorCode::UnknownAttributeType);
}

// There and back ----------------------------------------------------------------------------------

TEST(ContainerRoundTrip, GivesTheSameTextAgain) {
    const auto pole = LongPole::create();
    pole->Mark().lock()->Label("a \"b\"\n");
    pole->Top().lock()->Height(0);
    pole->rmField("Bottom");
    addCustom(*pole, "Depth", 0.125);
    addNamedField<TallMark>(*pole, "extra")->Count(-3);
    const std::string text = written(*pole);
    const auto copy = LongPole::create();

    EXPECT_EQ(readText(*copy, text), std::nullopt);

    copy->rmField("Bottom");  // the class makes it, whether or not the stream has it
    EXPECT_EQ(written(*copy), text);
    EXPECT_EQ(copy->Mark().lock()->Label(), "a \"b\"\n");
    EXPECT_EQ(copy->Top().lock()->Height(), 0.0);
}
