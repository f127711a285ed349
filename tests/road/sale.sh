# The road of a sale: parts registered and found, sold with and without paper, on one station and on
# two, and the cash report over it.

lay_down loja
main="$work/loja/GALTERIA1.mdb"
list="$work/loja/MIRANDEL1.mdb"
today=$(date +%d/%m/%Y)
parts='^Cadastro de Peças'
sale='^Venda de peças'

rows_of() { echo "SELECT group_concat($2, '; ') FROM (SELECT * FROM $1 ORDER BY $3)"; }
expect_parts() { expect_rows "$1" "$main" "$(rows_of Pecas "DESCRICAO || ' ' || ESTOQUE" CODIGO)" "$2"; }
expect_list() { expect_rows "$1" "$list" "$(rows_of Pecas "CODIGO || ' x' || QUANTIDADE || ' ' || TOTAL" 'CODIGO, NUMERO')" "$2"; }
expect_cash() { expect_rows "$1" "$main" "$(rows_of MOVIMENTO "codigo || ' x' || CAST(quantidade AS INTEGER) || ' ' || (valor / 100)" _id)" "$2"; }
expect_orders() { expect_rows "$1" "$main" "$(rows_of PEDIDO "CODIGO || ' ' || DESCRICAO || ' ' || QUANTIDADE" CODIGO)" "$2"; }

# --- parts: three registered, one more copied from the first
start loja
enter_as_administrator
key F4
arrive "$parts"
new_part() { # DESCRIPTION STOCK PRICE
    key alt+i
    fill "$1" '' "$2" "$3"
    key alt+s
}
new_part 'Capacitor 10uF' 10 2,50
new_part 'Fusivel 2A' 3 0,80
new_part 'Correia' 1 12,00
expect_parts 'three parts stand in the catalogue' 'Capacitor 10uF 10; Fusivel 2A 3; Correia 1'
shot 01-parts
key alt+c alt+c
retype 'Correia larga'
fill '' '' 4
retype 15,00
key alt+s
expect_parts 'the copy stands behind them' 'Capacitor 10uF 10; Fusivel 2A 3; Correia 1; Correia larga 4'

# --- found by a part of the description
key alt+p
arrive '^Buscar Peça'
key Tab
text correia
arrive '^Buscar Peça - 2 '
shot 02-found
click_row '^Buscar Peça' "$first_part" 2
key alt+a
arrive "$parts"
shot 03-opened
key alt+f
leave "$parts"

# --- a sale of three parts; the first click of each is what makes it saleable
open_sale() {
    arrive 'Usuario: Administrador'
    press_main Command1_10
    arrive "$sale"
    catalogue=$first_of_catalogue
}
close_sale() {
    key alt+f
    leave "$sale"
}
sell() { # ROW QUANTITY
    click_row "$sale" "$catalogue" "$1"
    times 4 Tab
    retype "$2"
    key Return space
}
open_sale
sell 1 2
sell 4 1
sell 2 3
expect_list 'three lines stand in the list' '0000001 x2 5,00; 0000002 x3 2,40; 0000004 x1 15,00'
shot 04-list
click_row "$sale" "$first_of_list" 3
key Escape
expect_list 'Esc takes a line out' '0000001 x2 5,00; 0000002 x3 2,40'

# --- the receipt: a No leaves all as it was, a Yes writes off
key Tab space
print_to receipt-no
answer '^Vorbelo$' alt+n
arrive "$sale"
expect_list 'after No the list stands' '0000001 x2 5,00; 0000002 x3 2,40'
expect_cash 'and the cash is empty' ''
key space
print_to receipt
answer '^Vorbelo$' Return
arrive "$sale"
expect_list 'after Yes the list is empty' ''
expect_paper receipt 'Oficina loja' 'Capacitor 10uF' 'Fusivel 2A' 'Total de itens:' 'Valor Total:' '7,40'
expect_parts 'the stock is lower, of one part exactly 0' 'Capacitor 10uF 8; Fusivel 2A 0; Correia 1; Correia larga 4'
expect_cash 'a row a line is in the cash' '0000001 x2 500; 0000002 x3 240'
expect_orders 'what ran out is ordered' '0000001 Fusivel 2A p.EST'
shot 05-written-off
close_sale

