// What the shells offer of a key store, and for files of any name.
#include "support/Completing.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

using namespace qormodel::testing;

namespace {

// A store with keys and values whose names shells take apart.
class CompletingKeys : public Completing {
protected:
    CompletingKeys() {
        store({"set", "Viewer\\Window", "Position=1", "Title=x", "Two words=1", "$(touch ran)=1"});
        store({"set", "Viewer\\My Wind", "a=1"});
        store({"set", "$(touch ran)\\It's", "a=1"});
        store({"set", "line\nbreak", "a=1"});
        store({"import", "project.model", "--key", "Project"});
    }

    void store(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"store", "--store", "my s.db"});
        EXPECT_EQ(runQormodel(arguments, options).status, 0);
    }
    Words inStore(std::vector<std::string> words) const {
        words.insert(words.begin(), {"qormodel", "store", "--store", "'my s.db'"});
        return inBash(words);
    }
    bool hasRun() const { return std::filesystem::exists(folder.getFolder() / "ran"); }
};

}  // namespace

TEST_F(CompletingKeys, InBashOffersKeysAndValues) {
    // Each with the quotes that the word has, and with those that it needs where it has none.
    EXPECT_EQ(inStore({"ls", ""}),
              (Words{"Project\\\\", "Viewer\\\\", "\\$\\(touch\\ ran\\)\\\\"}));
    EXPECT_EQ(inStore({"get", "'Viewer\\W"}), Words{"Viewer\\Window\\"});
    EXPECT_EQ(inStore({"rm", "\"Viewer\\W"}), Words{"Viewer\\\\Window\\\\"});
    EXPECT_EQ(inStore({"rm", "\"$(touch"}), Words{"\\$(touch ran)\\\\"});
    EXPECT_EQ(inStore({"rm", "'$(touch ran)\\I"}), Words{"$(touch ran)\\It'\\''s\\"});
    EXPECT_EQ(inStore({"set", "Viewer\\\\W"}), Words{"Viewer\\\\Window\\\\"});
    EXPECT_EQ(inStore({"get", "'Viewer\\Window'", ""}),
              (Words{"Position", "Title", "Two\\ words", "\\$\\(touch\\ ran\\)"}));
    EXPECT_EQ(inStore({"get", "'Viewer\\Window'", "'T"}), (Words{"Title", "Two words"}));
    EXPECT_EQ(inStore({"set", "'Viewer\\Window\\'", "a", "=", "5", "Po"}), Words{"Position="});
    EXPECT_EQ(inStore({"set", "'Viewer\\Window'", "Position", "="}), Words{});
    EXPECT_EQ(inStore({"export", "--key", "P"}), Words{"Project\\\\"});
    EXPECT_EQ(inStore({"export", "--base", "P"}), Words{});
    EXPECT_EQ(inStore({"get", "Project", "/"}), Words{});  // what only export knows
    EXPECT_EQ(inStore({"ls", "None\\\\"}), Words{});
}

TEST_F(CompletingKeys, IsQuietWhereThereIsNoStore) {
    put("empty.db", "");
    for (const char* const file : {"none.db", "empty.db", "project.model", ".", "-"}) {
        const RunResult result = runQormodel({"complete-keys", file, ""}, options);
        EXPECT_EQ(result.status, 0) << file;
        EXPECT_EQ(result.out + result.err, "") << file;
    }
    EXPECT_EQ(std::filesystem::file_size(folder.getFolder() / "empty.db"), 0u);
}

TEST_F(CompletingKeys, WorksWhereSomebodyTypesInBash) {
    const std::string line = "qormodel store --store my\\ s.db ";
    const std::string typed = "qormodel store --store my s.db ";

    EXPECT_EQ(typedInBash(line + "ls Vie"), typed + "ls Viewer\\X");
    EXPECT_EQ(typedInBash(line + "ls Viewer\\\\M"), typed + "ls Viewer\\My Wind\\X");
    EXPECT_EQ(typedInBash(line + "ls \\$"), typed + "ls $(touch ran)\\X");
    EXPECT_EQ(typedInBash(line + "get Viewer\\\\Window Tw"),
              typed + "get Viewer\\Window Two words X");
    EXPECT_EQ(typedInBash(line + "get Viewer\\\\Window \\$"),
              typed + "get Viewer\\Window $(touch ran) X");
    EXPECT_EQ(typedInBash(line + "set Viewer\\\\Window Po"),
              typed + "set Viewer\\Window Position=X");
    EXPECT_FALSE(hasRun());
}

TEST_F(CompletingKeys, WorksWhereSomebodyTypesInZsh) {
    const std::string line = "qormodel store --store my\\ s.db ";
    const std::string typed = "qormodel store --store my s.db ";

    EXPECT_EQ(typedInZsh(line + "ls Vie"), typed + "ls Viewer\\X");
    EXPECT_EQ(typedInZsh(line + "ls Viewer\\\\M"), typed + "ls Viewer\\My Wind\\X");
    EXPECT_EQ(typedInZsh(line + "get Viewer\\\\Window Tw"),
              typed + "get Viewer\\Window Two words X");
    EXPECT_EQ(typedInZsh(line + "get Viewer\\\\Window \\$"),
              typed + "get Viewer\\Window $(touch ran) X");
    EXPECT_EQ(typedInZsh(line + "set Viewer\\\\Window Po"),
              typed + "set Viewer\\Window Position=X");
    EXPECT_FALSE(hasRun());
}

TEST_F(CompletingKeys, InFishOffersTheSame) {
    const std::string line = "qormodel store --store 'my s.db' ";

    EXPECT_EQ(inFish(line + "ls "), (Words{"$(touch ran)\\", "Project\\", "Viewer\\"}));
    EXPECT_EQ(inFish(line + "get Viewer\\\\W"), Words{"Viewer\\Window\\"});
    EXPECT_EQ(inFish(line + "get 'Viewer\\W"), Words{"Viewer\\Window\\"});
    EXPECT_EQ(inFish(line + "get 'Viewer\\Window' T"), (Words{"Title", "Two words"}));
    EXPECT_EQ(inFish(line + "set 'Viewer\\Window' a=1 Po"), Words{"Position="});
    EXPECT_EQ(inFish(line + "export --key=P"), Words{"--key=Project\\"});
}

TEST_F(CompletingKeys, FindsPathsInFilesOfAnyName) {
    for (const std::string name :
         {"it's.model", "a$HOME.model", "q\"uote.model", "line\nbreak.model", "back\\slash.model",
          "st*r.model", "-dash.model"}) {
        put(name, projectText);
        if (name[0] == '-') continue;  // an option to the shells
        std::string escaped;
        for (const char each : name) escaped += std::string("\\") + each;
        // Words come by lines, so a name that has two is quietly no file.
        const bool isOneLine = name.find('\n') == std::string::npos;
        EXPECT_EQ(inFish("qormodel get " + quotedForFish(name) + " /Sc"),
                  isOneLine ? Words{"/Scans/"} : Words{})
            << name;
        if (!isOneLine) continue;
        EXPECT_EQ(inBash({"qormodel", "get", quoted(name), "/Sc"}), Words{"/Scans/"}) << name;
        EXPECT_EQ(inBash({"qormodel", "get", escaped, "/Sc"}), Words{"/Scans/"}) << name;
        EXPECT_EQ(inBash({"qormodel", "info", escaped.substr(0, 6)}), Words{name}) << name;
    }
}
