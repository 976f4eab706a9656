#!/usr/bin/env bash
# The least version of Windows, named in CMakeLists.txt, is the one that the README, the manifests of
# the package manager and the programs themselves state, and no older Windows is said to be enough.
#
# VW_BUILD=FOLDER   the build folder (default build/release)
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

build=${VW_BUILD:-build/release}
least=$(sed -n 's/^set(VW_LEAST_WINDOWS \([0-9.]*\))$/\1/p' CMakeLists.txt)
readonly build least
offences=0

tell() {
    echo "least_windows: $1" >&2
    offences=$((offences + 1))
}

[[ $least =~ ^10\.0\.[0-9]+$ ]] || tell "CMakeLists.txt names no version: '$least'"
grep -qF "$least, or later" README.md || tell "the README does not say $least"
grep -qxF 'MinimumOSVersion: @LEAST_WINDOWS@.0' packaging/winget/*.installer.yaml ||
    tell 'the manifest of the package manager has another version'
# Windows 10 and 11 have one number in a manifest, those before it have others.
systems=$(grep -c '<supportedOS ' ui/Vaultwright.manifest.in)
grep -q 'supportedOS Id="{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}"' ui/Vaultwright.manifest.in ||
    tell 'the manifest does not name Windows 10'
[[ $systems -eq 1 ]] || tell "the manifest names $systems systems"

for program in "$build"/bin/*.exe; do
    header=$(x86_64-w64-mingw32-objdump -p "$program")
    [[ $header =~ MajorSubsystemVersion[[:space:]]+([0-9]+) ]] && major=${BASH_REMATCH[1]}
    [[ $header =~ MinorSubsystemVersion[[:space:]]+([0-9]+) ]] && minor=${BASH_REMATCH[1]}
    [[ $major.$minor == "${least%.*}" ]] || tell "${program##*/} asks for $major.$minor"
done
exit $((offences > 0))
