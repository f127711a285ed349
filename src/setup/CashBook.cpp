#include "CashBook.h"

#include "CsvExport.h"
#include "Dates.h"
#include "Format.h"
#include "Numbers.h"
#include "PageDevice.h"
#include "Printer.h"
#include "ProfileFile.h"
#include "Strings.h"

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace {

std::optional<QDate> dayOf(const Value& value)
{
    if (const QDate* day = std::get_if<QDate>(&value.data()))
        return *day;
    return dateFromText(value.textOrEmpty());
}

std::optional<qint64> tenThousandths(const Value& value)
{
    if (value.isNull())
        return 0;
    if (const auto* money = std::get_if<Value::Money>(&value.data()))
        return money->tenThousandths;
    if (!isNumeric(value.text()))
        return std::nullopt;
    return std::llround(toNumber(value.text()) * 10'000);
}

QString moneyText(qint64 tenThousandths)
{
    return Format(Value(Value::Money{tenThousandths}), formats::Total);
}

QString dayText(const std::optional<QDate>& day)
{
    return day ? dateText(*day) : u"sem data"_s;
}

// Texts of the sheet, from a left edge or up to a right one, in twips.
constexpr int LineHeight = 190;
constexpr int Bottom = Printer::Height - 500;
constexpr int DayX = 100, CodeX = 1200, DescriptionX = 2300, KindX = 7300, QuantityX = 8000,
              ValueX = 9300;

class Sheet
{
public:
    Sheet(const ShopFiles& files, const QString& range) : range_(range)
    {
        constexpr int Longest = 255;
        title_ = readProfileString(u"Configurar"_s, u"Titulo"_s, {}, Longest, files.ini);
        beginPage();
    }

    void line(const std::vector<std::pair<int, QString>>& texts, bool bold = false)
    {
        if (y_ > Bottom) {
            printer_.NewPage();
            beginPage();
        }
        printer_.setFontBold(bold);
        for (const auto& [x, text] : texts)
            printer_.at(x, y_).print(text);
        y_ += LineHeight;
    }
    void rule() { line({{DayX, repeated(150, u'-')}}); }
    void skip() { y_ += LineHeight; }

private:
    void beginPage()
    {
        y_ = 100;
        ++page_;
        printer_.setFontSize(12);
        line({{DayX, title_}}, true);
        y_ += LineHeight / 2;
        printer_.setFontSize(8);
        line({{DayX, u"Movimento de caixa"_s + range_}, {ValueX, u"Página %1"_s.arg(page_)}});
        line({{DayX, u"Data"_s},
              {CodeX, u"Código/O.S"_s},
              {DescriptionX, u"Descrição"_s},
              {KindX, u"Tipo"_s},
              {QuantityX, u"Quant"_s},
              {ValueX, u"Valor"_s}},
             true);
        rule();
    }

    Printer& printer_ = Printer::instance();
    QString title_, range_;
    int y_ = 0;
    int page_ = 0;
};

QString kindText(const CashBook::Entry& entry)
{
    return entry.isJob ? u"O.S"_s : u"Venda"_s;
}

void sumLine(Sheet& sheet, const QString& what, const CashBook::Sums& sums)
{
    sheet.line({{DayX, what},
                {DescriptionX, u"O.S: "_s + moneyText(sums.jobs)},
                {DescriptionX + 2500, u"Vendas: "_s + moneyText(sums.sales)},
                {ValueX - 600, u"Total: "_s + moneyText(sums.jobs + sums.sales)}},
               true);
}

} // namespace

CashBook readCashBook(const ShopFiles& files, const std::optional<DayRange>& range)
{
    std::map<QString, bool> orders;
    forEachRow(files.main, u"SELECT * FROM Cliente"_s,
               [&](Recordset& row) { orders[row.Fields(0).textOrEmpty()] = true; });
    CashBook book;
    forEachRow(files.main, u"SELECT * FROM MOVIMENTO"_s, [&](Recordset& row) {
        const Value quantity = row.Fields(2);
        const Value value = row.Fields(3);
        CashBook::Entry entry{dayOf(row.Fields(4)), row.Fields(0).textOrEmpty(),
                              row.Fields(1).textOrEmpty(), quantity.textOrEmpty(),
                              value.isNull() ? QString() : Format(value, formats::Total)};
        if (range && (!entry.day || *entry.day < range->first || *entry.day > range->last))
            return;
        entry.isJob = quantity.isNull() && orders.contains(entry.code);
        const std::optional<qint64> amount = tenThousandths(value);
        entry.isReadable = amount.has_value();
        book.unreadable += entry.isReadable ? 0 : 1;
        for (CashBook::Sums* sums : {&book.days[entry.day], &book.all})
            (entry.isJob ? sums->jobs : sums->sales) += amount.value_or(0);
        book.entries.push_back(std::move(entry));
    });
    std::stable_sort(book.entries.begin(), book.entries.end(),
                     [](const auto& left, const auto& right) { return left.day < right.day; });
    return book;
}

QByteArray cashRowsCsv(const CashBook& book)
{
    QByteArray text = CsvMark + csvLine({u"Data"_s, u"Código/O.S"_s, u"Descrição"_s, u"Tipo"_s,
                                         u"Quant"_s, u"Valor"_s});
    for (const CashBook::Entry& entry : book.entries)
        text += csvLine({entry.day ? Value(dateText(*entry.day)) : Value(), entry.code,
                         entry.description, kindText(entry), entry.quantity,
                         QString(entry.value).remove(u'.')});
    return text;
}

QByteArray cashDaysCsv(const CashBook& book)
{
    QByteArray text = CsvMark + csvLine({u"Data"_s, u"O.S"_s, u"Vendas"_s, u"Total"_s});
    const auto line = [&](const QString& day, const CashBook::Sums& sums) {
        const auto plain = [](qint64 amount) { return moneyText(amount).remove(u'.'); };
        text += csvLine({day, plain(sums.jobs), plain(sums.sales), plain(sums.jobs + sums.sales)});
    };
    for (const auto& [day, sums] : book.days)
        line(dayText(day), sums);
    line(u"Total"_s, book.all);
    return text;
}

void printCashBook(const CashBook& book, const ShopFiles& files,
                   const std::optional<DayRange>& range, const QString& pdfPath)
{
    Printer& printer = Printer::instance();
    printer.setDevice(std::make_shared<PdfDevice>(pdfPath));
    printer.setDocumentName(u"Movimento de caixa"_s);
    Sheet sheet(files, range ? u" de %1 até %2"_s.arg(dateText(range->first), dateText(range->last))
                             : QString());
    for (auto entry = book.entries.begin(); entry != book.entries.end(); ++entry) {
        sheet.line({{DayX, dayText(entry->day)},
                    {CodeX, entry->code},
                    {DescriptionX, Left(entry->description, 60)},
                    {KindX, kindText(*entry)},
                    {QuantityX, entry->quantity},
                    {ValueX, entry->isReadable ? entry->value : entry->value + u" (?)"_s}});
        if (const auto next = std::next(entry);
            next == book.entries.end() || next->day != entry->day) {
            sumLine(sheet, dayText(entry->day), book.days.at(entry->day));
            sheet.skip();
        }
    }
    sheet.rule();
    sumLine(sheet, u"Total"_s, book.all);
    if (book.unreadable > 0)
        sheet.line({{DayX, u"%1 valores não podem ser lidos e contam como 0,00: (?)"_s.arg(
                               book.unreadable)}});
    printer.EndDoc();
}
