# Shared by the tests that drive the real program under Xvfb; source it. Starts a private X
# server and stops it, and everything these helpers started, when the test exits.
#   usage: source x_session.sh <build dir>
build=$1
work=$(mktemp -d)
pids=()
export XDG_CONFIG_HOME=$work/config
mkdir -p "$XDG_CONFIG_HOME"

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

# Runs the command until it succeeds, for $1 seconds at most: within <seconds> <command...>
within() {
  local tries
  for tries in $(seq $(($1 * 20))); do
    "${@:2}" && return
    sleep 0.05
  done
  return 1
}

# -noreset: without it every client that leaves makes the server reset, and the next one
# pays for the reconnection. -displayfd picks a free display and tells it.
#   start_xvfb [<width>x<height>]
start_xvfb() {
  Xvfb -displayfd 3 -noreset -nolisten tcp -screen 0 "${1:-1024x768}x24" 3>"$work/display" 2>"$work/xvfb.log" &
  pids+=($!)
  within 5 test -s "$work/display" || fail "Xvfb did not start: $(cat "$work/xvfb.log")"
  export DISPLAY=:$(cat "$work/display")
  export QT_QPA_PLATFORM=xcb
}

# A window manager, as a player's desktop has one: it frames the windows, places them, and
# says which actions it allows on each.
window_manager_up() { xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; }
start_window_manager() {
  openbox --sm-disable >"$work/openbox.log" 2>&1 &
  pids+=($!)
  within 5 window_manager_up || fail "openbox did not start: $(cat "$work/openbox.log")"
}

# The window's place on the screen: x y width height.
place_of() {
  xwininfo -id "$1" | awk '/Absolute upper-left X/ { x = $4 } /Absolute upper-left Y/ { y = $4 }
    /Width:/ { w = $2 } /Height:/ { h = $2 } END { print x, y, w, h }'
}

# Checks what the window manager is told and allows of a game's window against its record:
# the game's class and icon; transient for OWNER, or for nothing when OWNER is empty; neither
# maximised nor resized; a minimise button exactly when MINIMISE is yes; and, when PLACE is
# given, centred over the main window or beside it. The Motif hints tell the buttons: openbox
# lets any window be minimised.
#   check_wm_view <name> <window> <owner> <minimise: yes|no> [over|beside]
check_wm_view() {
  local name=$1 id=$2 owner=$3 minimise=$4 place=${5:-} props transient functions decorations
  props=$(xprop -id "$id")
  grep -qxF 'WM_CLASS(STRING) = "corvalta", "Corvalta"' <<<"$props" ||
    fail "$name: $(grep WM_CLASS <<<"$props")"
  grep -q '^_NET_WM_ICON(CARDINAL) = ' <<<"$props" || fail "$name has no icon"
  transient=$(sed -n 's/^WM_TRANSIENT_FOR(WINDOW): window id # //p' <<<"$props")
  (( ${transient:-0} == ${owner:-0} )) || fail "$name is transient for '$transient', not '$owner'"
  grep '^_NET_WM_ALLOWED_ACTIONS' <<<"$props" | grep -qE 'MAXIMIZE|RESIZE' &&
    fail "$name: $(grep '^_NET_WM_ALLOWED_ACTIONS' <<<"$props")"
  IFS=', ' read -r _ functions decorations _ < <(sed -n 's/^_MOTIF_WM_HINTS([^)]*) = //p' <<<"$props")
  (( (functions & 0x10) == 0 && (decorations & 0x40) == 0 )) || fail "$name may be maximised"
  local minimisable=no
  (( (functions & 0x8) != 0 && (decorations & 0x20) != 0 )) && minimisable=yes
  [[ $minimisable == "$minimise" ]] || fail "$name has minimise '$minimisable', not '$minimise'"

  [[ -n $place ]] || return 0
  local x y w h mx my mw mh
  read -r x y w h < <(place_of "$id")
  read -r mx my mw mh < <(place_of "$window")
  local dx=$(((x + w / 2) - (mx + mw / 2))) dy=$(((y + h / 2) - (my + mh / 2)))
  if [[ $place == over ]]; then
    (( dx * dx <= 900 && dy * dy <= 900 )) || fail "$name is not centred over the main window: $x,$y ${w}x$h"
  else
    (( x >= mx + mw || x + w <= mx )) || fail "$name covers the main window: $x,$y ${w}x$h"
  fi
}

