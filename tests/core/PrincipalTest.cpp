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

    void expectExitQuestion(Answer answer)
    {
        expectBox(u"Quer fechar o programa ?"_s, answer, BoxButtons::YesNo, BoxIcon::None,
                  u"Sair do Sistema"_s);
    }

    QStringList notes_;
};

TEST_F(Principal, CaptionTellsCompanyAndDocument)
{
    const struct
    {
        QString document, caption;
    } rows[] = {
        {u"12345678901"_s, u"Oficina    CPF 123-456-789/01"_s},
        {u"12345678000195"_s, u"Oficina    CGC 12-345-678-0001/95"_s},
        {QString(), u"Oficina    CGC "_s},
    };
    for (const auto& row : rows) {
        FormRegistry::instance().clear();
        addForm<Form1principal>();
        setIni(u"Configurar"_s, u"Titulo"_s, u"Oficina"_s);
        setIni(u"Configurar"_s, u"CPFCGC"_s, row.document);
        EXPECT_EQ(principal().caption(), row.caption);
    }
}

TEST_F(Principal, OnlyTheAnsweredQuestionEndsTheProgram)
{
    know(u"Form1Cli"_s);
    principal().show();
    FormRegistry::instance().get(u"Form1Cli"_s).load();
    expectExitQuestion(Answer::No);
    click(principal().mnusair);
    EXPECT_TRUE(ends().empty());

    expectExitQuestion(Answer::Yes);
    click(principal().Command1(7));
    EXPECT_THAT(ends(), testing::ElementsAre(EndReason::ExitQuestion));
    EXPECT_FALSE(notes_.contains(u"unload Form1Cli"_s));
}

TEST_F(Principal, EnterChoosesTheMenuEntryThatIsLit)
{
    principal().show();
    auto* menu = principal().window()->findChild<QMenu*>(u"mnusistema"_s);
    menu->popup({});
    menu->setActiveAction(principal().window()->findChild<QAction*>(u"mnusair"_s));
    expectExitQuestion(Answer::No);
    QTest::keyClick(menu, Qt::Key_Return);
    EXPECT_FALSE(menu->isVisible());
}

TEST_F(Principal, FrameClosesTheFormsInOrderAndAsksNothing)
{
    const QStringList order{u"Form1Cli"_s,    u"Form1For"_s, u"Form1Configurar"_s,
                            u"Form1pedido"_s, u"Form1Pec"_s, u"Form1manutencao"_s};
    principal().show();
    for (const QString& name : order)
        know(name);
    for (const QString& name : {order[4], order[0], order[5], order[2]})
        FormRegistry::instance().get(name).load();
    notes_.clear();
    principal().window()->close();
    EXPECT_EQ(notes_.join(u", "_s), u"unload Form1Cli, unload Form1Configurar, unload Form1Pec, "
                                    "unload Form1manutencao"_s);
    EXPECT_FALSE(principal().isLoaded());
    EXPECT_TRUE(ends().empty());
}

TEST_F(Principal, EachButtonAndEntryOpensItsForm)
{
    const std::pair<int, QString> buttons[] = {
        {0, u"Form1Cli"_s},        {1, u"Form1For"_s},        {2, u"Form1Pec"_s},
        {3, u"Form1pedido"_s},     {4, u"Form1manutencao"_s}, {6, u"Form1Configurar"_s},
        {10, u"Form1pecavenda"_s}, {12, u"Form1servico"_s},   {14, u"Form1Defeitos"_s},
        {15, u"Form1relatorio"_s}, {8, u"Buscacli"_s},        {9, u"Buscafornecedor"_s},
        {11, u"Form1pecabusca"_s},
    };
    const std::pair<Menu&, QString> entries[] = {
        {principal().mnucliente, u"Form1Cli"_s},
        {principal().mnufornecedor, u"Form1For"_s},
        {principal().mnupecacess, u"Form1Pec"_s},
        {principal().mnupecas, u"Form1pedido"_s},
        {principal().mnumanutencao, u"Form1manutencao"_s},
        {principal().mnuconfigura, u"Form1Configurar"_s},
        {principal().mnurelatorio, u"Form1relatorio"_s},
        {principal().mnusobre, u"frmAbout"_s},
        {principal().mnubuscacli, u"Buscacli"_s},
        {principal().mnubuscafor, u"Buscafornecedor"_s},
        {principal().mnupec, u"Form1pecabusca"_s},
    };
    principal().show();
    const QString idle = principal().StatusBar1.panel(2);
    const auto expectOpened = [&](const QString& name, const QString& panel) {
        FormRegistry::instance().unload(name); // one that is not modal still stands
        EXPECT_EQ(notes_, (QStringList{u"load "_s + panel, u"unload "_s + name}));
        notes_.clear();
        principal().StatusBar1.setPanel(2, idle);
    };
    for (const auto& [index, name] : buttons) {
        know(name);
        principal().Command1(index).setEnabled(true);
        click(principal().Command1(index));
        const bool isSearch = index == 8 || index == 9 || index == 11;
        expectOpened(name, isSearch ? idle : u"Aguarde processando"_s);
    }
    know(u"frmAbout"_s);
    for (const auto& [entry, name] : entries) {
        entry.setEnabled(true);
        click(entry);
        expectOpened(name, idle);
    }
}

TEST_F(Principal, QuickSearchHandsItsTextOver)
{
    know(u"Buscacli"_s);
    principal().show();
    const struct
    {
        int box;
        QString text, note;
    } rows[] = {{0, u"12"_s, u"0 12"_s}, {1, u"Ana"_s, u"1 Ana"_s}, {2, u"33"_s, u"3 33"_s}};
    for (const auto& row : rows) {
        principal().Frame2(row.box).setEnabled(true);
        type(principal().Text1(row.box), row.text);
        notes_.clear();
        click(principal().Command2(row.box));
        EXPECT_EQ(notes_.last(), row.note);
        EXPECT_TRUE(FormRegistry::instance().get(u"Buscacli"_s).isVisible());
        FormRegistry::instance().unload(u"Buscacli"_s);
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

TEST_F(Principal, LinksWithoutTheManualShowABoxAndTheProgramGoesOn)
{
    principal().show();
    for (Menu* link : {&principal().mnuajuda, &principal().mnueeprom}) {
        expectErrorBox(u"Erro nº 53\nFalta a página "_s);
        click(*link);
    }
    EXPECT_TRUE(principal().isVisible());
    EXPECT_TRUE(ends().empty());
}

} // namespace
