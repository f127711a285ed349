#include "ConfigurarTest.h"

#include <QFile>
#include <QWidget>

namespace {

const QString LocalLevelsClose = u"|&Local backup|&Nivel de Acesso|&Fechar|"_s;

TEST_F(Configurar, EachTaskHasItsScreen)
{
    open();
    EXPECT_EQ(screen(), u"||help"_s);
    EXPECT_EQ(buttons(), u"0 1 2 3 4 5 6 7"_s + LocalLevelsClose + LevelsTip);

    const QString applying = u"4 5|&Local backup|&Aplicar|&Cancelar|Salva as alterações"_s;
    const QString sheet = u"1 116,2 116,3 116,4 116,5 116,6 116,7 116,8 116|"_s;
    const struct
    {
        int button;
        QString screen, buttons, focus = u"Text1_0"_s;
    } rows[] = {
        {0,
         u"Nome 48,Endereço 48,E-mail 48,Telefone 48,Site 48|Configura  nome,endereço,e-mail,telefo"_s,
         applying},
        {1, sheet + u"Configura mensagem da ficha de entrada"_s, applying},
        {1, sheet + u"Configura mensagem da ficha de saída d"_s, applying},
        {2, u"Letra 1|Se for o unico computador deixe marcad|server"_s,
         u"5|&Local backup|&Aplicar|&Cancelar|Salva as alterações"_s, u"Check1"_s}, // Marque2 is 1
        {3, u"Local 112|Use está opção,para configurar o local|drives"_s, applying},
    };
    for (const auto& row : rows) {
        press(row.button);
        EXPECT_EQ(screen(), row.screen);
        EXPECT_EQ(buttons(), row.buttons);
        EXPECT_EQ(focused(), row.focus);
        press(5);
        EXPECT_EQ(buttons(), u"0 1 2 3 4 5 6 7"_s + LocalLevelsClose + LevelsTip);
        EXPECT_FALSE(form().Frame1.enabled());
    }
    form().focusLeft(); // for another form of the program
    EXPECT_FALSE(form().isLoaded());
}

TEST_F(Configurar, CompanyIsStoredAsItIsTyped)
{
    setIni(u"Configurar"_s, u"Titulo"_s, u"Antes"_s);
    setIni(u"Configurar"_s, u"CPFCGC"_s, u"12345678901"_s);
    Funciones::readCompany();
    open();
    press(0);
    EXPECT_EQ(form().Text1(0).text(), u"Antes"_s);
    type(form().Text1(0), u"Loja ; [do] Zé = \"Ç\""_s);
    type(form().Text1(1), u"'Rua 1'"_s);
    press(4);
    EXPECT_EQ(ini(u"Configurar"_s, u"Titulo"_s), u"Loja ; [do] Zé = \"Ç\""_s);
    EXPECT_EQ(ini(u"Configurar"_s, u"Endereco"_s), u"Rua 1"_s); // one pair of quotes goes
    EXPECT_EQ(principal().caption(), u"Loja ; [do] Zé = \"Ç\"          12345678901"_s);

    // A settings file that cannot be written goes unnoticed, and stays as it is.
    QFile::setPermissions(iniFile(), QFile::ReadOwner);
    press(3);
    type(form().Text1(0), u"/lugar"_s);
    press(4);
    EXPECT_TRUE(ends().empty());
}

TEST_F(Configurar, TheServerBoxActsAtOnce)
{
    setIni(u"Local"_s, u"Caminho2"_s, u"/daqui/GALTERIA1.mdb"_s);
    open();
    // Anything but 1 reads as unticked; no change of the value, no event.
    setIni(u"Opcao"_s, u"Marque2"_s, u"sim"_s);
    press(2);
    EXPECT_EQ(form().Check1.value(), 0);
    for (const int value : {1, 0}) {
        form().Check1.setValue(value);
        EXPECT_EQ(principal().mnubackup.enabled(), value == 1);
        EXPECT_EQ(form().Text1(0).enabled(), value == 0);
        EXPECT_EQ(ini(u"Local"_s, u"Caminho"_s), u"/daqui/GALTERIA1.mdb"_s);
    }
    press(5);

    // The menu entry writes the way back too, and leaves the box's state alone.
    setIni(u"Local"_s, u"Caminho"_s, u"g:\\x"_s);
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        expectBox(u"Quer transformar este computador em um servidor de rede?"_s, answer,
                  BoxButtons::YesNo, BoxIcon::None, u"Restaura o caminho do Banco de Dados"_s);
        click(principal().mnuservidor);
        EXPECT_EQ(ini(u"Local"_s, u"Caminho"_s),
                  answer == Answer::Yes ? u"/daqui/GALTERIA1.mdb"_s : u"g:\\x"_s);
    }
}

