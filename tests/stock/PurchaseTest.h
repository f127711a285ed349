#pragma once

#include "Form1pedido.h"
#include "Form1principal.h"
#include "RecordTest.h"

// The list of parts to buy, as rows and in its form.
class PurchaseTest : public RecordTest
{
protected:
    PurchaseTest()
    {
        addForm<Form1principal>();
        addForm<Form1pedido>();
    }

    static Form1pedido& list() { return form<Form1pedido>(); }
    static void press(int button) { click(list().Command1(button)); }
    static void escape() { ::press(list().MSFlexGrid1, Qt::Key_Escape); }

    void addOrder(const QString& date, const QString& code, const QString& description,
                  const QString& quantity = u"1"_s)
    {
        mainSql(u"INSERT INTO PEDIDO (DATAPEDIDO, DESCRICAO, QUANTIDADE, CODIGO) "
                "VALUES ('%1', '%2', '%3', '%4')"_s.arg(date, description, quantity, code));
    }
    Record purchases()
    {
        return {list(),
                list().Command1,
                list().Text1,
                u"PEDIDO"_s,
                u"DESCRICAO"_s,
                u"Deseja Realmente Excluir este Pedido ?"_s,
                [this](const QString& number, const QString& name) {
                    addOrder(number.right(2) + u"/03/2026"_s, number, name);
                }};
    }
};
