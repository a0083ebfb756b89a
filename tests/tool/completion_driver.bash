# Completes one command line as bash does: completion_driver.bash SCRIPT PROGRAM WORD..., the last word being
# the one that the cursor is in. Prints what may stand there, a line each, sorted.
set -u
source "$1"
shift
COMP_WORDS=("$@")
COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
COMPREPLY=()
set +u
_k5ax
[ ${#COMPREPLY[@]} -eq 0 ] || printf '%s\n' "${COMPREPLY[@]}" | LC_ALL=C sort
