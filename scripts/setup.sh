#!/usr/bin/env bash
# Installs every Debian package the designer needs to build, run and test,
# and the packages named as arguments (the packaging scripts' tools).
# Idempotent: apt-get runs only when something is missing.
set -euo pipefail

PACKAGES=(
    cmake ninja-build g++ pkg-config sqlite3 python3
    qt6-base-dev qt6-tools-dev qt6-tools-dev-tools qt6-documentation-tools
    libqt6sql6-sqlite qt6-multimedia-dev
    flite1-dev libsndfile1-dev libsamplerate0-dev libfontconfig-dev
    fonts-dejavu-core
    xvfb xauth xdotool imagemagick
    pulseaudio pulseaudio-utils sox asterisk-core-sounds-en-wav
    xdg-utils desktop-file-utils shared-mime-info appstream man-db
    "$@"
)

missing=()
for p in "${PACKAGES[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

SUDO=""
if [ "$(id -u)" -ne 0 ]; then
    SUDO="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -q
$SUDO apt-get install -y -q --no-install-recommends "${missing[@]}"
