#include "DatabaseTest.h"

#include "RowsView.h"

namespace {

// Two stations on one row: what this recordset showed, what it writes, what another stored.
class ConflictTest : public DatabaseTest
{
protected:
    ConflictTest() { addSuppliers({u"a"_s, u"b"_s, u"c"_s}); }

    const QString byCode_ = suppliers_ + u" order by CODIGO"_s;

    static int updateMerged(Recordset& table)
    {
        return errorOf([&] { table.UpdateMerged(); });
    }
};

struct Clash
{
    const char* label;
    std::vector<std::pair<int, Value>> written; // 0 NOMEEMPRESA "a", 1 NOMEFORNECEDOR Null, 2 SITE
    const char* byOther;
    bool refused;
    const char* stored;
};

} // namespace

TEST_F(ConflictTest, WhatOnlyOneStationChangedIsKeptAndAClashIsRefused)
{
    const QString name = u"a"_s;
    const std::vector<Clash> clashes{
        {"nothing there", {{0, u"x"_s}}, "", false, "x|-|-"},
        {"other field", {{0, name}, {1, u"x"_s}}, "SITE='o'", false, "a|x|o"},
        {"other field, written back as shown", {{0, name}, {2, {}}}, "SITE='o'", false, "a|-|o"},
        {"same field", {{0, u"x"_s}}, "NOMEEMPRESA='o'", true, "o|-|-"},
        {"same field, same text", {{0, u"o"_s}}, "NOMEEMPRESA='o'", false, "o|-|-"},
        {"one of two", {{0, u"x"_s}, {1, u"y"_s}}, "NOMEEMPRESA='o'", true, "o|-|-"},
        {"only read here", {{0, name}}, "NOMEEMPRESA='o'", false, "o|-|-"},
        {"a Null left empty", {{0, u"x"_s}, {2, u""_s}}, "SITE='o'", false, "x|-|o"},
        {"a Null as zero", {{2, u"0,00"_s}}, "SITE='o'", false, "a|-|o"},
        {"a Null as no", {{2, u"0"_s}}, "SITE='o'", false, "a|-|o"},
        {"a Null filled", {{2, u"x"_s}}, "SITE='o'", true, "a|-|o"},
        {"emptied there", {{0, u"x"_s}}, "NOMEEMPRESA=NULL", true, "-|-|-"},
    };
    for (const Clash& clash : clashes) {
        SCOPED_TRACE(clash.label);
        mainSql(u"UPDATE FORNECEDOR SET NOMEEMPRESA='a', NOMEFORNECEDOR=NULL, SITE=NULL "
                "WHERE CODIGO='1'"_s);
        auto table = open(byCode_);
        table->MoveNext();
        if (*clash.byOther)
            mainSql(u"UPDATE FORNECEDOR SET %1 WHERE CODIGO='1'"_s.arg(
                QString::fromLatin1(clash.byOther)));
        // Between opening and going there, or between going there and saving: the same rule.
        table->MovePrevious();
        const auto write = [&] {
            for (const auto& [field, value] : clash.written)
                table->Fields(field) = value;
        };
        write();
        EXPECT_EQ(table->wouldOverwrite(), clash.refused);
        EXPECT_EQ(updateMerged(*table), clash.refused ? RuntimeError::RowChanged : 0);
        EXPECT_EQ(table->isOvertaken(), clash.refused);
        EXPECT_EQ(stored(u"ifnull(NOMEEMPRESA,'-')||'|'||ifnull(NOMEFORNECEDOR,'-')||'|'||"
                         "ifnull(SITE,'-')"_s)[0],
                  QString::fromLatin1(clash.stored));
        if (!clash.refused)
            continue;
        // Refused again and again, until it was seen.
        write();
        EXPECT_EQ(updateMerged(*table), RuntimeError::RowChanged);
        EXPECT_EQ(table->Fields(0).text(), name);
        table->CancelUpdate();
        EXPECT_EQ(table->Fields(0).textOrEmpty() + table->Fields(2).textOrEmpty(),
                  QString::fromLatin1(clash.stored).remove(u'|').remove(u'-'));
        EXPECT_FALSE(table->isOvertaken());
        write();
        EXPECT_EQ(updateMerged(*table), 0);
    }
}

