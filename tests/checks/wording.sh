#!/usr/bin/env bash
# What the project's files may not contain: paths of one machine, tabs, CR line ends, blanks at the
# end of a line, and source files too long to be read at one sitting.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

readonly longest=400
# Pure tables may be longer.
readonly tables='^(ui/resource\.h|ui/.*(Table|Texts)[A-Za-z]*\.(h|cpp))$'
offences=0

report() {
    echo "$1"
    offences=$((offences + 1))
}

# The files under version control and the new ones, without those of the disk that were deleted.
mapfile -d '' all < <(git ls-files -z --cached --others --exclude-standard)
files=()
for file in "${all[@]}"; do
    [[ -f $file ]] && grep -qI '' "$file" && files+=("$file")
done
if [[ ${#files[@]} -eq 0 ]]; then
    echo "no files found"
    exit 1
fi

# forbid WHAT PATTERN: reports every line that matches.
forbid() {
    local place
    while IFS= read -r place; do
        report "$1: $place"
    done < <(grep -nHP -- "$2" "${files[@]}" | cut -c1-160 || true)
}

forbid 'path of one machine' '(?<![\w.])/(work|home|root|tmp/[a-z]+)/\w'
forbid 'tab' '\t'
forbid 'CR' '\r'
forbid 'blank at the end of the line' ' +$'

for file in "${files[@]}"; do
    [[ $file == *.@(h|cpp|sh) || $file == scripts/* ]] || continue
    [[ ! $file =~ $tables ]] || continue
    lines=$(wc -l <"$file")
    [[ $lines -le $longest ]] || report "$file: $lines lines, at most $longest"
done

echo "${#files[@]} files, $offences offences"
[[ $offences -eq 0 ]]
