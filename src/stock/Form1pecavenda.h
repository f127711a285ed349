#pragma once

#include "CommonDialog.h"
#include "Controls.h"
#include "RecordFields.h"
#include "RuntimeError.h"

#include <QString>

#include <optional>
#include <string>
#include <vector>

// The counter sale: parts are picked from the catalogue into a list that lies on this computer; the
// list ends as a receipt or as the workshop's own use, and either way leaves the stock.
class Form1pecavenda : public Form
{
public:
    static constexpr char Name[] = "Form1pecavenda";
    Form1pecavenda();

    Frame Frame3{this, QStringLiteral("Frame3")};
    ControlArray<Label> Label2{this, QStringLiteral("Label2")};
    ControlArray<TextBox> Text4{this, QStringLiteral("Text4")};
    FlexGrid MSFlexGrid1{this, QStringLiteral("MSFlexGrid1")};
    ControlArray<TextBox> Text1{this, QStringLiteral("Text1")};
    Label Label4{this, QStringLiteral("Label4")};
    Label Label5{this, QStringLiteral("Label5")};
    // Hidden boxes. Text2: code to look up in the catalogue; Text6: line number to look up in the
    // list; Text7: lines in the list, then the number of the new line; Text8 and Text10: running
    // value and items; Text9 and Text11: clicked line, write-off; Text12: last order code; Text13
    // and Text14: order look-up.
    TextBox Text2{this, QStringLiteral("Text2")};
    TextBox Text6{this, QStringLiteral("Text6")};
    TextBox Text7{this, QStringLiteral("Text7")};
    TextBox Text8{this, QStringLiteral("Text8")};
    TextBox Text9{this, QStringLiteral("Text9")};
    TextBox Text10{this, QStringLiteral("Text10")};
    TextBox Text11{this, QStringLiteral("Text11")};
    TextBox Text12{this, QStringLiteral("Text12")};
    TextBox Text13{this, QStringLiteral("Text13")};
    TextBox Text14{this, QStringLiteral("Text14")};
    FlexGrid MSFlexGrid2{this, QStringLiteral("MSFlexGrid2")};
    Frame Frame4{this, QStringLiteral("Frame4")};
    Label Label3{this, QStringLiteral("Label3")};
    TextBox Text3{this, QStringLiteral("Text3")};
    Label Label1{this, QStringLiteral("Label1")};
    TextBox Text5{this, QStringLiteral("Text5")};
    ControlArray<CommandButton> Command1{this, QStringLiteral("Command1")};
    ControlArray<CommandButton> Command2{this, QStringLiteral("Command2")};
    CommonDialog CommonDialog1;

    void CarregaListaVenda();
    void LimpaCamposItem();
    void CarregaCatalogo();
    void MostraPeca();
    void GravaItemVenda();
    void LimpaListaVenda();
    // Prints the list and asks whether the paper is right; Yes writes it off.
    void ImprimeVenda();
    // Takes the list out of the stock, enters it in the cash movement and empties it.
    void BaixaEstoque();
    // Orders each part of the catalogue that stands at stock 0 and is not ordered yet.
    void PedidoAutomatico();

protected:
    void Form_Load() override;
    void Form_Unload() override;
    void Form_Deactivate() override;

private:
    void Command1_Click(int Index);
    void Command2_Click(int Index);
    void MSFlexGrid1_Click();
    void MSFlexGrid1_KeyPress(int KeyAscii);
    void MSFlexGrid2_Click();
    void MSFlexGrid2_KeyPress(int KeyAscii);
    void Text1_Change(int Index);
    void Text1_KeyPress(int Index, int& KeyAscii);
    void Text2_Change();
    void Text4_Change(int Index);
    void Text6_Change();
    void Text13_Change();

    void Incluir();
    void Fechar();
    void deleteLines();
    void Oficina();
    void showRowsFromCurrent(const std::vector<GridField>& columns);
    void search(const QString& text, const QString& selectWhere);
    void showLine(int row);
    void lightLine(const QString& number);
    void finishWriteOff();
    void printLines();
    std::optional<RuntimeError> writeOffLines();
    void writeOffLine();
    void orderWhatRanOut();
    void addOrder();
    bool isOrdered();
    std::optional<QString> firstOrderLike(const QString& description) const;
    void rememberLastOrderFound();
    void readOrders();

    double EstoqueAtual = 0;
    QString DescricaoPeca;
    QString DescricaoPedido; // what the last look-up found that found anything

    bool isBooking_ = false;
    // The row of the list that was lit for the clerk, who did not choose it; 0 for none.
    int litRow_ = 0;
    // The orders as this load found them, for the look-up of a whole catalogue.
    struct OrderTexts
    {
        std::vector<QString> descriptions;
        std::string folded;            // all of them, joined
        std::vector<std::size_t> ends; // of each in the joined text
        // A place each for the sequences of eight bytes in the joined text: a description with a
        // sequence that has none is in no order, and most parts of a catalogue are in none.
        std::vector<bool> sequences;
    };
    std::optional<OrderTexts> orders_;
    // Descriptions passed since DescricaoPedido was last brought up to date.
    std::vector<QString> passed_;
};
