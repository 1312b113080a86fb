#!/usr/bin/env bash
# Contract: `cmake --install` into an empty prefix lays out exactly the files a desktop expects,
# the validators accept the desktop entry and the AppStream file, and those two agree with each
# other, with the icon, the windows' class and the version. (The deb test starts the game by the entry's Exec line.)
set -euo pipefail
cmake=$1 build=$2 app_id=$3 version=$4 has_program=$5

prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
"$cmake" --install "$build" --prefix "$prefix" >/dev/null

status=0
fail() { echo "FAIL: $*" >&2; status=1; }

desktop_file=share/applications/$app_id.desktop
metainfo=share/metainfo/$app_id.metainfo.xml
expected=("$desktop_file" "$metainfo" "share/icons/hicolor/scalable/apps/$app_id.svg"
          share/icons/hicolor/{16x16,24x24,32x32,48x48,64x64,128x128,256x256}/apps/"$app_id.png"
          share/man/man6/corvalta.6.gz share/doc/corvalta/changelog.gz share/doc/corvalta/copyright)
if [[ $has_program == 1 ]]; then
  expected+=(bin/corvalta share/corvalta/OK3.wav share/corvalta/Microwave.wav share/corvalta/Applause.wav)
fi

# The expected files and nothing else.
diff <(printf '%s\n' "${expected[@]}" | sort) <(cd "$prefix" && find . ! -type d -printf '%P\n' | sort) ||
  fail "the installed files differ from the expected ones (< missing, > unexpected)"

if ! report=$(desktop-file-validate "$prefix/$desktop_file" 2>&1) ||
   grep -qE '(error|warning|hint):' <<<"$report"; then
  fail "desktop-file-validate: $report"
fi
# Without --no-net the validator would try to fetch the screenshot and the home page. The tree's
# check matches the AppStream id to the file's name and the launchable to the desktop entry.
appstreamcli validate --no-net --pedantic "$prefix/$metainfo" >&2 ||
  fail "appstreamcli rejects the metadata"
appstreamcli validate-tree --no-net "$prefix" >&2 ||
  fail "appstreamcli rejects the installed tree"

grep -qx "Icon=$app_id" "$prefix/$desktop_file" || fail "the desktop entry's Icon= is not $app_id"
# The class the game's windows carry (desktop_game_test.sh), which ties them to the entry.
grep -qx 'StartupWMClass=corvalta' "$prefix/$desktop_file" || fail "the desktop entry names another class"

newest_release=$(grep -o '<release version="[^"]*"' "$prefix/$metainfo" | head -n1 | cut -d'"' -f2)
[[ $newest_release == "$version" ]] ||
  fail "the newest AppStream release is '$newest_release', the project's version $version"

exit $status
