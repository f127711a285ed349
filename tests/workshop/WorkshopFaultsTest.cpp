#include "RecordForms.h"
#include "WorkshopTest.h"

#include <QRegularExpression>

namespace {

// The n-th call fails, for every n, while orders are looked at: what is stored stays, and the same
// works at the next try.
class WorkshopFaults : public WorkshopTest
{
protected:
    static Buscacli& search() { return form<Buscacli>(); }

    void beginAgain()
    {
        cli().unload();
        search().unload();
        // A database that could not be opened shuts them; only a new start opens them again.
        setEnabled(principal().Command1, 0, 11, true);
        mainSql(u"BEGIN; DELETE FROM Cliente; DELETE FROM PECAAPLICADA; DELETE FROM MOVIMENTO; "
                "INSERT INTO Cliente (numero, Nome) VALUES ('0000001', 'Ana'), ('0000002', 'Ana'), "
                "('0000003', 'Ana'); INSERT INTO PECAAPLICADA (NUMERO, NOME) "
                "SELECT numero, Nome FROM Cliente; COMMIT"_s);
    }
    // Nothing but what tells that something failed.
    void expectOnlyErrors()
    {
        static const QRegularExpression told(
            u"^(conecxão|Fichario de Cliente.*|Busca.? Cliente.*|Oficina.*)\\|Erro nº -?\\d+$|"
            "^Fichario de Cliente\\|A entrega não foi gravada.*$|^\\|(Restaure o Banco|Erro ao iniciar o Fornulario).*$"_s);
        EXPECT_EQ(boxes().filter(told), boxes());
    }
};

TEST_F(WorkshopFaults, WhatFailsToShowAnOrderShowsItAtTheNextTry)
{
    principal().show();
    principal().Frame2(0).setEnabled(true);
    principal().Text1(0).setText(u"2"_s);
    QString shown;
    onModal([&](Form&) {
        shown = cli().Text1(13).text();
        for (const int button : {13, 10, 12, 11})
            click(cli().Command1(button));
        shown += u' ' + cli().Text1(13).text();
        click(cli().Command1(8));
        EXPECT_FALSE(cli().isLoaded());
    });
    const auto pick = [](int row) {
        click(search().MSFlexGrid1, row);
        click(search().Command1);
    };
    const std::pair<QString, std::function<void()>> ways[] = {
        {u"0000001 0000002"_s, [] { click(principal().Command1(0)); }},
        {u"0000002 0000002"_s, [&] { click(principal().Command2(0)), pick(1); }},
        {u"0000003 0000002"_s,
         [&] {
             click(principal().Command1(8));
             type(search().Text1(1), u"An"_s);
             pick(3);
         }},
    };
    for (const auto& [wanted, show] : ways) {
        const auto check = [&](bool failed) {
            expectOnlyErrors();
            EXPECT_EQ(orders().size(), 3);
            EXPECT_EQ(orders(), twins());
            const qsizetype told = boxes().size();
            if (failed) {
                beginAgain();
                show();
            }
            EXPECT_EQ(shown, wanted);
            EXPECT_EQ(boxes().size(), told);
            EXPECT_FALSE(search().isLoaded());
        };
        failEachCall([this] { beginAgain(); }, show, check, 40);
    }
}

TEST_F(WorkshopFaults, ClashThatFailsToShowTheOtherOrderNeverWritesOverIt)
{
    const auto save = [] { click(cli().Command1(1)); };
    const auto prepare = [&] {
        beginAgain();
        cli().show();
        click(cli().Command1(0));
        type(cli().Text1(0), u"Bia"_s);
        addOrder(u"0000004"_s, u"Caio"_s);
    };
    const auto check = [&](bool) {
        if (cli().Text1(0).text() != u"Caio"_s)
            save();
        EXPECT_EQ(cli().Text1(0).text(), u"Caio"_s);
        type(cli().Text1(0), u"Caio 2"_s);
        save();
        EXPECT_EQ(orders().filter(u"Ana"_s).size(), 3);
        EXPECT_EQ(orders().back(), u"0000004 Caio 2"_s);
        EXPECT_EQ(twins(), orders());
    };
    failEachCall(prepare, save, check, 8);
}

TEST_F(WorkshopFaults, SheetThatFailsLeavesNoCashWithoutPaper)
{
    const auto cash = [this] { return sql(mainFile(), u"SELECT codigo FROM MOVIMENTO"_s).size(); };
    for (const int button : {6, 7}) {
        SCOPED_TRACE(button);
        int papers = 0;
        const auto print = [button] { click(cli().Command1(button)); };
        const auto prepare = [&] {
            beginAgain();
            openRecordAt(u"0000002"_s);
            papers = documents();
        };
        const auto check = [&](bool) {
            expectOnlyErrors();
            const qsizetype entered = cash();
            EXPECT_LE(entered, button == 7 ? documents() - papers : 0);
            const auto storedExit = [this] {
                return stored(u"0000002"_s, u"ifnull(datasaida, '')"_s);
            };
            EXPECT_EQ(storedExit(), cli().Text1(15).text());
            papers = documents();
            print();
            EXPECT_EQ(documents(), papers + 1);
            EXPECT_EQ(cash(), button == 7 ? entered + 1 : 0);
            EXPECT_EQ(storedExit(), button == 7 ? u"09/03/2026"_s : QString());
            EXPECT_EQ(twins(), orders());
        };
        failEachCall(prepare, print, check, 50);
    }
}

} // namespace
