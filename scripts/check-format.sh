#!/usr/bin/env bash
# Checks that the hand-written sources keep the project's one format:
# C++ by clang-format (.clang-format), C# by `dotnet format whitespace`
# (.editorconfig). With --fix it rewrites the files instead.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
cd "$here"
fix=${1:-}

mapfile -t cpp < <(git ls-files 'native/*.cpp' 'native/*.h' 'tests/native/*.cpp' 'tests/native/*.h' \
                                 'tests/probe/*.cpp' 'tests/probe/*.h' 'bench/*.c')
if ! command -v clang-format >/dev/null; then
  echo "check-format: clang-format is missing (scripts/setup.sh installs it)" >&2
  exit 1
fi
status=0
if [ "$fix" = "--fix" ]; then
  clang-format -i "${cpp[@]}"
  dotnet format whitespace --folder . --exclude build --verbosity quiet
else
  clang-format --dry-run --Werror "${cpp[@]}" || status=1
  dotnet format whitespace --folder . --exclude build --verify-no-changes --verbosity quiet || status=1
  [ $status -eq 0 ] || echo "check-format: run scripts/check-format.sh --fix" >&2
fi
exit $status
