// The command `html` as its users run it.
#include "support/RunProgram.h"
#include "support/Sample.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

using namespace qormodel::testing;

namespace {
struct Pair {
    TemporaryFile first{projectText};
    TemporaryFile second{textWithoutRelation()};
    std::string page = (first.getFolder() / "page.html").string();
};
}  // namespace

TEST(RunHtml, WritesAPageAndSaysNothing) {
    const Pair files;

    const RunResult result = runQormodel({"html", files.first.getName(), "-o", files.page});

    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out + result.err, "");
    EXPECT_NE(contentOf(files.page).find("\"n\":\"Scans\""), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(files.page + '~'));
}

TEST(RunHtml, ExitsWithOneWhereTheOtherFileDiffers) {
    const Pair files;
    const TemporaryFile same(projectText);

    const RunResult differs =
        runQormodel({"html", files.first.getName(), files.second.getName(), "-o", files.page});
    const std::string page = contentOf(files.page);
    const RunResult equal =
        runQormodel({"html", files.first.getName(), same.getName(), "-o", files.page});

    EXPECT_EQ(differs.status, 1) << differs.err;
    EXPECT_NE(page.find(R"("changes":{"-":1,"+":0,"~":0,"?":0})"), std::string::npos);
    EXPECT_EQ(equal.status, 0) << equal.err;
}

TEST(RunHtml, TakesATolerance) {
    const Pair files;
    std::string text = projectText;
    const TemporaryFile near(text.replace(text.find("Value 2.5\n"), 10, "Value 2.75\n"));
    const auto statusWith = [&](const std::string& tolerance) {
        return runQormodel({"html", files.first.getName(), near.getName(), "-o", files.page,
                            "--no-backup", "--tolerance", tolerance})
            .status;
    };

    EXPECT_EQ(statusWith("0.25"), 0);
    EXPECT_NE(contentOf(files.page).find(R"("changes":{"-":0,"+":0,"~":0,"?":0})"),
              std::string::npos);
    EXPECT_EQ(statusWith("0.2"), 1);
    EXPECT_EQ(statusWith("library"), 1);
    EXPECT_EQ(statusWith("-1"), 2);
}

TEST(RunHtml, PrintsThePageAndReadsTheStandardInput) {
    RunOptions options;
    options.input = projectText;

    const RunResult result = runQormodel({"html", "-", "-o", "-"}, options);

    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(result.out.starts_with("<!DOCTYPE html>"));
    EXPECT_TRUE(result.out.ends_with("</html>\n"));
}

TEST(RunHtml, KeepsAnOldPageUnlessToldOtherwise) {
    const Pair files;
    runQormodel({"html", files.first.getName(), "-o", files.page});
    runQormodel({"html", files.second.getName(), "-o", files.page, "--no-backup"});
    EXPECT_FALSE(std::filesystem::exists(files.page + '~'));

    runQormodel({"html", files.first.getName(), "-o", files.page});

    EXPECT_TRUE(std::filesystem::exists(files.page + '~'));
}

TEST(RunHtml, NeverReplacesTheModel) {
    const Pair files;
    const std::string model = files.first.getName();

    for (const auto& arguments :
         {std::vector<std::string>{"html", model, "-o", model},
          std::vector<std::string>{"html", files.second.getName(), model, "-o", model}}) {
        const RunResult result = runQormodel(arguments);

        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.err, "qormodel: " + model + ": is a file that the page shows\n");
        EXPECT_EQ(contentOf(model), projectText);
    }
}

TEST(RunHtml, ExitsWithTwoAndLeavesThePageForWhatCannotBeRead) {
    const Pair files;
    const TemporaryFile broken(projectText.substr(0, projectText.size() / 2));
    const std::string first = files.first.getName();
    const std::vector<std::vector<std::string>> usages{
        {"html", first},
        {"html", "-o", files.page},
        {"html", "-", "-", "-o", files.page},
        {"html", first + "none", "-o", files.page},
        {"html", first, "", "-o", files.page},
        {"html", first, "-o", ""},
        {"html", first, "-o", files.page, "--tolerance", "1"},
        {"html", broken.getName(), "-o", files.page},
        {"html", first, broken.getName(), "-o", files.page},
        {"html", first, "-o", files.page + "/none/page.html"}};
    for (const auto& usage : usages) {
        const RunResult result = runQormodel(usage);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(result.err.starts_with("qormodel: ")) << result.err;
        EXPECT_FALSE(std::filesystem::exists(files.page));
    }
}
