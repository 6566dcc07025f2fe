#include <QOR/KeyStore.h>

#include "StoreConformance.h"

#include <QOR/KeyTreeStore.h>

#include <atomic>
#include <thread>
#include <utility>

namespace QOR::keystore::Testing {

namespace {

TEST(KeyStoreNumbers, AreThoseOfTheHomePlatform) {
    EXPECT_EQ(KeyRead, 0x20019u);
    EXPECT_EQ(KeyWrite, 0x20006u);
    EXPECT_EQ(KeyReadWrite, 0x2001Fu);
    EXPECT_EQ(KeyReadWriteDac, 0x60019u);
    EXPECT_EQ(KeyAllAccess, 0xF003Fu);
    EXPECT_EQ(KeyRead | WriteDac, KeyReadWriteDac);
    EXPECT_EQ(Success, 0);
    const std::pair<Status, long> statuses[] = {
        {FileNotFound, 2},      {AccessDenied, 5},  {InvalidHandle, 6},     {NotEnoughMemory, 8},
        {WriteProtected, 19},   {NotSupported, 50}, {InvalidParameter, 87}, {DiskFull, 112},
        {BadPathname, 161},     {Busy, 170},        {MoreData, 234},        {NoMoreItems, 259},
        {NoAccess, 998},        {BadStore, 1009},   {StoreIoFailed, 1016},  {KeyDeleted, 1018},
        {UnknownRevision, 1305}};
    for (const auto& [status, number] : statuses) EXPECT_EQ(status, number);
    const std::pair<unsigned long, unsigned long> types[] = {
        {TypeText, 1}, {TypeExpandText, 2}, {TypeBinary, 3}, {TypeMultiText, 7}};
    for (const auto& [type, number] : types) EXPECT_EQ(type, number);
    EXPECT_EQ(CreatedNewKey, 1u);
    EXPECT_EQ(OpenedExistingKey, 2u);
}

TEST(MemoryStore, AnswersHandlesWhoseStoreIsGone) {
    auto store = makeMemoryStore();
    const HKEY root = store->root();
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyW(root, L"A", &key), Success);
    store.reset();

