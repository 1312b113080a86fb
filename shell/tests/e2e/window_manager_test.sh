#!/usr/bin/env bash
# Contract: under a window manager, every window but the main one is transient for the main
# window, with the game's class and icon, no maximise button, no resizing and a minimise button
# exactly where its record has one: the Clear Scores box (which has no title), the modal update
# window and the message of its failed check open centred over the main window, Help, About
# and Self Test beside it. Outside a game, Tab from the first level reaches Clear Scores, then
# Start.
#   usage: window_manager_test.sh <build dir>
set -euo pipefail
source "$(dirname "$0")/x_session.sh" "$1"

# The window of that title that is not the main window.
other_window() {
  local id
  for id in $(xdotool search --onlyvisible --name "^$1\$"); do
    [[ $id == "$window" ]] || { echo "$id"; return; }
  done
}
await_other() { within 10 other_window "$1" >/dev/null || fail "no window \"$1\" came up"; other_window "$1"; }

# Nothing listens on the update port: the check fails at once with a message.
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
choose_in_menus Right Right Right Return
door=$(await_window "Self Test")
check_wm_view "Self Test" "$door" "$window" no beside

xdotool windowfocus --sync "$door" key Return
message=$(await_window " ")
check_wm_view "the update window" "$(await_window "Update")" "$window" yes over
check_wm_view "the update's message" "$message" "$window" no over
xdotool windowfocus --sync "$message" key Return
await_gone "Update"
end_game
echo "PASS"
