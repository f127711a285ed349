#pragma once

#include "Controls.h"
#include "RecordFields.h"

#include <vector>

// The firms that the workshop buys from: one row of FORNECEDOR a firm, with its salesperson, how to
// reach it, its tax number and what it sells.
class Form1For : public Form
{
public:
    static constexpr char Name[] = "Form1For";
    Form1For();

    // Names, addresses on the net and product; 5 is the number of firms.
    ControlArray<TextBox> Text1{this, QStringLiteral("Text1")};
    ControlArray<TextBox> Text6{this, QStringLiteral("Text6")}; // telephones and documents
    TextBox Text4{this, QStringLiteral("Text4")};               // the code
    TextBox Text3{this, QStringLiteral("Text3")}; // a code put here moves the form to that firm
    TextBox Text2{this, QStringLiteral("Text2")}; // tax number of the firm as stored
    MaskEdBox MaskEdBox1{this, QStringLiteral("MaskEdBox1")}; // its digits, for editing
    ControlArray<CommandButton> Command1{this, QStringLiteral("Command1")};

    void TravaCampos();
    void LiberaCampos();
    void DesativaBotoes();
    void AtivaBotoes();
    void LimpaCampos();
    // These three end silently at an error.
    void MostraFornecedor();
    void SalvaFornecedor();
    void ExcluiFornecedor();
    void AtualizaContagem();

protected:
    void Form_Load() override;
    void Form_Unload() override;
    void Form_Deactivate() override;

private:
    void Command1_Click(int Index);
    void Text1_KeyPress(int Index, int& KeyAscii);
    void Text3_Change();
    void Text6_Change(int Index);
    void Text6_GotFocus(int Index);
    void Text6_KeyPress(int Index, int& KeyAscii);
    void Text6_LostFocus(int Index);

    void Incluir();
    void Editar();
    void Excluir();
    void Procurar();
    void Cancela();

    std::vector<BoxField> campos();
    void backToBrowsing();
    void openBoxes(bool canDelete);
};
