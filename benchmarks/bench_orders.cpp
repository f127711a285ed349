// The client record and its search over many service orders, beside the engine's own interface.
//
//   bench_orders [ORDERS]          all rows of the table, 100,000 orders unless told otherwise
//   bench_orders --memory-empty    peak memory of an empty window (started by the program itself)
//   bench_orders --memory FOLDER   the same with the record form open over that installation

#include "Application.h"
#include "Buscacli.h"
#include "EventTransactions.h"
#include "Form1Cli.h"
#include "Form1principal.h"
#include "Measure.h"

#include <QApplication>
#include <QStringList>
#include <QWidget>

using namespace Qt::Literals::StringLiterals;

namespace {

void addForms()
{
    addForm<Form1principal>();
    addForm<Form1Cli>();
    addForm<Buscacli>();
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    prepareApplication(application);
    installEventTransactions();
    const QStringList arguments = QCoreApplication::arguments();
    addForms();
    if (isMemoryChild([] { form<Form1Cli>().show(); }))
        return 0;

    const int orders =
        arguments.size() > 1 && arguments[1].toInt() > 0 ? arguments[1].toInt() : 100000;
    BenchInstallation installation;
    RawFile raw(installation.mainFile());
    fillOrders(raw, orders);
    RawFile station(installation.mainFile()); // another computer
    int serial = 0;
    const auto foreignChange = [&] {
        ++serial;
        station.run("UPDATE Cliente SET local='P" + std::to_string(serial) +
                    "' WHERE rowid=" + std::to_string(1 + serial % orders));
    };

    const auto bothTables = [&raw] {
        raw.readAll("SELECT * FROM Cliente ORDER BY numero");
        raw.readAll("SELECT * FROM PECAAPLICADA ORDER BY NUMERO");
    };
    const auto searchBaseline = [&raw](const char* text) {
        return [&raw, text] {
            raw.readAll(std::string("SELECT * FROM Cliente WHERE Nome LIKE '%") + text + "%'",
                        {0, 3, 14, 10, 11});
        };
    };
    const auto closeBoth = [] { closeForms({Form1Cli::Name, Buscacli::Name}); };
    // The last letter of a name: what was typed before stands in the box.
    const auto searchOurs = [](const QString& text) {
        return [text] { form<Buscacli>().Text1(1).setText(text); };
    };
    const auto clearSearch = [](const QString& before) {
        return [before] { form<Buscacli>().Text1(1).setText(before); };
    };
    const auto openRecord = [] { form<Form1Cli>().load(); };
    const auto newRecord = [] {
        form<Form1Cli>().Command1(0).widget()->setEnabled(true);
        press(form<Form1Cli>().Command1(0));
    };
    const auto giveUp = [] { press(form<Form1Cli>().Command1(9)); };
    const auto save = [] { press(form<Form1Cli>().Command1(1)); };
    int number = orders + 100;
    const auto rawInserts = [&] {
        const std::string code = std::to_string(10000000 + ++number).substr(1);
        raw.run("BEGIN IMMEDIATE");
        raw.run("INSERT INTO Cliente(numero,dataentrada,Nome) VALUES('" + code +
                "','09/03/2026','x')");
        raw.run("INSERT INTO PECAAPLICADA(NUMERO,NOME) VALUES('" + code + "','x')");
        raw.run("COMMIT");
    };

    const std::vector<Comparison> comparisons{
        {"a key stroke in the client search, 1 % match",
         0.25,
         searchBaseline("Quirino"),
         searchOurs(u"Quirino"_s),
         {},
         clearSearch(u"Quirin"_s)},
        {"a key stroke in the client search, 40 % match",
         0.6,
         searchBaseline("Silva"),
         searchOurs(u"Silva"_s),
         {},
         clearSearch(u"Quirino"_s)},
        {"the record form opens after a foreign change",
         1.2,
         bothTables,
         openRecord,
         {},
         [&] {
             closeBoth();
             foreignChange();
             station.run("UPDATE PECAAPLICADA SET NOME=NOME WHERE rowid=1");
         }},
        {"the record form opens again, nothing changed",
         0.05,
         bothTables,
         openRecord,
         {},
         [&] {
             openRecord();
             closeBoth();
         }},
        {"a key stroke in the number box of a new record",
         0.25,
         [&raw] { raw.readAll("SELECT numero FROM Cliente WHERE numero LIKE '%0099999%'"); },
         [&] { form<Form1Cli>().Text1(13).setText(QString::number(1000000 + serial)); },
         {},
         [&] {
             ++serial;
             if (!form<Form1Cli>().Command1(1).enabled())
                 newRecord();
         }},
        {"Incluir and Salvar, nothing foreign since", 3, rawInserts,
         [&] {
             newRecord();
             save();
         },
         // What the other one stored meanwhile is not part of the work.
         [&raw] {
             raw.readAll("SELECT * FROM Cliente ORDER BY rowid DESC LIMIT 1");
             raw.readAll("SELECT * FROM PECAAPLICADA ORDER BY rowid DESC LIMIT 1");
         },
         [&] {
             // The form stays open from one client to the next.
             if (!form<Form1Cli>().isLoaded())
                 openRecord();
             newRecord();
             giveUp();
         }},
        {"Incluir and Salvar right after a foreign change",
         1.2,
         bothTables,
         [&] {
             newRecord();
             save();
         },
         {},
         [&] {
             closeBoth();
             openRecord();
             foreignChange();
             station.run("UPDATE PECAAPLICADA SET NOME=NOME WHERE rowid=1");
         }},
    };
    int missed = runComparisons(argc, argv, comparisons, 15);
    closeBoth();

    missed += compareMemory("record", installation);
    return missed == 0 ? 0 : 1;
}
