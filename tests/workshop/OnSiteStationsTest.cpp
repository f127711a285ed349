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
    FailingDisk disk;
    for (const bool newOrder : {true, false}) {
        for (const bool isDisk : {false, true}) {
            bool failed = true;
            for (int n = 1; failed && !HasFailure(); ++n) {
                SCOPED_TRACE(n);
                prepare(newOrder);
                isDisk ? disk.fillFrom(n, "GALTERIA1.mdb") : failCall(n);
                press(1);
                failed = isDisk ? FailingDisk::refused() : callFailed();
                disk.empty();
                check(newOrder, failed);
            }
            record().unload();
        }
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
