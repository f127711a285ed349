#include "OnSiteTest.h"

#include "Faults.h"
#include "Printer.h"
#include "RuntimeError.h"

namespace {

class OnSiteSheetTest : public OnSiteTest
{
protected:
    OnSiteSheetTest()
    {
        const std::vector<std::pair<const char*, const char*>> company{{"Titulo", "Oficina"},
                                                                       {"Endereco", "Rua A, 1"},
                                                                       {"Email", "a@b.c"},
                                                                       {"Telefone", "3333-4444"},
                                                                       {"Site", "b.c"}};
        for (const auto& [key, value] : company)
            setIni(u"Configurar"_s, QString::fromLatin1(key), QString::fromLatin1(value));
        addOrder(u"0000012"_s, u"Ana"_s,
                 u"DATAPEDIDO='05/03/2026', DATACONCLUSAO='**/**/****', ENDERECO='Rua B', "
                 "CIDADE='Campinas', UF='SP', NUMEROCASA='77', BAIRRO='Centro', "
                 "COMPLEMENTO='Fundos', SERVICOSOLICITADO1='Antena', SERVICOSOLICITADO2='Cabo', "
                 "SERVICOSOLICITADO3='Tomada', SERVICOSOLICITADO4='Controle', "
                 "SERVICOEXECUTADO1='Trocada', SERVICOEXECUTADO2='Trocado', "
                 "SERVICOEXECUTADO3='Nova', SERVICOEXECUTADO4='*****', OBSERVACAO='Escada', "
                 "VALOR='1234,5'"_s);
    }
};

TEST_F(OnSiteSheetTest, PrintsWhatTheBoxesShowAndLinesOfAnyLengthMoveNothing)
{
    record().show();
    press(6);
    EXPECT_EQ(printed(), page(u"on-site-order"_s));
    record().Text1(19).setText(u"amanhã"_s);
    record().Text1(20).setText({});
    for (int line = 12; line <= 15; ++line)
        record().Text1(line).setText(QString(100, u'M'));
    press(6);
    QStringList expected = page(u"on-site-order"_s);
    for (QString& run : expected) {
        run.replace(u"05/03/2026"_s, u"amanhã"_s).replace(u"**/**/****"_s, QString());
        for (const QString& done : {u" Trocada"_s, u" Trocado"_s, u" Nova"_s, u" *****"_s})
            if (run.endsWith(done))
                run = run.chopped(done.size() - 1) + QString(100, u'M');
    }
    EXPECT_EQ(printed(), expected);
}

// From the first line to the last one, and at the end of the document.
TEST_F(OnSiteSheetTest, PrinterThatFailsAnywhereIsSilentAndTheNextSheetIsWhole)
{
    record().show();
    const QStringList before = names(onSite());
    const auto recorder = Printer::instance().device();
    bool failed = true;
    int calls = 0;
    while (failed) {
        failed = false;
        int left = ++calls;
        faults::setObserver([&](faults::Call call) {
            if (call == faults::Call::Printer && --left == 0) {
                failed = true;
                throw RuntimeError(482);
            }
        });
        press(6);
        EXPECT_EQ(enabledOf(record().Command1), u"0 2 5 6 8 10 11 12 13"_s);
        EXPECT_EQ(documents(), failed ? 0 : 1);
        if (failed) { // what was drawn would stand on the next sheet
            Printer::instance().reset();
            Printer::instance().setDevice(recorder);
        }
    }
    EXPECT_GT(calls, 60);
    EXPECT_EQ(names(onSite()), before);
}

} // namespace
