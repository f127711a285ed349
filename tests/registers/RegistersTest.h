#pragma once

#include "Buscafornecedor.h"
#include "Form1Defeitos.h"
#include "Form1For.h"
#include "Form1principal.h"
#include "RecordTest.h"

// Firms, their search, and the solved defects.
class RegistersTest : public RecordTest
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

    Record firms()
    {
        return {firm(),
                firm().Command1,
                firm().Text1,
                u"FORNECEDOR"_s,
                u"NOMEEMPRESA"_s,
                u"Deseja Realmente Excluir este Fornecedor ?"_s,
                [this](const QString& code, const QString& name) { addFirm(code, name); }};
    }
    Record defects()
    {
        return {defect(),
                defect().Command1,
                defect().Text2,
                u"DEFEITO"_s,
                u"MARCA"_s,
                u"Deseja Realmente Excluir este Arquivo ?"_s,
                [this](const QString&, const QString& name) { addDefect(name); }};
    }
};
