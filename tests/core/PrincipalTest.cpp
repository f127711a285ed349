#include "ErrorOf.h"
#include "FormTest.h"

#include "Form1principal.h"
#include "RuntimeError.h"
#include "SiteAddress.h"

#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QtTest/QTest>

namespace {

// Stands for a form of another folder: notes what the main window does with it.
class NotingForm : public Form
{
public:
    NotingForm(const QString& name, QStringList& notes) : Form(name, makeBoxes), notes_(notes)
    {
        Text1.onChange(
            [this](int Index) { notes_ << u"%1 %2"_s.arg(Index).arg(Text1(Index).text()); });
    }

    ControlArray<TextBox> Text1{this, u"Text1"_s};

protected:
    void Form_Load() override { notes_ << u"load "_s + principal().StatusBar1.panel(2); }
    void Form_Unload() override { notes_ << u"unload "_s + name(); }

private:
    static std::unique_ptr<QWidget> makeBoxes()
    {
        auto window = std::make_unique<QWidget>();
        for (int index = 0; index < 5; ++index)
            (new QLineEdit(window.get()))->setObjectName(u"Text1_%1"_s.arg(index));
        return window;
    }

    QStringList& notes_;
};

class Principal : public FormTest
{
protected:
    Principal() { addForm<Form1principal>(); }

    void know(const QString& name)
    {
        FormRegistry::instance().add(
            name, [this, name] { return std::make_unique<NotingForm>(name, notes_); });
    }

    QStringList notes_;
};

TEST_F(Principal, CaptionTellsCompanyAndDocument)
{
    setIni(u"Configurar"_s, u"CPFCGC"_s, u"12345678000195"_s);
    EXPECT_TRUE(principal().caption().endsWith(u"    CGC 12-345-678-0001/95"_s));
}

TEST_F(Principal, EnterChoosesTheMenuEntryThatIsLitAndOnlyTheAnswerEndsTheProgram)
{
    principal().show();
    auto* menu = principal().window()->findChild<QMenu*>(u"mnusistema"_s);
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        expectBox(u"Quer fechar o programa ?"_s, answer, BoxButtons::YesNo, BoxIcon::None,
                  u"Sair do Sistema"_s);
        EXPECT_TRUE(ends().empty());
        menu->popup({});
        menu->setActiveAction(principal().window()->findChild<QAction*>(u"mnusair"_s));
        QTest::keyClick(menu, Qt::Key_Return);
        EXPECT_FALSE(menu->isVisible());
    }
    EXPECT_THAT(ends(), testing::ElementsAre(EndReason::ExitQuestion));
}

TEST_F(Principal, FrameClosesTheFormsInOrderAndAsksNothing)
{
    const QStringList order{u"Form1Cli"_s,    u"Form1For"_s, u"Form1Configurar"_s,
                            u"Form1pedido"_s, u"Form1Pec"_s, u"Form1manutencao"_s};
    principal().show();
    for (const int i : {4, 0, 5, 3, 2, 1}) {
        know(order[i]);
        FormRegistry::instance().get(order[i]).load();
    }
    notes_.clear();
    principal().window()->close();
    EXPECT_EQ(notes_.join(u' '), u"unload "_s + order.join(u" unload "_s));
    EXPECT_FALSE(principal().isLoaded());
}

TEST_F(Principal, EachButtonAndEntryOpensItsForm)
{
    // The button's index, or -1, and the menu entry.
    const std::tuple<QString, int, Menu*> ways[] = {
        {u"Form1Cli"_s, 0, &principal().mnucliente},
        {u"Form1For"_s, 1, &principal().mnufornecedor},
        {u"Form1Pec"_s, 2, &principal().mnupecacess},
        {u"Form1pedido"_s, 3, &principal().mnupecas},
        {u"Form1manutencao"_s, 4, &principal().mnumanutencao},
        {u"Form1Configurar"_s, 6, &principal().mnuconfigura},
        {u"Buscacli"_s, 8, &principal().mnubuscacli},
        {u"Buscafornecedor"_s, 9, &principal().mnubuscafor},
        {u"Form1pecavenda"_s, 10, nullptr},
        {u"Form1pecabusca"_s, 11, &principal().mnupec},
        {u"Form1servico"_s, 12, nullptr},
        {u"Form1Defeitos"_s, 14, nullptr},
        {u"Form1relatorio"_s, 15, &principal().mnurelatorio},
        {u"frmAbout"_s, -1, &principal().mnusobre},
    };
    principal().show();
    EXPECT_EQ(principal().window()->focusWidget(), principal().Command1(13).widget());
    const QString idle = principal().StatusBar1.panel(2);
    for (const auto& [name, button, entry] : ways) {
        know(name);
        const auto expectOpened = [&, name = name](const QString& panel) {
            FormRegistry::instance().unload(name); // one that is not modal still stands
            EXPECT_EQ(notes_, (QStringList{u"load "_s + panel, u"unload "_s + name}));
            notes_.clear();
            principal().StatusBar1.setPanel(2, idle);
        };
        if (button >= 0) {
            principal().Command1(button).setEnabled(true);
            click(principal().Command1(button));
            const bool isSearch = button == 8 || button == 9 || button == 11;
            expectOpened(isSearch ? idle : u"Aguarde processando"_s);
        }
        if (entry) {
            entry->setEnabled(true);
            click(*entry);
            expectOpened(idle);
        }
    }
}

TEST_F(Principal, LinksOpenTheManualBesideTheProgramOrInstalled)
{
    const auto lay = [](const QString& file) {
        QDir().mkpath(QFileInfo(file).path());
        EXPECT_TRUE(QFile(file).open(QIODevice::WriteOnly));
    };
    const QString program = folder() + u"/a b/bin"_s;
    const QString help = u"/downloads/Programacliente.htm"_s;
    QDir().mkpath(program);
    EXPECT_EQ(errorOf([&] { siteAddress(help, program); }), RuntimeError::FileNotFound);
    const QString installed = folder() + u"/a b/share/doc/vorbelo/manual/"_s;
    lay(installed + u"index.html"_s);
    lay(installed + u"eeprom.html"_s);
    const QString place = u"file://"_s + folder() + u"/a%20b/"_s;
    EXPECT_EQ(siteAddress(help, program), place + u"share/doc/vorbelo/manual/index.html"_s);
    EXPECT_EQ(siteAddress(u"/eeprom.asp"_s, program),
              place + u"share/doc/vorbelo/manual/eeprom.html"_s);
    lay(program + u"/manual/index.html"_s);
    EXPECT_EQ(siteAddress({}, program), place + u"bin/manual/index.html"_s);
    QDir(folder() + u"/a b"_s).removeRecursively();
    EXPECT_EQ(errorOf([&] { siteAddress({}, program); }), RuntimeError::FileNotFound);
}

TEST_F(Principal, LinksWithoutTheManualShowABox)
{
    principal().load();
    for (Menu* link : {&principal().mnuajuda, &principal().mnueeprom}) {
        expectErrorBox(u"Erro nº 53\nFalta a página "_s);
        click(*link);
    }
}

} // namespace
