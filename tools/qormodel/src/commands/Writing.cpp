#include "commands/Writing.h"

#include "io/TargetBuffer.h"
#include "io/TargetFile.h"
#include "model/Mask.h"
#include "survival/Survival.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include <unistd.h>

namespace qormodel {

namespace {
// Reports one reason to leave a file alone. True, so that reasons can be added up.
bool object(const Place& place, const std::string& text) {
    printNote(describe(place, text));
    return true;
}

bool isAnythingLost(const Document& document, const std::vector<std::string>& mask) {
    bool isLost = false;
    if (document.isNewerThanLibrary())
        isLost = object(document.placeOf(0, 1),
                        "format " + document.outline.versions.front() +
                            " is newer than this program: parts of it may get lost");
    for (const auto& loss : findLosses(document)) {
        if (!mask.empty() && !isAtOrBelow(loss.path, mask)) continue;
        Place place = document.placeOf(0, loss.line);
        place.path = loss.path;
        isLost = object(place, describe(loss));
    }
    return isLost;
}

// Whether two names lead to one place; a file that is missing counts, too.
bool isSamePlace(const std::string& first, const std::string& second) {
    if (first == second) return true;
    const auto where = [](const std::string& name) {
        std::error_code error;
        return std::filesystem::weakly_canonical(std::filesystem::absolute(name, error), error);
    };
    return where(first) == where(second);
}
}  // namespace

std::string checkFileName(const std::string& name) {
    return name.empty() ? "expected the name of a file" : "";
}

void addWriteFlags(CLI::App& command, WriteFlags& flags) {
    command
        .add_option("-o,--output", flags.output,
                    "Where to write, - for the standard output; else the file itself")
        ->check(checkFileName)
        ->option_text("FILE");
    command.add_flag("--no-backup", flags.noBackup, "Keep no copy of the old file as FILE~");
    command.add_flag("--force", flags.force, "Write even where something would get lost");
    command.add_flag("--dry-run", flags.dryRun, "Tell what would be done, write nothing");
}

bool mayBeWritten(const Document& document, const WriteFlags& flags, Session& session,
                  const std::vector<std::string>& mask) {
    if (document.source && document.source->hasChanged())
        throw Failure(Place{document.source->getName()},
                      "has changed since it was read: nothing is written");
    if (!isAnythingLost(document, mask) || flags.force) return true;
    printNote(describe(document.placeOf(0, 0), "is not written; --force does so all the same"));
    session.exit = Exit::Found;
    return false;
}

FileLock lockTarget(const WriteFlags& flags, const std::string& file,
                    const std::vector<std::string>& others) {
    const std::string& name = flags.output.empty() ? file : flags.output;
    if (flags.dryRun || name == "-") return {};
    const auto isTarget = [&](const std::string& each) { return isSamePlace(each, name); };
    return isTarget(file) || std::ranges::any_of(others, isTarget) ? FileLock(name) : FileLock();
}

std::optional<FileVersion> inqVersionRead(const std::string& target, const Document& document) {
    const bool isRead = document.source && document.file != "-";
    if (!isRead || !isSamePlace(target, document.file)) return std::nullopt;
    return document.source->getVersion();
}

void storeDocument(const Document& document, const WriteFlags& flags,
                   const std::vector<const Document*>& others) {
    if (flags.dryRun) return;
    const std::string& name = flags.output.empty() ? document.file : flags.output;
    if (name == "-") {
        TargetBuffer buffer(STDOUT_FILENO, "standard output");
        writeDocument(document, buffer, name);
        return buffer.finish();
    }
    TargetFile file(name);
    TargetBuffer buffer(file.getDescriptor(), name);
    writeDocument(document, buffer, name);
    buffer.finish();
    auto seen = inqVersionRead(name, document);
    for (const auto* const other : others)
        if (!seen) seen = inqVersionRead(name, *other);
    file.replace(!flags.noBackup, seen);
}

}  // namespace qormodel
