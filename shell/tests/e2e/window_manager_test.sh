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
await_other() { eventually other_window "$1" >/dev/null || fail "no window \"$1\" came up"; other_window "$1"; }

# Nothing listens on the update port: the check fails at once with a message.
# A screen with room for the secondary windows beside the main one.
start_xvfb 1600x1000
start_window_manager
start_game

# The focus starts on the first level; Tab goes on by Medium, Hard and the score list.
xdotool key --delay 50 Tab Tab Tab Tab space
box=$(await_window " ")
check_wm_view "the Clear Scores box" "$box" "$window" no
centred_over_main "the Clear Scores box" "$box"
xdotool key Escape
await_gone " "
# Escape left the focus on Clear Scores; one Tab more is Start, and Return there starts a game.
xdotool windowfocus --sync "$window"
grab_part "$work/time-idle.png" 200 230 130 100
xdotool key Tab space
sleep 1.5
grab_part "$work/time-1.png" 200 230 130 100
cmp -s "$work/time-idle.png" "$work/time-1.png" && fail "Tab did not reach Start"

open_file_menu
xdotool key Right Right Right Right Return
help=$(await_other Corvalta)
check_wm_view "Help" "$help" "$window" yes
beside_main "Help" "$help"

xdotool windowfocus --sync "$window"
open_file_menu
xdotool key Right Right Right Right Down Return
about=$(await_window "About Corvalta")
check_wm_view "About" "$about" "$window" no
beside_main "About" "$about"

xdotool windowfocus --sync "$window"
open_file_menu
xdotool key Right Right Right Return
door=$(await_window "Self Test")
check_wm_view "Self Test" "$door" "$window" no
beside_main "Self Test" "$door"

xdotool windowfocus --sync "$door"
xdotool key Return
message=$(await_window " ")
update=$(await_window "Update")
check_wm_view "the update window" "$update" "$window" yes
centred_over_main "the update window" "$update"
check_wm_view "the update's message" "$message" "$window" no
centred_over_main "the update's message" "$message"
xdotool windowfocus --sync "$message"
xdotool key Return
await_gone "Update"

xdotool windowfocus --sync "$window"
xdotool key ctrl+q
wait_for_exit "$game_pid" 30
[[ $game_status == 0 ]] || fail "the game ended with status $game_status: $(cat "$work/game.log")"
echo "PASS"
