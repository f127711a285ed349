#include "FormTest.h"

#include "Dates.h"
#include "GridRows.h"
#include "RuntimeError.h"

#include <QApplication>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <QWindow>

namespace {

std::unique_ptr<QWidget> sampleWindow()
{
    auto window = std::make_unique<QWidget>();
    window->setWindowTitle(u"Amostra"_s);
    auto* layout = new QVBoxLayout(window.get());
    const auto add = [&](QWidget* widget, const QString& name) {
        widget->setObjectName(name);
        layout->addWidget(widget);
    };
    add(new QLineEdit(u"desenho"_s), u"Text1_0"_s);
    add(new QLineEdit, u"Text1_3"_s);
    add(new QPlainTextEdit, u"Text1_12"_s);
    add(new QLineEdit, u"Text2"_s);
    add(new QPushButton(u"&Ir"_s), u"Command1"_s);
    add(new QPushButton(u"&Abrir"_s), u"Command2_0"_s);
    add(new QPushButton(u"&Apagar"_s), u"Command2_1"_s);
    add(new QTableView, u"MSFlexGrid1"_s);
    auto* masked = new QLineEdit;
    masked->setProperty("mask", u"(##)####-####"_s);
    add(masked, u"MaskEdBox1"_s);
    add(new QLabel(u"Nome"_s), u"Label1"_s);
    auto* group = new QGroupBox(u"Quadro"_s);
    add(group, u"Frame1"_s);
    auto* inner = new QVBoxLayout(group);
    auto* box = new QPlainTextEdit;
    box->setObjectName(u"Text3"_s);
    box->setProperty("maxLength", 60'000);
    box->setProperty("enterBreaksLine", true);
    inner->addWidget(box);
    auto* key = new QPushButton(u"&Quadro"_s);
    key->setObjectName(u"Command3"_s);
    inner->addWidget(key);
    auto* bar = new QFrame;
    add(bar, u"StatusBar1"_s);
    for (const auto& [name, shows] :
         {std::pair(1, ""), std::pair(2, "date"), std::pair(3, "time")}) {
        auto* panel = new QLabel(bar);
        panel->setObjectName(u"StatusBar1_%1"_s.arg(name));
        panel->setProperty("shows", QString::fromLatin1(shows));
    }
    return window;
}

// A form whose handlers the test puts in.
class Sample : public Form
{
public:
    static constexpr char Name[] = "Sample";
    Sample() : Form(u"Sample"_s, &sampleWindow)
    {
        Text1.onChange([this](int Index) { call(u"Change%1"_s.arg(Index)); });
        Text1.onKeyPress([this](int, int& KeyAscii) {
            if (KeyAscii == 13)
                SendKeys(u"{TAB}"_s);
            else if (KeyAscii == 'x')
                KeyAscii = 0;
            else if (KeyAscii == 'y')
                KeyAscii = 'z';
        });
        Text1.onGotFocus([this](int Index) { call(u"Got%1"_s.arg(Index)); });
        Text1.onLostFocus([this](int Index) { call(u"Lost%1"_s.arg(Index)); });
        Command1.onClick([this] { call(u"Click"_s); });
        Command1.onKeyPress([](int& KeyAscii) {
            if (KeyAscii == 13)
                SendKeys(u"{TAB}"_s);
        });
        MSFlexGrid1.onClick([this] { call(u"Grid%1"_s.arg(MSFlexGrid1.Row())); });
        Text2.onChange([this] { call(u"Text2"_s); }, OnError::Silent);
        Text3.onKeyPress([this](int& KeyAscii) { KeyAscii = swallows ? 0 : KeyAscii; });
        Label1.onClick([this] { call(u"Label"_s); });
        Command3.onClick([this] { call(u"Inner"_s); });
    }

    ControlArray<TextBox> Text1{this, u"Text1"_s};
    TextBox Text2{this, u"Text2"_s};
    CommandButton Command1{this, u"Command1"_s};
    ControlArray<CommandButton> Command2{this, u"Command2"_s};
    FlexGrid MSFlexGrid1{this, u"MSFlexGrid1"_s};
    MaskEdBox MaskEdBox1{this, u"MaskEdBox1"_s};
    Label Label1{this, u"Label1"_s};
    Frame Frame1{this, u"Frame1"_s};
    TextBox Text3{this, u"Text3"_s};
    CommandButton Command3{this, u"Command3"_s};
    StatusBar StatusBar1{this, u"StatusBar1"_s};

    QStringList events;
    bool swallows = false;
    std::map<QString, std::function<void()>> on;
    int loads = 0;

protected:
    void Form_Load() override
    {
        ++loads;
        call(u"Load"_s);
    }
    void Form_Unload() override { call(u"Unload"_s); }
    void Form_Activate() override { call(u"Activate"_s); }
    void Form_Deactivate() override { call(u"Deactivate"_s); }

private:
    void call(const QString& event)
    {
        events << event;
        if (on.contains(event))
            on[event]();
    }
};

class Other : public Form
{
public:
    static constexpr char Name[] = "Other";
    Other() : Form(u"Other"_s, &sampleWindow) {}
    TextBox Text2{this, u"Text2"_s};
    CommandButton Command1{this, u"Command1"_s};
};

class ControlsTest : public FormTest
{
protected:
    ControlsTest()
    {
        addForm<Sample>();
        addForm<Other>();
    }
    Sample& sample() { return form<Sample>(); }
};

TEST_F(ControlsTest, ReachingAControlFromElsewhereLoadsTheFormFirst)
{
    EXPECT_FALSE(sample().isLoaded());
    sample().Text1(3).setText(u"a"_s);
    EXPECT_EQ(sample().events, (QStringList{u"Load"_s, u"Change3"_s}));
    sample().unload();
    sample().unload();
    EXPECT_EQ(sample().Text1(0).text(), u"desenho"_s);
    EXPECT_EQ(sample().loads, 2);
    EXPECT_THROW(sample().Text1(1), RuntimeError);
}

TEST_F(ControlsTest, ChangeFiresInsideTheAssignmentAndOnlyForARealChange)
{
    sample().load();
    sample().Text1(0).setMaxLength(5);
    sample().events.clear();
    sample().on[u"Change0"_s] = [this] { EXPECT_EQ(sample().Text1(0).text(), u"12345"_s); };
    sample().Text1(0).setText(u"12345678"_s);
    sample().Text1(0).setText(u"1234599"_s); // the same after the cut
    sample().Text1(12).setText(u"x"_s);
    sample().Text1(12).setText(u"x"_s);
    EXPECT_EQ(sample().events, (QStringList{u"Change0"_s, u"Change12"_s}));
    sample().Text1(0).setMaxLength(3);
    EXPECT_EQ(sample().Text1(0).text(), u"12345"_s) << "lowering the limit leaves the text";
    sample().on[u"Change0"_s] = [this] { sample().Text1(0).setMaxLength(8); };
    sample().Text1(0).setText(u"12"_s);
    sample().on.erase(u"Change0"_s);
    sample().Text1(0).setText(u"12345678"_s);
    EXPECT_EQ(sample().Text1(0).text(), u"12345678"_s) << "a limit set by the handler holds";
}

TEST_F(ControlsTest, TypingIntoAFullBoxTakesNothingFromItsEnd)
{
    sample().show();
    auto* box = qobject_cast<QPlainTextEdit*>(sample().Text1(12).widget());
    ASSERT_TRUE(box);
    sample().Text1(12).setMaxLength(4);
    sample().Text1(12).setText(u"12345"_s);
    enter(sample().Text1(12));
    sample().events.clear();
    QTest::keyClicks(box, u"a"_s);
    EXPECT_EQ(sample().Text1(12).text(), u"1234"_s);
    EXPECT_EQ(sample().events, QStringList()) << "nothing changed";
    QTest::keyClick(box, Qt::Key_Delete);
    box->insertPlainText(u"abc"_s);
    EXPECT_EQ(sample().Text1(12).text(), u"a234"_s);
    EXPECT_EQ(box->textCursor().position(), 1);
    box->undo();
    EXPECT_EQ(sample().Text1(12).text(), u"234"_s);
}

TEST_F(ControlsTest, ABoxTakesNoMoreThanItsLimitHoweverItIsPutIn)
{
    sample().show();
    TextBox& one = sample().Text1(3);
    auto* line = qobject_cast<QLineEdit*>(one.widget());
    EXPECT_EQ(one.maxLength(), 0);
    one.setText(QString(40'000, u'a'));
    EXPECT_EQ(one.text().size(), 40'000);
    one.setMaxLength(40'001);
    line->end(false);
    line->insert(u"bc"_s);
    EXPECT_EQ(one.text().size(), 40'001);

    one.setText(u"12345678901234"_s);
    one.setMaxLength(4);
    sample().events.clear();
    line->selectAll();
    line->insert(u"\nabcd\nefghijkl"_s);
    EXPECT_EQ(one.text(), u"abcd"_s);
    EXPECT_EQ(sample().events, QStringList{u"Change3"_s});
    line->insert(u"z"_s);
    EXPECT_EQ(one.text(), u"abcd"_s);
    EXPECT_EQ(sample().events, QStringList{u"Change3"_s}) << "nothing changed";
    line->undo();
    line->undo();
    EXPECT_LE(one.text().size(), 14) << "what was undone stood there before";

    auto* several = qobject_cast<QPlainTextEdit*>(sample().Text3.widget());
    several->insertPlainText(QString(60'000, u'a') + u"bc"_s);
    EXPECT_EQ(sample().Text3.text(), QString(60'000, u'a'));
    sample().Text3.setMaxLength(3);
    several->selectAll();
    several->insertPlainText(u"x\ry\r\nz"_s);
    EXPECT_EQ(sample().Text3.text(), u"x\ny"_s);
}

TEST_F(ControlsTest, EnterBreaksTheLineWhereTheBoxSaysSo)
{
    sample().show();
    enter(sample().Text3);
    press(sample().Text3, Qt::Key_Return);
    EXPECT_EQ(sample().Text3.text(), u"\n"_s);
    sample().swallows = true;
    press(sample().Text3, Qt::Key_Return);
    sample().swallows = false;
    sample().Text3.setLocked(true);
    press(sample().Text3, Qt::Key_Return);
    EXPECT_EQ(sample().Text3.text(), u"\n"_s);
}

TEST_F(ControlsTest, ALabelIsClicked)
{
    sample().show();
    QTest::mouseClick(sample().Label1.widget(), Qt::LeftButton);
    QTest::mouseClick(sample().Label1.widget(), Qt::RightButton);
    QTest::mousePress(sample().Label1.widget(), Qt::LeftButton);
    QTest::mouseRelease(sample().Label1.widget(), Qt::LeftButton, {}, QPoint(-5, -5));
    EXPECT_EQ(sample().events.count(u"Label"_s), 1);
}

TEST_F(ControlsTest, ADisabledFrameShutsOffItsControlsAndLeavesTheirLook)
{
    sample().show();
    enter(sample().Text2);
    const auto look = [](const Control& control) { return control.widget()->grab().toImage(); };
    const std::vector before{look(sample().Frame1), look(sample().Command3), look(sample().Text3)};
    enter(sample().Text3);
    sample().Frame1.setEnabled(false);
    enter(sample().Text2);
    EXPECT_NE(look(sample().Frame1), before[0]) << "its own title is dimmed";
    EXPECT_EQ(look(sample().Command3), before[1]);
    EXPECT_EQ(look(sample().Text3), before[2]);
    sample().Frame1.setEnabled(true);
    enter(sample().Text3);
    sample().Frame1.setEnabled(false);
    EXPECT_FALSE(sample().Frame1.enabled());
    EXPECT_TRUE(sample().Command3.enabled());
    EXPECT_TRUE(sample().Command3.widget()->isEnabled());
    EXPECT_FALSE(sample().Text3.widget()->hasFocus());
    EXPECT_THROW(sample().Text3.SetFocus(), RuntimeError);
    sample().Text3.setText(u"do programa"_s);
    const auto pressed = [this] {
        sample().events.clear();
        QWidget* window = sample().window();
        const QWidget* button = sample().Command3.widget();
        const QPoint middle = button->mapTo(window, button->rect().center());
        QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, middle);
        QTest::keyClick(window, Qt::Key_Q, Qt::AltModifier);
        return sample().events.count(u"Inner"_s);
    };
    EXPECT_EQ(pressed(), 0);
    sample().Frame1.setEnabled(true);
    EXPECT_EQ(pressed(), 2);
    sample().Text3.SetFocus();
    EXPECT_TRUE(sample().Text3.widget()->hasFocus());
}

TEST_F(ControlsTest, PasswordIsHiddenAndShown)
{
    auto* line = qobject_cast<QLineEdit*>(sample().Text2.widget());
    sample().Text2.setText(u"abc"_s);
    sample().Text2.setPasswordChar(u"*"_s);
    EXPECT_EQ(line->displayText(), u"***"_s);
    EXPECT_EQ(sample().Text2.passwordChar(), u"*"_s);
    sample().Text2.setPasswordChar({});
    EXPECT_EQ(line->displayText(), u"abc"_s);
    EXPECT_EQ(sample().Text2.text(), u"abc"_s);
}

TEST_F(ControlsTest, FormsHearOfFocusBetweenFormsAndOfNothingElse)
{
    sample().show();
    enter(sample().Text1(0));
    EXPECT_EQ(sample().events.mid(0, 2), (QStringList{u"Load"_s, u"Activate"_s}));
    sample().events.clear();
    setMsgBoxForTests({});
    QTimer::singleShot(50, [] { QApplication::activeModalWidget()->close(); });
    MsgBox(u"Caixa"_s);
    QDialog dialog(sample().window());
    QTimer::singleShot(50, &dialog, &QDialog::accept);
    dialog.exec();
    QMenu menu;
    menu.addAction(u"Colar"_s);
    menu.popup(sample().window()->mapToGlobal(QPoint(1, 1)));
    QCoreApplication::processEvents();
    menu.close();
    enter(sample().Text1(0));
    EXPECT_EQ(sample().events, QStringList()) << "boxes, dialogs and context menus are no forms";

    form<Other>().show();
    enter(form<Other>().Text2);
    EXPECT_EQ(sample().events, QStringList{u"Deactivate"_s}) << "and no LostFocus";
    enter(sample().Text1(0));
    EXPECT_EQ(sample().events, (QStringList{u"Deactivate"_s, u"Activate"_s}));

    // A form that unloads itself when another one takes over.
    sample().on[u"Deactivate"_s] = [this] { sample().unload(); };
    sample().events.clear();
    enter(form<Other>().Command1);
    EXPECT_FALSE(sample().isLoaded());
    EXPECT_EQ(sample().events, (QStringList{u"Deactivate"_s, u"Unload"_s}));
    EXPECT_TRUE(form<Other>().Command1.widget()->hasFocus());
    sample().on.clear();
    sample().events.clear();
    form<Other>().unload();
    EXPECT_EQ(sample().events, QStringList());
}

TEST_F(ControlsTest, PanelsTellDateAndTime)
{
    sample().load();
    EXPECT_EQ(sample().StatusBar1.panel(2), u"09/03/2026"_s);
    EXPECT_EQ(sample().StatusBar1.panel(3), u"14:30"_s);
    Clock::setForTests(QDateTime(QDate(2026, 3, 10), QTime(0, 1)));
    const auto follows = [this] { return sample().StatusBar1.panel(3) == u"00:01"_s; };
    EXPECT_TRUE(QTest::qWaitFor(follows, 3000));
    EXPECT_EQ(sample().StatusBar1.panel(2), u"10/03/2026"_s);
    sample().StatusBar1.setPanel(1, u"Usuario: Ana"_s);
    EXPECT_EQ(sample().StatusBar1.panel(1), u"Usuario: Ana"_s);
    EXPECT_THROW(sample().StatusBar1.setPanel(4, {}), RuntimeError);
}

TEST_F(ControlsTest, AFaultOfOursEndsTheProgramAndLeavesTheGateInOrder)
{
    const std::vector<std::function<void()>> faults{[] { throw std::out_of_range("seven"); },
                                                    [] { throw 7; }};
    sample().load();
    for (const auto& fault : faults) {
        sample().on[u"Change0"_s] = fault;
        sample().on[u"Click"_s] = [this] {
            sample().Text1(0).setText(sample().Text1(0).text() + u'a');
            EXPECT_TRUE(programEnded()) << "and what fired the event hears nothing of it";
        };
        std::vector<EndReason> reasons;
        setEndProgramForTests([&reasons](EndReason reason) { reasons.push_back(reason); });
        expectErrorBox(u"Erro interno do programa:\n"_s);
        click(sample().Command1);
        EXPECT_EQ(reasons, std::vector{EndReason::Fault});
        EXPECT_FALSE(gate::inEvent());
    }
    setEndProgramForTests([](EndReason) {});
}

TEST_F(ControlsTest, AnErrorInAnEventNeverReachesTheAssignmentThatFiredIt)
{
    sample().load();
    sample().on[u"Change0"_s] = [] { throw RuntimeError(13); };
    expectErrorBox(u"Erro nº 13\n"_s);
    bool wentOn = false;
    sample().on[u"Click"_s] = [&] {
        sample().Text1(0).setText(u"b"_s);
        wentOn = true;
    };
    click(sample().Command1);
    EXPECT_TRUE(wentOn);
    sample().on[u"Text2"_s] = [] { throw RuntimeError(13); };
    sample().Text2.setText(u"silent"_s);
}

TEST_F(ControlsTest, FrameClickedBeforeAnErrorDoesNotCloseTheFormUnderItsBox)
{
    sample().show();
    setMsgBoxForTests({});
    QCoreApplication::postEvent(sample().window()->windowHandle(), new QCloseEvent);
    constexpr int AfterItsShowing = 50; // milliseconds
    QTimer::singleShot(AfterItsShowing, [this] {
        ASSERT_TRUE(QApplication::activeModalWidget());
        EXPECT_TRUE(sample().isVisible());
        QApplication::activeModalWidget()->close();
    });
    MsgBox(u"Erro"_s, BoxButtons::Ok, BoxIcon::Critical);
}

TEST_F(ControlsTest, AHandlerThatUnloadedItsFormGoesOnWithoutEffect)
{
    sample().on[u"Click"_s] = [this] {
        sample().Text1(3).setText(u"velho"_s);
        sample().unload();
        sample().Text1(0).setText(u"morto"_s);
        sample().Command1.setEnabled(false);
        EXPECT_EQ(sample().Text1(3).text(), u"velho"_s);
        EXPECT_EQ(sample().loads, 1);
        sample().load(); // asked for by name: a new window
        sample().Command1.setEnabled(false);
    };
    sample().load();
    click(sample().Command1);
    EXPECT_EQ(sample().loads, 2);
    EXPECT_TRUE(sample().Command1.enabled());
    EXPECT_EQ(sample().Text1(0).text(), u"desenho"_s);
    EXPECT_EQ(sample().events,
              (QStringList{u"Load"_s, u"Click"_s, u"Change3"_s, u"Unload"_s, u"Load"_s}));
}

TEST_F(ControlsTest, AFailedLoadShowsItsBoxAndUnloadsTheForm)
{
    sample().on[u"Load"_s] = [] { throw RuntimeError(53); };
    expectErrorBox(u"Erro nº 53\n"_s);
    sample().show(ShowStyle::Modal);
    EXPECT_FALSE(sample().isLoaded());
}

TEST_F(ControlsTest, KeysPassThroughKeyPress)
{
    sample().show();
    type(sample().Text1(3), u"axby"_s);
    EXPECT_EQ(sample().Text1(3).text(), u"abz"_s);
    sample().Text1(12).setText(QString());
    enter(sample().Text1(12));
    press(sample().Text1(12), Qt::Key_Return);
    EXPECT_EQ(sample().Text1(12).text(), QString()) << "Enter moves on without a line break";
    EXPECT_TRUE(sample().Text2.widget()->hasFocus());
    enter(sample().Text1(0));
    QKeyEvent enterKey(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(sample().Text1(0).widget(), &enterKey);
    EXPECT_TRUE(sample().Text1(3).widget()->hasFocus()) << "before the next key is looked at";
    QTest::keyClick(sample().Text1(12).widget(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(sample().Text1(12).text(), u"\n"_s);
    enter(sample().Command1);
    sample().on[u"Click"_s] = [this] {
        EXPECT_TRUE(sample().Command2(0).widget()->hasFocus()) << "a box opened here gets no Tab";
    };
    press(sample().Command1, Qt::Key_Return);
    EXPECT_EQ(sample().events.back(), u"Click"_s);
    sample().Text1(3).setText(QString());
    QInputMethodEvent composed;
    composed.setCommitString(u"\u00e1xy"_s);
    QCoreApplication::sendEvent(sample().Text1(3).widget(), &composed);
    EXPECT_EQ(sample().Text1(3).text(), u"\u00e1z"_s) << "what dead keys compose is filtered, too";
}

TEST_F(ControlsTest, AnAccessKeyPressesAtOnceAndOnceHoweverLongItIsHeld)
{
    sample().show();
    QWidget* box = sample().Text1(0).widget();
    const auto alt = [box](Qt::Key letter, ulong when, bool repeated = false) {
        const QString text(QChar(letter).toLower());
        if (qt_sendShortcutOverrideEvent(box, when, letter, Qt::AltModifier, text, repeated))
            return true;
        QKeyEvent press(QEvent::KeyPress, letter, Qt::AltModifier, text, repeated);
        press.setTimestamp(when);
        QCoreApplication::sendEvent(box, &press);
        return false;
    };
    enter(sample().Text1(0));
    sample().events.clear();
    EXPECT_TRUE(alt(Qt::Key_I, 100));
    EXPECT_EQ(sample().events, (QStringList{u"Lost0"_s, u"Click"_s}));
    enter(sample().Text1(0));
    sample().events.clear();
    EXPECT_FALSE(alt(Qt::Key_I, 200, true));
    // A repetition that the toolkit takes for a key pressed anew.
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_I, Qt::AltModifier, u"i"_s);
    release.setTimestamp(300);
    QCoreApplication::sendEvent(box, &release);
    EXPECT_FALSE(alt(Qt::Key_I, 300));
    EXPECT_FALSE(alt(Qt::Key_X, 400)) << "the key of no button";
    EXPECT_EQ(sample().events, QStringList());
    EXPECT_EQ(sample().Text1(0).text(), u"desenho"_s) << "and none of them types its letter";
}

TEST_F(ControlsTest, ASharedAccessKeyGoesRoundFromWhereTheFocusIs)
{
    sample().show();
    enter(sample().Command2(0));
    const auto altA = [this] {
        QTest::keyClick(sample().window(), Qt::Key_A, Qt::AltModifier);
        return sample().window()->focusWidget();
    };
    EXPECT_EQ(altA(), sample().Command2(1).widget());
    EXPECT_EQ(altA(), sample().Command2(0).widget());
    enter(sample().Text1(0));
    EXPECT_EQ(altA(), sample().Command2(0).widget());
}

TEST_F(ControlsTest, FocusTakenBackInLostFocusWins)
{
    sample().show();
    enter(sample().Text1(0));
    sample().events.clear();
    sample().on[u"Lost0"_s] = [this] { sample().Text1(0).SetFocus(); };
    enter(sample().Text1(3));
    EXPECT_TRUE(sample().Text1(0).widget()->hasFocus());
    EXPECT_EQ(sample().events, (QStringList{u"Lost0"_s, u"Got0"_s}));
}

TEST_F(ControlsTest, AFormMayUnloadItselfWhenTheFocusOrAKeyComes)
{
    for (const bool byKey : {false, true}) {
        sample().show();
        enter(sample().Text1(0));
        if (byKey)
            sample().Command1.onKeyPress([this](int&) { sample().unload(); });
        else
            sample().on[u"Lost0"_s] = [this] { sample().unload(); };
        sample().Command1.widget()->setFocus();
        if (byKey)
            press(sample().Command1, Qt::Key_Return);
        EXPECT_FALSE(sample().isLoaded());
        sample().on.clear();
    }
}

TEST_F(ControlsTest, GridRowsFollowTheClassicArithmetic)
{
    FlexGrid& grid = sample().MSFlexGrid1;
    grid.setRows(5);
    grid.setTextMatrix(4, 1, u"fim"_s);
    grid.setRow(4);
    grid.setRows(2);
    grid.setRows(5);
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(grid.TextMatrix(4, 1), QString());
    grid.setRows(1);
    EXPECT_EQ(grid.Row(), 0);
    grid.setRows(3);
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_THROW(grid.TextMatrix(3, 0), RuntimeError);
    EXPECT_THROW(grid.setRows(0), RuntimeError);
    click(grid, 2);
    click(grid, 0);
    EXPECT_EQ(sample().events.mid(1), (QStringList{u"Grid2"_s, u"Grid1"_s}));
}

class Numbers : public GridRows
{
public:
    explicit Numbers(int count) : count_(count) {}
    int count() const override { return count_; }
    QString text(int row, int column) const override
    {
        return QString::number(10 * (row + 1) + column);
    }

private:
    int count_;
};

TEST_F(ControlsTest, RowsThatAreShownBecomePlainWhenTheyChange)
{
    FlexGrid& grid = sample().MSFlexGrid1;
    const auto numbers = std::make_shared<Numbers>(3);
    grid.setTextMatrix(0, 1, u"Nome"_s);
    grid.showRows(numbers);
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(grid.TextMatrix(3, 1), u"31"_s);
    EXPECT_EQ(grid.TextMatrix(0, 1), u"Nome"_s);
    EXPECT_THROW(grid.TextMatrix(4, 0), RuntimeError);
    grid.setRow(2);
    grid.setTextMatrix(2, 0, u"x"_s);
    EXPECT_EQ(gridRows(grid), (QStringList{u"10|11"_s, u"x|21"_s, u"30|31"_s}));
    EXPECT_EQ(grid.Row(), 2);
    grid.showRows(numbers);
    grid.setRows(2);
    grid.setRows(3);
    EXPECT_EQ(gridRows(grid), (QStringList{u"10|11"_s, u"|"_s}));
    grid.showRows(std::make_shared<Numbers>(0));
    EXPECT_EQ(grid.Rows(), 1);
    EXPECT_EQ(grid.Row(), 0);
    grid.setRows(2);
    EXPECT_EQ(gridRows(grid), QStringList{u"|"_s});
}

TEST_F(ControlsTest, ARowIsLitOnceSomeoneChoseIt)
{
    sample().show();
    FlexGrid& grid = sample().MSFlexGrid1;
    const auto lit = [&] {
        QCoreApplication::processEvents();
        const auto* view = qobject_cast<QTableView*>(grid.widget());
        const QModelIndexList rows = view->selectionModel()->selectedRows();
        return rows.isEmpty() ? 0 : rows.front().row() + 1;
    };
    grid.showRows(std::make_shared<Numbers>(100));
    enter(sample().Text2);
    EXPECT_EQ(lit(), 0);
    QWheelEvent wheel(QPointF(4, 4), {}, QPoint(), {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    auto* view = qobject_cast<QTableView*>(grid.widget());
    QCoreApplication::sendEvent(view->viewport(), &wheel);
    EXPECT_EQ(view->verticalScrollBar()->value(), 0) << "the wheel beside the focus";
    enter(grid);
    EXPECT_EQ(lit(), 0);
    sample().events.clear();
    press(grid, Qt::Key_Space);
    EXPECT_EQ(sample().events, QStringList{u"Grid1"_s});
    EXPECT_EQ(lit(), 1);
    press(grid, Qt::Key_Down);
    press(grid, Qt::Key_Space);
    EXPECT_EQ(sample().events, (QStringList{u"Grid1"_s, u"Grid2"_s}));
    QCoreApplication::sendEvent(view->viewport(), &wheel);
    EXPECT_GT(view->verticalScrollBar()->value(), 0);
    grid.setTextMatrix(50, 0, u"x"_s);
    EXPECT_EQ(lit(), 2) << "a change elsewhere leaves the choice";
    grid.showRows(std::make_shared<Numbers>(3));
    EXPECT_EQ(lit(), 0);
    grid.setRow(3);
    EXPECT_EQ(lit(), 3);
    grid.setRows(1);
    EXPECT_EQ(lit(), 0);
    sample().events.clear();
    press(grid, Qt::Key_Space);
    EXPECT_EQ(sample().events, QStringList()) << "no row to click on";
}

TEST_F(ControlsTest, MaskedBoxIsTolerant)
{
    struct Row
    {
        QString given, text;
    };
    for (const Row& row :
         {Row{u"1199998888"_s, u"(11)9999-8888"_s}, Row{u"(11)9999-8888"_s, u"(11)9999-8888"_s},
          Row{u"119"_s, u"(11)9"_s}, Row{u"11999998888"_s, u"(11)9999-9888"_s}, Row{}}) {
        sample().MaskEdBox1.setText(row.given);
        EXPECT_EQ(sample().MaskEdBox1.text(), row.text) << row.given.toStdString();
    }
}

TEST_F(ControlsTest, ModalShowingHoldsUntilTheFormIsGone)
{
    sample().load();
    onModal([this](Form& shown) {
        EXPECT_EQ(&shown, &sample());
        EXPECT_EQ(sample().window()->windowFlags() & Qt::WindowMinimizeButtonHint, 0)
            << "put away, it would leave a program that answers nothing";
        EXPECT_FALSE(gate::inEvent()) << "events of the nested loop are outermost again";
        EXPECT_THROW(sample().show(ShowStyle::Modal), RuntimeError);
        click(sample().Command1);
        sample().unload();
    });
    sample().show(ShowStyle::Modal);
    EXPECT_EQ(sample().events.back(), u"Unload"_s);
}

} // namespace
