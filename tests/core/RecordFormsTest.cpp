#include "EventGate.h"
#include "FormTest.h"

#include "Form1principal.h"
#include "Funciones.h"
#include "RecordForms.h"

#include <QPushButton>

using namespace Funciones;

namespace {

class DeskForm : public Form
{
public:
    static constexpr char Name[] = "DeskForm";
    DeskForm() : Form(u"DeskForm"_s, makeButtons) {}

    ControlArray<CommandButton> Command1{this, u"Command1"_s};

private:
    static std::unique_ptr<QWidget> makeButtons()
    {
        auto window = std::make_unique<QWidget>();
        for (const int index : {10, 11, 12, 13})
            (new QPushButton(window.get()))->setObjectName(u"Command1_%1"_s.arg(index));
        return window;
    }
};

TEST_F(FormTest, StepThatFailsAtAnEndCanBeTakenAgain)
{
    addForm<Form1principal>();
    addForm<DeskForm>();
    DeskForm& desk = form<DeskForm>();
    desk.show();
    mainSql(u"INSERT INTO Pecas (CODIGO, DESCRICAO) VALUES ('1', 'x'), ('2', 'x')"_s);
    AbreBanco();
    Tabela1->Open(u"SELECT * FROM Pecas order by CODIGO"_s, Conexao1.shared(), CursorType::Static,
                  LockType::ReadOnly);
    const auto go = [&desk](int button) { navigate(button, Tabela1, desk.Command1); };
    for (const auto& [end, beyond, code] :
         {std::tuple{13, 11, u"2"_s}, std::tuple{12, 10, u"1"_s}}) {
        failEachCall([&] { go(end); }, [&] { gate::run(desk, OnError::Box, [&] { go(beyond); }); },
                     [&](bool) {
                         go(beyond);
                         EXPECT_EQ(Tabela1->Fields(0).text(), code);
                     },
                     2);
    }
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
