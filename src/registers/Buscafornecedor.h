#pragma once

#include "Controls.h"

// Finds firms while the user types: each key stroke runs a new query over one field and refills the
// grid; the chosen firm opens in Form1For.
class Buscafornecedor : public Form
{
public:
    static constexpr char Name[] = "Buscafornecedor";
    Buscafornecedor();

    ControlArray<TextBox> Text1{this, QStringLiteral("Text1")};
    ControlArray<Label> Label1{this, QStringLiteral("Label1")};
    FlexGrid MSFlexGrid1{this, QStringLiteral("MSFlexGrid1")};
    CommandButton Command1{this, QStringLiteral("Command1")};
    CommandButton Command2{this, QStringLiteral("Command2")};
    TextBox Text2{this, QStringLiteral("Text2")}; // code of the chosen row

protected:
    void Form_Load() override;

private:
    void Text1_Change(int Index);
    void MSFlexGrid1_Click();
    void Command1_Click();

    void search(const QString& text, const QString& selectWhere);
};
