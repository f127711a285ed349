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
expect_cash() { expect_rows "$1" "$main" "$(rows_of MOVIMENTO "codigo || ' x' || quantidade || ' ' || valor / 100" _id)" "$2"; }
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
click_row '^Buscar Peça' "$(bands '^Buscar Peça')" 2
key alt+a
arrive "$parts"
shot 03-opened
key alt+f
leave "$parts"

# --- a sale
arrive 'Usuario: Administrador'
press_main Command1_10
arrive "$sale"
shot 04-sale
bands "$sale"
