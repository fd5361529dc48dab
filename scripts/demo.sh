#!/usr/bin/env bash
# Installs what is missing, builds, and performs the demo: a follow camera on a shaky object.
# Leaves out/demo/: the source scene, the scene with the new keys, poses as CSV, and pictures.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release --target rigwright

rigwright=build/release/bin/rigwright
out=out/demo
rm -rf "$out"
mkdir -p "$out"
source=$out/shaky.glb
scene=$out/follow.glb
rig=MotionFilterCam_01

python3 examples/make_shaky.py "$source"
"$rigwright" --quiet add "$source" MotionFilterCam --profile "Smooth Filtering" \
  --translate 0,1.9,0 -o "$scene" >/dev/null
# The AttachedCam rides on the shaky object, a little above it.
"$rigwright" --quiet parent "$scene" ${rig}_AttachedCam Carrier -o "$scene"
"$rigwright" --quiet place "$scene" ${rig}_AttachedCam --translate 0,0.25,0 --rotate 0,0,0 -o "$scene"
"$rigwright" resim "$scene" --set "$rig:Rotation Max Velocity=0" -o "$scene"
"$rigwright" --quiet export "$scene" -o "$out/poses.csv"
"$rigwright" --quiet plot "$scene" --rig $rig -o "$out/paths.png"
"$rigwright" --quiet plot "$scene" --rig $rig -o "$out/paths.svg"
echo "The demo is in $out:"
ls -1 "$out"
