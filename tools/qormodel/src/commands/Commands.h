// The commands of the program, one function for each, which adds it to the command line.
#pragma once

#include "Failure.h"
#include "terminal/Output.h"

#include <CLI/CLI.hpp>

namespace qormodel {

/// What all commands share in one run of the program.
struct Session {
    Output output;
    Exit exit = Exit::Done;
};

void addCat(CLI::App& program, Session& session);
void addCheck(CLI::App& program, Session& session);
void addCompletion(CLI::App& program, Session& session);
void addDiff(CLI::App& program, Session& session);
void addFmt(CLI::App& program, Session& session);
void addGet(CLI::App& program, Session& session);
void addHelp(CLI::App& program, Session& session);
void addHtml(CLI::App& program, Session& session);
void addInfo(CLI::App& program, Session& session);
void addGitSetup(CLI::App& program, Session& session);
void addMerge(CLI::App& program, Session& session);
void addNew(CLI::App& program, Session& session);
void addRelations(CLI::App& program, Session& session);
void addSet(CLI::App& program, Session& session);
void addStore(CLI::App& program, Session& session);
void addTree(CLI::App& program, Session& session);
void addVersion(CLI::App& program, Session& session);

}  // namespace qormodel
