// Container trees that go into a key store and come out of it.
#include "store/TreeExport.h"
#include "store/TreeImport.h"

#include "model/Elements.h"
#include "model/ModelPath.h"
#include "store/StoreText.h"
#include "store/TreeStructure.h"
#include "store/ValueInStore.h"
#include "support/Sample.h"
#include "support/TemporaryFile.h"
#include "support/Trees.h"

#include <AttributeContainer/Attr.h>
#include <AttributeContainer/AttrRegistryVisitor.h>
#include <AttributeContainer/RegKeys.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

using namespace qormodel;
using namespace qormodel::testing;

namespace {

struct Store {
    TemporaryFile file{""};
    StoreFile store{file.getFolder().string() + "/s.db", WhenMissing::Make};

    std::string valueAt(const std::wstring& key, const std::wstring& name) const {
        const auto opened = StoreKey::inq(store, key);
        const auto value = opened ? opened->inqValue(name) : std::nullopt;
        return value ? valueText(*value) : "none";
    }
};

Element rootOf(const Document& document) {
    return {document.root, document.root, "/", 0, false};
}

ImportResult import(const Store& store, const Document& document) {
    return importTree(store.store, L"P", rootOf(document), document.outline.title);
}

// What comes out of the key P, with its values.
Document exported(const Store& store, std::vector<KeyProblem>& problems) {
    Document document = makeTree(store.store, L"P", problems);
    readValues(store.store, L"P", rootOf(document));
    return document;
}

std::string textOf(const Document& document) {
    std::stringbuf text;
    writeDocument(document, text, "text");
    return text.str();
}

Document documentWith(const std::shared_ptr<ac::Attribute>& attribute) {
    Document document = makeDocument();
    document.root->addAttribute(attribute, "Tested");
    return document;
}

template <class T> std::shared_ptr<ac::Attribute> attributeOf(T value) {
    const auto attribute = std::make_shared<ac::CustAttr<T>>(std::nullopt);
    attribute->set(std::move(value));
    return attribute;
}

}  // namespace

TEST(TreeStore, GivesATreeBackAsItWas) {
    const LoadedText project(textWithoutRelation());
    const Store store;
    std::vector<KeyProblem> problems;

    const auto result = import(store, project.document);
    const Document back = exported(store, problems);

    EXPECT_EQ(result.numKeys, 4u);
    EXPECT_EQ(result.problems.size(), 0u);
    EXPECT_EQ(problems.size(), 0u);
    EXPECT_EQ(textOf(back), textWithoutRelation());
}

TEST(TreeStore, LaysContainersBelowEachOther) {
    const LoadedText project(projectText);
    const Store store;

    import(store, project.document);

    EXPECT_EQ(store.valueAt(L"P", L"Origin"), "1 2.5 -3");
    EXPECT_EQ(store.valueAt(L"P\\Scans", L"Count"), "2");
    EXPECT_EQ(store.valueAt(L"P\\Scans\\Box", L"Size"), "2.5");
    EXPECT_EQ(store.valueAt(L"P\\Scans\\First", L"Name"), "First");
    EXPECT_EQ(StoreKey::inq(store.store, L"P")->inqValue(L"Origin")->type,
              keystore::TypeExpandText);
}

TEST(TreeStore, KeepsClassesTypesAndOrderBesideTheValues) {
    const LoadedText project(projectText);
    const Store store;

    import(store, project.document);

    EXPECT_EQ(store.valueAt(L"P\\Scans", std::wstring(structureName)),
              "class Object\nattribute Attr<String> Name\nattribute Attr<String> Action\n"
              "attribute Attr<String> Event\nattribute Attr<uint16_t> MajorVersion\n"
              "attribute Attr<uint16_t> MinorVersion\nattribute Attr<Uuid> UUID\n"
              "attribute Attr<int> Count\nfield Box\nchild First");
    EXPECT_TRUE(store.valueAt(L"P", std::wstring(structureName)).starts_with("title Test\n"));
}

