#!/usr/bin/env bash
# Installs what is missing, builds, and performs the demo: a follow camera on a shaky object, and a
# car that is driven over a terrain for 30 s, then once more as an F1 and as a boat from the same
# inputs. Leaves out/demo/: source scenes, scenes with the new keys, poses as CSV, and pictures.
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

# The ground is what the car's gravity node is parented to.
car=Car
python3 examples/make_terrain.py "$out/terrain.glb"
"$rigwright" --quiet add "$out/terrain.glb" 4WheelerExt --name $car --profile "Start Profile" \
  --translate 0,0.54,0 -o "$out/drive.glb" >/dev/null
"$rigwright" --quiet parent "$out/drive.glb" ${car}_GravityDirectionMesh Terrain \
  -o "$out/drive.glb"
"$rigwright" resim "$out/drive.glb" --inputs examples/drive_hills.csv -o "$out/drive.glb"
"$rigwright" --quiet export "$out/drive.glb" -o "$out/drive-poses.csv"
for profile in F1 Boat; do
  other=$out/drive-$(tr A-Z a-z <<<$profile).glb
  "$rigwright" --quiet profile apply "$out/drive.glb" $car $profile -o "$other"
  "$rigwright" resim "$other" -o "$other"
done
"$rigwright" --quiet plot "$out/drive.glb" "$out/drive-f1.glb" "$out/drive-boat.glb" --rig $car \
  -o "$out/drives.png"
"$rigwright" --quiet plot "$out/drive.glb" "$out/drive-f1.glb" "$out/drive-boat.glb" --rig $car \
  -o "$out/drives.svg"
echo "The demo is in $out:"
ls -1 "$out"
