#include "Dates.h"
#include "Form1Cli.h"
#include "Format.h"
#include "Funciones.h"
#include "MsgBox.h"
#include "OnePiece.h"
#include "RecordForms.h"
#include "RuntimeError.h"

// An order and its twin are shown, stored and deleted together.

using namespace Funciones;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int FirstPhone = 10;
constexpr int SecondPhone = 11;
constexpr int Document = 12;
constexpr int JobValue = 19;
constexpr int FirstFlag = 20;

// A document stored formatted is no number and shows as it was stored.
QString asDocument(const Value& value)
{
    constexpr int CpfLength = 11;
    const QString document = value.textOrEmpty();
    return Format(document, document.size() == CpfLength ? formats::Cpf : formats::Cgc);
}

// A telephone is stored with its signs, where it is this box that is stored.
void storeSigns(int position, const TextBox& box, const MaskEdBox& withSigns)
{
    if (!box.text().isEmpty() && Tabela1->Fields(position).textOrEmpty() == box.text())
        Tabela1->Fields(position) = withSigns.text();
}

} // namespace

std::vector<BoxField> Form1Cli::fields()
{
    return {
        {0, Text1(13), asText, u"0000000"_s},
        {1, Text1(14), asText, dateText(Clock::today())},
        {2, Text1(15)},
        {3, Text1(0)},
        {4, Text1(1)},
        {5, Text1(2)},
        {6, Text1(3)},
        {7, Text1(4)},
        {8, Text1(5)},
        {9, Text1(6)},
        {FirstPhone, Text3(1), asPhone},
        {SecondPhone, Text3(2), asPhone},
        {Document, Text3(3), asDocument},
        {13, Text1(7)},
        {14, Text1(8)},
        {15, Text1(9)},
        {16, Text1(10)},
        {17, Text1(11)},
        {18, Text1(12)},
        {JobValue, Text3(0), asMoney, u"0,00"_s},
        {24, Text7},
    };
}

void Form1Cli::MostraFicha()
try {
    LimpaCampos();
    showFields(Tabela1, fields());
    Text4.setText(Tabela1->Fields(Document).textOrEmpty());
    for (int flag = 0; flag < 4; ++flag)
        Check1(flag).setValue(Tabela1->Fields(FirstFlag + flag).value().isTrue() ? 1 : 0);
} catch (const RuntimeError&) {
    // Ends silently: what was filled so far stays in view.
}

// Runs within a piece: both rows or none.
void Form1Cli::GravaFicha()
{
    fillOrder();
    if (Modo == 0)
        findTwin();
    Tabela4->Fields(0) = Tabela1->Fields(0).value();
    Tabela4->Fields(1) = Tabela1->Fields(3).value();
    Tabela1->UpdateMerged();
    // The name in the twin follows the order's, which was just granted; a clash of its own would be
    // one that nobody can see.
    Tabela4->retakeVersion();
    Tabela4->Update();
}

void Form1Cli::fillOrder()
{
    storeFields(Tabela1, fields());
    storeSigns(FirstPhone, Text3(1), MaskEdBox2);
    storeSigns(SecondPhone, Text3(2), MaskEdBox3);
    for (int flag = 0; flag < 4; ++flag)
        Tabela1->Fields(FirstFlag + flag) = Check1(flag).value() != 0;
}

// Leaves Tabela4 at its end where there is no twin.
void Form1Cli::findTwin()
{
    if (Tabela4->RecordCount() == 0)
        return;
    Tabela4->MoveFirst();
    Tabela4->Find(likeCriterion(u"numero"_s, Text6.text()));
}

void Form1Cli::findNumber(const QString& number)
{
    Tabela3->MoveFirst();
    Tabela3->Find(likeCriterion(u"numero"_s, number));
}

bool Form1Cli::numberExists()
try {
    const QString number = Text1(13).text();
    findNumber(number);
    // A longer number that holds this one may stand before it.
    while (Tabela3->Fields(0).textOrEmpty() != number)
        Tabela3->Find(likeCriterion(u"numero"_s, number), 1);
    return true;
} catch (const RuntimeError& error) {
    // Where the look-up itself failed nobody knows, and nothing is stored.
    if (error.number() != RuntimeError::NoCurrentRecord)
        throw;
    return false;
}

// Under the lock that inserts it, so that two stations never give one number.
bool Form1Cli::storeUnlessNumberExists()
{
    bool exists = false;
    inOnePiece({Conexao1, Conexao4}, [&] {
        exists = Modo == 1 && numberExists();
        if (!exists)
            GravaFicha();
    });
    return !exists;
}

void Form1Cli::ExcluiFicha()
{
    try {
        inOnePiece({Conexao1, Conexao4}, [this] {
            findTwin();
            Tabela1->Delete();
            if (!Tabela4->eof()) // else the order goes alone
                Tabela4->Delete();
        });
        leaveDeletedRow(Tabela1, Command1);
    } catch (const RuntimeError&) {
        // Ends silently. An order that stays is shown as it is stored now.
    }
    AtualizaContagem();
}

// A value that only the bench gave meanwhile must come into view, too: paper and cash tell it.
bool Form1Cli::deliveryWouldBeRefused()
{
    const QString shown = asMoney(Tabela1->Fields(JobValue));
    fillOrder();
    bool isRefused = Tabela1->wouldOverwrite();
    if (!isRefused && asMoney(Tabela1->storedValues()[JobValue]) != shown) {
        Tabela1->Fields(JobValue) = u"?"_s; // overwrites any value
        isRefused = Tabela1->wouldOverwrite();
    }
    Tabela1->CancelUpdate();
    return isRefused;
}

// Each printing enters the job's value in the cash, a reprint too; the paper that did not come out
// enters none, and the order is stored all the same.
void Form1Cli::storeDelivery(bool isPrinted)
{
    if (isPrinted) {
        AbreBanco5();
        openStatic(Tabela5, Conexao5, u"SELECT * FROM MOVIMENTO order by codigo"_s);
    }
    inOnePiece({Conexao1, Conexao4}, [&] {
        if (isPrinted)
            enterCash();
        GravaFicha();
    });
}

void Form1Cli::enterCash()
{
    Tabela5->AddNew();
    Tabela5->Fields(0) = Text1(13).text();
    Tabela5->Fields(1) = Text1(0).text();
    Tabela5->Fields(3) = Text3(0).text().isEmpty() ? u"0,00"_s : Text3(0).text();
    Tabela5->Fields(4) = Clock::today();
    Tabela5->Update();
}
