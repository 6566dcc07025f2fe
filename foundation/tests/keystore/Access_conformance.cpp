#include "StoreConformance.h"

#include <cstddef>

namespace QOR::keystore::Testing {

TEST_P(StoreConformance, RefusesToWriteThroughAHandleForReading) {
    setBytes(created(root, L"A"), L"Gain", "1");
    const Handle reading = opened(root, L"A", KeyRead);

    EXPECT_EQ(setBytes(reading, L"Gain", "2"), AccessDenied);
    EXPECT_EQ(setBytes(reading, L"New", "2"), AccessDenied);
    EXPECT_EQ(RegDeleteValueW(reading, L"Gain"), AccessDenied);
    EXPECT_EQ(query(reading, L"Gain").bytes, "1");
}

TEST_P(StoreConformance, RefusesToReadThroughAHandleForWriting) {
    setBytes(created(root, L"A\\B"), L"Gain", "1");
    const Handle writing = opened(root, L"A", KeyWrite);
    wchar_t name[5];
    unsigned long size = 5;

    EXPECT_EQ(setBytes(writing, L"Gain", "2"), Success);
    EXPECT_EQ(query(writing, L"Gain").status, AccessDenied);
    EXPECT_EQ(RegEnumKeyExW(writing, 0, name, &size, nullptr, nullptr, nullptr, nullptr),
              AccessDenied);
    EXPECT_EQ(RegEnumValueW(writing, 0, name, &size, nullptr, nullptr, nullptr, nullptr),
              AccessDenied);
}

TEST_P(StoreConformance, HonoursTheAccessOfAKeyThatItMade) {
    const Handle reading = created(root, L"A", KeyRead);

    EXPECT_EQ(setBytes(reading, L"Gain", "1"), AccessDenied);
    EXPECT_EQ(query(reading, L"Gain").status, FileNotFound);
}

TEST_P(StoreConformance, AllowsBothThroughAHandleForBoth) {
    const Handle both = created(root, L"A", KeyReadWrite);

    EXPECT_EQ(setBytes(both, L"Gain", "1"), Success);
    EXPECT_EQ(query(both, L"Gain").bytes, "1");
}

TEST_P(StoreConformance, UnderstandsTheGeneralRights) {
    setBytes(created(root, L"A"), L"Gain", "1");
    const Handle reading = opened(root, L"A", 0x80000000);
    const Handle asMuchAsCanBe = opened(root, L"A", 0x02000000);

    EXPECT_EQ(query(reading, L"Gain").bytes, "1");
    EXPECT_EQ(setBytes(reading, L"Gain", "2"), AccessDenied);
    EXPECT_EQ(setBytes(asMuchAsCanBe, L"Gain", "2"), Success);
}

// What a handle asked for counts on its own key. Below it the store's own rules count, and these
// give every key to everybody.
TEST_P(StoreConformance, OpensAndMakesKeysBelowAHandleWithoutRights) {
    createStatus(root, L"A\\B");
    const Handle bare = opened(root, L"A", 0x20000);

    EXPECT_EQ(query(bare, L"Gain").status, AccessDenied);
    EXPECT_EQ(openStatus(bare, L"B", KeyAllAccess), Success);
    EXPECT_EQ(createStatus(bare, L"C"), Success);
    EXPECT_EQ(RegDeleteKeyW(bare, L"C"), Success);
    EXPECT_EQ(RegDeleteTreeW(bare, L"B"), Success);
}

TEST_P(StoreConformance, AnswersOnADeletedKeyThroughAnOpenHandle) {
    const Handle key = created(root, L"A");
    setBytes(key, L"Gain", "1");
    ASSERT_EQ(RegDeleteKeyW(root, L"A"), Success);
    wchar_t name[5];
    unsigned long size = 5;
    unsigned long count = 0;

    EXPECT_EQ(query(key, L"Gain").status, KeyDeleted);
    EXPECT_EQ(setBytes(key, L"Gain", "2"), KeyDeleted);
    EXPECT_EQ(RegDeleteValueW(key, L"Gain"), KeyDeleted);
    EXPECT_EQ(openStatus(key, L"B"), KeyDeleted);
    EXPECT_EQ(openStatus(key, L""), KeyDeleted);
    EXPECT_EQ(createStatus(key, L"B"), KeyDeleted);
    EXPECT_EQ(createStatus(key, L""), KeyDeleted);
    EXPECT_EQ(RegDeleteKeyW(key, L"B"), KeyDeleted);
    EXPECT_EQ(RegDeleteKeyW(key, L""), KeyDeleted);
    EXPECT_EQ(RegDeleteTreeW(key, nullptr), KeyDeleted);
    EXPECT_EQ(RegDeleteTreeW(key, L"B"), KeyDeleted);
    EXPECT_EQ(RegEnumKeyExW(key, 0, name, &size, nullptr, nullptr, nullptr, nullptr), KeyDeleted);
    EXPECT_EQ(RegEnumValueW(key, 0, name, &size, nullptr, nullptr, nullptr, nullptr), KeyDeleted);
    EXPECT_EQ(RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr,
                               nullptr, nullptr, nullptr, nullptr),
              KeyDeleted);
    const Handle target = created(root, L"T");
    EXPECT_EQ(RegCopyTreeW(key, L"", target), KeyDeleted);
}

