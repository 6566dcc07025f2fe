#include "KnownKeys.h"

#include <algorithm>
#include <utility>

namespace QOR::keystore {

namespace {

constexpr std::size_t maxKnown = 65536;

}  // namespace

bool KnownKeys::readMark(const Database& database, Mark& mark) {
    constexpr int indexPageSize = 32768;
    sqlite3_file* const file = database.file();
    if (!file || !file->pMethods || file->pMethods->iVersion < 2) return false;
    volatile void* page = nullptr;
    if (file->pMethods->xShmMap(file, 0, indexPageSize, 0, &page) != SQLITE_OK || !page)
        return false;
    // A copy taken while another program writes fits no commit, and so counts as a change.
    const auto* const words = static_cast<const volatile std::uint32_t*>(page);
    std::copy(words, words + mark.size(), mark.begin());
    return true;
}

void KnownKeys::checkChanges(const Database& database, const Statement& dataVersion) {
    Mark today;
    const bool hasToday = readMark(database, today);
    if (hasToday && hasMark && today == mark) return;
    // The number changes with every change that another connection makes.
    Run run(dataVersion);
    const std::int64_t versionToday = run.step() == SQLITE_ROW ? run.number(0) : -1;
    if (versionToday != version || versionToday == -1) clear();
    version = versionToday;
    mark = today;
    hasMark = hasToday;
}

void KnownKeys::passOwnChange(const Database& database) {
    Mark today;
    const bool isOwnAlone =
        hasMark && readMark(database, today) && today[changeCounter] == mark[changeCounter] + 1;
    if (isOwnAlone) mark = today;
}

KnownKeys::Node KnownKeys::inq(Node key, const std::string& folded) const {
    const auto known = subkeys.find(Place{key, folded});
    return known != subkeys.end() ? known->second : 0;
}

void KnownKeys::add(Node key, std::string folded, Node subkey) {
    if (subkeys.size() >= maxKnown) clear();
    subkeys.insert_or_assign(Place{key, std::move(folded)}, subkey);
}

}  // namespace QOR::keystore
