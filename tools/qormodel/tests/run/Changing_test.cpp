// The commands that make and change files, as their users run them, with all that they print.
#include "support/InFolder.h"
#include "support/RunProgram.h"
#include "support/Sample.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using namespace qormodel::testing;

namespace {

// A folder with "project.model" in it, in which the program runs.
class RunInFolder : public InFolder {
protected:
    RunInFolder() {
        put("project.model", projectText);
    }

    RunResult run(const std::vector<std::string>& arguments) const {
        return runQormodel(arguments, options);
    }
    std::string get(const std::string& file, const std::string& path) const {
        return run({"get", file, path}).out;
    }
    void expect(const std::vector<std::string>& arguments, int status, const std::string& out,
                const std::string& err = "") const {
        const RunResult result = run(arguments);
        EXPECT_EQ(result.status, status) << arguments[0];
        EXPECT_EQ(result.out, out);
        EXPECT_EQ(result.err, err);
    }
};

using RunNew = RunInFolder;
using RunSet = RunInFolder;
using RunDiff = RunInFolder;
using RunMerge = RunInFolder;

const std::string track =
    "# vtk DataFile Version 3.0\ntitle\nASCII\nDATASET POLYDATA\nPOINTS 2 float\n0 0 0\n1 0 0\n";

}  // namespace

TEST_F(RunNew, MakesAProjectOfPointsAndTracks) {
    put("a.csv", "x,y,z\n1,2,3\n4,5,6\n");
    put("b.ply",
        "ply\nformat ascii 1.0\nelement vertex 1\nproperty float x\nproperty float y\n"
        "property float z\nend_header\n7 8 9\n");
    put("drive.vtk", track);

    expect({"new", "hall.model", "--scan", "a.csv", "--scan", "b.ply", "--track", "drive.vtk"}, 0,
           "+ /Scans/a: 2 points\n+ /Scans/b: 1 point\n+ /drive: 2 poses\n");

    EXPECT_EQ(get("hall.model", "/Name"), "hall\n");
    EXPECT_EQ(get("hall.model", "/Scans/b/Points"), "{ (7 8 9) }\n");
    expect({"check", "hall.model"}, 0, "");
    expect({"fmt", "--check", "hall.model"}, 0, "");
}

TEST_F(RunNew, ReplacesNoFileUnlessItIsForcedTo) {
    expect({"new", "project.model"}, 2, "",
           "qormodel: project.model: is there already; --force replaces it\n");
    EXPECT_EQ(content("project.model"), projectText);

    expect({"new", "project.model", "--force", "--name", "Fresh"}, 0, "");
    EXPECT_EQ(get("project.model", "/Name"), "Fresh\n");
    EXPECT_EQ(content("project.model~"), projectText);
}

TEST_F(RunNew, NamesTheLineThatIsNoPoint) {
    put("a.csv", "1,2,3\n1,2\n");

    expect({"new", "hall.model", "--scan", "a.csv"}, 2, "",
           "qormodel: a.csv:2: numbers with commas between them are expected: x,y,z or "
           "x,y,z,nx,ny,nz\n");
    EXPECT_FALSE(isThere("hall.model"));
    EXPECT_EQ(run({"new", "hall.model", "--name", "a/b"}).status, 2);
    EXPECT_EQ(run({"new", "hall.model", "--scan", "none.csv"}).status, 2);
    EXPECT_FALSE(isThere("hall.model"));
}

TEST_F(RunNew, TakesPointsFromTheStandardInput) {
    options.input = "1,2,3\n";

    expect({"new", "hall.model", "--scan", "-"}, 0, "+ /Scans/stdin: 1 point\n");
    EXPECT_EQ(get("hall.model", "/Scans/stdin/Points"), "{ (1 2 3) }\n");
    expect({"new", "two.model", "--scan", "-", "--track", "-"}, 2, "",
           "qormodel: only one file can be the standard input\n");
}

TEST_F(RunNew, WritesNothingInADryRunAndTheDocumentAloneToTheStandardOutput) {
    put("a.csv", "1,2,3\n");

    expect({"new", "hall.model", "--scan", "a.csv", "--dry-run"}, 0, "+ /Scans/a: 1 point\n");
    EXPECT_FALSE(isThere("hall.model"));
    EXPECT_TRUE(run({"new", "-", "--scan", "a.csv"}).out.starts_with("\"qormodel project\"\n"));
}

