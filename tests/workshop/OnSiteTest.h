#pragma once

#include "Form1manutencao.h"
#include "Form1principal.h"
#include "RecordStates.h"

// Orders for work at the client's place, as rows and in their form.
class OnSiteTest : public FormTest
{
protected:
    OnSiteTest()
    {
        addForm<Form1principal>();
        addForm<Form1manutencao>();
    }

    static Form1manutencao& record() { return form<Form1manutencao>(); }
    static Form1manutencao& openRecord()
    {
        record().show();
        return record();
    }
    static void press(int button) { click(record().Command1(button)); }
    void remove(Answer answer = Answer::Yes)
    {
        expectBox(u"Deseja Realmente Excluir este Cliente ?"_s, answer, BoxButtons::YesNo,
                  BoxIcon::Question);
        press(3);
    }

    // More columns with their literals as "CPF='...', ...".
    void addOrder(const QString& number, const QString& name, const QString& more = {})
    {
        mainSql(u"INSERT INTO MANUTENCAO (NUMERO, NOME) VALUES ('%1', '%2')"_s.arg(number, name));
        if (!more.isEmpty())
            changeOrder(number, more);
    }
    // As another station would.
    void changeOrder(const QString& number, const QString& changes)
    {
        mainSql(u"UPDATE MANUTENCAO SET %1 WHERE NUMERO='%2'"_s.arg(changes, number));
    }
    // All rows as they lie in the file, in the order of their making, fields joined by "|".
    QStringList orders() const
    {
        QStringList columns;
        for (const QString& name : fieldNames())
            columns << u"ifnull(%1, 'NULL')"_s.arg(name);
        return sql(mainFile(), u"SELECT %1 FROM MANUTENCAO ORDER BY rowid"_s.arg(
                                   columns.join(u" || '|' || "_s)));
    }
    QStringList numbersAndNames() const
    {
        return sql(mainFile(), u"SELECT NUMERO || ' ' || NOME FROM MANUTENCAO ORDER BY rowid"_s);
    }
    static QStringList fieldNames()
    {
        QStringList names{
            u"NUMERO"_s,   u"DATAPEDIDO"_s, u"DATACONCLUSAO"_s, u"NOME"_s,   u"ENDERECO"_s,
            u"CIDADE"_s,   u"UF"_s,         u"NUMEROCASA"_s,    u"BAIRRO"_s, u"COMPLEMENTO"_s,
            u"TELEFONE"_s, u"CELULAR"_s,    u"CPF"_s,           u"EMAIL"_s};
        for (const QString& service : {u"SERVICOSOLICITADO"_s, u"SERVICOEXECUTADO"_s})
            for (int line = 1; line <= 4; ++line)
                names << service + QString::number(line);
        return names << u"OBSERVACAO"_s << u"VALOR"_s;
    }
    // The box of each field, in the order of the table.
    static TextBox& boxOf(int field)
    {
        static constexpr int boxes[24] = {18, 19, 20, 0, 1,  2,  3,  4,  5,  6,  -1, -1,
                                          -1, 7,  8,  9, 10, 11, 12, 13, 14, 15, 17, 16};
        return boxes[field] < 0 ? record().Text3(field - 10) : record().Text1(boxes[field]);
    }
    static QString shown()
    {
        QStringList texts;
        for (int field = 0; field < 24; ++field)
            texts << boxOf(field).text();
        return texts.join(u'|');
    }
};
