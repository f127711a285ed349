#include "EventGate.h"
#include "FormTest.h"

#include "Form1principal.h"
#include "Funciones.h"
#include "RecordForms.h"
#include "RuntimeError.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

using namespace Funciones;

namespace {

// The parts of a record form that the shared routines work on.
class DeskForm : public Form
{
public:
    static constexpr char Name[] = "DeskForm";
    DeskForm() : Form(u"DeskForm"_s, makeDesk) {}

    ControlArray<CommandButton> Command1{this, u"Command1"_s};
    TextBox document{this, u"document"_s};
    TextBox other{this, u"other"_s};
    FlexGrid grid{this, u"grid"_s};

private:
    static std::unique_ptr<QWidget> makeDesk()
    {
        auto window = std::make_unique<QWidget>();
        QWidget* parent = window.get();
        for (const int index : {10, 11, 12, 13})
            (new QPushButton(parent))->setObjectName(u"Command1_%1"_s.arg(index));
        (new QLineEdit(parent))->setObjectName(u"document"_s);
        (new QLineEdit(parent))->setObjectName(u"other"_s);
        auto* grid = new QTableView(parent);
        grid->setObjectName(u"grid"_s);
        grid->setProperty("cols", 3);
        return window;
    }
};

class Desk : public FormTest
{
protected:
    Desk()
    {
        addForm<Form1principal>();
        addForm<DeskForm>();
        desk().show();
    }

    static DeskForm& desk() { return form<DeskForm>(); }

    static void openParts()
    {
        AbreBanco();
        Tabela1->Open(u"SELECT * FROM Pecas order by CODIGO"_s, Conexao1.shared(),
                      CursorType::Static, LockType::Optimistic);
    }
};

TEST_F(Desk, NavigationStopsAtBothEnds)
{
    mainSql(u"INSERT INTO Pecas (CODIGO, DESCRICAO) VALUES ('1', 'x'), ('2', 'x'), ('3', 'x')"_s);
    openParts();
    const struct
    {
        int button;
        QString code, enabled;
    } steps[] = {
        {13, u"3"_s, u"10 12 13"_s},    {11, u"3"_s, u"10 12 13"_s}, {10, u"2"_s, u"10 11 12 13"_s},
        {10, u"1"_s, u"10 11 12 13"_s}, {10, u"1"_s, u"11 12 13"_s}, {11, u"2"_s, u"10 11 12 13"_s},
        {12, u"1"_s, u"11 12 13"_s},
    };
    for (const auto& step : steps) {
        navigate(step.button, Tabela1, desk().Command1);
        EXPECT_EQ(Tabela1->Fields(0).text(), step.code) << step.button;
        EXPECT_EQ(enabledOf(desk().Command1), step.enabled) << step.button;
    }
}

TEST_F(Desk, StepThatFailsAtAnEndCanBeTakenAgain)
{
    mainSql(u"INSERT INTO Pecas (CODIGO, DESCRICAO) VALUES ('1', 'x'), ('2', 'x')"_s);
    openParts();
    const auto go = [](int button) { navigate(button, Tabela1, desk().Command1); };
    for (const auto& [end, beyond, code] :
         {std::tuple{13, 11, u"2"_s}, std::tuple{12, 10, u"1"_s}}) {
        failEachCall([&] { go(end); },
                     [&] { gate::run(desk(), OnError::Box, [&] { go(beyond); }); },
                     [&](bool) {
                         go(beyond);
                         EXPECT_EQ(Tabela1->Fields(0).text(), code);
                     },
                     2);
    }
}

TEST_F(Desk, DocumentIsCheckedByItsLength)
{
    const QString wanted = u"Tem que ser 11 numeros para CPF e 14 numeros para CGC"_s;
    const struct
    {
        QString document, message;
        int maxLength;
    } rows[] = {
        {u"1234567890"_s, wanted, 20},
        {u"11144477735"_s, QString(), 14},
        {u"11144477734"_s, u"CPF com DV incorreto !!!"_s, 14},
        {u"111444777350"_s, wanted + u'"', 20},
        {u"1114447773500"_s, wanted, 20},
        {u"11222333000181"_s, QString(), 18},
        {u"11222333000180"_s, u"CGC com DV incorreto !!! "_s, 18},
        {u"111.444.777-35"_s, u"CGC com DV incorreto !!! "_s, 18},
        {u"11-222-333-0001/81"_s, QString(), 20},
        {QString(), QString(), 20},
    };
    for (const auto& row : rows) {
        desk().document.setMaxLength(20);
        desk().document.setText(row.document);
        enter(desk().other);
        if (!row.message.isEmpty())
            expectBox(row.message);
        checkDocument(desk().document);
        const bool refused = !row.message.isEmpty();
        EXPECT_EQ(desk().document.text(), refused ? QString() : row.document);
        EXPECT_EQ(desk().document.maxLength(), row.maxLength) << row.document.toStdString();
        EXPECT_EQ(desk().document.widget()->hasFocus(), refused) << row.document.toStdString();
    }
    desk().document.setText(u"123"_s);
    desk().document.setLocked(true);
    checkDocument(desk().document);
    EXPECT_EQ(desk().document.text(), u"123"_s);
}

TEST_F(Desk, GridTakesTheRowsFromTheCurrentOneOn)
{
    mainSql(u"INSERT INTO Pecas (CODIGO, DESCRICAO, VALOR) VALUES ('1', 'um', 15000), "
            "('2', 'dois', NULL), ('3', 'três', 12345000)"_s);
    openParts();
    Tabela1->MoveNext();
    desk().grid.setRows(2);
    fillGrid(desk().grid, *Tabela1.shared(), {{0}, {3}, {4, GridColumn::Money, u"0,00"_s}});
    desk().grid.setRows(desk().grid.Rows() - 1);
    EXPECT_EQ(gridRows(desk().grid).join(u';'), u"2|dois|0,00;3|três|1.234,50"_s);
    EXPECT_TRUE(onDataRow(desk().grid));
    desk().grid.setRows(1);
    EXPECT_FALSE(onDataRow(desk().grid));
}

TEST(Codes, CountOnFromTheLastSevenCharacters)
{
    EXPECT_EQ(nextCode(QString()), u"0000001"_s);
    EXPECT_EQ(nextCode(u"0000041"_s), u"0000042"_s);
    EXPECT_EQ(nextCode(u"90000041"_s), u"0000042"_s);
    EXPECT_EQ(nextCode(u"*******"_s), u"0000001"_s);
    EXPECT_EQ(nextCode(u"9999999"_s), u"10000000"_s);
}

} // namespace