TEST_F(RunSet, ChangesAddsAndRemovesInOneWrite) {
    expect({"set", "project.model", "/Scans/Count=3", "/Scans/Note=x", "--add", "String", "--rm",
            "/Scans/Box"},
           0, "- /Scans/Box: AttrContainer\n~ /Scans/Count: 2 -> 3\n+ /Scans/Note = x\n");

    EXPECT_EQ(get("project.model", "/Scans/Count"), "3\n");
    EXPECT_EQ(get("project.model", "/Scans/Note"), "x\n");
    EXPECT_EQ(content("project.model~"), projectText);
}

TEST_F(RunSet, RefusesATextThatIsNoValueAndWritesNothing) {
    for (const char* const text : {"zz", "1.5", "2147483648", ""}) {
        expect({"set", "project.model", "/Origin=1 2 3", std::string("/Scans/Count=") + text}, 2,
               "",
               "qormodel: project.model: /Scans/Count: \"" + std::string(text) +
                   "\" is no value of type Attr<int>: expected a whole number from -2147483648 to "
                   "2147483647\n");
        EXPECT_EQ(content("project.model"), projectText);
    }
}

TEST_F(RunSet, WritesNothingWhereAnObserverRefusesOneOfTheChanges) {
    expect({"set", "project.model", "/Scans/Count=3", "/Name=a/b"}, 1, "",
           "qormodel: project.model: /Name: \"a/b\" is no name: letters, digits, '_', '-' and "
           "'.' are\n"
           "qormodel: project.model: /: nothing is written\n");
    EXPECT_EQ(content("project.model"), projectText);
    EXPECT_FALSE(isThere("project.model~"));
}

TEST_F(RunSet, RefusesTheNameOfASibling) {
    put("a.csv", "1,2,3\n");
    run({"new", "hall.model", "--scan", "a.csv", "--scan", "a.csv"});

    expect({"set", "hall.model", "/Scans/a1/Name=A"}, 1, "",
           "qormodel: hall.model: /Scans/a1/Name: another child of the same parent has the name "
           "\"A\"\nqormodel: hall.model: /: nothing is written\n");
}

TEST_F(RunSet, TellsOfTheRelationsThatGoWithAnObject) {
    std::string text = projectText;
    text.replace(text.find("Path \"/\""), 8, "Path \"/Scans/First\"");
    put("project.model", text);

    expect({"set", "project.model", "--rm", "/Scans/First"}, 0,
           "- /Scans/First: Object\n- relation /Scans/Count -> /Scans/First (Notify)\n");

    EXPECT_EQ(content("project.model").find("ObserverPath"), std::string::npos);
    expect({"check", "project.model"}, 0, "");
}

TEST_F(RunSet, WritesToTheStandardOutputOrNowhere) {
    expect({"set", "project.model", "/Scans/Count=3", "--dry-run"}, 0, "~ /Scans/Count: 2 -> 3\n");
    EXPECT_EQ(content("project.model"), projectText);
    std::string expected = projectText;
    expected.replace(expected.find("Value 2\n"), 8, "Value 3\n");
    expect({"set", "project.model", "/Scans/Count=3", "-o", "-"}, 0, expected);
    EXPECT_EQ(content("project.model"), projectText);
}

TEST_F(RunSet, TakesNoEmptyNameForItsTarget) {
    expect({"set", "project.model", "/Action=x", "-o", ""}, 2, "",
           "qormodel: --output: expected the name of a file\n"
           "qormodel: try 'qormodel set --help'\n");
    EXPECT_EQ(content("project.model"), projectText);
    EXPECT_EQ(run({"cat", "project.model", "-o", ""}).status, 2);
}

TEST_F(RunSet, TellsWhyATargetCannotBeWritten) {
    expect({"set", "project.model", "/Action=x", "-o", "/dev/full"}, 2, "",
           "qormodel: /dev/full: cannot be written: No space left on device\n");
    expect({"cat", "project.model", "-o", "/dev/full"}, 2, "",
           "qormodel: /dev/full: cannot be written: No space left on device\n");
}

