#pragma once

#include "Controls.h"
#include "Value.h"

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
    // Ends silently at an error; the answer tells whether the row was stored.
    bool GravaFichaPeca();
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
    void Salvar();
    void Editar();
    void Excluir();
    void Procurar();
    void Copiar();
    void Colar();
    void Cancela();
    void beginNewRow();
    void fillRow();
    void takeEditAnew();
    void showOvertaken();
    void showCurrentRow();
    void showUndone();
    void backToBrowsing();

    bool newRow_ = false;       // a row of AddNew waits for its Update
    std::vector<Value> filled_; // the row as it was when the boxes were filled
    bool isOvertaken_ = false;  // another station wrote into a box that was changed here, too
    bool newRowUndone_ = false; // its Update was undone; the next save begins it again
    QString copiedDescription_;
    QString copiedShelf_;
};
