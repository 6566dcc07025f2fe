#include <AttributeContainer/WriteContext.h>

#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/SharedInstanceCollection.h>

#include <gtest/gtest.h>

#include <type_traits>

using namespace QOR::AttributeContainer;

namespace {

using Getter = bool (WriteContextBase::*)() const;
using Setter = void (WriteContextBase::*)(bool);

struct Flag {
    const char* name;
    Getter get;
    Setter set;
    bool defaultValue;
};

const Flag flags[] = {
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
    for (const auto& flag : flags) EXPECT_EQ((context.*flag.get)(), flag.defaultValue) << flag.name;
}

TEST(WriteContext, TakesItsFormWhenItIsMade) {
    EXPECT_EQ(WriteContextBase().getFormat(), ModelFormat::Text);
    EXPECT_EQ(WriteContextBase(ModelFormat::XmlV2).getFormat(), ModelFormat::XmlV2);
}

TEST(WriteContext, ChangesEachFlagAlone) {
    for (const auto& changed : flags) {
        WriteContextBase context;
        (context.*changed.set)(!changed.defaultValue);
        for (const auto& flag : flags) {
            const bool isChanged = flag.get == changed.get;
            EXPECT_EQ((context.*flag.get)(), flag.defaultValue != isChanged)
                << flag.name << " after setting " << changed.name;
        }
        (context.*changed.set)(changed.defaultValue);
        EXPECT_EQ((context.*changed.get)(), changed.defaultValue) << changed.name;
    }
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
