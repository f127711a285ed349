#pragma once

#include "Controls.h"

// The dialog that admits a user and unlocks the main window by that user's eight levels.
class Form1log : public Form
{
public:
    static constexpr char Name[] = "Form1log";
    Form1log();

    ControlArray<Label> Label1{this, QStringLiteral("Label1")};
    ComboBox Combo1{this, QStringLiteral("Combo1")};
    TextBox Text1{this, QStringLiteral("Text1")}; // the password typed
    TextBox Text2{this, QStringLiteral("Text2")}; // name in the current row
    TextBox Text3{this, QStringLiteral("Text3")}; // password in the current row
    ControlArray<CommandButton> Command1{this, QStringLiteral("Command1")};

protected:
    void Form_Load() override;

private:
    void Combo1_Click();
    void Command1_Click(int Index);
    void Text1_KeyPress(int& KeyAscii);

    void EnchePessoas();
    void MostraSenha();

    void enter();
    void leave();
};
