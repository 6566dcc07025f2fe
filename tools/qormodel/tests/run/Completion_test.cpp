// What the shells offer, asked from the shells themselves.
#include "support/Completing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <sstream>
#include <string>

using namespace qormodel::testing;

namespace {

bool has(const Words& words, const std::string& word) {
    return std::ranges::find(words, word) != words.end();
}

// The names of all commands, as the help lists them.
Words commandNames() {
    Words names;
    std::istringstream help(runQormodel({"--help"}).out);
    bool isList = false;
    for (std::string line; std::getline(help, line);) {
        if (isList && line.starts_with("  ") && line[2] != ' ')
            names.push_back(line.substr(2, line.find(' ', 2) - 2));
        if (line == "Subcommands:") isList = true;
    }
    std::ranges::sort(names);
    return names;
}

}  // namespace

TEST_F(Completing, InBashOffersAllCommands) {
    EXPECT_EQ(inBash({"qormodel", ""}), commandNames());
    EXPECT_EQ(inBash({"qormodel", "tr"}), Words{"tree"});
    EXPECT_EQ(inBash({"qormodel", "--color", "never", "tr"}), Words{"tree"});
    EXPECT_EQ(inBash({"qormodel", "help", "tr"}), Words{"tree"});
    EXPECT_EQ(inBash({"qormodel", "store", "--store", "x.db", ""}),
              (Words{"export", "get", "import", "ls", "rm", "set"}));
    EXPECT_EQ(inBash({"qormodel", "complete"}), Words{});  // that one is for scripts
}

TEST_F(Completing, InBashOffersEachOptionThatTheHelpTells) {
    for (const auto& command : commandNames()) {
        const Words offered = inBash({"qormodel", command, "-"});
        const std::string help = runQormodel({command, "--help"}).out;
        const std::regex line("\n  (-[-A-Za-z,]+)");
        for (std::sregex_iterator found(help.begin(), help.end(), line), end; found != end;
             ++found) {
            std::istringstream names((*found)[1]);
            for (std::string name; std::getline(names, name, ',');)
                EXPECT_TRUE(has(offered, name)) << command << ' ' << name;
        }
        EXPECT_TRUE(has(offered, "--color")) << command;
    }
    EXPECT_TRUE(has(inBash({"qormodel", "store", "export", "--"}), "--store"));
    EXPECT_FALSE(has(inBash({"qormodel", "tree", "--"}), "--mask"));
}

TEST_F(Completing, InBashOffersTheValuesOfOptions) {
    EXPECT_EQ(inBash({"qormodel", "cat", "--as", ""}), (Words{"export", "json", "text", "xml"}));
    EXPECT_EQ(inBash({"qormodel", "cat", "--as", "e"}), Words{"export"});
    EXPECT_EQ(inBash({"qormodel", "tree", "--color", "=", "al"}), Words{"always"});
    EXPECT_EQ(inBash({"qormodel", "tree", "--color", "="}), (Words{"always", "auto", "never"}));
    EXPECT_EQ(inBash({"qormodel", "merge", "--prefer", "o"}), Words{"ours"});
    EXPECT_EQ(inBash({"qormodel", "completion", ""}), (Words{"bash", "fish", "zsh"}));
    EXPECT_EQ(inBash({"qormodel", "tree", "-L", ""}), Words{});  // any number
    EXPECT_EQ(inBash({"qormodel", "store", "set", "K", "x=y", "--type", "q"}), Words{"qword"});
}

TEST_F(Completing, InBashOffersFiles) {
    EXPECT_EQ(inBash({"qormodel", "info", "pro"}), Words{"project.model"});
    EXPECT_EQ(inBash({"qormodel", "info", "project.model", "my"}), Words{"my file.model"});
    EXPECT_EQ(inBash({"qormodel", "diff", "project.model", "br"}), Words{"broken.model"});
    EXPECT_EQ(inBash({"qormodel", "new", "x.model", "--scan", "poi"}), Words{"points.txt"});
    EXPECT_EQ(inBash({"qormodel", "set", "project.model", "-o", "pro"}), Words{"project.model"});
    EXPECT_EQ(inBash({"qormodel", "store", "--store", "pro"}), Words{"project.model"});
}