# --- workshop use, one below the stock: no paper and no order
open_sale
sell 3 2
key alt+o
answer '^Vorbelo$' Return
arrive "$sale"
expect_parts 'a stock may go below 0' 'Capacitor 10uF 8; Fusivel 2A 0; Correia -1; Correia larga 4'
expect_orders 'which orders nothing, nor what is ordered already' '0000001 Fusivel 2A p.EST'

# --- the same part twice in one sale
sell 1 1
sell 1 3
expect_list 'both lines stand' '0000001 x1 2,50; 0000001 x3 7,50'
key alt+o
answer '^Vorbelo$' alt+n
arrive "$sale"
# Enter asks again after No, and again: it never reaches the button that empties the list.
key Return
answer '^Vorbelo$' alt+n
arrive "$sale"
key Return
answer '^Vorbelo$' Return
arrive "$sale"
expect_parts 'both quantities count' 'Capacitor 10uF 4; Fusivel 2A 0; Correia -1; Correia larga 4'

# --- two stations sell the same part
sell 4 1
lay_down loja2 "$main"
start loja2
enter_as_administrator
open_sale
sell 4 1
key alt+o
answer '^Vorbelo$' Return
arrive "$sale"
expect_parts 'the second station has written off' 'Capacitor 10uF 4; Fusivel 2A 0; Correia -1; Correia larga 3'
close_sale
arrive 'Usuario: Administrador'
key alt+F4
expect_end 'it ends'
use loja
arrive "$sale"
expect_list 'the list of the first station is its own' '0000004 x1 15,00'
key alt+o
answer '^Vorbelo$' Return
arrive "$sale"
expect_list 'and is written off in its turn' ''
# The stock is the one that this station saw when it picked the part, less what it sold: meant.
expect_parts 'over what the other one wrote' 'Capacitor 10uF 4; Fusivel 2A 0; Correia -1; Correia larga 3'
expect_cash 'while both are in the cash' \
    '0000001 x2 500; 0000002 x3 240; 0000003 x2 2400; 0000001 x1 250; 0000001 x3 750; 0000004 x1 1500; 0000004 x1 1500'
close_sale

# --- the cash report, over sales alone
report='^Relatório movimento de caixa'
arrive 'Usuario: Administrador'
press_main Command1_15
arrive "$report"
shot 06-report
key alt+i
print_to cash
expect_paper cash 'Oficina loja' 'Código/O.S' 'Total de itens:' '71,40'
arrive "$report"
key alt+f
leave "$report"

# --- once a delivered job stands in it, it stops there
arrive 'Usuario: Administrador'
key F2
arrive '^Fichario de Clientes'
key alt+i
text 'Maria Souza'
key alt+s
expect_rows 'a job is taken in' "$main" 'SELECT numero FROM Cliente' 0000001
key alt+s
print_to certificate
expect_rows 'and delivered' "$main" "SELECT codigo FROM MOVIMENTO WHERE quantidade IS NULL" 0000001
arrive '^Fichario de Clientes'
key alt+f
leave '^Fichario de Clientes'
arrive 'Usuario: Administrador'
key space
answer '^Vorbelo$' Return
arrive "$report"
shot 07-report-stopped

# --- emptied, after a No
key alt+e
answer '^Vorbelo$' alt+n
arrive "$report"
expect_rows 'No empties nothing' "$main" 'SELECT count(*) FROM MOVIMENTO' 8
key alt+e
answer '^Vorbelo$' Return
arrive "$report"
expect_rows 'Yes empties the cash' "$main" 'SELECT count(*) FROM MOVIMENTO' 0
key alt+f
leave "$report"
arrive 'Usuario: Administrador'
key alt+F4
expect_end 'the frame ends the program'
