#include "SettingsStore.h"

#include <QOR/Text.h>

#if !defined(_WIN32)
#include <QOR/KeyStoreSqlite.h>
#endif

#include <chrono>
#include <cstdint>
#include <filesystem>

namespace settings {

using namespace QOR;

namespace {

std::string uniqueName() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    return "settings_" + std::to_string(now);
}

}  // namespace

#if defined(_WIN32)

std::shared_ptr<keystore::Store> openStore(const std::string& place, std::string& error) {
    auto store = keystore::openSystemStore(wide(place));
    if (!store) error = place + ": the key cannot be opened";
    return store;
}

std::string temporaryPlace() { return "Software\\" + uniqueName(); }

void removePlace(const std::string& place) {
    const auto currentUser = static_cast<std::intptr_t>(static_cast<std::int32_t>(0x80000001));
    keystore::RegDeleteTreeW(reinterpret_cast<keystore::HKEY>(currentUser), wide(place).c_str());
}

#else

std::shared_ptr<keystore::Store> openStore(const std::string& place, std::string& error) {
    return keystore::openSqliteStore(place, &error);
}

std::string temporaryPlace() {
    return (std::filesystem::temp_directory_path() / (uniqueName() + ".db")).string();
}

void removePlace(const std::string& place) {
    std::error_code ignored;
    for (const char* const end : {"", "-wal", "-shm"})
        std::filesystem::remove(place + end, ignored);
}

#endif

}  // namespace settings
