#!/usr/bin/env bash
# Installs what a fresh machine of our kind lacks, then restores the NuGet
# packages. Safe to run again: it only installs what is missing.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)

# Debian packages: fonts for rendering, LibreOffice/qpdf/poppler for checking
# what we write, clang-format for the format check.
debs=(fonts-dejavu-core fonts-liberation2 fonts-crosextra-carlito fonts-crosextra-caladea
      libreoffice-impress qpdf poppler-utils libfontconfig1 clang-format)
missing=()
for p in "${debs[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "setup: installing ${missing[*]}"
  SUDO=""; [ "$(id -u)" -ne 0 ] && SUDO="sudo"
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi

# The interpreter and SDK we build against; fail early with where we looked.
PY39_ROOT=${ORVANE_PYTHON39_ROOT:-$( (pyenv root 2>/dev/null || echo "$HOME/.pyenv") )/versions/3.9.18}
if [ ! -x "$PY39_ROOT/bin/python3.9" ] || [ ! -f "$PY39_ROOT/include/python3.9/Python.h" ]; then
  echo "setup: CPython 3.9 not found (looked for $PY39_ROOT/bin/python3.9 and its headers; set ORVANE_PYTHON39_ROOT)" >&2
  exit 1
fi
if ! command -v dotnet >/dev/null; then
  echo "setup: the .NET SDK is missing (no 'dotnet' on PATH: $PATH)" >&2
  exit 1
fi

# NuGet restore of every managed project, once, so that the build itself
# works offline.
for proj in "$here"/managed/*/*.csproj "$here"/tools/*/*.csproj "$here"/tests/managed/*/*.csproj "$here"/tests/probe/*/*.csproj; do
  [ -f "$proj" ] || continue
  dotnet restore "$proj" --verbosity quiet >/dev/null
done
echo "setup: ok"
