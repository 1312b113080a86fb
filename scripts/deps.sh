#!/usr/bin/env bash
# Installs the Debian packages that a profile needs and that are missing, so that a fresh
# Debian 12 machine needs nothing prepared by hand.
#   scripts/deps.sh play   what building and running the game needs
#   scripts/deps.sh test   what building and running every test needs
#   scripts/deps.sh package   what building the Debian package needs
set -euo pipefail

build=(cmake ninja-build g++ pkg-config qt6-base-dev libsdl2-dev libgl-dev fonts-liberation
       librsvg2-bin)
test_extra=(libgtest-dev libgmock-dev clang libclang-rt-14-dev clang-format nginx-light xvfb xauth
            pulseaudio pulseaudio-utils sox curl python3
            desktop-file-utils appstream x11-apps x11-utils netpbm qt6-gtk-platformtheme
            xdotool dbus-daemon at-spi2-core python3-pyatspi openbox mmdebstrap lintian)
package_extra=(dpkg-dev file)

case "${1:-}" in
  play) wanted=("${build[@]}") ;;
  test) wanted=("${build[@]}" "${test_extra[@]}" "${package_extra[@]}") ;;
  package) wanted=("${build[@]}" "${package_extra[@]}") ;;
  *) echo "usage: $0 play|test|package" >&2; exit 2 ;;
esac

missing=()
for pkg in "${wanted[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$pkg")
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

echo "Installing missing packages: ${missing[*]}"
sudo=()
[[ $(id -u) -eq 0 ]] || sudo=(sudo)
"${sudo[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
