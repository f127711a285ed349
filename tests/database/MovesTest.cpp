#include "DatabaseTest.h"

namespace {

class MovesTest : public DatabaseTest
{
protected:
    std::unique_ptr<Recordset> openAt(const QString& place)
    {
        if (place != u"both"_s)
            addSuppliers({u"a"_s, u"b"_s, u"c"_s});
        auto table = open(suppliers_);
        if (place == u"bof"_s)
            table->MovePrevious();
        if (place == u"eof"_s) {
            table->MoveLast();
            table->MoveNext();
        }
        if (place == u"middle"_s)
            table->MoveNext();
        return table;
    }

    // "a" to "c", "bof", "eof", "both", or the number of the error.
    static QString after(Recordset& table, void (Recordset::*move)())
    {
        if (const int error = errorOf([&] { (table.*move)(); }))
            return QString::number(error);
        if (table.bof())
            return table.eof() ? u"both"_s : u"bof"_s;
        return table.eof() ? u"eof"_s : table.Fields(0).text();
    }
};

} // namespace

// Places before, behind and in the middle, and in an empty table; the moves as they are named.
TEST_F(MovesTest, PublishedTable)
{
    for (const auto& [place, first, last, previous, next] :
         {std::array{"bof", "a", "c", "3021", "a"},
          {"eof", "a", "c", "c", "3021"},
          {"both", "3021", "3021", "3021", "3021"},
          {"middle", "a", "c", "a", "c"}}) {
        for (const auto& [move, stands] : {std::pair(&Recordset::MoveFirst, first),
                                           {&Recordset::MoveLast, last},
                                           {&Recordset::MovePrevious, previous},
                                           {&Recordset::MoveNext, next}}) {
            mainSql(u"DELETE FROM FORNECEDOR"_s);
            EXPECT_EQ(after(*openAt(QString::fromLatin1(place)), move), QString::fromLatin1(stands))
                << place;
        }
    }
}

TEST_F(MovesTest, FindFoldsCaseKnowsNoWildcardsAndEndsAtEof)
{
    addSuppliers({QString(), u""_s, u"José & Filhos"_s, u"50% a*b_c"_s, u"JOSE ltda"_s});
    auto table = open(suppliers_);
    const std::vector<std::pair<QString, int>> rows{
        {u"jos"_s, 3}, {u"jose"_s, 5}, {u"JOSÉ"_s, 3}, {u"a*b"_s, 4},
        {u"b_c"_s, 4}, {u"a%b"_s, 0},  {u""_s, 2},
    };
    for (const auto& [text, position] : rows) {
        table->MoveFirst();
        table->Find(u"nomeempresa LIKE '*%1*'"_s.arg(text));
        EXPECT_EQ(table->AbsolutePosition(), position) << text.toStdString();
    }
    table->Find(u"CODIGO LIKE '*x*'"_s);
    EXPECT_EQ(errorOf([&] { table->Find(u"CODIGO LIKE '*1*'"_s); }), RuntimeError::NoCurrentRecord);
    table->MoveFirst();
    for (const QString& wrong :
         {u"NOMEEMPRESA LIKE '*d''a*'"_s, u"NOMEEMPRESA LIKE '*a'"_s, u"NOMEEMPRESA = 'a'"_s,
          u"NOMEEMPRESA LIKE '*'"_s, u"NOMEEMPRESA LIKE '*a*' x"_s})
        EXPECT_EQ(errorOf([&] { table->Find(wrong); }), RuntimeError::WrongArguments)
            << wrong.toStdString();
    EXPECT_EQ(errorOf([&] { table->Find(u"NADA LIKE '*a*'"_s); }), RuntimeError::NoSuchItem);
    EXPECT_EQ(table->AbsolutePosition(), 1) << "a wrong criterion moves nothing";
}

// Rare and common texts, from every row on, over rows that were edited, deleted and added here:
// what Find stands on is the next row that holds the text.
TEST_F(MovesTest, FindStandsOnTheNextRowThatHoldsTheText)
{
    QStringList names;
    for (int i = 0; i < 60; ++i)
        names += i % 7 == 3 ? QString()
                            : u"Firma %1 %2"_s.arg(i * 37 % 60).arg(i % 3 ? u"rua" : u"cais");
    addSuppliers(names);
    const auto table = open(suppliers_ + u" order by NOMEEMPRESA"_s);
    for (const int place : {9, 30, 41}) {
        table->setAbsolutePosition(place);
        table->Delete();
        table->setAbsolutePosition(place + 4);
        set(*table, 0, u"Firma 77 beco"_s);
    }
    add(*table, u"Firma 99 beco"_s);
    for (const int outside : {0, table->RecordCount() + 1})
        EXPECT_EQ(errorOf([&] { table->setAbsolutePosition(outside); }),
                  RuntimeError::WrongArguments);
    table->MoveFirst();
    const QStringList shown = column(*table);
    for (const QString& text : {u"FIRMA 7"_s, u"rua"_s, u"beco"_s, u"99"_s, u"x"_s, u""_s})
        for (int from = 0; from < shown.size(); ++from) {
            table->setAbsolutePosition(from + 1);
            table->Find(u"NOMEEMPRESA LIKE '*%1*'"_s.arg(text));
            int next = from;
            while (next < shown.size() &&
                   (shown[next] == u"NULL" || !shown[next].contains(text, Qt::CaseInsensitive)))
                ++next;
            EXPECT_EQ(table->eof() ? shown.size() : table->AbsolutePosition() - 1, next)
                << text.toStdString() << " from " << from;
        }
}
