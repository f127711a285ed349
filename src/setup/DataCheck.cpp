#include "DataCheck.h"

#include "Dates.h"
#include "FileDamage.h"
#include "Numbers.h"
#include "OnePiece.h"
#include "RuntimeError.h"
#include "SafetyCopy.h"
#include "Strings.h"

#include <QDir>
#include <QFile>

#include <map>
#include <set>

using namespace Qt::Literals::StringLiterals;

namespace {

using Findings = std::vector<Finding>;

const QString Orders = u"SELECT * FROM Cliente"_s;
const QString Twins = u"SELECT * FROM PECAAPLICADA"_s;

void fault(Findings& findings, const QString& text)
{
    findings.push_back({Finding::Kind::Fault, text});
}

// Money and numbers may have been stored as any text that a form was given.
bool reads(const Value& value)
{
    return value.isNull() || std::holds_alternative<Value::Money>(value.data()) ||
           std::holds_alternative<double>(value.data()) || isNumeric(value.text());
}

bool readsAsDate(const Value& value)
{
    return std::holds_alternative<QDate>(value.data()) ||
           dateFromText(value.textOrEmpty()).has_value();
}

// Whole and ours; what is not can only be restored.
bool checkFile(const QString& path, const QString& what, Findings& findings)
{
    if (!QFile::exists(path)) {
        fault(findings, u"%1: falta o arquivo %2."_s.arg(what, path));
        return false;
    }
    try {
        const QStringList damage = damageOf(path);
        if (!damage.isEmpty())
            fault(findings, u"%1: arquivo danificado (%2)."_s.arg(what, damage.front()));
        return damage.isEmpty();
    } catch (const RuntimeError& error) {
        fault(findings, u"%1: %2"_s.arg(what, error.description()));
        return false;
    }
}

// How many rows hold each number; rows without one count under the empty text.
std::map<QString, int> numbersOf(const QString& file, const QString& select)
{
    std::map<QString, int> numbers;
    forEachRow(file, select, [&](Recordset& row) { ++numbers[row.Fields(0).textOrEmpty()]; });
    return numbers;
}

void checkNumbers(const std::map<QString, int>& numbers, const QString& what, Findings& findings)
{
    for (const auto& [number, count] : numbers) {
        if (number.isEmpty())
            fault(findings, u"%1: %2 sem número."_s.arg(what).arg(count));
        else if (count > 1)
            fault(findings, u"%1: o número %2 aparece %3 vezes."_s.arg(what, number).arg(count));
    }
}

void checkOrders(const QString& file, Findings& findings)
{
    const std::map<QString, int> orders = numbersOf(file, Orders);
    const std::map<QString, int> twins = numbersOf(file, Twins);
    checkNumbers(orders, u"O.S"_s, findings);
    checkNumbers(twins, u"Peças aplicadas"_s, findings);
    for (const auto& [number, count] : orders)
        if (!number.isEmpty() && !twins.contains(number))
            findings.push_back({count == 1 ? Finding::Kind::Mendable : Finding::Kind::Fault,
                                u"O.S %1: falta a linha das peças aplicadas."_s.arg(number)});
    for (const auto& [number, count] : twins)
        if (!number.isEmpty() && !orders.contains(number))
            fault(findings, u"Peças aplicadas %1: não há O.S com este número."_s.arg(number));
    forEachRow(file, Orders, [&](Recordset& row) {
        if (const Value price = row.Fields(u"valor"_s); !reads(price))
            fault(findings, u"O.S %1: o valor \"%2\" não é um número."_s.arg(
                                row.Fields(0).textOrEmpty(), price.text()));
    });
}

void checkParts(const QString& file, Findings& findings)
{
    forEachRow(file, u"SELECT * FROM Pecas"_s, [&](Recordset& row) {
        const QString part = u"Peça %1: "_s.arg(row.Fields(0).textOrEmpty());
        const Value price = row.Fields(u"VALOR"_s);
        const QString stock = row.Fields(u"ESTOQUE"_s).textOrEmpty();
        if (!reads(price))
            fault(findings, part + u"o valor \"%1\" não é um número."_s.arg(price.text()));
        if (!isNumeric(stock))
            fault(findings, part + u"o estoque \"%1\" não é um número."_s.arg(stock));
        else if (toNumber(stock) < 0)
            fault(findings, part + u"o estoque é negativo (%1)."_s.arg(stock));
    });
}

// What the cash report cannot add up stops it. A delivered order has no quantity by its nature.
void checkCash(const QString& file, Findings& findings)
{
    const std::map<QString, int> orders = numbersOf(file, Orders);
    int jobs = 0;
    forEachRow(file, u"SELECT * FROM MOVIMENTO"_s, [&](Recordset& row) {
        const QString code = row.Fields(0).textOrEmpty();
        const QString entry =
            u"Caixa, lançamento %1 de %2: "_s.arg(code, row.Fields(u"DATA"_s).textOrEmpty());
        const Value quantity = row.Fields(2);
        const Value value = row.Fields(3);
        if (quantity.isNull() && orders.contains(code))
            ++jobs;
        else if (quantity.isNull() || !reads(quantity))
            fault(findings,
                  entry + u"a quantidade \"%1\" não é um número."_s.arg(quantity.textOrEmpty()));
        if (value.isNull() || !reads(value))
            fault(findings, entry + u"o valor \"%1\" não é um número."_s.arg(value.textOrEmpty()));
        if (!readsAsDate(row.Fields(4)))
            fault(findings, entry + u"a data não pode ser lida."_s);
    });
    if (jobs > 0)
        findings.push_back(
            {Finding::Kind::Remark,
             u"Caixa: %1 lançamentos de O.S sem quantidade; a lista da tela para no primeiro. "
             "A lista completa: vorbelo-setup --caixa."_s.arg(jobs)});
}

void checkUsers(const QString& file, Findings& findings)
{
    const std::map<QString, int> users = numbersOf(file, u"SELECT * FROM VALIDAR"_s);
    if (users.empty())
        fault(findings, u"Usuários: não há nenhum, ninguém pode entrar."_s);
    for (const auto& [name, count] : users) {
        if (count > 1)
            fault(findings, u"Usuários: \"%1\" aparece %2 vezes."_s.arg(name).arg(count));
        if (Trim(name).isEmpty())
            fault(findings, u"Usuários: há um usuário sem nome."_s);
    }
}

void checkList(const QString& file, Findings& findings)
{
    forEachRow(file, u"SELECT * FROM Pecas"_s, [&](Recordset& row) {
        for (const QString& field : {u"QUANTIDADE"_s, u"UNITARIO"_s, u"TOTAL"_s}) {
            const QString text = row.Fields(field).textOrEmpty();
            if (!isNumeric(text))
                fault(findings, u"Lista da venda, peça %1: %2 \"%3\" não é um número."_s.arg(
                                    row.Fields(0).textOrEmpty(), field, text));
        }
    });
}

// A check that breaks off is a finding itself, and the others go on.
void run(void (*check)(const QString& file, Findings& findings), const QString& file,
         Findings& findings)
try {
    check(file, findings);
} catch (const RuntimeError& error) {
    fault(findings, error.description());
}

} // namespace

