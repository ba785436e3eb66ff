#!/bin/bash
# Runs a command; what it prints must be what a file holds. Usage: compare.sh FILE COMMAND...
set -euo pipefail
diff -u "$1" <("${@:2}" 2>&1)