TEST_F(Completing, InBashOffersThePathsOfTheFileOnTheLine) {
    EXPECT_EQ(inBash({"qormodel", "get", "project.model", "/Sc"}), Words{"/Scans/"});
    EXPECT_EQ(inBash({"qormodel", "get", "project.model", "/Name", "/Scans/C"}),
              Words{"/Scans/Count"});
    EXPECT_EQ(inBash({"qormodel", "tree", "-L", "2", "project.model", "/Scans/F"}),
              Words{"/Scans/First/"});
    EXPECT_EQ(inBash({"qormodel", "tree", "'my file.model'", "/Sc"}), Words{"/Scans/"});
    EXPECT_EQ(inBash({"qormodel", "tree", "my\\ file.model", "/Sc"}), Words{"/Scans/"});
    EXPECT_EQ(inBash({"qormodel", "tree", "~/project.model", "/Sc"}), Words{"/Scans/"});
    EXPECT_EQ(inBash({"qormodel", "set", "project.model", "--rm", "/Scans/B"}),
              Words{"/Scans/Box/"});
    EXPECT_EQ(inBash({"qormodel", "cat", "project.model", "--mask", "/Name,/Or"}),
              Words{"/Name,/Origin"});
    EXPECT_EQ(inBash({"qormodel", "store", "export", "--into", "project.model", "--path", "/Sc"}),
              Words{"/Scans/"});
}

TEST_F(Completing, InBashIsQuietWhereThereAreNoPaths) {
    EXPECT_EQ(inBash({"qormodel", "get", "none.model", "/"}), Words{});
    EXPECT_EQ(inBash({"qormodel", "get", "points.txt", "/"}), Words{});
    EXPECT_EQ(inBash({"qormodel", "get", "-", "/"}), Words{});
    EXPECT_EQ(inBash({"qormodel", "get", "$(touch ran)", "/"}), Words{});
    EXPECT_EQ(contentOf((folder.getFolder() / "ran").string()), "");
    EXPECT_FALSE(std::filesystem::exists(folder.getFolder() / "ran"));
}

TEST_F(Completing, AsksTheProgramWithoutAWordOnErrors) {
    for (const char* const file : {"none.model", "broken.model", "points.txt", ".", "-"}) {
        const RunResult result = runQormodel({"complete-paths", file, "/x"}, options);
        EXPECT_EQ(result.status, 0) << file;
        EXPECT_EQ(result.out, "") << file;
        EXPECT_EQ(result.err, "") << file;
    }
    EXPECT_EQ(runQormodel({"complete-paths", "project.model", "/Scans/"}, options).out,
              "/Scans/Box/\n/Scans/First/\n/Scans/Name\n/Scans/Action\n/Scans/Event\n"
              "/Scans/MajorVersion\n/Scans/MinorVersion\n/Scans/UUID\n/Scans/Count\n");
}

TEST_F(Completing, DoesNotWaitForAPipe) {
    const RunResult result =
        runShell("mkfifo pipe && timeout 20 qormodel complete-paths pipe /", options);

    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out + result.err, "");
}

TEST_F(Completing, OffersNoNameThatAShellWouldRun) {
    put("hostile.model",
        "\"Test\"\n\"kVLib\" 9.1.0.0\nAttrContainer { \n}\nChild { \n\"Object\" "
        "\"$(touch ran)\"\nAttrContainer { \n}\n}\n");

    EXPECT_EQ(inBash({"qormodel", "get", "hostile.model", "/"}), Words{});
    EXPECT_EQ(typedInBash("qormodel get hostile.model /"), "qormodel get hostile.model /X");
    EXPECT_FALSE(std::filesystem::exists(folder.getFolder() / "ran"));
}