TEST_F(ConflictTest, DeletionOfWhatNobodySawIsRefusedOnce)
{
    auto table = open(byCode_);
    mainSql(u"UPDATE FORNECEDOR SET SITE='bench' WHERE CODIGO='1'"_s);
    // A merged save does not bring the other's text into view, so that it was not seen either.
    for (const int field : {1, 0}) { // the second as it is: nothing is written
        table->Fields(field) = u"a"_s;
        EXPECT_EQ(updateMerged(*table), 0);
    }
    EXPECT_EQ(table->storedValues()[2].text(), u"bench"_s);
    EXPECT_EQ(errorOf([&] { table->Delete(); }), RuntimeError::RowChanged);
    EXPECT_EQ(table->Fields(2).text(), u"bench"_s);
    table->Delete();
    EXPECT_EQ(names(), (QStringList{u"b"_s, u"c"_s}));
}

TEST_F(ConflictTest, RowThatIsGoneStepsToItsNeighbour)
{
    const QString all = u"abc"_s;
    for (const int gone : {0, 1, 2}) {
        SCOPED_TRACE(gone);
        mainSql(u"DELETE FROM FORNECEDOR"_s);
        addSuppliers({u"a"_s, u"b"_s, u"c"_s});
        const QString name = all.mid(gone, 1);
        std::vector<std::unique_ptr<Recordset>> tables;
        for (const CursorType cursor :
             {CursorType::Static, CursorType::Static, CursorType::Dynamic, CursorType::Dynamic}) {
            tables.push_back(open(byCode_, cursor));
            tables.back()->Find(u"NOMEEMPRESA LIKE '*%1*'"_s.arg(name));
        }
        mainSql(u"DELETE FROM FORNECEDOR WHERE NOMEEMPRESA='%1'"_s.arg(name));
        const QString standsOn = name == u"b"_s ? u"c"_s : u"b"_s;

        EXPECT_EQ(errorOf([&] { tables[0]->Delete(); }), RuntimeError::RowChanged);
        EXPECT_EQ(tables[0]->Fields(0).text(), standsOn);
        EXPECT_EQ(tables[0]->RecordCount(), 2);

        tables[1]->Fields(1) = u"x"_s;
        EXPECT_EQ(updateMerged(*tables[1]), RuntimeError::RowChanged);
        EXPECT_EQ(tables[1]->Fields(0).text(), name) << "until the edit is cancelled";
        tables[1]->CancelUpdate();
        EXPECT_EQ(tables[1]->Fields(0).text(), standsOn);

        // A dynamic one steps to the row behind it, and back to the one before.
        tables[2]->MoveNext();
        EXPECT_EQ(column(*tables[2]).value(0), all.mid(gone + 1, 1));
        tables[3]->MovePrevious();
        EXPECT_EQ(tables[3]->bof() ? QString() : column(*tables[3])[0], all.left(gone).right(1));
    }
    // The last of all, and a number that is given out to no other row.
    auto last = open(byCode_);
    mainSql(u"DELETE FROM FORNECEDOR"_s);
    mainSql(u"INSERT INTO FORNECEDOR(NOMEEMPRESA) VALUES('b')"_s);
    for (int left = last->RecordCount(); left > 0; --left)
        EXPECT_EQ(errorOf([&] { last->Delete(); }), RuntimeError::RowChanged);
    EXPECT_TRUE(last->bof() && last->eof());
    EXPECT_EQ(names(), QStringList{u"b"_s});
}

TEST_F(ConflictTest, RowThatWasRefusedReadsAsStoredOnceItWasLeft)
{
    auto table = open(byCode_);
    mainSql(u"UPDATE FORNECEDOR SET SITE='bench'"_s);
    EXPECT_EQ(errorOf([&] { set(*table, 1, u"x"_s); }), RuntimeError::RowChanged);
    EXPECT_TRUE(table->Fields(1).isNull() && table->Fields(2).isNull()) << "the edit is dropped";
    table->MoveNext();
    table->MovePrevious();
    EXPECT_EQ(table->Fields(2).text(), u"bench"_s);
}

TEST_F(ConflictTest, RowsHandedOutStayAsTheyWere)
{
    auto table = open(byCode_);
    const std::shared_ptr<const RowsView> rows = table->rowsNow();
    table->Delete();
    table->Close();
    for (const auto& [row, text] : {std::pair(0, u"a"_s), {2, u"c"_s}, {3, QString()}})
        EXPECT_EQ(rows->text(row, 0), text);
}