std::vector<Finding> checkData(const ShopFiles& files)
{
    Findings findings;
    // A folder that was copied from another computer still names its file there.
    if (const QString near = QDir(files.folder).absoluteFilePath(u"GALTERIA1.mdb"_s);
        !QFile::exists(files.main) && QFile::exists(near))
        findings.push_back(
            {Finding::Kind::Remark,
             u"Na pasta da oficina há o arquivo %1. Se é este, escreva-o em "
             "Caminho e Caminho2 de Banco.ini."_s.arg(QDir::toNativeSeparators(near))});
    if (checkFile(files.main, u"Banco de dados"_s, findings))
        for (const auto check : {checkOrders, checkParts, checkCash, checkUsers})
            run(check, files.main, findings);
    if (checkFile(files.list, u"Lista da venda"_s, findings))
        run(checkList, files.list, findings);
    return findings;
}

QStringList repairData(const ShopFiles& files, const QString& copy)
{
    const std::vector<Finding> findings = checkData(files);
    if (std::none_of(findings.begin(), findings.end(), [](const Finding& finding) {
            return finding.kind == Finding::Kind::Mendable;
        }))
        return {};
    ExclusiveFile(files.main).copyTo(copy);

    ObjectVariable<Connection> connection;
    connection.create();
    connection->Open(u"Provider = Microsoft.Jet.OLEDB.4.0;Data Source = "_s + files.main);
    QStringList done;
    // What is missing is decided under the lock: a station may be at work.
    inOnePiece({connection}, [&] {
        done.clear();
        const std::map<QString, int> numbers = numbersOf(files.main, Orders);
        const std::map<QString, int> known = numbersOf(files.main, Twins);
        Recordset orders, twins;
        orders.Open(Orders, connection.shared(), CursorType::Static, LockType::ReadOnly);
        twins.Open(Twins, connection.shared(), CursorType::Static, LockType::Optimistic);
        for (; !orders.eof(); orders.MoveNext()) {
            const QString number = orders.Fields(0).textOrEmpty();
            if (number.isEmpty() || known.contains(number) || numbers.at(number) > 1)
                continue;
            twins.AddNew();
            twins.Fields(0) = number;
            twins.Fields(1) = orders.Fields(u"Nome"_s).value();
            twins.Update();
            done << u"O.S %1: criada a linha das peças aplicadas."_s.arg(number);
        }
    });
    return done;
}
