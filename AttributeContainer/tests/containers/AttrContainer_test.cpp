// The life of a container, its token space and its lookups.
#include <AttributeContainer/kVAttrContainer.h>

#include "support/Containers.h"
#include "support/FreeAttribute.h"

#include <gtest/gtest.h>

using namespace QOR;
using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {
constexpr std::uint64_t none = AttrContainer::noToken;
}  // namespace

TEST(CreateType, HasTheStoredValues) {
    EXPECT_EQ(CreateDeep, 0u);
    EXPECT_EQ(CreateShareFields, 1u);
    EXPECT_EQ(CreateShareFieldsAlso, 2u);
    EXPECT_EQ(CreateEmpty, 3u);
}

TEST(AttrContainer, HasItsClassName) {
    EXPECT_EQ(AttrContainer::getStaticClassName(), "AttrContainer");
    EXPECT_EQ(AttrContainer::create()->getClassName(), "AttrContainer");
}

TEST(AttrContainer, IsNamedAfterItsClassAtFirst) {
    const auto container = AttrContainer::create();
    EXPECT_EQ(container->getName(), "AttrContainer");
    EXPECT_EQ(container->name(), "AttrContainer");
    EXPECT_EQ(container->Name(), "AttrContainer");
    EXPECT_EQ(container->Attr_Name().get(), "AttrContainer");
}

TEST(AttrContainer, HasNoNameWhereItsFirstAttributeIsNoText) {
    /// Makes a number of the attribute that should be its name.
    class Numbered : public AttrContainer {
    public:
        Numbered() : AttrContainer(ConstructorProtector{}, CreateDeep, std::nullopt) {
            createAttributes({{0, "Name", AttrType{0}, 4}}, CreateDeep, std::nullopt);
        }
    };
    const Numbered numbered;
    EXPECT_EQ(numbered.getNumAttributes(), 1u);
    EXPECT_EQ(numbered.getName(), "");
}

TEST(AttrContainer, HasOneAttributeAndNoFields) {
    const auto container = AttrContainer::create();

    EXPECT_EQ(container->getNumAttributes(), 1u);
    EXPECT_EQ(container->getNumHardCodedAttributes(), 1u);
    EXPECT_EQ(container->getNumFields(), 0u);
    EXPECT_EQ(container->getMaxAttrToken(), 0u);
    EXPECT_EQ(container->getMaxFieldToken(), none);
}

TEST(AttrContainer, DeclaresItsName) {
    const auto container = AttrContainer::create();
    const AttrDefinition* const row = container->getAttrDefinition(0);

    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->token, 0u);
    EXPECT_EQ(row->name, "Name");
    EXPECT_EQ(row->type, AttrType{10});
    EXPECT_EQ(row->category, 4);
    EXPECT_EQ(container->getAttrDefinition(1), nullptr);
    EXPECT_EQ(container->getAttrDefinition(none), nullptr);
}

TEST(AttrContainer, AnswersForItsNameByTokenAndKey) {
    const auto container = AttrContainer::create();

    EXPECT_EQ(container->getAttrToken("Name"), 0u);
    EXPECT_EQ(container->getAttrName(0), "Name");
    EXPECT_EQ(container->getAttribute(0).lock().get(), &container->Attr_Name());
    EXPECT_EQ(container->getAttribute("Name").lock().get(), &container->Attr_Name());
    EXPECT_EQ(std::as_const(*container).getAttribute("Name").lock().get(), &container->Attr_Name());
    EXPECT_EQ(std::as_const(*container).getAttribute(0).lock().get(), &container->Attr_Name());
}

TEST(AttrContainer, AnswersNothingForWhatItHasNot) {
    const auto container = AttrContainer::create();
    const AttrContainer& constant = *container;

    EXPECT_EQ(container->getAttrToken("name"), none);
    EXPECT_EQ(container->getAttrToken(""), none);
    EXPECT_EQ(container->getAttrName(1), std::nullopt);
    EXPECT_EQ(container->getAttrName(none), std::nullopt);
    EXPECT_TRUE(container->getAttribute(1).expired());
    EXPECT_TRUE(container->getAttribute(none).expired());
    EXPECT_TRUE(container->getAttribute("Missing").expired());
    EXPECT_TRUE(constant.getAttribute("Missing").expired());
    EXPECT_TRUE(container->getField(std::uint64_t{0}).expired());
    EXPECT_TRUE(container->getField(none).expired());
    EXPECT_TRUE(container->getField("Missing").expired());
    EXPECT_TRUE(constant.getField("Missing").expired());
    EXPECT_TRUE(constant.getField(std::uint64_t{0}).expired());
    EXPECT_EQ(container->getFieldToken("Missing"), none);
    EXPECT_EQ(container->getFieldToken(""), none);
    EXPECT_EQ(container->getFieldName(0), std::nullopt);
}

