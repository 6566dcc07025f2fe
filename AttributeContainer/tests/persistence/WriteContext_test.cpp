#include <AttributeContainer/WriteContext.h>

#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/SharedInstanceCollection.h>

#include "support/ContextFlags.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

const std::vector<ContextFlag<WriteContextBase>> flags{
    {"writeOnlyMarked", &WriteContextBase::writeOnlyMarked, &WriteContextBase::setWriteOnlyMarked,
     false},
    {"writeOnlyMarkedObjects", &WriteContextBase::writeOnlyMarkedObjects,
     &WriteContextBase::setWriteOnlyMarkedObjects, false},
    {"writeDemandData", &WriteContextBase::writeDemandData, &WriteContextBase::setWriteDemandData,
     false},
    {"writeDefaultValues", &WriteContextBase::writeDefaultValues,
     &WriteContextBase::setWriteDefaultValues, false},
    {"createObjectUuid", &WriteContextBase::createObjectUuid,
     &WriteContextBase::setCreateObjectUuid, false},
    {"writeChildren", &WriteContextBase::writeChildren, &WriteContextBase::setWriteChildren, true},
    {"writeFields", &WriteContextBase::writeFields, &WriteContextBase::setWriteFields, true},
    {"writeEncrypted", &WriteContextBase::writeEncrypted, &WriteContextBase::setWriteEncrypted,
     false},
};

}  // namespace

TEST(WriteContext, BeginsWithChildrenAndFieldsAndNothingElse) {
    const WriteContextBase context(0);
    EXPECT_EQ(context.getFormat(), 0);
    EXPECT_EQ(context.getSharedInstances(), nullptr);
    expectDefaults(context, flags);
}

TEST(WriteContext, TakesItsFormWhenItIsMade) {
    EXPECT_EQ(WriteContextBase().getFormat(), ModelFormat::Text);
    EXPECT_EQ(WriteContextBase(ModelFormat::XmlV2).getFormat(), ModelFormat::XmlV2);
}

TEST(WriteContext, ChangesEachFlagAlone) {
    expectThatEachChangesAlone(flags);
}

TEST(WriteContext, KeepsTheFormThatIsSet) {
    WriteContextBase context(ModelFormat::Text);
    context.setFormat(ModelFormat::XmlV1);
    EXPECT_EQ(context.getFormat(), ModelFormat::XmlV1);
}

TEST(WriteContext, PointsToTheSharedInstancesThatAreSet) {
    SharedInstanceCollection instances;
    WriteContextBase context;
    context.setSharedInstances(&instances);
    EXPECT_EQ(context.getSharedInstances(), &instances);
    context.setSharedInstances(nullptr);
    EXPECT_EQ(context.getSharedInstances(), nullptr);
}

TEST(WriteContext, IsABaseForContextsOfHosts) {
    EXPECT_TRUE(std::has_virtual_destructor_v<WriteContextBase>);
}
