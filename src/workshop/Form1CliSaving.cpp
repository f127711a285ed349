#include "Dates.h"
#include "EventTransactions.h"
#include "Form1Cli.h"
#include "Form1CliRows.h"
#include "Format.h"
#include "Funciones.h"
#include "MsgBox.h"
#include "Numbers.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "Strings.h"

// An order and its twin are stored and deleted together, or stay as they were.

using namespace Funciones;
using namespace clientrows;
using namespace Qt::Literals::StringLiterals;

namespace {

void storeRow(const ObjectVariable<Recordset>& table, const std::vector<Value>& values)
{
    for (size_t position = 0; position < values.size(); ++position)
        table->Fields(static_cast<int>(position)) = values[position];
    table->Update();
}

// Takes the row anew as it is stored now, so that a save refused because another station wrote the
// row can be tried again.
void makeCurrentAgain(const ObjectVariable<Recordset>& table)
{
    if (table->bof())
        return;
    table->MovePrevious();
    table->MoveNext();
}

QString storedWhenEmpty(int box)
{
    switch (box) {
    case 13:
        return u"0000000"_s;
    case 14:
        return dateText(Clock::today());
    default:
        return {};
    }
}

} // namespace

void Form1Cli::Salvar()
{
    const Access before = access();
    NumeroFicha = Val(Right(Text1(13).text(), 7));
    Text1(13).setText(Format(NumeroFicha, formats::Code));
    if (Modo == 1 && numberExists()) {
        const Answer answer =
            MsgBox(u"Número de Cadastro já existe,quer editar o cadastro sim ou não?"_s,
                   BoxButtons::YesNo, BoxIcon::Question);
        if (answer == Answer::Yes) {
            editExisting();
        } else {
            Text1(13).setText({});
            Text1(13).setLocked(false);
            Text1(13).SetFocus();
        }
        return;
    }
    backToBrowsing();
    if (!GravaFicha())
        setAccess(before);
}

// The rewriting of the box tests only a number that it changed; here the test always runs, since it
// is what brings a clash between two computers to light.
bool Form1Cli::numberExists()
{
    try {
        lookNumberUp(13);
    } catch (const RuntimeError& error) {
        // Where the look-up itself failed nobody knows, and nothing is stored.
        if (error.number() != RuntimeError::NoCurrentRecord)
            throw;
    }
    return Text5.text() == Text1(13).text();
}

void Form1Cli::editExisting()
{
    // A row written elsewhere is in neither table as they were opened. Where it cannot be found in
    // new ones, the new order is still pending.
    const ObjectVariable<Recordset> clients = openedAnew(ClientsByNumber, Conexao1);
    if (!clients->eof())
        clients->Find(likeCriterion(u"numero"_s, Text1(13).text()));
    if (clients->eof()) { // deleted meanwhile: the number is free, and the next save takes it
        Text5.setText({});
        return;
    }
    const ObjectVariable<Recordset> twins = openedAnew(TwinsByNumber, Conexao4);
    Tabela1->CancelUpdate();
    Tabela4->CancelUpdate();
    Text5.setText({});
    Text2.setText({});
    Modo = 0;
    Text1(13).setLocked(true);
    Tabela1 = clients;
    Tabela4 = twins;
    Text2.setText(Text1(13).text());
}

void Form1Cli::backToBrowsing()
{
    AtivaBotoes();
    TravaCampos();
    setEnabled(Command1, {1, 3, 9}, false);
}

bool Form1Cli::GravaFicha()
{
    if ((Modo == 0 && isOvertaken_) || (rowsAreLost_ && !findRowsAgain()))
        return false;
    std::vector<Value> before;
    bool clientStored = false;
    bool bothStored = false;
    try {
        if (Modo == 0) {
            before = Tabela1->storedValues();
            if (twinIsLost_)
                findTwin();
        }
        fillRows();
        Tabela1->Update();
        clientStored = true;
        Tabela4->Update();
        bothStored = commitWrites();
        if (!bothStored) {
            takeSaveBack(clientStored, before);
            return false;
        }
        if (Modo == 1) {
            Modo = 0;
            Tabela1->MoveLast();
            Tabela4->MoveLast();
        }
        AtualizaContagem();
        return true;
    } catch (const RuntimeError&) {
        // Ends silently; the form tells it by staying as it was.
        if (!bothStored)
            takeSaveBack(clientStored, before);
        return bothStored;
    }
}

void Form1Cli::storeText(int box)
{
    const QString text = Text1(box).text();
    const QString stored = text.isEmpty() ? storedWhenEmpty(box) : text;
    Tabela1->Fields(FieldOfBox[static_cast<size_t>(box)]) = stored;
    if (box == 13)
        Tabela4->Fields(0) = stored;
    if (box == 0)
        Tabela4->Fields(1) = stored;
}

void Form1Cli::fillRows()
{
    for (const int box : {13, 14, 15, 0, 1, 2, 3, 4, 5, 6})
        storeText(box);
    Tabela1->Fields(FirstPhone) = Text3(1).text().isEmpty() ? QString() : MaskEdBox2.text();
    Tabela1->Fields(SecondPhone) = Text3(2).text().isEmpty() ? QString() : MaskEdBox3.text();
    Tabela1->Fields(Document) = Text3(3).text();
    for (const int box : {7, 8, 9, 10, 11, 12})
        storeText(box);
    Tabela1->Fields(Price) = Text3(0).text().isEmpty() ? u"0,00"_s : Text3(0).text();
    Tabela1->Fields(Shelf) = Text7.text();
    for (int flag = 0; flag < 4; ++flag)
        Tabela1->Fields(FirstFlag + flag) = Check1(flag).value() != 0;
}

