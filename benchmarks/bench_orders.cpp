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
#include "HostPaths.h"
#include "Measure.h"
#include "Schema.h"

#include <QAbstractButton>
#include <QApplication>
#include <QProcess>
#include <QStringList>
#include <QWidget>

#include <cstdio>

using namespace Qt::Literals::StringLiterals;

namespace {

std::string columnNames(const char* table)
{
    std::string names;
    for (const TableDefinition& definition : schema::mainFile())
        if (definition.name.compare(QLatin1String(table), Qt::CaseInsensitive) == 0)
            for (const FieldDefinition& field : definition.fields)
                names += (names.empty() ? "" : ",") + field.name.toStdString();
    return names;
}

// Orders as a shop has them: most fields filled, a few lines of parts in the twin. Every hundredth
// client's name holds "Quirino", two in five hold "Silva".
void fillOrders(RawFile& file, int orders)
{
    const std::string count = std::to_string(orders);
    file.run("BEGIN");
    file.run("WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i+1 FROM n WHERE i<" + count +
             ") INSERT INTO "
             "Cliente(" +
             columnNames("Cliente") +
             ") SELECT printf('%07d',i),'05/03/2026',"
             "CASE WHEN i%3 THEN '12/03/2026' ELSE '' END,"
             "CASE WHEN i%100=7 THEN 'Quirino de Souza ' WHEN i%5<2 THEN 'Maria da Silva ' ELSE "
             "'João Pereira ' END||i,"
             "'Rua das Acácias','São "
             "Paulo','SP',''||(i%900),'Centro','','(11)3'||printf('%03d-%04d',i%1000,i%9999),"
             "'(11)9'||printf('%03d-%04d',(i*7)%1000,(i*13)%9999),'123-456-789/"
             "09','cliente'||i||'@exemplo.com.br',"
             "'Televisor 29 polegadas','Modelo '||(i%700)||' série '||i,'Não liga, sem imagem e "
             "sem som','Com controle remoto',"
             "'Troca do capacitor da fonte e limpeza geral do "
             "aparelho',15000*(1+i%40),i%2,0,1,0,'Prateleira '||(i%30) FROM n");
    file.run("WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i+1 FROM n WHERE i<" + count +
             ") INSERT INTO "
             "PECAAPLICADA(NUMERO,NOME,CODIGO1,DESCRICAO1,QUANT1,VALOR1,CODIGO2,DESCRICAO2,QUANT2,"
             "VALOR2) SELECT "
             "printf('%07d',i),'Cliente '||i,'0000012','Capacitor eletrolítico "
             "470uF','2','3,50','0000044',"
             "'Transistor de saída horizontal','1','18,00' FROM n");
    file.run("COMMIT");
}

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
    const auto closeForms = [] {
        FormRegistry::instance().unload(u"Form1Cli"_s);
        FormRegistry::instance().unload(u"Buscacli"_s);
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
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
        qobject_cast<QAbstractButton*>(form<Form1Cli>().Command1(0).widget())->click();
    };
    const auto giveUp = [] {
        qobject_cast<QAbstractButton*>(form<Form1Cli>().Command1(9).widget())->click();
    };
    const auto save = [] {
        qobject_cast<QAbstractButton*>(form<Form1Cli>().Command1(1).widget())->click();
    };
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
             closeForms();
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
             closeForms();
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
             closeForms();
             openRecord();
             foreignChange();
             station.run("UPDATE PECAAPLICADA SET NOME=NOME WHERE rowid=1");
         }},
    };
    int missed = runComparisons(argc, argv, comparisons, 15);
    closeForms();

    missed += compareMemory("record", installation);
    return missed == 0 ? 0 : 1;
}
