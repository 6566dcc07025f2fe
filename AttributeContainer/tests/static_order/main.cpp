// Tells what the static initialisers of the other units found; exit status 0 if all was well.

#include "early.h"

#include <iostream>

namespace {

constexpr int numChecks = 9;  // three of the factory, four of the tables, two of the tree

bool tell(bool holds, const char* what) {
    if (!holds) std::cout << "FAILED  " << what << '\n';
    return holds;
}

}  // namespace

int main() {
    for (const auto& what : earlyChecks().failed) tell(false, what.c_str());
    bool sound = tell(earlyChecks().run == numChecks, "every check ran before main");
    sound &= tell(factoryUserIsSound(), "the container from the factory is sound in main");
    sound &= tell(tableUserIsSound(), "the tables say the same in main");
    sound &= tell(treeUserIsSound(), "the tree is sound in main");
    return sound && earlyChecks().failed.empty() ? 0 : 1;
}
