// A host that writes the block of members around its tables by hand, with the public header alone.
#include <AttributeContainer/AttributeContainer.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace Survey {

namespace AC = QOR::AttributeContainer;
using QOR::DataStructures::KeyTable;

/// One attribute and one field.
class Reflector : public AC::AttrContainer {
public:
    using Source = std::optional<std::reference_wrapper<const Reflector>>;

    Reflector(const ConstructorProtector& key, AC::CreateType type, Source source)
        : AC::AttrContainer(key, type, source) {}

    static std::shared_ptr<Reflector> create(CreateType type = AC::CreateDeep,
                                             Source source = std::nullopt) {
        const auto reflector = std::make_shared<Reflector>(ConstructorProtector(), type, source);
        reflector->init(type, source);
        return reflector;
    }
    std::shared_ptr<AC::AttrContainer> duplicate(AC::CreateType type) const override {
        return create(type, type == AC::CreateEmpty ? Source{} : Source{*this});
    }

    using AC::AttrContainer::getAttrDefinition;
    const AC::AttrDefinition* getAttrDefinition(std::uint64_t token) const override {
        const auto row = attrDefMap.find(token);
        return row != attrDefMap.end() ? row->second : AC::AttrContainer::getAttrDefinition(token);
    }
    std::optional<std::string> getAttrName(std::uint64_t token) const override {
        auto name = attrKeyTable.tokenToKey(token);
        return name ? name : AC::AttrContainer::getAttrName(token);
    }
    using AC::AttrContainer::getAttrToken;
    std::uint64_t getAttrToken(const std::string& key) const override {
        const auto token = attrKeyTable.keyToToken(key);
        return token != noToken ? token : AC::AttrContainer::getAttrToken(key);
    }
    std::uint64_t getMaxAttrToken() const override { return 1; }
    using AC::AttrContainer::getFieldToken;
    std::uint64_t getFieldToken(const std::string& name) const override {
        const auto token = fieldKeyTable.keyToToken(name);
        return token != noToken ? token : AC::AttrContainer::getFieldToken(name);
    }
    std::optional<std::string> getFieldName(std::uint64_t token) const override {
        auto name = fieldKeyTable.tokenToKey(token);
        return name ? name : AC::AttrContainer::getFieldName(token);
    }
    std::uint64_t getMaxFieldToken() const override { return 0; }
    const std::string& getClassName() const override { return getStaticClassName(); }
    static const std::string& getStaticClassName() {
        static const std::string name{"Reflector"};
        return name;
    }

    AC::Attr<double>& Attr_Constant() {
        return dynamic_cast<AC::Attr<double>&>(*getAttribute(1).lock());
    }
    double Constant() { return Attr_Constant().get(); }
    void Constant(double value) { Attr_Constant().set(value); }

protected:
    void init(AC::CreateType type, Source source) {
        {
            const AC::BlockUpdateObservers block(
                source ? std::static_pointer_cast<AC::AttrContainer>(shared_from_this()) : nullptr);
            AC::AttrContainer::init(type, source);
            createAttributes(definitions, type, source);
            createFields(fieldDefinitions, type, source);
        }
        if (source) return;
        name(getClassName());
        Constant(-34.4);
    }

private:
    static const std::vector<AC::AttrDefinition> definitions;
    static const KeyTable attrKeyTable;
    static const AC::AttrDefMap attrDefMap;
    static const std::vector<AC::FieldDefinition> fieldDefinitions;
    static const KeyTable fieldKeyTable;
};

const std::vector<AC::AttrDefinition> Reflector::definitions{{1, "Constant", AC::AttrType{9}, 18}};
const KeyTable Reflector::attrKeyTable = createKeyTableFromAttrDefinitions(definitions);
const AC::AttrDefMap Reflector::attrDefMap = createAttrDefMapFromAttrDefinitions(definitions);
const std::vector<AC::FieldDefinition> Reflector::fieldDefinitions{{0, "Mount", "ArrayContainer"}};
const KeyTable Reflector::fieldKeyTable = createKeyTableFromFieldDefinitions(fieldDefinitions);

const auto reflectorRegistered =
    AC::FieldFactory::addField<Reflector>(Reflector::getStaticClassName());

/// An object with nothing of its own but what it does at its making.
class Site : public AC::Object {
public:
    using Source = std::optional<std::reference_wrapper<const Site>>;

