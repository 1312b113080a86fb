#!/usr/bin/env bash
# Contract: the real program keeps one game per configuration folder and saves whenever the
# desktop ends it. A second start exits 0 at once, brings the running game over the window
# that covered it and touches no stored file; the running game's player then enters a score
# beside the one of a player before, and both survive. SIGTERM, SIGHUP and a broken X
# connection each save a changed level; a start after a game killed with SIGKILL plays at
# once; named pipes and links to /dev/zero in the files' places never hold start-up.
#   usage: desktop_session_test.sh <build dir>
set -euo pipefail
source "$(dirname "$0")/x_session.sh" "$1"

export CORVALTA_SEED=11
mapfile -t problems < <(answers 1)
start_xvfb
export XDG_CONFIG_HOME=$work/config
folder=$XDG_CONFIG_HOME
mkdir -p "$folder"
settings=$folder/corvalta.plist
scores=$folder/corvalta-highscores.plist

# Tries a command every 0.1 s for up to $1 seconds.
within() {
  local seconds=$1 tries
  shift
  for tries in $(seq $((seconds * 10))); do
    "$@" && return 0
    sleep 0.1
  done
  "$@"
}
# The game's main window is above the xmessage window: xwininfo lists the top one first.
game_on_top() { xwininfo -root -children | grep -m1 -E '"(Corvalta|xmessage)"' | grep -q '"Corvalta"'; }
stamp() { stat -c '%n %i %s %Y' "$settings" "$scores"; cat "$settings" "$scores"; }
# Clicks the level button Hard: its place in the window's content, below the menu bar.
choose_hard() {
  local height
  height=$(xwininfo -id "$window" | awk '/Height:/ { print $2 }')
  xdotool mousemove --window "$window" 230 $((102 + height - 325)) click 1
}
# Starts the game on $folder with files as they are; sets game_pid and window, or fails after
# $1 seconds.
start_within() {
  "$build/app/corvalta" >"$work/game.log" 2>&1 &
  game_pid=$!
  pids+=("$game_pid")
  window=$(timeout "$1" xdotool search --sync --onlyvisible --pid "$game_pid" --name '^Corvalta$' | head -n1) ||
    fail "the main window did not appear within $1 s: $(cat "$work/game.log")"
}
# Sends signal $1 and expects status $2 and the level Hard in the settings.
ended_by() {
  kill "-$1" "$game_pid"
  wait_for_exit "$game_pid" 30
  [[ $game_status == "$2" ]] || fail "$1 ended the game with status $game_status: $(cat "$work/game.log")"
  [[ $(cat "$settings") == $'True\nHard' ]] || fail "$1 lost the level: $(cat "$settings")"
}

# A player before: Bob with 5 points.
{
  printf 'Bob\tEasy\t5\n'
  for row in $(seq 9); do printf ' \t \t0\n'; done
} >"$scores"
start_within 30

xmessage -geometry +0+0 "covering the game" 2>/dev/null &
pids+=($!)
within 10 eval '! game_on_top' || fail "the cover did not come over the game"
before=$(stamp)
timeout 10 "$build/app/corvalta" >"$work/second.log" 2>&1 || fail "the second start ended with $?: $(cat "$work/second.log")"
within 5 game_on_top || fail "the second start did not bring the running game to the front"
[[ $(stamp) == "$before" ]] || fail "the second start touched the files"
kill -0 "$game_pid" || fail "the first game ended"

# The first game plays on: one right answer, then the name at the end of the countdown.
xdotool windowfocus --sync "$window"
xdotool key Return
sleep 0.5
submit "${problems[0]}"
entry=$(timeout 120 xdotool search --sync --onlyvisible --name '^Congratulations!$' | head -n1) ||
  fail "no name entry"
xdotool mousemove --window "$entry" 130 66 click 1
xdotool type --delay 20 Alice
xdotool mousemove --window "$entry" 270 65 click 1
within 10 eval "grep -q '^Alice' '$scores'" || fail "the score was not saved: $(cat "$scores")"
[[ $(head -n2 "$scores") == $'Bob\tEasy\t5\nAlice\tEasy\t1' ]] || fail "the table: $(cat "$scores")"
choose_hard
sleep 1
ended_by TERM 0
[[ $(head -n2 "$scores") == $'Bob\tEasy\t5\nAlice\tEasy\t1' ]] || fail "the table after SIGTERM: $(cat "$scores")"

# A game killed outright leaves its lock to the kernel: the next start plays at once.
start_within 30
kill -KILL "$game_pid"
wait "$game_pid" || true
start_within 10
printf 'True\nEasy\n' >"$settings"
choose_hard
sleep 1
ended_by HUP 0

# Named pipes and links to /dev/zero in place of both files.
for kind in pipes links; do
  rm -f "$settings" "$scores"
  if [[ $kind == pipes ]]; then
    mkfifo "$settings" "$scores"
  else
    ln -s /dev/zero "$settings"
    ln -s /dev/zero "$scores"
  fi
  start_within 5
  kill -TERM "$game_pid"
  wait_for_exit "$game_pid" 30
  [[ $game_status == 0 ]] || fail "with $kind the game ended with status $game_status: $(cat "$work/game.log")"
  if [[ $kind == pipes ]]; then
    [[ -p $settings && -p $scores ]] || fail "the pipes were replaced"
  else
    [[ $(readlink "$settings") == /dev/zero && $(readlink "$scores") == /dev/zero ]] || fail "the links were replaced"
  fi
done

# Last, as it takes the X server away: the broken connection ends the game, which saves.
rm -f "$settings" "$scores"
start_within 30
choose_hard
sleep 1
kill "${pids[0]}"
wait_for_exit "$game_pid" 30
[[ $(cat "$settings") == $'True\nHard' ]] || fail "the lost display lost the level: $(cat "$settings")"
grep -q 'X11 connection broke' "$work/game.log" || fail "the game did not end by the lost display: $(cat "$work/game.log")"
echo "PASS"