TEST(AttrContainer, FindsNoTokenForAnAttributeOfAnother) {
    const auto container = Mark::create();
    const auto other = Mark::create();
    const auto custom = addCustom(*other, "Depth", 1);

    EXPECT_EQ(container->getAttrToken(other->Attr_Label()), none);
    EXPECT_EQ(container->getAttrToken(*custom), none);
    EXPECT_EQ(container->getAttrToken(*attributeOf(1)), none);
    EXPECT_EQ(container->getAttrDefinition(*custom), nullptr);
    EXPECT_EQ(container->getAttrToken(container->Attr_Label()), 1u);
    EXPECT_EQ(container->getAttrDefinition(container->Attr_Label()),
              container->getAttrDefinition(1));
}

TEST(AttrContainer, TellsTheCategoryOfItsAttributes) {
    const auto mark = TallMark::create();
    const auto custom = addCustom(*mark, "Depth", 1);

    EXPECT_EQ(mark->getAttrCategory(mark->Attr_Name()), 4);
    EXPECT_EQ(mark->getAttrCategory(std::uint64_t{0}), 4);
    EXPECT_EQ(mark->getAttrCategory(mark->Attr_Label()), 18);
    EXPECT_EQ(mark->getAttrCategory(mark->Attr_Cached()), 48);
    EXPECT_EQ(mark->getAttrCategory(*custom), 64);
    EXPECT_EQ(mark->getAttrCategory(custom->getToken()), 64);
    EXPECT_EQ(mark->getAttrCategory(none), 64);
}

TEST(AttrContainer, HasNoHandlesForItsFields) {
    const auto container = AttrContainer::create();
    const auto field = addNamedField(*container, "inner");

    EXPECT_EQ(container->lookupToken(field.get()), (SVec2d<int>(-1, -1)));
    EXPECT_EQ(container->lookupToken(nullptr), (SVec2d<int>(-1, -1)));
    EXPECT_TRUE(container->lookupField({0, 0}).expired());
    EXPECT_EQ(container->convertToNewFieldToken(0), none);
    EXPECT_EQ(container->convertToNewFieldToken(17), none);
}

TEST(AttrContainer, MakesNoFieldByItsHooks) {
    const auto container = AttrContainer::create();
    std::uint64_t token = 3;

    EXPECT_EQ(container->checkCreateChildField("Mark", "a", &token), nullptr);
    EXPECT_EQ(container->checkCreateDefaultChildField("Mark", "a", nullptr), nullptr);
    EXPECT_EQ(token, 3u);
    EXPECT_FALSE(container->detachFromParent(nullptr));
    container->attachToParent(nullptr);  // does nothing
}

TEST(AttrContainer, HasAnIdentityOfItsOwn) {
    const auto one = AttrContainer::create();
    const auto two = AttrContainer::create();

    EXPECT_EQ(one->getInstanceIdentifier(), one->getInstanceIdentifier());
    EXPECT_NE(one->getInstanceIdentifier(), two->getInstanceIdentifier());
    EXPECT_EQ(one->getInstanceIdentifier(), reinterpret_cast<std::uintptr_t>(one.get()));
}

TEST(AttrContainer, HasASerializedFlagThatTheHostWrites) {
    const auto container = AttrContainer::create();

    EXPECT_EQ(AttrContainer::nullFlags, 0);
    EXPECT_EQ(AttrContainer::Flags::isSerialized, 1);
    EXPECT_FALSE(container->isSerialized());
    container->setIsSerialized(true);
    EXPECT_TRUE(container->isSerialized());
    container->setIsSerialized(false);
    EXPECT_FALSE(container->isSerialized());
}

TEST(AttrContainer, NamesAFieldForAKeyStore) {
    const auto container = AttrContainer::create();
    const auto named = addNamedField(*container, "inner");
    const auto nameless = AttrContainer::create();
    nameless->name("own");
    ASSERT_TRUE(container->addField(nameless, "", 0));  // under its own name
    const auto outside = AttrContainer::create();

    EXPECT_EQ(container->getFieldRegistryPrefix(*named), "inner");
    EXPECT_EQ(container->getFieldRegistryPrefix(*nameless), "own");
    EXPECT_EQ(container->getFieldRegistryPrefix(*outside), std::nullopt);
}

TEST(AttrContainer, NamesAFieldWithAnEmptyNameByItsOwnNameForAKeyStore) {
    const auto container = AttrContainer::create();
    const auto field = AttrContainer::create();
    field->Attr_Name().set("");  // refused, since it is no valid name
    ASSERT_EQ(field->getName(), "AttrContainer");
    {
        const BlockObserver block;
        field->Attr_Name().set("");
    }
    ASSERT_TRUE(container->addField(field, "", AddFlags::SkipNameTest));
    ASSERT_EQ(container->getFieldName(0), "");
    field->name("own");

    EXPECT_EQ(container->getFieldRegistryPrefix(*field), "own");
}

// The table of words ------------------------------------------------------------------------------

