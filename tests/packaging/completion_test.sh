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
[ "$(completed kqx measure --channels ch1,ch)" = $'ch1,ch1\nch1,ch2' ] || complain "bash: kqx measure --channels ch1,ch"
[ "$(completed kqx fetch --serial /dev/nul)" = /dev/null ] || complain "bash: kqx fetch --serial DEVICE"

# What the other two shells make of the same lines, where they are installed. Each line has one continuation.
lines=('kqx me' 'kqx --v' 'kqx convert --to n' 'kqx table --to t' 'kqx fetch --serial 16' 'kqx fetch --serial /dev/nul'
    'kqx convert --no' 'kqx screen --thu' 'kqx measure --channels ch1,D' "kqx info $folder/six")
continued=(measure --version npz txt 16 /dev/null --no-clobber --thumbnail 'ch1,D' "$folder/six traces.bin")
if command -v zsh >/dev/null; then
    zsh -n "$completions/_kqx" || complain "zsh does not read its completion"
    # It quotes a blank, and puts a blank or, in a list, a comma behind what is complete.
    mapfile -t told < <(timeout 240 zsh -f "$(dirname "$0")/completion_zsh.zsh" "$completions" "${lines[@]}")
    for i in "${!lines[@]}"; do
        line=${told[i]//\\ / }
        line=${line% }
        [[ ${line%,} == *" ${continued[i]}" ]] || complain "zsh: \"${lines[i]}\" became \"${told[i]:-}\""
    done
fi
if command -v fish >/dev/null; then
    fish --no-execute "$completions/kqx.fish" || complain "fish does not read its completion"
    for i in "${!lines[@]}"; do
        answer=$(HOME=$folder timeout 240 fish --no-config -c "source '$completions/kqx.fish'; complete -C '${lines[i]}'" 2>&1)
        [ "${answer%%$'\t'*}" = "${continued[i]}" ] || complain "fish: \"${lines[i]}\" became \"$answer\""
    done
fi
exit "$failed"
