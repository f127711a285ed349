#pragma once

#include "Form1Pec.h"
#include "Form1pecabusca.h"
#include "Form1pecavenda.h"
#include "Form1principal.h"
#include "RecordTest.h"

// A catalogue and the three forms that work on it.
class StockTest : public RecordTest
{
protected:
    StockTest()
    {
        addForm<Form1principal>();
        addForm<Form1Pec>();
        addForm<Form1pecabusca>();
        addForm<Form1pecavenda>();
    }

    static QString code(int number) { return QString::number(number).rightJustified(7, u'0'); }
    // Stock and price as SQL literals, the price in ten-thousandths.
    void addPart(const QString& code, const QString& description, const QString& stock = u"'10'"_s,
                 const QString& price = u"25000"_s)
    {
        mainSql(u"INSERT INTO Pecas (CODIGO, LOCAL, ESTOQUE, DESCRICAO, VALOR, EQUIVALENTE) "
                "VALUES ('%1', 'A1', %2, '%3', %4, 'BC')"_s.arg(code, stock, description, price));
    }
    void addParts(const QStringList& descriptions)
    {
        for (int part = 0; part < descriptions.size(); ++part)
            addPart(code(part + 1), descriptions[part]);
    }
    void addOrder(const QString& code, const QString& description)
    {
        mainSql(
            u"INSERT INTO PEDIDO (DESCRICAO, CODIGO) VALUES ('%1', '%2')"_s.arg(description, code));
    }
    void addLine(const QString& code, const QString& number, const QString& quantity = u"'1'"_s,
                 const QString& total = u"'2,50'"_s)
    {
        sql(listFile(),
            u"INSERT INTO Pecas (CODIGO, LOCAL, QUANTIDADE, DESCRICAO, UNITARIO, TOTAL, "
            "NUMERO) VALUES ('%1', 'A1', %2, 'Line', '2,50', %3, '%4')"_s.arg(code, quantity, total,
                                                                              number));
    }

    static Form1Pec& parts() { return form<Form1Pec>(); }
    Record catalogue()
    {
        return {parts(),
                parts().Command1,
                parts().Text1,
                u"Pecas"_s,
                u"DESCRICAO"_s,
                u"Deseja Realmente Excluir está Peça ?"_s,
                [this](const QString& code, const QString& name) { addPart(code, name); }};
    }
    Form1pecavenda& openSale()
    {
        form<Form1pecavenda>().show();
        return form<Form1pecavenda>();
    }
    static Form1pecavenda& sale() { return form<Form1pecavenda>(); }
    // A click in the catalogue, the quantity typed, "&Incluir".
    static void sell(int row, const QString& quantity = u"1"_s)
    {
        click(sale().MSFlexGrid1, row);
        type(sale().Text1(6), quantity);
        click(sale().Command2(0));
    }

    // "&Oficina", answered.
    void takeForWorkshop(Answer answer = Answer::Yes)
    {
        expectQuestion(u"Uso interno da oficina ?"_s, answer);
        click(sale().Command2(2));
    }
    // "&Imprimir", with the paper found right or not.
    void print(Answer answer)
    {
        expectQuestion(u"A impressão saiu correta ?"_s, answer);
        click(sale().Command2(1));
    }

    QStringList stocks() const
    {
        return sql(mainFile(),
                   u"SELECT CODIGO || ' ' || ifnull(ESTOQUE, 'NULL') FROM Pecas ORDER BY CODIGO"_s);
    }
    QStringList cash() const
    {
        return sql(mainFile(),
                   u"SELECT codigo || '|' || descricao || '|' || ifnull(CAST(quantidade "
                   "AS INTEGER), 'NULL') || '|' || valor || '|' || DATA "
                   "FROM MOVIMENTO ORDER BY rowid"_s);
    }
    QStringList orders() const
    {
        return sql(mainFile(),
                   u"SELECT CODIGO || '|' || DESCRICAO || '|' || ifnull(DATAPEDIDO, '') "
                   "|| '|' || ifnull(QUANTIDADE, '') FROM PEDIDO ORDER BY rowid"_s);
    }
    QStringList lines() const
    {
        return sql(listFile(), u"SELECT NUMERO || '|' || ifnull(CODIGO, 'NULL') || '|' || "
                               "ifnull(QUANTIDADE, 'NULL') || '|' || ifnull(TOTAL, 'NULL') "
                               "FROM Pecas ORDER BY NUMERO"_s);
    }
};