TEST(TreeStore, IsReadByTheVisitorOfTheLibrary) {
    const LoadedText project(projectText);
    const Store store;
    import(store, project.document);
    const auto keys = std::make_shared<ac::RegKeys>("P\\Scans", store.store.store->root(), false);
    const auto scans = ac::Object::create();
    put(*scans, "Count", 0);
    put(*addField(*scans, "Box"), "Size", 0);

    ac::AttrReadRegistry reader(keys, false, 0, 1000);
    scans->attributeVisitor(reader, true);

    EXPECT_EQ(scans->getName(), "Scans");
    EXPECT_EQ(scans->getAttribute("Count").lock()->getValueString(), "2");
    EXPECT_EQ(scans->getField("Box").lock()->getAttribute("Size").lock()->getValueString(), "2");
}

TEST(TreeStore, ReadsWhatTheVisitorOfTheLibraryWrote) {
    const LoadedText project(projectText);
    const Store store;
    const auto keys = std::make_shared<ac::RegKeys>("P", store.store.store->root(), false);
    ac::AttrWriteRegistry writer(keys, 0, 1000);
    project.document.root->attributeVisitor(writer, true);
    const Document empty = makeDocument("Other");

    const auto edits = readValues(store.store, L"P", rootOf(empty));

    EXPECT_EQ(empty.root->getName(), "Project");
    EXPECT_EQ(edits.size(), 6u);  // the attributes that an object has
}

TEST(TreeStore, KeepsDigitsThatTheLibrarysTextDoesNotHave) {
    const double third = 1.0 / 3;
    const Document document = documentWith(attributeOf(third));
    const Store store;
    std::vector<KeyProblem> problems;

    EXPECT_EQ(import(store, document).problems.size(), 0u);
    const Document back = exported(store, problems);

    const auto found = inqAttribute(back, "/Tested");
    ASSERT_TRUE(found);
    EXPECT_EQ(dynamic_cast<ac::Attr<double>&>(*found->attribute).get(), third);
}

TEST(TreeStore, KeepsTextsThatNeedEscapesAndLongLists) {
    const std::string text = "a \"b\" \\ c\n\td } { \x01 Zo\xC3\xAB \xF0\x9F\x98\x80";
    const std::vector<int> list(2000, -7);
    Document document = documentWith(attributeOf(text));
    document.root->addAttribute(attributeOf(list), "List");
    document.root->addAttribute(attributeOf(ac::StringMap{{"a b", "x } y"}, {"", "\""}}), "Map");
    document.root->addAttribute(attributeOf(std::vector<std::string>{"", "a b", "\\"}), "Texts");
    const Store store;
    std::vector<KeyProblem> problems;

    const auto result = import(store, document);
    const Document back = exported(store, problems);

    EXPECT_EQ(result.problems.size(), 0u);
    EXPECT_EQ(result.longPaths, std::vector<std::string>{"/List"});
    for (const char* const path : {"/Tested", "/List", "/Map", "/Texts"})
        EXPECT_EQ(valueAt(back, path), valueAt(document, path)) << path;
}

TEST(TreeStore, TellsAValueThatNoTextStandsFor) {
    const Document notUtf8 = documentWith(attributeOf(std::string("\xFF")));
    const Store store;

    const auto result = import(store, notUtf8);

    ASSERT_EQ(result.problems.size(), 1u);
    EXPECT_EQ(result.problems.front().path, "/Tested");
}

TEST(TreeStore, TellsNamesThatAStoreTakesForTheSame) {
    const Document document = makeDocument();
    addObject(*document.root, "Scan");
    addObject(*document.root, "other")->name("scan");  // the siblings are not asked
    addField(*document.root, "Box");
    addObject(*document.root, "box");
    put(*document.root, "Count", 1);
    put(*document.root, "count", 2);
    const Store store;

    const auto result = import(store, document);

    std::string paths;
    for (const auto& problem : result.problems) paths += problem.path + ' ';
    EXPECT_EQ(paths, "/count /scan /box ");
}

