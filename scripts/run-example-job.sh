#!/usr/bin/env bash
# Writes the part files of the example part with the built zetlaser-job.
set -euo pipefail

echo "run-example-job.sh: there is no example part yet." >&2
exit 1
