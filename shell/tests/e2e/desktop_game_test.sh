#!/usr/bin/env bash
# Contract: the real program under X and a window manager, with a fresh configuration folder and
# no sound server, plays a whole game by keys alone: Return starts it, the countdown runs, Tab
# goes from field to field, Return submits, a right answer scores and a wrong one does not; Tab
# and Shift+Tab go round the window's controls and back to the first answer field without
# walking the score list's cells; when time is up the name entry, tied to the main window,
# opens centred over it, takes a name typed at once, ignores Return, and puts the name with
# the game's score in the table below the better score of a player before. Ctrl+Q ends the
# program with status 0. The main window and the name entry carry the game's class and icon.
#   usage: desktop_game_test.sh <build dir>
set -euo pipefail
source "$(dirname "$0")/x_session.sh" "$1"

export CORVALTA_SEED=11
mapfile -t problems < <(answers Easy 3)
# No sound server, and none started on demand: the game must not wait for its sounds forever.
printf 'autospawn = no\n' >"$work/client.conf"
unset PULSE_SERVER
export PULSE_CLIENTCONFIG=$work/client.conf PULSE_RUNTIME_PATH=$work/no-pulse
scores=$XDG_CONFIG_HOME/corvalta-highscores.plist
scores_of_bob >"$scores"
start_xvfb
start_window_manager
start_game
check_wm_view "the main window" "$window" "" yes

# Submits, then leaves time for the chime of a right answer.
submit_and_wait() { submit "$1"; sleep 1; }

xdotool key Return
started=$SECONDS
sleep 1.5
grab_time "$work/time-1.ppm"
sleep 1.2
grab_time "$work/time-2.ppm"
cmp -s "$work/time-1.ppm" "$work/time-2.ppm" && fail "the countdown does not count"

# Two right answers score 2 points at Easy, and the wrong one between them nothing. In a game
# the focus goes round seven stops: the three fields, the score list, Clear Scores, Stop and
# Support (Enter waits for an answer). Caught in the list's cells, it would not come back to
# the first field, and the last answer would not score.
submit_and_wait "${problems[0]}"
read -r x y answer <<<"${problems[1]}"
submit_and_wait "$x $y $((answer + 1))"
xdotool key --delay 50 Tab Tab Tab Tab Tab Tab Tab
xdotool key --delay 50 shift+Tab shift+Tab shift+Tab shift+Tab shift+Tab shift+Tab shift+Tab
submit_and_wait "${problems[2]}"

# The game lasts 90 seconds; then the time-up signal, then the name entry for the new score.
sleep $((88 - (SECONDS - started)))
congratulations=$(await_window 'Congratulations!' 60)
check_wm_view "the name entry" "$congratulations" "$window" no over
xdotool type --delay 20 Keys
xdotool key Return
sleep 0.5
[[ -n $(visible 'Congratulations!') ]] || fail "Return closed the name entry"
xdotool key Tab space
sleep 3
[[ $(head -n2 "$scores") == $'Bob\tEasy\t5\nKeys\tEasy\t2' ]] || fail "the table: $(cat "$scores")"
end_game
echo "PASS"
