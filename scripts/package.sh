#!/usr/bin/env bash
# Builds veldtone_<version>_<arch>.deb from a Release build and checks it with lintian,
# desktop-file-validate and appstreamcli. The package lands in out/.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh

tools=(lintian desktop-file-utils appstream dpkg-dev fakeroot file)
missing=()
for p in "${tools[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
    sudo_cmd=()
    [ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
    DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends \
        "${missing[@]}"
fi

build=build-package
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
    -DVELDTONE_BUILD_TESTS=OFF >/dev/null
cmake --build "$build"
mkdir -p out
(cd "$build" && cpack -G DEB -B "$(pwd)/../out" >/dev/null)
rm -rf out/_CPack_Packages
deb=$(ls -t out/veldtone_*.deb | head -n 1)
echo "Built $deb"
dpkg-deb --field "$deb" Package Version Architecture Depends Recommends

desktop-file-validate data/io.github.veldtone.Veldtone.desktop
appstreamcli validate --no-net --pedantic data/io.github.veldtone.Veldtone.metainfo.xml
# Errors fail the build; warnings are printed for a person to weigh.
lintian --fail-on error --tag-display-limit 0 "$deb"
echo "Package checks passed."
