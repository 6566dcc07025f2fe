#include <AttributeContainer/VersionNum.h>

#include <AttributeContainer/Version.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace QOR::AttributeContainer;

namespace {

// Built while the static objects of the program are made.
const VersionNum builtBeforeMain;

VersionNum named(const char* name) { return VersionNum(name, 9, 8, 7, 6, 5, "rev"); }

VersionNum numbers(int major, int minor, int patch, int internal, int beta = 0) {
    return VersionNum("v", major, minor, patch, internal, beta, "");
}

}  // namespace

TEST(VersionNum, KeepsWhatItIsMadeFrom) {
    const VersionNum v("name", 1, 2, 3, 4, 5, "rev");
    EXPECT_EQ(v.getName(), "name");
    EXPECT_EQ(v.getReleaseNumbers(), "1.2.3.4.5");
    EXPECT_EQ(v.getRevision(), "rev");
}

TEST(VersionNum, TakesItsNameFromTheAppVersionWhereNoneIsGiven) {
    const VersionNum v(1, 2, 3, 4, 5, "rev");
    EXPECT_EQ(v.getName(), "kVLib");
    EXPECT_EQ(v.getReleaseNumbers(), "1.2.3.4.5");
    EXPECT_EQ(v.getRevision(), "rev");
}

TEST(VersionNum, IsTheFormatVersionOfTheMomentByDefault) {
    EXPECT_EQ(VersionNum().getName(), "kVLib");
    EXPECT_EQ(VersionNum().getReleaseNumbers(), "9.1.0.0");

    const VersionNum former = *version.getFormatVersion();
    version.setFormatVersion(named("other"));
    const VersionNum today;
    version.setFormatVersion(former);

    EXPECT_EQ(today.getName(), "other");
    EXPECT_EQ(today.getReleaseNumbers(), "9.8.7.6.5");
    EXPECT_EQ(today.getRevision(), "rev");
}

TEST(VersionNum, CanBeMadeBeforeMain) {
    EXPECT_EQ(builtBeforeMain.getName(), "kVLib");
    EXPECT_EQ(builtBeforeMain.getReleaseNumbers(), "9.1.0.0");
}

TEST(VersionNum, CanBeRenamed) {
    auto v = named("old");
    v.setName("new");
    EXPECT_EQ(v.getName(), "new");
}

TEST(VersionNum, LeavesABetaLevelOfZeroOutOfItsText) {
    EXPECT_EQ(numbers(9, 1, 0, 0, 0).getReleaseNumbers(), "9.1.0.0");
    EXPECT_EQ(numbers(9, 1, 0, 0, 3).getReleaseNumbers(), "9.1.0.0.3");
    EXPECT_EQ(numbers(9, 1, 0, 0, 0).getUIReleaseNumbers(), "9.1.0.0");
    EXPECT_EQ(numbers(9, 1, 0, 0, 3).getUIReleaseNumbers(), "9.1.0.0.3");
    EXPECT_EQ(numbers(9, 1, 0, 0, 3).getShortReleaseNumbers(), "9.1");
}

TEST(VersionNum, MasksTheLevelsBelowTheOneThatIsKept) {
    const auto v = named("n");
    EXPECT_EQ(v.maskMinorLevel().getReleaseNumbers(), "9.0.0.0");
    EXPECT_EQ(v.maskPatchLevel().getReleaseNumbers(), "9.8.0.0");
    EXPECT_EQ(v.maskInternalLevel().getReleaseNumbers(), "9.8.7.0");
    EXPECT_EQ(v.maskBetaLevel().getReleaseNumbers(), "9.8.7.6");
    for (const auto& masked :
         {v.maskMinorLevel(), v.maskPatchLevel(), v.maskInternalLevel(), v.maskBetaLevel()}) {
        EXPECT_EQ(masked.getName(), "n");
        EXPECT_EQ(masked.getRevision(), "");
    }
}

TEST(VersionNum, ReadsFourNumbersFromAStreamAndLeavesTheBlankBehindThem) {
    std::istringstream in("1.2.3.4 x");
    auto v = named("n");

    EXPECT_TRUE(v.setVersionNumbersFrom(in));

    EXPECT_EQ(v.getReleaseNumbers(), "1.2.3.4");
    EXPECT_EQ(in.peek(), ' ');
    EXPECT_EQ(v.getName(), "n");
    EXPECT_EQ(v.getRevision(), "rev");
}

