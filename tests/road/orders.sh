# The road of a job: taken in, printed, found, copied, edited, flagged, clashing with another
# computer's, delivered, deleted; and the two ways out.

lay_down central
main="$work/central/GALTERIA1.mdb"
today=$(date +%d/%m/%Y)
iso_today=$(date +%F)
record='^Fichario de Clientes'
found='^Buscar Cliente - '

order() { query "$main" "SELECT $2 FROM Cliente WHERE numero = '$1'"; }
# expect_order WHAT NUMBER FIELDS TEXT
expect_order() { expect_rows "$1" "$main" "SELECT $3 FROM Cliente WHERE numero = '$2'" "$4"; }
expect_numbers() {
    expect_rows "$1" "$main" "SELECT group_concat(numero, ' ') FROM (SELECT numero FROM Cliente ORDER BY numero)" "$2"
    expect_rows "$1: twins" "$main" "SELECT group_concat(numero, ' ') FROM (SELECT numero FROM PECAAPLICADA ORDER BY numero)" "$2"
}

open_record() {
    key F2
    arrive "$record"
}
close_record() {
    key alt+f
    leave "$record"
    arrive 'Usuario: Administrador'
}

# --- login
start central
expect 'a second program of the same folder ends at once' \
    "$(timeout 30 "$work/central/vorbelo" >/dev/null 2>&1; echo $?)" 0
shot 01-closed
enter_as_administrator 4321
shot 02-open

# --- a new O.S, without the mouse
open_record
key alt+i
fill 'Maria Souza' 'Rua das Flores' '12' 'Centro' 'Campinas' 'SP' 'Fundos' \
    '1933334444' '1999998888' '52998224725' 'maria@exemplo.com.br' \
    'TV Aurora 20' 'TX-20 0001' 'Nao liga' 'Sem controle' '' '' '' '80,00' 'Prateleira 3'
shot 03-new-order
key alt+s
expect_order 'the new O.S is stored' 0000001 \
    'Nome, telefone, cpf, marca, valor, dataentrada, datasaida, local' \
    "Maria Souza|(19)3333-4444|52998224725|TV Aurora 20|800000|$today||Prateleira 3"
expect_numbers 'its twin stands beside it' 0000001

# --- entry sheet: after a save its button has the focus
key space
print_to entry
expect_paper entry 'ORÇAMENTO' 'USO INTERNO' 'O.S: 0000001' 'Nome: Maria Souza' 'Telefone: (19)3333-4444'
arrive "$record"
close_record

# --- found through the quick search, opened with the mouse
focus_main Text1_0
fill 0000001
key space
focus_of[$name]=Command2_0
arrive "$found"'1 clientes'
shot 04-quick-search
expect 'the first row found is lit' "$(bands "$found" | wc -l)" 1
click_row "$found" "$first_client" 1 2
arrive "$record"
close_record

# --- found by name, opened from the keyboard
key ctrl+c
arrive '^Busca Cliente'
key Tab
text souza
arrive "$found"'1 clientes'
times 4 Tab
key space Tab space
arrive "$record"

# --- copied for the client who comes back, by keyboard alone
key alt+c alt+c
shot 05-copy
fill 'Radio Boreal' 'RB-7' 'Chiado' 'Antena quebrada' '' '' '' '45,50'
key alt+s
expect_order 'the copy has its own device' 0000002 'Nome, marca, modelo, valor' 'Maria Souza|Radio Boreal|RB-7|455000'
# As it is shown: nobody passed its box.
expect_order 'the document came over intact' 0000002 'cpf' 529-982-247/25
expect_numbers 'two orders stand side by side' '0000001 0000002'

# --- edited: the key is shared with "&Entrada", where the focus is
key alt+e space
times 11 Return
retype 'Radio Boreal FM'
key alt+s
expect_order 'the edit is stored' 0000002 'Nome, marca, cpf' 'Maria Souza|Radio Boreal FM|52998224725'

# --- a flag, by its focus alone: "&Salvar" and "&Saida" share a key, the first one is meant
key alt+r
expect_order 'the flag is not stored yet' 0000002 retorno 0
key alt+s space
expect_order 'the flag is stored' 0000002 'retorno, marca' '1|Radio Boreal FM'
shot 06-flag
close_record

# --- two computers give out the same number
lay_down balcao "$main"
start balcao
enter_as_administrator
use central
arrive 'Usuario: Administrador'
open_record
key alt+i
text 'Da central'
use balcao
arrive 'Usuario: Administrador'
open_record
key alt+i
text 'Do balcao'
key alt+s
expect_order 'the first to save gets the number' 0000003 Nome 'Do balcao'

use central
arrive "$record"
key alt+s
arrive '^Vorbelo$'
shot 07-clash
answer '^Vorbelo$' alt+n
arrive "$record"
expect_order 'the other computer has lost nothing' 0000003 Nome 'Do balcao'
text 7
key alt+s
expect_order 'after No another number is typed' 0000007 Nome 'Da central'
expect_numbers 'nothing was stored twice' '0000001 0000002 0000003 0000007'

use balcao
arrive "$record"
key alt+i shift+Tab
retype 7
key alt+s
answer '^Vorbelo$' Return
arrive "$record"
shot 08-clash-edit
# From the button on, over the other one that is alive, to the number and the name.
times 3 Tab
retype 'De ambos'
key alt+s
expect_order 'after Yes the record of the other computer is edited' 0000007 Nome 'De ambos'
expect_numbers 'and no row is added' '0000001 0000002 0000003 0000007'
close_record

# --- both wrote the name: the second is refused until it has seen what the first one wrote
use central
arrive "$record"
key alt+e space
retype 'Da central outra vez'
key alt+s alt+s
expect_order 'nothing is written over it' 0000007 Nome 'De ambos'
key alt+c
shot 09-seen
key space
retype 'Da central por fim'
key alt+s
expect_order 'once seen it can be' 0000007 Nome 'Da central por fim'

# --- delivered
use central
arrive "$record"
close_record
open_record
key alt+s
print_to certificate
expect_paper certificate 'CERTIFICADO DE GARANTIA' 'O.S: 0000001' "Data saída: $today" 'Valor: 80,00'
expect_order 'the exit date is stored' 0000001 datasaida "$today"
expect_rows 'the value is in the cash' "$main" \
    'SELECT codigo, descricao, quantidade IS NULL, valor, DATA FROM MOVIMENTO' \
    "0000001|Maria Souza|1|800000|$iso_today"
arrive "$record"
shot 10-delivered

# --- deleted, after a No
key alt+e space alt+e
answer '^Vorbelo$' alt+n
arrive "$record"
expect_numbers 'No deletes nothing' '0000001 0000002 0000003 0000007'
key alt+e alt+e space alt+e
answer '^Vorbelo$' Return
arrive "$record"
expect_numbers 'the order and its twin are gone' '0000002 0000003 0000007'

# --- the ways out: by the frame in the middle of a new record, and by the question
key alt+i
text 'Ninguem'
key alt+F4
leave "$record"
arrive 'Usuario: Administrador'
expect_numbers 'a record closed half way is lost, and it alone' '0000002 0000003 0000007'
press_main Command1_7
answer '^Sair do Sistema$' alt+n
arrive 'Usuario: Administrador'
key space
answer '^Sair do Sistema$' Return
expect_end 'Yes to the question ends the program'
use balcao
arrive 'Usuario: Administrador'
key alt+F4
expect_end 'the frame ends it without a question'
