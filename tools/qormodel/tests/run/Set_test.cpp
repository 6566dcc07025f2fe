// What `set` says of names that it does not take.
#include "support/InFolder.h"
#include "support/RunProgram.h"
#include "support/Sample.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace qormodel::testing;

namespace {

class RunSetOfNames : public InFolder {
protected:
    RunSetOfNames() { put("project.model", projectText); }

    RunResult run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"set", "project.model"});
        return runQormodel(arguments, options);
    }
};

const std::string rule = " is no name: letters, digits, '_', '-' and '.' are\n";

}  // namespace

TEST_F(RunSetOfNames, TellsTheRuleForNamesWhereOneIsRefused) {
    for (const std::string name : {"Room 1", "S\xc3\xbc" "d", "", "a/b"}) {
        const RunResult result = run({"/Scans/First/Name=" + name});
        EXPECT_EQ(result.status, 1) << name;
        EXPECT_EQ(result.err, "qormodel: project.model: /Scans/First/Name: \"" + name + '"' + rule +
                                  "qormodel: project.model: /: nothing is written\n");
    }
    EXPECT_EQ(run({"/Scans/Box/Name=a b"}).err,
              "qormodel: project.model: /Scans/Box/Name: \"a b\"" + rule +
                  "qormodel: project.model: /: nothing is written\n");
    EXPECT_EQ(content("project.model"), projectText);
}

TEST_F(RunSetOfNames, TellsTheRuleForTheNameOfAnAttributeToo) {
    const RunResult result = run({"/Scans/my note=x", "--add", "String"});

    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "qormodel: project.model: /: \"my note\"" + rule);
    EXPECT_EQ(run({"/Scans/First=x", "--add", "String"}).err,
              "qormodel: project.model: /: \"First\" is taken in /Scans\n");
    EXPECT_EQ(content("project.model"), projectText);
}

TEST_F(RunSetOfNames, TellsTheRuleAsNewDoes) {
    const RunResult result = runQormodel({"new", "hall.model", "--name", "Hall 1"}, options);

    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "qormodel: \"Hall 1\"" + rule);
}
