// The registers and the lists of orders over 10,000 rows each, beside the engine's own interface.

#include "Application.h"
#include "Buscafornecedor.h"
#include "EventTransactions.h"
#include "Form1Defeitos.h"
#include "Form1For.h"
#include "Form1manutencao.h"
#include "Form1pedido.h"
#include "Form1principal.h"
#include "Measure.h"

#include <QApplication>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Rows = 10000;

// Two firms in five sell "Capacitores".
void fillRegisters(RawFile& file)
{
    const std::string numbers = upTo(Rows);
    file.run("BEGIN");
    file.run(numbers +
             "INSERT INTO FORNECEDOR(NOMEEMPRESA,NOMEFORNECEDOR,SITE,EMAIL,TELEFONE,"
             "CELULAR,CGC,IE,PRODUTO,CODIGO) SELECT 'Eletrônica '||(i*7919%10007)||' Ltda',"
             "'José Conceição '||(i%300),'www.fornecedor'||i||'.exemplo.com.br',"
             "'vendas'||i||'@exemplo.com.br','193232'||printf('%04d',i%10000),"
             "'199191'||printf('%04d',i%10000),'11222333000181','200'||(100000+i),"
             "CASE WHEN i%5<2 THEN 'Capacitores' ELSE 'Cabos' END||' e conectores',"
             "printf('%07d',i) FROM n");
    file.run(numbers +
             "INSERT INTO DEFEITO(MARCA,MODELO,DEFEITO,SOLUCAO) SELECT 'Marca '||(i%400),"
             "'TX-'||i,'Liga e desliga em seguida, sem imagem e com chiado','Capacitor da "
             "fonte com fuga.'||char(10)||'Trocar C910 e C912.'||char(10)||'Medir os 115 V "
             "antes de fechar o aparelho.' FROM n");
    file.run(numbers + "INSERT INTO PEDIDO(DATAPEDIDO,DESCRICAO,QUANTIDADE,CODIGO) SELECT "
                       "printf('%02d/%02d/2026',1+i%28,1+i%12),'Transistor de saída '||i,"
                       "CASE WHEN i%3=0 THEN 'p.EST' ELSE ''||(i%20) END,printf('%07d',i) FROM n");
    file.run(numbers +
             "INSERT INTO MANUTENCAO(NUMERO,DATAPEDIDO,DATACONCLUSAO,NOME,ENDERECO,CIDADE,"
             "UF,NUMEROCASA,BAIRRO,TELEFONE,CPF,SERVICOSOLICITADO1,SERVICOEXECUTADO1,"
             "OBSERVACAO,VALOR) SELECT printf('%07d',i),'05/03/2026','**/**/****',"
             "'José Conceição '||i,'Rua São Bento','Campinas','SP',''||i,'Centro',"
             "'(19)3232-4410','529-982-247/25','Revisão da antena coletiva',"
             "'Trocados 30 metros de cabo',printf('%.39c','*'),'120,00' FROM n");
    file.run("COMMIT");
}

void closeAll()
{
    closeForms({Form1For::Name, Buscafornecedor::Name, Form1Defeitos::Name, Form1pedido::Name,
                Form1manutencao::Name});
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    prepareApplication(application);
    installEventTransactions();
    addForm<Form1principal>();
    addForm<Form1For>();
    addForm<Buscafornecedor>();
    addForm<Form1Defeitos>();
    addForm<Form1pedido>();
    addForm<Form1manutencao>();

    const BenchInstallation installation;
    RawFile raw(installation.mainFile());
    fillRegisters(raw);
    RawFile station(installation.mainFile());
    const auto closedAndChanged = [&](const char* table, const char* field) {
        return [&station, table, field] {
            closeAll();
            station.run("UPDATE " + std::string(table) + " SET " + field +
                        "='X'||abs(random()%100000) WHERE _id=5");
        };
    };
    const auto all = [&raw](const char* sql) { return [&raw, sql] { raw.readAll(sql); }; };
    const auto search = [](const QString& text) {
        return [text] { form<Buscafornecedor>().Text1(2).setText(text); };
    };

    const std::vector<Comparison> comparisons{
        {"the suppliers open after a foreign change",
         1.5,
         all("SELECT * FROM FORNECEDOR ORDER BY NOMEEMPRESA"),
         [] { form<Form1For>().load(); },
         {},
         closedAndChanged("FORNECEDOR", "SITE")},
        {"the solved defects open after a foreign change, grid filled",
         1.5,
         all("SELECT * FROM DEFEITO ORDER BY MARCA"),
         [] { form<Form1Defeitos>().load(); },
         {},
         closedAndChanged("DEFEITO", "MODELO")},
        {"the parts to buy open after a foreign change, grid filled",
         1.5,
         all("SELECT * FROM PEDIDO ORDER BY DATAPEDIDO"),
         [] { form<Form1pedido>().load(); },
         {},
         closedAndChanged("PEDIDO", "DESCRICAO")},
        {"the on-site orders open after a foreign change",
         1.5,
         all("SELECT * FROM MANUTENCAO ORDER BY NUMERO"),
         [] { form<Form1manutencao>().load(); },
         {},
         closedAndChanged("MANUTENCAO", "NOME")},
        {"a key stroke in the supplier search, 40 % match",
         0.6,
         [&raw] {
             raw.readAll("SELECT * FROM FORNECEDOR WHERE PRODUTO LIKE '%Capacitores%'",
                         {9, 0, 1, 8});
         },
         search(u"Capacitores"_s),
         {},
         search(u"Capacitore"_s)},
    };
    const int missed = runComparisons(argc, argv, comparisons, 15);
    closeAll();
    return missed == 0 ? 0 : 1;
}
