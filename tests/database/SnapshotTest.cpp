#include "DatabaseTest.h"

#include "Database.h"

#include <random>

using SnapshotTest = DatabaseTest;

TEST_F(SnapshotTest, StaticShowsItsOpeningAndDynamicWhatOthersWrote)
{
    addSuppliers({u"a"_s, u"b"_s});
    const QString sql = suppliers_ + u" order by NOMEEMPRESA"_s;
    auto still = open(sql);
    auto moving = open(sql, CursorType::Dynamic, LockType::ReadOnly);
    moving->MoveNext();
    mainSql(u"INSERT INTO FORNECEDOR(NOMEEMPRESA) VALUES('aa')"_s);
    mainSql(u"UPDATE FORNECEDOR SET NOMEEMPRESA='bb' WHERE CODIGO='2'"_s);
    moving->MovePrevious();
    EXPECT_EQ(moving->Fields(0).text(), u"aa"_s);
    moving->Find(u"NOMEEMPRESA LIKE '*bb*'"_s);
    EXPECT_FALSE(moving->eof());
    EXPECT_EQ(column(*still), (QStringList{u"a"_s, u"b"_s}));
    add(*still, u"A"_s);
    still->MoveFirst();
    set(*still, 0, u"c"_s);
    EXPECT_EQ(column(*still), (QStringList{u"c"_s, u"b"_s, u"A"_s})) << "own changes over it";
    moving->MoveFirst();
    EXPECT_EQ(column(*moving), (QStringList{u"A"_s, u"aa"_s, u"bb"_s, u"c"_s}));
}

TEST_F(SnapshotTest, OrderPutsNullsFirstThenPortugueseAndNumbersByValue)
{
    addSuppliers({u"áb"_s, u"0000001"_s, u"AB"_s, u"*******"_s, u""_s, QString()});
    EXPECT_EQ(column(*open(u"select * from fornecedor ORDER BY nomeempresa"_s)),
              (QStringList{u"NULL"_s, u""_s, u"*******"_s, u"0000001"_s, u"AB"_s, u"áb"_s}));
    const QStringList money{u"-1"_s, u"9,5"_s, u"100"_s, u"a combinar"_s};
    const QStringList dates{u"20/11/2004"_s, u"05/12/2004"_s, u"10/01/2005"_s, u"**/**/****"_s};
    auto cash = open(u"SELECT * FROM MOVIMENTO"_s);
    for (const int i : {1, 0, 3, 2}) {
        cash->AddNew();
        cash->Fields(3) = money[i];
        cash->Fields(4) = dates[3 - i];
        cash->Update();
    }
    EXPECT_EQ(column(*open(u"SELECT * FROM MOVIMENTO order by valor"_s), 3), money);
    EXPECT_EQ(column(*open(u"SELECT * FROM MOVIMENTO order by DATA"_s), 4), dates);
}

TEST_F(SnapshotTest, LikeFindsByFoldedTextAndTypedWildcards)
{
    addSuppliers({u"JOSE"_s, u"José"_s, u"50% off"_s, u""_s, QString(), u"D'Ávila"_s});
    for (const auto& [typed, codes] : {std::pair(u""_s, u"1 2 3 4 6"_s),
                                       {u"%of_"_s, u"3"_s},
                                       {u"[!x]"_s, u"1 2 3 6"_s},
                                       {u"d''á"_s, u"6"_s}})
        EXPECT_EQ(column(*open(suppliers_ + u" WHERE NomeEmpresa Like '%"_s + typed + u"%'"_s), 9)
                      .join(u' '),
                  codes);
}

TEST_F(SnapshotTest, OtherStatementsAreSyntaxErrors)
{
    const QString all = suppliers_;
    for (const auto& [sql, error] :
         {std::pair(u"  select*from  FORNECEDOR  ORDER\tBY site "_s, 0),
          {all + u" WHERE CODIGO Like '%d'a%'"_s, RuntimeError::SyntaxError},
          {all + u" WHERE CODIGO '%a%'"_s, RuntimeError::SyntaxError},
          {all + u" WHERE CODIGO Like '%' or '1'='1'"_s, RuntimeError::SyntaxError},
          {all + u"; DROP TABLE FORNECEDOR"_s, RuntimeError::SyntaxError},
          {all + u" order by CODIGO, SITE"_s, RuntimeError::SyntaxError},
          {u"SELECT CODIGO FROM FORNECEDOR"_s, RuntimeError::SyntaxError},
          {u"DELETE FROM FORNECEDOR"_s, RuntimeError::SyntaxError},
          {u"SELECT * FROM sqlite_master"_s, RuntimeError::NoSuchTable},
          {u"SELECT * FROM _lista_concluida"_s, RuntimeError::NoSuchTable},
          {all + u" order by NADA"_s, RuntimeError::MissingParameter},
          {all + u" WHERE _id Like '%1%'"_s, RuntimeError::MissingParameter},
          {all + u" WHERE CODIGO Like '%[%'"_s, RuntimeError::EngineFault}})
        EXPECT_EQ(errorOf([&] { open(sql); }), error) << sql.toStdString();
}

// Whatever is written in whatever sequence: what a recordset opened here shows, out of the images
// kept in memory, is what a fresh reading of the file gives.
TEST_F(SnapshotTest, KeptImagesStayEqualToTheFile)
{
    const QStringList names{u"Ana"_s, u"ána"_s, u"Bé"_s, u"bela"_s, u"007"_s, u""_s, u"*x"_s};
    std::mt19937 chance(7);
    const auto below = [&](int limit) { return static_cast<int>(chance() % unsigned(limit)); };
    const QStringList queries{suppliers_, suppliers_ + u" order by NOMEEMPRESA"_s,
                              suppliers_ + u" order by CODIGO"_s,
                              suppliers_ + u" WHERE NOMEEMPRESA Like '%a%'"_s,
                              suppliers_ + u" WHERE NOMEEMPRESA Like '%%'"_s};
    const auto shown = [&] {
        QStringList rows;
        for (const QString& sql : queries) {
            auto table = open(sql, CursorType::Static, LockType::ReadOnly);
            for (; !table->eof(); table->MoveNext())
                rows += table->Fields(0).textOrEmpty() + u'|' + table->Fields(9).textOrEmpty();
            rows += u"."_s;
        }
        return rows;
    };
    const auto change = [&](Recordset& table, int step) {
        const int rows = table.RecordCount();
        const int action = rows < 3 ? 0 : below(8);
        if (action < 5) {
            table.AddNew();
            table.Fields(9) = QString::number(step);
        } else {
            table.setAbsolutePosition(1 + below(rows));
        }
        if (action == 7) {
            table.Delete();
        } else {
            table.Fields(0) = below(6) == 0 ? Value() : Value(names[below(7)]);
            table.Update();
        }
    };
    // Enough changes in a row to be merged into a new block on the way; some rounds of a few, some
    // with a foreign change between.
    for (int round = 0; round < 30; ++round) {
        QStringList kept;
        event([&] {
            auto table = open(queries[1 + below(2)]);
            const int steps = round % 10 == 0 ? 700 : 1 + below(20);
            for (int step = 0; step < steps; ++step)
                change(*table, 1000 * round + step);
            kept = shown();
        });
        Database::dropIdle();
        ASSERT_EQ(kept, shown()) << round;
        if (below(4) == 0)
            mainSql(u"UPDATE FORNECEDOR SET NOMEEMPRESA='foreign' WHERE rowid%5=1"_s);
        shown();
    }
}
