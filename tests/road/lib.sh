# What the roads share: a display of their own, programs and their windows, keys, checks from
# outside. Sourced by tests/road/road. ROAD_SCREEN=1366x768 and QT_SCALE_FACTOR=2 show the windows
# as other shops have them.

program_folder=
out=
grounds=
work=
road=
faults=0
declare -a started=()
screen=${ROAD_SCREEN:-1024x740}
scale=${QT_SCALE_FACTOR:-1}

# --- display ---------------------------------------------------------------------------------

start_display() {
    Xvfb -displayfd 3 -screen 0 "${screen}x24" -nolisten tcp 3>"$grounds/display" >"$grounds/xvfb.log" 2>&1 &
    started+=($!)
    wait_for "a display" 60 test -s "$grounds/display"
    DISPLAY=":$(<"$grounds/display")"
    export DISPLAY
    export HOME="$grounds/home" XDG_CONFIG_HOME="$grounds/home/.config" XDG_RUNTIME_DIR="$grounds/run"
    export LC_ALL=C.UTF-8 QT_QPA_PLATFORM=xcb QT_ACCESSIBILITY=0
    mkdir -p "$HOME/Documents" "$XDG_CONFIG_HOME"
    mkdir -m 700 "$XDG_RUNTIME_DIR"
    openbox --sm-disable >"$grounds/openbox.log" 2>&1 &
    started+=($!)
    wait_for "a window manager" 60 window_manager_runs
    # The shop's keyboard. A key that the layout lacks is lent one for a moment, which a busy program
    # looks up too late.
    setxkbmap -model abnt2 -layout br
    pause
}

window_manager_runs() { xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 0x; }

stop_everything() {
    local pid
    for pid in "${started[@]}"; do
        kill "$pid" 2>/dev/null || true
    done
    for pid in "${started[@]}"; do
        wait "$pid" 2>/dev/null || true
    done
    rm -rf "$grounds"
}

# picture PATTERN NAME: of one window, without its frame.
picture() {
    arrive "$1"
    # Whatever is still being drawn.
    sleep 0.3
    mkdir -p "$out/windows"
    import -window "$(window "$1")" +dither -colors 128 "png8:$out/windows/$2.png"
}
shot() { import -window root "$out/$road-$1.png"; }

# --- waiting and checking --------------------------------------------------------------------

# wait_for WHAT SECONDS COMMAND...: polls; a road cannot go on where this fails.
wait_for() {
    local what=$1 deadline=$((SECONDS + $2))
    shift 2
    until "$@" >/dev/null 2>&1; do
        if ((SECONDS >= deadline)); then
            give_up "waited in vain for $what"
        fi
        sleep 0.05
    done
}

give_up() {
    echo "FAULT  $1"
    if [[ -n ${DISPLAY:-} ]]; then
        shot fault || true
        echo "windows:"
        xdotool search --onlyvisible --name . getwindowname %@ 2>/dev/null | sort -u | sed 's/^/  /'
    fi
    tail -n 5 "$grounds"/*.log "$work"/*/output 2>/dev/null || true
    exit 1
}

