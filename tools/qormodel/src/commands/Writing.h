// What all commands share that write a model file.
#pragma once

#include "commands/Commands.h"
#include "io/FileLock.h"
#include "model/Document.h"

#include <optional>
#include <string>
#include <vector>

namespace qormodel {

/// The options of a command that writes.
struct WriteFlags {
    std::string output;       ///< empty for the file that was read
    bool noBackup = false;
    bool force = false;
    bool dryRun = false;
};

/// A check for the option -o: what is wrong with the name of a file; nothing where it is not empty.
/// An empty one, of a shell's variable that is not set, is not to mean the file that was read.
std::string checkFileName(const std::string& name);

/// Adds -o, --no-backup, --force and --dry-run.
void addWriteFlags(CLI::App& command, WriteFlags& flags);

/// Whether everything in the document would come back. If not, reports what would get lost, and
/// sets the exit status unless `force`. Asked ahead of any change. \throws Failure for a file that
/// somebody has written into since it was read
/// \param mask the paths at and below which it matters; empty for everywhere
bool mayBeWritten(const Document& document, const WriteFlags& flags, Session& session,
                  const std::vector<std::string>& mask = {});

/// Keeps other runs from changing the file that a command is about to read and to replace; taken
/// ahead of the reading and held until it is replaced. Holds nothing where no file that is read
/// will be replaced. \param file what is replaced where there is no -o
/// \param others the other files that are read
FileLock lockTarget(const WriteFlags& flags, const std::string& file,
                    const std::vector<std::string>& others = {});

/// What the file `target` was when `document` was read from it; nothing for a document from
/// elsewhere.
std::optional<FileVersion> inqVersionRead(const std::string& target, const Document& document);

/// Writes the document to where `flags` say: "-" is the standard output, a file is replaced as a
/// whole. Does nothing in a dry run. \param others what else was read for it
/// \throws Failure, also where the file to be replaced was read and has changed since
void storeDocument(const Document& document, const WriteFlags& flags,
                   const std::vector<const Document*>& others = {});

}  // namespace qormodel
