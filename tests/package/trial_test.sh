#!/usr/bin/env bash
# Packs what is built and tries the package as scripts/try_package tells. Arguments: folder of the
# sources, of the build, version.
set -eu
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
(cd "$2" && cpack -G DEB -B "$work") >"$work/cpack.log" 2>&1 || { cat "$work/cpack.log"; exit 1; }
"$1/scripts/try_package" "$work"/morva_"$3"_*.deb
