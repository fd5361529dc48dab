#!/usr/bin/env bash
# Installs what the project needs from Debian. Quiet when nothing is missing.
set -euo pipefail
packages=(
  build-essential cmake ninja-build ccache mold clang clang-format-14 pkg-config
  qtbase5-dev libqt5svg5-dev libtinygltf-dev nlohmann-json3-dev libcli11-dev libspdlog-dev
  libsdl2-dev libsndfile1-dev libbullet-dev libeigen3-dev libgtest-dev libbenchmark-dev libpugixml-dev libssl-dev
  g++-mingw-w64-x86-64-posix libclang-rt-14-dev python3 fonts-dejavu-core
  libassimp-dev libmeshoptimizer-dev libcpp-httplib-dev qttools5-dev-tools qttranslations5-l10n breeze-icon-theme xvfb xauth xdotool
  libgl1-mesa-dri
  libx11-dev libxi-dev libspnav-dev liblo-dev librtmidi-dev libumockdev-dev umockdev
)
missing=()
for package in "${packages[@]}"; do
  [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
    missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || {
    echo "setup.sh: these packages are missing: ${missing[*]} (install them as root)" >&2
    exit 1
  }
  as_root=(sudo)
fi
echo "setup.sh: installing ${missing[*]}" >&2
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
