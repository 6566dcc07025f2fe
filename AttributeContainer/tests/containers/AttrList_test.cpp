#include <AttributeContainer/AttrList.h>

#include <AttributeContainer/kVAttrContainer.h>

#include "support/Containers.h"

#include <gtest/gtest.h>

using namespace QOR::AttributeContainer;
using namespace QOR::AttributeContainer::Testing;

namespace {

const std::vector<AttrDefinition> firstRows{{0, "A", AttrType{0}, 18}, {1, "B", AttrType{9}, 0}};
const std::vector<AttrDefinition> nextRows{{2, "C", AttrType{10}, 18}};

struct AttrListTest : testing::Test {
    std::shared_ptr<AttrContainer> owner = AttrContainer::create();
    AttrList list{*owner};

    template <class T>
    Attr<T>& typed(AttrList& of, std::uint64_t token) {
        return dynamic_cast<Attr<T>&>(*of.get(token));
    }
};

}  // namespace

TEST_F(AttrListTest, IsEmptyAtFirst) {
    EXPECT_EQ(list.size(), 0u);
    EXPECT_EQ(list.get(0), nullptr);
}

TEST_F(AttrListTest, GrowsByTheRowsOfEachTable) {
    EXPECT_TRUE(list.createAttributes(firstRows, CreateDeep, nullptr));
    EXPECT_EQ(list.size(), 2u);
    EXPECT_TRUE(list.createAttributes(nextRows, CreateDeep, nullptr));
    EXPECT_EQ(list.size(), 3u);
    EXPECT_EQ(list.get(0)->getClassName(), "Attr<int>");
    EXPECT_EQ(list.get(1)->getClassName(), "Attr<double>");
    EXPECT_EQ(list.get(2)->getClassName(), "Attr<String>");
    EXPECT_EQ(list.get(3), nullptr);
    EXPECT_EQ(list.get(AttrContainer::noToken), nullptr);
}

TEST_F(AttrListTest, PutsItsAttributesIntoTheContainer) {
    list.createAttributes(firstRows, CreateDeep, nullptr);
    EXPECT_EQ(&list.get(0)->getLocation()->get(), owner.get());
    EXPECT_TRUE(list.get(0)->hasDefinitionFlag());
    EXPECT_FALSE(list.get(1)->hasDefinitionFlag());
}

TEST_F(AttrListTest, FindsATokenByIdentity) {
    list.createAttributes(firstRows, CreateDeep, nullptr);
    EXPECT_EQ(list.getToken(*list.get(0)), 0u);
    EXPECT_EQ(list.getToken(*list.get(1)), 1u);
    EXPECT_EQ(list.getToken(owner->Attr_Name()), AttrContainer::noToken);
}

TEST_F(AttrListTest, CopiesTheValuesOfASource) {
    AttrList source(*owner);
    source.createAttributes(firstRows, CreateDeep, nullptr);
    typed<int>(source, 0).set(5);
    typed<double>(source, 1).set(2.5);
    source.get(0)->setMarked(true);

    EXPECT_TRUE(list.createAttributes(firstRows, CreateDeep, &source));

    EXPECT_EQ(typed<int>(list, 0).get(), 5);
    EXPECT_EQ(typed<double>(list, 1).get(), 2.5);
    EXPECT_NE(list.get(0), source.get(0));
    EXPECT_FALSE(list.get(0)->isMarked());
}

TEST_F(AttrListTest, PlacesARowByItsTokenAndNotByItsOrder) {
    const std::vector<AttrDefinition> rows{{1, "B", AttrType{9}, 18}, {0, "A", AttrType{0}, 18}};
    list.createAttributes(rows, CreateDeep, nullptr);
    EXPECT_EQ(list.get(0)->getClassName(), "Attr<int>");
    EXPECT_EQ(list.get(1)->getClassName(), "Attr<double>");
}

TEST_F(AttrListTest, ThrowsWhereTheSourceIsTooShort) {
    AttrList source(*owner);
    source.createAttributes(firstRows, CreateDeep, nullptr);
    list.createAttributes(firstRows, CreateDeep, nullptr);
    try {
        list.createAttributes(nextRows, CreateDeep, &source);
        ADD_FAILURE() << "no exception";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "invalid vector subscript");
    }
}

TEST_F(AttrListTest, ThrowsForARowThatDoesNotContinueTheList) {
    EXPECT_THROW(list.createAttributes(nextRows, CreateDeep, nullptr), std::out_of_range);
}

TEST_F(AttrListTest, HasAHoleForATypeThatNoTableCanMake) {
    EXPECT_TRUE(list.createAttributes({{0, "Point", AttrType{49}, 18}}, CreateDeep, nullptr));
    EXPECT_EQ(list.size(), 1u);
    EXPECT_EQ(list.get(0), nullptr);
}
