#!/usr/bin/env bash
# Our C++ files are formatted as .clang-format says.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

mapfile -d '' files < <(find platform fsutil list engine ui progress restore app console tests tools \
    \( -name '*.h' -o -name '*.cpp' \) ! -name resource.h -print0 2>/dev/null)
if [[ ${#files[@]} -eq 0 ]]; then
    echo "no files found"
    exit 1
fi
clang-format --dry-run -Werror "${files[@]}"
echo "${#files[@]} files"
