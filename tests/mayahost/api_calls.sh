#!/usr/bin/env bash
# The calls of the host's API that object files or libraries contain, a line each: Class::method.
# Constructors, destructors and what is only inlined data are left out.
set -euo pipefail
nm -C "$@" 2>/dev/null |
  sed -nE 's/^[0-9a-f ]* [UWV] (.*)$/\1/p' |
  sed -nE 's/^Autodesk::Maya::OpenMaya[0-9]+::([A-Za-z0-9_]+::[A-Za-z0-9_]+)\(.*$/\1/p' |
  awk -F:: '$1 != $2 && $2 !~ /^operator/' | sort -u
