#!/usr/bin/env bash
# What users download, tried as they use it: the same sources give the same bytes; the installer
# installs, upgrades and removes the program under Wine and leaves lists and copies alone; the
# portable folder works where it is unpacked; a certificate signs both.
#
# VW_BUILD=FOLDER   the build folder (default build/release)
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

build=$(readlink -f "${VW_BUILD:-build/release}")
readonly build folder=$build/package_check
export VW_PREFIX=$build/prefix/package
readonly drive=$VW_PREFIX/drive_c
readonly settings='HKCU\Software\Tallowmere.Net\Vaultwright'
readonly uninstall='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall'
step=

fail() {
    echo "package: $step: $1" >&2
    exit 1
}

windowsPath() { printf 'Z:%s' "${1//\//\\}"; }

# package OUT [OPTION...]
package() {
    scripts/package --out "$folder/$1" "${@:2}" >"$folder/log" 2>&1 ||
        { cat "$folder/log" >&2; fail "scripts/package --out $*"; }
}

# What a folder holds: the names and the bytes of its files.
filesOf() { (cd "$1" && find . -type f -exec sha256sum {} + | sort -k2); }

# same NAME FILE FILE: two texts that have to be the same.
same() { diff "$2" "$3" >&2 || fail "$1 differ"; }

checkFiles() {
    step='same bytes'
    package first --url 'https://downloads.example/vaultwright/'
    # Another moment, other modes and dates of the sources: nothing of it may get into the files.
    find packaging Help -exec touch {} +
    (umask 077 && package again --url 'https://downloads.example/vaultwright')
    filesOf "$folder/first" >"$folder/a"
    filesOf "$folder/again" >"$folder/b"
    same 'the files of two runs' "$folder/a" "$folder/b"
    (cd "$folder/first" && sha256sum --quiet -c SHA256SUMS) || fail 'SHA256SUMS'

    step='manifests'
    local hash text
    hash=$(sha256sum <"$folder/first/$installer" | cut -d' ' -f1 | tr a-f A-F)
    grep -q "InstallerSha256: $hash" "$folder"/first/winget/*.installer.yaml || fail 'the checksum'
    grep -q "InstallerUrl: https://downloads.example/vaultwright/$installer$" \
        "$folder"/first/winget/*.installer.yaml || fail 'the address'
    ! grep -n '@' "$folder"/first/winget/* "$folder"/first/scoop/* ||
        fail 'something is not filled in'
    yamllint --strict "$folder"/first/winget || fail 'winget'
    python3 - "$folder/first" "$version" <<'PYTHON' || fail 'scoop or SPDX'
import hashlib, json, pathlib, sys
folder, version = pathlib.Path(sys.argv[1]), sys.argv[2]
portable = folder / f'Vaultwright-{version}-portable.zip'
digest = hashlib.sha256(portable.read_bytes()).hexdigest()
package = json.loads((folder / 'scoop/vaultwright.json').read_text())['architecture']['64bit']
assert package['hash'] == digest, package
assert package['url'] == f'https://downloads.example/vaultwright/{portable.name}', package
document = json.loads((folder / f'Vaultwright-{version}.spdx.json').read_text())
known = {'SPDXRef-DOCUMENT'} | {part['SPDXID'] for kind in ('packages', 'files')
                                for part in document[kind]}
for relation in document['relationships']:
    assert {relation['spdxElementId'], relation['relatedSpdxElement']} <= known, relation
digests = {file['fileName']: file['checksums'][1]['checksumValue'] for file in document['files']}
assert digests[f'./{portable.name}'] == digest, digests
PYTHON

    step='licences'
    unzip -p "$folder/first/Vaultwright-$version-portable.zip" Vaultwright/LICENSE.txt \
        >"$folder/a"
    for text in 'Vaultwright team' CLI11 'Niels Lohmann' 'mingw-w64 project' 'GCC Runtime Library'; do
        grep -q "$text" "$folder/a" || fail "LICENSE.txt does not name: $text"
    done

    step='languages'
    local table
    for table in Property LaunchCondition Shortcut; do
        LC_ALL=C.UTF-8 msiinfo export "$folder/first/$installer" "$table"
    done >"$folder/a"
    for text in 'بالعربية والإنجليزية' 'إصدار أحدث' 'احتياطياً واستعادتها'; do
        grep -q "$text" "$folder/a" || fail "the installer does not say: $text"
    done
    msiinfo suminfo "$folder/first/$installer" >"$folder/a"
    grep -qx 'Template: x64;0' "$folder/a" || fail 'the package is not language-neutral'

    step='version'
    grep -q "^## ${version%.*.*}" CHANGELOG.md || fail 'CHANGELOG.md does not know it'
}

checkSigning() {
    step='signing'
    openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj '/CN=Vaultwright test' \
        -addext extendedKeyUsage=codeSigning -keyout "$folder/key" -out "$folder/certificate" \
        2>"$folder/log" || fail "openssl: $(cat "$folder/log")"
    echo secret >"$folder/password"
    openssl pkcs12 -export -inkey "$folder/key" -in "$folder/certificate" \
        -passout "file:$folder/password" -out "$folder/signer.pfx"
    SIGN_PASSWORD_FILE=$folder/password package signed --sign "$folder/signer.pfx"
    unzip -q "$folder/signed/Vaultwright-$version-portable.zip" -d "$folder/signed"
    local file
    for file in "$folder/signed/$installer" "$folder/signed/Vaultwright/Vaultwright.exe" \
        "$folder/signed/Vaultwright/vw.exe"; do
        osslsigncode verify -CAfile "$folder/certificate" -in "$file" >"$folder/log" 2>&1 ||
            { cat "$folder/log" >&2; fail "${file##*/} has no good signature"; }
    done
    ! scripts/package --sign "$folder/nowhere.pfx" >/dev/null 2>&1 || fail 'no certificate, no error'
}

