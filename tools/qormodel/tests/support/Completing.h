// Asks the shells what they offer for a command line.
#pragma once

#include "support/RunProgram.h"
#include "support/Sample.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace qormodel::testing {

using Words = std::vector<std::string>;

inline std::string quoted(const std::string& text) {
    std::string result = "'";
    for (const char each : text) result += each == '\'' ? "'\\''" : std::string(1, each);
    return result + '\'';
}

inline std::string quotedForFish(const std::string& text) {
    std::string result = "'";
    for (const char each : text)
        result += (each == '\'' || each == '\\' ? "\\" : "") + std::string(1, each);
    return result + '\'';
}

inline Words sortedLines(const std::string& text) {
    Words lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        if (!line.empty()) lines.push_back(line);
    std::ranges::sort(lines);
    return lines;
}

/// A folder with files to complete.
class Completing : public ::testing::Test {
protected:
    Completing() {
        options.folder = folder.getFolder().string();
        options.environment["HOME"] = options.folder;
        options.environment["TERM"] = "xterm";
        for (const char* const name : {"project.model", "my file.model"}) put(name, projectText);
        put("broken.model", "\"Test\"\n\"kVLib\" 9.1.0.0\nAttrContainer { \nAttr<int> { \nName");
        put("points.txt", "0,0,0\n");
    }

    void put(const std::string& name, const std::string& content) const {
        std::ofstream(folder.getFolder() / name, std::ios::binary) << content;
    }

    // What bash's function offers for the last of the words.
    Words inBash(const Words& words) const {
        std::string script = "source <(qormodel completion bash)\nCOMP_WORDS=(";
        for (const auto& word : words) script += quoted(word) + ' ';
        script += ")\nCOMP_CWORD=" + std::to_string(words.size() - 1) +
                  "\n_qormodel\nprintf '%s\\n' \"${COMPREPLY[@]}\"\n";
        put("script", script);
        const RunResult result = runShell("bash --norc script", options);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.err, "");
        return sortedLines(result.out);
    }

    // What a line becomes in an interactive shell by the tabulator key and an X behind it. The
    // shell then prints it.
    std::string typed(const std::string& shell, const std::string& setup,
                      const std::string& line) const {
        put("driver",
            "zmodload zsh/zpty || exit 3\n"
            "zpty -b shell " +
                quoted(shell) +
                "\n"
                "zpty -w shell " +
                quoted(setup + "; echo REA''DY") +
                "\n"
                "ask() {\n"
                "  local text= part n\n"
                "  for ((n = 0; n < 300; ++n)); do\n"
                "    while zpty -rt shell part; do text+=$part; done\n"
                "    [[ $text == *${~1}* ]] && break\n"
                "    sleep 0.1\n"
                "  done\n"
                "  print -r -- $text\n"
                "}\n"
                "ask $'READY\\r'\n"
                "zpty -wn shell " +
                quoted(line) +
                "$'\\t'\n"
                "sleep 1.5\n"
                "zpty -wn shell $'X\\C-aecho RES\"\"ULT \\C-e END\\r'\n"
                "ask $'RESULT*END*\\r'\n"
                "zpty -d shell\n");
        const RunResult result = runShell("zsh -f driver", options);
        EXPECT_EQ(result.status, 0) << result.err;
        std::smatch found;
        const std::regex answer("RESULT (.*) END");
        return std::regex_search(result.out, found, answer) ? found[1].str()
                                                            : "nothing in: " + result.out;
    }

    std::string typedInBash(const std::string& line) const {
        return typed("bash --norc --noprofile -i", "source <(qormodel completion bash); PS1='> '",
                     line);
    }
    std::string typedInZsh(const std::string& line) const {
        return typed("zsh -f -i",
                     "autoload -Uz compinit; compinit -u -D; source <(qormodel completion zsh); "
                     "bindkey -e; PS1='> '; PROMPT_EOL_MARK=",
                     line);
    }

    // What fish offers at the end of a line.
    Words inFish(const std::string& line) const {
        put("script.fish",
            "qormodel completion fish | source\ncomplete -C " + quotedForFish(line) + "\n");
        const RunResult result = runShell("fish --no-config script.fish", options);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.err, "");
        return sortedLines(std::regex_replace(result.out, std::regex("\t[^\n]*"), ""));
    }

    TemporaryFile folder{""};
    RunOptions options;
};

}  // namespace qormodel::testing
