# Shared by the tests that drive the real program under Xvfb; source it. Starts a private X
# server and stops it, and everything these helpers started, when the test exits.
#   usage: source x_session.sh <build dir>
build=$1
grab=$build/shell/corvalta_grab_window
work=$(mktemp -d)
pids=()

# Newest first, so that no client outlives its X server; what a stopped process's status says
# is no verdict on the test.
stop_all() {
  local index
  for ((index = ${#pids[@]} - 1; index >= 0; index--)); do
    kill "${pids[index]}" 2>/dev/null && wait "${pids[index]}" 2>/dev/null || true
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
#   start_xvfb [<width>x<height>]
start_xvfb() {
  Xvfb -displayfd 3 -noreset -nolisten tcp -screen 0 "${1:-1024x768}x24" 3>"$work/display" 2>"$work/xvfb.log" &
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

# A window manager, as a player's desktop has one: it frames the windows, places them, and
# says which actions it allows on each.
start_window_manager() {
  openbox --sm-disable >"$work/openbox.log" 2>&1 &
  pids+=($!)
  local tries
  for tries in $(seq 100); do
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' && return
    sleep 0.05
  done
  fail "openbox did not start: $(cat "$work/openbox.log")"
}

# Checks what the window manager is told and allows of a game's window against its record:
# the game's class and icon; transient for OWNER, or for nothing when OWNER is empty; neither
# maximised nor resized; a minimise button exactly when MINIMISE is yes. The Motif hints tell
# the buttons: openbox lets any window be minimised.
#   check_wm_view <name> <window> <owner> <minimise: yes|no>
check_wm_view() {
  local name=$1 id=$2 owner=$3 minimise=$4 props transient functions decorations
  props=$(xprop -id "$id")
  grep -qxF 'WM_CLASS(STRING) = "corvalta", "Corvalta"' <<<"$props" ||
    fail "$name: $(grep WM_CLASS <<<"$props")"
  grep -q '^_NET_WM_ICON(CARDINAL) = ' <<<"$props" || fail "$name has no icon"
  transient=$(sed -n 's/^WM_TRANSIENT_FOR(WINDOW): window id # //p' <<<"$props")
  if [[ -n $owner ]]; then
    [[ -n $transient && $((transient)) == $((owner)) ]] || fail "$name is transient for '$transient', not $owner"
  else
    [[ -z $transient ]] || fail "$name is transient for $transient"
  fi
  grep '^_NET_WM_ALLOWED_ACTIONS' <<<"$props" | grep -qE 'MAXIMIZE|RESIZE' &&
    fail "$name: $(grep '^_NET_WM_ALLOWED_ACTIONS' <<<"$props")"
  IFS=', ' read -r _ functions decorations _ < <(sed -n 's/^_MOTIF_WM_HINTS([^)]*) = //p' <<<"$props")
  (( (functions & 0x10) == 0 && (decorations & 0x40) == 0 )) || fail "$name may be maximised"
  local minimisable=no
  (( (functions & 0x8) != 0 && (decorations & 0x20) != 0 )) && minimisable=yes
  [[ $minimisable == "$minimise" ]] || fail "$name has minimise '$minimisable', not '$minimise'"
}

# The window's place on the screen: x y width height.
place_of() {
  xwininfo -id "$1" | awk '/Absolute upper-left X/ { x = $4 } /Absolute upper-left Y/ { y = $4 }
    /Width:/ { w = $2 } /Height:/ { h = $2 } END { print x, y, w, h }'
}
# Whether window $2, called $1, lies centred over the main window, or beside it.
centred_over_main() {
  local x y w h mx my mw mh
  read -r x y w h < <(place_of "$2")
  read -r mx my mw mh < <(place_of "$window")
  local dx=$(((x + w / 2) - (mx + mw / 2))) dy=$(((y + h / 2) - (my + mh / 2)))
  (( dx * dx <= 900 && dy * dy <= 900 )) || fail "$1 is not centred over the main window: $x,$y ${w}x$h"
}
beside_main() {
  local x y w h mx my mw mh
  read -r x y w h < <(place_of "$2")
  read -r mx my mw mh < <(place_of "$window")
  (( x >= mx + mw || x + w <= mx )) || fail "$1 covers the main window: $x,$y ${w}x$h"
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

# Runs the command until it succeeds, for ten seconds at most.
eventually() {
  local tries
  for tries in $(seq 200); do
    "$@" && return
    sleep 0.05
  done
  return 1
}
# The id of the visible window of that title, or nothing.
visible() { xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | head -n1 || true; }
gone() { [[ -z $(visible "$1") ]]; }
await_window() {
  timeout 30 xdotool search --sync --onlyvisible --name "^$1\$" 2>/dev/null | head -n1 ||
    fail "no window \"$1\" came up: $(cat "$work/game.log")"
}
await_gone() { eventually gone "$1" || fail "the window \"$1\" is still up"; }
# A menu's popup is one more visible window of the game's class; keys sent before it is up
# would go to the main window.
more_windows_than() { [[ $(xdotool search --onlyvisible --class corvalta | wc -l) -gt $1 ]]; }
open_file_menu() {
  local before
  before=$(xdotool search --onlyvisible --class corvalta | wc -l)
  xdotool mousemove --window "$window" 15 10 click 1
  eventually more_windows_than "$before" || fail "the File menu did not open"
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
