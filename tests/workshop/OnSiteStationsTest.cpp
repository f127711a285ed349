#include "OnSiteTest.h"

#include "Application.h"
#include "FailingDisk.h"
#include "Funciones.h"
#include "Printer.h"

namespace {

// Another station, a disk and calls that fail, while orders are kept.
class OnSiteStationsTest : public OnSiteTest
{
protected:
    OnSiteStationsTest()
    {
        for (const char* number : {"0000001", "0000002", "0000003"})
            addOrder(QString::fromLatin1(number), u"Ana"_s,
                     u"CIDADE='Campinas', BAIRRO='Centro'"_s);
    }
    static void edit(const QString& number)
    {
        record().Text2.setText({});
        record().Text2.setText(number);
        press(2);
    }
    QString stored(const QString& number, const QString& columns) const
    {
        return sql(mainFile(),
                   u"SELECT %1 FROM MANUTENCAO WHERE NUMERO='%2'"_s.arg(columns, number))
            .join(u'|');
    }
};

TEST_F(OnSiteStationsTest, SaveKeepsWhatTheOtherStationChanged)
{
    openRecord();
    edit(u"0000002"_s);
    changeOrder(u"0000002"_s, u"CIDADE='Valinhos', OBSERVACAO='Ligar antes'"_s);
    type(record().Text1(0), u"Bia"_s);
    type(record().Text1(5), u"Cambuí"_s);
    press(1);
    EXPECT_TRUE(ends().empty());
    EXPECT_EQ(
        stored(u"0000002"_s, u"NOME || ' ' || BAIRRO || ' ' || CIDADE || ' ' || OBSERVACAO"_s),
        u"Bia Cambuí Valinhos Ligar antes"_s);
    press(2); // once more, over what is not seen here before the form opens anew
    press(1);
    EXPECT_EQ(stored(u"0000002"_s, u"CIDADE || ' ' || OBSERVACAO"_s), u"Valinhos Ligar antes"_s);
}

// No trap is told for the save: nothing is stored, and the program ends.
TEST_F(OnSiteStationsTest, FieldThatBothChangedEndsTheProgram)
{
    openRecord();
    edit(u"0000002"_s);
    changeOrder(u"0000002"_s, u"NOME='Caio'"_s);
    type(record().Text1(0), u"Bia"_s);
    type(record().Text1(2), u"Valinhos"_s);
    expectErrorBox(u"Erro nº -2147217864"_s);
    press(1);
    EXPECT_EQ(ends(), std::vector{EndReason::Fault});
    EXPECT_EQ(stored(u"0000002"_s, u"NOME || CIDADE"_s), u"CaioCampinas"_s);
}

TEST_F(OnSiteStationsTest, TwoStationsStoreOneNumber)
{
    openRecord();
    press(0);
    addOrder(u"0000004"_s, u"Caio"_s);
    type(record().Text1(0), u"Bia"_s);
    press(1);
    EXPECT_EQ(numbersAndNames().mid(3), (QStringList{u"0000004 Caio"_s, u"0000004 Bia"_s}));
    EXPECT_EQ(record().Text1(0).text(), u"Bia"_s);
}

TEST_F(OnSiteStationsTest, OrderThatWasChangedIsShownBeforeItGoes)
{
    openRecord();
    edit(u"0000002"_s);
    changeOrder(u"0000002"_s, u"OBSERVACAO='Ligar antes'"_s);
    type(record().Text1(0), u"Bia"_s);
    remove();
    EXPECT_EQ(numbersAndNames().size(), 3);
    EXPECT_EQ(record().Text1(0).text() + record().Text1(17).text(), u"AnaLigar antes"_s);
    EXPECT_EQ(enabledOf(record().Command1), u"0 2 5 6 8 10 11 12 13"_s);
    press(2);
    remove();
    EXPECT_EQ(numbersAndNames(), (QStringList{u"0000001 Ana"_s, u"0000003 Ana"_s}));
    EXPECT_EQ(record().Text1(18).text(), u"0000001"_s);
    EXPECT_TRUE(ends().empty());
}

TEST_F(OnSiteStationsTest, OrderThatTheOtherStationDeletedLeavesTheForm)
{
    openRecord();
    edit(u"0000002"_s);
    mainSql(u"DELETE FROM MANUTENCAO WHERE NUMERO='0000002'"_s);
    remove();
    EXPECT_EQ(record().Text1(18).text(), u"0000003"_s);
    EXPECT_EQ(record().Text5.text(), u"0000002"_s);
    EXPECT_EQ(enabledOf(record().Command1), u"0 2 5 6 8 10 11 12 13"_s);
    EXPECT_TRUE(ends().empty());
}

// Each call and each write fails in its turn: the save is stored whole or not at all, what is not
// the order on show stays, and the program ends after its box.
TEST_F(OnSiteStationsTest, SaveThatFailsStoresNothing)
{
    QStringList told;
    int ended = 0;
    setMsgBoxForTests([&](const Box& box) {
        told << box.text;
        return Answer::Yes;
    });
    const auto prepare = [&](bool newOrder) {
        record().unload();
        setEndProgramForTests([&](EndReason) { ++ended; });
        mainSql(
            u"DELETE FROM MANUTENCAO WHERE NUMERO='0000004'; UPDATE MANUTENCAO SET NOME='Ana'"_s);
        openRecord();
        newOrder ? press(0) : edit(u"0000002"_s);
        type(record().Text1(0), u"Bia"_s);
        type(record().Text1(2), u"Itu"_s);
        told.clear();
        ended = 0;
    };
    const auto check = [&](bool newOrder, bool failed) {
        const QString row = stored(newOrder ? u"0000004"_s : u"0000002"_s, u"NOME || CIDADE"_s);
        const QString before = newOrder ? QString() : u"AnaCampinas"_s;
        EXPECT_TRUE(row == before || row == u"BiaItu"_s) << row.toStdString();
        if (row == before) {
            EXPECT_EQ(ended, 1);
            EXPECT_FALSE(told.isEmpty());
        }
        EXPECT_EQ(ended, failed ? 1 : 0);
        EXPECT_EQ(stored(u"0000001"_s, u"NOME || CIDADE"_s), u"AnaCampinas"_s);
        EXPECT_EQ(stored(u"0000003"_s, u"NOME || CIDADE"_s), u"AnaCampinas"_s);
        mainSql(u"UPDATE MANUTENCAO SET CIDADE='Campinas'"_s);
    };
    for (const bool newOrder : {true, false}) {
        bool failed = true;
        for (int n = 1; failed && !HasFailure(); ++n) {
            SCOPED_TRACE(n);
            prepare(newOrder);
            failCall(n);
            press(1);
            failed = callFailed();
            check(newOrder, failed);
        }
        record().unload();
        FailingDisk disk;
        failed = true;
        for (int n = 1; failed && !HasFailure(); ++n) {
            SCOPED_TRACE(n);
            prepare(newOrder);
            disk.fillFrom(n, "GALTERIA1.mdb");
            press(1);
            failed = FailingDisk::refused();
            disk.empty();
            check(newOrder, failed);
        }
        record().unload();
        Funciones::resetShared();
    }
    setEndProgramForTests([](EndReason) {});
}

// A deletion has its trap: it goes or it stays, and the program goes on.
TEST_F(OnSiteStationsTest, DeletionThatFailsKeepsTheOthers)
{
    const auto prepare = [this] {
        record().unload();
        mainSql(u"DELETE FROM MANUTENCAO"_s);
        for (const char* number : {"0000001", "0000002", "0000003"})
            addOrder(QString::fromLatin1(number), u"Ana"_s);
        openRecord();
        edit(u"0000002"_s);
    };
    const auto act = [] { press(3); };
    const auto check = [this](bool failed) {
        QStringList left = numbersAndNames();
        EXPECT_TRUE(left.removeOne(u"0000001 Ana"_s) && left.removeOne(u"0000003 Ana"_s));
        EXPECT_TRUE(left.isEmpty() || (failed && left == QStringList{u"0000002 Ana"_s}));
        // The navigation serves again, and shows what is there.
        press(12);
        EXPECT_EQ(record().Text1(18).text(), u"0000001"_s);
        press(13);
        EXPECT_EQ(record().Text1(18).text(), u"0000003"_s);
    };
    failEachCall(prepare, act, check, 2);
    record().unload(); // which leaves the pair open
    Funciones::resetShared();
    failEachWrite(prepare, act, check);
}

} // namespace
