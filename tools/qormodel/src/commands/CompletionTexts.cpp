#include "commands/CompletionTexts.h"

namespace qormodel {

const char* const shellWalk = R"sh(
# Sets what the words ahead of the cursor say: cmd, the command; option, whose value is at the
# cursor; number, of the argument there; model, the file in which paths lead.
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

const char* const bashEnd = R"sh(
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

const char* const zshEnd = R"sh(
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

const char* const fishBegin = R"sh(
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

}  // namespace qormodel