# Starts the game on the files in $XDG_CONFIG_HOME as they are; sets game_pid and window, or
# fails when the main window is not up within $1 seconds (60 unless given).
start_game() {
  "$build/app/corvalta" >"$work/game.log" 2>&1 &
  game_pid=$!
  pids+=("$game_pid")
  window=$(timeout "${1:-60}" xdotool search --sync --onlyvisible --pid "$game_pid" --name '^Corvalta$' | head -n1) ||
    fail "the main window did not appear within ${1:-60} s: $(cat "$work/game.log")"
  xdotool windowfocus --sync "$window"
}

# Waits up to 30 seconds for the game to end; sets game_status.
game_ended() { ! kill -0 "$game_pid" 2>/dev/null; }
wait_for_exit() {
  within 30 game_ended || fail "the game did not end"
  game_status=0
  wait "$game_pid" || game_status=$?
}
# Ends the game with the signal $1, or with Ctrl+Q when none is given, and fails unless it ends
# with status 0, which holds the sanitizers' verdict on all it did.
end_game() {
  if [[ -n ${1:-} ]]; then
    kill "-$1" "$game_pid"
  else
    xdotool windowfocus --sync "$window" key ctrl+q
  fi
  wait_for_exit
  [[ $game_status == 0 ]] || fail "the game ended with status $game_status: $(cat "$work/game.log")"
}

# The id of the visible window of that title, or nothing.
visible() { xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | head -n1 || true; }
gone() { [[ -z $(visible "$1") ]]; }
# Waits up to $2 seconds (30 unless given) for the window of title $1 and prints its id.
await_window() {
  timeout "${2:-30}" xdotool search --sync --onlyvisible --name "^$1\$" 2>/dev/null | head -n1 ||
    fail "no window \"$1\" came up: $(cat "$work/game.log")"
}
await_gone() { within 10 gone "$1" || fail "the window \"$1\" is still up"; }

# Opens the File menu of the main window and presses the keys given there. The menu's popup is
# one more visible window of the game's class; keys sent before it is up would go to the main
# window; each next key waits for the menu that the last one opened.
more_windows_than() { [[ $(xdotool search --onlyvisible --class corvalta | wc -l) -gt $1 ]]; }
choose_in_menus() {
  local before
  before=$(xdotool search --onlyvisible --class corvalta | wc -l)
  xdotool windowfocus --sync "$window" mousemove --window "$window" 15 10 click 1
  within 10 more_windows_than "$before" || fail "the File menu did not open"
  xdotool key --delay 100 "$@"
}

# A picture of the countdown in the main window (menu bar included), the same bytes for the
# same pixels: grab_time <file>
grab_time() {
  xwd -silent -id "$window" | xwdtopnm 2>/dev/null | pamcut 200 230 130 100 >"$1" || fail "cannot grab the window"
}

# Types the three fields of a problem, with Tab between them, and submits with Return (a
# carriage return; xdotool types a line feed as Linefeed): submit "X Y ANSWER"
submit() { xdotool type --delay 20 "${1// /$'\t'}"$'\r'; }

# A score table with one player before: Bob with 5 points at Easy.
scores_of_bob() {
  printf 'Bob\tEasy\t5\n'
  for row in $(seq 9); do printf ' \t \t0\n'; done
}

# The answers to the game's first problems at a level, as the driver draws the same problems
# from the same seed: answers <level> <count> prints "X Y MyAnswer" per line.
answers() {
  "$build/tools/corvalta-driver" --seed "$CORVALTA_SEED" --csv "$1" "$2" 2>/dev/null |
    tail -n +2 | awk -F, '{ print $6, $7, $8 }'
}
