// The command line of the program as data, for the scripts that complete it.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace qormodel {

/// What may stand in one place of a command line.
struct ArgumentKind {
    enum Kind {
        Other,    ///< nobody knows: a number, a name
        Values,   ///< one of `values`
        File,     ///< a file
        Model,    ///< a file in which paths of the same command lead
        Path,     ///< a path in the model file of the line
        Command,  ///< the name of a command
        Store,    ///< the file of a key store
        Key,      ///< a key in the store of the line
        Value,    ///< a value of the key ahead of it
        Setting,  ///< a value of the key ahead of it with the text to be set behind =
    };

    Kind kind = Other;
    std::vector<std::string> values{};
};

struct OptionLine {
    std::vector<std::string> names;  ///< with their dashes, the long ones first
    bool takesValue = false;
    ArgumentKind value;
    std::string description;
};

struct CommandLine {
    std::string path;  ///< as in "store ls"; empty for the program
    std::string description;
    std::vector<OptionLine> options;       ///< those of its groups and of the program too
    std::vector<ArgumentKind> arguments;   ///< in their order
    bool isLastRepeated = false;           ///< any number of the last argument
    std::vector<std::string> subcommands;  ///< their names
};

/// The program, its commands and theirs; hidden ones are left out. What an argument is goes by the
/// word that stands for it in the help: FILE, MODEL, PATH, TYPE, COMMAND, KEY, VALUE, or values as
/// in "a|b".
std::vector<CommandLine> listCommandLines(const CLI::App& program);

/// The scripts for the three shells.
std::string bashScript(const std::vector<CommandLine>& commands);
std::string zshScript(const std::vector<CommandLine>& commands);
std::string fishScript(const std::vector<CommandLine>& commands);

}  // namespace qormodel
