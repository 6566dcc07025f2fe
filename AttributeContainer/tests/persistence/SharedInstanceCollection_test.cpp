#include <AttributeContainer/SharedInstanceCollection.h>

#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ModelInFormat.h>
#include <AttributeContainer/ReadContext.h>
#include <AttributeContainer/ReferenceDictionary.h>
#include <AttributeContainer/WriteContext.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace QOR::AttributeContainer;

namespace {

using Keys = std::vector<std::uint64_t>;

SharedInstanceCollection holding(const Keys& keys) {
    SharedInstanceCollection collection;
    for (const auto key : keys) collection.insert(key);
    return collection;
}

Keys keysOf(SharedInstanceCollection& collection) {
    Keys keys{99};
    collection.copyToVector(keys);
    return keys;
}

std::string written(SharedInstanceCollection& collection, int format) {
    std::ostringstream out;
    const auto error = collection.writeTo(out, std::make_shared<const WriteContextBase>(format));
    EXPECT_EQ(error, nullptr);
    return out.str();
}

}  // namespace

TEST(SharedInstanceCollection, HasItsClassName) {
    const SharedInstanceCollection collection;
    EXPECT_EQ(collection.getClassName(), "SharedInstanceCollection");
    EXPECT_EQ(SharedInstanceCollection::getStaticClassName(), "SharedInstanceCollection");
}

TEST(SharedInstanceCollection, CopiesItsKeysInAscendingOrderAndOnce) {
    auto collection = holding({20, 10, ~std::uint64_t{0}, 20});
    EXPECT_EQ(keysOf(collection), (Keys{10, 20, ~std::uint64_t{0}}));
}

TEST(SharedInstanceCollection, EmptiesTheVectorWhereItHasNoKeys) {
    SharedInstanceCollection collection;
    EXPECT_EQ(keysOf(collection), Keys{});
}

TEST(SharedInstanceCollection, WritesItsKeysInText) {
    auto collection = holding({20, 10});
    EXPECT_EQ(written(collection, ModelFormat::Text),
              "\nSharedInstanceCollection { \nInstances { { 10 20 } \n}\n}");
}

TEST(SharedInstanceCollection, WritesAnEmptyListInText) {
    SharedInstanceCollection collection;
    EXPECT_EQ(written(collection, ModelFormat::Text),
              "\nSharedInstanceCollection { \nInstances { { } \n}\n}");
}

TEST(SharedInstanceCollection, WritesItsKeysInTheXmlForms) {
    auto collection = holding({20, 10});
    for (const int format : {1, 2}) {
        EXPECT_EQ(written(collection, format), R"(<SharedInstanceCollection>
<Instances>
{ 10 20 } </Instances>
</SharedInstanceCollection>
)");
    }
}

TEST(SharedInstanceCollection, WritesInTextWithoutAContext) {
    auto collection = holding({10});
    std::ostringstream out;
    EXPECT_EQ(collection.writeTo(out, nullptr), nullptr);
    EXPECT_EQ(out.str(), "\nSharedInstanceCollection { \nInstances { { 10 } \n}\n}");
}

TEST(SharedInstanceCollection, ReportsAStreamThatFails) {
    auto collection = holding({10});
    std::ostringstream out;
    out.setstate(std::ios::badbit);
    const auto error = collection.writeTo(out, nullptr);
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->getCode(), ErrorCode::StreamFailed);
}

TEST(SharedInstanceCollection, ReadsBackWhatItWroteInEveryForm) {
    for (const int format : {0, 2}) {
        for (const auto& keys : {Keys{}, Keys{10, 20, ~std::uint64_t{0}}}) {
            auto source = holding(keys);
            std::istringstream in(written(source, format));
            const auto context = std::make_shared<ReadContextBase>();
            context->setFormat(format);
            auto target = holding({7});

            EXPECT_EQ(target.readFrom(in, context), nullptr);

            EXPECT_EQ(keysOf(target), keys);
        }
    }
}

