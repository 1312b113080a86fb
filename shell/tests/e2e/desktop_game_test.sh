#!/usr/bin/env bash
# Contract: the real program under X with a fresh configuration folder plays a game by real key
# presses: Return starts it, the countdown runs, Tab goes from field to field, Return submits,
# a right answer scores and a wrong one does not; Ctrl+Q saves both files and ends the program
# with status 0, the interrupted game unrecorded. It leaves a picture of the main window.
#   usage: desktop_game_test.sh <build dir> <picture.png>
set -euo pipefail
source "$(dirname "$0")/x_session.sh" "$1"
picture=$2

export CORVALTA_SEED=11
mapfile -t problems < <(answers 3)
start_xvfb
start_game

# Parts of the window, menu bar included: the countdown, and the points of this game.
grab_time() { grab_part "$1" 200 230 130 100; }
grab_points() { grab_part "$1" 350 260 52 70; }
differ() { ! cmp -s "$1" "$2"; }
# Submits, then leaves time for the chime of a right answer, on a device or the dummy driver.
submit_and_wait() { submit "$1"; sleep 1; }

grab_time "$work/time-idle.png"
grab_points "$work/points-0.png"
xdotool key Return
sleep 1.5
grab_time "$work/time-1.png"
sleep 1.2
grab_time "$work/time-2.png"
differ "$work/time-idle.png" "$work/time-1.png" || fail "Start did not start the countdown"
differ "$work/time-1.png" "$work/time-2.png" || fail "the countdown does not count"

submit_and_wait "${problems[0]}"
grab_points "$work/points-1.png"
differ "$work/points-0.png" "$work/points-1.png" || fail "a right answer did not score"

read -r x y answer <<<"${problems[1]}"
submit_and_wait "$x $y $((answer + 1))"
grab_points "$work/points-2.png"
cmp -s "$work/points-1.png" "$work/points-2.png" || fail "a wrong answer scored"

submit_and_wait "${problems[2]}"
grab_points "$work/points-3.png"
differ "$work/points-2.png" "$work/points-3.png" || fail "the second right answer did not score"

mkdir -p "$(dirname "$picture")"
"$grab" "$window" "$picture" 2>/dev/null || fail "cannot take the picture"

xdotool key ctrl+q
wait_for_exit "$game_pid" 30
[[ $game_status == 0 ]] || fail "the game ended with status $game_status: $(cat "$work/game.log")"

folder=$XDG_CONFIG_HOME
[[ $(cat "$folder/corvalta.plist") == $'True\nEasy' ]] || fail "settings: $(od -c "$folder/corvalta.plist")"
[[ $(wc -l <"$folder/corvalta-highscores.plist") == 10 ]] || fail "the high scores have not ten lines"
[[ $(cut -f3 "$folder/corvalta-highscores.plist" | sort -u) == 0 ]] ||
  fail "the interrupted game reached the table: $(cat "$folder/corvalta-highscores.plist")"
echo "PASS"
