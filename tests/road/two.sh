# Two computers at the very same moment: each press waits for one lock that is held from outside, and
# what follows is what both do when it is let go. ROAD_ROUNDS=20 for more sales.

lay_down mesa
lay_down loja "$work/mesa/GALTERIA1.mdb"
main="$work/mesa/GALTERIA1.mdb"
record='^Fichario de Clientes'
parts='^Cadastro de Peças'
sale='^Venda de peças'

hold() {
    exec {lock}> >(exec sqlite3 -cmd ".timeout 5000" "$main" >"$work/hold.log")
    echo 'BEGIN IMMEDIATE;' >&"$lock"
    wait_for 'the lock' 10 locked
}
locked() { ! sqlite3 "$main" 'BEGIN IMMEDIATE'; }
let_go() {
    echo 'COMMIT;' >&"$lock"
    exec {lock}>&-
}
# at_once KEY WINDOW: pressed on both while neither can go on.
at_once() {
    use mesa
    arrive "$2"
    hold
    key "$1"
    use loja
    arrive "$2"
    key "$1"
    sleep 0.3
    let_go
}
on_both() {
    local station
    for station in mesa loja; do
        use "$station"
        "$@"
    done
}
both_run() { kill -0 "${pid_of[mesa]}" && kill -0 "${pid_of[loja]}" && echo yes; }
numbers='SELECT group_concat(numero, " ") FROM (SELECT numero FROM Cliente ORDER BY 1)'

start mesa
enter_as_administrator
start loja
enter_as_administrator

# --- one number for two new orders: one of the two is asked
new_order() {
    arrive 'Usuario: Administrador'
    key F2
    arrive "$record"
    key alt+i
    text "Cliente de $name"
}
on_both new_order
at_once alt+s "$record"
asked() {
    for name in mesa loja; do
        use "$name"
        if window_there '^Vorbelo$'; then return 0; fi
    done
    return 1
}
wait_for 'the question' 15 asked
answer '^Vorbelo$' alt+n
arrive "$record"
text 2
key alt+s
expect_rows 'no two orders of one number' "$main" "$numbers" '0000001 0000002'

# --- the same field by both: refused until seen; another field: both stay
close_record() {
    arrive "$record"
    key alt+f
    leave "$record"
    arrive 'Usuario: Administrador'
}
open_record() {
    arrive 'Usuario: Administrador'
    key F2
    arrive "$record"
}
on_both close_record
on_both open_record
edit() { # BOXES TEXT
    arrive "$record"
    key alt+e space
    times "$1" Return
    retype "$2"
    key alt+s
}
first="SELECT Nome, endereco FROM Cliente WHERE numero = '0000001'"
use mesa
edit 0 'Da mesa'
use loja
edit 1 'Rua da loja'
expect_rows 'each keeps what only the other one changed' "$main" "$first" 'Da mesa|Rua da loja'
use mesa
edit 1 'Rua da mesa'
key alt+s
expect_rows 'what both changed is refused' "$main" "$first" 'Da mesa|Rua da loja'
key alt+c space Return
retype 'Rua da mesa'
key alt+s
expect_rows 'and once it was seen, stored' "$main" "$first" 'Da mesa|Rua da mesa'

# --- delivered while the other one wrote another field
on_both close_record
on_both open_record
use mesa
edit 0 'Da mesa outra vez'
use loja
arrive "$record"
key alt+s
print_to exit
expect_rows 'one press: the exit date and both texts' "$main" \
    "SELECT Nome, endereco, datasaida <> '' FROM Cliente WHERE numero = '0000001'" \
    'Da mesa outra vez|Rua da mesa|1'
expect_rows 'and one row in the cash' "$main" 'SELECT count(*) FROM MOVIMENTO' 1
on_both close_record

# --- the same part sold by both
use mesa
arrive 'Usuario: Administrador'
key F4
arrive "$parts"
key alt+i
fill 'Capacitor' '' 1000 2,50
key alt+s
expect_rows 'a part' "$main" 'SELECT ESTOQUE FROM Pecas' 1000
key alt+f
leave "$parts"
open_sale() {
    arrive 'Usuario: Administrador'
    press_main Command1_10
    arrive "$sale"
}
begin_sale() {
    arrive "$sale"
    click_row "$sale" "$first_of_catalogue" 1
    times 4 Tab
    retype 1
    key Return space
    expect_rows 'a line' "$work/$name/MIRANDEL1.mdb" 'SELECT count(*) FROM Pecas' 1 >/dev/null
    key alt+o
    arrive '^Vorbelo$'
}
on_both open_sale
rounds=${ROAD_ROUNDS:-3}
for ((round = 1; round <= rounds; ++round)); do
    on_both begin_sale
    at_once Return '^Vorbelo$'
    expect_rows "round $round: a cash row a line" "$main" 'SELECT count(*) FROM MOVIMENTO' $((1 + 2 * round))
    # The later one writes what its catalogue held, less its own piece: meant.
    expect_rows "round $round: the stock" "$main" 'SELECT ESTOQUE FROM Pecas' $((1000 - round))
    for station in mesa loja; do
        expect_rows "round $round: the list of $station" "$work/$station/MIRANDEL1.mdb" 'SELECT count(*) FROM Pecas' 0
    done
    on_both arrive "$sale"
    expect "round $round: both go on" "$(both_run)" yes
done

# --- a program's folder copied with its list: each has its own sale
end() {
    arrive "$sale"
    key alt+f
    leave "$sale"
    arrive 'Usuario: Administrador'
    key alt+F4
    expect_end 'it ends'
}
on_both end
cp -r "$work/loja" "$work/copia"
use_line() {
    start "$1"
    enter_as_administrator
    open_sale
    begin_sale
}
use_line loja
key alt+n
kill -9 "$pid"
wait "$pid" || true
use_line copia
key Return
expect_rows 'the copy has booked its own' "$work/copia/MIRANDEL1.mdb" 'SELECT count(*) FROM Pecas' 0
end
start loja
enter_as_administrator
open_sale
expect_rows 'and the open sale of the other one is as it was' "$work/loja/MIRANDEL1.mdb" 'SELECT count(*) FROM Pecas' 1
key alt+o
answer '^Vorbelo$' Return
expect_rows 'until it is booked' "$main" 'SELECT count(*) FROM MOVIMENTO' $((3 + 2 * rounds))
end
