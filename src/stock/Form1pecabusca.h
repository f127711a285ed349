#pragma once

#include "Controls.h"

// The search for a part by a piece of its code, description or equivalent; opens the register on
// the chosen part. It leaves its pair open: the register takes the pair over.
class Form1pecabusca : public Form
{
public:
    static constexpr char Name[] = "Form1pecabusca";
    Form1pecabusca();

    Frame Frame3{this, QStringLiteral("Frame3")};
    ControlArray<Label> Label2{this, QStringLiteral("Label2")};
    ControlArray<TextBox> Text4{this, QStringLiteral("Text4")};
    FlexGrid MSFlexGrid1{this, QStringLiteral("MSFlexGrid1")};
    // The code of the clicked part.
    TextBox Text1{this, QStringLiteral("Text1")};
    CommandButton Command1{this, QStringLiteral("Command1")};
    CommandButton Command2{this, QStringLiteral("Command2")};

protected:
    void Form_Load() override;

private:
    void Text4_Change(int Index);
    void MSFlexGrid1_Click();
    void Command1_Click();

    void search(const QString& text, const QString& selectWhere);
};
