#include "FormTest.h"

#include "HostPaths.h"
#include "RuntimeError.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace {

constexpr int Lists = 11;

std::unique_ptr<QWidget> listsWindow()
{
    auto window = std::make_unique<QWidget>();
    auto* layout = new QVBoxLayout(window.get());
    auto* before = new QLineEdit;
    before->setObjectName(u"Text1"_s);
    layout->addWidget(before);
    for (int index = 1; index <= Lists; ++index) {
        auto* combo = new QComboBox;
        combo->setEditable(true);
        combo->setObjectName(u"Combo1_"_s + QString::number(index));
        layout->addWidget(combo);
    }
    auto* drives = new QComboBox;
    drives->setObjectName(u"Drive1"_s);
    layout->addWidget(drives);
    return window;
}

class ListForm : public Form
{
public:
    static constexpr char Name[] = "ListForm";
    ListForm() : Form(u"ListForm"_s, &listsWindow)
    {
        Combo1.onClick([this](int) { events << u"Click "_s + combo().text(); });
        Combo1.onChange([this](int) { events << u"Change "_s + combo().text(); });
        Combo1.onGotFocus([this](int) { events << u"Got"_s; });
        Combo1.onLostFocus([this](int) { events << u"Lost"_s; });
        Combo1.onKeyPress([this](int, int& KeyAscii) {
            events << u"Key %1"_s.arg(KeyAscii);
            if (KeyAscii == 'x')
                KeyAscii = 0;
        });
        Drive1.onChange([this] { events << Drive1.drive(); });
    }
    ComboBox& combo() { return Combo1(1); }
    QStringList taken() { return std::exchange(events, {}); }

    TextBox Text1{this, u"Text1"_s};
    ControlArray<ComboBox> Combo1{this, u"Combo1"_s};
    DriveListBox Drive1{this, u"Drive1"_s};
    QStringList events;
};

class DropDownTest : public FormTest
{
protected:
    DropDownTest()
    {
        addForm<ListForm>();
        lists().show();
        for (const auto* text : {u"Antena", u"Tela", u"Tela lcd", u"Tampa"})
            combo().AddItem(QString::fromUtf16(text), combo().listCount());
        lists().taken();
    }
    static ListForm& lists() { return form<ListForm>(); }
    static ComboBox& combo() { return lists().combo(); }
    static QComboBox& stock() { return *qobject_cast<QComboBox*>(combo().widget()); }
    static void wheel(QWidget& over)
    {
        QWheelEvent event(QPointF(4, 4), over.mapToGlobal(QPointF(4, 4)), QPoint(), {0, -120},
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&over, &event);
    }
};

TEST_F(DropDownTest, ATextThatIsSetOrTypedLeavesNoEntryChosen)
{
    EXPECT_EQ(combo().listIndex(), -1) << "filling picks none";
    combo().setListIndex(1);
    EXPECT_EQ(lists().taken(), (QStringList{u"Change Tela"_s, u"Click Tela"_s}));
    combo().setText({});
    EXPECT_EQ(combo().listIndex(), -1);
    combo().setListIndex(1);
    EXPECT_EQ(lists().taken(), (QStringList{u"Change "_s, u"Change Tela"_s, u"Click Tela"_s}));
    enter(combo());
    QTest::keyClick(&stock(), Qt::Key_End);
    QTest::keyClick(&stock(), Qt::Key_S);
    EXPECT_EQ(combo().text(), u"Telas"_s);
    EXPECT_EQ(combo().listIndex(), -1);
    QTest::keyClick(&stock(), Qt::Key_Backspace);
    lists().taken();
    combo().setListIndex(1);
    EXPECT_EQ(lists().taken(), QStringList{u"Click Tela"_s}) << "the text stood there already";
    EXPECT_THROW(combo().setListIndex(4), RuntimeError);
    EXPECT_THROW(combo().AddItem(u"z"_s, 5), RuntimeError);
}

TEST_F(DropDownTest, EntriesMayBeEqualAndEachCanBePicked)
{
    combo().Clear();
    for (int index = 0; index < 3; ++index)
        for (int twice = 0; twice < 2; ++twice)
            combo().AddItem(QString(QChar(u'a' + index)), index);
    QStringList read;
    for (int index = 0; index < combo().listCount(); ++index)
        read << combo().list(index);
    EXPECT_EQ(read.join(QString()), u"abccba"_s);
    combo().setListIndex(2);
    lists().taken();
    combo().setListIndex(3);
    EXPECT_EQ(lists().taken(), QStringList{u"Click c"_s});
    EXPECT_EQ(combo().listIndex(), 3);
}

