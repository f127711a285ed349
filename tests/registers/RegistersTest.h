#pragma once

#include "Buscafornecedor.h"
#include "Form1Defeitos.h"
#include "Form1For.h"
#include "Form1principal.h"
#include "FormTest.h"

// Firms, their search, and the solved defects.
class RegistersTest : public FormTest
{
protected:
    RegistersTest()
    {
        addForm<Form1principal>();
        addForm<Form1For>();
        addForm<Buscafornecedor>();
        addForm<Form1Defeitos>();
        principal().show();
    }

    static Form1For& firm() { return form<Form1For>(); }
    static Buscafornecedor& search() { return form<Buscafornecedor>(); }
    static Form1Defeitos& defect() { return form<Form1Defeitos>(); }

    // Documents as SQL literals.
    void addFirm(const QString& code, const QString& name, const QString& document = u"''"_s)
    {
        mainSql(u"INSERT INTO FORNECEDOR (NOMEEMPRESA, NOMEFORNECEDOR, SITE, EMAIL, TELEFONE, "
                "CELULAR, CGC, IE, PRODUTO, CODIGO) VALUES ('%2', 'Ana', '', '', '1932324410', "
                "NULL, %3, '', 'Cabos', '%1')"_s.arg(code, name, document));
    }
    QStringList firms(const QString& field = u"NOMEEMPRESA"_s) const
    {
        return sql(mainFile(),
                   u"SELECT CODIGO || '|' || ifnull(%1, 'NULL') FROM FORNECEDOR ORDER BY _id"_s.arg(
                       field));
    }
    void addDefect(const QString& brand, const QString& defect = u"Não liga"_s)
    {
        mainSql(u"INSERT INTO DEFEITO (MARCA, MODELO, DEFEITO, SOLUCAO) "
                "VALUES ('%1', 'TX', '%2', 'Fonte')"_s.arg(brand, defect));
    }
    QStringList defects() const
    {
        return sql(mainFile(), u"SELECT MARCA || '|' || MODELO || '|' || DEFEITO || '|' || SOLUCAO "
                               "FROM DEFEITO ORDER BY _id"_s);
    }

    void removeFirm(Answer answer = Answer::Yes)
    {
        expectBox(u"Deseja Realmente Excluir este Fornecedor ?"_s, answer, BoxButtons::YesNo,
                  BoxIcon::Question);
        click(firm().Command1(3));
    }
    void removeDefect(Answer answer = Answer::Yes)
    {
        expectBox(u"Deseja Realmente Excluir este Arquivo ?"_s, answer, BoxButtons::YesNo,
                  BoxIcon::Question);
        click(defect().Command1(3));
    }

    // An action, and what stands after it.
    struct Step
    {
        const char* name;
        std::function<void()> action;
        QString buttons;
        QString locked;
        QString shown;
    };
};
