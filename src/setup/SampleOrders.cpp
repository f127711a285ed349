#include "SampleOrders.h"

#include "Dates.h"
#include "Format.h"

#include <utility>
#include <variant>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Job
{
    QString device;
    QString defect;
    QString service;
    QString part; // how its description begins in the catalogue
    int cents = 0;
};

const std::vector<Job>& jobs()
{
    static const std::vector<Job> all{
        {u"Televisor 29 polegadas"_s, u"Não liga"_s, u"Troca do capacitor da fonte"_s,
         u"Capacitor eletrolítico"_s, 8500},
        {u"Televisor 20 polegadas"_s, u"Sem imagem, com som"_s,
         u"Troca do flyback e ajuste de foco"_s, u"Flyback universal"_s, 14000},
        {u"Micro-ondas 28 litros"_s, u"Não aquece"_s,
         u"Troca do magnetron e do fusível de alta tensão"_s, u"Fusível de alta tensão"_s, 16000},
        {u"Aparelho de som com CD"_s, u"CD não lê"_s,
         u"Limpeza da lente e troca da unidade óptica"_s, u"Unidade óptica"_s, 9500},
        {u"Videocassete 4 cabeças"_s, u"Enrola a fita"_s,
         u"Troca do rolo pressor e limpeza do mecanismo"_s, u"Rolo pressor"_s, 6000},
        {u"Monitor 17 polegadas"_s, u"Imagem escura"_s,
         u"Troca do transistor de saída horizontal"_s, u"Transistor"_s, 7800},
        {u"Aparelho de DVD"_s, u"Não abre a gaveta"_s, u"Troca da correia da gaveta"_s,
         u"Correia"_s, 4500},
        {u"Rádio gravador"_s, u"Som falhando"_s, u"Troca do potenciômetro de volume"_s,
         u"Potenciômetro duplo"_s, 3500},
    };
    return all;
}

// Positions in a row of the catalogue.
constexpr int Code = 0;
constexpr int Description = 3;
constexpr int Price = 4;

using Row = std::vector<Value>;

const Row& anyOf(const std::vector<Row>& rows, SampleWords& words)
{
    return rows[static_cast<std::size_t>(words.below(static_cast<int>(rows.size())))];
}

Row partFor(const Job& job, const TableRows& parts, SampleWords& words)
{
    std::vector<Row> fitting;
    for (const Row& part : parts.rows)
        if (part[Description].textOrEmpty().startsWith(job.part))
            fitting.push_back(part);
    return anyOf(fitting, words);
}

constexpr int Lines = 11;

// The twin of a finished order as the bench leaves it: a line for each part, the others empty.
Row appliedParts(const QString& code, const QString& person, const Row& part, int number,
                 const TableRows& parts)
{
    struct Applied
    {
        const Row& part;
        int quantity;
    };
    std::vector<Applied> applied{{part, 1}};
    // Small parts that went in as well, without another draw.
    const auto any = [&](int step) -> const Row& {
        return parts.rows[static_cast<std::size_t>(number * step) % parts.rows.size()];
    };
    if (number % 3 == 0)
        applied.push_back({any(7), 1 + number % 4});
    if (number % 6 == 0)
        applied.push_back({any(11), 2});
    Row twin{code, person};
    for (const Applied& line : applied)
        twin.insert(twin.end(),
                    {line.part[Code], line.part[Description], QString::number(line.quantity),
                     Format(line.part[Price], formats::Money)});
    for (std::size_t line = applied.size(); line < Lines; ++line)
        twin.insert(twin.end(), {u""_s, u""_s, u""_s, u"0,00"_s});
    return twin;
}

Value::Money times(int quantity, const Value& price)
{
    return {quantity * std::get<Value::Money>(price.data()).tenThousandths};
}

} // namespace

std::vector<TableRows> sampleOrders(SampleWords& words, const TableRows& parts)
{
    TableRows orders{u"Cliente"_s, {}};
    TableRows twins{u"PECAAPLICADA"_s, {}};
    TableRows movements{u"MOVIMENTO"_s, {}};
    constexpr int Count = 320;
    const QDate firstDay(2025, 9, 1);
    for (int number = 1; number <= Count; ++number) {
        const Job& job =
            jobs()[static_cast<std::size_t>(words.below(static_cast<int>(jobs().size())))];
        const QString code = SampleWords::code(number);
        const QString person = words.person();
        const QDate entry = firstDay.addDays(number / 2);
        const bool delivered = number <= Count - 60 && words.below(10) != 0;
        const QDate exit = entry.addDays(2 + words.below(12));
        const Value::Money price{qint64(job.cents + 500 * words.below(8)) * 100};
        const bool company = words.below(8) == 0;
        orders.rows.push_back(
            {code,
             dateText(entry),
             delivered ? dateText(exit) : QString(),
             person,
             words.street(),
             u"Campinas"_s,
             u"SP"_s,
             QString::number(10 + words.below(1900)),
             words.district(),
             words.below(4) == 0 ? u"Apto %1"_s.arg(11 + words.below(80)) : QString(),
             words.phone(),
             words.mobile(),
             company ? words.cgc() : words.cpf(),
             SampleWords::email(person),
             job.device,
             u"Série %1"_s.arg(100000 + words.below(899999)),
             job.defect,
             words.below(3) == 0 ? u"Com controle remoto"_s : QString(),
             delivered ? job.service : QString(),
             price,
             delivered,
             words.below(20) == 0,
             delivered || words.below(2) == 0,
             false,
             u"Prateleira %1"_s.arg(1 + words.below(12))});
        twins.rows.push_back(
            delivered ? appliedParts(code, person, partFor(job, parts, words), number, parts)
                      : Row{code, person});
    }
    for (int sale = 0; sale < 40; ++sale) {
        const Row& part = anyOf(parts.rows, words);
        const int quantity = 1 + words.below(4);
        movements.rows.push_back({part[Code], part[Description], quantity,
                                  times(quantity, part[Price]), firstDay.addDays(4LL * sale)});
    }
    return {orders, twins, movements};
}
