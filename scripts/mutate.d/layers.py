"""The layers of the program, and whose tests test them."""

FOLDERS = {'platform': 'platform', 'fsutil': 'fsutil', 'format': 'list/format', 'engine': 'engine',
           'ui': 'ui', 'progress': 'progress', 'editing': 'list/editing', 'restore': 'restore',
           'app': 'app'}  # not console: its tests drive another process
# The tests of these files are those of another layer, which is the one that uses them.
TESTED_IN = {f'engine/{name}.cpp': 'restore' for name in ('CopyRestorer', 'CopyComment', 'RestoreName')}
# Layers whose tests run functions of this one, too.
FURTHER = {'platform': ['fsutil'], 'engine': ['restore'], 'editing': ['app'],
           'restore': ['app']}
WHOLE = {'app'}  # layers that the tests of the whole program test as well
