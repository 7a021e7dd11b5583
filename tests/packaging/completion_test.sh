#!/bin/bash
# SPDX-License-Identifier: MIT
# The completions of the three shells contain every command of kqx and every option in its help, and those of bash give the
# expected results. Arguments: the folder of the completions, the program kqx.
set -eu
completions=$1
kqx=$2
failed=0
complain() {
    echo "$*"
    failed=1
}

commands=$("$kqx" --help | sed -n 's/^  \([a-z]*\)  .*/\1/p')
[ "$(wc -w <<<"$commands")" -ge 8 ] || complain "kqx --help names these commands only: $commands"

# Prints what bash completes for the words of a line. The last word is incomplete.
# shellcheck source=/dev/null
source "$completions/kqx.bash"
completed() {
    COMP_WORDS=("$@")
    COMP_CWORD=$(($# - 1))
    COMPREPLY=()
    _kqx 2>/dev/null
    printf '%s\n' "${COMPREPLY[@]}"
}

for command in $commands; do
    completed kqx "$command" | grep -qx -- "$command" || complain "bash does not know the command $command"
    grep -q "^ *$command) _arguments" "$completions/_kqx" || complain "zsh does not know the command $command"
    grep -q "use_subcommand -a $command " "$completions/kqx.fish" || complain "fish does not know the command $command"
    options=$("$kqx" "$command" --help | grep -oE '^ +(-[a-z], )?--[a-z-]+' | grep -oE -- '--[a-z-]+')
    [ -n "$options" ] || complain "kqx $command --help names no option"
    zsh=$(sed -n "/^ *$command) _arguments/,/;;/p; /^    list=/,/^    write=/p" "$completions/_kqx")
    for option in $options; do
        [ "$option" != --help-all ] || continue
        completed kqx "$command" "$option" | grep -qx -- "$option" || complain "bash: kqx $command $option"
        [ "$option" = --help ] || grep -q -- "-l ${option#--} " "$completions/kqx.fish" ||
            complain "fish: kqx $command $option"
        grep -q -- "$option\\b" <<<"$zsh" || complain "zsh: kqx $command $option"
    done
done

[ "$(completed kqx convert --to n)" = npz ] || complain "bash: kqx convert --to n"
[ "$(completed kqx table --to t)" = txt ] || complain "bash: kqx table --to t"
[ "$(completed kqx fetch --serial 16)" = 16 ] || complain "bash: kqx fetch --serial 16"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
touch "$folder/six traces.bin"
[ "$(completed kqx info "$folder/six")" = "$folder/six traces.bin" ] || complain "bash: kqx info FILE"
if command -v zsh >/dev/null; then
    zsh -n "$completions/_kqx" || complain "zsh does not read its completion"
fi
if command -v fish >/dev/null; then
    fish --no-execute "$completions/kqx.fish" || complain "fish does not read its completion"
fi
exit "$failed"
