#include "FormTest.h"

#include "Form1log.h"
#include "Form1principal.h"
#include "Funciones.h"

#include <QWidget>

namespace {

class Login : public FormTest
{
protected:
    Login()
    {
        addForm<Form1principal>();
        addForm<Form1log>();
        mainSql(u"DELETE FROM VALIDAR"_s);
        setIni(u"Configurar"_s, u"Titulo"_s, u"Oficina"_s);
        setIni(u"Configurar"_s, u"CPFCGC"_s, u"12345678901"_s);
        principal().show();
    }

    void addUser(const QString& name, const QString& password, int level = 0)
    {
        mainSql(u"INSERT INTO VALIDAR (USUARIO, SENHA) VALUES ('%1', '%2')"_s.arg(name, password));
        if (level > 0)
            mainSql(u"UPDATE VALIDAR SET NIVEL%1 = 1 WHERE USUARIO = '%2'"_s.arg(level).arg(name));
    }

    // Opens the dialog, chooses the name in its list, types the password and presses "Entrar".
    void logIn(const QString& name, const QString& password)
    {
        inDialog([&] {
            for (int index = 0; index < log().Combo1.listCount(); ++index)
                if (log().Combo1.list(index) == name)
                    log().Combo1.setListIndex(index);
            type(log().Text1, password);
            click(log().Command1(0));
            if (log().isVisible())
                focusInDialog_ = log().window()->focusWidget()->objectName();
        });
    }

    void inDialog(const std::function<void()>& script)
    {
        bool shown = false;
        onModal([&](Form& form) {
            shown = form.name() == u"Form1log"_s;
            script();
        });
        click(principal().Command1(13));
        EXPECT_TRUE(shown);
    }

    void expectRefusal()
    {
        expectBox(u"Senha não confere,tente outra vez."_s, Answer::Ok, BoxButtons::Ok,
                  BoxIcon::Exclamation);
    }

    static Form1log& log() { return form<Form1log>(); }

    // Buttons, entries and frames that are on.
    static QString enabled()
    {
        QStringList names;
        for (Menu* entry :
             {&principal().mnucliente, &principal().mnufornecedor, &principal().mnupecacess,
              &principal().mnubuscacli, &principal().mnubuscafor, &principal().mnupec,
              &principal().mnupecas, &principal().mnumanutencao, &principal().mnuconfigura,
              &principal().mnurelatorio})
            if (entry->enabled())
                names << entry->name();
        for (const int index : {0, 1, 2})
            if (principal().Frame2(index).enabled())
                names << u"Frame2_%1"_s.arg(index);
        return enabledOf(principal().Command1) + u' ' + names.join(u' ');
    }

    QString focusInDialog_;
};

TEST_F(Login, EachLevelOpensItsOwnAndLogoutClosesIt)
{
    const QString on[] = {
        u"5 7 13 "_s,
        u"0 5 7 8 13 mnucliente mnubuscacli Frame2_0 Frame2_1 Frame2_2"_s,
        u"1 5 7 9 13 mnufornecedor mnubuscafor"_s,
        u"2 5 7 11 13 mnupecacess mnupec"_s,
        u"3 5 7 13 mnupecas"_s,
        u"4 5 7 13 mnumanutencao"_s,
        u"5 6 7 13 15 mnuconfigura mnurelatorio"_s,
        u"5 7 10 13 "_s,
        u"5 7 12 13 14 "_s,
    };
    for (int level = 0; level <= 8; ++level) {
        addUser(u"Nivel%1"_s.arg(level), u"s"_s, level);
        logIn(u"Nivel%1"_s.arg(level), u"s"_s);
        EXPECT_EQ(enabled(), on[level]);
        click(principal().Command1(13));
        EXPECT_EQ(enabled(), on[0]) << level;
    }
}

TEST_F(Login, CaptionAndPanelTellWhoIsThereUntilLogout)
{
    addUser(u"Ana"_s, u"segredo"_s, 8);
    EXPECT_FALSE(principal().Label1(13).enabled()) << "dimmed with the button beside it";
    logIn(u"Ana"_s, u"segredo"_s);
    EXPECT_EQ(principal().window()->focusWidget(), principal().Command1(12).widget());
    EXPECT_TRUE(principal().Label1(13).enabled());
    for (const bool isIn : {true, false}) {
        EXPECT_EQ(principal().caption(), u"Oficina    CPF 123-456-789/01"_s +
                                             (isIn ? u"   Usuario: Ana  está usando"_s : u""_s));
        EXPECT_EQ(principal().StatusBar1.panel(1),
                  isIn ? u"Usuario: Ana"_s : u"Autor:Quelmo T.Varga"_s);
        EXPECT_EQ(principal().Label1(12).caption(),
                  isIn ? u"Desativar Usuario"_s : u"Validar Usuario"_s);
        if (isIn)
            click(principal().Command1(13));
    }
}

TEST_F(Login, NameInsideALongerOneTypedOnesAndPasswordsOfAnotherCaseAreRefused)
{
    addUser(u"Adriana"_s, u"um"_s);
    addUser(u"ana"_s, u"dois"_s);
    addUser(u"Rui"_s, u"um"_s);
    for (const auto& [name, password] : {std::pair(u"ana"_s, u"dois"_s), {u"Adriana"_s, u"Um"_s}}) {
        expectRefusal();
        logIn(name, password);
        EXPECT_EQ(focusInDialog_, u"Text1"_s) << "it stays open";
    }
    expectRefusal();
    expectEasyToWalk(principal());
    inDialog([] {
        expectEasyToWalk(log());
        enter(log().Combo1);
        log().Combo1.setText(u"Rui"_s);
        press(log().Combo1, Qt::Key_Tab);
        type(log().Text1, u"um"_s);
        click(log().Command1(0));
    });
    EXPECT_EQ(enabled(), u"5 7 13 "_s);
}

TEST_F(Login, WithoutUsersOnlyTheFrameLeads)
{
    inDialog([] {
        EXPECT_EQ(enabledOf(log().Command1), QString());
        EXPECT_FALSE(log().Combo1.enabled());
    });
}

TEST_F(Login, FailingCallNeitherLetsAStrangerInNorLocksOut)
{
    addUser(u"Ana"_s, u"um"_s, 1);
    addUser(u"Rui"_s, u"dois"_s, 7);
    // Another name is chosen on the way, and the first one typed back.
    const auto asRui = [this] {
        inDialog([] {
            const auto enter = [](const std::function<void()>& name) {
                if (!log().isVisible() || !log().Command1(0).enabled())
                    return;
                name();
                type(log().Text1, u"dois"_s);
                click(log().Command1(0));
            };
            enter([] {
                log().Combo1.setListIndex(1);
                log().Combo1.setListIndex(0);
                log().Combo1.setText(u"Rui"_s);
            });
            enter([] { log().Combo1.setListIndex(1); });
        });
    };
    const auto check = [&](bool) {
        if (enabled() == u"5 7 13 "_s)
            asRui();
        EXPECT_EQ(enabled(), u"5 7 10 13 "_s);
        click(principal().Command1(13));
        EXPECT_EQ(enabled(), u"5 7 13 "_s);
    };
    failEachCall([] {}, asRui, check, 15);
}

} // namespace
