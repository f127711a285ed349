# A job through the whole house, on two computers that share the main file: taken in at the counter,
# done at the bench, delivered. Then an order for work outside, and the purchase order that a sale
# left behind. By keyboard, but for the rows of the sale.

lay_down balcao
main="$work/balcao/GALTERIA1.mdb"
lay_down bancada "$main"
set_ini balcao Configurar Endereco 'Rua do Porto, 9'
set_ini balcao Configurar Telefone '(19)3300-0000'
set_ini balcao Configurar Site 'www.oficina.exemplo.com.br'
set_ini balcao Configurar Email 'balcao@exemplo.com.br'
today=$(date +%d/%m/%Y)
record='^Fichario de Clientes'
parts='^Cadastro de Peças'
sale='^Venda de peças'
bench='^Serviço executado e peças aplicadas'
found='^Peças aplicadas e serviço executado - '
onsite='^Manutenção'
purchase='^Pedido de Peças e Acessórios'
search='^Buscar Cliente - '

order="SELECT Nome, telefone, servicoexecutado, valor, pronto, retorno, autoriza, naotempeca, datasaida FROM Cliente"
twin='SELECT NUMERO, NOME'
for line in 1 2 3 4; do
    twin+=", CODIGO$line, DESCRICAO$line, QUANT$line, VALOR$line"
done
twin+=' FROM PECAAPLICADA'
columns_of() { query "$main" "SELECT group_concat('ifnull(' || name || ','''')', '||') FROM pragma_table_info('$1') WHERE cid >= $2 AND name <> '_id'"; }
main_window() { arrive 'Usuario: Administrador'; }

# --- at the counter: three parts, two orders
start balcao
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
new_part 'Transistor BC548' 5 1,20
key alt+f
leave "$parts"
main_window
key F2
arrive "$record"
key alt+i
text 'Ana Lima'
key alt+s
expect_rows 'an order' "$main" 'SELECT numero FROM Cliente' 0000001
key alt+i shift+Tab
retype 142
key Tab
fill 'Maria Souza' 'Rua das Flores' 12 Centro Campinas SP '' 1933334444
times 3 Tab
fill 'TV Aurora 20' 'TX-20' 'Nao liga' 'Sem controle'
times 3 Tab
retype 80,00
key alt+s
taken="Maria Souza|(19)3333-4444||800000|0|0|0|0|"
expect_rows 'and the one that is followed from here' "$main" "$order WHERE numero = '0000142'" "$taken"
shot 01-taken-in
key alt+f
leave "$record"

# --- at the bench, on the other computer: found by two digits
start bancada
enter_as_administrator
press_main Command1_12
arrive "$bench"
text 42
arrive "$found"'1 clientes'
key Tab space
shot 02-found
key alt+e
arrive "$found"
text 'Trocada a fonte'
key Tab space Tab space # done, and come back
key Tab Tab # over the third flag to the parts
pick() { # LETTERS QUANTITY: on the line whose code has the focus
    key Return
    text "$1"
    key Down Return
    retype "$2"
    key Return Return
}
pick fu 2
key Return F4
text tr
key Return Return
retype 1
key Return Return
pick cap 4
shot 03-parts

# --- meanwhile the counter writes the client's new telephone
use balcao
main_window
open_searched() { # NUMBER: by the quick search
    focus_main Text1_0
    retype "$1"
    key Return space
    focus_of[$name]=Command2_0
    arrive "$search"'1 clientes'
    key space Tab space
    arrive "$record"
}
open_searched 142
key alt+e space
times 7 Return
retype 1932105555
key alt+s
phone='(19)3210-5555'
expect_rows 'the counter has its telephone' "$main" "$order WHERE numero = '0000142'" \
    "Maria Souza|$phone||800000|0|0|0|0|"
shot 04-telephone
use bancada
arrive "$found"
key alt+s
expect_rows 'both are in the order' "$main" "$order WHERE numero = '0000142'" \
    "Maria Souza|$phone|Trocada a fonte|800000|1|1|0|0|"
expect_rows 'the parts are in its twin' "$main" "$twin WHERE NUMERO = '0000142'" \
    '0000142|Maria Souza|0000002|Fusivel 2A|2|0,80|0000003|Transistor BC548|1|1,20|0000001|Capacitor 10uF|4|2,50||||0,00'
expect_rows 'and nothing behind them' "$main" \
    "SELECT replace($(columns_of PECAAPLICADA 18), '0,00', '') FROM PECAAPLICADA WHERE NUMERO = '0000142'" ''
expect_rows 'the other order is as it was' "$main" "$order WHERE numero = '0000001'" 'Ana Lima|||0|0|0|0|0|'
expect_rows 'the bench takes nothing from the stock' "$main" \
    'SELECT group_concat(ESTOQUE) FROM Pecas' 10,3,5
shot 05-stored
key alt+f
leave "$found"

# --- seen and delivered at the counter
use balcao
arrive "$record"
key alt+f
leave "$record"
main_window
open_searched 142
shot 06-seen
key alt+s
print_to certificate
expect_paper certificate 'O.S: 0000142' 'Serviço Executado: Trocada a fonte' "Data saída: $today" 'Valor: 80,00'
expect_rows 'delivered' "$main" "$order WHERE numero = '0000142'" \
    "Maria Souza|$phone|Trocada a fonte|800000|1|1|0|0|$today"