# state NAME: what disk and registry hold, in NAME.files and NAME.registry. What the system's
# installer keeps for itself is left out, and of a shortcut the bytes: they hold the time.
state() {
    local key
    filesOf "$drive" | grep -v -i -e '/installer/' -e '/temp/' -e desktop-ready |
        sed 's|^.* \(.*\.lnk\)$|shortcut \1|' >"$folder/$1.files"
    for key in 'HKCU\Environment' 'HKCU\Software\Classes' 'HKCU\Software\Tallowmere.Net' "$uninstall" \
        'HKLM\Software\Microsoft\Windows\CurrentVersion\Run'; do
        scripts/wine reg query "$key" /s 2>/dev/null || true
    done | tr -d '\r' | sed '/^$/d' >"$folder/$1.registry"
}

# install FOLDER, remove: without questions, as an administrator's script would.
install() { scripts/wine msiexec /i "$(windowsPath "$folder/$1")" /qn; }

valueOf() {
    scripts/wine reg query "$1" "${@:2}" | tr -d '\r' | sed -n 's/^.*REG_[A-Z_]*    //p' | head -n 1
}

# The number of a text in the program.
resourceId() { sed -n "s/^#define $1 //p" ui/resource.h; }

# run COMMAND LINE as the registry has it, with a list in the place of %1.
runVerb() {
    local command=$1 program
    command=${command//%1/$2}
    program=${command#\"}
    program=${program%%\"*}
    command=${command#*\" }
    eval "set -- ${command//\\/\\\\}"
    scripts/wine "$program" "$@" >"$folder/log" 2>&1
}

inTime() {
    local try
    for ((try = 0; try < 300; try++)); do
        ! "$@" || return 0
        sleep 0.1
    done
    return 1
}
# Whether the installed program runs in our prefix.
windowRuns() {
    local process
    for process in $(pgrep -f 'Programs\\Vaultwright\\Vaultwright\.exe'); do
        ! grep -sqzxF "WINEPREFIX=$VW_PREFIX" "/proc/$process/environ" || return 0
    done
    return 1
}
# While it loads, the window takes no command: it is asked again.
windowCloses() {
    scripts/wine taskkill /im Vaultwright.exe >/dev/null 2>&1 || true
    sleep 0.2
    ! windowRuns
}

# The user's files: a list with blanks in its path, what it names, and a destination.
makeUserFiles() {
    mkdir -p "$drive/My lists/Work" "$drive/Store"
    echo 'a letter' >"$drive/My lists/Work/Letter.txt"
    printf 'BackupTo: C:\\Store\r\nC:\\My lists\\Work\\\r\n' >"$drive/My lists/My work.vwl"
    scripts/wine reg add "$settings" /v Arabic /d 0 /f >/dev/null
}

checkInstalling() {
    local programs windowsPrograms key
    step='installing'
    scripts/wine --prepare
    programs=$drive/users/$(id -un)/AppData/Local/Programs/Vaultwright
    windowsPrograms=${programs#"$drive"}
    windowsPrograms=${windowsPrograms//\//\\}
    makeUserFiles
    state before
    install "first/$installer" || fail "msiexec ended with $?"
    unzip -q "$folder/first/Vaultwright-$version-portable.zip" -d "$folder/portable"
    filesOf "$folder/portable/Vaultwright" | grep -v ' ./README.txt$' >"$folder/a"
    filesOf "$programs" >"$folder/b"
    same 'the installed files and the portable ones' "$folder/a" "$folder/b"

    step='start menu'
    local shortcut target
    shortcut=$(find "$drive/users" -name Vaultwright.lnk)
    [[ $shortcut == */Start\ Menu/Programs/Vaultwright.lnk ]] || fail "the shortcut: $shortcut"
    target=$(x86_64-w64-mingw32-strings "$shortcut" | grep -x 'C:\\.*\.exe')
    [[ ${target,,} == "c:${windowsPrograms,,}\\vaultwright.exe" ]] || fail "its target: $target"
    scripts/wine start "C:${shortcut#"$drive"}" >/dev/null 2>&1
    inTime windowRuns || fail 'the program did not start'
    inTime windowCloses || fail 'the program did not close'

    step='list type'
    [[ $(valueOf 'HKCU\Software\Classes\.vwl' /ve) == VaultwrightFilesList ]] || fail 'the extension'
    key='HKCU\Software\Classes\VaultwrightFilesList'
    [[ $(valueOf "$key\\DefaultIcon" /ve) == "${target%\\*}\\vwl.ico" ]] || fail 'the icon'
    [[ $(valueOf "$key\\shell\\Open\\Command" /ve) == "\"$target\" \"%1\"" ]] || fail 'open'
    [[ $(valueOf "$key" /v FriendlyTypeName) == "@$target,-$(resourceId IDS_ListType)" ]] ||
        fail 'its name in the language of Windows'
    [[ $(valueOf "$key\\shell\\Backup" /v MUIVerb) == "@$target,-$(resourceId IDS_BackUpNow)" ]] ||
        fail 'the name of its verb in the language of Windows'
    runVerb "$(valueOf "$key\\shell\\Backup\\Command" /ve)" 'C:\My lists\My work.vwl' ||
        fail "backing up ended with $?: $(cat "$folder/log")"
    [[ $(cat "$drive/Store/Work«0001»/Letter.txt") == 'a letter' ]] || fail 'no copy was made'

    step='console program'
    scripts/wine reg query 'HKCU\Environment' /v PATH >"$folder/log" 2>&1 || fail 'no path was set'
    grep -qiF "${target%\\*}" "$folder/log" || fail "the path: $(cat "$folder/log")"
    [[ $(scripts/wine cmd /c 'vw --version' | tr -d '\r') == "vw $version" ]] ||
        fail 'vw is not found by its name'
    scripts/wine cmd /c vw check 'C:\My lists\My work.vwl' >"$folder/log" 2>&1 ||
        fail "checking ended with $?: $(cat "$folder/log")"

    step='upgrading'
    # What users do with the files beside the program has to survive.
    printf 'BackupTo: C:\\Store\r\nC:\\My lists\\Work\\\r\n' >"$programs/FilesList.vwl"
    printf 'BackupTo: C:\\Store\r\n' >"$programs/Sample.vwl"
    state installed
    package next --program-version "${version%.*}.$((${version##*.} + 1))"
    install "next/Vaultwright-${version%.*}.$((${version##*.} + 1))-x64.msi" ||
        fail "msiexec ended with $?"
    state upgraded
    same 'the files before and after' "$folder/installed.files" "$folder/upgraded.files"
    [[ $(grep -c 'DisplayName .*Vaultwright' "$folder/upgraded.registry") -eq 1 ]] ||
        fail 'two versions are installed'
    grep -q "DisplayVersion .*$((${version##*.} + 1))$" "$folder/upgraded.registry" || fail 'version'

    step='going back to an older version'
    ! install "first/$installer" || fail 'was not refused'
    state refused
    same 'the registry before and after' "$folder/upgraded.registry" "$folder/refused.registry"
    same 'the files before and after' "$folder/upgraded.files" "$folder/refused.files"

    step='removing'
    key=$(sed -n 's/^.*Uninstall\\\({.*}\)$/\1/p' "$folder/upgraded.registry")
    scripts/wine msiexec /x "$key" /qn || fail "msiexec ended with $?"
    state removed
    same 'the registry before and after' "$folder/before.registry" "$folder/removed.registry"
    {
        cat "$folder/before.files"
        grep -e ' ./Store/' -e '/FilesList.vwl$' -e '/Sample.vwl$' "$folder/upgraded.files"
    } | sort -k2 -u >"$folder/a"
    sort -k2 "$folder/removed.files" >"$folder/b"
    same 'the files before and after, but for lists and copies,' "$folder/a" "$folder/b"

    step='portable'
    rm -rf "$drive/Store/"*
    cp -r "$folder/portable/Vaultwright" "$drive/Stick"
    scripts/wine 'C:\Stick\Vaultwright.exe' /B 'C:\My lists\My work.vwl' >"$folder/log" 2>&1 ||
        fail "backing up ended with $?: $(cat "$folder/log")"
    [[ -f "$drive/Store/Work«0001»/Letter.txt" ]] || fail 'no copy was made'
    scripts/wine 'C:\Stick\vw.exe' backup 'C:\My lists\My work.vwl' >"$folder/log" 2>&1 ||
        fail "vw backup ended with $?: $(cat "$folder/log")"
    grep -q '^unchanged: C:' "$folder/log" || fail "vw backup: $(cat "$folder/log")"
}

version=$(sed -n 's/^project(Vaultwright VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
readonly version installer=Vaultwright-$version-x64.msi
rm -rf "$folder" "$VW_PREFIX"
mkdir -p "$folder"
trap 'scripts/wine --end' EXIT
checkFiles
checkSigning
checkInstalling
rm -rf "$folder"
