#!/usr/bin/env bash
# Contract: the real program, built to ask 127.0.0.1:<port> for its manifest, under X with
# nginx serving deploy/ as it stands: the menu's "Check Now" shows selfTest, its default button
# "Check for Updates" brings up updateWindow and the prompt for the sample manifest. The
# download button hands the manifest's download address to the browser and updateWindow
# closes; "Go to Website" hands the server's home page to the browser and updateWindow stays
# until its Cancel. A stand-in browser first on PATH records what it gets (Qt opens addresses
# with xdg-open).
#   usage: update_check_test.sh <build dir> <source dir> <port>
set -euo pipefail
source "$2/shell/tests/e2e/x_session.sh" "$1"
source_dir=$2
port=$3

serve_deploy() {
  local home=$work/nginx
  mkdir -p "$home"
  cat >"$home/nginx.conf" <<CONF
daemon off; master_process off; worker_processes 1;
pid $home/nginx.pid; error_log $home/error.log warn;
events { worker_connections 64; }
http {
  access_log off;
  client_body_temp_path $home/body; proxy_temp_path $home/proxy;
  fastcgi_temp_path $home/fastcgi; uwsgi_temp_path $home/uwsgi; scgi_temp_path $home/scgi;
  server {
    listen 127.0.0.1:$port;
    root $source_dir/deploy/www;
    include $source_dir/deploy/nginx/corvalta-updates.conf;
  }
}
CONF
  nginx -p "$home" -e "$home/error.log" -c "$home/nginx.conf" &
  pids+=($!)
  within 10 curl -sf -o /dev/null "http://127.0.0.1:$port/Updates/corvalta.xml" ||
    fail "nginx did not serve the manifest on port $port: $(cat "$home/error.log")"
}

# Fails unless the browser got exactly the addresses given, in order, within ten seconds.
browser_got() { [[ $(cat "$work/browser.log") == "$(printf '%s\n' "$@")" ]]; }
expect_browser() { within 10 browser_got "$@" || fail "the browser got: $(cat "$work/browser.log")"; }

# From the main window's menu bar to the prompt: File is the first title; three steps right is
# "Check For Update", whose first and only entry is "Check Now".
check_for_updates() {
  choose_in_menus Right Right Right Return
  xdotool windowfocus --sync "$(await_window "Self Test")" key Return
  prompt=$(await_window "New version available!")
  [[ -n $(visible "Update") ]] || fail "updateWindow is not up behind the prompt"
  xdotool windowfocus --sync "$prompt"
}

download=$(sed -n 's:.*<DownloadURLOSX>\(.*\)</DownloadURLOSX>.*:\1:p' \
  "$source_dir/deploy/www/Updates/corvalta.xml")
[[ -n $download ]] || fail "the sample manifest names no download"

mkdir -p "$work/bin"
: >"$work/browser.log"
printf '#!/bin/sh\nprintf "%%s\\n" "$*" >>"%s"\n' "$work/browser.log" >"$work/bin/xdg-open"
chmod +x "$work/bin/xdg-open"
export PATH=$work/bin:$PATH

serve_deploy
start_xvfb
start_game

# The download button is the prompt's default.
check_for_updates
xdotool key Return
expect_browser "$download"
await_gone "Update"

# "Go to Website" follows the default button in the prompt's order of focus.
check_for_updates
xdotool key Tab space
expect_browser "$download" "http://127.0.0.1:$port/"
sleep 0.5
update=$(visible "Update")
[[ -n $update ]] || fail "updateWindow closed after Go to Website"
xdotool windowfocus --sync "$update" key Return
await_gone "Update"
browser_got "$download" "http://127.0.0.1:$port/" || fail "the browser got more: $(cat "$work/browser.log")"
end_game
echo "PASS"
