#pragma once

#include "CommonDialog.h"
#include "Controls.h"

// The settings of the system: company data, texts of the sheets, place of the database and of the
// backup, users with their passwords and levels. One form for eight tasks; ModoConfigura tells the
// one in progress, and the eight lines serve the first five. Users are kept on pair 4.
class Form1Configurar : public Form
{
public:
    static constexpr char Name[] = "Form1Configurar";
    Form1Configurar();

    ControlArray<CommandButton> Command1{this, QStringLiteral("Command1")};
    ControlArray<TextBox> Text1{this, QStringLiteral("Text1")};
    ControlArray<Label> Label1{this, QStringLiteral("Label1")}; // 8 is the legend of the task
    Label Label4{this, QStringLiteral("Label4")};
    Frame Frame1{this, QStringLiteral("Frame1")};
    DriveListBox Drive1{this, QStringLiteral("Drive1")};
    CheckBox Check1{this, QStringLiteral("Check1")};
    CommonDialog CommonDialog2; // nothing opens it

    Frame Frame2{this, QStringLiteral("Frame2")};
    Frame Frame3{this, QStringLiteral("Frame3")};
    ComboBox Combo1{this, QStringLiteral("Combo1")};
    TextBox Text2{this, QStringLiteral("Text2")};
    TextBox Text3{this, QStringLiteral("Text3")};
    TextBox Text4{this, QStringLiteral("Text4")};
    TextBox Text6{this, QStringLiteral("Text6")}; // name and password of the user on show
    TextBox Text7{this, QStringLiteral("Text7")};
    ControlArray<CheckBox> Check2{this, QStringLiteral("Check2")};
    ControlArray<Label> Label2{this, QStringLiteral("Label2")};

    void MontaTela();
    void AplicaConfiguracao();
    void EscondeCampos();
    void LiberaBotoes();
    void TravaBotoes();
    void RestauraBotoes();

    void MontaUsuario();
    void CarregaUsuarios();
    void MostraUsuario();
    void LimpaSenhas();
    void ConfereCampos();

protected:
    void Form_Load() override;
    void Form_Unload() override;
    void Form_Deactivate() override;

private:
    void Command1_Click(int Index);
    void Text1_KeyPress(int Index, int& KeyAscii);
    void Drive1_Change();
    void Check1_Click();
    void Combo1_Click();
    void Password_KeyPress(int& KeyAscii);

    void beginLines(int mode);
    void applyOrBeginLevels();
    void closeOrCancel();
    void restoreTask();
    void applyCompany();
    void applyPlace();

    void beginNewUser();
    void beginPassword();
    void beginLevels();
    void deleteUser();
    void applyNewUser();
    void applyPassword();
    void applyLevels();
    void storeLevels();
    void beginChoice();
};
