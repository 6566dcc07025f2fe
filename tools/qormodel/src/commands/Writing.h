// What all commands share that write a model file.
#pragma once

#include "commands/Commands.h"
#include "model/Document.h"

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
/// sets the exit status unless `force`. Asked ahead of any change.
/// \param mask the paths at and below which it matters; empty for everywhere
bool mayBeWritten(const Document& document, const WriteFlags& flags, Session& session,
                  const std::vector<std::string>& mask = {});

/// Writes the document to where `flags` say: "-" is the standard output, a file is replaced as a
/// whole. Does nothing in a dry run. \throws Failure
void storeDocument(const Document& document, const WriteFlags& flags);

}  // namespace qormodel
