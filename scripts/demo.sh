#!/usr/bin/env bash
# Installs what is missing, builds, and performs the demo: a follow camera on a shaky object, a car
# that is driven over a terrain for 30 s, then once more as an F1 and as a boat from the same inputs,
# carriages on curves, tools of one file each, a vehicle on belts that crosses bumps, and a turret
# that fires at walls. Leaves out/demo/: source scenes, scenes with the new keys, poses as CSV,
# pictures, and screenshots of the desktop program with some of the scenes.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release --target rigwright rigwright-studio

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
  --stand 0,0,0 -o "$out/drive.glb" >/dev/null
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

rail=$out/rail.glb
python3 examples/make_curves.py "$out/curves.glb" > "$out/track.txt"
# A coaster: the rig's own closed curve through eight waypoints, with gravity and banking.
"$rigwright" --quiet add "$out/curves.glb" "Spline Speed-Controller" --name Coaster \
  --profile "Gravity and Banking" -o "$rail" >/dev/null
while read -r number x y z; do
  "$rigwright" --quiet press "$rail" "Coaster:Create New Waypoint" -o "$rail"
  "$rigwright" --quiet place "$rail" "Coaster_Waypoint0$number" --translate "$x,$y,$z" -o "$rail"
done < "$out/track.txt"
"$rigwright" --quiet press "$rail" "Coaster:Create Curve" -o "$rail"
# A dolly on the scene's curve: waits at the second waypoint for Start, rests at the third, and
# looks at the statue.
"$rigwright" --quiet add "$rail" "Spline Speed-Controller" --name Dolly -o "$rail" >/dev/null
"$rigwright" --quiet parent "$rail" Dolly_CarriageNode Street -o "$rail"
number=1
for percent in 0 35 70 100; do
  "$rigwright" --quiet set "$rail" "Dolly:Waypoint Creation Position (in Percent)=$percent" \
    "Dolly:Speed=2" -o "$rail"
  "$rigwright" --quiet press "$rail" "Dolly:Create New Waypoint" -o "$rail"
  "$rigwright" --quiet place "$rail" "Dolly_Waypoint0${number}_lookAtTarget" \
    --translate 0,2.4,0 -o "$rail"
  number=$((number + 1))
done
"$rigwright" --quiet set "$rail" "Dolly:Current Waypoint=Waypoint01" "Dolly:Look at Target=1" \
  "Dolly:Current Waypoint=Waypoint02" "Dolly:Look at Target=1" "Dolly:Stop Mode=1" \
  "Dolly:Brake Percent=30" "Dolly:Brake Softner=0.5" \
  "Dolly:Current Waypoint=Waypoint03" "Dolly:Look at Target=1" "Dolly:Time Delay (seconds)=1.5" \
  "Dolly:Brake Percent=30" "Dolly:Brake Softner=0.5" \
  "Dolly:Current Waypoint=Waypoint04" "Dolly:Look at Target=1" "Dolly:Stop Mode=1" \
  "Dolly:Brake Percent=30" "Dolly:Brake Softner=0.5" -o "$rail"
"$rigwright" --quiet press "$rail" "Dolly:Initialize Carriage" -o "$rail"
"$rigwright" --quiet press "$rail" "Coaster:Initialize Carriage" -o "$rail"
"$rigwright" resim "$rail" --inputs examples/dolly_inputs.csv --range 0:24 -o "$rail"
"$rigwright" --quiet export "$rail" --range 0:24 -o "$out/rail-poses.csv"
"$rigwright" --quiet plot "$rail" --range 0:24 --rig Coaster -o "$out/coaster.png"
"$rigwright" --quiet plot "$rail" --range 0:24 --rig Dolly -o "$out/dolly.png"

# Tools of one file each: a lantern swings from the shaky object, and a turntable makes one turn.
tools=$out/tools.glb
"$rigwright" --quiet add "$source" Pendulum --name Lantern --profile Lantern -o "$tools" >/dev/null
"$rigwright" --quiet parent "$tools" Lantern_Pivot Carrier -o "$tools"
"$rigwright" --quiet add "$tools" Turntable --name Table --profile "One Turn" -o "$tools" >/dev/null
"$rigwright" resim "$tools" -o "$tools"
"$rigwright" --quiet plot "$tools" --rig Lantern -o "$out/lantern.png"

# A vehicle on two belts. Frame and wheels ride on the vehicle; the strip is the belts' ground.
crawler=$out/crawler.glb
python3 examples/make_crawler.py examples/crawler_inputs.csv "$crawler"
for side in Left Right; do
  x=$([ $side = Left ] && echo -1.1 || echo 1.1)
  "$rigwright" --quiet add "$crawler" CrawlerTracks --name $side --translate "$x,0,1.875" \
    -o "$crawler" >/dev/null
  for wheel in 2 3 4; do
    "$rigwright" --quiet press "$crawler" "$side:Add Wheel" -o "$crawler"
  done
  number=1
  for wheel in driveWheel bogie01 bogie02 bogie03; do
    "$rigwright" --quiet parent "$crawler" ${side}_$wheel ${side}Arm$number -o "$crawler"
    number=$((number + 1))
  done
  "$rigwright" --quiet parent "$crawler" ${side}_Frame Hull -o "$crawler"
  "$rigwright" --quiet parent "$crawler" ${side}_GravityDirection Strip -o "$crawler"
  "$rigwright" --quiet press "$crawler" "$side:Calculate Number of Steps" -o "$crawler"
  "$rigwright" --quiet press "$crawler" "$side:Create Track" -o "$crawler"
done
"$rigwright" resim "$crawler" --inputs examples/crawler_inputs.csv -o "$crawler"
for picture in belt.png belt.svg; do
  "$rigwright" --quiet plot "$crawler" --rig Left -o "$out/$picture"
done

# A turret that fires bursts while it swings; what the collision node hangs on is what shots hit.
gun=$out/gun.glb
python3 examples/make_turret.py "$gun"
"$rigwright" --quiet add "$gun" Firepower --name Gun --profile Minigun --translate 0,1.5,0 \
  --scale 0.4 -o "$gun" >/dev/null
"$rigwright" --quiet parent "$gun" "Gun_fire trigger" Turret -o "$gun"
"$rigwright" --quiet parent "$gun" Gun_collision Yard -o "$gun"
"$rigwright" --quiet set "$gun" "Gun:Muzzle Velocity (m/s)=28" "Gun:Rate of fire (rounds/s)=10" \
  "Gun:Spread Angle (degrees)=2" "Gun:Time Delay=0" "Gun:Lifetime (seconds)=2.5" \
  "Gun:Air Resistance Force=0.05" "Gun:elasticity (%)=50" "Gun:Depth (%)=12" -o "$gun"
"$rigwright" resim "$gun" --inputs examples/fire_bursts.csv -o "$gun"
for picture in gun.png gun.svg; do
  "$rigwright" --quiet plot "$gun" -o "$out/$picture"
done

# What some of these look like in the desktop program.
scripts/stage_pictures.sh "$out" scripts/demo_stage.script

echo "The demo is in $out:"
ls -1 "$out"
