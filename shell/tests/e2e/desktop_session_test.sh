#!/usr/bin/env bash
# Contract: the real program keeps one game per configuration folder and saves whenever the
# desktop ends it. A second start exits 0 at once, brings the running game over the window
# that covered it and touches no stored file, and the running game plays on. SIGTERM, SIGHUP
# and a broken X connection each save a changed level, SIGTERM with the table as it was; a
# start after a game killed with SIGKILL plays at once. With a sound server, the game loads no
# SDL2 and opens no stream before its first sound, a right answer puts the chime on the
# server's output, and the stream is closed again once the sounds have stopped. (Pipes and
# links to devices in the files' places are the game tests' own, in process.)
#   usage: desktop_session_test.sh <build dir>
set -euo pipefail
source "$(dirname "$0")/x_session.sh" "$1"

export CORVALTA_SEED=23
start_xvfb
settings=$XDG_CONFIG_HOME/corvalta.plist
scores=$XDG_CONFIG_HOME/corvalta-highscores.plist

# The game's main window is above the xmessage window: xwininfo lists the top one first.
game_on_top() { xwininfo -root -children | grep -m1 -E '"(Corvalta|xmessage)"' | grep -q '"Corvalta"'; }
covered() { ! game_on_top; }
stamp() { stat -c '%n %i %s %Y' "$settings" "$scores"; cat "$settings" "$scores"; }
# Clicks the level button Hard (its place in the window's content, below the menu bar), and
# gives the game a moment to take it.
choose_hard() {
  local height
  height=$(xwininfo -id "$window" | awk '/Height:/ { print $2 }')
  xdotool mousemove --window "$window" 230 $((102 + height - 325)) click 1 sleep 1
}
ended_by() {
  end_game "$1"
  [[ $(cat "$settings") == $'True\nHard' ]] || fail "$1 lost the level: $(cat "$settings")"
}
no_stream() { [[ -z $(pactl list short sink-inputs) ]]; }

# A sound server of our own whose one output is a null sink. Without norewinds=1 the sink's
# monitor loses the start of short streams.
pulse=$work/pulse
mkdir -p "$pulse"
cat >"$pulse/default.pa" <<PA
load-module module-null-sink sink_name=corvalta_test norewinds=1
load-module module-native-protocol-unix socket=$pulse/native auth-anonymous=1
set-default-sink corvalta_test
PA
HOME=$pulse PULSE_RUNTIME_PATH=$pulse pulseaudio -n -F "$pulse/default.pa" --daemonize=no \
  --exit-idle-time=-1 --log-target=stderr 2>"$pulse/log" &
pids+=($!)
export PULSE_SERVER=unix:$pulse/native
within 10 pactl info >/dev/null 2>&1 || fail "the sound server did not start: $(cat "$pulse/log")"

scores_of_bob >"$scores"
start_game 30

xmessage -geometry +0+0 "covering the game" 2>/dev/null &
pids+=($!)
within 10 covered || fail "the cover did not come over the game"
before=$(stamp)
timeout 10 "$build/app/corvalta" >"$work/second.log" 2>&1 || fail "the second start ended with $?: $(cat "$work/second.log")"
within 5 game_on_top || fail "the second start did not bring the running game to the front"
[[ $(stamp) == "$before" ]] || fail "the second start touched the files"
kill -0 "$game_pid" || fail "the first game ended"

# The first game plays on, and saves what changed when the desktop ends it.
choose_hard
ended_by TERM
[[ $(head -n1 "$scores") == $'Bob\tEasy\t5' ]] || fail "the table after SIGTERM: $(cat "$scores")"

# A game killed outright leaves its lock to the kernel: the next start plays at once.
start_game 30
kill -KILL "$game_pid"
wait "$game_pid" || true
start_game 10
printf 'True\nEasy\n' >"$settings"
choose_hard
ended_by HUP

# A game at Hard whose right answer is heard on the server's output.
rm -f "$settings" "$scores"
start_game 30
grep -q libSDL2 "/proc/$game_pid/maps" && fail "SDL2 was loaded at start-up"
no_stream || fail "a stream was opened at start-up"
choose_hard
xdotool key Return
parec --device=corvalta_test.monitor --format=s16le --rate=44100 --channels=1 --raw >"$work/right.raw" &
recorder=$!
sleep 1
submit "$(answers Hard 1)"
sleep 1.5
kill "$recorder"
wait "$recorder" 2>/dev/null || true
# Its loudness, as sox measures it (0 to 1).
right=$(sox -t raw -r 44100 -e signed -b 16 -c 1 "$work/right.raw" -n stat 2>&1 |
  awk '/^RMS +amplitude/ { print $3 }')
awk -v level="$right" 'BEGIN { exit !(level > 0.01) }' || fail "the right answer put no sound out: $right"
# An idle game keeps no stream open on the server (and no audio thread awake).
within 15 no_stream || fail "the stream was still open 15 s after the last sound"

# Last, as it takes the X server away: the broken connection ends the game, which saves.
kill "${pids[0]}"
wait_for_exit
[[ $(cat "$settings") == $'True\nHard' ]] || fail "the lost display lost the level: $(cat "$settings")"
grep -q 'X11 connection broke' "$work/game.log" || fail "the game did not end by the lost display: $(cat "$work/game.log")"
echo "PASS"
