#!/usr/bin/env bash
# stage_pictures.sh OUT SCRIPT [FILE...]: runs the built desktop program's script in OUT, with copies
# of the files beside it, on the display that there is, else on one of its own.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
out=$1 script=$(realpath "$2")
mkdir -p "$out"
for file in "${@:3}"; do
  [ "$(dirname "$(realpath "$file")")" = "$(realpath "$out")" ] || cp "$file" "$out"
done
data=$(mktemp -d)
trap 'rm -rf "$data"' EXIT
display=()
[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] || display=(xvfb-run -a -s "-screen 0 1600x1000x24")
cd "$out"
if ! "${display[@]}" "$root/build/release/bin/rigwright-studio" --script "$script" --quality fixed \
  --geometry 1400x900 --data-root "$data" >"$data/replies" 2>"$data/errors"; then
  cat "$data/errors" >&2
  grep '"ok":false' "$data/replies" >&2
  exit 1
fi
