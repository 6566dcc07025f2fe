#include <AttributeContainer/HDRParameterField.h>
#include <AttributeContainer/TMOEasyHDRField.h>
#include <AttributeContainer/TMOLinearField.h>
#include <AttributeContainer/TMOReinhard02Field.h>

#include "support/ClassTable.h"
#include "support/Streams.h"

#include <gtest/gtest.h>

#include <memory>

namespace QOR::AttributeContainer::Testing {

namespace {

#define ROW(...) QOR_CLASS_ROW(HDRParameterField, __VA_ARGS__)
const ClassRow hdrRows[] = {
    ROW(1, ToneMappingType, "Attr<int>", 18, {0}),
    ROW(2, AnalysisRequired, "Attr<bool>", 18, {false}),
    ROW(3, HDRGroup, "Attr<int>", 18, {0}),
    ROW(4, HDRIndex, "Attr<int>", 18, {0}),
};
#undef ROW

#define ROW(...) QOR_CLASS_ROW(TMOLinearField, __VA_ARGS__)
const ClassRow linearRows[] = {
    ROW(5, MaximalLuminance, "Attr<double>", 18, {0.0}),
    ROW(6, MinimalLuminance, "Attr<double>", 18, {0.0}),
};
#undef ROW

#define ROW(...) QOR_CLASS_ROW(TMOReinhard02Field, __VA_ARGS__)
const ClassRow reinhardRows[] = {
    ROW(5, WhitePoint, "Attr<double>", 18, {0.0}),
    ROW(6, KeyValue, "Attr<double>", 18, {0.18}),
    ROW(7, LogarithmicAverage, "Attr<double>", 18, {0.0}),
    ROW(8, MaximalLuminance, "Attr<double>", 18, {-1000000.0}),
    ROW(9, MinimalLuminance, "Attr<double>", 18, {1000000.0}),
    ROW(10, Gamma, "Attr<double>", 18, {1.6}),
    ROW(11, DodgeAndBurn, "Attr<bool>", 18, {false}),
    ROW(12, Phi, "Attr<double>", 18, {0.0}),
    ROW(13, UpperScale, "Attr<double>", 18, {0.0}),
    ROW(14, LowerScale, "Attr<double>", 18, {0.0}),
};
#undef ROW

#define ROW(...) QOR_CLASS_ROW(TMOEasyHDRField, __VA_ARGS__)
const ClassRow easyRows[] = {
    ROW(5, MaximalLuminance, "Attr<double>", 18, {0.0}),
    ROW(6, MinimalLuminance, "Attr<double>", 18, {0.0}),
    ROW(7, PresetFileName, "Attr<String>", 18, {"Default"}),
};
#undef ROW

}  // namespace

QOR_CLASS_TABLE(HDRParameterField, hdrRows);
QOR_CLASS_TABLE(TMOLinearField, linearRows);
QOR_CLASS_TABLE(TMOReinhard02Field, reinhardRows);
QOR_CLASS_TABLE(TMOEasyHDRField, easyRows);

TEST(HDRParameterField, HasThreeClassesBelowItThatShareItsTokens) {
    expectClass<HDRParameterField, AttrContainer>("HDRParameterField", 1, 4);
    expectClass<TMOLinearField, HDRParameterField>("TMOLinearField", 5, 6);
    expectClass<TMOReinhard02Field, HDRParameterField>("TMOReinhard02Field", 5, 14);
    expectClass<TMOEasyHDRField, HDRParameterField>("TMOEasyHDRField", 5, 7);
}

TEST(HDRParameterField, IsNamedAfterItsClassAndHasNoFields) {
    EXPECT_EQ(HDRParameterField::create()->getName(), "HDRParameterField");
    EXPECT_EQ(TMOLinearField::create()->getName(), "TMOLinearField");
    EXPECT_EQ(TMOReinhard02Field::create()->getName(), "TMOReinhard02Field");
    EXPECT_EQ(TMOEasyHDRField::create()->getName(), "TMOEasyHDRField");
    EXPECT_EQ(HDRParameterField::create()->getNumFields(), 0u);
    EXPECT_EQ(TMOEasyHDRField::create()->getNumFields(), 0u);
}

TEST(HDRParameterField, HasOneKeyUnderDifferentTokensInTheClassesBelowIt) {
    EXPECT_EQ(TMOLinearField::create()->getAttrToken("MaximalLuminance"), 5u);
    EXPECT_EQ(TMOReinhard02Field::create()->getAttrToken("MaximalLuminance"), 8u);
    EXPECT_EQ(TMOEasyHDRField::create()->getAttrToken("MaximalLuminance"), 5u);
}

TEST(HDRParameterField, LendsItsRowsToTheClassesBelowIt) {
    const auto field = TMOReinhard02Field::create();

    field->HDRGroup(4);

    EXPECT_EQ(field->getAttrToken("HDRGroup"), 3u);
    EXPECT_EQ(field->Attr_HDRGroup().get(), 4);
}

TEST(TMOReinhard02Field, BeginsWithAnEmptyRangeOfLuminance) {
    const auto field = TMOReinhard02Field::create();

    EXPECT_LT(field->MaximalLuminance(), field->MinimalLuminance());
    EXPECT_EQ(field->KeyValue(), 0.18);
    EXPECT_EQ(field->Gamma(), 1.6);
}

TEST(TMOEasyHDRField, BeginsWithTheDefaultPreset) {
    EXPECT_EQ(TMOEasyHDRField::create()->PresetFileName(), "Default");
}

TEST(HDRParameterField, TakesAllValuesFromItsSource) {
    const auto field = TMOReinhard02Field::create();
    field->Gamma(2.2);
    field->HDRIndex(3);

    const auto copy = std::dynamic_pointer_cast<TMOReinhard02Field>(field->duplicate(CreateDeep));
    const auto fresh = std::dynamic_pointer_cast<TMOReinhard02Field>(field->duplicate(CreateEmpty));

    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->Gamma(), 2.2);
    EXPECT_EQ(copy->HDRIndex(), 3);
    EXPECT_EQ(copy->KeyValue(), 0.18);
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(fresh->Gamma(), 1.6);
}

TEST(HDRParameterField, ComesBackFromAStream) {
    const auto field = TMOEasyHDRField::create();
    field->PresetFileName("");
    field->MaximalLuminance(12.5);
    field->AnalysisRequired(true);

    const auto copy = TMOEasyHDRField::create();
    ASSERT_EQ(readText(*copy, written(*field)), std::nullopt);

    EXPECT_EQ(copy->PresetFileName(), "");
    EXPECT_EQ(copy->MaximalLuminance(), 12.5);
    EXPECT_TRUE(copy->AnalysisRequired());
}

}  // namespace QOR::AttributeContainer::Testing
