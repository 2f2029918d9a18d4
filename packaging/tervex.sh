#!/bin/sh
# Starts the simulator on the model that tervex.ctl in the current folder names: tervex from the
# folder of this script or the current one, otherwise minitervex, which comes with Tervex Desk.
folder=$(CDPATH='' cd -- "$(dirname -- "$0")" && pwd -P) || exit 127

for program in "$folder/tervex" ./tervex "$folder/minitervex" "$folder/../../bin/minitervex"; do
    if [ -f "$program" ] && [ -x "$program" ]; then
        exec "$program"
    fi
done
if command -v minitervex >/dev/null; then
    exec minitervex
fi
echo "tervex.sh: there is neither tervex in $folder nor minitervex on the PATH" >&2
exit 127
