#!/usr/bin/env bash
# Installs what the build, the tests and the checks need on Debian 12; does nothing when all of it is there.
# Usage: scripts/install-dependencies.sh [build|test|check]   (each includes the ones before it)
set -euo pipefail

level=${1:-build}

packages=(
    g++ cmake ninja-build pkg-config python3 fonts-dejavu-core fonts-liberation2
    libhwy-dev libturbojpeg0-dev libjpeg62-turbo-dev libpng-dev libtiff-dev libgif-dev
    libwebp-dev libdeflate-dev libgdk-pixbuf-2.0-dev zlib1g-dev libcairo2-dev libpango1.0-dev
    qt6-base-dev libgl-dev libegl-dev qt6-tools-dev qt6-wayland
)
if [[ $level == test || $level == check ]]; then
    packages+=(libgtest-dev make libx11-dev libqt6opengl6-dev xvfb xauth xdotool imagemagick
        desktop-file-utils appstream)
fi
if [[ $level == check ]]; then
    packages+=(clang-16 libclang-rt-16-dev clang-format-16 clang-tidy-16 shellcheck)
fi

missing=()
for package in "${packages[@]}"; do
    if [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) != installed ]]; then
        missing+=("$package")
    fi
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

as_root=()
if [[ $(id -u) -ne 0 ]]; then
    if ! command -v sudo >/dev/null; then
        echo "These packages are missing and sudo is not here to install them: ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi

echo "Installing: ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
apt() {
    if ! "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get -o DPkg::Lock::Timeout=300 -o Acquire::Retries=3 -q "$@" </dev/null >"$log" 2>&1; then
        tail -n 30 "$log" >&2
        echo "apt-get $1 failed" >&2
        exit 1
    fi
}
apt update
apt install -y --no-install-recommends "${missing[@]}"
