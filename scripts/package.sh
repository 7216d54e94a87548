#!/usr/bin/env bash
# Sets up the machine, builds the designer and packs it into a Debian
# package in build/package/; prints the package's path.
set -euo pipefail
cd "$(dirname "$0")/.."
# cpack asks dpkg-shlibdeps for the libraries' packages and file(1) which
# installed files are programs.
bash scripts/setup.sh dpkg-dev file >&2
cmake --preset default >/dev/null
cmake --build --preset default -j "$(nproc)" >&2
rm -rf build/package
(cd build && cpack -G DEB >&2)
echo build/package/brindlewave-ivr-designer_*.deb
