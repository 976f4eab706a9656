#!/usr/bin/env bash
# A layer may include only itself and the layers to its left, and never the tests.
# app/main.cpp alone has wWinMain.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

layers=(platform fsutil list/format engine ui progress list/editing restore app console)
offences=0

tell() {
    echo "$1"
    offences=$((offences + 1))
}

declare -A position
for i in "${!layers[@]}"; do
    position[${layers[i]}]=$i
done

# roomOf PATH: the layer of a file named from the project's root, or nothing.
roomOf() {
    local layer
    for layer in "${layers[@]}"; do
        [[ $1 != "$layer"/* ]] || echo "$layer"
    done
}

files=0
for layer in "${layers[@]}"; do
    [[ -d $layer ]] || continue
    while IFS=: read -r file line text; do
        target=${text#*\"}
        target=${target%%\"*}
        targetRoom=$(roomOf "$target")
        if [[ $target == tests/* ]]; then
            tell "$file:$line: a layer includes a test file: $target"
        elif [[ -z $targetRoom ]]; then
            tell "$file:$line: include files from the project's root, by their layer: $target"
        elif [[ $layer == console && $targetRoom == app ]]; then
            tell "$file:$line: the two programs stand side by side: $target"
        elif [[ ${position[$targetRoom]} -gt ${position[$layer]} ]]; then
            tell "$file:$line: $layer may not include $targetRoom: $target"
        elif [[ ! -f $target ]]; then
            tell "$file:$line: no such file: $target"
        fi
    done < <(grep -rHnE --include='*.h' --include='*.cpp' '^[[:space:]]*#[[:space:]]*include[[:space:]]*"' "$layer" || true)
    files=$((files + $(find "$layer" -name '*.h' -o -name '*.cpp' | wc -l)))
done

while IFS= read -r file; do
    [[ $file == app/main.cpp ]] || tell "$file: only app/main.cpp knows wWinMain"
done < <(grep -rlE --include='*.h' --include='*.cpp' 'wWinMain[[:space:]]*\(' "${layers[@]%%/*}" 2>/dev/null | sort -u)

echo "$files files, $offences offences"
[[ $offences -eq 0 && $files -gt 0 ]]
