#!/bin/bash
# Prints what the shell offers at the end of a line: complete.sh COMPLETION LINE. The line has no quotes.
# shellcheck disable=SC1091 # it is on the machine, not here
source /usr/share/bash-completion/bash_completion
# shellcheck source=packaging/completions/tavro-print
source "$1"

# The shell's words: blanks are between them, and = and : are words of their own.
COMP_LINE=$2
COMP_POINT=${#COMP_LINE}
COMP_TYPE=9
COMP_WORDS=()
rest=$COMP_LINE
while [[ $rest =~ ^\ *([=:]+|[^=:\ ]+)(.*)$ ]]; do
  COMP_WORDS+=("${BASH_REMATCH[1]}")
  rest=${BASH_REMATCH[2]}
done
[[ $COMP_LINE != *' ' ]] || COMP_WORDS+=('')
COMP_CWORD=$((${#COMP_WORDS[@]} - 1))

compopt() { :; } # it only works while somebody waits for the answer
[[ $(complete -p tavro-print) =~ ' -F '([^ ]+) ]]
"${BASH_REMATCH[1]}" "${COMP_WORDS[0]}" "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"
[ ${#COMPREPLY[@]} -eq 0 ] || printf '%s\n' "${COMPREPLY[@]}"