    Site(const ConstructorProtector& key, AC::CreateType type, Source source)
        : AC::Object(key, type, source) {}

    static std::shared_ptr<Site> create(AC::CreateType type = AC::CreateDeep,
                                        Source source = std::nullopt) {
        const auto site = std::make_shared<Site>(ConstructorProtector(), type, source);
        site->init(type, source);
        return site;
    }
    std::shared_ptr<AC::AttrContainer> duplicate(AC::CreateType type) const override {
        return create(type, type == AC::CreateEmpty ? Source{} : Source{*this});
    }
    const std::string& getClassName() const override {
        static const std::string name{"Site"};
        return name;
    }

protected:
    void init(AC::CreateType type, Source source) {
        AC::Object::init(type, source);
        if (!source) Event("surveyed");
    }
};

}  // namespace Survey

using namespace QOR::AttributeContainer;
using Survey::Reflector;
using Survey::Site;

TEST(HandWrittenClass, HasItsNameItsDefaultsAndItsField) {
    const auto reflector = Reflector::create();

    EXPECT_EQ(reflector->getName(), "Reflector");
    EXPECT_EQ(reflector->Constant(), -34.4);
    EXPECT_EQ(reflector->getNumAttributes(), 2u);
    EXPECT_EQ(reflector->getAttrToken("Constant"), 1u);
    EXPECT_EQ(reflector->getAttrToken("Name"), 0u);
    EXPECT_EQ(reflector->getAttrName(1), "Constant");
    EXPECT_EQ(reflector->getAttrCategory(1), 18);
    EXPECT_EQ(reflector->getAttrDefinition(reflector->Attr_Constant())->name, "Constant");
    EXPECT_EQ(reflector->getNumFields(), 1u);
    EXPECT_EQ(reflector->getField("Mount").lock()->getName(), "Mount");
    EXPECT_EQ(reflector->getFieldName(0), "Mount");
}

TEST(HandWrittenClass, IsCopiedWithItsValuesAndItsField) {
    const auto reflector = Reflector::create();
    reflector->Constant(17.5);
    reflector->name("north");

    const auto copy = std::dynamic_pointer_cast<Reflector>(reflector->duplicate(CreateDeep));
    const auto sharing =
        std::dynamic_pointer_cast<Reflector>(reflector->duplicateAll(CreateShareFields));
    const auto empty = std::dynamic_pointer_cast<Reflector>(reflector->duplicate(CreateEmpty));

    EXPECT_EQ(copy->Constant(), 17.5);
    EXPECT_EQ(copy->getName(), "north");
    EXPECT_NE(copy->getField("Mount").lock(), reflector->getField("Mount").lock());
    EXPECT_EQ(sharing->getField("Mount").lock(), reflector->getField("Mount").lock());
    EXPECT_EQ(empty->Constant(), -34.4);
    EXPECT_EQ(empty->getName(), "Reflector");
}

TEST(HandWrittenClass, IsMadeByTheFactory) {
    const auto made = FieldFactory::the()->createField("Reflector");
    ASSERT_NE(std::dynamic_pointer_cast<Reflector>(made), nullptr);
    EXPECT_EQ(made->getName(), "Reflector");
}

TEST(HandWrittenClass, IsReadBackFromAStream) {
    const auto holder = AttrContainer::create();
    const auto reflector = Reflector::create();
    reflector->Constant(17.5);
    ASSERT_TRUE(holder->addField(reflector, "reflector", 0));
    std::stringstream stream;
    ASSERT_EQ(holder->writeTo(stream, std::make_shared<WriteContextBase>()), nullptr);

    const auto read = AttrContainer::create();
    ASSERT_EQ(read->readFrom(stream, std::make_shared<ReadContextBase>()), nullptr);

    const auto field = std::dynamic_pointer_cast<Reflector>(read->getField("reflector").lock());
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->Constant(), 17.5);
}

TEST(HandWrittenClass, CanStandBelowAnObjectClass) {
    const auto site = Site::create();
    EXPECT_EQ(site->getName(), "Site");
    EXPECT_EQ(site->Event(), "surveyed");
    site->Event("left");

    const auto copy = std::dynamic_pointer_cast<Site>(site->duplicate(CreateDeep));

    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->Event(), "left");
    EXPECT_EQ(copy->getMaxAttrToken(), 5u);
}
