#include "DatabaseTest.h"

#include "EventTransactions.h"
#include "FailingDisk.h"
#include "ListMark.h"

#include <QFile>

#include <stdexcept>

namespace {

class EventTransactionsTest : public DatabaseTest
{
protected:
    FailingDisk disk_;
};

} // namespace

TEST_F(EventTransactionsTest, WritesOfAnEventBecomeDurableTogether)
{
    event([&] {
        auto table = open(suppliers_);
        add(*table, u"a"_s);
        EXPECT_EQ(names(), QStringList()) << "nobody else sees half an event";
        EXPECT_EQ(open(suppliers_)->Fields(0).text(), u"a"_s) << "this program does";
        add(*table, u"b"_s);
        add(*table, u"c"_s);
        table->Close();
        throw RuntimeError(RuntimeError::TypeMismatch);
    });
    EXPECT_EQ(names().size(), 3) << "also where an error ends the event";

    expectBox(u"?"_s);
    event([&] {
        auto table = open(suppliers_);
        add(*table, u"d"_s);
        MsgBox(u"?"_s);
        EXPECT_EQ(names().size(), 4) << "and before a box";
        {
            const gate::NestedLoop loop;
            event([&] { add(*table, u"e"_s); });
            EXPECT_EQ(names().size(), 5) << "an event of a loop in the handler is one of its own";
        }
        event([&] { add(*table, u"f"_s); });
        EXPECT_EQ(names().size(), 5) << "an event fired by the handler itself is not";
    });
    EXPECT_EQ(names().size(), 6);
}

TEST_F(EventTransactionsTest, AFaultOfTheProgramUndoesWhatItsEventWrote)
{
    expectErrorBox(u"Erro interno do programa:\n"_s);
    event([&] {
        add(*open(suppliers_), u"a"_s);
        throw std::logic_error("fault");
    });
    EXPECT_EQ(names(), QStringList());
}

TEST_F(EventTransactionsTest, EditWithoutUpdateEndsWithItsEvent)
{
    addSuppliers({u"a"_s});
    auto table = open(suppliers_);
    expectBox(u"?"_s);
    event([&] {
        table->Fields(0) = u"left"_s;
        MsgBox(u"?"_s);
        const gate::NestedLoop loop;
        event([] {});
        EXPECT_EQ(table->Fields(0).text(), u"left"_s) << "a box in the middle does not end it";
    });
    EXPECT_EQ(table->Fields(0).text(), u"a"_s);
}

TEST_F(EventTransactionsTest, FullDiskUndoesTheEventAndRefusesTheRestOfIt)
{
    addSuppliers({u"a"_s, u"b"_s});
    auto table = open(suppliers_);
    auto cash = open(u"SELECT * FROM MOVIMENTO"_s);
    auto list = openList();
    event([&] {
        add(*list, u"1"_s);
        set(*table, 0, u"x"_s);
        add(*table, u"new"_s);
        auto seesIt = open(suppliers_);
        EXPECT_EQ(seesIt->RecordCount(), 3);
        disk_.fillFor("GALTERIA1.mdb");
        // Enough to spill out of the engine's own memory.
        const QString large(3'000'000, u'x');
        EXPECT_EQ(errorOf([&] { add(*cash, large); }), RuntimeError::EngineFault);
        disk_.empty();
        EXPECT_EQ(errorOf([&] { add(*open(suppliers_), u"y"_s); }), RuntimeError::EngineFault)
            << "no later write of that event goes through alone";
        EXPECT_EQ(table->Fields(0).text(), u"b"_s) << "before the new one, which is gone";
        EXPECT_EQ(table->RecordCount() + seesIt->RecordCount() + list->RecordCount(), 4);
        table->MoveFirst();
        EXPECT_EQ(table->Fields(0).text(), u"a"_s);
    });
    EXPECT_EQ(names(), (QStringList{u"a"_s, u"b"_s}));
    EXPECT_EQ(errorOf([&] { cash->MoveFirst(); }), RuntimeError::NotAllowedInContext)
        << "the new row that could not be stored is still pending";
    event([&] { set(*cash, 0, u"short"_s); });
    EXPECT_EQ(stored(u"codigo"_s, u"MOVIMENTO"_s), QStringList{u"short"_s});
}

TEST_F(EventTransactionsTest, WhatWasUndoneUnderAFailedCallIsNotCommitted)
{
    event([&] {
        add(*open(suppliers_), u"a"_s);
        // As the engine does where it cannot read what it needs.
        Database::open(mainFile())->storage().rollback();
        EXPECT_EQ(errorOf([&] { add(*open(suppliers_), u"b"_s); }), RuntimeError::EngineFault);
        expectErrorBox();
        EXPECT_FALSE(commitWrites());
    });
    EXPECT_EQ(names(), QStringList());
}

namespace {

// A sale of one line: the stock in the shared file, the list in its own.
class WriteOffTest : public EventTransactionsTest
{
protected:
    WriteOffTest()
    {
        mainSql(u"INSERT INTO Pecas(CODIGO, ESTOQUE, DESCRICAO) VALUES('1', '5', 'Capacitor')"_s);
        sql(listFile(), u"INSERT INTO Pecas(CODIGO, QUANTIDADE) VALUES('1', '2')"_s);
        setListMarkResolver([this] { return mainFile(); });
    }