TEST_F(DropDownTest, FirstLettersPickFromTheOpenListAndFromTheClosedOne)
{
    enter(combo());
    lists().taken();
    QTest::keyClick(&stock(), Qt::Key_F4);
    ASSERT_TRUE(stock().view()->isVisible());
    QTest::keyClicks(stock().view(), u"tela l"_s);
    QTest::keyClick(stock().view(), Qt::Key_Return);
    EXPECT_EQ(lists().taken(), (QStringList{u"Change Tela lcd"_s, u"Click Tela lcd"_s}));

    combo().setText(u"tA"_s);
    QTest::keyClick(&stock(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(stock().view()->currentIndex().row(), 3) << "opened at what was typed";
    QTest::keyClick(stock().view(), Qt::Key_Escape);
    lists().taken();
    QTest::keyClick(&stock(), Qt::Key_Down);
    EXPECT_EQ(combo().text(), u"Tampa"_s) << "the first that begins so";
    QTest::keyClick(&stock(), Qt::Key_Up);
    EXPECT_EQ(lists().taken().back(), u"Click Tela lcd"_s);
}

TEST_F(DropDownTest, EventsOfItsTextBoxAreItsOwn)
{
    enter(lists().Text1);
    enter(combo());
    QTest::keyClicks(&stock(), u"ax"_s);
    enter(lists().Text1);
    EXPECT_EQ(lists().taken(),
              (QStringList{u"Got"_s, u"Key 97"_s, u"Change a"_s, u"Key 120"_s, u"Lost"_s}));
}

TEST_F(DropDownTest, LockedOpensAndChangesNothing)
{
    combo().setListIndex(1);
    combo().setLocked(true);
    enter(combo());
    lists().taken();
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageDown, Qt::Key_F4, Qt::Key_A,
                              Qt::Key_Delete, Qt::Key_Return})
        QTest::keyClick(&stock(), key);
    QTest::keyClick(&stock(), Qt::Key_Down, Qt::AltModifier);
    stock().lineEdit()->paste();
    QTest::mouseClick(&stock(), Qt::LeftButton, {}, QPoint(stock().width() - 4, 4));
    wheel(stock());
    EXPECT_EQ(lists().taken(), (QStringList{u"Key 97"_s, u"Key 13"_s}));
    EXPECT_FALSE(stock().view()->isVisible());
    EXPECT_EQ(combo().listIndex(), 1);
    combo().setText(u"do banco"_s);
    EXPECT_EQ(combo().text(), u"do banco"_s) << "code may assign";
    combo().setLocked(false);
    QTest::mouseClick(&stock(), Qt::LeftButton, {}, QPoint(stock().width() - 4, 4));
    EXPECT_TRUE(stock().view()->isVisible());
    stock().hidePopup();
}

TEST_F(DropDownTest, TheWheelPicksOnlyWhereTheFocusIs)
{
    combo().setListIndex(0);
    enter(lists().Text1);
    wheel(stock());
    EXPECT_EQ(combo().listIndex(), 0);
    enter(combo());
    wheel(stock());
    EXPECT_EQ(combo().listIndex(), 1);
}

TEST_F(DropDownTest, ElevenLongListsShareTheirEntriesAndOpenAtOnce)
{
    auto parts = std::make_shared<std::vector<QString>>();
    for (int part = 0; part < 50'000; ++part)
        parts->push_back(u"Peça %1 de reposição"_s.arg(part));
    QElapsedTimer clock;
    clock.start();
    for (int list = 1; list <= Lists; ++list)
        lists().Combo1(list).setEntries(parts);
    stock().showPopup();
    QCoreApplication::processEvents();
    // Copying one list alone, or measuring its widths, takes longer.
    EXPECT_LT(clock.elapsed(), 100);
    EXPECT_EQ(parts.use_count(), 1 + Lists);
    EXPECT_EQ(combo().listIndex(), -1) << "the first can be picked";
    stock().hidePopup();
    EXPECT_EQ(lists().taken(), QStringList());
    combo().AddItem(u"minha"_s, 0);
    EXPECT_EQ(combo().list(1), parts->front());
    EXPECT_EQ(lists().Combo1(2).list(0), parts->front());
    combo().setListIndex(0);
    combo().Clear();
    EXPECT_EQ(combo().listCount(), 0);
    EXPECT_EQ(combo().text(), QString());
}

TEST_F(DropDownTest, DriveListKnowsTheMappedLetters)
{
    const QString drives = folder() + u"/unidades"_s;
    QDir().mkpath(drives);
    QDir().mkpath(folder() + u"/pen"_s);
    QFile::link(folder() + u"/pen"_s, drives + u"/E:"_s);
    QFile::link(folder() + u"/away"_s, drives + u"/g:"_s);
    QFile::link(QFileInfo(folder()).canonicalPath(), drives + u"/f:"_s);
    lists().unload();
    setApplicationFolder(QFileInfo(folder()).canonicalFilePath());
    DriveListBox& drive = lists().Drive1;
    EXPECT_EQ(drive.drive(), u"f:"_s) << "the program stands there";
    drive.setDrive(u"Even"_s);
    EXPECT_EQ(lists().taken(), QStringList{u"e:"_s});
    for (const QString& away : {u"g:"_s, u"z:"_s, QString(), u"1"_s})
        EXPECT_THROW(drive.setDrive(away), RuntimeError) << away.toStdString();
    EXPECT_EQ(drive.drive(), u"e:"_s);
    lists().show();
    enter(drive);
    QTest::keyClick(drive.widget(), Qt::Key_Down);
    EXPECT_EQ(lists().taken().back(), u"f:"_s);
}

} // namespace
