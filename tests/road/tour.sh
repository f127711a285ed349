# Pictures of the forms over the data of the example shop.

copy_program exemplo
"$work/exemplo/vorbelo-setup" --exemplos >/dev/null
start exemplo
enter_as_administrator
picture 'Usuario: Administrador' main-window

key F2
arrive '^Fichario de Clientes'
picture '^Fichario de Clientes' client-record
key alt+f
leave '^Fichario de Clientes'

arrive 'Usuario: Administrador'
key ctrl+c
arrive '^Busca Cliente'
key Tab
text ma
arrive '^Buscar Cliente - '
picture '^Buscar Cliente - ' client-search
key alt+F4
leave '^Buscar Cliente - '

arrive 'Usuario: Administrador'
press_main Command1_10
arrive '^Venda de peças'
catalogue=$(bands '^Venda de peças' | head -1)
for row in 1 2 3; do
    click_row '^Venda de peças' "$catalogue" "$row"
    times 4 Tab
    retype "$row"
    key Return space
done
picture '^Venda de peças' sale
key alt+f
answer '^Vorbelo$' Return
leave '^Venda de peças'

arrive 'Usuario: Administrador'
key alt+F4
expect_end 'the tour ends well'