    ~WriteOffTest() override { setListMarkResolver({}); }

    // The commit of the list's own file fails, which comes last.
    void writeOff()
    {
        auto parts = open(u"SELECT * FROM Pecas order by CODIGO"_s);
        auto list = openList();
        setMsgBoxForTests([this](const Box& box) {
            told_ = box.text;
            return Answer::Ok;
        });
        event([&] {
            set(*parts, 2, u"3"_s);
            list->Delete();
            disk_.fillFor("MIRANDEL1.mdb");
        });
        disk_.empty();
    }

    QString told_;
    QString state()
    {
        return stored(u"ESTOQUE"_s, u"Pecas"_s).join(u',') + u" | "_s +
               sql(listFile(), u"SELECT CODIGO FROM Pecas"_s).join(u',');
    }
};

} // namespace

TEST_F(WriteOffTest, ListThatWasBookedIsEmptiedAtItsNextOpening)
{
    writeOff();
    EXPECT_EQ(state(), u"3 | 1"_s);
    EXPECT_TRUE(told_.endsWith(u"Não repita a venda: feche e abra a tela."_s))
        << told_.toStdString();

    // A generation that cannot be counted on from.
    const QString last = u" SET geracao = 9223372036854775807"_s;
    sql(listFile(), u"UPDATE _lista"_s + last);
    mainSql(u"UPDATE _lista_concluida"_s + last);

    // Where the shared file cannot be reached nothing is decided yet, nor by a further line.
    setListMarkResolver([this] { return folder() + u"/nada.mdb"_s; });
    EXPECT_EQ(openList()->RecordCount(), 1);
    add(*openList(), u"1"_s);
    setListMarkResolver([this] { return mainFile(); });
    EXPECT_EQ(openList()->RecordCount(), 0);
    EXPECT_EQ(state(), u"3 | "_s);
    EXPECT_EQ(sql(listFile(), u"SELECT min(geracao) FROM _lista"_s), QStringList{u"0"_s});

    // The mark has served: the next sale stays. So does one that stopped in the middle.
    add(*openList(), u"2"_s);
    Database::dropIdle();
    EXPECT_EQ(openList()->RecordCount(), 1);
    add(*openList(), u"3"_s);
    writeOff();
    EXPECT_EQ(openList()->RecordCount(), 2);
}

// The mark names the sale, so that no copy of the list takes another's sale for its own.
TEST_F(WriteOffTest, CopiedListIsNeitherEmptiedNorBookedTwice)
{
    const QString copy = folder() + u"/copia.mdb"_s;
    const auto openCopy = [&] {
        return open(u"SELECT * FROM Pecas"_s, CursorType::Static, LockType::Optimistic, copy);
    };
    const auto marks = [&] {
        return sql(mainFile(), u"SELECT count(*) FROM _lista_concluida"_s).value(0).toInt();
    };
    const auto book = [&](Recordset& list, const QString& stock) {
        auto parts = open(u"SELECT * FROM Pecas order by CODIGO"_s);
        event([&] {
            set(*parts, 2, stock);
            list.Delete();
        });
    };
    sql(listFile(), u"DELETE FROM Pecas"_s);
    add(*openList(), u"1"_s);
    Database::dropIdle();
    QFile::copy(listFile(), copy);

    // The same sale in both: whoever comes second books nothing.
    auto second = openCopy();
    book(*openList(), u"3"_s);
    expectErrorBox(u"Erro nº -2147467259\nEsta venda já foi gravada"_s);
    book(*second, u"1"_s);
    EXPECT_EQ(stored(u"ESTOQUE"_s, u"Pecas"_s), QStringList{u"3"_s});
    second.reset();
    EXPECT_EQ(openCopy()->RecordCount(), 0);

    // A copy that went on by itself is a sale of its own, whatever becomes of the other.
    add(*openList(), u"1"_s);
    Database::dropIdle();
    ASSERT_TRUE(QFile::remove(copy) && QFile::copy(listFile(), copy));
    add(*openCopy(), u"2"_s);
    book(*openList(), u"2"_s);
    Database::dropIdle();
    EXPECT_EQ(openCopy()->RecordCount(), 2);
    sql(copy, u"DELETE FROM Pecas"_s);

    // A sale of its own in each; one is cut off between the two files, the other is booked.
    add(*openCopy(), u"1"_s);
    add(*openList(), u"1"_s);
    mainSql(u"UPDATE Pecas SET ESTOQUE='5'"_s);
    writeOff();
    auto own = openCopy();
    EXPECT_EQ(own->RecordCount(), 1);
    book(*own, u"2"_s);
    own.reset();
    Database::dropIdle();
    EXPECT_EQ(openCopy()->RecordCount(), 0);
    EXPECT_EQ(openList()->RecordCount(), 0) << "its mark was nobody else's to take away";
    for (int sale = 0; sale < 3; ++sale) {
        add(*openList(), u"1"_s);
        book(*openList(), QString::number(sale));
    }
    EXPECT_LE(marks(), 3) << "a mark goes with the next sale of its list";
}
