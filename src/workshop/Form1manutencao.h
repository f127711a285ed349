#pragma once

#include "CommonDialog.h"
#include "Controls.h"
#include "RecordFields.h"

#include <vector>

// The orders for work done at the client's place: one row of MANUTENCAO an order, with the client's
// data typed anew, what was asked for and what was done. It moves no stock and no cash, and its
// numbers run apart from those of the service orders.
class Form1manutencao : public Form
{
public:
    static constexpr char Name[] = "Form1manutencao";
    Form1manutencao();

    ControlArray<TextBox> Text1{this, QStringLiteral("Text1")};
    ControlArray<TextBox> Text3{this, QStringLiteral("Text3")}; // telephones and document
    ControlArray<CommandButton> Command1{this, QStringLiteral("Command1")};
    TextBox Text2{this, QStringLiteral("Text2")}; // a number put here moves the form to that order
    TextBox Text4{this, QStringLiteral("Text4")}; // document of the order as stored
    TextBox Text5{this, QStringLiteral("Text5")}; // how many orders there are
    TextBox Text6{this, QStringLiteral("Text6")};
    CommonDialog CommonDialog1;

    void TravaCampos();
    void LiberaCampos();
    void DesativaBotoes();
    void AtivaBotoes();
    void LimpaCampos();
    void MostraFicha();
    void AtualizaContagem();
    void GravaFicha();
    void ExcluiFicha();
    void CopiaCliente();
    void ColaCliente();
    void ImprimePedidoManutencao();

protected:
    void Form_Load() override;
    void Form_Unload() override;
    void Form_Deactivate() override;

private:
    void Command1_Click(int Index);
    void Text1_KeyPress(int Index, int& KeyAscii);
    void Text2_Change();
    void Text3_KeyPress(int Index, int& KeyAscii);
    void Text3_LostFocus(int Index);

    void Incluir();
    void Salvar();
    void Editar();
    void Excluir();
    void Copiar();
    void Colar();
    void Cancela();

    std::vector<BoxField> campos() const;
    std::vector<TextBox*> copiedBoxes();
    void beginNewRow();
    void setNumberAndDate();
    void backToBrowsing();
};
