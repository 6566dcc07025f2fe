#include "commands/CommandLine.h"

#include <utility>

namespace qormodel {

namespace {
// Follows the words ahead of the cursor. bash and zsh both understand it.
constexpr const char* walk = R"sh(
# Sets what the words ahead of the cursor say: cmd, the command; option, whose value is at the cursor;
# number, of the argument there; model, the file in which paths lead.
_qormodel_walk() {
    local word found
    cmd='' option='' number=1 model=''
    for word in "$@"; do
        if [[ -n $option ]]; then
            _qormodel_value "$cmd" "$option"
            if [[ $found == model ]]; then model=$word; fi
            option=''
        elif [[ $word == --*=* ]]; then
            _qormodel_value "$cmd" "${word%%=*}"
            if [[ $found == model ]]; then model=${word#*=}; fi
        elif [[ $word == -?* ]]; then
            _qormodel_value "$cmd" "$word"
            if [[ -n $found ]]; then option=$word; fi
        else
            _qormodel_commands "$cmd"
            if [[ -n $found && " $found " == *" $word "* ]]; then
                cmd="${cmd:+$cmd }$word"
            else
                if [[ $number == 1 ]]; then model=$word; fi
                number=$((number + 1))
            fi
        fi
    done
    if [[ $model == '~/'* ]]; then model=$HOME/${model#'~/'}; fi
}

# Sets found to what may stand at the cursor, ahead of which the words were followed.
_qormodel_kind() {
    if [[ -n $option ]]; then
        _qormodel_value "$cmd" "$option"
        return
    fi
    _qormodel_commands "$cmd"
    if [[ -n $found ]]; then
        found="values $found"
    else
        _qormodel_argument "$cmd" "$number"
    fi
    if [[ $found == command ]]; then
        _qormodel_commands ''
        found="values $found"
    fi
}
)sh";

constexpr const char* bashEnd = R"sh(
# Sets found to a word without its quotes.
_qormodel_plain() {
    local text=$1 quote='' char i
    found=''
    for ((i = 0; i < ${#text}; ++i)); do
        char=${text:i:1}
        if [[ $char == "$quote" ]]; then
            quote=''
        elif [[ $char == \\ && $quote != \' ]]; then
            ((++i))
            found+=${text:i:1}
        elif [[ -z $quote && ( $char == \' || $char == \" ) ]]; then
            quote=$char
        else
            found+=$char
        fi
    done
}

_qormodel() {
    local cmd option number model found i cur head=''
    local -a ahead=()
    for ((i = 1; i < COMP_CWORD; ++i)); do
        # An = makes a word of its own, behind which the value of an option stands.
        [[ ${COMP_WORDS[i]} == = ]] && continue
        _qormodel_plain "${COMP_WORDS[i]}"
        ahead+=("$found")
    done
    _qormodel_walk "${ahead[@]}"
    _qormodel_plain "${COMP_WORDS[COMP_CWORD]}"
    cur=$found
    [[ $cur == = ]] && cur=''
    COMPREPLY=()
    if [[ -z $option && $cur == -* ]]; then
        _qormodel_options "$cmd"
        mapfile -t COMPREPLY < <(compgen -W "$found" -- "$cur")
        return
    fi
    _qormodel_kind
    case $found in
        values\ *) mapfile -t COMPREPLY < <(compgen -W "${found#values }" -- "$cur") ;;
        file | model)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$cur")
            ;;
        path)
            [[ -n $model ]] || return
            [[ $cur == *,* ]] && head=${cur%,*},
            _qormodel_plain "${COMP_WORDS[0]}"
            mapfile -t COMPREPLY < <("$found" complete-paths "$model" "${cur##*,}" 2>/dev/null)
            COMPREPLY=("${COMPREPLY[@]/#/$head}")
            # What holds more is followed by the name of a part, not by a blank.
            if [[ ${#COMPREPLY[@]} == 1 && ${COMPREPLY[0]} == */ ]]; then
                compopt -o nospace 2>/dev/null
            fi
            ;;
    esac
}
complete -F _qormodel qormodel
)sh";

constexpr const char* zshEnd = R"sh(
_qormodel() {
    local cmd option number model found cur program=${(Q)words[1]}
    local -a ahead candidates
    ahead=("${(@Q)words[2,CURRENT-1]}")
    _qormodel_walk "${ahead[@]}"
    if [[ -z $option && $PREFIX == --*=* ]]; then
        option=${PREFIX%%=*}
        compset -P '*='
    fi
    cur=${(Q)PREFIX}
    if [[ -z $option && $cur == -* ]]; then
        _qormodel_described "$cmd"
        _describe -o option candidates
        return
    fi
    _qormodel_commands "$cmd"
    if [[ -z $option && -n $found ]]; then
        _qormodel_summaries "$cmd"
        _describe command candidates
        return
    fi
    _qormodel_kind
    case $found in
        (values *) compadd -- ${=found#values } ;;
        (file|model) _files ;;
        (path)
            [[ -n $model ]] || return 1
            if [[ $PREFIX == *,* ]]; then compset -P '*,'; fi
            candidates=("${(@f)$($program complete-paths "$model" "${cur##*,}" 2>/dev/null)}")
            candidates=(${candidates:#})
            # What holds more is followed by the name of a part, not by a blank.
            compadd -S '' -- ${(M)candidates:#*/}
            compadd -- ${candidates:#*/}
            ;;
    esac
}
if [[ $funcstack[1] == _qormodel ]]; then
    _qormodel "$@"
else
    compdef _qormodel qormodel
fi
)sh";

constexpr const char* fishBegin = R"sh(
# Prints what the words ahead of the cursor say: the command, the number of arguments behind it, and
# the file in which paths lead.
function __qormodel_walk
    set -l cmd
    set -l option ''
    set -l number 0
    set -l model ''
    for word in (commandline -opc)[2..-1]
        if test -n "$option"
            contains -- "$cmd $option" $__qormodel_models; and set model $word
            set option ''
        else if string match -q -- '--*=*' $word
            set -l parts (string split -m 1 = -- $word)
            contains -- "$cmd $parts[1]" $__qormodel_models; and set model $parts[2]
        else if string match -q -- '-?*' $word
            contains -- "$cmd $word" $__qormodel_valued; and set option $word
        else if contains -- (string join ' ' -- $cmd $word) $__qormodel_commands
            set cmd (string join ' ' -- $cmd $word)
        else
            set number (math $number + 1)
            test $number = 1; and set model $word
        end
    end
    printf '%s\n' "$cmd" $number (string replace -r '^~/' "$HOME/" -- $model)
end

function __qormodel_in
    set -l state (__qormodel_walk)
    test "$state[1]" = "$argv[1]"
end

# Whether an argument of that number is at the cursor, or with "more" a later one.
function __qormodel_at
    set -l state (__qormodel_walk)
    test "$state[1]" = "$argv[1]"; or return 1
    set -l here (math $state[2] + 1)
    test $here = $argv[2]; or test "$argv[3]" = more -a $here -gt $argv[2]
end

function __qormodel_paths
    set -l state (__qormodel_walk)
    set -l program (commandline -opc)[1]
    set -l token (commandline -ct | string replace -r '^--[^=]*=' '')
    set -l head (string match -r '^.*,' -- $token)
    set -l last (string replace -r '^.*,' '' -- $token)
    test -n "$state[3]"; or return
    for each in ($program complete-paths $state[3] "$last" 2>/dev/null)
        echo "$head$each"
    end
end

complete -c qormodel -f
)sh";

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
        case ArgumentKind::Model: return " -r -F";
        case ArgumentKind::Path: return " -x -a '(__qormodel_paths)'";
        case ArgumentKind::Command: return " -x -a '$__qormodel_commands'";
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
           tables(commands) + function("_qormodel_options", "\"$1\"", "found=''", options) + walk +
           bashEnd;
}

std::string zshScript(const std::vector<CommandLine>& commands) {
    return "#compdef qormodel\n"
           "# Completes the command line of qormodel in zsh. Made by: qormodel completion zsh\n" +
           tables(commands) + describedTables(commands) + walk + zshEnd;
}

std::string fishScript(const std::vector<CommandLine>& commands) {
    Words paths;
    Words valued;
    Words models;
    std::string text;
    for (const auto& command : commands) {
        if (!command.path.empty()) paths.push_back(quotedForFish(command.path));
        for (const auto& option : command.options)
            for (const auto& name : option.names) {
                const std::string word = quotedForFish(command.path + ' ' + name);
                if (option.takesValue) valued.push_back(word);
                if (option.value.kind == ArgumentKind::Model) models.push_back(word);
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
           "\nset -g __qormodel_models " + joined(models) + '\n' + fishBegin + text;
}

}  // namespace qormodel
