#pragma once

#include "CommonDialog.h"
#include "Controls.h"
#include "RecordFields.h"

#include <vector>

// The list of parts to buy: one row of PEDIDO a wanted item, typed here or made by the write-off of
// a sale. An order lives until someone deletes it.
class Form1pedido : public Form
{
public:
    static constexpr char Name[] = "Form1pedido";
    Form1pedido();

    // Description, quantity, how many orders there are, and (hidden) the code.
    ControlArray<TextBox> Text1{this, QStringLiteral("Text1")};
    TextBox Text2{this, QStringLiteral("Text2")}; // the code to look up, written by the grid
    Label Label2{this, QStringLiteral("Label2")}; // the date
    ControlArray<CommandButton> Command1{this, QStringLiteral("Command1")};
    FlexGrid MSFlexGrid1{this, QStringLiteral("MSFlexGrid1")};
    CommonDialog CommonDialog1;

    void MostraPedido();
    void GravaPedido();
    void LimpaPedido();
    void CarregaGridPedido();
    void ContaPedidos();
    void DestravaPedido();
    void TravaPedido();
    void LigaBotoes();
    void DesligaBotoes();
    void ApagaPedido();
    void ImprimePedido();

protected:
    void Form_Load() override;
    void Form_Unload() override;
    void Form_Deactivate() override;

private:
    void Command1_Click(int Index);
    void Text1_KeyPress(int Index, int& KeyAscii);
    void Text2_Change();
    void MSFlexGrid1_Click();
    void MSFlexGrid1_KeyPress(int KeyAscii);

    void Incluir();
    void Editar();
    void Excluir();
    void Cancela();

    std::vector<BoxField> campos() const;
    void fillRow();
    bool isBrowsing() const;
    void backToBrowsing();
    void openBoxes();
    void showCurrentRow();

    // Which row of Tabela1 the boxes show; after a save another one is current.
    qint64 rowOnShow_ = 0;
};