TEST(VersionNum, ReadsABetaLevelFromAStream) {
    std::istringstream in("1.2.3.4.5 x");
    auto v = numbers(0, 0, 0, 0);
    EXPECT_TRUE(v.setVersionNumbersFrom(in));
    EXPECT_EQ(v.getReleaseNumbers(), "1.2.3.4.5");
    EXPECT_EQ(in.peek(), ' ');
}

TEST(VersionNum, IsCompleteAtTheEndOfAStream) {
    std::istringstream in("1.2.3.4");
    auto v = named("n");
    EXPECT_TRUE(v.setVersionNumbersFrom(in));
    EXPECT_EQ(v.getReleaseNumbers(), "1.2.3.4");
}

TEST(VersionNum, KeepsTheNumbersReadFromAStreamBeforeAPointWasMissing) {
    std::istringstream in("1.2");
    auto v = named("n");

    EXPECT_FALSE(v.setVersionNumbersFrom(in));

    EXPECT_EQ(v.getReleaseNumbers(), "1.2.7.6.5");
}

TEST(VersionNum, PutsTheCharacterInPlaceOfAPointBack) {
    const std::pair<const char*, const char*> rows[] = {
        {"1/2.3.4", "1.8.7.6.5"}, {"1.2/3.4", "1.2.7.6.5"}, {"1.2.3/4", "1.2.3.6.5"}};
    for (const auto& [text, numbersThen] : rows) {
        std::istringstream in(text);
        auto v = named("n");
        EXPECT_FALSE(v.setVersionNumbersFrom(in)) << text;
        EXPECT_EQ(v.getReleaseNumbers(), numbersThen) << text;
        EXPECT_EQ(in.peek(), '/') << text;
    }
}

TEST(VersionNum, ConsumesItsNumbersFromTheFrontOfAText) {
    std::string text = "1.2.3.4 x";
    auto v = named("n");

    EXPECT_TRUE(v.setVersionNumbersFrom(text));

    EXPECT_EQ(v.getReleaseNumbers(), "1.2.3.4");
    EXPECT_EQ(text, " x");
    EXPECT_EQ(v.getName(), "n");
    EXPECT_EQ(v.getRevision(), "rev");
}

TEST(VersionNum, ReadsABetaLevelFromAText) {
    std::string text = "1.2.3.4.5";
    auto v = numbers(0, 0, 0, 0);
    EXPECT_TRUE(v.setVersionNumbersFrom(text));
    EXPECT_EQ(v.getReleaseNumbers(), "1.2.3.4.5");
    EXPECT_EQ(text, "");
}

TEST(VersionNum, IsCompleteWhereATextEndsBehindFourNumbers) {
    std::string text = "1.2.3.4";
    auto v = named("n");
    EXPECT_TRUE(v.setVersionNumbersFrom(text));
    EXPECT_EQ(v.getReleaseNumbers(), "1.2.3.4");
    EXPECT_EQ(text, "");
}

TEST(VersionNum, KeepsTheNumbersReadFromATextBeforeAPointWasMissing) {
    std::string text = "1.2";
    auto v = named("n");
    EXPECT_FALSE(v.setVersionNumbersFrom(text));
    EXPECT_EQ(v.getReleaseNumbers(), "1.2.7.6.5");
    EXPECT_EQ(text, "");

    text = "1.2.3x4";
    EXPECT_FALSE(v.setVersionNumbersFrom(text));
    EXPECT_EQ(v.getReleaseNumbers(), "1.2.3.6.5");
    EXPECT_EQ(text, "x4");
}

TEST(VersionNum, ComparesMajorMinorPatchAndInternalInThisOrder) {
    const VersionNum ascending[] = {numbers(1, 9, 9, 9), numbers(2, 1, 9, 9), numbers(2, 2, 1, 9),
                                    numbers(2, 2, 2, 1), numbers(2, 2, 2, 2)};
    for (std::size_t i = 0; i < std::size(ascending); ++i) {
        for (std::size_t j = 0; j < std::size(ascending); ++j) {
            EXPECT_EQ(ascending[i] < ascending[j], i < j) << i << ' ' << j;
            EXPECT_EQ(ascending[i] <= ascending[j], i <= j) << i << ' ' << j;
        }
    }
}

