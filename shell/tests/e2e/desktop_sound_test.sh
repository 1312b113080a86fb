#!/usr/bin/env bash
# Contract: with a sound server, the game loads no SDL2 and opens no stream before its first
# sound, a right answer puts the chime on the server's output and a wrong answer puts nothing
# there, and the stream is closed again once the sounds have stopped. (desktop_game_test.sh
# plays a whole game with no sound server at all.)
#   usage: desktop_sound_test.sh <build dir>
set -euo pipefail
source "$(dirname "$0")/x_session.sh" "$1"

export CORVALTA_SEED=23
mapfile -t problems < <(answers 2)
start_xvfb

# The loudness of a recording of 16-bit mono samples, as sox measures it (0 to 1).
loudness() {
  sox -t raw -r 44100 -e signed -b 16 -c 1 "$1" -n stat 2>&1 | awk '/^RMS +amplitude/ { print $3 }'
}

# Records the server's output while a problem is answered: record <problem line> <file>
record() {
  parec --device=corvalta_test.monitor --format=s16le --rate=44100 --channels=1 --raw >"$2" &
  local recorder=$!
  sleep 0.5
  submit "$1"
  sleep 1.5
  kill "$recorder"
  wait "$recorder" 2>/dev/null || true
}
server_up() { pactl info >/dev/null 2>&1; }
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
within 10 server_up || fail "the sound server did not start: $(cat "$pulse/log")"

start_game
grep -q libSDL2 "/proc/$game_pid/maps" && fail "SDL2 was loaded at start-up"
no_stream || fail "a stream was opened at start-up"
xdotool key Return
sleep 1
read -r x y answer <<<"${problems[0]}"
record "$x $y $((answer + 1))" "$work/wrong.raw"
record "${problems[1]}" "$work/right.raw"
wrong=$(loudness "$work/wrong.raw")
right=$(loudness "$work/right.raw")
echo "loudness: wrong answer $wrong, right answer $right"
awk -v level="$wrong" 'BEGIN { exit !(level < 0.001) }' || fail "a wrong answer made a sound"
awk -v level="$right" 'BEGIN { exit !(level > 0.01) }' || fail "the right answer put no sound out"
# An idle game keeps no stream open on the server (and no audio thread awake).
within 15 no_stream || fail "the stream was still open 15 s after the last sound"
end_game
echo "PASS"