TEST(TreeStore, KeepsTheClassesThatAreNotKnownHere) {
    const LoadedText project(textWithUnknown("Attr<int>"));
    const std::string text =
        modelText("AttrContainer { \n}\nChild { \n\"Radar\" \"r\"\nAttrContainer { \nAttr<int> { "
                  "\nName \"x\"\nValue 5\n}\n}\n}\n");
    const LoadedText radar(text);
    const Store store;
    std::vector<KeyProblem> problems;

    import(store, radar.document);
    const Document back = exported(store, problems);

    EXPECT_EQ(valueAt(back, "/r/x"), "5");
    const auto element = inqElement(back, "/r");
    ASSERT_TRUE(element);
    EXPECT_EQ(classOf(*element->container), "Radar");
    EXPECT_TRUE(isUnknownClass(*element->container));
}

TEST(TreeStore, MakesATreeOfKeysWithoutAStructure) {
    const Store store;
    const auto key = StoreKey::make(store.store, L"P");
    key.setValue(L"Name", textValue(L"Viewer"));
    key.setValue(L"Text", textValue(L"a b"));
    key.setValue(L"Number", numberValue(7, TypeDword, 4));
    key.setValue(L"Large", numberValue(1ull << 40, TypeQword, 8));
    key.setValue(L"List", textsValue({L"a", L"b \"c\""}));
    key.setValue(L"Bytes", {3, {1, 255}});
    key.setValue(L"not a name", textValue(L"x"));
    StoreKey::make(store.store, L"P\\Window").setValue(L"Position", textValue(L"40 25"));
    std::vector<KeyProblem> problems;

    const Document document = exported(store, problems);

    EXPECT_EQ(document.root->getName(), "Viewer");
    EXPECT_EQ(valueAt(document, "/Text"), "a b");
    EXPECT_EQ(valueAt(document, "/Number"), "7");
    EXPECT_EQ(valueAt(document, "/Large"), "1099511627776");
    EXPECT_EQ(valueAt(document, "/List"), "{ \"a\" \"b \\\"c\\\"\" }");
    EXPECT_EQ(valueAt(document, "/Bytes"), "01 ff");
    EXPECT_EQ(valueAt(document, "/Window/Position"), "40 25");
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_EQ(problems.front().path, "P\\not a name");
}

TEST(TreeStore, TakesWhatCameIntoAKeySinceAndLeavesOutWhatWent) {
    const LoadedText project(projectText);
    const Store store;
    import(store, project.document);
    StoreKey::make(store.store, L"P\\Scans").setValue(L"Extra", textValue(L"new"));
    StoreKey::make(store.store, L"P\\Scans\\More").setValue(L"x", textValue(L"y"));
    EXPECT_TRUE(rmTree(store.store, L"P\\Scans\\First"));
    std::vector<KeyProblem> problems;

    const Document back = exported(store, problems);

    EXPECT_EQ(valueAt(back, "/Scans/Extra"), "new");
    EXPECT_EQ(valueAt(back, "/Scans/More/x"), "y");
    EXPECT_EQ(pathsOf(back), "/\n/Scans\n/Scans/Box\n/Scans/More\n");
}

TEST(TreeStore, RefusesAValueThatIsNoneOfItsType) {
    const LoadedText project(projectText);
    const Store store;
    import(store, project.document);
    StoreKey::make(store.store, L"P\\Scans").setValue(L"Count", textValue(L"many"));

    try {
        readValues(store.store, L"P", rootOf(project.document));
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(std::string(failure.what()).substr(store.store.file.size()),
                  ": P\\Scans\\Count: \"many\" is no value of type Attr<int>: expected a whole "
                  "number from -2147483648 to 2147483647");
    }
}

TEST(TreeStore, MakesNoKeysWhereItReads) {
    const LoadedText project(projectText);
    const Store store;
    StoreKey::make(store.store, L"P");

    readValues(store.store, L"P", rootOf(project.document));

    EXPECT_EQ(StoreKey::inq(store.store, L"P")->listSubkeys().size(), 0u);
}

TEST(ValueInStore, GivesTheLibrarysTextWhereThatIsWhole) {
    EXPECT_EQ(storedTextOf(*attributeOf(2.5)), "2.5");
    EXPECT_EQ(storedTextOf(*attributeOf(QOR::Vec3d<double>(1, 2.5, -3))), "1 2.5 -3");
    EXPECT_EQ(storedTextOf(*attributeOf(std::string(" x "))), " x ");
    EXPECT_EQ(storedTextOf(*attributeOf(std::string())), "");
}
