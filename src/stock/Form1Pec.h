#pragma once

#include "Controls.h"
#include "RecordFields.h"

#include <QString>

#include <vector>

// The register of parts and accessories: one row of the catalogue a part, with its code, shelf,
// stock, description, price and equivalent.
class Form1Pec : public Form
{
public:
    static constexpr char Name[] = "Form1Pec";
    Form1Pec();

    ControlArray<TextBox> Text1{this, QStringLiteral("Text1")};
    // The code to look up, written by the grid and by the search dialog.
    TextBox Text2{this, QStringLiteral("Text2")};
    ControlArray<Label> Label1{this, QStringLiteral("Label1")};
    ControlArray<CommandButton> Command1{this, QStringLiteral("Command1")};
    FlexGrid MSFlexGrid1{this, QStringLiteral("MSFlexGrid1")};

    void MostraFichaPeca();
    // Browsing again only when the part is stored; else the form stays as it was, to be tried
    // again.
    void GravaFichaPeca();
    void ApagaPeca();
    void ContaPecas();
    void LimpaFichaPeca();
    void DesligaBotoes();
    void LigaBotoes();
    void TravaFichaPeca();
    void DestravaFichaPeca();
    void CarregaGridPecas();
    void GuardaCopiaPeca();
    void ColaCopiaPeca();

protected:
    void Form_Load() override;
    void Form_Unload() override;
    void Form_Deactivate() override;

private:
    void Command1_Click(int Index);
    void Text1_KeyPress(int Index, int& KeyAscii);
    void Text1_LostFocus(int Index);
    void Text2_Change();
    void MSFlexGrid1_Click();
    void MSFlexGrid1_KeyPress(int KeyAscii);

    void Incluir();
    void Editar();
    void Excluir();
    void Procurar();
    void Copiar();
    void Colar();
    void Cancela();

    std::vector<BoxField> fields() const;
    // The answer is the code of the new row.
    QString beginNewRow();
    void showCurrentRow();
    void backToBrowsing();

    QString copiedDescription_;
    QString copiedShelf_;
};
