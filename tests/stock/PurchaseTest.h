#pragma once

#include "Form1pedido.h"
#include "Form1principal.h"
#include "FormTest.h"

// The list of parts to buy, as rows and in its form.
class PurchaseTest : public FormTest
{
protected:
    PurchaseTest()
    {
        addForm<Form1principal>();
        addForm<Form1pedido>();
    }

    static Form1pedido& list() { return form<Form1pedido>(); }
    static Form1pedido& openList()
    {
        list().show();
        return list();
    }
    static void press(int button) { click(list().Command1(button)); }
    static void escape() { ::press(list().MSFlexGrid1, Qt::Key_Escape); }
    void remove(Answer answer = Answer::Yes)
    {
        expectBox(u"Deseja Realmente Excluir este Pedido ?"_s, answer, BoxButtons::YesNo,
                  BoxIcon::Question);
        press(3);
    }

    void addOrder(const QString& date, const QString& code, const QString& description,
                  const QString& quantity = u"1"_s)
    {
        mainSql(u"INSERT INTO PEDIDO (DATAPEDIDO, DESCRICAO, QUANTIDADE, CODIGO) "
                "VALUES ('%1', '%2', '%3', '%4')"_s.arg(date, description, quantity, code));
    }
    // All rows as they lie in the file, in the order of their making.
    QStringList orders() const
    {
        return sql(mainFile(), u"SELECT ifnull(DATAPEDIDO, 'NULL') || '|' || "
                               "ifnull(DESCRICAO, 'NULL') || '|' || ifnull(QUANTIDADE, 'NULL') || "
                               "'|' || ifnull(CODIGO, 'NULL') FROM PEDIDO ORDER BY rowid"_s);
    }
    static QString shown()
    {
        return u"%1|%2|%3|%4"_s.arg(list().Label2.caption(), list().Text1(0).text(),
                                    list().Text1(1).text(), list().Text1(3).text());
    }
};