TEST_F(RunDiff, TellsWhatDiffersAndSoDoesItsStatus) {
    put("copy.model", projectText);
    expect({"diff", "project.model", "copy.model"}, 0, "");
    run({"set", "copy.model", "/Scans/Count=3", "/Scans/Note=x", "--add", "String", "--rm", "/Map",
         "--rm", "/Scans/First"});

    expect({"diff", "project.model", "copy.model"}, 1,
           "- /Map = { \"a b\" => \"x } y\" } Attr<StringMap>\n~ /Scans/Count: 2 -> 3\n"
           "+ /Scans/Note = x Attr<String>\n- /Scans/First Object\n");
    expect({"diff", "-q", "project.model", "copy.model"}, 1, "");
    expect({"diff", "--stat", "project.model", "copy.model"}, 1,
           "-      1 object\n+      1 attribute\n-      1 attribute\n~      1 attribute\n");
}

TEST_F(RunDiff, PrintsOneJsonObject) {
    put("copy.model", projectText);
    run({"set", "copy.model", "/Origin=1 2.5 0.1"});

    expect({"diff", "--json", "project.model", "copy.model"}, 1, R"({
  "version": 1,
  "command": "diff",
  "changes": [
    {
      "sign": "~",
      "kind": "attribute",
      "path": "/Origin",
      "type": "Attr<Vec3dd>",
      "before": [
        1.0,
        2.5,
        -3.0
      ],
      "after": [
        1.0,
        2.5,
        0.1
      ]
    }
  ]
}
)");
}

TEST_F(RunDiff, ForgivesWithinATolerance) {
    put("copy.model", projectText);
    run({"set", "copy.model", "/Origin=1.000000001 2.5 -3"});

    EXPECT_EQ(run({"diff", "project.model", "copy.model"}).status, 1);
    expect({"diff", "--tolerance", "library", "project.model", "copy.model"}, 0, "");
    expect({"diff", "--tolerance", "1e-8", "project.model", "copy.model"}, 0, "");
    EXPECT_EQ(run({"diff", "--tolerance", "1e-10", "project.model", "copy.model"}).status, 1);
    expect({"diff", "--tolerance", "some", "project.model", "copy.model"}, 2, "",
           "qormodel: --tolerance takes \"library\" or a number that is not negative, not "
           "\"some\"\n");
}

TEST_F(RunDiff, EndsWithTwoForWhatItCannotCompare) {
    put("broken.model", projectText.substr(0, 200));

    EXPECT_EQ(run({"diff", "project.model", "none.model"}).status, 2);
    EXPECT_EQ(run({"diff", "project.model"}).status, 2);
    EXPECT_EQ(run({"diff", "--git", "project.model"}).status, 2);
    const RunResult broken = run({"diff", "project.model", "broken.model"});
    EXPECT_EQ(broken.status, 2);
    EXPECT_EQ(broken.out, "");
    EXPECT_TRUE(broken.err.starts_with("qormodel: broken.model:")) << broken.err;
}

TEST_F(RunMerge, BringsATargetToTheStateOfASource) {
    put("copy.model", projectText);
    run({"set", "copy.model", "/Scans/Count=3", "/Scans/First/Name=Second", "--rm", "/Map"});

    expect({"merge", "project.model", "copy.model"}, 0,
           "attributes: 1 changed, 0 added, 1 removed\nfields:     0 added, 0 removed\n"
           "objects:    1 added, 1 removed, 0 moved\n");

    expect({"diff", "project.model", "copy.model"}, 0, "");
    EXPECT_EQ(content("project.model~"), projectText);
}

TEST_F(RunMerge, MergesTwoVersionsAndTakesAnOldListOfConflictsAway) {
    put("ours.model", projectText);
    put("theirs.model", projectText);
    put("ours.model.conflicts.json", "{}");
    run({"set", "ours.model", "/Scans/Count=3"});
    run({"set", "theirs.model", "/Scans/Box/Size=4"});

    expect({"merge", "project.model", "ours.model", "theirs.model"}, 0,
           "attributes: 1 changed\nelements:   0 added, 0 removed\n");

    EXPECT_EQ(get("ours.model", "/Scans/Count"), "3\n");
    EXPECT_EQ(get("ours.model", "/Scans/Box/Size"), "4\n");
    EXPECT_FALSE(isThere("ours.model.conflicts.json"));
}

