#include <AttributeContainer/ReadContext.h>

#include <AttributeContainer/ReferenceDictionary.h>

#include "support/ContextFlags.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

const std::vector<ContextFlag<ReadContextBase>> flags{
    {"readDemandData", &ReadContextBase::readDemandData, &ReadContextBase::setReadDemandData,
     false},
    {"readMarked", &ReadContextBase::readMarked, &ReadContextBase::setReadMarked, false},
    {"updateObject", &ReadContextBase::updateObject, &ReadContextBase::setUpdateObject, false},
    {"readEncrypted", &ReadContextBase::readEncrypted, &ReadContextBase::setReadEncrypted, false},
    {"areUnknownContainersAccepted", &ReadContextBase::areUnknownContainersAccepted,
     &ReadContextBase::setAreUnknownContainersAccepted, true},
};

// Tells when it is destroyed.
class MortalDictionary : public ReferenceDictionary {
public:
    explicit MortalDictionary(int& counter) : deaths(counter) {}
    ~MortalDictionary() override { ++deaths; }

private:
    int& deaths;
};

}  // namespace

TEST(ReadContext, BeginsWithItsDefaults) {
    const ReadContextBase context;
    EXPECT_EQ(context.getFormat(), 0);
    EXPECT_EQ(context.getMaxDepth(), 1000U);
    EXPECT_EQ(context.getReferenceDictionary(), nullptr);
    expectDefaults(context, flags);
}

TEST(ReadContext, AcceptsUnknownContainersByDefault) {
    EXPECT_TRUE(ReadContextBase().areUnknownContainersAccepted());
}

TEST(ReadContext, ChangesEachFlagAlone) {
    expectThatEachChangesAlone(flags);
}

TEST(ReadContext, KeepsTheFormAndTheDepthThatAreSet) {
    ReadContextBase context;
    context.setFormat(2);
    context.setMaxDepth(7);
    EXPECT_EQ(context.getFormat(), 2);
    EXPECT_EQ(context.getMaxDepth(), 7U);
}

TEST(ReadContext, OwnsItsDictionaryAndDestroysTheOneThatItReplaces) {
    int deaths = 0;
    {
        ReadContextBase context;
        auto first = std::make_unique<MortalDictionary>(deaths);
        const auto* firstAddress = first.get();
        context.setReferenceDictionary(std::move(first));
        EXPECT_EQ(context.getReferenceDictionary(), firstAddress);

        context.setReferenceDictionary(std::make_unique<MortalDictionary>(deaths));
        EXPECT_EQ(deaths, 1);
        context.setReferenceDictionary(nullptr);
        EXPECT_EQ(deaths, 2);
        EXPECT_EQ(context.getReferenceDictionary(), nullptr);

        context.setReferenceDictionary(std::make_unique<MortalDictionary>(deaths));
    }
    EXPECT_EQ(deaths, 3);
}

TEST(ReadContext, GivesADictionaryThatMayChangeWhileTheContextIsConst) {
    ReadContextBase context;
    context.setReferenceDictionary(std::make_unique<ReferenceDictionary>());
    const ReadContextBase& constContext = context;
    std::vector<std::uint64_t> keys{5};

    constContext.getReferenceDictionary()->initializeFromVector(keys);

    EXPECT_TRUE(constContext.getReferenceDictionary()->unregisterReference(5));
}

TEST(ReadContext, MakesNoObjects) {
    ReadContextBase context;
    context.idle();
    EXPECT_EQ(context.createObject("Object"), nullptr);
}

TEST(ReadContext, IsABaseForContextsOfHosts) {
    EXPECT_TRUE(std::has_virtual_destructor_v<ReadContextBase>);
}
