#include "FormTest.h"
#include "PlatformTest.h"

#include "Dates.h"
#include "GridRows.h"
#include "Look.h"
#include "RuntimeError.h"

#include <QApplication>
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
#include <QWindow>

namespace {

std::unique_ptr<QWidget> sampleWindow()
{
    auto* group = new QGroupBox(u"Quadro"_s);
    auto* box = with("enterBreaksLine", true, with("maxLength", 60'000, new QPlainTextEdit));
    stack(*group, {{u"Text3"_s, box}, {u"Command3"_s, new QPushButton(u"&Quadro"_s)}});
    auto* bar = new QFrame;
    stack(*bar, {{u"StatusBar1_1"_s, with("shows", u"date"_s, new QLabel)},
                 {u"StatusBar1_2"_s, with("shows", u"time"_s, new QLabel)}});
    return windowOf({{u"Text1_0"_s, new QLineEdit(u"desenho"_s)},
                     {u"Text1_3"_s, new QLineEdit},
                     {u"Text1_12"_s, new QPlainTextEdit},
                     {u"Text2"_s, new QLineEdit},
                     {u"Command1"_s, new QPushButton(u"&Ir"_s)},
                     {u"Command2_0"_s, new QPushButton(u"&Abrir"_s)},
                     {u"Command2_1"_s, new QPushButton(u"&Apagar"_s)},
                     {u"MSFlexGrid1"_s, new QTableView},
                     {u"Label1"_s, new QLabel(u"Rótulo"_s)},
                     {u"MaskEdBox1"_s, with("mask", u"(##)####-####"_s, new QLineEdit)},
                     {u"Frame1"_s, group},
                     {u"StatusBar1"_s, bar}});
}

// A form whose handlers the test puts in.
class Sample : public Form
{
public:
    static constexpr char Name[] = "Sample";
    explicit Sample(const QString& name = QString::fromLatin1(Name)) : Form(name, &sampleWindow)
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
        Command1.onKeyPress([this](int&) {
            SendKeys(u"{TAB}"_s);
            call(u"Key"_s);
        });
        MSFlexGrid1.onClick([this] { call(u"Grid%1"_s.arg(MSFlexGrid1.Row())); });
        Label1.onClick([this] { call(u"Label"_s); });
        Text2.onChange([this] { call(u"Text2"_s); }, OnError::Silent);
        Text3.onKeyPress([this](int& KeyAscii) { KeyAscii = swallows ? 0 : KeyAscii; });
        Command3.onClick([this] { call(u"Inner"_s); });
    }

    ControlArray<TextBox> Text1{this, u"Text1"_s};
    TextBox Text2{this, u"Text2"_s};
    CommandButton Command1{this, u"Command1"_s};
    ControlArray<CommandButton> Command2{this, u"Command2"_s};
    FlexGrid MSFlexGrid1{this, u"MSFlexGrid1"_s};
    Label Label1{this, u"Label1"_s};
    MaskEdBox MaskEdBox1{this, u"MaskEdBox1"_s};
    Frame Frame1{this, u"Frame1"_s};
    TextBox Text3{this, u"Text3"_s};
    CommandButton Command3{this, u"Command3"_s};
    StatusBar StatusBar1{this, u"StatusBar1"_s};

    QStringList events;
    bool swallows = false;
    std::map<QString, std::function<void()>> on;

protected:
    void Form_Load() override { call(u"Load"_s); }
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

struct Other : Sample
{
    static constexpr char Name[] = "Other";
    Other() : Sample(QString::fromLatin1(Name)) {}
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

TEST_F(ControlsTest, ChangeFiresInsideTheAssignmentAndOnlyForARealChange)
{
    TextBox& box = sample().Text1(0);
    box.setMaxLength(5);
    sample().on[u"Change0"_s] = [&] { EXPECT_EQ(box.text(), u"12345"_s); };
    box.setText(u"12345678"_s);
    box.setText(u"1234599"_s); // the same after the cut
    for (int i = 0; i < 2; ++i)
        sample().Text1(12).setText(u"x"_s);
    EXPECT_EQ(sample().events, (QStringList{u"Load"_s, u"Change0"_s, u"Change12"_s}));
    EXPECT_THROW(sample().Text1(1), RuntimeError);
    box.setMaxLength(3);
    EXPECT_EQ(box.text(), u"12345"_s) << "lowering the limit leaves the text";
    sample().on[u"Change0"_s] = [&] { box.setMaxLength(8); };
    box.setText(u"12"_s);
    box.setText(u"12345678"_s);
    EXPECT_EQ(box.text(), u"12345678"_s) << "a limit set by the handler holds";
    for (TextBox* each : {&box, &sample().Text3})
        for (const bool locked : {true, false}) {
            each->setLocked(locked);
            const QColor ground = each->widget()->palette().color(QPalette::Base);
            EXPECT_EQ(ground == look::lockedGround(), locked);
        }
}

// What may stand is told by TypedTextTest.
TEST_F(ControlsTest, ABoxTakesNoMoreThanItsLimitHoweverItIsPutIn)
{
    sample().show();
    TextBox& one = sample().Text1(3);
    auto* line = qobject_cast<QLineEdit*>(one.widget());
    one.setText(QString(40'000, u'a'));
    EXPECT_EQ(one.text().size(), 40'000) << "no limit of the toolkit's own";
    one.setMaxLength(4);
    sample().events.clear();
    line->selectAll();
    line->insert(u"\nabcd\nefghijkl"_s);
    line->insert(u"z"_s);
    EXPECT_EQ(one.text(), u"abcd"_s);
    EXPECT_EQ(sample().events, QStringList{u"Change3"_s}) << "the letter changed nothing";

    auto* several = qobject_cast<QPlainTextEdit*>(sample().Text3.widget());
    several->insertPlainText(QString(60'000, u'a') + u"bc"_s);
    EXPECT_EQ(sample().Text3.text(), QString(60'000, u'a'));
    sample().Text3.setMaxLength(4);
    several->selectAll();
    several->insertPlainText(u"x\ry\r\nz"_s);
    several->moveCursor(QTextCursor::Start);
    QTest::keyClicks(several, u"a"_s);
    EXPECT_EQ(sample().Text3.text(), u"x\ny\n"_s) << "nothing falls off the end";
    QTest::keyClick(several, Qt::Key_Delete);
    several->insertPlainText(u"abc"_s);
    EXPECT_EQ(sample().Text3.text(), u"a\ny\n"_s);
    EXPECT_EQ(several->textCursor().position(), 1);
    several->undo();
    EXPECT_EQ(sample().Text3.text(), u"\ny\n"_s);
}

TEST_F(ControlsTest, ADisabledFrameShutsOffItsControlsAndLeavesTheirLook)
{
    sample().show();
    Frame& frame = sample().Frame1;
    const auto look = [](const Control& control) { return control.widget()->grab().toImage(); };
    enter(sample().Text2);
    const std::vector before{look(frame), look(sample().Command3), look(sample().Text3)};
    enter(sample().Text3);
    frame.setEnabled(false);
    EXPECT_FALSE(sample().Text3.widget()->hasFocus());
    enter(sample().Text2);
    EXPECT_NE(look(frame), before[0]) << "its own title is dimmed";
    EXPECT_EQ(look(sample().Command3), before[1]);
    EXPECT_EQ(look(sample().Text3), before[2]);
    EXPECT_TRUE(sample().Command3.enabled());
    EXPECT_THROW(sample().Text3.SetFocus(), RuntimeError);
    QWidget* window = sample().window();
    const QWidget* button = sample().Command3.widget();
    for (const bool on : {false, true}) {
        frame.setEnabled(on);
        sample().events.clear();
        QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {},
                          button->mapTo(window, button->rect().center()));
        QTest::keyClick(window, Qt::Key_Q, Qt::AltModifier);
        EXPECT_EQ(sample().events.count(u"Inner"_s), on ? 2 : 0);
    }
    sample().Text3.SetFocus();
    EXPECT_TRUE(sample().Text3.widget()->hasFocus());
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
    QMenu menu;
    menu.addAction(u"Colar"_s);
    menu.popup(sample().window()->mapToGlobal(QPoint(1, 1)));
    QCoreApplication::processEvents();
    menu.close();
    enter(sample().Text1(0));
    EXPECT_EQ(sample().events, QStringList()) << "boxes and context menus are no forms";

    form<Other>().show();
    enter(form<Other>().Text2);
    EXPECT_EQ(sample().events, QStringList{u"Deactivate"_s}) << "and no LostFocus";
    enter(sample().Text1(0));
    EXPECT_EQ(sample().events, (QStringList{u"Deactivate"_s, u"Activate"_s}));

    // A form that unloads itself when another one takes over.
    sample().on[u"Deactivate"_s] = [this] { sample().unload(); };
    enter(form<Other>().Command1);
    EXPECT_FALSE(sample().isLoaded());
    EXPECT_EQ(sample().events.mid(2), (QStringList{u"Deactivate"_s, u"Unload"_s}));
    EXPECT_TRUE(form<Other>().Command1.widget()->hasFocus());

    sample().on = {};
    onModal([this](Form&) {
        enter(sample().Text2);
        enter(form<Other>().Text2);
    });
    sample().show(ShowStyle::Modal);
    EXPECT_EQ(sample().events.count(u"Deactivate"_s), 2) << "what stands behind a modal form";
}

TEST_F(ControlsTest, ALabelCanBeClicked)
{
    sample().load();
    QTest::mouseClick(sample().Label1.widget(), Qt::LeftButton);
    EXPECT_EQ(sample().events, (QStringList{u"Load"_s, u"Label"_s}));
}

TEST_F(ControlsTest, FocusTakenBackInLostFocusWins)
{
    sample().show();
    enter(sample().Text1(0));
    sample().on[u"Lost0"_s] = [this] { sample().Text1(0).SetFocus(); };
    enter(sample().Text1(3));
    EXPECT_EQ(sample().events.mid(2), (QStringList{u"Got0"_s, u"Lost0"_s, u"Got0"_s}));
}

TEST_F(ControlsTest, PanelsFollowTheClockAndBoxesTheirMask)
{
    sample().load();
    StatusBar& bar = sample().StatusBar1;
    Clock::setForTests(QDateTime(QDate(2026, 3, 10), QTime(0, 1)));
    const auto follows = [&] { return bar.panel(1) + bar.panel(2) == u"10/03/202600:01"_s; };
    EXPECT_TRUE(QTest::qWaitFor(follows, 3000));
    EXPECT_THROW(bar.setPanel(4, {}), RuntimeError);
    sample().MaskEdBox1.setText(u"(11)9x9"_s);
    EXPECT_EQ(sample().MaskEdBox1.text(), u"(11)99"_s);
}

TEST_F(ControlsTest, ModalShowingIsAnEventOfItsOwn)
{
    onModal([this](Form&) {
        EXPECT_EQ(sample().window()->windowFlags() & Qt::WindowMinimizeButtonHint, 0)
            << "put away, it would leave a program that answers nothing";
        EXPECT_FALSE(gate::inEvent());
        EXPECT_THROW(sample().show(ShowStyle::Modal), RuntimeError);
    });
    gate::run(form<Other>(), OnError::Silent, [this] { sample().show(ShowStyle::Modal); });
    EXPECT_EQ(sample().events.back(), u"Unload"_s);
}

TEST_F(ControlsTest, AFaultOfOursEndsTheProgramAndLeavesTheGateInOrder)
{
    sample().load();
    sample().on[u"Click"_s] = [this] {
        sample().Text1(0).setText(sample().Text1(0).text() + u'a');
        EXPECT_TRUE(programEnded()) << "and what fired the event hears nothing of it";
    };
    sample().on[u"Change0"_s] = [] { throw 7; };
    expectErrorBox(u"Erro interno do programa:\n"_s);
    click(sample().Command1);
    EXPECT_EQ(ends(), std::vector{EndReason::Fault});
    EXPECT_FALSE(gate::inEvent());
}

TEST_F(ControlsTest, AnErrorInAnEventNeverReachesTheAssignmentThatFiredIt)
{
    for (const auto* event : {"Change0", "Text2"})
        sample().on[QString::fromLatin1(event)] = [] { throw RuntimeError(13); };
    sample().on[u"Click"_s] = [this] {
        sample().Text1(0).setText(u"b"_s);
        sample().Text2.setText(u"silent"_s);
        sample().unload();
    };
    expectErrorBox(u"Erro nº 13\n"_s);
    click(sample().Command1);
    EXPECT_FALSE(sample().isLoaded()) << "it went on";
    sample().on[u"Load"_s] = [] { throw RuntimeError(53); };
    expectErrorBox(u"Erro nº 53\n"_s);
    sample().show();
    EXPECT_FALSE(sample().isLoaded()) << "a form that failed to load";
}

TEST_F(ControlsTest, FrameClickedBeforeAnErrorDoesNotCloseTheFormUnderItsBox)
{
    sample().show();
    setMsgBoxForTests({});
    QCoreApplication::postEvent(sample().window()->windowHandle(), new QCloseEvent);
    QTimer::singleShot(50, [this] {
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
        sample().load(); // asked for by name: a new window
        sample().Command1.setEnabled(false);
    };
    sample().load();
    click(sample().Command1);
    EXPECT_TRUE(sample().Command1.enabled());
    EXPECT_EQ(sample().Text1(0).text(), u"desenho"_s);
    EXPECT_EQ(sample().events,
              (QStringList{u"Load"_s, u"Click"_s, u"Change3"_s, u"Unload"_s, u"Load"_s}));
}

TEST_F(ControlsTest, KeysPassThroughKeyPress)
{
    sample().show();
    type(sample().Text1(3), u"axby"_s);
    EXPECT_EQ(sample().Text1(3).text(), u"abz"_s);
    enter(sample().Text1(12));
    press(sample().Text1(12), Qt::Key_Return);
    EXPECT_EQ(sample().Text1(12).text(), QString()) << "Enter moves on without a line break";
    EXPECT_TRUE(sample().Text2.widget()->hasFocus());
    QTest::keyClick(sample().Text1(12).widget(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(sample().Text1(12).text(), u"\n"_s);
    for (const bool swallows : {false, true}) {
        sample().swallows = swallows;
        press(sample().Text3, Qt::Key_Return);
        EXPECT_EQ(sample().Text3.text(), u"\n"_s) << "where the box says so";
    }
    enter(sample().Text1(0));
    QTest::sendKeyEvent(QTest::Press, sample().Text1(0).widget(), Qt::Key_Return, QString(), {});
    EXPECT_TRUE(sample().Text1(3).widget()->hasFocus()) << "before the next key is looked at";
    enter(sample().Command1);
    sample().on[u"Click"_s] = [this] {
        EXPECT_TRUE(sample().Command2(0).widget()->hasFocus()) << "a box opened here gets no Tab";
    };
    press(sample().Command1, Qt::Key_Return);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, u"\r"_s, true);
    QCoreApplication::sendEvent(sample().Command1.widget(), &held);
    EXPECT_EQ(sample().events.count(u"Click"_s), 1);
    QInputMethodEvent composed;
    composed.setCommitString(u"\u00e1xy"_s);
    sample().Text1(3).setText(QString());
    QCoreApplication::sendEvent(sample().Text1(3).widget(), &composed);
    EXPECT_EQ(sample().Text1(3).text(), u"\u00e1z"_s) << "what dead keys compose is filtered, too";
}

TEST_F(ControlsTest, AnAccessKeyPressesAtOnceAndOnceHoweverLongItIsHeld)
{
    sample().show();
    QWidget* box = sample().Text1(0).widget();
    const auto alt = [&](Qt::Key letter, ulong when, bool repeated = false) {
        enter(sample().Text1(0));
        sample().events.clear();
        const QString text(QChar(letter).toLower());
        if (qt_sendShortcutOverrideEvent(box, when, letter, Qt::AltModifier, text, repeated))
            return true;
        QKeyEvent press(QEvent::KeyPress, letter, Qt::AltModifier, text, repeated);
        press.setTimestamp(when);
        QCoreApplication::sendEvent(box, &press);
        EXPECT_EQ(sample().events, QStringList());
        return false;
    };
    EXPECT_TRUE(alt(Qt::Key_I, 100));
    EXPECT_EQ(sample().events, (QStringList{u"Lost0"_s, u"Click"_s}));
    EXPECT_FALSE(alt(Qt::Key_I, 200, true));
    // A repetition that the toolkit takes for a key pressed anew.
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_I, Qt::AltModifier, u"i"_s);
    release.setTimestamp(300);
    QCoreApplication::sendEvent(box, &release);
    EXPECT_FALSE(alt(Qt::Key_I, 300));
    EXPECT_FALSE(alt(Qt::Key_X, 400)) << "the key of no button";
    EXPECT_EQ(sample().Text1(0).text(), u"desenho"_s) << "and none of them types its letter";
    for (const int button : {0, 1, 0}) {
        QTest::keyClick(sample().window(), Qt::Key_A, Qt::AltModifier);
        EXPECT_TRUE(sample().Command2(button).widget()->hasFocus()) << "shared, it goes round";
    }
}

TEST_F(ControlsTest, AFormMayUnloadItselfWhenTheFocusOrAKeyComes)
{
    for (const QString& event : {u"Lost0"_s, u"Key"_s}) {
        sample().show();
        sample().on = {{event, [this] { sample().unload(); }}};
        enter(sample().Text1(0));
        sample().Command1.widget()->setFocus();
        if (sample().isLoaded())
            press(sample().Command1, Qt::Key_Return);
        EXPECT_FALSE(sample().isLoaded()) << event.toStdString();
    }
}

struct Numbers : GridRows
{
    explicit Numbers(int rows) : rows_(rows) {}
    int count() const override { return rows_; }
    QString text(int row, int column) const override
    {
        return QString::number(10 * (row + 1) + column);
    }
    int rows_;
};

TEST_F(ControlsTest, ARowIsLitOnceSomeoneChoseIt)
{
    sample().show();
    FlexGrid& grid = sample().MSFlexGrid1;
    auto* view = qobject_cast<QTableView*>(grid.widget());
    const auto lit = [&] {
        QCoreApplication::processEvents();
        const QModelIndexList rows = view->selectionModel()->selectedRows();
        return rows.isEmpty() ? 0 : rows.front().row() + 1;
    };
    const auto scrolled = [&] {
        wheel(*view->viewport());
        return view->verticalScrollBar()->value() > 0;
    };
    grid.showRows(std::make_shared<Numbers>(100));
    enter(sample().Text2);
    EXPECT_FALSE(scrolled()) << "the wheel beside the focus";
    enter(grid);
    EXPECT_EQ(lit(), 0);
    for (const int row : {1, 2}) {
        press(grid, Qt::Key_Space);
        EXPECT_EQ(sample().events.back(), u"Grid%1"_s.arg(row));
        EXPECT_EQ(lit(), row);
        press(grid, Qt::Key_Down);
    }
    EXPECT_TRUE(scrolled());
    grid.setTextMatrix(50, 0, u"x"_s);
    EXPECT_EQ(lit(), 3) << "a change elsewhere leaves the choice";
    grid.showRows(std::make_shared<Numbers>(3));
    EXPECT_EQ(lit(), 0);
    grid.setRow(3);
    EXPECT_EQ(lit(), 3);
    grid.setRow(1);
    grid.setRows(2);
    EXPECT_EQ(lit(), 0) << "about to be filled anew";
    grid.showRows(std::make_shared<Numbers>(0));
    EXPECT_EQ(grid.Row() + lit(), 0);
    EXPECT_THROW(grid.setRows(0), RuntimeError);
    sample().events.clear();
    press(grid, Qt::Key_Space);
    EXPECT_EQ(sample().events, QStringList()) << "no row to click on";
}

TEST_F(ControlsTest, RowsThatAreShownBecomePlainWhenTheyChange)
{
    FlexGrid& grid = sample().MSFlexGrid1;
    grid.showRows(std::make_shared<Numbers>(2));
    grid.setTextMatrix(2, 0, u"x"_s);
    EXPECT_EQ(gridRows(grid), (QStringList{u"10|11"_s, u"x|21"_s}));
    for (const auto& [count, row] : {std::pair(1, 0), {3, 1}}) {
        grid.setRows(count);
        EXPECT_EQ(grid.Row(), row);
    }
    EXPECT_EQ(gridRows(grid), (QStringList{u"|"_s, u"|"_s}));
}

} // namespace
