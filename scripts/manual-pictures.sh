#!/usr/bin/env bash
# Takes the pictures of the user's manual and of the README from the running program, in English, on a display of
# its own: scripts/manual-pictures.sh [APPLICATION_FOLDER]. Needs scripts/install-packages.sh pictures.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
app="$(cd "${1:-$root/build/dev/Tornvale}" && pwd)"
pictures="$root/docs/manual/pictures"
work="$(mktemp -d)"
started=()

cleanup() {
  for pid in "${started[@]}"; do
    kill "$pid" 2>/dev/null || true
  done
  rm -rf "$work"
}
trap cleanup EXIT

# --- the program on its display ---

start_display() {
  Xvfb -displayfd 3 -screen 0 1600x1000x24 +extension GLX 3>"$work/display" 2>/dev/null &
  started+=($!)
  for _ in $(seq 50); do
    [ -s "$work/display" ] && break
    sleep 0.1
  done
  DISPLAY=":$(cat "$work/display")"
  export DISPLAY
  openbox >/dev/null 2>&1 &
  started+=($!)
  sleep 1
}

# A copy with the settings and tools as shipped; a Tornvale that is open elsewhere does not disturb it.
start_program() {
  cp -r "$app" "$work/Tornvale"
  rm -f "$work/Tornvale/history.ini"
  cp "$root/installation/data.ini" "$root/installation/toollib.json" "$work/Tornvale/"
  local alone=()
  unshare --ipc true 2>/dev/null && alone=(unshare --ipc)
  TORNVALE_DEMONSTRATION=jobs/Demonstration.tornvale "${alone[@]}" "$work/Tornvale/Tornvale" \
    >"$work/output" 2>&1 &
  started+=($!)
  window '^Tornvale - ' >/dev/null
  window '^Playback$' >/dev/null
  sleep 5
}

# The window of that title, when it is on the screen.
window() {
  local id
  for _ in $(seq 100); do
    id="$(xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -n 1)" || true
    if [ -n "$id" ]; then
      echo "$id"
      return
    fi
    sleep 0.3
  done
  echo "No window called $1" >&2
  return 1
}

keys() {
  for key in "$@"; do
    xdotool key "$key"
    sleep 0.15
  done
}

to_main() {
  xdotool windowactivate --sync "$(window '^Tornvale - ')"
  sleep 0.3
}

# Tabs are counted from the last one, so that a new one in front changes nothing.
tab_from_last() {
  to_main
  xdotool mousemove 12 150
  xdotool click --repeat 12 --delay 60 5
  [ "$1" -eq 0 ] || xdotool click --repeat "$1" --delay 60 4
  sleep 0.6
}

reduce() {
  convert "$1" -strip -resize "$2>" +dither -colors 255 -define png:compression-level=9 "PNG8:$3"
}

shoot_window() {
  import -frame -window "$(window "$1")" "$work/shot.png"
  reduce "$work/shot.png" 1200x "$pictures/$2.png"
}

# The dock with the tabs, left of the 3D view.
shoot_dock() {
  import -window root "$work/shot.png"
  convert "$work/shot.png" -crop "${2:-540x640}+0+0" +repage "$work/dock.png"
  reduce "$work/dock.png" 1200x "$pictures/$1.png"
}

close_window() {
  xdotool windowactivate --sync "$(window "$1")"
  keys Escape
  sleep 0.5
}

# --- the pictures ---

main_window() {
  to_main
  local playback x y
  playback="$(window '^Playback$')"
  eval "$(xdotool getwindowgeometry --shell "$playback" | grep '^[XY]=')"
  x=$((X + 30))
  y=$((Y + 30))
  xdotool mousemove "$x" "$y" click 1
  sleep 12
  xdotool mousemove "$x" "$y" click 1
  sleep 1.5
  import -window root "$work/main.png"
  reduce "$work/main.png" 1200x "$pictures/main-window.png"
  reduce "$work/main.png" 1600x "$root/docs/pictures/main-window.png"
  shoot_window '^Playback$' playback
  # It stays above all windows, and would stand in their pictures.
  xdotool windowactivate --sync "$playback"
  keys alt+F4
  sleep 1
}

tools() {
  to_main
  keys alt+o t Home Down
  shoot_dock tools
  keys F2
  window '^Edit the tool$' >/dev/null
  sleep 2
  shoot_window '^Edit the tool$' tool-editor
  close_window '^Edit the tool$'
  to_main
  keys alt+o t End Home Down Down Down Down Down Down Down Down Down Down ctrl+p
  window '^Preview - ' >/dev/null
  sleep 2
  shoot_window '^Preview - ' tool-preview
  close_window '^Preview - '
}

tabs() {
  tab_from_last 0
  shoot_dock job-information 540x520
  tab_from_last 1
  shoot_dock spindles 540x520
}

machine_tree() {
  to_main
  keys alt+s a
  tab_from_last 2
  shoot_dock machine-tree 540x720
  xdotool mousemove 200 300 click 1
  keys Home Down Return
  xdotool windowactivate --sync "$(window '^X$')"
  keys Tab space
  window '^Move axis X by hand$' >/dev/null
  sleep 1
  shoot_window '^Move axis X by hand$' axis-panel
}

# The programs of the demonstration job: the tree, the editor of its first item, the left table's header and tail.
programs() {
  tab_from_last 3
  xdotool mousemove 110 160 click 1
  keys Home Down
  shoot_dock programs 540x480
  keys Menu
  sleep 0.5
  keys Up Return
  window '^Header and tail$' >/dev/null
  sleep 1
  shoot_window '^Header and tail$' header-tail
  close_window '^Header and tail$'
  to_main
  keys Home Down Down Return
  window '^Edit the ISO code$' >/dev/null
  sleep 1
  shoot_window '^Edit the ISO code$' iso-editor
  close_window '^Edit the ISO code$'
}

mkdir -p "$pictures" "$root/docs/pictures"
start_display
start_program
main_window
tools
programs
tabs
machine_tree
du -ch "$pictures"/*.png "$root"/docs/pictures/*.png | tail -n 1
