#!/usr/bin/env bash
# Compiles util to the rigs and Windows' drivers for Windows, each source alone.
# With --run, runs the tests of these drivers and of files instead, under Wine (Debian's wine64);
# the status is 77 where there is none.
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/mingw
if [ "${1:-}" != --run ]; then
  command -v x86_64-w64-mingw32-g++-posix >/dev/null || {
    echo "mingw.sh: there is no compiler for Windows: scripts/setup.sh installs it" >&2
    exit 1
  }
  cmake --preset mingw >/dev/null
  exec cmake --build "$build"
fi

wine=$(PATH=$PATH:/usr/lib/wine command -v wine64 || true)
if [ -z "$wine" ]; then
  echo "SKIPPED: the drivers for Windows were not run (apt-get install wine64)"
  exit 77
fi
# No user's own Wine, none of its questions; what it leaves running must not hold our output.
export WINEPREFIX=$PWD/$build/wine WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml=
status=0
xvfb-run -a "$wine" "$build/bin/test_windows.exe" >"$build/test_windows.log" 2>&1 </dev/null || status=$?
cat "$build/test_windows.log"
exit "$status"
