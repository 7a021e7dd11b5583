#!/usr/bin/env zsh
# SPDX-License-Identifier: MIT
# What zsh makes of a line when Tab is pressed at its end, in an interactive shell on a terminal. Arguments: the folder of
# the completions, then the lines. Prints each line as it stands after Tab.
zmodload zsh/zpty || exit 1
completions=$1
shift
zpty shell zsh -f -i
zpty -w shell "PROMPT= RPROMPT= COLUMNS=200; unsetopt ZLE_BRACKETED_PASTE 2>/dev/null; fpath=(${(q)completions} \$fpath)"
zpty -w shell 'autoload -Uz compinit; compinit -u -D; unset zle_bracketed_paste; setopt NO_BEEP NO_AUTO_LIST'
zpty -w shell 'tell() { zle -I; print -r -- "LINE<$BUFFER>END"; BUFFER= }; zle -N tell; bindkey "^I" complete-word; bindkey "^G" tell'
zpty -w shell 'print READ''Y'
zpty -r shell said '*READY*' || exit 1
for line in "$@"; do
    zpty -w -n shell "$line"$'\t\a'
    zpty -r shell said '*LINE<*>END*' || exit 1
    print -r -- "${${said##*LINE<}%%>END*}"
done
zpty -d shell
