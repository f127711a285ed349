#pragma once

#include "CommonDialog.h"
#include "Controls.h"
#include "Form.h"
#include "RunningSum.h"

// The cash movement report: lists and sums all cash rows, prints the list and empties the table.
// The search by a range of days stands ready behind five controls that nothing shows.
class Form1relatorio : public Form
{
public:
    static constexpr char Name[] = "Form1relatorio";
    Form1relatorio();

    DTPicker DTPicker1{this, QStringLiteral("DTPicker1")};
    DTPicker DTPicker2{this, QStringLiteral("DTPicker2")};
    CommandButton Command1{this, QStringLiteral("Command1")};
    CommandButton Command2{this, QStringLiteral("Command2")};
    CommandButton Command3{this, QStringLiteral("Command3")};
    CommandButton Command4{this, QStringLiteral("Command4")};
    FlexGrid MSFlexGrid1{this, QStringLiteral("MSFlexGrid1")};
    TextBox Text1{this, QStringLiteral("Text1")};
    TextBox Text2{this, QStringLiteral("Text2")};
    TextBox Text3{this, QStringLiteral("Text3")};
    TextBox Text4{this, QStringLiteral("Text4")};
    TextBox Text5{this, QStringLiteral("Text5")};
    TextBox Text6{this, QStringLiteral("Text6")};
    TextBox Text8{this, QStringLiteral("Text8")};
    TextBox Text10{this, QStringLiteral("Text10")};
    CommonDialog CommonDialog1;

    void CarregaGrid();
    void CarregaGridPeriodo();
    void ExcluiMovimento();
    void ImprimeMovimento();

protected:
    void Form_Load() override;
    void Form_Unload() override;

private:
    // The texts of the sum boxes while a load runs. No event hangs on these boxes, so they are
    // written once, when the load ends or stops.
    struct Sums
    {
        RunningSum Text3, Text5, Text8, Text10;
        QString Text4, Text6;
    };

    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();

    void openMovement();
    Sums readSums() const;
    void showSums(const Sums& sums);
    static void showTitle();
    void beginRow(Sums& sums) const;
    void addRow(Sums& sums, int row);
};