TEST(SharedInstanceCollection, ReadsTextWithoutAContext) {
    std::istringstream in("SharedInstanceCollection { \nInstances { { 10 20 } \n}\n}\n");
    SharedInstanceCollection collection;
    EXPECT_EQ(collection.readFrom(in, nullptr), nullptr);
    EXPECT_EQ(keysOf(collection), (Keys{10, 20}));
}

TEST(SharedInstanceCollection, LeavesTheEndOfItsBlockAsTheKeywordOfItsCaller) {
    std::istringstream in("SharedInstanceCollection { \nInstances { { 10 } \n}\n}\nObject { ");
    ModelInFormat caller(in);
    SharedInstanceCollection collection;

    EXPECT_EQ(collection.readFrom(in, nullptr), nullptr);

    EXPECT_EQ(caller.getKeyword(), "}");
    caller.nextKeyword();
    EXPECT_EQ(caller.getKeyword(), "Object");
}

TEST(SharedInstanceCollection, EndsQuietlyWhereTheStreamEnds) {
    const std::string whole = "SharedInstanceCollection { \nInstances { { 10 20 } \n}\n}";
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        std::istringstream in(whole.substr(0, length));
        SharedInstanceCollection collection;
        EXPECT_EQ(collection.readFrom(in, nullptr), nullptr) << length;
    }
}

TEST(SharedInstanceCollection, EndsQuietlyAtTheEndOfItsBlock) {
    std::istringstream in("SharedInstanceCollection { \n}\n");
    auto collection = holding({7});
    EXPECT_EQ(collection.readFrom(in, nullptr), nullptr);
    EXPECT_EQ(keysOf(collection), Keys{7});
}

TEST(SharedInstanceCollection, RefusesAnUnknownWord) {
    std::istringstream in("SharedInstanceCollection { \nInstances { { 10 } \n}\nOther 5\n}\n");
    SharedInstanceCollection collection;

    const auto error = collection.readFrom(in, nullptr);

    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->getCode(), ErrorCode::ParseFailed);
    EXPECT_EQ(keysOf(collection), Keys{10});
}

TEST(SharedInstanceCollection, RefusesTheEmptyKeywordOfTheXmlForm) {
    // The empty word is a row of its own, the last one, and belongs to no part of the block.
    std::istringstream in("<SharedInstanceCollection>\nx</SharedInstanceCollection>\n");
    const auto context = std::make_shared<ReadContextBase>();
    context->setFormat(ModelFormat::XmlV2);
    SharedInstanceCollection collection;

    const auto error = collection.readFrom(in, context);

    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->getCode(), ErrorCode::ParseFailed);
}

TEST(SharedInstanceCollection, LeavesNoPropagateKeywordBehindAnError) {
    std::istringstream in("Other ");
    SharedInstanceCollection collection;
    ModelInFormat client(in);
    EXPECT_EQ(client.getKeyword(), "Other");
    ModelInFormat::setPropagateKeyword("}");

    EXPECT_NE(collection.readFrom(in, nullptr), nullptr);

    std::istringstream next("clean ");
    EXPECT_EQ(ModelInFormat(next).getKeyword(), "clean");
}

TEST(SharedInstanceCollection, DeclaresTheKeysOfADictionary) {
    auto source = holding({20, 10});
    std::istringstream in(written(source, ModelFormat::Text));
    SharedInstanceCollection collection;
    ASSERT_EQ(collection.readFrom(in, nullptr), nullptr);
    Keys keys;
    collection.copyToVector(keys);
    ReferenceDictionary dictionary;

    dictionary.initializeFromVector(keys);

    EXPECT_TRUE(dictionary.unregisterReference(10));
    EXPECT_TRUE(dictionary.unregisterReference(20));
    EXPECT_FALSE(dictionary.unregisterReference(30));
}
