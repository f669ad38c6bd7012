#!/bin/bash
# Checks that all sources stand as clang-format sets them; changes nothing.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/../.."
if [[ -e .git ]] && command -v git >/dev/null && git -c safe.directory="$PWD" ls-files >/dev/null 2>&1; then
    list=(git -c safe.directory="$PWD" ls-files -z -- '*.cpp' '*.h')
else
    list=(find src tests bench sdk \( -name '*.cpp' -o -name '*.h' \) -print0)
fi
mapfile -d '' files < <("${list[@]}" 2>/dev/null)
# A tracked file may be gone from the folder, as in the middle of a change.
present=()
for file in "${files[@]}"; do
    [[ -f $file ]] && present+=("$file")
done
((${#present[@]} > 0)) || { echo "no sources found" >&2; exit 1; }
printf '%s\0' "${present[@]}" | xargs -0 -P "$(nproc)" -n 16 clang-format --dry-run -Werror
echo "${#present[@]} files are in format"