TEST(AttrContainerKeyTable, HoldsAllWordsInTheirOrder) {
    const std::vector<std::pair<std::uint64_t, std::string>> expected{
        {0, "Attr<int>"},           {1, "Attr<int8_t>"},        {2, "Attr<uint8_t>"},
        {3, "Attr<int16_t>"},       {4, "Attr<uint16_t>"},      {5, "Attr<int32_t>"},
        {6, "Attr<uint32_t>"},      {7, "Attr<int64_t>"},       {8, "Attr<uint64_t>"},
        {9, "Attr<double>"},        {10, "Attr<String>"},       {11, "Attr<bool>"},
        {12, "Attr<Vec3dd>"},       {15, "Attr<Vec4dd>"},       {13, "Attr<Vec3df>"},
        {14, "Attr<SVec3us>"},      {16, "Attr<Vec4df>"},       {17, "Attr<SVec2dd>"},
        {18, "Attr<SVec2df>"},      {19, "Attr<SVec2i>"},       {20, "Attr<SVec2ui>"},
        {21, "Attr<StringArray>"},  {22, "Attr<StringSet>"},    {23, "Attr<StringMap>"},
        {24, "Attr<Mat4df>"},       {25, "Attr<Mat4dd>"},       {26, "Attr<DVector>"},
        {27, "Attr<Vec3ddVector>"}, {29, "Attr<Vec4ddVector>"}, {31, "Attr<Vec2ddVector>"},
        {32, "Attr<Vec2dfVector>"}, {33, "Attr<IntVector>"},    {35, "Attr<Int8Vector>"},
        {36, "Attr<UInt8Vector>"},  {37, "Attr<Int16Vector>"},  {38, "Attr<UInt16Vector>"},
        {39, "Attr<Int32Vector>"},  {40, "Attr<UInt32Vector>"}, {41, "Attr<Int64Vector>"},
        {42, "Attr<UInt64Vector>"}, {30, "Attr<VecPoly3d>"},    {28, "Attr<Vec3dfVector>"},
        {43, "Attr<Vec2iVector>"},  {44, "Attr<Vec2usVector>"}, {45, "Attr<Mat4ddVector>"},
        {46, "Attr<Uuid>"},         {47, "Attr<Vec3uiVector>"}, {48, "Attr<UuidSet>"},
        {49, "Attr<ScanPt>"},       {50, "Attr<ScanPtVector>"}, {51, "Attr<UuidVector>"},
        {52, "Attr<BoolVector>"},   {53, "Attr<Json::Value>"},  {55, "AttrContainer"},
        {56, "Name"},               {57, "SubContainer"},       {58, "FieldHandle"},
        {59, "FieldToken"},         {60, "ReferenceToShared"},  {61, "InstanceID"},
        {62, ""}};

    std::vector<std::pair<std::uint64_t, std::string>> rows;
    for (const auto& row : AttrContainer::readWriteKeyTable) rows.emplace_back(row.token, row.key);

    EXPECT_EQ(rows, expected);
    for (const auto& [token, key] : expected) {
        EXPECT_EQ(AttrContainer::keyTable.keyToToken(key), token) << key;
        EXPECT_EQ(AttrContainer::keyTable.tokenToKey(token), key) << token;
    }
}

TEST(AttrContainerKeyTable, HasNoWordForTheOtherTokens) {
    for (const std::uint64_t token : {34u, 54u, 63u})
        EXPECT_EQ(AttrContainer::keyTable.tokenToKey(token), std::nullopt) << token;
    EXPECT_EQ(AttrContainer::keyTable.keyToToken("Attr<Foo>"), none);
}

TEST(AttrContainerKeyTable, GivesTheTypeOfAWord) {
    EXPECT_EQ(AttrContainer::getTypeFromString("Attr<int>"), AttrType{0});
    EXPECT_EQ(AttrContainer::getTypeFromString("Attr<int32_t>"), AttrType{5});
    EXPECT_EQ(AttrContainer::getTypeFromString("Attr<UInt32Vector>"), AttrType{40});
    EXPECT_EQ(AttrContainer::getTypeFromString("Attr<Json::Value>"), AttrType{53});
}

TEST(AttrContainerKeyTable, GivesTheMarkOfAnUnknownTypeForAnyOtherText) {
    EXPECT_EQ(AttrContainer::getTypeFromString("Attr<Foo>"), AttrType{54});
    EXPECT_EQ(AttrContainer::getTypeFromString("attr<int>"), AttrType{54});
    EXPECT_EQ(AttrContainer::getTypeFromString("Attr<int>>"), AttrType{54});
}

TEST(AttrContainerKeyTable, IsAPlainLookUpForTheStreamsWordsToo) {
    EXPECT_EQ(AttrContainer::getTypeFromString("Name"), AttrType{56});
    EXPECT_EQ(AttrContainer::getTypeFromString(""), AttrType{62});
}
