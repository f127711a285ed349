#pragma once

#include "Controls.h"

// Finds service orders while the user types: each key stroke runs a new query over one field and
// refills the grid; the chosen row opens in Form1Cli.
class Buscacli : public Form
{
public:
    static constexpr char Name[] = "Buscacli";
    Buscacli();

    ControlArray<TextBox> Text1{this, QStringLiteral("Text1")};
    ControlArray<Label> Label1{this, QStringLiteral("Label1")};
    FlexGrid MSFlexGrid1{this, QStringLiteral("MSFlexGrid1")};
    CommandButton Command1{this, QStringLiteral("Command1")};
    CommandButton Command2{this, QStringLiteral("Command2")};
    TextBox Text2{this, QStringLiteral("Text2")}; // number of the chosen row

protected:
    void Form_Load() override;

private:
    void Text1_Change(int Index);
    void Text1_KeyPress(int Index, int& KeyAscii);
    void MSFlexGrid1_Click();
    void MSFlexGrid1_DblClick();
    void MSFlexGrid1_KeyPress(int KeyAscii);
    void Command1_Click();
    void Command2_Click();

    bool allEmpty() const;
    void search(int box, const QString& text);
    void openRecord(const QString& number);
};
