#!/usr/bin/env bash
# Contract: the real program keeps one game per configuration folder and saves whenever the
# desktop ends it. A second start exits 0 at once, brings the running game over the window
# that covered it and touches no stored file, and the running game plays on. SIGTERM, SIGHUP
# and a broken X connection each save a changed level, SIGTERM with the table as it was; a
# start after a game killed with SIGKILL plays at once; named pipes and links to /dev/zero in
# the files' places never hold start-up.
#   usage: desktop_session_test.sh <build dir>
set -euo pipefail
source "$(dirname "$0")/x_session.sh" "$1"

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

# A player before: Bob with 5 points.
{
  printf 'Bob\tEasy\t5\n'
  for row in $(seq 9); do printf ' \t \t0\n'; done
} >"$scores"
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

# Named pipes and links to /dev/zero in place of both files: the game starts on defaults and
# leaves them as they are.
for make in mkfifo 'ln -s /dev/zero'; do
  rm -f "$settings" "$scores"
  $make "$settings"
  $make "$scores"
  before=$(stat -c '%F %N' "$settings" "$scores")
  start_game 5
  end_game TERM
  [[ $(stat -c '%F %N' "$settings" "$scores") == "$before" ]] || fail "$make: the files were replaced"
done

# Last, as it takes the X server away: the broken connection ends the game, which saves.
rm -f "$settings" "$scores"
start_game 30
choose_hard
kill "${pids[0]}"
wait_for_exit
[[ $(cat "$settings") == $'True\nHard' ]] || fail "the lost display lost the level: $(cat "$settings")"
grep -q 'X11 connection broke' "$work/game.log" || fail "the game did not end by the lost display: $(cat "$work/game.log")"
echo "PASS"
