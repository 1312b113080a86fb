#!/usr/bin/env bash
# Contract: the Debian package that cpack makes of this tree declares its libraries' packages,
# installs with apt (which resolves every one of them), starts the game through the installed
# desktop entry's Exec line to a painted main window, and purges again leaving no file of its
# own and no package that its installation pulled in.
set -euo pipefail
cpack=$1 build=$2 app_id=$3 screenshot=$4

if [[ $(id -u) -ne 0 ]]; then
  echo "skipped: installing a package system-wide needs root"
  exit 77
fi
# Test runs of several work trees on one machine take turns.
exec 9>/run/lock/corvalta-deb-test.lock
flock 9
if [[ $(dpkg-query -W -f='${db:Status-Abbrev}' corvalta 2>/dev/null) == ii* ]]; then
  echo "skipped: a corvalta package is installed on this machine already; it stays untouched"
  exit 77
fi

work=$(mktemp -d)
installed_by_us=0
installed_packages() { dpkg-query -W -f='${db:Status-Abbrev} ${Package}\n' | awk '$1 == "ii" { print $2 }' | sort; }
pulled_in() { comm -13 "$work/before" <(installed_packages) | comm -12 - <(apt-mark showauto | sort); }
purge() {
  local extra
  mapfile -t extra < <(pulled_in)
  DEBIAN_FRONTEND=noninteractive apt-get purge -y -qq -o DPkg::Lock::Timeout=300 \
    corvalta "${extra[@]}" >"$work/purge.log" 2>&1 || { cat "$work/purge.log" >&2; return 1; }
  installed_by_us=0
}
cleanup() {
  local status=$?
  if [[ $installed_by_us == 1 ]]; then purge || status=1; fi
  rm -rf "$work"
  exit "$status"
}
trap cleanup EXIT

"$cpack" --config "$build/CPackConfig.cmake" -B "$work/package" >"$work/cpack.log" 2>&1 ||
  { cat "$work/cpack.log" >&2; exit 1; }
deb=$(echo "$work"/package/corvalta_*.deb)

depends=$(dpkg-deb -f "$deb" Depends)
echo "Depends: $depends"
for needed in libqt6widgets6 libsdl2-2.0-0 fonts-liberation; do
  grep -qw -- "$needed" <<<"$depends" || { echo "FAIL: the package does not depend on $needed" >&2; exit 1; }
done

installed_packages >"$work/before"
installed_by_us=1
DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
  -o DPkg::Lock::Timeout=300 "$deb" >"$work/install.log" 2>&1 ||
  { cat "$work/install.log" >&2; exit 1; }
dpkg-query -L corvalta >"$work/files"

# The game as a desktop starts it: the Exec line with its field codes dropped.
exec_line=$(sed -n 's/^Exec=//p' "/usr/share/applications/$app_id.desktop")
exec_line=${exec_line//%[fFuUdDnNickvm]/}
PATH=/usr/bin:/bin python3 "$(dirname "$0")/screen_capture.py" "$screenshot" /usr/bin/corvalta \
  -- sh -c "exec $exec_line"

purge
status=0
if [[ $(dpkg-query -W -f='${db:Status-Abbrev}' corvalta 2>/dev/null) == ii* ]]; then
  echo "FAIL: corvalta is still installed" >&2; status=1
fi
# A folder may stay only while another package owns it too.
while read -r path; do
  if [[ $path == /. ]]; then continue; fi
  if [[ -d $path ]] && ! dpkg-query -S "$path" >/dev/null 2>&1; then
    echo "FAIL: the folder $path is left behind" >&2; status=1
  elif [[ -e $path && ! -d $path ]]; then
    echo "FAIL: $path is left behind" >&2; status=1
  fi
done <"$work/files"
leftovers=$(find /usr /etc /var/lib/dpkg/info -name '*corvalta*' 2>/dev/null)
[[ -z $leftovers ]] || { echo "FAIL: left behind: $leftovers" >&2; status=1; }
exit $status
