// How long output on a terminal is shown.
#include "support/RunProgram.h"
#include "support/Sample.h"
#include "support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <string>

using namespace qormodel::testing;

namespace {

// What a terminal of three lines gets of an outline of four. \param ahead of the command "script"
std::string shown(const std::string& pager, const std::string& ahead) {
    const TemporaryFile file(projectText);
    RunOptions options;
    options.environment["PAGER"] = pager;
    return runShell(ahead + " script -qec 'stty rows 3; qormodel --color never tree " +
                        file.getName() + "' /dev/null",
                    options)
        .out;
}

const std::string telling = "cat > /dev/null; echo \"LESS is $LESS\"";

}  // namespace

TEST(RunPager, TellsLessToShowColoursWhereNothingElseIsSaid) {
    EXPECT_EQ(shown(telling, "env -u LESS"), "LESS is FRX\r\n");
}

TEST(RunPager, KeepsWhatTheUserTellsLess) {
    EXPECT_EQ(shown(telling, "env LESS=S"), "LESS is S\r\n");
    EXPECT_EQ(shown(telling, "env LESS="), "LESS is \r\n");
}

TEST(RunPager, IsNoneWhereTheUserWantsNone) {
    EXPECT_EQ(shown("", "env"),
              "/ Object\r\n  Scans Object\r\n    . Box AttrContainer\r\n    First Object\r\n");
}