    EXPECT_EQ(setBytes(key, L"Gain", "1"), InvalidHandle);
    EXPECT_EQ(createStatus(key, L"B"), InvalidHandle);
    EXPECT_EQ(openStatus(root, L"A"), InvalidHandle);
    EXPECT_EQ(RegCloseKey(key), Success);
    EXPECT_EQ(RegCloseKey(key), InvalidHandle);
}

TEST(MemoryStore, TellsItsHandlesFromThoseOfAnotherStore) {
    const auto one = makeMemoryStore();
    const auto other = makeMemoryStore();
    createStatus(one->root(), L"A");

    EXPECT_NE(one->root(), other->root());
    EXPECT_EQ(openStatus(other->root(), L"A"), FileNotFound);
}

TEST(MemoryStore, GivesItsRootBackForAnEmptyPath) {
    const auto store = makeMemoryStore();
    HKEY key = nullptr;

    EXPECT_EQ(RegOpenKeyExW(store->root(), L"", 0, KeyRead, &key), Success);
    EXPECT_EQ(key, store->root());
}

TEST(MemoryStore, KeepsItsRoot) {
    const auto store = makeMemoryStore();
    createStatus(store->root(), L"A");

    EXPECT_EQ(RegDeleteKeyW(store->root(), L""), AccessDenied);
    EXPECT_EQ(RegDeleteTreeW(store->root(), L""), Success);
    EXPECT_EQ(createStatus(store->root(), L"A"), Success);
}

TEST(MemoryStore, RefusesKeyNamesOf256Characters) {
    const auto store = makeMemoryStore();

    EXPECT_EQ(createStatus(store->root(), std::wstring(256, L'x').c_str()), InvalidParameter);
}

TEST(MemoryStore, CountsUtf16UnitsInTheLimitOfNames) {
    const auto store = makeMemoryStore();
    std::wstring name;
    for (int i = 0; i < 127; ++i) name += L"\U0001f600";

    EXPECT_EQ(createStatus(store->root(), (name + L"x").c_str()), Success);
    EXPECT_EQ(createStatus(store->root(), (name + L"xx").c_str()), InvalidParameter);
}

TEST(MemoryStore, RefusesToEmptyOrMeasureAKeyWithoutTheRight) {
    const auto store = makeMemoryStore();
    setBytes(created(store->root(), L"A\\B"), L"Gain", "1");
    const Handle reading = opened(store->root(), L"A", KeyRead);
    const Handle writing = opened(store->root(), L"A", KeyWrite);
    unsigned long count = 0;

    EXPECT_EQ(RegDeleteTreeW(reading, nullptr), AccessDenied);
    EXPECT_EQ(subkeysOf(reading), Names{L"B"});
    EXPECT_EQ(RegQueryInfoKeyA(writing, nullptr, nullptr, nullptr, &count, nullptr, nullptr,
                               nullptr, nullptr, nullptr, nullptr, nullptr),
              AccessDenied);
    EXPECT_EQ(RegCopyTreeW(writing, L"", store->root()), AccessDenied);
}

TEST(MemoryStore, CopiesATreeToAnotherStore) {
    const auto from = makeMemoryStore();
    const auto to = makeMemoryStore();
    setBytes(created(from->root(), L"A\\B"), L"Gain", "1");

    EXPECT_EQ(RegCopyTreeW(from->root(), L"A", to->root()), Success);
    EXPECT_EQ(query(opened(to->root(), L"B"), L"Gain").bytes, "1");
}

TEST(MemoryStore, CopiesATreeIntoItself) {
    const auto store = makeMemoryStore();
    setBytes(created(store->root(), L"A\\B"), L"Gain", "1");
    const Handle within = created(store->root(), L"A\\B\\Copy");

    EXPECT_EQ(RegCopyTreeW(store->root(), L"A", within), Success);

    EXPECT_EQ(query(opened(within, L"B"), L"Gain").bytes, "1");
    EXPECT_EQ(subkeysOf(opened(within, L"B\\Copy")), Names{});
}

TEST(MemoryStore, KnowsNoTransactions) {
    const auto store = makeMemoryStore();

    EXPECT_EQ(store->begin(), NotSupported);
    EXPECT_EQ(store->commit(), NotSupported);
}

TEST(MemoryStore, HasNoTimesAndNoClasses) {
    const auto store = makeMemoryStore();
    createStatus(store->root(), L"A");
    wchar_t name[4], keyClass[4] = L"xxx";
    unsigned long size = 4, classSize = 4;
    FileTime time{1, 1};

    EXPECT_EQ(RegEnumKeyExW(store->root(), 0, name, &size, nullptr, keyClass, &classSize, &time),
              Success);
    EXPECT_EQ(keyClass[0], 0);
    EXPECT_EQ(classSize, 0u);
    EXPECT_EQ(time.low, 0u);
    EXPECT_EQ(time.high, 0u);
}

TEST(MemoryStore, MeasuresNoTimesNoClassesAndNoSecurity) {
    const auto store = makeMemoryStore();
    char keyClass[4] = "xxx";
    unsigned long classSize = 4, maxClass = 9, security = 9;
    FileTime time{1, 1};

    EXPECT_EQ(RegQueryInfoKeyA(store->root(), keyClass, &classSize, nullptr, nullptr, nullptr,
                               &maxClass, nullptr, nullptr, nullptr, &security, &time),
              Success);
    EXPECT_EQ(keyClass[0], 0);
    EXPECT_EQ(classSize, 0u);
    EXPECT_EQ(maxClass, 0u);
    EXPECT_EQ(security, 0u);
    EXPECT_EQ(time.low, 0u);
    EXPECT_EQ(time.high, 0u);
    EXPECT_EQ(RegQueryInfoKeyA(store->root(), keyClass, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr, nullptr, nullptr, nullptr),
              InvalidParameter);
}

TEST(MemoryStore, RefusesNullWhereItMustAnswer) {
    const auto store = makeMemoryStore();
    createStatus(store->root(), L"A");
    wchar_t name[4];

    EXPECT_EQ(RegOpenKeyExW(store->root(), L"A", 0, KeyRead, nullptr), InvalidParameter);
    EXPECT_EQ(RegCreateKeyW(store->root(), L"B", nullptr), InvalidParameter);
    EXPECT_EQ(openStatus(store->root(), L"B"), FileNotFound);
    EXPECT_EQ(RegEnumKeyExW(store->root(), 0, name, nullptr, nullptr, nullptr, nullptr, nullptr),
              InvalidParameter);
    EXPECT_EQ(RegEnumValueW(store->root(), 0, name, nullptr, nullptr, nullptr, nullptr, nullptr),
              InvalidParameter);
}

TEST(MemoryStore, ServesSeveralThreads) {
    const auto store = makeMemoryStore();
    std::atomic<int> failures = 0;
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number)
        threads.emplace_back([&, number] {
            const std::wstring path = L"Same\\Own" + std::to_wstring(number);
            for (int i = 0; i < 500; ++i) {
                const Handle key = created(store->root(), path.c_str());
                if (setBytes(key, std::to_wstring(i).c_str(), "x") != Success) ++failures;
            }
        });
    for (auto& thread : threads) thread.join();