# expect_whole WHAT PATTERN: the window lies within the screen.
expect_whole() {
    local left right top bottom
    eval "$(xwininfo -id "$(window "$2")" -stats | awk '
        /Absolute upper-left X/ { print "left=" $NF } /Absolute upper-left Y/ { print "top=" $NF }
        /Width:/ { print "right=$((left + " $NF "))" } /Height:/ { print "bottom=$((top + " $NF "))" }')"
    expect "$1 is on the screen" \
        $((left >= 0 && top >= 0 && right <= ${screen%x*} && bottom <= ${screen#*x})) 1
}

expect() {
    if [[ $2 == "$3" ]]; then
        echo "ok     $1"
    else
        echo "FAULT  $1: got '$2' instead of '$3'"
        faults=$((faults + 1))
    fi
}

query() { sqlite3 -cmd '.timeout 5000' "$1" "$2"; }

# expect_rows WHAT FILE QUERY TEXT: polls until the file answers so.
expect_rows() {
    local deadline=$((SECONDS + 15)) found
    while found=$(query "$2" "$3"); [[ $found != "$4" ]]; do
        if ((SECONDS >= deadline)); then
            break
        fi
        sleep 0.05
    done
    expect "$1" "$found" "$4"
}

# --- programs and windows --------------------------------------------------------------------

# lay_down NAME [MAIN-FILE]: a new installation; with a second argument it uses another one's file.
lay_down() {
    copy_program "$1"
    "$work/$1/vorbelo-setup" >/dev/null
    local folder="$work/$1"
    if [[ -n ${2:-} ]]; then
        sed -i "s|^Caminho=.*|Caminho=$2\r|" "$folder/Banco.ini"
    fi
    set_ini "$1" Configurar Titulo "Oficina $1"
}

copy_program() {
    mkdir -p "$work/$1"
    cp "$program_folder/vorbelo" "$program_folder/vorbelo-setup" "$work/$1"
}

# set_ini NAME SECTION KEY VALUE
set_ini() {
    local file="$work/$1/Banco.ini"
    sed -i "/^$3=/d" "$file"
    sed -i "s|^\[$2\]\r\?\$|[$2]\r\n$3=$4\r|" "$file"
}

# start NAME: runs the program of that installation; it is then the one in use.
declare -A pid_of=()
start() {
    "$work/$1/vorbelo" >"$work/$1/output" 2>&1 &
    pid_of[$1]=$!
    started+=($!)
    use "$1"
    arrive 'CGC|CPF|SISTEMA VORBELO'
}

# use NAME: keys and looks go to this program from now on.
use() {
    name=$1
    pid=${pid_of[$1]}
}

ended() { ! kill -0 "$pid" 2>/dev/null; }

# expect_end WHAT: the program goes, and says that all is well.
expect_end() {
    wait_for "the end of the program" 60 ended
    local status=0
    wait "$pid" || status=$?
    expect "$1" "$status" 0
}

window() { xdotool search --onlyvisible --all --pid "$pid" --name "$1" 2>/dev/null | tail -1; }
window_there() { [[ -n $(window "$1") ]]; }
window_gone() { [[ -z $(window "$1") ]]; }
window_active() { [[ $(xdotool getactivewindow 2>/dev/null) == "$(window "$1")" ]]; }

# arrive PATTERN: waits until the window with that title has the keyboard.
arrive() {
    wait_for "the window '$1'" 60 window_there "$1"
    if ! window_active "$1"; then
        xdotool windowactivate "$(window "$1")" 2>/dev/null || true
    fi
    wait_for "the keyboard in '$1'" 60 window_active "$1"
}

leave() { wait_for "the end of the window '$1'" 60 window_gone "$1"; }

# --- keys and mouse ---------------------------------------------------------------------------

# A typist's pace: Enter moves on through the queue, so what follows must not overtake it.
pause() { sleep 0.06; }

key() {
    local each
    for each in "$@"; do
        xdotool key "$each"
        pause
    done
}

times() {
    local i
    for ((i = 0; i < $1; ++i)); do
        key "$2"
    done
}

text() {
    xdotool type --delay 15 -- "$1"
    pause
}

# fill TEXT...: each into its box, Enter behind it; "" leaves a box as it is.
fill() {
    local each
    for each in "$@"; do
        if [[ -n $each ]]; then
            text "$each"
        fi
        key Return
    done
}

# retype TEXT: over what the box holds.
retype() {
    key ctrl+a
    text "$1"
}

# click_in PATTERN X Y [COUNT]: in pixels from the window's top left.
click_in() {
    xdotool mousemove --window "$(window "$1")" "$2" "$3" click --repeat "${4:-1}" --delay 80 1
    pause
}

# bands PATTERN: the upper edges of the rows that are lit in the window's grids, from the top. The
# frame of the focus has the same colour, and is thinner.
bands() {
    import -window "$(window "$1")" -crop "1x2000+$((14 * scale))+0" +repage -depth 8 txt:- |
        awk -F'[,:]' 'toupper($0) ~ /#2B6CB0/ {
            if ($2 != last + 1) first = $2
            last = $2
            if (last - first == 9) print first
        }'
}

# click_row PATTERN TOP ROW [COUNT]: the row of the grid whose first row stands at TOP.
click_row() { click_in "$1" $((120 * scale)) $(($2 + ($3 - 1) * row_height + row_height / 2)) "${4:-1}"; }
row_height=$((21 * scale))
# Where the first rows stand, which are not lit before one is chosen.
first_client=$((86 * scale))
first_part=$((106 * scale))
first_of_catalogue=$((104 * scale))
first_of_list=$((432 * scale))

# answer TITLE KEY: a box, once it is up; the key ends it.
answer() {
    arrive "$1"
    key "$2"
    leave "$1"
}

# --- paper ------------------------------------------------------------------------------------

# print_to NAME: goes on with the print dialog that is up, to a PDF of that name in the results.
print_to() {
    local file="$out/$road-$1.pdf"
    rm -f "$file"
    arrive '^Imprimir$'
    key alt+a
    retype "$file"
    key Return
    leave '^Imprimir$'
    wait_for "the paper $file" 60 test -s "$file"
}

# expect_paper NAME TEXT...: each stands on the paper.
expect_paper() {
    local file="$out/$road-$1.pdf" each words
    words=$(pdftotext -layout "$file" -)
    shift
    for each in "$@"; do
        expect "paper tells '$each'" "$(grep -cF -- "$each" <<<"$words" | sed 's/[1-9][0-9]*/yes/')" yes
    done
}

# --- the main window --------------------------------------------------------------------------

# The tab order of the main window, as designed; all of it is alive once the Administrador is in.
mapfile -t tab_order < <(grep -o '<tabstop>[A-Za-z0-9_]*' "$here/../../src/core/Form1principal.ui" |
    cut -d'>' -f2)
declare -A focus_of=()

place_of() {
    local i
    for i in "${!tab_order[@]}"; do
        if [[ ${tab_order[i]} == "$1" ]]; then
            echo "$i"
        fi
    done
}

# focus_main CONTROL: walks there by Tab or Shift+Tab.
focus_main() {
    local steps=$(($(place_of "$1") - $(place_of "${focus_of[$name]}")))
    if ((steps > 0)); then
        times "$steps" Tab
    elif ((steps < 0)); then
        times "$((-steps))" shift+Tab
    fi
    focus_of[$name]=$1
}

press_main() {
    focus_main "$1"
    key space
}

# enter_as_administrator [WRONG-PASSWORD]: before it, the window was just started.
enter_as_administrator() {
    key space
    focus_of[$name]=Command1_0
    arrive 'Validar usuario'
    key Down Tab
    if [[ -n ${1:-} ]]; then
        fill "$1"
        key Return
        answer '^Vorbelo$' Return
        arrive 'Validar usuario'
    fi
    retype 1234
    key Return Return
    arrive 'Usuario: Administrador  está usando'
}
