// The parts of the completion scripts that are the same for every command line.
#pragma once

namespace qormodel {

/// Follows the words ahead of the cursor; bash and zsh both understand it.
extern const char* const shellWalk;
/// What completes in bash, behind the tables and the walk.
extern const char* const bashEnd;
/// The same for zsh.
extern const char* const zshEnd;
/// The functions for fish, ahead of what it is told of each command.
extern const char* const fishBegin;

}  // namespace qormodel
