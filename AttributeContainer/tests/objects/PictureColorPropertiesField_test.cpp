#include <AttributeContainer/PictureColorPropertiesField.h>
#include <AttributeContainer/TMOLinearField.h>

#include "support/ClassTable.h"
#include "support/ObserverActors.h"
#include "support/Streams.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace QOR::AttributeContainer::Testing {

namespace {

using Package = PictureColorPropertiesFieldDataPackage;

#define ROW(...) QOR_CLASS_ROW(PictureColorPropertiesField, __VA_ARGS__)
const ClassRow rows[] = {
    ROW(1, Event, "Attr<String>", 18, {""}),
};
#undef ROW

// Remembers who changed what it is told of.
class SeesInitiator : public Counter {
public:
    Action::ExecReturn changedNotify(Observable& observable, Initiator& initiator) override {
        seen = initiator ? &initiator->get() : nullptr;
        return Counter::changedNotify(observable, initiator);
    }

    const ObservingObject* seen = nullptr;
};

}  // namespace

QOR_CLASS_TABLE(PictureColorPropertiesField, rows);

TEST(PictureColorPropertiesField, IsAContainerWithOneAttribute) {
    expectClass<PictureColorPropertiesField, AttrContainer>("PictureColorPropertiesField", 1, 1);
    EXPECT_EQ(PictureColorPropertiesField::create()->getName(), "PictureColorPropertiesField");
}

TEST(PictureColorPropertiesField, IsMadeWithAFieldOfParameters) {
    const auto field = PictureColorPropertiesField::create();
    const PictureColorPropertiesField& constField = *field;

    const auto parameters = field->HDRParameterField().lock();

    ASSERT_NE(parameters, nullptr);
    EXPECT_EQ(parameters->getClassName(), "HDRParameterField");
    EXPECT_EQ(field->getField(0).lock(), parameters);
    EXPECT_EQ(constField.HDRParameterField().lock(), parameters);
    EXPECT_EQ(field->getFieldToken("HDRParameterField"), 0u);
    EXPECT_EQ(field->getFieldName(0), "HDRParameterField");
    EXPECT_EQ(field->getNumFields(), 1u);
}

TEST(PictureColorPropertiesField, DuplicatesTheParametersWithItself) {
    const auto field = PictureColorPropertiesField::create();
    field->HDRParameterField().lock()->HDRGroup(7);

    const auto copy =
        std::dynamic_pointer_cast<PictureColorPropertiesField>(field->duplicate(CreateDeep));

    ASSERT_NE(copy, nullptr);
    ASSERT_EQ(copy->getNumFields(), 1u);
    EXPECT_NE(copy->HDRParameterField().lock(), field->HDRParameterField().lock());
    EXPECT_EQ(copy->HDRParameterField().lock()->HDRGroup(), 7);
}

TEST(PictureColorPropertiesField, GetsParametersOfAnotherClassFromAStream) {
    const auto field = PictureColorPropertiesField::create();
    const auto linear = TMOLinearField::create();
    linear->MaximalLuminance(3.5);
    ASSERT_TRUE(field->setField(0, linear));

    const auto copy = PictureColorPropertiesField::create();
    ASSERT_EQ(readText(*copy, written(*field)), std::nullopt);

    EXPECT_EQ(copy->getNumFields(), 1u);
    const auto same = std::dynamic_pointer_cast<TMOLinearField>(copy->HDRParameterField().lock());
    ASSERT_NE(same, nullptr);
    EXPECT_EQ(same->MaximalLuminance(), 3.5);
}

TEST(PictureColorPropertiesField, GivesItsValuesInAPackage) {
    const auto field = PictureColorPropertiesField::create();
    field->Event("white balance");
    Package package;

    EXPECT_EQ(&field->getData(package), &package);

    EXPECT_EQ(package.Event, "white balance");
}

TEST(PictureColorPropertiesField, TakesThePackageThatDiffers) {
    const auto field = PictureColorPropertiesField::create();

    EXPECT_EQ(field->setData(Package{"gamma"}, nullptr), 1u);

    EXPECT_EQ(field->Event(), "gamma");
}

TEST(PictureColorPropertiesField, ChangesNothingForAPackageThatIsEqual) {
    const auto field = PictureColorPropertiesField::create();
    field->Event("gamma");
    const auto counter = watch(field->Attr_Event());

    EXPECT_EQ(field->setData(Package{"gamma"}, nullptr), 0u);

    EXPECT_EQ(counter->asked, 0);
    EXPECT_EQ(counter->told, 0);
}

TEST(PictureColorPropertiesField, DoesNotLookAtItselfWhereTwoPackagesAreEqual) {
    const auto field = PictureColorPropertiesField::create();
    field->Event("something else");
    const Package package{"gamma"};

    EXPECT_EQ(field->setData(package, package, nullptr), 0u);

    EXPECT_EQ(field->Event(), "something else");
}

TEST(PictureColorPropertiesField, TakesWhatDiffersBetweenTwoPackages) {
    const auto field = PictureColorPropertiesField::create();
    field->Event("something else");

    EXPECT_EQ(field->setData(Package{"new"}, Package{"old"}, nullptr), 1u);
    EXPECT_EQ(field->Event(), "new");

    EXPECT_EQ(field->setData(Package{"new"}, Package{"old"}, nullptr), 0u);
}

TEST(PictureColorPropertiesField, CountsAChangeThatIsRefused) {
    const auto field = PictureColorPropertiesField::create();
    const auto refuser = watch<Refuser>(field->Attr_Event());

    EXPECT_EQ(field->setData(Package{"gamma"}, nullptr), 1u);
    EXPECT_EQ(field->setData(Package{"gamma"}, Package{"old"}, nullptr), 1u);

    EXPECT_EQ(field->Event(), "");
    EXPECT_EQ(refuser->asked, 2);
}

TEST(PictureColorPropertiesField, ChangesOnBehalfOfTheInitiator) {
    const auto field = PictureColorPropertiesField::create();
    const auto observer = watch<SeesInitiator>(field->Attr_Event());
    const auto initiator = std::make_shared<Counter>();

    field->setData(Package{"gamma"}, initiator);
    EXPECT_EQ(observer->seen, initiator.get());

    field->setData(Package{"delta"}, Package{"gamma"}, observer);
    EXPECT_EQ(observer->told, 1);  // nobody is told of his own change
    EXPECT_EQ(field->Event(), "delta");
}

}  // namespace QOR::AttributeContainer::Testing
