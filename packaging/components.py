#!/usr/bin/env python3
"""Describes what is linked into the programs, from the records of the machine that linked them.

    components.py notices                       prints the notices that the licences ask for
    components.py spdx VERSION SECONDS FILE...  prints an SPDX document of the release with these
                                                files, made at that time (seconds since 1970)
"""
import datetime
import hashlib
import json
import pathlib
import re
import subprocess
import sys

DOCUMENTS = pathlib.Path('/usr/share/doc')

# name, Debian package, licence, and the files of the package's copyright record that are linked.
COMPONENTS = (
    ('CLI11', 'libcli11-dev', 'BSD-3-Clause', ('*',)),
    ('JSON for Modern C++', 'nlohmann-json3-dev', 'MIT', ('*', 'include/')),
    ('MinGW-w64 runtime', 'mingw-w64-x86-64-dev', 'ZPL-2.1',
     ('*', 'mingw-w64-crt/gdtoa/', 'mingw-w64-libraries/winpthreads/')),
    ('GCC runtime libraries', 'gcc-mingw-w64-x86-64-posix-runtime',
     'GPL-3.0-or-later WITH GCC-exception-3.1', ()),
)

# The copyright record of the compiler is not written for machines.
GCC_NOTICE = '''Copyright the Free Software Foundation, Inc.
License: GPL, version 3 or later, with the GCC Runtime Library Exception, version 3.1, which
permits to convey programs that contain these libraries under terms of one's own choice.'''


def paragraphs(package):
    """The paragraphs of a copyright record, each a dictionary of its fields."""
    text = (DOCUMENTS / package / 'copyright').read_text(encoding='utf-8')
    for block in re.split(r'\n\s*\n', text):
        fields = re.findall(r'^([A-Za-z-]+):[ \t]*(.*(?:\n[ \t].*)*)', block, re.MULTILINE)
        if fields:
            yield dict(fields)


def plain(text):
    """A field's text without the indentation and the dots of its record."""
    lines = (re.sub(r'^ \.?$', '', line) for line in text.splitlines())
    return '\n'.join(line[1:] if line.startswith(' ') else line for line in lines)


def notice(package, linked):
    """The copyright lines and the licence texts of the files that are linked."""
    copyrights, names, texts = [], [], {}
    for paragraph in paragraphs(package):
        name, _, text = paragraph.get('License', '').partition('\n')
        if text:
            texts.setdefault(name, plain(text))
        files = paragraph.get('Files', '').split()
        if any(file == '*' if path == '*' else file.startswith(path) and '/tests' not in file
               for file in files for path in linked) and name != 'public-domain':
            copyrights += [line.strip() for line in paragraph['Copyright'].splitlines()]
            names.append(name)
    licences = [texts[name] for name in dict.fromkeys(names) if name in texts]
    if not copyrights or not licences:
        sys.exit(f'packaging/components.py: no copyright or licence found for {package}')
    return '\n'.join(f'Copyright {line}' for line in dict.fromkeys(copyrights)) + '\n\n' + \
        '\n\n'.join(licences)


def print_notices():
    print('The programs contain parts of the following works.')
    for name, package, _, linked in COMPONENTS:
        text = notice(package, linked) if linked else GCC_NOTICE
        print(f'\n{"-" * 70}\n{name}\n\n{text}')


def version_of(package):
    return subprocess.run(['dpkg-query', '-W', '-f', '${Version}', package],
                          check=True, capture_output=True, text=True).stdout


def checksum(path, algorithm):
    return {'algorithm': algorithm,
            'checksumValue': hashlib.new(algorithm.lower(), path.read_bytes()).hexdigest()}


def print_spdx(version, seconds, paths):
    created = datetime.datetime.fromtimestamp(int(seconds), datetime.timezone.utc)
    files = [{
        'SPDXID': f'SPDXRef-File-{index}',
        'fileName': f'./{path.name}',
        'checksums': [checksum(path, 'SHA1'), checksum(path, 'SHA256')],
        'licenseConcluded': 'NOASSERTION',
        'copyrightText': 'NOASSERTION',
    } for index, path in enumerate(paths)]
    packages = [{
        'SPDXID': 'SPDXRef-Vaultwright',
        'name': 'Vaultwright',
        'versionInfo': version,
        'supplier': 'Organization: Tallowmere.Net',
        'downloadLocation': 'NOASSERTION',
        'filesAnalyzed': False,
        'licenseConcluded': 'MIT',
        'licenseDeclared': 'MIT',
        'copyrightText': 'Copyright (c) 2026 the Vaultwright team',
    }]
    for index, (name, package, licence, _) in enumerate(COMPONENTS):
        packages.append({
            'SPDXID': f'SPDXRef-Component-{index}',
            'name': name,
            'versionInfo': version_of(package),
            'supplier': 'Organization: Debian',
            'downloadLocation': 'NOASSERTION',
            'filesAnalyzed': False,
            'licenseConcluded': 'NOASSERTION',
            'licenseDeclared': licence,
            'copyrightText': 'NOASSERTION',
            'externalRefs': [{
                'referenceCategory': 'PACKAGE-MANAGER',
                'referenceType': 'purl',
                'referenceLocator': f'pkg:deb/debian/{package}@{version_of(package)}',
            }],
        })
    relationships = [('SPDXRef-DOCUMENT', 'DESCRIBES', 'SPDXRef-Vaultwright')]
    relationships += [(file['SPDXID'], 'GENERATED_FROM', 'SPDXRef-Vaultwright') for file in files]
    relationships += [('SPDXRef-Vaultwright', 'STATIC_LINK', package['SPDXID'])
                      for package in packages[1:]]
    document = {
        'spdxVersion': 'SPDX-2.3',
        'dataLicense': 'CC0-1.0',
        'SPDXID': 'SPDXRef-DOCUMENT',
        'name': f'Vaultwright-{version}',
        'documentNamespace': f'https://spdx.org/spdxdocs/Vaultwright-{version}-'
                             + hashlib.sha256(''.join(
                                 file['checksums'][1]['checksumValue'] for file in files)
                                 .encode()).hexdigest()[:32],
        'creationInfo': {
            'created': created.strftime('%Y-%m-%dT%H:%M:%SZ'),
            'creators': ['Organization: Tallowmere.Net', 'Tool: packaging/components.py'],
        },
        'packages': packages,
        'files': files,
        'relationships': [
            {'spdxElementId': one, 'relationshipType': kind, 'relatedSpdxElement': other}
            for one, kind, other in relationships],
    }
    print(json.dumps(document, indent=2, ensure_ascii=False))


match sys.argv[1:]:
    case ['notices']:
        print_notices()
    case ['spdx', version, seconds, *paths] if paths:
        print_spdx(version, seconds, [pathlib.Path(path) for path in paths])
    case _:
        sys.exit(__doc__)
