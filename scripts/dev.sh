#!/usr/bin/env bash
# One entry point for the two things a developer (and CI) does:
#   scripts/dev.sh demo   set up, build everything, run the demo
#   scripts/dev.sh test   set up, build everything, run every test
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
cd "$here"
what=${1:-demo}

"$here/scripts/setup.sh"
PY39_ROOT=${ORVANE_PYTHON39_ROOT:-$( (pyenv root 2>/dev/null || echo "$HOME/.pyenv") )/versions/3.9.18}
jobs=${ORVANE_JOBS:-$(nproc)}

cmake -S . -B build -DCMAKE_BUILD_TYPE=Release -DORVANE_PYTHON39_ROOT="$PY39_ROOT" >/dev/null
cmake --build build -j "$jobs"

case "$what" in
  demo)
    mkdir -p out
    PYTHONPATH="$here/build/stage" "$PY39_ROOT/bin/python3.9" examples/make_deck.py out/demo.pptx
    ;;
  test)
    ctest --test-dir build --output-on-failure -j "$jobs"
    ;;
  *)
    echo "usage: scripts/dev.sh demo|test" >&2; exit 2;;
esac
