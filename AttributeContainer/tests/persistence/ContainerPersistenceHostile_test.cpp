// What is left behind by streams of containers that are cut off, changed or full of sharing.
#include <AttributeContainer/Object.h>
#include <AttributeContainer/SharedInstanceCollection.h>
#include <AttributeContainer/kVAttrContainer.h>

#include "support/BlockText.h"
#include "support/Containers.h"
#include "support/HostileStreams.h"
#include "support/ObserverGraph.h"
#include "support/StreamContexts.h"
#include "support/Streams.h"
#include "support/ValueSamples.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

// A custom attribute of the type, unless it is one that comes from no stream.
template <class T> void addSample(AttrContainer& container) {
    if (AttrDefinition{0, "A", static_cast<AttrType>(Sample<T>::token), 0}.createAttr(
            CreateDeep, std::nullopt, std::nullopt))
        addCustom(container, "A" + std::to_string(Sample<T>::token), Sample<T>::value());
}
template <class... T> void addSamples(AttrContainer& container, testing::Types<T...>) {
    (addSample<T>(container), ...);
}

/// Knows handles and old tokens of fields.
class Handled : public ContainerClass<Handled, Pole, "Handled"> {
public:
    using Block::Block;
    std::uint64_t convertToNewFieldToken(std::uint64_t old) const override { return old; }
    std::weak_ptr<AttrContainer> lookupField(const SVec2d<int>& handle) const override {
        return handle.x == 1 ? spare : nullptr;
    }
    std::shared_ptr<AttrContainer> spare = AttrContainer::create();
};

std::string valuesText() {
    const auto root = AttrContainer::create();
    addSamples(*root, AllValues{});
    return written(*root);
}

std::string fieldsText() {
    const auto root = Handled::create();
    root->Attr_Length().setWriteFlag(true);
    const auto shared = addNamedField(*root->Top().lock(), "shared");
    addCustom(*shared, "Numbers", std::vector<double>{1.5, -2});
    root->addField(shared, "again", 0);
    const auto listener = listenerAt("/some/where");
    root->Attr_Length().addObserver(*listener, 3, tellAction, false);
    addNamedField<Object>(*root, "object");
    SharedInstanceCollection instances;
    const auto context = sharing(instances);
    std::string text = written(*root, context);
    EXPECT_NE(text.find("ReferenceToShared"), std::string::npos);
    EXPECT_NE(text.find("PostObserver"), std::string::npos);
    const std::string handled = fieldBlock("Mark", "odd", "\nFieldHandle 1 0 ") +
                                fieldBlock("Mark", "old", "\nFieldToken 1" + containerBlock()) +
                                fieldBlock("Nobody", "unknown");
    return text.insert(text.size() - 2, handled);
}

// The keys that the text gives, whether or not they are still numbers of the writer.
std::vector<std::uint64_t> keysOf(const std::string& text) {
    std::vector<std::uint64_t> keys;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        std::uint64_t key = 0;
        if (word == "InstanceID" && words >> key) keys.push_back(key);
        words.clear();
    }
    return keys;
}

}  // namespace

TEST(ContainerPersistenceHostile, ReadsItsSamplesWhole) {
    EXPECT_EQ(readText(*AttrContainer::create(), valuesText()), std::nullopt);
    const std::string text = fieldsText();
    const auto keys = keysOf(text);
    EXPECT_EQ(keys.size(), 5u);
    EXPECT_EQ(readText(*Handled::create(), text, resolving(keys)), ErrorCode::ElementSkipped);
}

TEST(ContainerPersistenceHostile, LeavesAContainerThatCanBeWrittenWhereverValuesAreCut) {
    cutEverywhere<AttrContainer>(valuesText(), {});
}

TEST(ContainerPersistenceHostile, LeavesAContainerThatCanBeWrittenWhateverByteOfAValueIsChanged) {
    changeEverywhere<AttrContainer>(valuesText(), "}\"9", {});
}

TEST(ContainerPersistenceHostile, LeavesAContainerThatCanBeWrittenWhereverFieldsAreCut) {
    const std::string text = fieldsText();
    cutEverywhere<Handled>(text, keysOf(text));
}

TEST(ContainerPersistenceHostile, LeavesAContainerThatCanBeWrittenWhateverByteOfAFieldIsChanged) {
    const std::string text = fieldsText();
    changeEverywhere<Handled>(text, "}\"9", keysOf(text));
}
