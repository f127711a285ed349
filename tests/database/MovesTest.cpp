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

TEST_F(MovesTest, PublishedTable)
{
    struct Row
    {
        QString place, first, last, previous, next;
    };
    for (const Row& row : {Row{u"bof"_s, u"a"_s, u"c"_s, u"3021"_s, u"a"_s},
                           Row{u"eof"_s, u"a"_s, u"c"_s, u"c"_s, u"3021"_s},
                           Row{u"both"_s, u"3021"_s, u"3021"_s, u"3021"_s, u"3021"_s},
                           Row{u"middle"_s, u"a"_s, u"c"_s, u"a"_s, u"c"_s}}) {
        const auto moved = [&](void (Recordset::*move)()) {
            mainSql(u"DELETE FROM FORNECEDOR"_s);
            return after(*openAt(row.place), move);
        };
        EXPECT_EQ(moved(&Recordset::MoveFirst), row.first) << row.place.toStdString();
        EXPECT_EQ(moved(&Recordset::MoveLast), row.last) << row.place.toStdString();
        EXPECT_EQ(moved(&Recordset::MovePrevious), row.previous) << row.place.toStdString();
        EXPECT_EQ(moved(&Recordset::MoveNext), row.next) << row.place.toStdString();
    }
}

// Leaving the deleted row is allowed once to each side; only then nothing is left to move on.
TEST_F(MovesTest, OnlyRowDeletedLetsBothStepsPass)
{
    addSuppliers({u"a"_s});
    auto table = open(suppliers_);
    table->Delete();
    EXPECT_FALSE(table->eof() || table->bof());
    EXPECT_EQ(table->RecordCount(), 0);
    EXPECT_EQ(errorOf([&] { table->Fields(0).value(); }), RuntimeError::NoCurrentRecord);
    EXPECT_EQ(errorOf([&] { table->Delete(); }), RuntimeError::NoCurrentRecord);
    EXPECT_EQ(after(*table, &Recordset::MovePrevious), u"bof"_s);
    EXPECT_EQ(after(*table, &Recordset::MoveNext), u"both"_s);
    EXPECT_EQ(after(*table, &Recordset::MoveFirst), u"3021"_s);
}

TEST_F(MovesTest, DeletedRowsArePassedOverInBothDirections)
{
    auto table = openAt(u"middle"_s);
    table->Delete();
    EXPECT_EQ(after(*table, &Recordset::MovePrevious), u"a"_s);
    EXPECT_EQ(after(*table, &Recordset::MoveNext), u"c"_s);
    EXPECT_EQ(table->AbsolutePosition(), 2);
    table->MoveFirst();
    while (!table->eof()) {
        table->Delete();
        table->MoveNext();
    }
    EXPECT_EQ(table->RecordCount(), 0);
    EXPECT_EQ(stored(u"count(*)"_s), QStringList{u"0"_s});
}

TEST_F(MovesTest, PlaceIsToldAndTakenAgain)
{
    auto table = openAt(u"eof"_s);
    EXPECT_EQ(table->AbsolutePosition(), 0);
    table->setAbsolutePosition(2);
    EXPECT_EQ(table->Fields(0).text(), u"b"_s);
    for (const int outside : {0, 4})
        EXPECT_EQ(errorOf([&] { table->setAbsolutePosition(outside); }),
                  RuntimeError::WrongArguments);
}

TEST_F(MovesTest, FindFoldsCaseKnowsNoWildcardsAndEndsAtEof)
{
    addSuppliers({QString(), u""_s, u"José & Filhos"_s, u"50% a*b_c"_s, u"JOSE ltda"_s});
    const std::vector<std::pair<QString, QString>> rows{
        {u"jos"_s, u"3"_s},   {u"jose"_s, u"5"_s}, {u"JOSÉ"_s, u"3"_s},
        {u"% a"_s, u"4"_s},   {u"a*b"_s, u"4"_s},  {u"b_c"_s, u"4"_s},
        {u"a%b"_s, u"eof"_s}, {u""_s, u"2"_s},     {u"x"_s, u"eof"_s},
    };
    for (const auto& [text, code] : rows) {
        auto table = open(suppliers_);
        table->Find(u"nomeempresa LIKE '*%1*'"_s.arg(text));
        EXPECT_EQ(table->eof() ? u"eof"_s : table->Fields(u"codigo"_s).text(), code)
            << text.toStdString();
    }
    auto table = open(suppliers_);
    table->Find(u"CODIGO LIKE '*x*'"_s);
    EXPECT_EQ(errorOf([&] { table->Find(u"CODIGO LIKE '*1*'"_s); }), RuntimeError::NoCurrentRecord);
    table->MoveFirst();
    for (const QString& wrong :
         {u"NOMEEMPRESA LIKE '*d'água*'"_s, u"NOMEEMPRESA LIKE '*d''a*'"_s,
          u"NOMEEMPRESA LIKE '*a'"_s, u"NOMEEMPRESA LIKE '*'"_s, u"NOMEEMPRESA = 'a'"_s,
          u"LIKE '*a*'"_s, u""_s, u"NOMEEMPRESA LIKE '*a*' x"_s})
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
    event([&] {
        for (const int place : {9, 30, 41}) {
            table->setAbsolutePosition(place);
            table->Delete();
            table->setAbsolutePosition(place + 4);
            set(*table, 0, u"Firma 77 beco"_s);
        }
        add(*table, u"Firma 99 beco"_s);
    });
    table->MoveFirst();
    const QStringList shown = column(*table);
    for (const QString& text :
         {u"FIRMA 7"_s, u"rua"_s, u"beco"_s, u"99"_s, u"a 12 "_s, u"x"_s, u""_s})
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