    EXPECT_EQ(failures, 0);
    for (int number = 0; number < 4; ++number) {
        const std::wstring path = L"Same\\Own" + std::to_wstring(number);
        EXPECT_EQ(valuesOf(opened(store->root(), path.c_str())).size(), 500u);
    }
}

TEST(NameFold, PairsLettersThatAreEachOthersOnlyForm) {
    EXPECT_EQ(foldName(L"aZ09_-\x00e9\x03b1\x044f\x01c6\xff41"),
              L"AZ09_-\x00c9\x0391\x042f\x01c4\xff21");
    EXPECT_EQ(foldName(L"\x1f80\x1fb3"), L"\x1f88\x1fbc");  // with an iota below
    EXPECT_EQ(foldCharacter(L'\x00ff'), L'\x0178');
}

TEST(NameFold, LeavesLettersAloneThatSeveralCapitalsClaim) {
    // The final sigma, the long s, the micro sign, the sharp s, an i without its dot, a title
    // letter.
    for (const wchar_t letter : {L'\x03c2', L'\x017f', L'\x00b5', L'\x00df', L'\x0131', L'\x01c5'})
        EXPECT_EQ(foldCharacter(letter), letter);
    EXPECT_EQ(foldName(L"\U00010428"), L"\U00010428");  // beyond the first plane
}

TEST(TextData, IsUtf16WithTheLowByteFirst) {
    const std::vector<unsigned char> expected{'a', 0, 0xac, 0x20, 0x3d, 0xd8, 0x00, 0xde};

    EXPECT_EQ(textToData(L"a\x20ac\U0001f600"), expected);
    EXPECT_EQ(textToData(L""), std::vector<unsigned char>{});
}

TEST(TextData, ComesBackUnitByUnit) {
    const unsigned char data[] = {'a', 0, 0xac, 0x20, 'x'};

    EXPECT_EQ(dataToText(data, 5), L"a\x20ac");
    EXPECT_EQ(dataToText(data, 1), L"");
    EXPECT_EQ(dataToText(nullptr, 0), L"");
}

TEST(Descriptors, AreMadeInMemoryOfTheirOwn) {
    auto* const memory = static_cast<unsigned char*>(LocalAlloc(64, 40));
    ASSERT_TRUE(memory);
    for (int i = 0; i < 40; ++i) EXPECT_EQ(memory[i], 0);

    EXPECT_EQ(InitializeSecurityDescriptor(nullptr, 1), 0);
    EXPECT_EQ(SetSecurityDescriptorDacl(memory, 1, nullptr, 0), 0) << "not initialised yet";
    EXPECT_NE(InitializeSecurityDescriptor(memory, 1), 0);
    EXPECT_NE(SetSecurityDescriptorDacl(memory, 1, nullptr, 0), 0);
    EXPECT_EQ(memory[0], 1) << "the revision";
    EXPECT_EQ(memory[2], 4) << "a list is present";
    EXPECT_EQ(LocalFree(memory), nullptr);
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Stores, StoreConformance, testing::ValuesIn(ownStores()), nameOfStore);

}  // namespace QOR::keystore::Testing
