#!/bin/bash
# Checks that all sources stand as clang-format sets them; changes nothing.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/../.."
mapfile -d '' files < <(find src tests bench sdk \( -name '*.cpp' -o -name '*.c' -o -name '*.h' \) -print0 2>/dev/null)
((${#files[@]} > 0)) || { echo "no sources found" >&2; exit 1; }
printf '%s\0' "${files[@]}" | xargs -0 -P "$(nproc)" -n 16 clang-format --dry-run -Werror
echo "${#files[@]} files are in format"
