// The counter over a large catalogue, and the cash report, beside the engine's own interface.
//
//   bench_counter                  all rows of the table: 50,000 parts, 1,000 orders, 100,000 rows
//                                  of cash
//   bench_counter --memory-empty   peak memory of an empty window (started by the program itself)
//   bench_counter --memory FOLDER  the same with the sale form open over that installation

#include "Application.h"
#include "EventGate.h"
#include "EventTransactions.h"
#include "Form1pecabusca.h"
#include "Form1pecavenda.h"
#include "Form1principal.h"
#include "Form1relatorio.h"
#include "Funciones.h"
#include "Measure.h"

#include <QApplication>
#include <QStringList>
#include <QWidget>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Parts = 50000;
constexpr int Orders = 1000;
constexpr int CashRows = 100000;

// One part in a hundred holds "Flyback" and stands at stock 0, two in five hold "Transistor".
void fillCatalogue(RawFile& file)
{
    file.run("BEGIN");
    file.run(upTo(Parts) + "INSERT INTO Pecas(CODIGO,LOCAL,ESTOQUE,DESCRICAO,VALOR,EQUIVALENTE) "
                           "SELECT printf('%07d',i),'G'||(i%90),"
                           "CASE WHEN i%100=7 THEN '0' ELSE ''||(1+i%60) END,CASE WHEN i%100=7 "
                           "THEN 'Flyback ' WHEN i%5<2 THEN "
                           "'Transistor ' ELSE 'Resistor de fio ' END||'número "
                           "'||i,10000*(1+i%80),'Similar '||(i%500) FROM n");
    file.run(upTo(Orders) + "INSERT INTO PEDIDO(DATAPEDIDO,DESCRICAO,QUANTIDADE,CODIGO) SELECT "
                            "'05/03/2026','Cinescópio de '||i||' pol.',"
                            "'2',printf('%07d',i) FROM n");
    file.run(upTo(CashRows) +
             "INSERT INTO MOVIMENTO(codigo,descricao,quantidade,valor,DATA) SELECT "
             "printf('%07d',i%5000),"
             "'Transistor de saída '||i,1+i%4,10000*(1+i%50),date('2025-01-01','+'||(i%400)||' "
             "days') FROM n");
    file.run("COMMIT");
}

void fillList(RawFile& list)
{
    list.run("DELETE FROM Pecas");
    list.run(upTo(24) +
             "INSERT INTO Pecas(CODIGO,LOCAL,QUANTIDADE,DESCRICAO,UNITARIO,TOTAL,NUMERO) SELECT "
             "printf('%07d',i*100+1),'G1',"
             "'1','Transistor '||i,'2,00','2,00',printf('%07d',i) FROM n");
}

