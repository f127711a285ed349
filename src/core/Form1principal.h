#pragma once

#include "Controls.h"
#include "FormRegistry.h"

// The main window: sixteen large buttons, the quick search, menus and status bar. It opens every
// other form, by name; the others write to its status bar, buttons and menus.
class Form1principal : public Form
{
public:
    static constexpr char Name[] = "Form1principal";
    Form1principal();

    ControlArray<CommandButton> Command1{this, QStringLiteral("Command1")};
    ControlArray<Label> Label1{this, QStringLiteral("Label1")};
    ControlArray<Frame> Frame2{this, QStringLiteral("Frame2")};
    ControlArray<TextBox> Text1{this, QStringLiteral("Text1")};
    ControlArray<CommandButton> Command2{this, QStringLiteral("Command2")};
    StatusBar StatusBar1{this, QStringLiteral("StatusBar1")};

    Menu mnucadastro{this, QStringLiteral("mnucadastro")};
    Menu mnucliente{this, QStringLiteral("mnucliente")};
    Menu mnufornecedor{this, QStringLiteral("mnufornecedor")};
    Menu mnupecacess{this, QStringLiteral("mnupecacess")};
    Menu mnubuscacli{this, QStringLiteral("mnubuscacli")};
    Menu mnubuscafor{this, QStringLiteral("mnubuscafor")};
    Menu mnupec{this, QStringLiteral("mnupec")};
    Menu mnupedido{this, QStringLiteral("mnupedido")};
    Menu mnupecas{this, QStringLiteral("mnupecas")};
    Menu mnumanutencao{this, QStringLiteral("mnumanutencao")};
    Menu mnusistema{this, QStringLiteral("mnusistema")};
    Menu mnubackup{this, QStringLiteral("mnubackup")};
    Menu mnurestaura{this, QStringLiteral("mnurestaura")};
    Menu mnuconfigura{this, QStringLiteral("mnuconfigura")};
    Menu mnurelatorio{this, QStringLiteral("mnurelatorio")};
    Menu mnuservidor{this, QStringLiteral("mnuservidor")};
    Menu mnu{this, QStringLiteral("mnu")};
    Menu mnueeprom{this, QStringLiteral("mnueeprom")};
    Menu mnuajuda{this, QStringLiteral("mnuajuda")};
    Menu mnusobre{this, QStringLiteral("mnusobre")};
    Menu mnusair{this, QStringLiteral("mnusair")};

    // Company name and document for the caption, as last read.
    static QString LegendaPrincipal();

    void EfetuaBackup();
    void EfetuaRestauracao();

    // To the first of the large buttons that is on.
    void focusFirstButton();

protected:
    void Form_Load() override;
    void Form_Unload() override;

private:
    void Command1_Click(int Index);
    void Command2_Click(int Index);
    void Text1_KeyPress(int Index, int& KeyAscii);
    void mnubackup_Click();
    void mnurestaura_Click();
    void mnuservidor_Click();
    void mnusair_Click();

    void bindMenus();
    void openWithStatus(const QString& formName);
    void logInOrOut();
    void logOut();
};

inline Form1principal& principal()
{
    return form<Form1principal>();
}
