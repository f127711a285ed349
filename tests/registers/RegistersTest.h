#pragma once

#include "Buscafornecedor.h"
#include "Form1Defeitos.h"
#include "Form1For.h"
#include "Form1principal.h"
#include "RecordStates.h"

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
    void addDefect(const QString& brand, const QString& defect = u"Não liga"_s)
    {
        mainSql(u"INSERT INTO DEFEITO (MARCA, MODELO, DEFEITO, SOLUCAO) "
                "VALUES ('%1', 'TX', '%2', 'Fonte')"_s.arg(brand, defect));
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

    // What both registers keep alike.
    struct Register
    {
        Form& form;
        ControlArray<CommandButton>& buttons;
        ControlArray<TextBox>& boxes;
        QString table, field;
        std::function<void(const QString&)> add;
        std::function<void()> remove;
    };
    std::vector<Register> registers()
    {
        return {{firm(), firm().Command1, firm().Text1, u"FORNECEDOR"_s, u"NOMEEMPRESA"_s,
                 [this](const QString& name) { addFirm(u"0000001"_s, name); },
                 [this] { removeFirm(); }},
                {defect(), defect().Command1, defect().Text2, u"DEFEITO"_s, u"MARCA"_s,
                 [this](const QString& name) { addDefect(name); }, [this] { removeDefect(); }}};
    }
    QStringList names(const Register& record) const
    {
        return sql(mainFile(), u"SELECT %1 FROM %2 ORDER BY _id"_s.arg(record.field, record.table));
    }
    void refill(const Register& record, const QStringList& names)
    {
        firm().unload(); // both stand on the same pair
        defect().unload();
        mainSql(u"DELETE FROM "_s + record.table);
        for (const QString& name : names)
            record.add(name);
    }
};
