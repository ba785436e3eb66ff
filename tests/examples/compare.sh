#!/bin/bash
# Runs a command; what it prints must be what a file holds. Usage: compare.sh FILE COMMAND...
# STRIP_CR in the environment: but for the CR in front of each LF, with which a console of Windows is written.
set -euo pipefail
diff -u ${STRIP_CR:+--strip-trailing-cr} "$1" <("${@:2}" 2>&1)
