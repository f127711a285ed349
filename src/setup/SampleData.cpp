#include "SampleData.h"

#include "SampleOrders.h"
#include "SampleRegisters.h"
#include "SampleRequests.h"
#include "SampleWords.h"

using namespace Qt::Literals::StringLiterals;

namespace {

TableRows parts(SampleWords& words)
{
    TableRows parts{u"Pecas"_s, {}};
    const QStringList kinds{
        u"Capacitor eletrolítico"_s, u"Resistor de fio"_s,        u"Transistor"_s,
        u"Flyback universal"_s,      u"Rolo pressor"_s,           u"Correia"_s,
        u"Unidade óptica"_s,         u"Fusível de alta tensão"_s, u"Potenciômetro duplo"_s,
        u"Controle remoto"_s};
    for (int number = 1; number <= 200; ++number) {
        const QString model = u"M%1"_s.arg(100 + number);
        parts.rows.push_back({SampleWords::code(number),
                              u"%1-%2"_s.arg(QChar(u'A' + number % 6)).arg(1 + number % 24),
                              QString::number(words.below(9) == 0 ? 0 : 1 + words.below(60)),
                              kinds[number % kinds.size()] + u' ' + model,
                              Value::Money{qint64(120 + 35 * words.below(160)) * 100},
                              words.below(5) == 0 ? u"M%1"_s.arg(100 + number + 1) : QString()});
    }
    return parts;
}

} // namespace

std::vector<TableRows> sampleRows()
{
    SampleWords words;
    std::vector<TableRows> rows{parts(words)};
    for (TableRows& group : sampleOrders(words, rows.front()))
        rows.push_back(std::move(group));
    rows.push_back(sampleSuppliers(words));
    rows.push_back(sampleDefects());
    rows.push_back(samplePurchases(words, rows.front()));
    rows.push_back(sampleOnSiteOrders(words));
    return rows;
}

std::vector<std::pair<QString, QString>> sampleSettings()
{
    std::vector<std::pair<QString, QString>> settings{
        {u"Titulo"_s, u"Oficina Eletrônica Boa Vista"_s},
        {u"Endereco"_s, u"Rua São Bento, 412 - Centro - Campinas - SP"_s},
        {u"Telefone"_s, u"(19)3232-4410"_s},
        {u"Site"_s, u"www.boavista.exemplo.com.br"_s},
        {u"Email"_s, u"oficina@boavista.exemplo.com.br"_s}};
    const QStringList entrySheet{
        u"O orçamento é gratuito e tem validade de 10 dias a partir da data em que for comunicado ao cliente."_s,
        u"O aparelho só será reparado depois da autorização do cliente, por escrito ou por telefone."_s,
        u"Aparelhos não retirados em 90 dias poderão ser vendidos para cobrir as despesas do serviço."_s,
        u"A oficina não se responsabiliza por acessórios que não estejam anotados nesta ficha."_s,
        u"O prazo de reparo depende da chegada das peças e pode ser prorrogado com aviso ao cliente."_s,
        u"As peças trocadas ficam à disposição do cliente até a retirada do aparelho."_s,
        u"O aparelho será entregue somente com a apresentação desta ficha ou de documento do titular."_s,
        u"Declaro estar de acordo com as condições acima."_s};
    const QStringList exitSheet{
        u"A garantia do serviço é de 90 dias a partir da data de entrega e cobre as peças trocadas e a mão de obra."_s,
        u"A garantia não cobre defeitos causados por queda, líquidos, descargas elétricas ou ligação errada."_s,
        u"O rompimento do lacre da oficina por outra pessoa cancela a garantia."_s,
        u"Para usar a garantia é preciso apresentar este certificado."_s,
        u"O transporte do aparelho até a oficina corre por conta do cliente."_s,
        u"Defeitos diferentes daquele que foi reparado terão novo orçamento."_s,
        u"Ligue o aparelho na tensão correta e use um filtro de linha."_s,
        u"Agradecemos a preferência e a confiança em nosso trabalho."_s};
    for (int line = 0; line < 8; ++line)
        settings.emplace_back(QString::number(line + 1), entrySheet[line]);
    for (int line = 0; line < 8; ++line)
        settings.emplace_back(QString::number(line + 11), exitSheet[line]);
    return settings;
}
