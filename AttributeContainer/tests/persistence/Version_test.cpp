#include <AttributeContainer/Version.h>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

using namespace QOR::AttributeContainer;

namespace {

// Read while the static objects of the program are made.
const std::string apiBeforeMain = version.getApiVersion()->getReleaseNumbers();

VersionNum numbered(int major) {
    return VersionNum("n" + std::to_string(major), major, 0, 0, 0, 0, "");
}

Version someVersion() {
    return Version(numbered(1), numbered(2), numbered(3), numbered(4), numbered(5), "pretty");
}

}  // namespace

TEST(Version, HoldsTheNumbersOfTheLibrary) {
    const struct {
        const VersionNum* member;
        const char* name;
        const char* numbers;
        const char* revision;
    } rows[] = {
        {version.getAppVersion(), "kVLib", "9.1.0.0", "APPLICATION_VERSION_REVISION"},
        {version.getFormatVersion(), "kVLib", "9.1.0.0", ""},
        {version.getRootModelVersion(), "RootModel", "0.0.0.0", ""},
        {version.getSocketVersion(), "kVSocket", "1.10.0.0", ""},
        {version.getApiVersion(), "API", "2.0.24.0", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.member->getName(), row.name);
        EXPECT_EQ(row.member->getReleaseNumbers(), row.numbers);
        EXPECT_EQ(row.member->getRevision(), row.revision);
    }
    EXPECT_EQ(version.getPrettyVersion(), "");
    EXPECT_EQ(version.getSavedModelVersion(), nullptr);
}

TEST(Version, StandsBeforeTheStaticObjectsOfOtherFiles) { EXPECT_EQ(apiBeforeMain, "2.0.24.0"); }

TEST(Version, TakesItsMembersInTheOrderAppFormatSocketApiRootModelPretty) {
    const auto record = someVersion();
    EXPECT_EQ(record.getAppVersion()->getName(), "n1");
    EXPECT_EQ(record.getFormatVersion()->getName(), "n2");
    EXPECT_EQ(record.getSocketVersion()->getName(), "n3");
    EXPECT_EQ(record.getApiVersion()->getName(), "n4");
    EXPECT_EQ(record.getRootModelVersion()->getName(), "n5");
    EXPECT_EQ(record.getPrettyVersion(), "pretty");
    EXPECT_EQ(record.getSavedModelVersion(), nullptr);
}

TEST(Version, CopiesWhatIsSet) {
    auto record = someVersion();
    record.setAppVersion(numbered(11));
    record.setFormatVersion(numbered(12));
    record.setSocketVersion(numbered(13));
    record.setApiVersion(numbered(14));
    record.setRootModelVersion(numbered(15));
    record.setSavedModelVersion(numbered(16));

    EXPECT_EQ(record.getAppVersion()->getName(), "n11");
    EXPECT_EQ(record.getFormatVersion()->getName(), "n12");
    EXPECT_EQ(record.getSocketVersion()->getName(), "n13");
    EXPECT_EQ(record.getApiVersion()->getName(), "n14");
    EXPECT_EQ(record.getRootModelVersion()->getName(), "n15");
    EXPECT_EQ(record.getSavedModelVersion()->getName(), "n16");
}

TEST(Version, ReplacesTheSavedModelVersion) {
    auto record = someVersion();
    record.setSavedModelVersion(numbered(6));
    record.setSavedModelVersion(*record.getSavedModelVersion());  // its own, which then goes
    EXPECT_EQ(record.getSavedModelVersion()->getName(), "n6");

    record.setSavedModelVersion(numbered(7));
    EXPECT_EQ(record.getSavedModelVersion()->getName(), "n7");
}

TEST(Version, GivesPointersToItsMembersThatStayWhenTheyAreSet) {
    auto record = someVersion();
    const auto* member = record.getFormatVersion();
    record.setFormatVersion(numbered(9));
    EXPECT_EQ(record.getFormatVersion(), member);
    EXPECT_EQ(member->getName(), "n9");
}

TEST(Version, IsCopiedWithASavedModelVersionOfItsOwn) {
    auto record = someVersion();
    record.setSavedModelVersion(numbered(6));

    const Version copy(record);
    record.setSavedModelVersion(numbered(7));
    record.setAppVersion(numbered(8));

    EXPECT_EQ(copy.getSavedModelVersion()->getName(), "n6");
    EXPECT_EQ(copy.getAppVersion()->getName(), "n1");
    EXPECT_EQ(copy.getFormatVersion()->getName(), "n2");
    EXPECT_EQ(copy.getSocketVersion()->getName(), "n3");
    EXPECT_EQ(copy.getApiVersion()->getName(), "n4");
    EXPECT_EQ(copy.getRootModelVersion()->getName(), "n5");
    EXPECT_EQ(copy.getPrettyVersion(), "pretty");
}

TEST(Version, IsAlwaysABetaCandidate) {
    EXPECT_TRUE(version.isBetaCandidate());
    EXPECT_TRUE(someVersion().isBetaCandidate());
}

TEST(Version, LeavesItsMutexFreeAfterEveryAccess) {
    auto record = someVersion();
    record.setSavedModelVersion(numbered(6));
    record.getSavedModelVersion();
    record.getPrettyVersion();
    const Version copy(record);
    const VersionNum number;

    ASSERT_TRUE(Version::versionProtect.try_lock());
    Version::versionProtect.unlock();
}

TEST(Version, IsReadAndSetFromSeveralThreads) {
    const VersionNum former = *version.getFormatVersion();
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&former] {
            for (int round = 0; round < 200; ++round) {
                version.setFormatVersion(former);
                EXPECT_EQ(VersionNum().getName(), "kVLib");
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(version.getFormatVersion()->getReleaseNumbers(), "9.1.0.0");
}

TEST(Version, GivesForeignCallersNoText) {
    EXPECT_EQ(attributeContainergetVersionString(), nullptr);
}
