"""Builds what scripts/mutate needs of the project."""
import os
import subprocess

from layers import FURTHER, WHOLE
from whole import DRIVERS


def build(project, home, layers):
    """Builds the programs of these layers and makes the Wine prefix that all others are copies of."""
    drivers = list(DRIVERS) if WHOLE & set(layers) else []
    tests = {*layers, *(other for layer in layers for other in FURTHER.get(layer, []))}
    for target in ['Vaultwright', *drivers] + [f'{layer}_tests' for layer in sorted(tests)]:
        subprocess.run([project / 'scripts/build', 'release', target], check=True,
                       stdout=subprocess.DEVNULL)
    subprocess.run([project / 'scripts/build', 'host', 'pure_tests'], check=True,
                   stdout=subprocess.DEVNULL)
    clean = home / 'clean-prefix'
    if not clean.is_dir():
        environment = dict(os.environ, VW_PREFIX=str(clean))
        for argument in ('--prepare', '--end'):
            subprocess.run([project / 'scripts/wine', argument], env=environment, check=True)
