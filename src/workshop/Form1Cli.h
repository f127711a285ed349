#pragma once

#include "CommonDialog.h"
#include "Controls.h"
#include "RecordFields.h"

#include <vector>

// The desk where a job enters the workshop and leaves it: one row of Cliente is one service order,
// with client, device and job together, and has a twin row of the same number in PECAAPLICADA.
// Tabela1 is the row on show, Tabela3 a second look at the numbers that exist, Tabela4 the twins.
class Form1Cli : public Form
{
public:
    static constexpr char Name[] = "Form1Cli";
    Form1Cli();

    ControlArray<TextBox> Text1{this, QStringLiteral("Text1")};
    ControlArray<TextBox> Text3{this, QStringLiteral("Text3")};
    ControlArray<CheckBox> Check1{this, QStringLiteral("Check1")};
    ControlArray<CommandButton> Command1{this, QStringLiteral("Command1")};
    TextBox Text7{this, QStringLiteral("Text7")}; // the shelf

    TextBox Text2{this, QStringLiteral("Text2")}; // a number put here moves the form to that record
    TextBox Text4{this, QStringLiteral("Text4")}; // document of the record as stored
    TextBox Text5{this, QStringLiteral("Text5")}; // number found by the duplicate test
    TextBox Text6{this, QStringLiteral("Text6")}; // the O.S number; looks the twin up
    MaskEdBox MaskEdBox1{this, QStringLiteral("MaskEdBox1")}; // digits of the document
    MaskEdBox MaskEdBox2{this, QStringLiteral("MaskEdBox2")}; // telephones as they are stored
    MaskEdBox MaskEdBox3{this, QStringLiteral("MaskEdBox3")};
    CommonDialog CommonDialog1;

    void TravaCampos();
    void LiberaCampos();
    void DesativaBotoes();
    void AtivaBotoes();
    void LimpaCampos();
    void MostraFicha();
    void AtualizaContagem();
    void GravaFicha();
    void ExcluiFicha();
    void CopiaCliente();
    void ColaCliente();
    void ImprimeFichaEntrada();
    // Whether the paper came out.
    bool ImprimeFichaSaida();

protected:
    void Form_Load() override;
    void Form_Unload() override;
    void Form_Deactivate() override;

private:
    void Command1_Click(int Index);
    void Check1_GotFocus(int Index);
    void Text1_Change(int Index);
    void Text1_KeyPress(int Index, int& KeyAscii);
    void Text2_Change();
    void Text3_Change(int Index);
    void Text3_GotFocus(int Index);
    void Text3_KeyPress(int Index, int& KeyAscii);
    void Text3_LostFocus(int Index);
    void Text6_Change();
    void Text7_KeyPress(int& KeyAscii);

    void Incluir();
    void Salvar();
    void Editar();
    void Excluir();
    void Procurar();
    void Copiar();
    void Colar();
    void Saida();
    void Cancela();

    void beginNewOrder();
    void backToBrowsing();
    void askAboutNumber();
    void editExisting();

    std::vector<BoxField> fields();
    void fillOrder();
    void findTwin();
    void findNumber(const QString& number);
    bool numberExists();
    // False where the number of a new order exists; nothing is stored then.
    bool storeUnlessNumberExists();
    bool deliveryWouldBeRefused();
    void storeDelivery(bool isPrinted);
    void enterCash();
};