TEST_P(StoreConformance, DoesNotTakeAKeyMadeAnewForTheDeletedOne) {
    const Handle old = created(root, L"A");
    RegDeleteKeyW(root, L"A");
    const Handle made = created(root, L"A");
    setBytes(made, L"Gain", "1");

    EXPECT_EQ(query(old, L"Gain").status, KeyDeleted);
    EXPECT_EQ(setBytes(old, L"Gain", "2"), KeyDeleted);
    EXPECT_EQ(query(made, L"Gain").bytes, "1");
}

TEST_P(StoreConformance, KeepsOtherHandlesOnAKeyThatOneClosed) {
    HKEY first = nullptr;
    RegCreateKeyW(root, L"A", &first);
    const Handle second = opened(root, L"A");
    RegCloseKey(first);

    EXPECT_EQ(setBytes(second, L"Gain", "1"), Success);
}

TEST_P(StoreConformance, TakesADescriptorThatGivesEverybodyAccess) {
    createStatus(root, L"A");
    const Handle key = opened(root, L"A", KeyReadWriteDac);
    alignas(std::max_align_t) unsigned char descriptor[40] = {};
    ASSERT_NE(InitializeSecurityDescriptor(descriptor, 1), 0);
    ASSERT_NE(SetSecurityDescriptorDacl(descriptor, 1, nullptr, 0), 0);

    EXPECT_EQ(RegSetKeySecurity(key, 4, descriptor), Success);
    EXPECT_EQ(openStatus(root, L"A", KeyAllAccess), Success);
}

TEST_P(StoreConformance, MakesAKeyWithADescriptor) {
    alignas(std::max_align_t) unsigned char descriptor[40] = {};
    InitializeSecurityDescriptor(descriptor, 1);
    SetSecurityDescriptorDacl(descriptor, 1, nullptr, 0);
    const SecurityAttributes security{sizeof(SecurityAttributes), descriptor, 1};
    HKEY key = nullptr;

    EXPECT_EQ(RegCreateKeyExW(root, L"A\\B", 0, nullptr, 0, KeyAllAccess, &security, &key, nullptr),
              Success);
    EXPECT_EQ(setBytes(key, L"Gain", "1"), Success);
    RegCloseKey(key);
    EXPECT_EQ(sizeof(SecurityAttributes), 24u);
}

TEST_P(StoreConformance, RefusesSecurityWithoutTheRightOrADescriptor) {
    createStatus(root, L"A");
    alignas(std::max_align_t) unsigned char descriptor[40] = {};
    const Handle changing = opened(root, L"A", KeyReadWriteDac);
    EXPECT_EQ(RegSetKeySecurity(changing, 4, nullptr), InvalidParameter);
    EXPECT_EQ(RegSetKeySecurity(changing, 4, descriptor), UnknownRevision);
    InitializeSecurityDescriptor(descriptor, 1);
    SetSecurityDescriptorDacl(descriptor, 1, nullptr, 0);

    EXPECT_EQ(RegSetKeySecurity(opened(root, L"A", KeyRead), 4, descriptor), AccessDenied);
    EXPECT_EQ(InitializeSecurityDescriptor(descriptor, 2), 0);
}

}  // namespace QOR::keystore::Testing
