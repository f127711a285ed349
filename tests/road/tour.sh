# A picture of every window in its states, over the data of the example shop, for docs/ and the eye.

copy_program exemplo
"$work/exemplo/vorbelo-setup" --exemplos >/dev/null
front='CGC|CPF|SISTEMA VORBELO'
main='Usuario: Administrador'
record='^Fichario de Clientes'
parts='^Cadastro de Peças'
sale='^Venda de peças'
report='^Relatório movimento de caixa'

# take NAME PATTERN: the picture of a window that is whole on the screen.
take() {
    picture "$2" "$1"
    expect_whole "$1" "$2"
}
# box NAME TITLE KEY: the picture of a box; the key ends it.
box() {
    arrive "$2"
    take "$1" "$2"
    key "$3"
    leave "$2"
}

# --- in the door
start exemplo
take main-closed "$front"
key space
arrive 'Validar usuario'
key Down Tab
text 123
take login 'Validar usuario'
key Return Return
box login-refused '^Vorbelo$' Return
arrive 'Validar usuario'
retype 1234
key Return Return
focus_of[$name]=Command1_0
arrive "$main"
take main-open "$main"

# --- the record of a job
key F2
arrive "$record"
take record "$record"
key alt+e alt+e space
box print-dialog '^Imprimir$' Escape
arrive "$record"
key alt+e space
times 2 Return
take record-editing "$record"
key alt+s
key alt+i
take record-new "$record"
key alt+F4
leave "$record"
arrive "$main"
key F2
arrive "$record"
key alt+c alt+c
times 10 Return
take record-copy "$record"
key alt+F4
leave "$record"
arrive "$main"
key F2
arrive "$record"
key alt+e space alt+e
box record-delete '^Vorbelo$' alt+n
arrive "$record"
key alt+f
leave "$record"

# --- its search
arrive "$main"
key ctrl+c
arrive '^Busca Cliente'
take search-empty '^Busca Cliente'
key Tab
text ma
arrive '^Buscar Cliente - '
take search-found '^Buscar Cliente - '
key alt+F4
leave '^Buscar Cliente - '

# --- parts
arrive "$main"
key F4
arrive "$parts"
take part "$parts"
key alt+i
take part-new "$parts"
key alt+F4
leave "$parts"
arrive "$main"
key F4
arrive "$parts"
key alt+c alt+c
take part-copy "$parts"
key alt+F4
leave "$parts"
arrive "$main"
key F4
arrive "$parts"
key alt+p
arrive '^Buscar Peça'
key Tab
text cap
arrive '^Buscar Peça - '
take part-search '^Buscar Peça'
key alt+F4
leave '^Buscar Peça'

# --- a sale
arrive "$main"
press_main Command1_10
arrive "$sale"
take sale-empty "$sale"
catalogue=$first_of_catalogue
for row in 1 2 3; do
    click_row "$sale" "$catalogue" "$row"
    if ((row == 2)); then
        take sale-picked "$sale"
    fi
    times 4 Tab
    retype "$row"
    key Return space
done
take sale "$sale"
key alt+o
box sale-question '^Vorbelo$' alt+n
arrive "$sale"
key alt+f
box sale-left '^Vorbelo$' Return
leave "$sale"

# --- the cash
query "$work/exemplo/GALTERIA1.mdb" "DELETE FROM MOVIMENTO WHERE quantidade IS NULL"
arrive "$main"
press_main Command1_15
arrive "$report"
take report "$report"
key alt+e
box report-delete '^Vorbelo$' alt+n
arrive "$report"
key alt+f
leave "$report"

# --- the bench
bench='^Serviço executado e peças'
found='^Peças aplicadas e serviço executado - '
arrive "$main"
press_main Command1_12
arrive "$bench"
take bench-empty "$bench"
text 0000003
arrive "$found"
key Tab space
take bench-found "$found"
key alt+e
take bench-editing "$found"
times 5 Tab
text cap
key Down
take bench-picked "$found"
key alt+c alt+f
leave "$found"

# --- what is to be bought, on-site orders, firms, defects
orders='^Pedido de Peças'
onsite='^Manutenção'
firms='^Cadastro de Fornecedores'
firm_search='^Buscar Fornecedor'
defects='^Registro de Defeitos'
arrive "$main"
key F5
arrive "$orders"
take orders "$orders"
key alt+e
take orders-editing "$orders"
key alt+c alt+f
leave "$orders"
arrive "$main"
key F6
arrive "$onsite"
take onsite "$onsite"
key alt+e
take onsite-editing "$onsite"
key alt+c
key alt+c alt+c
take onsite-copy "$onsite"
key alt+c alt+f
leave "$onsite"
arrive "$main"
key F3
arrive "$firms"
take firm "$firms"
key alt+e
take firm-editing "$firms"
key alt+c alt+p
arrive "$firm_search"
text el
arrive "$firm_search - "
take firm-search "$firm_search"
key alt+F4
leave "$firm_search"
arrive "$main"
press_main Command1_14
arrive "$defects"
take defects "$defects"
key alt+e
take defects-editing "$defects"
key alt+c alt+f
leave "$defects"

# --- settings
settings='^Configuração do Sistema'
arrive "$main"
key F9
arrive "$settings"
key alt+c
take settings-company "$settings"
key alt+c alt+t
take settings-sheet "$settings"
key alt+c alt+l space
take settings-place "$settings"
key alt+c alt+l alt+l space
take settings-backup "$settings"
key alt+c alt+a Down
take settings-users "$settings"
key alt+c alt+n space
take settings-new-user "$settings"
key alt+c alt+f
leave "$settings"

# --- the safety copy, the way back, and about
arrive "$main"
key F7
box backup-question '^Efetua Backup$' alt+n
arrive "$main"
key F8
box restore-question '^Efetuar restauração' alt+n
arrive "$main"
key alt+s s s Up Right s
take about '^About Vorbelo$'
key Return
leave '^About Vorbelo$'

# --- the way out
arrive "$main"
press_main Command1_7
box exit '^Sair do Sistema$' Return
expect_end 'the tour ends well'

# --- a new shop, nothing in it yet
lay_down nova
start nova
enter_as_administrator
key F2
arrive "$record"
take record-empty-table "$record"
key alt+f
leave "$record"
arrive "$main"
key F4
arrive "$parts"
take part-empty-table "$parts"
key alt+f
leave "$parts"
arrive "$main"
press_main Command1_10
arrive "$sale"
take sale-empty-table "$sale"
key alt+f
leave "$sale"
arrive "$main"
press_main Command1_15
arrive "$report"
take report-empty "$report"
key alt+f
leave "$report"

# --- the shared file is away: the clerk is told, and what needs it stays shut
arrive "$main"
mv "$work/nova/GALTERIA1.mdb" "$work/nova/away.mdb"
key F2
box file-missing '^conecxão$' Return
arrive '^Vorbelo$'
take file-missing-advice '^Vorbelo$'
key Return
sleep 0.5
answer '^Vorbelo$' Return
answer '^Fichario de Cliente$' Return
arrive "$record"
take record-file-missing "$record"
key alt+f
leave "$record"
arrive "$main"
take main-limited "$main"
