#include "SampleRequests.h"

#include "Dates.h"
#include "Strings.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// What the forms store for an empty box.
QString stars(int count)
{
    return repeated(count, u'*');
}

QString dateOrStars(const QDate& date)
{
    return date.isValid() ? dateText(date) : u"**/**/****"_s;
}

struct Visit
{
    QStringList asked; // four lines each
    QStringList done;
    QString remark;
    int reais = 0;
};

const std::vector<Visit>& visits()
{
    static const std::vector<Visit> all{
        {{u"Revisão da antena coletiva"_s, u"Troca de cabos"_s, stars(27), stars(29)},
         {u"Trocados 30 metros de cabo coaxial"_s, u"Ajustado o amplificador de linha"_s, stars(32),
          stars(33)},
         u"Combinar horário com o síndico"_s,
         260},
        {{u"Instalar ponto de TV no quarto"_s, stars(26), stars(27), stars(29)},
         {u"Ponto instalado com divisor de duas saídas"_s, stars(32), stars(32), stars(33)},
         stars(39),
         120},
        {{u"Interfone da portaria sem som"_s, u"Porteiro não ouve o apartamento 32"_s, stars(27),
          stars(29)},
         {u"Trocada a cápsula do monofone"_s, u"Refeita a emenda na caixa do 3º andar"_s, stars(32),
          stars(33)},
         u"Levar escada"_s,
         180},
        {{u"Televisor de 29 pol. sem imagem"_s, u"Cliente pede orçamento no local"_s, stars(27),
          stars(29)},
         {u"Orçamento feito; aparelho levado para a oficina"_s, stars(32), stars(32), stars(33)},
         u"Aparelho pesado, ir em duas pessoas"_s,
         60},
        {{u"Central de alarme dispara à noite"_s, u"Verificar sensores do quintal"_s,
          u"Trocar a bateria"_s, stars(29)},
         {u"Dois sensores realinhados"_s, u"Bateria de 12 V trocada"_s,
          u"Teste de 24 horas sem disparo"_s, stars(33)},
         stars(39),
         310},
    };
    return all;
}

} // namespace

TableRows samplePurchases(SampleWords& words, const TableRows& parts)
{
    constexpr int Count = 60;
    constexpr int Stock = 2;
    constexpr int Description = 3;
    TableRows purchases{u"PEDIDO"_s, {}};
    const QStringList typed{u"Flyback universal 29 pol"_s, u"Correia de gaveta"_s,
                            u"Unidade óptica de CD"_s,     u"Fusível de alta tensão 5 kV"_s,
                            u"Controle remoto M119"_s,     u"Magnetron 900 W"_s,
                            u"Solda em carretel 500 g"_s,  u"Cabo coaxial RG-59, rolo"_s};
    std::vector<QString> ranOut;
    for (const std::vector<Value>& part : parts.rows)
        if (part[Stock].textOrEmpty() == u"0"_s)
            ranOut.push_back(part[Description].textOrEmpty());
    QDate day(2026, 1, 5);
    for (int number = 1; number <= Count; ++number) {
        day = day.addDays(words.below(3));
        const bool bySale = number % 3 == 0 && !ranOut.empty();
        QString wanted = words.oneOf(typed);
        QString quantity = words.below(12) == 0 ? stars(4) : QString::number(1 + words.below(20));
        if (bySale) {
            wanted = ranOut.back();
            ranOut.pop_back();
            quantity = u"p.EST"_s;
        }
        purchases.rows.push_back({dateText(day), wanted, quantity, SampleWords::code(number)});
    }
    return purchases;
}

TableRows sampleOnSiteOrders(SampleWords& words)
{
    constexpr int Count = 40;
    constexpr int StillOpen = 8; // the newest ones
    TableRows orders{u"MANUTENCAO"_s, {}};
    QDate asked(2025, 11, 3);
    for (int number = 1; number <= Count; ++number) {
        asked = asked.addDays(1 + words.below(4));
        const bool done = number <= Count - StillOpen;
        const Visit& visit = visits()[static_cast<size_t>(number) % visits().size()];
        const QString person = words.person();
        const bool hasMobile = words.below(4) != 0;
        const bool hasEmail = words.below(3) != 0;
        std::vector<Value> row{SampleWords::code(number),
                               dateText(asked),
                               dateOrStars(done ? asked.addDays(1 + words.below(6)) : QDate()),
                               person,
                               words.street(),
                               u"Campinas"_s,
                               u"SP"_s,
                               QString::number(10 + words.below(900)),
                               words.district(),
                               words.below(2) == 0 ? u"Fundos"_s : stars(24),
                               words.phone(),
                               hasMobile ? words.mobile() : stars(10),
                               words.cpf(),
                               hasEmail ? SampleWords::email(person) : stars(33)};
        for (const QString& line : visit.asked)
            row.emplace_back(line);
        const QStringList nothingDone{stars(31), stars(32), stars(32), stars(33)};
        for (const QString& line : done ? visit.done : nothingDone)
            row.emplace_back(line);
        row.emplace_back(visit.remark);
        row.emplace_back(done ? QString::number(visit.reais + 10 * words.below(6)) + u",00"_s
                              : u"0,00"_s);
        orders.rows.push_back(std::move(row));
    }
    return orders;
}
