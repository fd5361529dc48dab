#!/usr/bin/env bash
# Builds the Maya plug-in as with a devkit, one made of the stand-in's headers and the system's Qt, and
# checks what it shows to the outside. Arguments: the folder to leave it in, and a program that has
# the stand-in itself, which is given the plug-in to load.
set -euo pipefail
source=$(cd "$(dirname "$0")/.." && pwd)
work=${1:-$source/build/maya-devkit}
devkit=$work/devkit
mkdir -p "$devkit/include" "$devkit/lib"
ln -sfn "$source/tests/mayahost/include/maya" "$devkit/include/maya"
triplet=$(${CXX:-c++} -print-multiarch)
# Qt finds its folders from where its CMake files lie.
ln -sfn "/usr/lib/$triplet" "$devkit/lib/$triplet"
ln -sfn "/usr/include/$triplet" "$devkit/include/$triplet"
ln -sfn /usr/lib/qt5 "$devkit/lib/qt5"

fail() {
  echo "maya_devkit.sh: $1" >&2
  exit 1
}

configure() {
  cmake -S "$source" -B "$1" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_UNITY_BUILD=ON \
        -DCMAKE_UNITY_BUILD_BATCH_SIZE=16 "${@:2}"
}

# A devkit without a Qt of its own is refused: never the system's.
bare=$work/bare
mkdir -p "$bare/include"
ln -sfn "$source/tests/mayahost/include/maya" "$bare/include/maya"
if configure "$work/refused" -DMAYA_DEVKIT="$bare" >"$work/refused.log" 2>&1; then
  fail "a devkit without Qt was taken"
fi
grep -q MAYA_QT "$work/refused.log" || fail "the refusal does not tell of Qt"

configure "$work/build" -DMAYA_DEVKIT="$devkit" >"$work/configure.log" ||
  fail "configuring failed, see $work/configure.log"
cmake --build "$work/build" --target OrvelRigwright -j"${JOBS:-2}" >"$work/build.log" ||
  { grep -m 20 -E "error|undefined" "$work/build.log"; fail "building failed"; }

module=$work/build/module
grep -q "OrvelRigwright" "$module/OrvelRigwright.mod" || fail "there is no module file"
names=$(nm -D --defined-only -C "$module/plug-ins/OrvelRigwright.so" | awk '{print $3}' |
        sed 's/(.*//' | sort | tr '\n' ' ')
[ "$names" = "MApiVersion initializePlugin uninitializePlugin " ] ||
  fail "the plug-in shows other names: $(echo "$names" | head -c 400)"
if [ $# -gt 1 ]; then
  data=$(mktemp -d)
  trap 'rm -rf "$data"' EXIT
  RIGWRIGHT_DATA_ROOT=$data "$2" "$module/plug-ins/OrvelRigwright.so" || fail "loading failed"
fi
echo "maya_devkit.sh: $module"
