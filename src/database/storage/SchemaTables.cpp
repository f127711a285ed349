#include "Schema.h"

#include <QStringList>
using namespace Qt::Literals::StringLiterals;

namespace {

using enum FieldKind;

TableDefinition allText(const QString& name, const QStringList& fields)
{
    TableDefinition table{name, {}};
    for (const QString& field : fields)
        table.fields.push_back({field});
    return table;
}

TableDefinition cliente()
{
    TableDefinition table = allText(
        u"Cliente"_s, {u"numero"_s, u"dataentrada"_s, u"datasaida"_s, u"Nome"_s, u"endereco"_s,
                       u"cidade"_s, u"uf"_s, u"numerocasa"_s, u"bairro"_s, u"complemento"_s,
                       u"telefone"_s, u"celular"_s, u"cpf"_s, u"email"_s, u"marca"_s, u"modelo"_s,
                       u"defeito"_s, u"observacao"_s, u"servicoexecutado"_s});
    table.fields.push_back({u"valor"_s, Money});
    for (const QString& flag : {u"pronto"_s, u"retorno"_s, u"autoriza"_s, u"naotempeca"_s})
        table.fields.push_back({flag, YesNo});
    table.fields.push_back({u"local"_s});
    return table;
}

// The twin of an order: eleven lines of code, description, quantity and value.
TableDefinition pecaAplicada()
{
    TableDefinition table = allText(u"PECAAPLICADA"_s, {u"NUMERO"_s, u"NOME"_s});
    for (int line = 1; line <= 11; ++line)
        for (const QString& field : {u"CODIGO"_s, u"DESCRICAO"_s, u"QUANT"_s, u"VALOR"_s})
            table.fields.push_back({field + QString::number(line)});
    return table;
}

TableDefinition movimento()
{
    return {u"MOVIMENTO"_s,
            {{u"codigo"_s},
             {u"descricao"_s},
             {u"quantidade"_s, Number},
             {u"valor"_s, Money},
             {u"DATA"_s, Date}}};
}

// A stock may be typed as any text, so it stays text; loops over the catalogue end only because a
// description is never Null.
TableDefinition pecas()
{
    return {u"Pecas"_s,
            {{u"CODIGO"_s},
             {u"LOCAL"_s},
             {u"ESTOQUE"_s},
             {u"DESCRICAO"_s, Text, true},
             {u"VALOR"_s, Money},
             {u"EQUIVALENTE"_s}}};
}

TableDefinition manutencao()
{
    return allText(u"MANUTENCAO"_s, {u"NUMERO"_s,
                                     u"DATAPEDIDO"_s,
                                     u"DATACONCLUSAO"_s,
                                     u"NOME"_s,
                                     u"ENDERECO"_s,
                                     u"CIDADE"_s,
                                     u"UF"_s,
                                     u"NUMEROCASA"_s,
                                     u"BAIRRO"_s,
                                     u"COMPLEMENTO"_s,
                                     u"TELEFONE"_s,
                                     u"CELULAR"_s,
                                     u"CPF"_s,
                                     u"EMAIL"_s,
                                     u"SERVICOSOLICITADO1"_s,
                                     u"SERVICOSOLICITADO2"_s,
                                     u"SERVICOSOLICITADO3"_s,
                                     u"SERVICOSOLICITADO4"_s,
                                     u"SERVICOEXECUTADO1"_s,
                                     u"SERVICOEXECUTADO2"_s,
                                     u"SERVICOEXECUTADO3"_s,
                                     u"SERVICOEXECUTADO4"_s,
                                     u"OBSERVACAO"_s,
                                     u"VALOR"_s});
}

// The list of users is read until its end, which a Null name would put off for ever.
TableDefinition validar()
{
    TableDefinition table{u"VALIDAR"_s, {{u"USUARIO"_s, Text, true}, {u"SENHA"_s}}};
    for (int level = 1; level <= 8; ++level)
        table.fields.push_back({u"NIVEL"_s + QString::number(level), YesNo});
    return table;
}

} // namespace

const std::vector<TableDefinition>& schema::mainFile()
{
    static const std::vector<TableDefinition> tables{
        cliente(),
        pecaAplicada(),
        movimento(),
        pecas(),
        allText(u"PEDIDO"_s, {u"DATAPEDIDO"_s, u"DESCRICAO"_s, u"QUANTIDADE"_s, u"CODIGO"_s}),
        manutencao(),
        allText(u"FORNECEDOR"_s,
                {u"NOMEEMPRESA"_s, u"NOMEFORNECEDOR"_s, u"SITE"_s, u"EMAIL"_s, u"TELEFONE"_s,
                 u"CELULAR"_s, u"CGC"_s, u"IE"_s, u"PRODUTO"_s, u"CODIGO"_s}),
        validar(),
        allText(u"DEFEITO"_s, {u"MARCA"_s, u"MODELO"_s, u"DEFEITO"_s, u"SOLUCAO"_s}),
    };
    return tables;
}

const std::vector<TableDefinition>& schema::saleListFile()
{
    static const std::vector<TableDefinition> tables{
        allText(u"Pecas"_s, {u"CODIGO"_s, u"LOCAL"_s, u"QUANTIDADE"_s, u"DESCRICAO"_s,
                             u"UNITARIO"_s, u"TOTAL"_s, u"NUMERO"_s})};
    return tables;
}
