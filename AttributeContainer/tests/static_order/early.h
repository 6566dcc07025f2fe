// What the static initialisers of this program found, before main could look.
#pragma once

#include <string>
#include <vector>

/// The checks that ran so far and those of them that failed.
struct EarlyChecks {
    int run = 0;
    std::vector<std::string> failed;
};

/// A local static, so that whichever initialiser runs first may be the first to ask.
inline EarlyChecks& earlyChecks() {
    static EarlyChecks checks;
    return checks;
}

/// \return `holds`, so that a check can stand in an initialiser.
inline bool checkEarly(bool holds, const char* what) {
    ++earlyChecks().run;
    if (!holds) earlyChecks().failed.push_back(what);
    return holds;
}

/// One for each unit with static initialisers: whether what it made is still sound.
bool factoryUserIsSound();
bool tableUserIsSound();
bool treeUserIsSound();
