# bash completion for fenrow                               -*- shell-script -*-
# fenrow itself knows its commands, options and the names in its data, so
# this only passes the words over and quotes what comes back.

# The word as the program will receive it: without the quotes or
# backslashes typed so far.
_fenrow_unquote()
{
    local word=$1 plain= i char
    case $word in
        \'*) printf '%s' "${word:1}" | sed "s/'\$//"; return ;;
        \"*) word=${word:1} ;;
    esac
    for ((i = 0; i < ${#word}; i++)); do
        char=${word:i:1}
        if [[ $char == \\ ]]; then
            ((i++))
            char=${word:i:1}
        fi
        plain+=$char
    done
    printf '%s' "${plain%\"}"
}

_fenrow()
{
    local cur words cword
    # Keeps "--sort=due" and "Call: Bob" whole, as the program reads them.
    if declare -F _get_comp_words_by_ref >/dev/null; then
        _get_comp_words_by_ref -n =: -w words -i cword -c cur
    else
        words=("${COMP_WORDS[@]}")
        cword=$COMP_CWORD
        cur=${COMP_WORDS[COMP_CWORD]}
    fi

    local program=fenrow i
    [[ ${words[0]} == */* ]] && program=$(_fenrow_unquote "${words[0]}")
    local -a before=()
    for ((i = 1; i < cword; i++)); do
        before+=("$(_fenrow_unquote "${words[i]}")")
    done
    local plain
    plain=$(_fenrow_unquote "$cur")

    local -a answer
    mapfile -t answer < <("$program" __complete "${before[@]}" "$plain" 2>/dev/null)
    ((${#answer[@]})) || return 0

    local quoted=
    [[ $cur == [\"\']* ]] && quoted=1
    # Outside quotes the shell replaces only what follows the last "=" or
    # ":" of the word.
    local trim=
    [[ ! $quoted && $plain == *[=:]* ]] && trim=${plain%"${plain##*[=:]}"}

    COMPREPLY=()
    local candidate
    if [[ ${answer[0]} == :files ]]; then
        # Bash quotes file names and the words beside them itself.
        compopt -o filenames 2>/dev/null
        for candidate in "${answer[@]:1}"; do
            COMPREPLY+=("${candidate#"$trim"}")
        done
        local IFS=$'\n'
        COMPREPLY+=($(compgen -f -- "$plain"))
        return 0
    fi
    for candidate in "${answer[@]:1}"; do
        candidate=${candidate#"$trim"}
        if [[ $quoted ]]; then
            COMPREPLY+=("$candidate")
        else
            COMPREPLY+=("$(printf '%q' "$candidate")")
        fi
    done
}
complete -F _fenrow fenrow
