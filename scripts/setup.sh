#!/usr/bin/env bash
# Installs every Debian package Veldtone needs to build, run and test. Quick when all is there.
set -euo pipefail

packages=(
    # build
    build-essential cmake ninja-build clang libclang-rt-14-dev
    # the sanitizers' symbolizer: leak reports and their suppressions need function names, and
    # libc's own (a leak suppressed by name is allocated inside libc) come from its debug symbols
    llvm-14 libc6-dbg
    qt6-base-dev qt6-base-dev-tools qt6-multimedia-dev qt6-svg-dev
    qt6-httpserver-dev qt6-websockets-dev libsimdjson-dev
    # tags and pictures written into the files
    libtag1-dev pkg-config
    # checking the signature of a yt-dlp release; the tests sign their own with gpg
    gpgv gnupg
    # lupdate and lrelease for the translations; Qt's own texts in the shipped languages
    qt6-l10n-tools qt6-translations-l10n
    # run
    qt6-qpa-plugins qt6-image-formats-plugins fonts-material-design-icons-iconfont fonts-dejavu-core
    yt-dlp ffmpeg unzip zip xz-utils tar dbus
    gstreamer1.0-plugins-base gstreamer1.0-plugins-good gstreamer1.0-plugins-bad gstreamer1.0-libav
    # test and look
    xvfb xauth xdotool imagemagick valgrind pulseaudio python3 procps
    # a real client of the media-player interface
    playerctl
)

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done
if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

echo "Installing: ${missing[*]}"
sudo_cmd=()
if [ "$(id -u)" -ne 0 ]; then
    sudo_cmd=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
