#pragma once

#include "Controls.h"
#include "RecordFields.h"

#include <vector>

// What a brand and model showed and how it was solved, for the next one of its kind: one row of
// DEFEITO an entry, free text, bound to no client and no order.
class Form1Defeitos : public Form
{
public:
    static constexpr char Name[] = "Form1Defeitos";
    Form1Defeitos();

    ControlArray<TextBox> Text1{this, QStringLiteral("Text1")}; // 16, the number of entries
    ControlArray<TextBox> Text2{this, QStringLiteral("Text2")}; // brand, model, defect, solution
    TextBox Text3{this, QStringLiteral("Text3")}; // the brand to look up, written by the grid
    ControlArray<CommandButton> Command1{this, QStringLiteral("Command1")};
    FlexGrid MSFlexGrid1{this, QStringLiteral("MSFlexGrid1")};

    void LimpaCampos();
    void TravaCampos();
    void LiberaCampos();
    void AtualizaContagem();
    // These four end silently at an error.
    void MostraDefeito();
    void MontaGrid();
    void ExcluiDefeito();
    void SalvaDefeito();

protected:
    void Form_Load() override;
    void Form_Unload() override;

private:
    void Command1_Click(int Index);
    void Text2_KeyPress(int Index, int& KeyAscii);
    void Text3_Change();
    void MSFlexGrid1_Click();

    void Incluir();
    void Editar();
    void Excluir();
    void Cancela();
    void move(int Index);

    std::vector<BoxField> campos();
    void backToBrowsing();
    void openBoxes();

    int rowOnShow_ = 0; // its place in Tabela1; after a save another row is current
};