TEST(VersionNum, DoesNotCompareBetaNameAndRevision) {
    const VersionNum a("a", 9, 1, 0, 0, 1, "r");
    const VersionNum b("b", 9, 1, 0, 0, 2, "s");
    EXPECT_FALSE(a < b);
    EXPECT_FALSE(b < a);
    EXPECT_TRUE(a <= b);
    EXPECT_TRUE(b <= a);
}

TEST(VersionNum, EmptiesTheNameWhenReadFromATextByOperator) {
    std::string text = "1.2.3.4 rest";
    auto v = named("n");

    std::string& result = text >> v;

    EXPECT_EQ(&result, &text);
    EXPECT_EQ(v.getName(), "");
    EXPECT_EQ(v.getReleaseNumbers(), "1.2.3.4");
    EXPECT_EQ(v.getRevision(), "rev");
    EXPECT_EQ(text, " rest");
}

TEST(VersionNum, AppendsNothingToAText) {
    std::string text = "before";

    std::string& result = text << numbers(1, 2, 3, 4);

    EXPECT_EQ(&result, &text);
    EXPECT_EQ(text, "before");
}

TEST(VersionNum, IsNewerByMajorThenByMinorNumber) {
    EXPECT_TRUE(VersionNum::isVersionNumberNewer(numbers(1, 9, 9, 9), numbers(2, 0, 0, 0)));
    EXPECT_FALSE(VersionNum::isVersionNumberNewer(numbers(2, 0, 0, 0), numbers(1, 9, 9, 9)));
    EXPECT_TRUE(VersionNum::isVersionNumberNewer(numbers(2, 1, 9, 9), numbers(2, 2, 0, 0)));
    EXPECT_FALSE(VersionNum::isVersionNumberNewer(numbers(2, 2, 0, 0), numbers(2, 1, 9, 9)));
}

TEST(VersionNum, IsNewerByPatchThenByInternalNumber) {
    EXPECT_TRUE(VersionNum::isVersionNumberNewer(numbers(9, 1, 1, 9), numbers(9, 1, 2, 0)));
    EXPECT_FALSE(VersionNum::isVersionNumberNewer(numbers(9, 1, 2, 0), numbers(9, 1, 1, 9)));
    EXPECT_TRUE(VersionNum::isVersionNumberNewer(numbers(9, 1, 1, 1), numbers(9, 1, 1, 2)));
    EXPECT_FALSE(VersionNum::isVersionNumberNewer(numbers(9, 1, 1, 2), numbers(9, 1, 1, 1)));
    EXPECT_FALSE(VersionNum::isVersionNumberNewer(numbers(9, 1, 1, 1), numbers(9, 1, 1, 1)));
}

TEST(VersionNum, PutsThePatchLevels1000And100BeforeEveryNumberedPatch) {
    // Ascending: 1000, then 100, then the numbered patches.
    const VersionNum builds[] = {numbers(9, 1, 1000, 0), numbers(9, 1, 100, 0), numbers(9, 1, 0, 0),
                                 numbers(9, 1, 1, 0), numbers(9, 1, 2000, 0)};
    for (std::size_t i = 0; i < std::size(builds); ++i) {
        for (std::size_t j = 0; j < std::size(builds); ++j) {
            EXPECT_EQ(VersionNum::isVersionNumberNewer(builds[i], builds[j]), i < j)
                << i << ' ' << j;
        }
    }
}

TEST(VersionNum, ComparesTheInternalNumbersOfTwoMarkedBuilds) {
    for (const int mark : {1000, 100}) {
        EXPECT_TRUE(
            VersionNum::isVersionNumberNewer(numbers(9, 1, mark, 1), numbers(9, 1, mark, 2)));
        EXPECT_FALSE(
            VersionNum::isVersionNumberNewer(numbers(9, 1, mark, 2), numbers(9, 1, mark, 2)));
    }
}

TEST(VersionNum, IsNotNewerByItsBetaLevel) {
    EXPECT_FALSE(VersionNum::isVersionNumberNewer(numbers(9, 1, 0, 0, 1), numbers(9, 1, 0, 0, 2)));
    EXPECT_FALSE(VersionNum::isVersionNumberNewer(numbers(9, 1, 0, 0, 2), numbers(9, 1, 0, 0, 1)));
}
