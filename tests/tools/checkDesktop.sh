#!/bin/bash
# Installs a build into a folder of its own and asks the desktop's own tools what it makes of a result file.
# Usage: checkDesktop.sh BUILD_FOLDER
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
build=${1:?"usage: checkDesktop.sh BUILD_FOLDER"}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export XDG_DATA_HOME=$folder/home XDG_CONFIG_HOME=$folder/home XDG_DATA_DIRS=$folder/usr/share:/usr/share
export PATH=$folder/usr/bin:$PATH # a program that is not found opens nothing

failures=0
expect() { # NAME EXPECTED FOUND
    if [[ $3 != *"$2"* ]]; then
        echo "$1: expected \"$2\", found \"$3\"" >&2
        failures=$((failures + 1))
    fi
}
contentType() {
    gio info -a standard::content-type "$1" | sed -n 's/.*standard::content-type: //p'
}

cmake --install "$build" --prefix "$folder/usr" >/dev/null
desktop-file-validate "$folder/usr/share/applications/velorin.desktop"

type=application/x-velorin-result
cp "$root/demo/plate.vrf" "$folder/plate.vrf"
cp "$root/demo/plate.vrf" "$folder/results of today"
head -c 5 "$root/demo/plate.vrf" >"$folder/magic alone"
head -c 4 "$root/demo/plate.vrf" >"$folder/magic cut short"
for name in plate.vrf "results of today" "magic alone"; do
    expect "$name" "$type" "$(contentType "$folder/$name")"
done
expect "four bytes are not enough" text/plain "$(contentType "$folder/magic cut short")"
expect "opened by" velorin.desktop "$(gio mime "$type")"
version=$(sed -n 's/^project(Velorin VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt")
expect "program" "$version" "$(velorin-batch --version)"
[[ -x $folder/usr/bin/velorin && -s $folder/usr/share/icons/hicolor/scalable/apps/velorin.svg &&
    -s $folder/usr/share/velorin/help/ja/index.html ]] ||
    { echo "program, icon or manual not installed" >&2; failures=$((failures + 1)); }
exit $((failures > 0))
