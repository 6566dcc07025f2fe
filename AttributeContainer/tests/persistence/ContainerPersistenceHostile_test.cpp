// What is left behind by streams of containers that are cut off, changed or full of sharing.
#include <AttributeContainer/Object.h>
#include <AttributeContainer/ReferenceDictionary.h>
#include <AttributeContainer/SharedInstanceCollection.h>
#include <AttributeContainer/kVAttrContainer.h>

#include "support/BlockText.h"
#include "support/Containers.h"
#include "support/ObserverGraph.h"
#include "support/StreamContexts.h"
#include "support/Streams.h"
#include "support/ValueSamples.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <sstream>
#include <stdexcept>
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

// Reads the text twice into the same container and writes that.
void readAndWrite(const std::string& text, const std::vector<std::uint64_t>& keys) {
    const auto root = Handled::create();
    for (int i = 0; i < 2; ++i) {
        bool isEndedHard = true;
        try {
            const auto code = readText(*root, text, resolving(keys));
            isEndedHard = code && !isWarning(*code);
        } catch (const std::invalid_argument& malformed) {
            EXPECT_STREQ(malformed.what(), "Invalid number format");
        }
        if (isEndedHard) {
            EXPECT_EQ(keywordOfNextRead(), "clean") << text;
        }
    }
    std::ostringstream out;
    EXPECT_EQ(codeOf(root->writeTo(out, std::make_shared<const WriteContextBase>())), std::nullopt)
        << text;
}

void cutEverywhere(const std::string& text) {
    const auto keys = keysOf(text);
    for (std::size_t size = 0; size <= text.size(); ++size)
        readAndWrite(text.substr(0, size), keys);
}

void changeEverywhere(const std::string& text) {
    const auto keys = keysOf(text);
    for (std::size_t at = 0; at < text.size(); ++at)
        for (const char byte : {'}', '"', '9'}) {
            std::string changed = text;
            changed[at] = byte;
            readAndWrite(changed, keys);
        }
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
    cutEverywhere(valuesText());
}

TEST(ContainerPersistenceHostile, LeavesAContainerThatCanBeWrittenWhateverByteOfAValueIsChanged) {
    changeEverywhere(valuesText());
}

TEST(ContainerPersistenceHostile, LeavesAContainerThatCanBeWrittenWhereverFieldsAreCut) {
    cutEverywhere(fieldsText());
}

TEST(ContainerPersistenceHostile, LeavesAContainerThatCanBeWrittenWhateverByteOfAFieldIsChanged) {
    changeEverywhere(fieldsText());
}