// After a save that failed: neither row is stored, and a new row is pending again. Where not even
// that can be had, the rows are found again before anything is written.
void Form1Cli::takeSaveBack(bool clientStored, const std::vector<Value>& before)
try {
    rowsAreLost_ = true;
    Tabela1->CancelUpdate();
    Tabela4->CancelUpdate();
    if (Modo == 1) {
        // A disk that failed has taken the row back already.
        if (clientStored && !Tabela1->eof())
            Tabela1->Delete();
        if (Tabela1->RecordCount() != 0)
            Tabela1->MoveLast();
        beginNewRows();
        return;
    }
    if (clientStored)
        storeRow(Tabela1, before);
    makeCurrentAgain(Tabela1);
    makeCurrentAgain(Tabela4);
    rowsAreLost_ = false;
    isOvertaken_ = isOvertaken(Tabela1, filled_, [this] { fillRows(); });
    Tabela4->CancelUpdate();
} catch (const RuntimeError&) {
    // They stay lost.
}

// What the other station wrote comes into view.
void Form1Cli::showOvertaken()
{
    Tabela1 = openedAnew(ClientsByNumber, Conexao1);
    isOvertaken_ = false;
    if (Tabela1->RecordCount() != 0)
        standOn(Text1(13).text());
    AtualizaContagem();
}

bool Form1Cli::findRowsAgain()
try {
    Tabela1->CancelUpdate();
    Tabela4->CancelUpdate();
    if (Modo == 1) {
        beginNewRows();
        return true;
    }
    for (const ObjectVariable<Recordset>* table : {&Tabela1, &Tabela4}) {
        (*table)->MoveFirst();
        (*table)->Find(likeCriterion(u"numero"_s, Text1(13).text()));
    }
    rowsAreLost_ = false;
    return true;
} catch (const RuntimeError&) {
    return false;
}

Form1Cli::Access Form1Cli::access() const
{
    Access now;
    for (int index = 0; index <= 13; ++index)
        now.buttons.push_back(Command1(index).enabled());
    for (int index = 0; index <= 15; ++index)
        now.locked1.push_back(Text1(index).locked());
    for (int index = 0; index <= 3; ++index)
        now.locked3.push_back(Text3(index).locked());
    return now;
}

void Form1Cli::setAccess(const Access& access)
{
    for (size_t index = 0; index < access.locked1.size(); ++index)
        Text1(static_cast<int>(index)).setLocked(access.locked1[index]);
    for (size_t index = 0; index < access.locked3.size(); ++index)
        Text3(static_cast<int>(index)).setLocked(access.locked3[index]);
    for (size_t index = 0; index < access.buttons.size(); ++index)
        Command1(static_cast<int>(index)).setEnabled(access.buttons[index]);
    Command1(1).SetFocus();
}

void Form1Cli::ExcluiFicha()
try {
    if (isOvertaken_) { // to be looked at before it goes
        showOvertaken();
        return;
    }
    if (rowsAreLost_ && !findRowsAgain())
        return;
    if (const std::optional<QString> number = deleteRows())
        standOn(*number);
    if (Tabela1->bof()) {
        Tabela1->MoveNext();
        Command1(11).setEnabled(true);
        Command1(10).setEnabled(false);
    } else if (Tabela1->eof()) {
        setEnabled(Command1, {10, 11}, false);
    }
    MostraFicha();
    AtualizaContagem();
} catch (const RuntimeError&) {
    // Ends silently.
}

// The number of an order that had gone and is back.
std::optional<QString> Form1Cli::deleteRows()
{
    std::vector<Value> client;
    bool clientDeleted = false;
    try {
        client = Tabela1->storedValues();
        if (twinIsLost_)
            findTwin();
        Tabela1->Delete();
        clientDeleted = true;
        Tabela1->MovePrevious();
        // The twin is the row that the last look-up found.
        Tabela4->Delete();
        if (!commitWrites())
            return client[0].textOrEmpty();
        clientDeleted = false;
        Tabela4->MovePrevious();
    } catch (const RuntimeError& error) {
        // An O.S without a twin goes alone; a twin that does not go keeps its O.S.
        const bool goesAlone = error.number() == RuntimeError::NoCurrentRecord;
        if (clientDeleted && !goesAlone)
            putBack(client);
        if (clientDeleted && !(goesAlone && commitWrites()))
            return client[0].textOrEmpty();
    }
    return std::nullopt;
}

void Form1Cli::putBack(const std::vector<Value>& client)
try {
    Tabela1->AddNew();
    storeRow(Tabela1, client);
    // Opened anew it stands in its place among the numbers: the last row gives the next number.
    Tabela1 = openedAnew(ClientsByNumber, Conexao1);
} catch (const RuntimeError&) {
    // A disk that failed has put the row back by itself.
}

void Form1Cli::standOn(const QString& number)
{
    rowsAreLost_ = true;
    Tabela1->CancelUpdate();
    Tabela1->MoveFirst();
    Tabela1->Find(likeCriterion(u"numero"_s, number));
    if (Tabela1->eof())
        Tabela1->MoveLast();
    rowsAreLost_ = false;
}
