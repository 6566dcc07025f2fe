// What `set` says of names and types that it does not take.
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

using RunSetOfTypes = RunSetOfNames;

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

TEST_F(RunSetOfTypes, TakesATypeInAnyCase) {
    EXPECT_EQ(run({"/x=1", "--add", "string"}).out, "+ /x = 1\n");
    EXPECT_EQ(run({"/y=1 2 3", "--add", "attr<VEC3DD>"}).out, "+ /y = 1 2 3\n");

    const RunResult added = runQormodel({"tree", "-a", "project.model"}, options);
    EXPECT_NE(added.out.find("x = 1 Attr<String>\n"), std::string::npos) << added.out;
    EXPECT_NE(added.out.find("y = 1 2 3 Attr<Vec3dd>\n"), std::string::npos) << added.out;
}

TEST_F(RunSetOfTypes, ListsTheTypesForAWordThatIsNone) {
    const RunResult result = run({"/x=1", "--add", "text"});

    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(result.err.starts_with("qormodel: \"text\" is no type of an attribute: expected "
                                       "one of int, int8_t, uint8_t, int16_t,"))
        << result.err;
    EXPECT_TRUE(result.err.ends_with(", UuidVector, BoolVector, Json::Value\n")) << result.err;
    EXPECT_EQ(content("project.model"), projectText);
}

TEST_F(RunSetOfTypes, ListsTheTypesInHelpManualAndCompletion) {
    for (const char* const command :
         {"qormodel set --help", "qormodel help --man", "qormodel completion bash",
          "qormodel completion zsh", "qormodel completion fish"}) {
        const std::string text = runShell(command, options).out;
        EXPECT_NE(text.find("int int8_t uint8_t int16_t"), std::string::npos) << command;
        EXPECT_NE(text.find(" Json::Value"), std::string::npos) << command;
    }
}
