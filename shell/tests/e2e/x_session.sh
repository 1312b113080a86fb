# Shared by the tests that drive the real program under Xvfb; source it. Starts a private X
# server and stops it, and everything these helpers started, when the test exits.
#   usage: source x_session.sh <build dir>
build=$1
grab=$build/shell/corvalta_grab_window
work=$(mktemp -d)
pids=()

stop_all() {
  local pid
  for pid in "${pids[@]}"; do
    kill "$pid" 2>/dev/null && wait "$pid" 2>/dev/null
  done
  rm -rf "$work"
}
trap stop_all EXIT

fail() { echo "FAIL: $*" >&2; exit 1; }

# libxkbcommon-x11, which every X client of Qt loads, hands strndup a keymap name without a
# terminator: strndup allows it, ASan's strict string checks do not. The last setting wins.
export ASAN_OPTIONS="${ASAN_OPTIONS:-}:strict_string_checks=0"

# -noreset: without it every client that leaves makes the server reset, and the next one
# pays for the reconnection. -displayfd picks a free display and tells it.
start_xvfb() {
  Xvfb -displayfd 3 -noreset -nolisten tcp -screen 0 1024x768x24 3>"$work/display" 2>"$work/xvfb.log" &
  pids+=($!)
  local tries
  for tries in $(seq 100); do
    [[ -s $work/display ]] && break
    sleep 0.05
  done
  [[ -s $work/display ]] || fail "Xvfb did not start: $(cat "$work/xvfb.log")"
  export DISPLAY=:$(cat "$work/display")
  export QT_QPA_PLATFORM=xcb
}

# Starts the game with a fresh configuration folder; sets game_pid and window.
start_game() {
  export XDG_CONFIG_HOME=$work/config
  mkdir -p "$XDG_CONFIG_HOME"
  "$build/app/corvalta" >"$work/game.log" 2>&1 &
  game_pid=$!
  pids+=("$game_pid")
  window=$(timeout 60 xdotool search --sync --onlyvisible --name '^Corvalta$' | head -n1) ||
    fail "the main window did not appear: $(cat "$work/game.log")"
  xdotool windowfocus --sync "$window"
}

# A picture of part of the main window: grab_part <file> <x> <y> <width> <height>
grab_part() { "$grab" "$window" "$@" 2>/dev/null || fail "cannot grab the window"; }

# Waits up to $2 seconds for the game to end; sets game_status.
wait_for_exit() {
  local tries
  for tries in $(seq $(($2 * 20))); do
    kill -0 "$1" 2>/dev/null || break
    sleep 0.05
  done
  kill -0 "$1" 2>/dev/null && fail "the game did not end"
  game_status=0
  wait "$1" || game_status=$?
}

# Types the three fields of a problem, with Tab between them, and submits with Return:
# submit "X Y ANSWER"
submit() {
  local x y answer
  read -r x y answer <<<"$1"
  xdotool type --delay 20 "$x"
  xdotool key Tab
  xdotool type --delay 20 "$y"
  xdotool key Tab
  xdotool type --delay 20 "$answer"
  xdotool key Return
}

# The answers to the game's problems at Easy: the driver draws the same problems from the same
# seed. Prints "X Y MyAnswer" per line.
answers() {
  "$build/tools/corvalta-driver" --seed "$CORVALTA_SEED" --csv Easy "$1" 2>/dev/null |
    tail -n +2 | awk -F, '{ print $6, $7, $8 }'
}