expect_rows 'and in the cash' "$main" 'SELECT codigo, descricao, valor FROM MOVIMENTO' \
    '0000142|Maria Souza|800000'
arrive "$record"
key alt+f
leave "$record"

# --- work outside the house: the same client twice, the second one on paper
main_window
key F6
arrive "$onsite"
key alt+i
fill 'Padaria Sol' 'Av. Brasil' 100 Centro Campinas SP Loja '(19)3232-1000' '(19)99999-0000' 52998224725 \
    'sol@exemplo.com.br' 'Forno nao liga' '' '' '' '' '' '' '' 'Chamar na porta' 150,00
key alt+s
expect_rows 'an on-site order, its empty boxes with what fills them' "$main" \
    "SELECT NUMERO, DATAPEDIDO, DATACONCLUSAO, NOME, CPF, SERVICOSOLICITADO1, SERVICOSOLICITADO2, VALOR FROM MANUTENCAO" \
    "0000001|$today|**/**/****|Padaria Sol|52998224725|Forno nao liga|**************************|150,00"
key alt+c alt+c
times 9 Return
# The copied document is read as that of a company, since its signs make it 14 characters long.
key Return
answer '^Vorbelo$' Return
arrive "$onsite"
fill 52998224725 '' 'Batedeira com ruido' 'Ver correia' '' '' 'Correia trocada' '' '' '' 'Pagou' 90,00
shot 07-onsite
key alt+s
expect_rows 'the copy is an order of its own' "$main" \
    'SELECT NUMERO, NOME, SERVICOSOLICITADO1, VALOR FROM MANUTENCAO ORDER BY NUMERO' \
    '0000001|Padaria Sol|Forno nao liga|150,00
0000002|Padaria Sol|Batedeira com ruido|90,00'
key alt+i space # Editar has the focus: the next one with this key is Imprimir
print_to onsite
arrive "$onsite"
key alt+f
leave "$onsite"

half() { # NAME: as it must read
    printf '%s\n' "$(stars 80)PEDIDO DE MANUTENÇÂO/SERVIÇO$(stars 20) $1 $(stars 60)" \
        'Oficina balcao' \
        'Endereço: Rua do Porto, 9 Tel/Fax: (19)3300-0000' \
        'Site: www.oficina.exemplo.com.br E-mail: balcao@exemplo.com.br' \
        "Data Solicitação: $today O.S: 0000002 Data de conclusão : **/**/****" \
        'Nome : Padaria Sol' 'Endereço: Av. Brasil Nº 100' 'Bairro: Centro / Loja' 'Cidade: Campinas / SP' \
        'Serviço Solicitado:' 'Batedeira com ruido' 'Ver correia' "$(stars 27)" "$(stars 29)" \
        'Serviço Executado:' 'Correia trocada' "$(stars 32)" "$(stars 32)" "$(stars 33)" \
        'Observação: Pagou' \
        'Valor :..........................................90,00 Assinatura CPF'
}
stars() { printf '%*s' "$1" '' | tr ' ' '*'; }
# Without its rules; what stands on the line for the signatures is read as one.
page() { pdftotext -layout "$1" - | sed -E 's/-{9,}|_{9,}//g; s/ +/ /g; s/^ | $//g; /^\f?$/d' | sed -z 's/ *\nAssinatura/ Assinatura/g'; }
expect 'the page holds both halves' "$(page "$out/bench-onsite.pdf")" "$(half CLIENTE; half TECNICO)"
expect 'on one sheet' "$(pdfinfo "$out/bench-onsite.pdf" | awk '/^Pages/ { print $2 }')" 1

# --- a sale takes the last fuses; the purchase order that it leaves is edited, printed and deleted
main_window
press_main Command1_10
arrive "$sale"
click_row "$sale" "$first_of_catalogue" 2
times 4 Tab
retype 3
key Return space
key alt+o
answer '^Vorbelo$' Return
arrive "$sale"
orders='SELECT DATAPEDIDO, DESCRICAO, QUANTIDADE, CODIGO FROM PEDIDO ORDER BY CODIGO'
expect_rows 'what ran out is wanted' "$main" "$orders" "$today|Fusivel 2A|p.EST|0000001"
key alt+f
leave "$sale"
main_window
key F5
arrive "$purchase"
shot 08-wanted
key alt+e Return
retype 100
key alt+s
expect_rows 'the quantity is told' "$main" "$orders" "$today|Fusivel 2A|100|0000001"
key alt+i # from Editar on: Imprimir
key space
shot 09-purchase
print_to purchase
expect 'the list on paper' "$(page "$out/bench-purchase.pdf")" 'Quant Descrição
100 Fusivel 2A'
arrive "$purchase"
key alt+f
leave "$purchase"
main_window
key F5
arrive "$purchase"
times 2 Tab
key space Escape
expect_rows 'Esc takes it out' "$main" "$orders" ''
shot 10-no-order
key alt+f
leave "$purchase"
main_window
key alt+F4
expect_end 'the counter ends'
use bancada
main_window
key alt+F4
expect_end 'the bench ends'
