#!/usr/bin/env bash
# Contract: under a window manager, every window but the main one is transient for the main
# window, with the game's class and icon, no maximise button, no resizing and a minimise button
# exactly where its record has one: the Clear Scores box (which has no title), the modal update
# window and the message of its failed check open centred over the main window, Help, About
# and Self Test beside it. Outside a game, Tab from the first level reaches Clear Scores, then
# Start. With deploy/www served as it stands on the port the program was built to ask, the
# prompt for the sample manifest comes up; its default button hands the manifest's download
# address to the browser and closes updateWindow, "Go to Website" hands the server's home page
# and leaves updateWindow up until its Cancel. A stand-in browser first
# on PATH records what it gets (Qt opens addresses with xdg-open).
#   usage: window_manager_test.sh <build dir> <source dir> <port>
set -euo pipefail
source "$(dirname "$0")/x_session.sh" "$1"
source_dir=$2
port=$3

# The window of that title that is not the main window.
other_window() {
  local id
  for id in $(xdotool search --onlyvisible --name "^$1\$"); do
    [[ $id == "$window" ]] || { echo "$id"; return; }
  done
}
await_other() { within 10 other_window "$1" >/dev/null || fail "no window \"$1\" came up"; other_window "$1"; }

# Fails unless the browser got exactly the addresses given, in order, within ten seconds.
browser_got() { [[ $(cat "$work/browser.log") == "$(printf '%s\n' "$@")" ]]; }
expect_browser() { within 10 browser_got "$@" || fail "the browser got: $(cat "$work/browser.log")"; }
mkdir -p "$work/bin"
: >"$work/browser.log"
printf '#!/bin/sh\nprintf "%%s\\n" "$*" >>"%s"\n' "$work/browser.log" >"$work/bin/xdg-open"
chmod +x "$work/bin/xdg-open"
export PATH=$work/bin:$PATH

# File is the first title of the menu bar; three steps right is "Check For Update", whose first
# and only entry is "Check Now": opens selfTest, whose default button starts the check, and
# prints its id.
open_self_test() { choose_in_menus Right Right Right Return; await_window "Self Test"; }
check_for_updates() {
  xdotool windowfocus --sync "$(open_self_test)" key Return
  xdotool windowfocus --sync "$(await_window "New version available!")"
}

# A screen with room for the secondary windows beside the main one.
start_xvfb 1600x1000
start_window_manager
start_game

# The focus starts on the first level; Tab goes on by Medium, Hard and the score list.
xdotool key --delay 50 Tab Tab Tab Tab space
box=$(await_window " ")
check_wm_view "the Clear Scores box" "$box" "$window" no over
xdotool key Escape
await_gone " "
# Escape left the focus on Clear Scores; one Tab more is Start, and Return there starts a game.
xdotool windowfocus --sync "$window"
grab_time "$work/time-idle.ppm"
xdotool key Tab space
sleep 1.5
grab_time "$work/time-1.ppm"
cmp -s "$work/time-idle.ppm" "$work/time-1.ppm" && fail "Tab did not reach Start"

choose_in_menus Right Right Right Right Return
check_wm_view "Help" "$(await_other Corvalta)" "$window" yes beside
choose_in_menus Right Right Right Right Down Return
check_wm_view "About" "$(await_window "About Corvalta")" "$window" no beside

door=$(open_self_test)
check_wm_view "Self Test" "$door" "$window" no beside
# Nothing listens on the update port yet: the check fails at once with a message.
xdotool windowfocus --sync "$door" key Return
message=$(await_window " ")
check_wm_view "the update window" "$(await_window "Update")" "$window" yes over
check_wm_view "the update's message" "$message" "$window" no over
xdotool windowfocus --sync "$message" key Return
await_gone "Update"

# The window manager has had its say; without it, its focus rules no longer race with the keys
# sent to each new dialog. deploy/www as it stands, served over HTTP/1.0 as the update server
# does; the server's own settings (deploy/nginx) are app/tests' concern.
kill "${pids[1]}"
python3 -m http.server --bind 127.0.0.1 --directory "$source_dir/deploy/www" "$port" 2>"$work/http.log" &
pids+=($!)
within 10 curl -sf -o /dev/null "http://127.0.0.1:$port/Updates/corvalta.xml" ||
  fail "no server for the manifest on port $port: $(cat "$work/http.log")"
download=$(sed -n 's:.*<DownloadURLOSX>\(.*\)</DownloadURLOSX>.*:\1:p' \
  "$source_dir/deploy/www/Updates/corvalta.xml")
[[ -n $download ]] || fail "the sample manifest names no download"
# The download button is the prompt's default.
check_for_updates
xdotool key Return
expect_browser "$download"
await_gone "Update"
# "Go to Website" follows the default button in the prompt's order of focus.
check_for_updates
xdotool key Tab space
expect_browser "$download" "http://127.0.0.1:$port/"
sleep 0.5
update=$(visible "Update")
[[ -n $update ]] || fail "updateWindow closed after Go to Website"
xdotool windowfocus --sync "$update" key Return
await_gone "Update"
end_game
echo "PASS"