void closeAll()
{
    closeForms({Form1pecavenda::Name, Form1pecabusca::Name, Form1relatorio::Name});
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    prepareApplication(application);
    installEventTransactions();
    addForm<Form1principal>();
    addForm<Form1pecavenda>();
    addForm<Form1pecabusca>();
    addForm<Form1relatorio>();
    if (isMemoryChild([] { form<Form1pecavenda>().show(); }))
        return 0;

    BenchInstallation installation;
    RawFile raw(installation.mainFile());
    fillCatalogue(raw);
    RawFile list(installation.listFile());
    RawFile station(installation.mainFile());
    int serial = 0;
    const auto foreignChange = [&] {
        station.run("UPDATE Pecas SET LOCAL='X" + std::to_string(++serial) + "' WHERE rowid=5");
    };
    const auto like = [&raw](const char* text) {
        return [&raw, text] {
            raw.readAll(std::string("SELECT * FROM Pecas WHERE DESCRICAO LIKE '%") + text + "%'",
                        {0, 1, 2, 3, 4});
        };
    };
    const auto catalogue = [&raw] { raw.readAll("SELECT * FROM Pecas ORDER BY CODIGO"); };
    const auto searchParts = [](const QString& text) {
        return [text] { form<Form1pecabusca>().Text4(1).setText(text); };
    };
    const auto searchSale = [](const QString& text) {
        return [text] { form<Form1pecavenda>().Text4(1).setText(text); };
    };
    // As in the program, where all work is done within an event.
    const auto asEvent = [](Form& form, auto work) { gate::run(form, OnError::Box, work); };
    const auto refill = [&] {
        asEvent(form<Form1pecavenda>(), [] {
            Funciones::AbreBanco();
            Funciones::Tabela1->Open(u"SELECT * FROM Pecas order by CODIGO"_s,
                                     Funciones::Conexao1.shared(), CursorType::Static,
                                     LockType::Optimistic);
            Funciones::FlagRecarga = 2;
            form<Form1pecavenda>().CarregaCatalogo();
        });
    };
    const auto openSale = [] { form<Form1pecavenda>().load(); };
    int row = 10;
    int code = 0;

    std::vector<Comparison> comparisons{
        {"a key stroke in the part search, 1 % match",
         0.25,
         like("Flyback"),
         searchParts(u"Flyback"_s),
         {},
         searchParts(u"Flybac"_s)},
        {"a key stroke in the part search, 40 % match",
         0.6,
         like("Transistor"),
         searchParts(u"Transistor"_s),
         {},
         searchParts(u"Flyback"_s)},
        {"a key stroke in the sale's search, 1 % match",
         0.25,
         like("Flyback"),
         searchSale(u"Flyback"_s),
         {},
         [&] {
             if (!form<Form1pecavenda>().isLoaded())
                 closeAll();
             searchSale(u"Flybac"_s)();
         }},
        {"a key stroke in the sale's search, 40 % match",
         0.6,
         like("Transistor"),
         searchSale(u"Transistor"_s),
         {},
         searchSale(u"Flyback"_s)},
        {"the whole catalogue refilled after a change",
         1.2,
         catalogue,
         refill,
         {},
         [&] {
             openSale();
             foreignChange();
         }},
        {"the whole catalogue refilled, nothing changed", 0.5, catalogue, refill, {}, openSale},
        {"a click on a catalogue row",
         0.1,
         catalogue,
         [&] { clickRow(form<Form1pecavenda>().MSFlexGrid1, ++row); },
         {},
         openSale},
        {"Incluir of a line",
         3,
         [&] {
             list.run("INSERT INTO Pecas(CODIGO,QUANTIDADE,NUMERO) VALUES('" +
                      std::to_string(++code) + "','1','1')");
         },
         [&] { press(form<Form1pecavenda>().Command2(0)); },
         {},
         [&] {
             closeAll();
             list.run("DELETE FROM Pecas");
             openSale();
             clickRow(form<Form1pecavenda>().MSFlexGrid1, ++row);
         }},
        {"the cash report loads 100,000 rows",
         4,
         [&raw] { raw.readAll("SELECT * FROM MOVIMENTO ORDER BY DATA"); },
         [&] { asEvent(form<Form1relatorio>(), [] { form<Form1relatorio>().CarregaGrid(); }); },
         {},
         [] {
             form<Form1relatorio>().Text5.setText(u"0"_s);
             form<Form1relatorio>().Text3.setText(u"0,00"_s);
             Funciones::AbreBanco();
             Funciones::Tabela1->Open(u"SELECT * FROM MOVIMENTO order by DATA"_s,
                                      Funciones::Conexao1.shared(), CursorType::Static,
                                      LockType::Optimistic);
         }},
    };
    int missed = runComparisons(argc, argv, comparisons, 15);

    // The write-off changes what is measured, so it has a run of its own, and so have the orders.
    const auto undo = [&] {
        closeAll();
        station.run("BEGIN; UPDATE Pecas SET ESTOQUE='50' WHERE rowid%100<>7; DELETE FROM "
                    "MOVIMENTO WHERE rowid>" +
                    std::to_string(CashRows) + "; DELETE FROM PEDIDO WHERE rowid>" +
                    std::to_string(Orders) + "; COMMIT");
        fillList(list);
    };
    const auto ready = [&] {
        undo();
        // The parts that ran out are ordered already, so that the write-off alone is timed.
        openSale();
        // The sale before this one left the cash list read; nobody else wrote it since.
        Funciones::AbreBanco5();
        Funciones::Tabela5->Open(u"SELECT * FROM MOVIMENTO order by codigo"_s,
                                 Funciones::Conexao5.shared(), CursorType::Static,
                                 LockType::Optimistic);
        Funciones::FechaBanco5();
    };
    station.run("UPDATE Pecas SET ESTOQUE='50'");
    comparisons = {
        {"a write-off of 24 lines, from Sim to the form being ready", 2,
         [&] {
             for (int line = 1; line <= 24; ++line)
                 raw.readAll("SELECT * FROM Pecas WHERE CODIGO LIKE '%" +
                             std::to_string(1000000000 + line * 100 + 1).substr(3) + "%' LIMIT 1");
             raw.run("BEGIN IMMEDIATE");
             for (int line = 1; line <= 24; ++line) {
                 raw.run("UPDATE Pecas SET ESTOQUE='49' WHERE rowid=" +
                         std::to_string(line * 100 + 1));
                 raw.run("INSERT INTO MOVIMENTO(codigo,descricao,quantidade,valor,DATA) "
                         "VALUES('x','y',1,20000,'2026-03-09')");
             }
             raw.run("COMMIT");
             list.run("BEGIN IMMEDIATE");
             for (int line = 1; line <= 24; ++line)
                 list.run("DELETE FROM Pecas WHERE NUMERO='" +
                          std::to_string(10000000 + line).substr(1) + "'");
             list.run("COMMIT");
             catalogue();
         },
         [] { press(form<Form1pecavenda>().Command2(2)); }, undo, ready},
    };
    missed += runComparisons(argc, argv, comparisons, 15);

    // The look-ups of the automatic orders: at each measurement all that stands at 0 is ordered
    // already, so that nothing is written.
    const auto ordersOf = [&](const char* which) {
        closeAll();
        station.run("BEGIN; DELETE FROM PEDIDO; UPDATE Pecas SET ESTOQUE=CASE WHEN " +
                    std::string(which) + " THEN '0' ELSE '5' END; " + upTo(Orders) +
                    "INSERT INTO PEDIDO(DATAPEDIDO,DESCRICAO,QUANTIDADE,CODIGO) SELECT "
                    "'05/03/2026',DESCRICAO,'2',"
                    "printf('%07d',n.i) FROM n JOIN Pecas ON Pecas.rowid=n.i*50+7; COMMIT");
        openSale();
    };
    const auto join = [&raw](const char* which) {
        return [&raw, which] {
            raw.readAll(std::string("SELECT Pecas.DESCRICAO,PEDIDO.DESCRICAO FROM Pecas JOIN "
                                    "PEDIDO ON PEDIDO.DESCRICAO LIKE "
                                    "'%'||Pecas.DESCRICAO||'%' WHERE ") +
                        which);
        };
    };
    const auto automaticOrders = [&] {
        asEvent(form<Form1pecavenda>(), [] { form<Form1pecavenda>().PedidoAutomatico(); });
    };
    comparisons = {
        {"the automatic orders, 1 % at stock 0", 0.5, join("Pecas.ESTOQUE='0'"), automaticOrders,
         [&] { ordersOf("rowid%100=7 AND rowid<50008"); },
         [&] { ordersOf("rowid%100=7 AND rowid<50008"); }},
    };
    missed += runComparisons(argc, argv, comparisons, 9);
    // Everything ran out, in so many kinds of parts as there are orders: the look-ups alone.
    const auto allOrdered = [&] {
        closeAll();
        station.run("UPDATE Pecas SET DESCRICAO='Cinescópio de '||max(1,rowid/50)||' pol.'");
        ordersOf("1");
    };
    comparisons = {
        {"the automatic orders, all at stock 0, the writes apart", 0.05, join("1"), automaticOrders,
         allOrdered, allOrdered},
    };
    missed += runComparisons(argc, argv, comparisons, 3);
    closeAll();

    missed += compareMemory("sale", installation);
    return missed == 0 ? 0 : 1;
}
