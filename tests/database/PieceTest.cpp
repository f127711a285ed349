#include "DatabaseTest.h"

#include "EventTransactions.h"
#include "FailingDisk.h"
#include "OnePiece.h"
#include "Patience.h"

#include <QElapsedTimer>

#include <stdexcept>

namespace {

// A store routine over both files: the stock in the shared one, the lines of a sale in the list.
class PieceTest : public DatabaseTest
{
protected:
    PieceTest()
    {
        addSuppliers({u"a"_s, u"b"_s, u"c"_s});
        connect(main_, mainFile());
        connect(list_, listFile());
        table_ = open(suppliers_ + u" order by CODIGO"_s);
        lines_ = openList();
    }

    static void connect(ObjectVariable<Connection>& connection, const QString& file)
    {
        connection.create();
        connection->Open(u"Provider = Microsoft.Jet.OLEDB.4.0;Data Source = "_s + file);
    }
    QStringList lines() const { return sql(listFile(), u"SELECT CODIGO FROM Pecas"_s); }

    FailingDisk disk_;
    ObjectVariable<Connection> main_, list_;
    std::unique_ptr<Recordset> table_, lines_;
};

} // namespace

TEST_F(PieceTest, IsStoredWholeOrNotAtAll)
{
    for (const bool inEvent : {true, false}) {
        const auto run = [&](const std::function<void()>& handler) {
            inEvent ? event(handler) : handler();
        };
        QStringList before = names();
        run([&] {
            inOnePiece({list_, main_}, [&] {
                add(*table_, u"new"_s);
                add(*lines_, u"line"_s);
                EXPECT_EQ(names(), before);
                EXPECT_FALSE(OtherStation(mainFile(), "BEGIN IMMEDIATE").hasLock());
                EXPECT_EQ(open(suppliers_)->RecordCount(), before.size() + 1);
            });
            EXPECT_EQ(names(), before + QStringList{u"new"_s}) << "durable when it returns";
        });
        before = names();

        // Whatever leaves the work, and at whatever point.
        table_->MoveFirst();
        table_->MoveNext();
        lines_->AddNew();
        lines_->Fields(0) = u"pending"_s;
        run([&] {
            const auto fail = [&](const std::function<void()>& how) {
                inOnePiece({main_, list_}, [&] {
                    set(*table_, 0, u"x"_s);
                    table_->Delete();
                    table_->MoveLast();
                    add(*table_, u"y"_s);
                    set(*lines_, 0, u"z"_s);
                    how();
                });
            };
            EXPECT_EQ(errorOf([&] { fail([] { throw RuntimeError(7); }); }), 7);
            EXPECT_THROW(fail([] { throw std::runtime_error("ours"); }), std::runtime_error);
            EXPECT_THROW(fail([] { MsgBox(u"?"_s); }), std::logic_error)
                << "a box would hold the lock for as long as it stands";
            EXPECT_THROW(fail([] { commitWrites(); }), std::logic_error);
        });
        EXPECT_EQ(names(), before);
        EXPECT_EQ(table_->Fields(0).text(), u"b"_s);
        EXPECT_EQ(table_->RecordCount(), before.size());
        EXPECT_EQ(lines_->Fields(0).text(), u"pending"_s) << "the same pending row";
        lines_->CancelUpdate();
        set(*table_, 0, u"b"_s);
    }
    // Another station takes a number while this one waits to take it.
    event([&] {
        const int count = open(suppliers_)->RecordCount();
        mainSql(u"INSERT INTO FORNECEDOR(NOMEEMPRESA) VALUES('other')"_s);
        inOnePiece({main_}, [&] { EXPECT_EQ(open(suppliers_)->RecordCount(), count + 1); });
    });
}

TEST_F(PieceTest, FailedCommitIsToldOnceAndUndone)
{
    table_->MoveNext();
    add(*lines_, u"line"_s);
    int told = 0;
    setMsgBoxForTests([&](const Box& box) {
        ++told;
        EXPECT_TRUE(box.text.startsWith(u"Erro nº -2147467259\nNão há espaço"_s));
        EXPECT_TRUE(OtherStation(mainFile()).hasLock()) << "the locks are gone by then";
        return Answer::Ok;
    });
    event([&] {
        const auto fail = [&] {
            table_->Delete();
            lines_->Delete();
            disk_.fillFor(".mdb");
        };
        EXPECT_THROW(inOnePiece({main_, list_}, fail), RuntimeError);
        EXPECT_EQ(told, 1);
        EXPECT_EQ(table_->Fields(0).text(), u"b"_s);
        EXPECT_EQ(lines_->RecordCount(), 1);
        disk_.empty();
        inOnePiece({main_}, [&] { table_->Delete(); });
        add(*lines_, u"left open"_s);
        disk_.fillFor(".mdb");
    });
    EXPECT_EQ(told, 2) << "at the end of the event";
    disk_.empty();
    EXPECT_EQ(names(), (QStringList{u"a"_s, u"c"_s}));
    EXPECT_EQ(lines(), QStringList{u"line"_s});
    EXPECT_EQ(lines_->RecordCount(), 1);
}

// Five seconds for the whole event, not for each piece in it.
TEST_F(PieceTest, PiecesOfOneEventWaitForBusyFilesOnce)
{
    constexpr int Limit = 300;
    Patience::setLimitForTests(Limit);
    const OtherStation list(listFile(), "BEGIN IMMEDIATE");
    const OtherStation shared(mainFile(), "BEGIN IMMEDIATE");
    QElapsedTimer clock;
    clock.start();
    event([this] {
        for (const auto* file : {&list_, &main_})
            EXPECT_EQ(errorOf([&] { inOnePiece({*file}, [] {}); }), RuntimeError::EngineFault);
    });
    EXPECT_LT(clock.elapsed(), 2 * Limit);
}
