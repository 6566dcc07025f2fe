// A store of one's own, made from the few operations that it must write.
#include <QOR/KeyTreeStore.h>

#include "StoreConformance.h"

namespace QOR::keystore::Testing {

namespace {

// Another program uses this store, too: it removes the only subkey as soon as that was found.
class SharedStore : public KeyTreeStore {
public:
    static constexpr Node onlySubkey = 2;

    Status checkKey(Node key) override { return key == rootNode ? Success : KeyDeleted; }
    Status inqSubkey(Node, std::wstring_view name, Node& subkey) override {
        if (foldName(name) != L"ONLY") return FileNotFound;
        subkey = onlySubkey;
        return Success;
    }
    Status makeSubkey(Node, std::wstring_view, Node&) override { return WriteProtected; }
    Status rmKey(Node) override { return KeyDeleted; }
    Status getSubkey(Node, std::size_t, std::wstring&) override { return NoMoreItems; }
    Status setValue(Node key, std::wstring_view, unsigned long, const unsigned char*,
                    std::size_t) override {
        return checkKey(key);
    }
    Status inqValue(Node key, std::wstring_view, StoredValue&) override {
        return key == rootNode ? FileNotFound : KeyDeleted;
    }
    Status rmValue(Node key, std::wstring_view name) override {
        StoredValue value;
        return inqValue(key, name, value);
    }
    Status getValueName(Node, std::size_t, std::wstring&) override { return NoMoreItems; }
    Status getContents(Node key, KeyContents&) override { return checkKey(key); }
};

TEST(KeyTreeStore, DeletesNoKeyThatAnotherDeletedFirst) {
    const auto store = std::make_shared<SharedStore>();

    EXPECT_EQ(RegDeleteKeyW(store->root(), L"only"), FileNotFound);
    const Handle key = opened(store->root(), L"only");
    EXPECT_EQ(RegDeleteKeyW(key, L""), KeyDeleted) << "its own";
}

TEST(KeyTreeStore, GivesTheStatusOfItsStore) {
    const auto store = std::make_shared<SharedStore>();
    const Handle key = opened(store->root(), L"only");

    EXPECT_EQ(createStatus(store->root(), L"new"), WriteProtected);
    EXPECT_EQ(createStatus(store->root(), L"only\\new\\newer"), WriteProtected);
    EXPECT_EQ(setBytes(store->root(), L"Gain", "1"), Success);
    EXPECT_EQ(query(store->root(), L"Gain").status, FileNotFound);
    EXPECT_EQ(setBytes(key, L"Gain", "1"), KeyDeleted);
    EXPECT_EQ(RegDeleteValueW(key, L"Gain"), KeyDeleted);
}

}  // namespace

}  // namespace QOR::keystore::Testing
