#!/usr/bin/env bash
# On an Arabic system (code page 1256) once more: the tests of the registry, of languages, of the
# settings and all whose name says CodePage, in a Wine prefix of its own.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

readonly build=${VW_BUILD:-build/release}
readonly filter='*CodePage*:*Registry*:Language*:Settings*:ListFileType*:ShellFileTypes*'
export VW_PREFIX=$build/prefix/arabic_locale
export VW_LOCALE=ar_EG.UTF-8
export VW_CODE_PAGE=1256

programs=("$build"/tests/*_tests.exe)
if [[ ! -f $build/tests/platform_tests.exe ]]; then
    echo "$build/tests/platform_tests.exe is not built"
    exit 1
fi

trap 'scripts/wine --end' EXIT
failed=0
for program in "${programs[@]}"; do
    echo "${program##*/}"
    scripts/wine "$program" --gtest_brief=1 --gtest_filter="$filter" || failed=1
done
exit "$failed"
