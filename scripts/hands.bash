# Hands and eyes for driving the built program with real clicks and keys: sourced by the tours.
# Expects out (folder for screenshots and values.txt), main (window) and tolvex (process) as they
# come to be known.

fail() {
  echo "guided tour: $*" >&2
  screenshot zz-failed
  exit 1
}

pause() { sleep "${1:-0.15}"; }

# The picture is taken twice until two in a row are the same: then everything is drawn.
screenshot() {
  local try
  for try in 1 2 3 4 5 6 7 8; do
    import -window root "$out/now.png" && import -window root "$out/then.png" || return 1
    cmp -s "$out/now.png" "$out/then.png" && break
    pause 0.3
  done
  mv "$out/then.png" "$out/$1.png"
  rm -f "$out/now.png"
}

window_named() { timeout 20 xdotool search --sync --onlyvisible --name "$1" | head -n 1; }

move() { xdotool mousemove --window "$1" "$2" "$3"; }
click() {  # WINDOW X Y [BUTTON]
  move "$1" "$2" "$3"
  pause 0.08
  xdotool click "${4:-1}"
  pause
}
press_keys() {
  local key
  for key in "$@"; do
    xdotool key "$key"
    pause 0.15
  done
}
drag() {  # WINDOW FROM_X FROM_Y TO_X TO_Y [BUTTON]
  local steps=12 i
  move "$1" "$2" "$3"
  pause 0.1
  xdotool mousedown "${6:-1}"
  for ((i = 1; i <= steps; ++i)); do
    move "$1" $(($2 + ($4 - $2) * i / steps)) $(($3 + ($5 - $3) * i / steps))
    sleep 0.03
  done
  xdotool mouseup "${6:-1}"
  pause 0.3
}

# The clipboard's keeper stays until the display goes, and would tell its end as an error.
to_clipboard() {  # TEXT
  printf '%s' "$1" | xclip -selection clipboard -i 2>/dev/null
}

# Pastes, since the chooser completes names while one types.
paste_into_focus() {
  to_clipboard "$1"
  press_keys ctrl+a ctrl+v
}
choose_file() {
  local chooser
  chooser=$(window_named '^Select a File') || fail "no file chooser"
  move "$chooser" 200 5
  pause 0.2
  paste_into_focus "$1"
  pause 0.2
  [ -z "${2:-}" ] || screenshot "$2"
  press_keys Return
  pause 0.3
}
read_field() {  # NAME X Y: the text of an output field, into values.txt
  local text
  to_clipboard ''
  click "$main" "$2" "$3"
  press_keys ctrl+a ctrl+c
  text=$(timeout 3 xclip -o -selection clipboard 2>/dev/null)
  printf '%s %s\n' "$1" "$text" >>"$out/values.txt"
}
wait_for_line() {  # PATTERN [SECONDS]: until the console holds it
  local i
  for ((i = 0; i < ${2:-20} * 10; ++i)); do
    grep -q -- "$1" "$out/console.txt" && return 0
    kill -0 "$tolvex" 2>/dev/null || fail "the program ended before it wrote: $1"
    sleep 0.1
  done
  fail "the console never said: $1"
}
# Ready again: a slow command keeps the events until it ends, and then they come in order.
settle() { pause "${1:-0.4}"; }
