#include "commands/CompletionTexts.h"

namespace qormodel {

const char* const shellWalk = R"sh(
# Sets what the words ahead of the cursor say: cmd, the command; option, whose value is at the
# cursor; number, of the argument there; model, the file in which paths lead, or the key whose
# values are meant; store, the file with the keys.
_qormodel_walk() {
    local word found
    cmd='' option='' number=1 model='' store=''
    for word in "$@"; do
        if [[ -n $option ]]; then
            _qormodel_value "$cmd" "$option"
            if [[ $found == model ]]; then model=$word; fi
            if [[ $found == store ]]; then store=$word; fi
            option=''
        elif [[ $word == --*=* ]]; then
            _qormodel_value "$cmd" "${word%%=*}"
            if [[ $found == model ]]; then model=${word#*=}; fi
            if [[ $found == store ]]; then store=${word#*=}; fi
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
    if [[ $store == '~/'* ]]; then store=$HOME/${store#'~/'}; fi
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
# Sets found to a word without its quotes, and quote to that which is open at its end.
_qormodel_plain() {
    local text=$1 char i
    found='' quote=''
    for ((i = 0; i < ${#text}; ++i)); do
        char=${text:i:1}
        if [[ $char == "$quote" ]]; then
            quote=''
        elif [[ $char == \\ && $quote == \" && ${text:i+1:1} != [\"\$\`\\] ]]; then
            found+=$char
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

# Sets COMPREPLY to what a command prints, quoted as the word at the cursor is.
_qormodel_offer() {
    local each i
    mapfile -t COMPREPLY < <("$@" 2>/dev/null)
    for i in "${!COMPREPLY[@]}"; do
        each=${COMPREPLY[i]}
        case $quote in
            \') each=${each//\'/\'\\\'\'} ;;
            \") each=${each//\\/\\\\} each=${each//\"/\\\"} each=${each//\$/\\\$}
                each=${each//\`/\\\`} ;;
            *) printf -v each %q "$each" ;;
        esac
        COMPREPLY[i]=$each
    done
}

_qormodel() {
    local cmd option number model store found quote i cur program kind head=''
    local -a ahead=()
    for ((i = 1; i < COMP_CWORD; ++i)); do
        # An = makes a word of its own, behind which the value of an option stands.
        [[ ${COMP_WORDS[i]} == = ]] && continue
        _qormodel_plain "${COMP_WORDS[i]}"
        ahead+=("$found")
    done
    _qormodel_walk "${ahead[@]}"
    _qormodel_plain "${COMP_WORDS[0]}"
    program=$found
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
    kind=$found
    # What an argument sets is not for this program to know.
    if [[ -z $option &&
        ( ${COMP_WORDS[COMP_CWORD]} == = || ${COMP_WORDS[COMP_CWORD - 1]} == = ) ]]; then
        kind=other
    fi
    case $kind in
        values\ *) mapfile -t COMPREPLY < <(compgen -W "${found#values }" -- "$cur") ;;
        file | model | store)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$cur")
            ;;
        path)
            [[ -n $model ]] || return
            [[ $cur == *,* ]] && head=${cur%,*},
            mapfile -t COMPREPLY < <("$program" complete-paths "$model" "${cur##*,}" 2>/dev/null)
            COMPREPLY=("${COMPREPLY[@]/#/$head}")
            # What holds more is followed by the name of a part, not by a blank.
            if [[ ${#COMPREPLY[@]} == 1 && ${COMPREPLY[0]} == */ ]]; then
                compopt -o nospace 2>/dev/null
            fi
            ;;
        key)
            [[ -n $store ]] || return
            compopt -o nospace 2>/dev/null
            _qormodel_offer "$program" complete-keys "$store" "$cur"
            ;;
        value | setting)
            [[ -n $store ]] || return
            _qormodel_offer "$program" complete-values "$store" "$model" "$cur"
            if [[ $kind == setting ]]; then
                compopt -o nospace 2>/dev/null
                COMPREPLY=("${COMPREPLY[@]/%/=}")
            fi
            ;;
    esac
}
complete -F _qormodel qormodel
)sh";

const char* const zshEnd = R"sh(
_qormodel() {
    local cmd option number model store found cur program=${(Q)words[1]}
    local -a ahead candidates
    ahead=("${(@Q)words[2,CURRENT-1]}")
    _qormodel_walk "${ahead[@]}"
    if [[ -z $option && $PREFIX == --*=* ]]; then
        option=${PREFIX%%=*}
        compset -P '*='
    fi
    # Within quotes a backslash stands for itself.
    if [[ $compstate[quote] == "'" ]]; then cur=$PREFIX; else cur=${(Q)PREFIX}; fi
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
        (file|model|store) _files ;;
        (path)
            [[ -n $model ]] || return 1
            if [[ $PREFIX == *,* ]]; then compset -P '*,'; fi
            candidates=("${(@f)$($program complete-paths "$model" "${cur##*,}" 2>/dev/null)}")
            candidates=(${candidates:#})
            # What holds more is followed by the name of a part, not by a blank.
            compadd -S '' -- ${(M)candidates:#*/}
            compadd -- ${candidates:#*/}
            ;;
        (key)
            [[ -n $store ]] || return 1
            candidates=("${(@f)$($program complete-keys "$store" "$cur" 2>/dev/null)}")
            compadd -S '' -- ${candidates:#}
            ;;
        (value|setting)
            [[ -n $store ]] || return 1
            candidates=("${(@f)$($program complete-values "$store" "$model" "$cur" 2>/dev/null)}")
            if [[ $found == setting ]]; then compadd -S '=' -- ${candidates:#}
            else compadd -- ${candidates:#}; fi
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
# Prints what the words ahead of the cursor say: the command, the number of arguments behind it, the
# file in which paths lead or the key whose values are meant, and the file with the keys.
function __qormodel_walk
    set -l cmd
    set -l option ''
    set -l number 0
    set -l model ''
    set -l store ''
    for word in (commandline -opc)[2..-1]
        if test -n "$option"
            contains -- "$cmd $option" $__qormodel_models; and set model $word
            contains -- "$cmd $option" $__qormodel_stores; and set store $word
            set option ''
        else if string match -q -- '--*=*' $word
            set -l parts (string split -m 1 = -- $word)
            contains -- "$cmd $parts[1]" $__qormodel_models; and set model $parts[2]
            contains -- "$cmd $parts[1]" $__qormodel_stores; and set store $parts[2]
        else if string match -q -- '-?*' $word
            contains -- "$cmd $word" $__qormodel_valued; and set option $word
        else if contains -- (string join ' ' -- $cmd $word) $__qormodel_commands
            set cmd (string join ' ' -- $cmd $word)
        else
            set number (math $number + 1)
            test $number = 1; and set model $word
        end
    end
    printf '%s\0' "$cmd" $number (string replace -r '^~/' "$HOME/" -- $model $store)
end

function __qormodel_in
    set -l state (__qormodel_walk | string split0)
    test "$state[1]" = "$argv[1]"
end

# Whether an argument of that number is at the cursor, or with "more" a later one.
function __qormodel_at
    set -l state (__qormodel_walk | string split0)
    test "$state[1]" = "$argv[1]"; or return 1
    set -l here (math $state[2] + 1)
    test $here = $argv[2]; or test "$argv[3]" = more -a $here -gt $argv[2]
end

function __qormodel_paths
    set -l state (__qormodel_walk | string split0)
    set -l program (commandline -opc)[1]
    set -l token (commandline -ct | string replace -r '^--[^=]*=' '')
    set -l head (string match -r '^.*,' -- $token)
    set -l last (string replace -r '^.*,' '' -- $token)
    test -n "$state[3]"; or return
    for each in ($program complete-paths $state[3] "$last" 2>/dev/null)
        echo "$head$each"
    end
end

# The word at the cursor without its quotes, also where one is still open.
function __qormodel_token
    set -l token (commandline -ct)
    string unescape -- $token 2>/dev/null
    or string unescape -- "$token'" 2>/dev/null
    or string unescape -- "$token\"" 2>/dev/null
    or echo -- $token
end

function __qormodel_keys
    set -l state (__qormodel_walk | string split0)
    set -l program (commandline -opc)[1]
    test -n "$state[4]"; or return
    set -l token (__qormodel_token | string replace -r '^--[^=]*=' '')
    $program complete-keys $state[4] "$token" 2>/dev/null
end

function __qormodel_values
    set -l state (__qormodel_walk | string split0)
    set -l program (commandline -opc)[1]
    test -n "$state[4]"; or return
    $program complete-values $state[4] "$state[3]" (__qormodel_token) 2>/dev/null
end

complete -c qormodel -f
)sh";

}  // namespace qormodel