TEST_F(Completing, InBashOffersNothingBehindAnAssignment) {
    EXPECT_EQ(inBash({"qormodel", "set", "project.model", "/Sc"}), Words{"/Scans/"});
    EXPECT_EQ(inBash({"qormodel", "set", "project.model", "/Scans/Count", "="}), Words{});
    EXPECT_EQ(inBash({"qormodel", "set", "project.model", "/Scans/Count", "=", "/"}), Words{});
}

TEST_F(Completing, WorksWhereSomebodyTypesInBash) {
    EXPECT_EQ(typedInBash("qormodel tre"), "qormodel tree X");
    EXPECT_EQ(typedInBash("qormodel cat --as=ex"), "qormodel cat --as=export X");
    EXPECT_EQ(typedInBash("qormodel tree pro"), "qormodel tree project.model X");
    EXPECT_EQ(typedInBash("qormodel get project.model /Sc"), "qormodel get project.model /Scans/X");
    EXPECT_EQ(typedInBash("qormodel get project.model /Scans/Cou"),
              "qormodel get project.model /Scans/Count X");
    EXPECT_EQ(typedInBash("qormodel info my"), "qormodel info my file.model X");
}

TEST_F(Completing, WorksWhereSomebodyTypesInZsh) {
    EXPECT_EQ(typedInZsh("qormodel tre"), "qormodel tree X");
    EXPECT_EQ(typedInZsh("qormodel store --store x ex"), "qormodel store --store x export X");
    EXPECT_EQ(typedInZsh("qormodel tree --attr"), "qormodel tree --attributes X");
    EXPECT_EQ(typedInZsh("qormodel cat --as ex"), "qormodel cat --as export X");
    EXPECT_EQ(typedInZsh("qormodel cat --as=ex"), "qormodel cat --as=export X");
    EXPECT_EQ(typedInZsh("qormodel tree pro"), "qormodel tree project.model X");
    EXPECT_EQ(typedInZsh("qormodel get project.model /Sc"), "qormodel get project.model /Scans/X");
    EXPECT_EQ(typedInZsh("qormodel get 'my file.model' /Scans/Cou"),
              "qormodel get my file.model /Scans/Count X");
    EXPECT_EQ(typedInZsh("qormodel cat project.model --mask /Name,/Or"),
              "qormodel cat project.model --mask /Name,/Origin X");
}

TEST_F(Completing, InZshTellsWhatCannotBeRead) {
    EXPECT_EQ(typedInZsh("qormodel get none.model /Sc"), "qormodel get none.model /ScX");
}

TEST_F(Completing, InFishOffersTheSame) {
    EXPECT_EQ(inFish("qormodel "), commandNames());
    EXPECT_EQ(inFish("qormodel tr"), Words{"tree"});
    EXPECT_EQ(inFish("qormodel tree --attr"), Words{"--attributes"});
    EXPECT_EQ(inFish("qormodel cat --as e"), Words{"export"});
    EXPECT_EQ(inFish("qormodel tree --color=al"), Words{"--color=always"});
    EXPECT_EQ(inFish("qormodel tree pro"), Words{"project.model"});
    EXPECT_EQ(
        inFish("qormodel get project.model /Scans/"),
        sortedLines(runQormodel({"complete-paths", "project.model", "/Scans/"}, options).out));
    EXPECT_EQ(inFish("qormodel get 'my file.model' /Name /Sc"), Words{"/Scans/"});
    EXPECT_EQ(inFish("qormodel cat project.model --mask /Name,/Or"), Words{"/Name,/Origin"});
    EXPECT_EQ(inFish("qormodel store --store x.db ex"), Words{"export"});
    EXPECT_EQ(inFish("qormodel get none.model /"), Words{});
}
