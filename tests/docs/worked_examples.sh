#!/usr/bin/env bash
# Runs the commands of a page (its indented lines) as a reader would paste them.
#
# Usage: worked_examples.sh PAGE.md FIRST_HEADING RESULT FOLDER_OF_TD
# Passes when RESULT (a path in the folder where it began) is there afterwards and no command failed
# but those of which the page says that they find something missing.
set -euo pipefail
page=$(realpath "$1") heading=$2 result=$3
export PATH="$4:$PATH"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
awk -v heading="$heading" '
    index($0, heading) == 1 { on = 1; next }
    on && /^## / && heading ~ /^## / { exit }
    on && /^    / { print substr($0, 5) }' "$page" |
    grep -v '^export PATH=' |
    sed 's/^td check [^ ]* --all$/& || test $? -eq 1/' >"$work/commands"
cd "$work"
bash -e commands
[ -s "$result" ]
