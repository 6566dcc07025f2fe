#include "commands/CommandLine.h"
#include "commands/CompletionTexts.h"

#include <utility>

namespace qormodel {

namespace {
using Words = std::vector<std::string>;

std::string joined(const Words& words, const char* separator = " ") {
    std::string text;
    for (const auto& word : words) text += (text.empty() ? "" : separator) + word;
    return text;
}

// A text that a shell takes as one word as it stands.
std::string quoted(const std::string& text) {
    std::string result = "'";
    for (const char character : text)
        result += character == '\'' ? "'\\''" : std::string(1, character);
    return result + '\'';
}

std::string quotedForFish(const std::string& text) {
    std::string result = "'";
    for (const char character : text) {
        if (character == '\'' || character == '\\') result += '\\';
        result += character;
    }
    return result + '\'';
}

std::string wordOf(const ArgumentKind& kind) {
    switch (kind.kind) {
        case ArgumentKind::Values: return "values " + joined(kind.values);
        case ArgumentKind::File: return "file";
        case ArgumentKind::Model: return "model";
        case ArgumentKind::Path: return "path";
        case ArgumentKind::Command: return "command";
        case ArgumentKind::Store: return "store";
        case ArgumentKind::Key: return "key";
        case ArgumentKind::Value: return "value";
        case ArgumentKind::Setting: return "setting";
        case ArgumentKind::Other: break;
    }
    return "other";
}

// A function that chooses by its arguments and sets a variable.
std::string function(const std::string& name, const std::string& subject, const std::string& none,
                     const std::vector<std::pair<std::string, std::string>>& rows) {
    std::string text = "\n" + name + "() {\n    case " + subject + " in\n";
    for (const auto& [pattern, action] : rows)
        text += "        " + pattern + ") " + action + " ;;\n";
    return text + "        *) " + none + " ;;\n    esac\n}\n";
}

using Rows = std::vector<std::pair<std::string, std::string>>;

std::string found(const std::string& text) { return "found=" + quoted(text); }

// What bash and zsh ask for.
std::string tables(const std::vector<CommandLine>& commands) {
    Rows subcommands;
    Rows values;
    Rows arguments;
    for (const auto& command : commands) {
        if (!command.subcommands.empty())
            subcommands.emplace_back(quoted(command.path), found(joined(command.subcommands)));
        for (const auto& option : command.options) {
            if (!option.takesValue) continue;
            Words patterns;
            for (const auto& name : option.names)
                patterns.push_back(quoted(command.path + ' ' + name));
            values.emplace_back(joined(patterns, " | "), found(wordOf(option.value)));
        }
        for (std::size_t i = 0; i < command.arguments.size(); ++i) {
            const bool isRepeated = command.isLastRepeated && i + 1 == command.arguments.size();
            const std::string number = isRepeated ? "" : std::to_string(i + 1);
            arguments.emplace_back(quoted(command.path + ' ' + number) + (isRepeated ? "*" : ""),
                                   found(wordOf(command.arguments[i])));
        }
    }
    return function("_qormodel_commands", "\"$1\"", "found=''", subcommands) +
           function("_qormodel_value", "\"$1 $2\"", "found=''", values) +
           function("_qormodel_argument", "\"$1 $2\"", "found=''", arguments);
}

const CommandLine* inqCommand(const std::vector<CommandLine>& commands, const std::string& path) {
    for (const auto& command : commands)
        if (command.path == path) return &command;
    return nullptr;
}

std::string pathOf(const CommandLine& holder, const std::string& name) {
    return holder.path.empty() ? name : holder.path + ' ' + name;
}

// Candidates with what they mean, as zsh shows them.
std::string describedTables(const std::vector<CommandLine>& commands) {
    Rows options;
    Rows summaries;
    for (const auto& command : commands) {
        Words words;
        for (const auto& option : command.options)
            for (const auto& name : option.names)
                words.push_back(quoted(name + ':' + option.description));
        options.emplace_back(quoted(command.path), "candidates=(" + joined(words) + ')');
        words.clear();
        for (const auto& name : command.subcommands)
            if (const auto* const each = inqCommand(commands, pathOf(command, name)))
                words.push_back(quoted(name + ':' + each->description));
        if (!words.empty())
            summaries.emplace_back(quoted(command.path), "candidates=(" + joined(words) + ')');
    }
    return function("_qormodel_described", "\"$1\"", "candidates=()", options) +
           function("_qormodel_summaries", "\"$1\"", "candidates=()", summaries);
}

std::string fishArgument(const ArgumentKind& kind) {
    switch (kind.kind) {
        case ArgumentKind::Values: return " -x -a " + quotedForFish(joined(kind.values));
        case ArgumentKind::File:
        case ArgumentKind::Model:
        case ArgumentKind::Store: return " -r -F";
        case ArgumentKind::Path: return " -x -a '(__qormodel_paths)'";
        case ArgumentKind::Command: return " -x -a '$__qormodel_commands'";
        case ArgumentKind::Key: return " -x -a '(__qormodel_keys)'";
        case ArgumentKind::Value: return " -x -a '(__qormodel_values)'";
        case ArgumentKind::Setting: return " -x -a '(__qormodel_values)='";
        case ArgumentKind::Other: break;
    }
    return " -x";
}

std::string fishOptions(const CommandLine& command) {
    const std::string condition = quotedForFish("__qormodel_in " + quotedForFish(command.path));
    std::string text;
    for (const auto& option : command.options) {
        text += "complete -c qormodel -n " + condition;
        for (const auto& name : option.names)
            text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
        if (option.takesValue) text += fishArgument(option.value);
        text += " -d " + quotedForFish(option.description) + '\n';
    }
    return text;
}

std::string fishArguments(const CommandLine& command) {
    std::string text;
    for (std::size_t i = 0; i < command.arguments.size(); ++i) {
        const bool isRepeated = command.isLastRepeated && i + 1 == command.arguments.size();
        text += "complete -c qormodel -n " +
                quotedForFish("__qormodel_at " + quotedForFish(command.path) + ' ' +
                              std::to_string(i + 1) + (isRepeated ? " more" : "")) +
                fishArgument(command.arguments[i]) + '\n';
    }
    return text;
}
}  // namespace

std::string bashScript(const std::vector<CommandLine>& commands) {
    Rows options;
    for (const auto& command : commands) {
        Words names;
        for (const auto& option : command.options)
            names.insert(names.end(), option.names.begin(), option.names.end());
        options.emplace_back(quoted(command.path), found(joined(names)));
    }
    return "# Completes the command line of qormodel in bash. Made by: qormodel completion bash\n" +
           tables(commands) + function("_qormodel_options", "\"$1\"", "found=''", options) +
           shellWalk + bashEnd;
}

std::string zshScript(const std::vector<CommandLine>& commands) {
    return "#compdef qormodel\n"
           "# Completes the command line of qormodel in zsh. Made by: qormodel completion zsh\n" +
           tables(commands) + describedTables(commands) + shellWalk + zshEnd;
}

std::string fishScript(const std::vector<CommandLine>& commands) {
    Words paths;
    Words valued;
    Words models;
    Words stores;
    std::string text;
    for (const auto& command : commands) {
        if (!command.path.empty()) paths.push_back(quotedForFish(command.path));
        for (const auto& option : command.options)
            for (const auto& name : option.names) {
                const std::string word = quotedForFish(command.path + ' ' + name);
                if (option.takesValue) valued.push_back(word);
                if (option.value.kind == ArgumentKind::Model) models.push_back(word);
                if (option.value.kind == ArgumentKind::Store) stores.push_back(word);
            }
        for (const auto& name : command.subcommands)
            if (const auto* const each = inqCommand(commands, pathOf(command, name)))
                text += "complete -c qormodel -n " +
                        quotedForFish("__qormodel_in " + quotedForFish(command.path)) + " -a " +
                        name + " -d " + quotedForFish(each->description) + '\n';
        text += fishOptions(command) + fishArguments(command);
    }
    return "# Completes the command line of qormodel in fish. Made by: qormodel completion fish\n"
           "set -g __qormodel_commands " +
           joined(paths) + "\nset -g __qormodel_valued " + joined(valued) +
           "\nset -g __qormodel_models " + joined(models) + "\nset -g __qormodel_stores " +
           joined(stores) + '\n' + fishBegin + text;
}

}  // namespace qormodel
