// The technician's bench over a large catalogue and many service orders, beside the engine's own
// interface.
//
//   bench_bench                    all rows of the table: 50,000 parts, 100,000 orders with twins
//   bench_bench --memory-empty     peak memory of an empty window (started by the program itself)
//   bench_bench --memory FOLDER    the same with the bench open over that installation

#include "Application.h"
#include "EventTransactions.h"
#include "Form1principal.h"
#include "Form1servico.h"
#include "Measure.h"

#include <QApplication>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Parts = 50000;
constexpr int Orders = 100000;

// Two parts in the twin of each order. One number in a hundred holds "0012", two in five a "5".
void fill(RawFile& file)
{
    file.run("BEGIN");
    file.run(upTo(Parts) +
             "INSERT INTO Pecas(CODIGO,LOCAL,ESTOQUE,DESCRICAO,VALOR,EQUIVALENTE) SELECT "
             "printf('%07d',i),'G'||(i%90),''||(1+i%60),CASE WHEN i%5<2 THEN 'Transistor ' ELSE "
             "'Resistor de fio ' END||'número '||((i*7919)%50000),10000*(1+i%80),'Similar "
             "'||(i%500) FROM n");
    file.run(upTo(Orders) +
             "INSERT INTO Cliente(numero,dataentrada,datasaida,Nome,endereco,cidade,uf,numerocasa,"
             "bairro,complemento,telefone,celular,cpf,email,marca,modelo,defeito,observacao,"
             "servicoexecutado,valor,pronto,retorno,autoriza,naotempeca,local) SELECT "
             "printf('%07d',i),'05/03/2026','','João Pereira '||i,'Rua das Acácias','São Paulo',"
             "'SP',''||(i%900),'Centro','','(11)3'||printf('%03d-%04d',i%1000,i%9999),'',"
             "'123-456-789/09','cliente'||i||'@exemplo.com.br','Televisor 29 polegadas','Modelo "
             "'||(i%700),'Não liga, sem imagem e sem som','Com controle remoto','Troca do "
             "capacitor da fonte e limpeza geral do aparelho',15000*(1+i%40),i%2,0,1,0,"
             "'Prateleira '||(i%30) FROM n");
    file.run(upTo(Orders) +
             "INSERT INTO PECAAPLICADA(NUMERO,NOME,CODIGO1,DESCRICAO1,QUANT1,VALOR1,CODIGO2,"
             "DESCRICAO2,QUANT2,VALOR2) SELECT printf('%07d',i),'João Pereira '||i,'0000012',"
             "'Capacitor eletrolítico 470uF','2','3,50','0000044','Transistor de saída "
             "horizontal','1','18,00' FROM n");
    file.run("COMMIT");
}

Form1servico& bench()
{
    return form<Form1servico>();
}

void search(const QString& number)
{
    bench().Text1(0).setText(number);
}

void closeBench()
{
    closeForms({Form1servico::Name});
}

void openBench()
{
    bench().show();
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    prepareApplication(application);
    installEventTransactions();
    addForm<Form1principal>();
    addForm<Form1servico>();
    if (isMemoryChild(openBench))
        return 0;

    BenchInstallation installation;
    RawFile raw(installation.mainFile());
    fill(raw);
    RawFile station(installation.mainFile());

    const auto parts = [&raw] { raw.readAll("SELECT * FROM Pecas ORDER BY DESCRICAO"); };
    const auto twins = [&raw] { raw.readAll("SELECT * FROM PECAAPLICADA ORDER BY NUMERO"); };
    const auto both = [=] {
        parts();
        twins();
    };
    const auto like = [&raw](const char* number) {
        return [&raw, number] {
            raw.readAll(std::string("SELECT * FROM Cliente WHERE numero LIKE '%") + number + "%'",
                        {0, 3, 14, 10});
        };
    };
    // One letter more, behind a text that next to nothing matches.
    const auto searchFew = [] {
        openBench();
        search(u"99999"_s);
    };
    int serial = 0;
    int row = 0;
    std::vector<Comparison> comparisons{
        {"the bench opens, its eleven lists filled",
         1.5,
         both,
         openBench,
         {},
         [&] {
             closeBench();
             const std::string text = std::to_string(++serial);
             station.run("UPDATE Pecas SET LOCAL='" + text +
                         "' WHERE rowid=5; UPDATE PECAAPLICADA "
                         "SET NOME='" +
                         text + "' WHERE rowid=5");
         }},
        {"the same, nothing changed since",
         0.1,
         both,
         openBench,
         {},
         [] {
             openBench();
             closeBench();
         }},
        {"a key stroke in the bench's search, 1 % match",
         0.25,
         like("0012"),
         [] { search(u"0012"_s); },
         {},
         searchFew},
        {"a key stroke in the bench's search, 40 % match",
         0.6,
         like("5"),
         [] { search(u"5"_s); },
         {},
         searchFew},
        {"a click on an order",
         0.1,
         twins,
         [&] { clickRow(bench().MSFlexGrid1, row += 7); },
         {},
         [] {
             openBench();
             if (bench().Text1(0).text() != u"5"_s)
                 search(u"5"_s);
         }},
        {"a part picked on a line",
         0.1,
         parts,
         [&] { bench().Combo3.setListIndex((++serial * 4001) % Parts); },
         {},
         [] {
             openBench();
             if (bench().Command1(0).enabled())
                 press(bench().Command1(0));
         }},
        {"Salvar at the bench", 2.5,
         [&] {
             const std::string text = std::to_string(++serial);
             raw.run("BEGIN IMMEDIATE; UPDATE Cliente SET servicoexecutado='" + text +
                     "' WHERE rowid=70; UPDATE PECAAPLICADA SET CODIGO1='" + text +
                     "' WHERE rowid=70; COMMIT");
         },
         [] { press(bench().Command1(1)); },
         // What the other one stored meanwhile is not part of the work.
         [&raw] {
             raw.readAll("SELECT * FROM Cliente WHERE rowid=70");
             raw.readAll("SELECT * FROM PECAAPLICADA WHERE rowid=70");
         },
         [&] {
             openBench();
             if (bench().Command1(2).enabled())
                 press(bench().Command1(2));
             search({});
             search(u"0012"_s);
             clickRow(bench().MSFlexGrid1, ++row % 1000 + 1);
             press(bench().Command1(0));
             bench().Text1(26).setText(u"Feito "_s + QString::number(++serial));
             bench().line(1).code.setText(QString::number(serial));
         }},
    };
    int missed = runComparisons(argc, argv, comparisons, 15);
    closeBench();
    missed += compareMemory("bench", installation);
    FormRegistry::instance().clear();
    return missed == 0 ? 0 : 1;
}
