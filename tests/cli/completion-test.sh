#!/usr/bin/env bash
# Asks bash, fish and zsh for completions of the built fenrow the way each
# shell does on Tab, with the scripts that are installed for them.
#   completion-test.sh FENROW COMPLETION_DIR
set -uo pipefail
fenrow=$1
scripts=$2

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export XDG_DATA_HOME=$work/data XDG_CONFIG_HOME=$work/config
mkdir -p "$work/bin" "$work/files"
ln -s "$fenrow" "$work/bin/fenrow"
export PATH=$work/bin:$PATH
touch "$work/files/notes.opml"
cd "$work/files"

failures=0
expect() { # NAME EXPECTED ACTUAL
    if [[ $2 != "$3" ]]; then
        printf 'FAIL %s\n  expected: %s\n  actual:   %s\n' "$1" "$2" "$3"
        failures=$((failures + 1))
    fi
}

# No store yet: nothing to offer, and asking must not create one.
expect "no store" ":words" "$(fenrow __complete done '')"
[[ -e $XDG_DATA_HOME/fenrow/default.store ]] && expect "no store created" "absent" "created"

fenrow flow add "Launch site" >/dev/null
fenrow flow add Home >/dev/null
fenrow add "Buy groceries" --flow Home >/dev/null
fenrow add "Call: Bob" --flow Home >/dev/null

# Whoever holds the store (the window, a command) does not hold up a Tab.
expect "store held" "$(printf ':words\nBuy groceries')" \
    "$(flock -n "$XDG_DATA_HOME/fenrow/default.store.lock" timeout 5 fenrow __complete done bu)"

# bash: COMP_LINE as typed, COMP_WORDS split at the word breaks as bash
# splits them.
bash_complete() { # LINE WORD…
    bash -c '
        source /usr/share/bash-completion/bash_completion
        source "$0/fenrow.bash"
        COMP_LINE=$1; COMP_POINT=${#1}; shift
        COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1))
        _fenrow
        printf "%s\n" "${COMPREPLY[@]}" | sort | paste -sd" "' "$scripts" "$@"
}
expect "bash commands" "flow flows" "$(bash_complete "fenrow fl" fenrow fl)"
expect "bash subcommand" "add delete move rename" "$(bash_complete "fenrow flow " fenrow flow "")"
expect "bash option" "--sort" "$(bash_complete "fenrow ready --so" fenrow ready --so)"
expect "bash option value" "dueDate" "$(bash_complete "fenrow ready --sort du" fenrow ready --sort du)"
expect "bash option=value" "dueDate" "$(bash_complete "fenrow ready --sort=du" fenrow ready --sort = du)"
expect "bash flow" 'Launch\ site' "$(bash_complete "fenrow archive la" fenrow archive la)"
expect "bash task" 'Buy\ groceries' "$(bash_complete "fenrow done Bu" fenrow done Bu)"
expect "bash task in quotes" 'Buy groceries' "$(bash_complete 'fenrow done "Bu' fenrow done '"Bu')"
expect "bash task after colon" '\ Bob' "$(bash_complete "fenrow done Call:" fenrow done Call :)"
expect "bash checklist action" "tick" "$(bash_complete "fenrow checklist Buy\\ groceries ti" fenrow checklist 'Buy\ groceries' ti)"
expect "bash file" "notes.opml" "$(bash_complete "fenrow import no" fenrow import no)"

fish_complete() { # LINE
    fish --no-config -c 'source $argv[1]/fenrow.fish; complete -C$argv[2]' "$scripts" "$1" | cut -f1 | sort | paste -sd" "
}
expect "fish commands" "flow flows" "$(fish_complete "fenrow fl")"
expect "fish subcommand" "markdown opml" "$(fish_complete "fenrow export ")"
expect "fish option value" "dueDate" "$(fish_complete "fenrow ready --sort du")"
expect "fish flow" "Launch site" "$(fish_complete "fenrow attach La")"
expect "fish task" "Buy groceries" "$(fish_complete "fenrow done Bu")"
expect "fish task typed escaped" "Buy groceries" "$(fish_complete 'fenrow edit Buy\ g')"
expect "fish file" "notes.opml" "$(fish_complete "fenrow attach Home no")"

# An attached file is named by its card, not by a path.
fenrow attach Home notes.opml >/dev/null
expect "attached file" "$(printf ':words\nnotes.opml')" "$(fenrow __complete file trash no)"

# zsh completes inside its line editor only: an interactive zsh on a pseudo
# terminal completes the line, and a widget writes the result to a file.
zsh -n "$scripts/_fenrow" || expect "zsh syntax" "ok" "errors"
zsh_complete() { # LINE
    rm -f "$work/zsh-line"
    zsh -f -c '
        zmodload zsh/zpty
        zpty z zsh -f -i
        zpty -w z "PS1=; fpath=($1 \$fpath); autoload -Uz compinit; compinit -u -D"
        zpty -w z "_t() { zle complete-word; print -r -- \"\$BUFFER\" >$2.part; mv $2.part $2; BUFFER=; }"
        zpty -w z "zle -N _t; bindkey ^T _t"
        zpty -w -n z "$3"$'\''\x14'\''
        for i in {1..200}; do
            [[ -f $2 ]] && break
            zpty -r -t z chunk
            sleep 0.05
        done
        zpty -d z' zsh-complete "$scripts" "$work/zsh-line" "$1"
    cat "$work/zsh-line" 2>/dev/null
}
expect "zsh subcommand" "fenrow template new " "$(zsh_complete "fenrow template n")"
expect "zsh option value" "fenrow edit Home --priority high " "$(zsh_complete "fenrow edit Home --priority hi")"
expect "zsh task" 'fenrow done Buy\ groceries ' "$(zsh_complete "fenrow done Bu")"

exit $((failures > 0))
