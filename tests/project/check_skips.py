#!/usr/bin/env python3
"""Fails unless ctest tells a program whose tests are skipped in part as skipped, and one in which a test fails as failed,
whatever else it skips: check_skips.py CMAKE CTEST PROGRAM, PROGRAM being the built SkippingTest."""

import pathlib
import re
import subprocess
import sys

PROJECT = pathlib.Path(__file__).resolve().parent / "skips"
EXPECTED = {"passes": "Passed", "skips": "***Skipped", "fails": "***Failed", "passesThenskips": "***Skipped",
            "skipsThenfails": "***Failed", "failsThenskips": "***Failed"}


def run_tests(cmake, ctest, program):
    """What ctest says of each test, by name."""
    subprocess.run([cmake, "-S", PROJECT, "-B", "build", f"-DQT_PROGRAM={program}", f"-DPYTHON={sys.executable}"], check=True)
    output = subprocess.run([ctest, "--test-dir", "build"], capture_output=True, text=True, check=False).stdout
    print(output)
    return dict(re.findall(r"Test +#\d+: (\S+) \.+ *([*\w]+)", output))


def main():
    expected = {f"{kind}.{name}": status for kind in ("Qt", "Python") for name, status in EXPECTED.items()}
    found = run_tests(*sys.argv[1:])
    if found != expected:
        sys.exit(f"expected {expected}\nfound {found}")


if __name__ == "__main__":
    main()
