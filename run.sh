#!/usr/bin/env bash
# Builds Quilmo and starts it; installs first what the system lacks.
# Without a display it plays the guided tour instead and tells where the pictures are.
set -euo pipefail
exec </dev/null
cd "$(dirname "$(readlink -f "$0")")"

scripts/install-packages.sh build run
scripts/build.sh release

build=$PWD/build/release
samples=60
# Samples of an earlier start stay as the person left them; the folder gone, they come back fresh.
[[ -d $build/sample-music ]] && samples=0
folder=$("$build/samples/quilmo-samples" "$build/sample-music" --files "$samples")
echo "Sample music to try things on: $folder"

if [[ -n ${DISPLAY:-} || -n ${WAYLAND_DISPLAY:-} ]]; then
    exec "$build/src/quilmo"
fi

echo "There is no display here: playing the guided tour instead."
QT_QPA_PLATFORM=offscreen exec "$build/tour/quilmo-tour" "$build/tour/pictures"
