"""What tests of the built zetlaser-job have in common. They are called with the paths of the program and of the sources as their
first two arguments."""

import ctypes
import json
import os
import pathlib
import shutil
import subprocess
import sys
import unittest

PROGRAM = pathlib.Path(sys.argv[1])
SOURCE = pathlib.Path(sys.argv[2])
PANEL = SOURCE / "examples" / "panel" / "panel.layup.json"
BLADE = SOURCE / "examples" / "blade" / "blade.layup.json"
# Of the part files, by type.
EXTENSIONS = {"virtek": "ply", "lap": "lpd", "assembly-guidance": "PRT", "aligned-vision": "PRT", "lpt": "XML", "faro": "XML",
              "sl": "sl", "general-scanning": "PRT", "quilmon": "CPD", "apt": "APT", "apt-2": "APT", "apt-sl": "APT",
              "dxf": "DXF"}


class ToolTest(unittest.TestCase):
    """Each test runs in a folder of its own below the current one."""

    tells_result_of_failure = False  #: whether a call that fails has something to say on standard output

    def setUp(self):
        self.folder = pathlib.Path.cwd() / self.id().split(".", 1)[1]
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir()

    def run_tool(self, *arguments, **more):
        return subprocess.run([str(PROGRAM), *map(str, arguments)], cwd=self.folder, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, timeout=60, check=False, **more)

    def write(self, name, content):
        """Writes bytes as they are, a text as UTF-8, and all else as JSON."""
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        if not isinstance(content, bytes):
            content = (content if isinstance(content, str) else json.dumps(content)).encode()
        path.write_bytes(content)
        return path

    def expect(self, result, code, *texts):
        """The exit code, and texts of the result or, where the code tells a failure, of the messages."""
        self.assertEqual(result.returncode, code, result.stderr + result.stdout)
        for text in texts:
            self.assertIn(text, result.stderr if code else result.stdout)
        if code:
            self.assertRegex(result.stderr, r"(?m)^error: .+\n\Z")
            if not self.tells_result_of_failure:
                self.assertEqual(result.stdout, "")

    def names(self):
        return sorted(path.name for path in self.folder.iterdir())

    def contents(self, folder="."):
        """The bytes of all files of a folder, by name."""
        return {path.name: path.read_bytes() for path in (self.folder / folder).iterdir() if path.is_file()}


def obey_permissions():
    """To be called in a child, ahead of its program: lets root obey the permissions of files, too. Root does as soon as a
    program starts without these capabilities."""
    if os.getuid() != 0:
        return
    drop_from_bounding_set, dac_override, dac_read_search = 24, 1, 2
    libc = ctypes.CDLL(None, use_errno=True)
    for capability in (dac_override, dac_read_search):
        if libc.prctl(drop_from_bounding_set, capability, 0, 0, 0) != 0:
            raise OSError(ctypes.get_errno(), "prctl")


def main(paths=2):
    """Runs the tests that the arguments behind the paths name, and tells why one is skipped."""
    unittest.main(argv=sys.argv[:1] + sys.argv[1 + paths:], verbosity=2)
