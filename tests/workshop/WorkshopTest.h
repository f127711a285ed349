#pragma once

#include "Buscacli.h"
#include "Form1Cli.h"
#include "Form1principal.h"
#include "RecordTest.h"

// Service orders with their twins, and the two forms that show them.
class WorkshopTest : public RecordTest
{
protected:
    WorkshopTest()
    {
        addForm<Form1principal>();
        addForm<Form1Cli>();
        addForm<Buscacli>();
    }

    void addTwin(const QString& number, const QString& name = {})
    {
        mainSql(u"INSERT INTO PECAAPLICADA (NUMERO, NOME) VALUES ('%1', '%2')"_s.arg(number, name));
    }
    // An order and its twin; more columns of Cliente with their literals as "cpf='...', ...".
    void addOrder(const QString& number, const QString& name = {}, const QString& more = {})
    {
        mainSql(u"INSERT INTO Cliente (numero, Nome) VALUES ('%1', '%2')"_s.arg(number, name));
        addTwin(number, name);
        if (!more.isEmpty())
            changeOrder(number, more);
    }
    // As another station would.
    void changeOrder(const QString& number, const QString& changes)
    {
        mainSql(u"UPDATE Cliente SET %1 WHERE numero='%2'"_s.arg(changes, number));
    }

    static Form1Cli& cli() { return form<Form1Cli>(); }
    static void openRecordAt(const QString& number)
    {
        cli().show();
        cli().Text2.setText(number);
    }
    Record clients()
    {
        return {cli(),
                cli().Command1,
                cli().Text1,
                u"Cliente"_s,
                u"Nome"_s,
                u"Deseja Realmente Excluir este Cliente ?"_s,
                [this](const QString& number, const QString& name) { addOrder(number, name); },
                u"PECAAPLICADA"_s};
    }

    QStringList orders() const
    {
        return sql(mainFile(),
                   u"SELECT numero || ' ' || Nome FROM Cliente ORDER BY numero, Nome"_s);
    }
    QStringList twins() const
    {
        return sql(mainFile(),
                   u"SELECT NUMERO || ' ' || NOME FROM PECAAPLICADA ORDER BY NUMERO, NOME"_s);
    }
    QString stored(const QString& number, const QString& column) const
    {
        return sql(mainFile(), u"SELECT %1 FROM Cliente WHERE numero='%2'"_s.arg(column, number))
            .join(u'|');
    }
};
