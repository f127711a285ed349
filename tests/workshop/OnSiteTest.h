#pragma once

#include "Form1manutencao.h"
#include "Form1principal.h"
#include "RecordTest.h"

// Orders for work at the client's place, as rows and in their form.
class OnSiteTest : public RecordTest
{
protected:
    OnSiteTest()
    {
        addForm<Form1principal>();
        addForm<Form1manutencao>();
    }

    static Form1manutencao& record() { return form<Form1manutencao>(); }
    static void press(int button) { click(record().Command1(button)); }
    Record onSite()
    {
        return {record(),
                record().Command1,
                record().Text1,
                u"MANUTENCAO"_s,
                u"NOME"_s,
                u"Deseja Realmente Excluir este Cliente ?"_s,
                [this](const QString& number, const QString& name) { addOrder(number, name); },
                {},
                true};
    }

    // More columns with their literals as "CPF='...', ...".
    void addOrder(const QString& number, const QString& name, const QString& more = {})
    {
        mainSql(u"INSERT INTO MANUTENCAO (NUMERO, NOME) VALUES ('%1', '%2')"_s.arg(number, name));
        if (!more.isEmpty())
            mainSql(u"UPDATE MANUTENCAO SET %1 WHERE NUMERO='%2'"_s.arg(more, number));
    }
};
