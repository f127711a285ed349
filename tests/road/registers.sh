# A firm and a defect, from the first key to the look-up: by keyboard and mouse, in the real program.

lay_down registros
# An old computer may still have the character set of western Europe.
old=C
if localedef -i pt_BR -f ISO-8859-1 "$work/pt_BR.ISO-8859-1" 2>"$work/locale.log"; then
    old=pt_BR.ISO-8859-1
fi
LOCPATH=$work LC_ALL=$old start registros
enter_as_administrator
book="$work/registros/GALTERIA1.mdb"
main='Usuario: Administrador'
firms='^Cadastro de Fornecedores'
search='^Buscar Fornecedor'
defects='^Registro de Defeitos'

# --- a firm, whose tax number is refused once
key F3
arrive "$firms"
key alt+i
fill 'Casa dos Cabos' 'Ana Souza' 'www.valvulas.exemplo.com.br' 'ana@exemplo.com.br' \
    1932324410 19991234567
text 11222333000182
key Return
answer '^Vorbelo$' Return
arrive "$firms"
text 11222333000181
key Return
text 123456789
key Return
text 'Capacitores e cabos'
key alt+s
expect_rows 'the firm is stored as it was typed' "$book" \
    "SELECT NOMEEMPRESA||'|'||TELEFONE||'|'||CELULAR||'|'||CGC||'|'||PRODUTO||'|'||CODIGO FROM FORNECEDOR" \
    'Casa dos Cabos|1932324410|19991234567|11222333000181|Capacitores e cabos|0000001'

# --- found by its product, and opened
key alt+p
arrive "$search"
key Tab Tab
text cab
arrive "$search - 1 fornecedor encontrados"
key Tab space Tab space
arrive "$firms"
key alt+e
key ctrl+a
text 'Casa S'
key dead_tilde a
text 'o'
key alt+s
expect_rows 'the firm that was found is the one that is edited' "$book" \
    "SELECT NOMEEMPRESA||'|'||TELEFONE||'|'||CGC FROM FORNECEDOR" \
    'Casa São|(19)3232-4410|11-222-333-0001/81'
key alt+f
leave "$firms"

# --- a defect with a solution of three lines, looked up by its brand
arrive "$main"
press_main Command1_14
arrive "$defects"
key alt+i
fill Boreal TX-20 'Imagem esverdeada'
fill 'Medir o canal vermelho' 'Trocar o transistor'
text 'Ressoldar a placa'
key alt+s
key alt+i
fill Aurora TX-7 'Sem som'
text 'Capacitor seco'
key alt+s
expect_rows 'Enter made lines in the solution' "$book" \
    "SELECT MARCA||'|'||replace(SOLUCAO,char(10),'/') FROM DEFEITO ORDER BY _id" \
    'Boreal|Medir o canal vermelho/Trocar o transistor/Ressoldar a placa
Aurora|Capacitor seco'
key alt+f
leave "$defects"
arrive "$main"
key space
arrive "$defects"
times 4 Tab # through brand, model, defect and solution into the list, on Aurora
key Down space
key alt+e
key ctrl+a
text 'Boreal Plus'
key alt+s
expect_rows 'the entry that was looked up is the one that is edited' "$book" \
    "SELECT MARCA||'|'||length(SOLUCAO) FROM DEFEITO ORDER BY _id" \
    'Boreal Plus|60
Aurora|14'
key alt+f
leave "$defects"
arrive "$main"
press_main Command1_7
answer '^Sair do Sistema$' Return
expect_end 'the registers end well'
