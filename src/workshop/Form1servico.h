#pragma once

#include "Controls.h"

#include <array>
#include <vector>

// The technician's bench: what was done to a device that already stands in the system, up to eleven
// parts applied, and three of its four flags. It finds an order by its number and rewrites some
// fields of its row in Cliente and of the twin in PECAAPLICADA; it makes no order, and touches
// neither stock nor cash. Tabela1 is the catalogue while the form loads, and the orders found from
// the first search on; Tabela3 looks parts up, Tabela4 holds the twins.
class Form1servico : public Form
{
public:
    static constexpr char Name[] = "Form1servico";
    static constexpr int Lines = 11;
    Form1servico();

    // 0 the search, 1 to 3 the order, 4 to 14 values, 15 to 25 quantities, 26 the service, 27 to 37
    // codes.
    ControlArray<TextBox> Text1{this, QStringLiteral("Text1")};
    // Those of the client record, without the one that authorises.
    ControlArray<CheckBox> Check1{this, QStringLiteral("Check1")};
    ControlArray<CommandButton> Command1{this, QStringLiteral("Command1")};
    FlexGrid MSFlexGrid1{this, QStringLiteral("MSFlexGrid1")};
    ComboBox Combo1{this, QStringLiteral("Combo1")}; // description on each line
    ComboBox Combo2{this, QStringLiteral("Combo2")};
    ComboBox Combo3{this, QStringLiteral("Combo3")};
    ComboBox Combo4{this, QStringLiteral("Combo4")};
    ComboBox Combo5{this, QStringLiteral("Combo5")};
    ComboBox Combo6{this, QStringLiteral("Combo6")};
    ComboBox Combo7{this, QStringLiteral("Combo7")};
    ComboBox Combo8{this, QStringLiteral("Combo8")};
    ComboBox Combo9{this, QStringLiteral("Combo9")};
    ComboBox Combo10{this, QStringLiteral("Combo10")};
    ComboBox Combo11{this, QStringLiteral("Combo11")};

    TextBox Text2{this, QStringLiteral("Text2")}; // number of the clicked row
    TextBox Text3{this, QStringLiteral("Text3")}; // the same; a number put here shows that order
    TextBox Text4{this, QStringLiteral("Text4")}; // description last picked; looks the part up

    // One line of parts: its boxes, and the first of its four fields in the twin.
    struct Line
    {
        TextBox& code;
        ComboBox& description;
        TextBox& quantity;
        TextBox& value;
        int position;
    };
    Line line(int number) const; // from 1

    void LimpaCampos();
    void TravaCampos();
    void LiberaCampos();
    void DesativaBotoes();
    void CarregaPecas();
    void MostraCliente();
    void MostraPecasAplicadas();
    void PreencheLinha();
    void GravaServico();

protected:
    void Form_Load() override;
    void Form_Unload() override;

private:
    void Text1_Change(int Index);
    void MSFlexGrid1_Click();
    void Text3_Change();
    void Text4_Change();
    void Combo_Click(int Index); // each of the eleven
    void Command1_Click(int Index);

    void Editar();
    void backToSearch();
    void showNoOrders();
    void setLinesLocked(bool locked);
    void fillTwin();
    void readDescriptions(std::vector<QString>& descriptions);

    const std::array<ComboBox*, Lines> combos_{&Combo1, &Combo2,  &Combo3, &Combo4,
                                               &Combo5, &Combo6,  &Combo7, &Combo8,
                                               &Combo9, &Combo10, &Combo11};
    int LinhaPeca = 0; // number of the line picked last
    QString NomeSelecionado;
    QString TelefoneSelecionado;
};
