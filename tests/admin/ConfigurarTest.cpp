#include "FormTest.h"

#include "Form1Configurar.h"
#include "Form1principal.h"
#include "Funciones.h"
#include "frmAbout.h"

#include <QFile>
#include <QWidget>

namespace {

class Configurar : public FormTest
{
protected:
    Configurar()
    {
        addForm<Form1principal>();
        addForm<Form1Configurar>();
        addForm<frmAbout>();
        principal().show();
    }

    Form1Configurar& open()
    {
        form().show();
        return form();
    }
    Form1Configurar& form() const { return ::form<Form1Configurar>(); }
    QString ini(const QString& section, const QString& key) const
    {
        return Funciones::LeIni(section, key, iniFile());
    }
    void press(int index) { click(form().Command1(index)); }

    // Buttons on, their three doubling captions, apply's tip: "0 1 2|&Local backup|...".
    QString buttons() const
    {
        const auto& buttons = form().Command1;
        return enabledOf(buttons) + u'|' + buttons(3).caption() + u'|' + buttons(4).caption() +
               u'|' + buttons(5).caption() + u'|' + buttons(4).toolTipText();
    }
    // Lines in view with label and length, and the legend's first word.
    QString screen() const
    {
        QStringList lines;
        for (int line = 0; line < 8; ++line)
            if (form().Text1(line).visible())
                lines << form().Label1(line).caption() + u' ' +
                             QString::number(form().Text1(line).maxLength());
        const QString legend = form().Label1(8).caption();
        return lines.join(u',') + u'|' + legend.left(38) +
               (form().Label4.visible() ? u"|help"_s : QString()) +
               (form().Check1.visible() ? u"|server"_s : QString()) +
               (form().Frame1.enabled() ? u"|drives"_s : QString()) +
               (form().Frame2.enabled() ? u"|users"_s : QString()) +
               (form().Frame3.visible() ? u"|levels"_s : QString());
    }
    QStringList users() const
    {
        return sql(mainFile(), u"SELECT USUARIO || ' ' || SENHA || ' ' || NIVEL1 || NIVEL2 || "
                               u"NIVEL3 || NIVEL8 FROM VALIDAR ORDER BY rowid"_s);
    }
    void addUser(const QString& name, const QString& password, const QString& levels = u"1"_s)
    {
        mainSql(u"INSERT INTO VALIDAR VALUES ('%1','%2',%3,%3,%3,%3,%3,%3,%3,%3,NULL)"_s.arg(
            name, password, levels));
    }
    void choose(const QString& name)
    {
        for (int entry = 0; entry < form().Combo1.listCount(); ++entry)
            if (form().Combo1.list(entry) == name)
                form().Combo1.setListIndex(entry);
    }
    void typePasswords(const QString& first, const QString& second, const QString& third)
    {
        type(form().Text2, first);
        type(form().Text3, second);
        type(form().Text4, third);
    }
};

const QString LocalLevelsClose = u"|&Local backup|&Nivel de Acesso|&Fechar|"_s;
const QString LevelsTip = u"Define o nivel de acesso de cada formulario."_s;

TEST_F(Configurar, EachTaskHasItsScreen)
{
    principal().StatusBar1.setPanel(1, u"Usuario: Ana"_s);
    open();
    EXPECT_EQ(form().caption(), u"Configuração do Sistema      Usuario: Ana  está usando"_s);
    EXPECT_EQ(principal().StatusBar1.panel(2), u"Formulário de configuração"_s);
    EXPECT_EQ(screen(), u"||help"_s);
    EXPECT_EQ(buttons(), u"0 1 2 3 4 5 6 7"_s + LocalLevelsClose + LevelsTip);

    const QString applying = u"4 5|&Local backup|&Aplicar|&Cancelar|Salva as alterações"_s;
    const QString sheet = u"1 116,2 116,3 116,4 116,5 116,6 116,7 116,8 116|"_s;
    const struct
    {
        int button;
        QString screen, buttons;
    } rows[] = {
        {0,
         u"Nome 48,Endereço 48,E-mail 48,Telefone 48,Site 48|Configura  nome,endereço,e-mail,telefo"_s,
         applying},
        {1, sheet + u"Configura mensagem da ficha de entrada"_s, applying},
        {1, sheet + u"Configura mensagem da ficha de saída d"_s, applying},
        {2, u"Letra 1|Se for o unico computador deixe marcad|server"_s,
         u"5|&Local backup|&Aplicar|&Cancelar|Salva as alterações"_s}, // Marque2 is 1
        {3, u"Local 112|Use está opção,para configurar o local|drives"_s, applying},
    };
    for (const auto& row : rows) {
        press(row.button);
        EXPECT_EQ(screen(), row.screen);
        EXPECT_EQ(buttons(), row.buttons);
        press(5);
        EXPECT_EQ(buttons(), u"0 1 2 3 4 5 6 7"_s + LocalLevelsClose + LevelsTip);
        EXPECT_FALSE(form().Frame1.enabled());
    }
    press(5);
    EXPECT_FALSE(form().isLoaded());
    EXPECT_EQ(principal().StatusBar1.panel(2), u"email:suporte@vorbelo.example"_s);
}

TEST_F(Configurar, EachTaskBeginsWhereItIsTyped)
{
    addUser(u"Ana"_s, u"1"_s);
    open();
    const std::vector<std::pair<int, QString>> rows{
        {0, u"Text1_0"_s}, {1, u"Text1_0"_s}, {2, u"Check1"_s}, // Marque2 is 1
        {3, u"Text1_0"_s}, {4, u"Combo1"_s},  {6, u"Text2"_s},  {7, u"Combo1"_s},
    };
    const auto focused = [this] { return form().window()->focusWidget()->objectName(); };
    for (const auto& [button, box] : rows) {
        press(button);
        EXPECT_EQ(focused(), box) << button;
        press(5);
    }
    press(6);
    typePasswords(u"Bia"_s, u"2"_s, u"3"_s);
    expectBox(u"Senha não confere,digite novamente."_s);
    press(4);
    EXPECT_EQ(focused(), u"Text3"_s);
}

TEST_F(Configurar, CompanyAndSheetTextsAreStoredAsTheyAreTyped)
{
    setIni(u"Configurar"_s, u"Titulo"_s, u"Antes"_s);
    setIni(u"Configurar"_s, u"CPFCGC"_s, u"12345678901"_s);
    Funciones::readCompany();
    open();
    press(0);
    EXPECT_EQ(form().Text1(0).text(), u"Antes"_s);
    type(form().Text1(0), QString(60, u'x'));
    EXPECT_EQ(form().Text1(0).text().size(), 48);
    type(form().Text1(0), u"Loja ; [do] Zé = \"Ç\""_s);
    type(form().Text1(1), u"'Rua 1'"_s);
    press(4);
    EXPECT_EQ(ini(u"Configurar"_s, u"Titulo"_s), u"Loja ; [do] Zé = \"Ç\""_s);
    EXPECT_EQ(ini(u"Configurar"_s, u"Endereco"_s), u"Rua 1"_s); // one pair of quotes goes
    EXPECT_EQ(principal().caption(), u"Loja ; [do] Zé = \"Ç\"          12345678901"_s);
    EXPECT_EQ(buttons(), u"0 1 2 3 4 5 6 7"_s + LocalLevelsClose + LevelsTip);

    // The first press opens the entry sheet's text, the next the exit sheet's, whatever became of
    // the first.
    press(1);
    type(form().Text1(0), u"fica só aqui"_s);
    press(5);
    EXPECT_EQ(form().Command1(1).caption(), u"&Texto ficha de saída"_s);
    press(1);
    type(form().Text1(7), u"volte sempre"_s);
    press(4);
    press(1);
    EXPECT_EQ(form().Text1(0).text(), QString());
    type(form().Text1(0), QString(116, u'e'));
    press(4);
    EXPECT_EQ(ini(u"Configurar"_s, u"1"_s), QString(116, u'e'));
    EXPECT_EQ(ini(u"Configurar"_s, u"18"_s), u"volte sempre"_s);

    // A settings file that cannot be written goes unnoticed, and stays as it is.
    QFile::setPermissions(iniFile(), QFile::ReadOwner);
    press(3);
    type(form().Text1(0), u"/lugar"_s);
    press(4);
    EXPECT_TRUE(ends().empty());
}

TEST_F(Configurar, TheServerBoxActsAtOnceAndTheLetterAtApply)
{
    setIni(u"Local"_s, u"Caminho2"_s, u"/daqui/GALTERIA1.mdb"_s);
    open();
    press(2);
    EXPECT_EQ(form().Text1(0).text(), u"c"_s);
    EXPECT_EQ(ini(u"Local"_s, u"Caminho"_s), u"/daqui/GALTERIA1.mdb"_s);
    EXPECT_FALSE(form().Text1(0).enabled());

    form().Check1.setValue(0);
    EXPECT_EQ(ini(u"Opcao"_s, u"Marque2"_s), u"0"_s);
    EXPECT_EQ(ini(u"Local"_s, u"Caminho"_s), u"/daqui/GALTERIA1.mdb"_s);
    EXPECT_TRUE(form().Command1(4).enabled());
    EXPECT_FALSE(principal().Command1(5).enabled());
    EXPECT_FALSE(principal().mnubackup.enabled());
    type(form().Text1(0), u"fg"_s);
    press(4);
    EXPECT_EQ(ini(u"Local"_s, u"Caminho"_s),
              u"f:\\Arquivos de programas\\Vorbelo\\GALTERIA1.mdb"_s);
    EXPECT_FALSE(form().Check1.visible());

    // Anything but 1 reads as unticked; no change of the value, no event.
    setIni(u"Opcao"_s, u"Marque2"_s, u"sim"_s);
    press(2);
    EXPECT_EQ(form().Check1.value(), 0);
    form().Check1.setValue(1);
    press(5);
    EXPECT_EQ(ini(u"Local"_s, u"Caminho"_s), u"/daqui/GALTERIA1.mdb"_s);
    EXPECT_TRUE(principal().mnubackup.enabled());

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

TEST_F(Configurar, ANewUserIsAddedAsItStands)
{
    open();
    press(6);
    EXPECT_EQ(screen(), u"||users|levels"_s);
    EXPECT_EQ(buttons(), u"5|&Local backup|&Aplicar|&Cancelar|Salva as alterações"_s);
    EXPECT_EQ(form().Label2(1).caption(), u"Usuario"_s);
    EXPECT_EQ(form().Text2.passwordChar(), QString());
    EXPECT_EQ(form().Text3.passwordChar(), u"*"_s);
    typePasswords(u"Zé d'Ávila"_s, u"a"_s, u"b"_s);
    expectBox(u"Senha não confere,digite novamente."_s);
    press(4);
    EXPECT_EQ(form().Text3.text() + form().Text4.text(), QString());
    EXPECT_EQ(buttons(), u"5|&Local backup|&Aplicar|&Cancelar|Salva as alterações"_s);
    EXPECT_TRUE(form().Frame2.enabled());

    typePasswords(u"Zé d'Ávila"_s, u"a"_s, u"a"_s);
    form().Check2(0).setValue(1);
    press(4);
    EXPECT_EQ(users(), QStringList({u"Administrador 1234 1111"_s, u"Zé d'Ávila a 1000"_s}));
    EXPECT_EQ(screen(), u"||levels"_s); // the legend stays
    EXPECT_EQ(buttons(), u"0 1 2 3 4 5 6 7"_s + LocalLevelsClose + LevelsTip);

    // A second one of the same name, and one given up.
    press(6);
    typePasswords(u"Zé d'Ávila"_s, u"b"_s, u"b"_s);
    press(4);
    press(6);
    typePasswords(u"Ninguém"_s, u"c"_s, u"c"_s);
    press(5);
    EXPECT_EQ(users().size(), 3);
    EXPECT_FALSE(form().Frame3.visible());
    press(6); // and left by the frame
    form().unload();
    EXPECT_EQ(users().size(), 3);
}

TEST_F(Configurar, APasswordIsChangedByWhoKnowsIt)
{
    addUser(u"Ana Maria"_s, u"2"_s);
    addUser(u"Maria"_s, u"3"_s);
    open();
    Funciones::Contador = 7;
    press(7);
    EXPECT_EQ(Funciones::Contador, 7) << "the cash list is printed by it";
    EXPECT_EQ(buttons(), u"3 5|&Exclui Usuario|&Aplicar|&Cancelar|"_s + LevelsTip);
    EXPECT_EQ(form().Text2.passwordChar(), u"*"_s);
    EXPECT_EQ(form().Combo1.text(), QString());
    typePasswords(u"1234"_s, u"n"_s, u"n"_s);
    EXPECT_FALSE(form().Command1(4).enabled()) << "nobody was chosen";
    choose(u"Administrador"_s);
    EXPECT_TRUE(form().Command1(4).enabled());
    EXPECT_EQ(form().Text6.text() + form().Text7.text(), u"Administrador1234"_s);

    for (const auto& [current, again] :
         {std::pair(u"4321"_s, u"n"_s), std::pair(u"1234"_s, u"m"_s)}) {
        typePasswords(current, u"n"_s, again);
        expectBox(u"Senha não confere,digite novamente."_s);
        press(4);
        EXPECT_EQ(form().Text2.text() + form().Text3.text() + form().Text4.text(), QString());
    }
    choose(u"Administrador"_s);
    typePasswords(u"1234"_s, u"n"_s, u"n"_s);
    form().Check2(7).setValue(0); // levels are saved by this task, too
    press(4);
    EXPECT_EQ(users(),
              QStringList({u"Administrador n 1110"_s, u"Ana Maria 2 1111"_s, u"Maria 3 1111"_s}));
    // A name that is contained in another one before it shows that other user.
    press(7);
    form().Combo1.setText(u"Maria"_s);
    press(3);
    EXPECT_EQ(users().size(), 3) << "a name that was typed is nobody chosen";
    choose(u"Maria"_s);
    EXPECT_EQ(form().Text6.text(), u"Ana Maria"_s);
    press(3);
    EXPECT_EQ(users(), QStringList({u"Administrador n 1110"_s, u"Maria 3 1111"_s}));
    EXPECT_EQ(buttons(), u"0 1 2 3 4 5 6 7"_s + LocalLevelsClose + u"Salva as alterações"_s);
}

TEST_F(Configurar, LevelsAreSetForTheUserOnShow)
{
    addUser(u"Bia"_s, u"2"_s, u"NULL"_s);
    open();
    press(4);
    EXPECT_EQ(screen(), u"||users|levels"_s);
    EXPECT_EQ(form().Label2(4).caption(), u"Nivel de acesso"_s);
    EXPECT_EQ(buttons(), u"4 5|&Local backup|&Aplicar|&Cancelar|Salva as alterações"_s);
    choose(u"Bia"_s);
    EXPECT_EQ(form().Check2(3).value(), 1) << "a Null shows as ticked";
    for (int level = 1; level < 8; ++level)
        form().Check2(level).setValue(0);
    press(4);
    EXPECT_EQ(users(), QStringList({u"Administrador 1234 1111"_s, u"Bia 2 1000"_s}));
    EXPECT_FALSE(form().Frame3.visible());
    press(4); // with nobody chosen
    form().Check2(0).setValue(0);
    press(4);
    EXPECT_EQ(users().front(), u"Administrador 1234 1111"_s);
    press(4); // and given up: the pair is closed
    press(5);
    EXPECT_TRUE(Funciones::Tabela4.isNothing());
}

TEST_F(Configurar, WithoutUsersOnlyTheFirstCanBeAdded)
{
    mainSql(u"DELETE FROM VALIDAR"_s);
    open();
    for (const int task : {7, 4}) {
        press(task);
        EXPECT_FALSE(form().Frame2.enabled());
        EXPECT_EQ(enabledOf(form().Command1), u"5"_s);
        press(5);
    }
    press(6);
    typePasswords(u"Ana"_s, u"1"_s, u"1"_s);
    press(4);
    EXPECT_EQ(users(), QStringList{u"Ana 1 0000"_s});
    // The last one can go again, and a search that finds nobody chooses nobody.
    press(7);
    choose(u"Ana"_s);
    mainSql(u"UPDATE VALIDAR SET SENHA='9'"_s); // another station: the told fault
    expectErrorBox();
    press(3);
    EXPECT_EQ(ends().size(), 1u);
    EXPECT_EQ(users(), QStringList{u"Ana 9 0000"_s});
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