// What the user tasks store is walked at random beside a model.
TEST_F(Configurar, EachUserTaskHasItsScreen)
{
    open();
    Funciones::Contador = 7;
    const QString apply = u"|&Local backup|&Aplicar|&Cancelar|Salva as alterações"_s;
    const struct
    {
        int button;
        QString buttons, label, hidden, focus;
    } rows[] = {
        {6, u"5"_s + apply, u"Usuario"_s, {}, u"Text2"_s},
        {7, u"3 5|&Exclui Usuario|&Aplicar|&Cancelar|"_s + LevelsTip, u"Senha"_s, u"*"_s,
         u"Combo1"_s},
        {4, u"4 5"_s + apply, u"Senha"_s, u"*"_s, u"Combo1"_s},
    };
    for (const auto& row : rows) {
        press(row.button);
        EXPECT_EQ(screen(), u"||users|levels"_s);
        EXPECT_EQ(focused(), row.focus);
        EXPECT_EQ(buttons(), row.buttons);
        EXPECT_EQ(form().Label2(1).caption(), row.label);
        EXPECT_EQ(form().Text2.passwordChar(), row.hidden);
        EXPECT_EQ(form().Text3.passwordChar(), u"*"_s);
        press(5);
        EXPECT_EQ(buttons(), u"0 1 2 3 4 5 6 7"_s + LocalLevelsClose + LevelsTip);
        EXPECT_TRUE(Funciones::Tabela4.isNothing());
    }
    EXPECT_EQ(Funciones::Contador, 7) << "the cash list is printed by it";
    press(6);
    typePasswords(u"Ninguém"_s, u"2"_s, u"3"_s);
    expectBox(u"Senha não confere,digite novamente."_s);
    press(4);
    EXPECT_EQ(focused(), u"Text3"_s);
    typePasswords(u"Ninguém"_s, u"c"_s, u"c"_s);
    form().unload(); // left by the frame
    EXPECT_EQ(sql(mainFile(), u"SELECT USUARIO FROM VALIDAR"_s), QStringList{u"Administrador"_s});

    // A clash with another station is the told fault.
    open();
    press(7);
    form().Combo1.setText(u"Administrador"_s); // typed, so nobody is chosen
    press(3);
    EXPECT_EQ(sql(mainFile(), u"SELECT count(*) FROM VALIDAR"_s), QStringList{u"1"_s});
    choose(u"Administrador"_s);
    mainSql(u"UPDATE VALIDAR SET SENHA='9'"_s);
    expectErrorBox();
    press(3);
    EXPECT_EQ(ends().size(), 1u);
    EXPECT_EQ(sql(mainFile(), u"SELECT SENHA FROM VALIDAR"_s), QStringList{u"9"_s});
    for (const auto& [task, field] : {std::pair(7, u"SENHA"_s), {4, u"NIVEL2"_s}}) {
        setEndProgramForTests([](EndReason) {});
        form().unload();
        open();
        press(task);
        choose(u"Administrador"_s);
        typePasswords(u"9"_s, u"1"_s, u"1"_s);
        form().Check2(1).setValue(0);
        mainSql(u"UPDATE VALIDAR SET %1=NULL"_s.arg(field));
        expectErrorBox();
        press(4);
        EXPECT_EQ(sql(mainFile(), u"SELECT %1 FROM VALIDAR"_s.arg(field)), QStringList{u"NULL"_s});
    }
}

TEST_F(Configurar, AboutTellsTheVersionInEnglish)
{
    frmAbout& about = ::form<frmAbout>();
    about.show();
    EXPECT_EQ(about.caption(), u"About Vorbelo"_s);
    EXPECT_EQ(about.lblVersion.caption(), u"Version 1.0.2"_s);
    expectBox(u"System Information Is Unavailable At This Time"_s);
    click(about.cmdSysInfo);
    click(about.cmdOK);
    EXPECT_FALSE(about.isLoaded());
}

} // namespace
