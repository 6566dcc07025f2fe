#include "store/StoreCopy.h"

#include "Failure.h"
#include "io/FileVersion.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

#include <unistd.h>

namespace qormodel {

namespace {
namespace fs = std::filesystem;
using Versions = std::pair<std::optional<FileVersion>, std::optional<FileVersion>>;

constexpr const char* logEnd = "-wal";
constexpr int maxTries = 50;

Versions versionsOf(const std::string& file) {
    return {inqFileVersion(file), inqFileVersion(file + logEnd)};
}

bool mayBeWritten(const std::string& name) {
    return ::access(name.c_str(), W_OK) == 0;
}

std::string makeFolder() {
    const char* const wanted = std::getenv("TMPDIR");
    const std::string above = wanted && *wanted != '\0' ? wanted : "/tmp";
    std::string folder = above + "/qormodel.XXXXXX";
    if (!::mkdtemp(folder.data()))
        throw Failure(Place{above},
                      std::string("no temporary folder can be made: ") + std::strerror(errno));
    return folder;
}

void copyFile(const std::string& from, const std::string& to) {
    std::error_code error;
    fs::copy_file(from, to, fs::copy_options::overwrite_existing, error);
    if (error) throw Failure(Place{from}, "cannot be read: " + error.message());
    fs::permissions(to, fs::perms::owner_read | fs::perms::owner_write, error);
}

// Neither of the two files may change meanwhile, since they belong together.
bool copyAtOnce(const std::string& file, const std::string& to) {
    const Versions before = versionsOf(file);
    copyFile(file, to);
    std::error_code ignored;
    fs::remove(to + logEnd, ignored);
    if (before.second) copyFile(file + logEnd, to + logEnd);
    return versionsOf(file) == before;
}
}  // namespace

std::unique_ptr<StoreCopy> StoreCopy::inqFor(const std::string& file) {
    const std::string above = fs::path(file).parent_path().string();
    if (!inqFileVersion(file)) return nullptr;
    if (mayBeWritten(file) && mayBeWritten(above.empty() ? "." : above)) return nullptr;
    std::unique_ptr<StoreCopy> copy(new StoreCopy(file));
    for (int i = 0; i < maxTries; ++i) {
        if (copyAtOnce(file, copy->name)) return copy;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    throw Failure(Place{file}, "other programs do not stop changing the store");
}

StoreCopy::StoreCopy(const std::string& file)
    : folder(makeFolder()), name(folder + '/' + fs::path(file).filename().string()) {}

StoreCopy::~StoreCopy() {
    std::error_code ignored;
    fs::remove_all(folder, ignored);
}

}  // namespace qormodel
