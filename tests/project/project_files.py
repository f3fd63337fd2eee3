"""The files of the project, and the way in which checks report and prove themselves."""

import argparse
import pathlib
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]


def project_files(root=ROOT):
    """Paths, relative to root, of all files that are tracked or would be; in a tree without git, of all files
    outside build folders and hidden folders."""
    if (root / ".git").exists() and shutil.which("git"):
        listed = subprocess.run(
            ["git", "-c", "safe.directory=*", "-C", str(root), "ls-files", "-z",
             "--cached", "--others", "--exclude-standard"],
            check=True, capture_output=True).stdout.decode().split("\0")
        names = [pathlib.PurePosixPath(name) for name in listed if name]
    else:
        names = [pathlib.PurePosixPath(path.relative_to(root).as_posix())
                 for path in root.rglob("*") if path.is_file()]
        names = [name for name in names if name.parts[0] != "build" and "__pycache__" not in name.parts]
    return sorted(name for name in names if (root / name).is_file())


def report(findings, checked, what):
    """Ends the check: fails with all findings, and also when there was nothing to check."""
    for finding in findings:
        print(finding)
    if checked == 0:
        sys.exit(f"nothing was checked: no {what} found")
    if findings:
        sys.exit(f"{len(findings)} findings in {checked} {what}")
    print(f"{checked} {what} checked, no findings")


def run(description, check, what, self_test, planted):
    """The program of a check: looks at the tree, or with --self-test at faults that it plants itself."""
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument("--self-test", action="store_true", help=f"prove that {planted} are found")
    if parser.parse_args().self_test:
        report(*self_test(), planted)
    else:
        report(*check(ROOT), what)
