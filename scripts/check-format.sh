#!/usr/bin/env bash
# Fails when a C++ file of the project is not formatted by the root .clang-format.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
command -v clang-format >/dev/null || { echo "clang-format is missing" >&2; exit 1; }
bad=0
while IFS= read -r f; do
  if ! clang-format --dry-run --Werror "$f" >/dev/null 2>&1; then
    echo "not formatted: $f (run: clang-format -i $f)"
    bad=1
  fi
done < <(git ls-files '*.cpp' '*.h')
exit $bad