TEST_F(RunMerge, ListsConflictsAndKeepsOurs) {
    put("ours.model", projectText);
    put("theirs.model", projectText);
    run({"set", "ours.model", "/Scans/Count=3"});
    run({"set", "theirs.model", "/Scans/Count=4"});

    expect({"merge", "project.model", "ours.model", "theirs.model", "-o", "merged.model"}, 1,
           "attributes: 0 changed\nelements:   0 added, 0 removed\n",
           "qormodel: merged.model: /Scans/Count: changed on both sides; was \"2\"; here \"3\"; "
           "there \"4\"\n"
           "qormodel: ours stands; what is in conflict is listed in merged.model.conflicts.json\n");

    EXPECT_EQ(get("merged.model", "/Scans/Count"), "3\n");
    EXPECT_EQ(content("merged.model.conflicts.json"), R"({
  "version": 1,
  "file": "merged.model",
  "conflicts": [
    {
      "path": "/Scans/Count",
      "what": "changed on both sides",
      "base": "2",
      "ours": "3",
      "theirs": "4",
      "taken": "ours"
    }
  ]
}
)");
    EXPECT_EQ(
        run({"merge", "project.model", "ours.model", "theirs.model", "--prefer", "theirs"}).status,
        0);
    EXPECT_EQ(get("ours.model", "/Scans/Count"), "4\n");
}

TEST_F(RunMerge, GoesByItsOptions) {
    put("source.model", projectText);
    run({"set", "source.model", "/Scans/Count=5", "/Scans/Box/Size=9", "--rm", "/Scans/First"});
    const auto merged = [&](const std::vector<std::string>& more) {
        std::vector<std::string> arguments{"merge", "project.model", "source.model", "-o",
                                           "merged.model"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        EXPECT_EQ(run(arguments).status, 0);
        return get("merged.model", "/Scans/Count") + get("merged.model", "/Scans/Box/Size") +
               get("merged.model", "/Scans/First/Name");
    };

    EXPECT_EQ(merged({}), "5\n9\n");
    EXPECT_EQ(merged({"--keep"}), "5\n9\nFirst\n");
    EXPECT_EQ(merged({"--only-marked", "/Scans/Count"}), "5\n2.5\nFirst\n");
    EXPECT_EQ(merged({"--observers", "each"}), "5\n9\n");
    EXPECT_EQ(merged({"--observers", "end"}), "5\n9\n");
    EXPECT_EQ(merged({"--dry-run", "--keep"}), "5\n9\n");  // as it was
    EXPECT_EQ(content("project.model"), projectText);
}

TEST_F(RunMerge, SettlesConflictsByThePreferredSide) {
    for (const char* const each : {"ours.model", "theirs.model"}) put(each, projectText);
    run({"set", "ours.model", "/Scans/Count=3"});
    run({"set", "theirs.model", "/Scans/Count=4"});
    const auto preferring = [&](const std::string& side) {
        EXPECT_EQ(run({"merge", "project.model", "ours.model", "theirs.model", "--prefer", side,
                       "-o", "merged.model"})
                      .status,
                  0);
        return get("merged.model", "/Scans/Count");
    };

    EXPECT_EQ(preferring("ours"), "3\n");
    EXPECT_EQ(preferring("theirs"), "4\n");
    EXPECT_FALSE(isThere("merged.model.conflicts.json"));
}

TEST_F(RunMerge, RefusesOptionsOfTheOtherForm) {
    EXPECT_EQ(run({"merge", "project.model"}).status, 2);
    EXPECT_EQ(run({"merge", "project.model", "project.model", "--prefer", "ours"}).status, 2);
    EXPECT_EQ(run({"merge", "a", "b", "c", "--keep"}).status, 2);
    EXPECT_EQ(run({"merge", "-", "-"}).status, 2);
    EXPECT_EQ(run({"merge", "project.model", "project.model", "--prefer", "both"}).status, 2);
    EXPECT_EQ(content("project.model"), projectText);
}

TEST_F(RunMerge, RefusesASourceWhoseValuesWouldNotComeBack) {
    put("lossy.model", valueModel("Attr<double>", "1.#INF"));

    const RunResult result = run({"merge", "project.model", "lossy.model"});

    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.err.starts_with("qormodel: lossy.model:")) << result.err;
    EXPECT_EQ(content("project.model"), projectText);
}
