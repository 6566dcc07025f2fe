// What a container writes of fields that stand in several places.
#include <AttributeContainer/SharedInstanceCollection.h>
#include <AttributeContainer/kVAttrContainer.h>

#include "support/Containers.h"
#include "support/NamelessContainer.h"
#include "support/StreamContexts.h"
#include "support/Streams.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

std::string keyOf(const AttrContainer& container) {
    return std::to_string(container.getInstanceIdentifier());
}

}  // namespace

TEST(SharedWriting, WritesAFieldOnceAndRefersToItAfterwards) {
    const auto container = nameless();
    const auto field = nameless();
    container->addField(field, "first", 0);
    container->addField(field, "second", 0);
    SharedInstanceCollection shared;
    const auto context = sharing(shared);

    const std::string text = written(*container, context);

    EXPECT_EQ(text, R"(
AttrContainer { 
Attr<String> { 
Name "Name"
}
SubContainer { 
"AttrContainer" "first"
InstanceID )" + keyOf(*field) +
                        R"(
AttrContainer { 
Attr<String> { 
Name "Name"
}
}
}
SubContainer { 
"AttrContainer" "second"
InstanceID )" + keyOf(*field) +
                        R"(
ReferenceToShared 
}
})");
    EXPECT_TRUE(field->isSerialized());
    EXPECT_FALSE(container->isSerialized());
}

TEST(SharedWriting, KeepsItsFlagsUntilTheHostClearsThem) {
    const auto container = nameless();
    const auto field = nameless();
    container->addField(field, "only", 0);
    SharedInstanceCollection shared;
    const auto context = sharing(shared);

    const std::string first = written(*container, context);
    EXPECT_EQ(first.find("ReferenceToShared"), std::string::npos);
    EXPECT_NE(written(*container, context).find("ReferenceToShared"), std::string::npos);
    field->setIsSerialized(false);
    EXPECT_EQ(written(*container, context), first);
}

TEST(SharedWriting, CollectsTheKeyWithTheFirstReferenceOnly) {
    const auto container = nameless();
    const auto once = nameless();
    const auto twice = nameless();
    container->addField(once, "once", 0);
    container->addField(twice, "first", 0);
    container->addField(twice, "second", 0);
    SharedInstanceCollection shared;
    const auto context = sharing(shared);

    written(*container, context);

    std::vector<std::uint64_t> keys;
    shared.copyToVector(keys);
    EXPECT_EQ(keys, std::vector<std::uint64_t>{twice->getInstanceIdentifier()});
}

TEST(SharedWriting, LooksAtNoFlagWithoutACollection) {
    const auto container = nameless();
    const auto field = nameless();
    container->addField(field, "only", 0);
    field->setIsSerialized(true);
    EXPECT_EQ(written(*container).find("ReferenceToShared"), std::string::npos);
    EXPECT_EQ(written(*container).find("InstanceID"), std::string::npos);
}
