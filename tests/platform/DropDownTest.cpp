#include "FormTest.h"
#include "PlatformTest.h"

#include "HostPaths.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QTest>

#include <ctime>

namespace {

std::unique_ptr<QWidget> listsWindow()
{
    return windowOf({{u"Text1"_s, new QLineEdit},
                     {u"Combo1_1"_s, new QComboBox},
                     {u"Combo1_2"_s, new QComboBox},
                     {u"Drive1"_s, new QComboBox}});
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
};

TEST_F(DropDownTest, ATextThatIsSetOrTypedLeavesNoEntryChosen)
{
    EXPECT_EQ(combo().listIndex(), -1) << "filling picks none";
    for (const int index : {1, -1, 1})
        index < 0 ? combo().setText({}) : combo().setListIndex(index);
    EXPECT_EQ(lists().taken(), (QStringList{u"Change Tela"_s, u"Click Tela"_s, u"Change "_s,
                                            u"Change Tela"_s, u"Click Tela"_s}));
    enter(combo());
    QTest::keyClick(&stock(), Qt::Key_End);
    QTest::keyClick(&stock(), Qt::Key_S);
    EXPECT_EQ(combo().text(), u"Telas"_s);
    EXPECT_EQ(combo().listIndex(), -1);
    QTest::keyClick(&stock(), Qt::Key_Backspace);
    lists().taken();
    combo().setListIndex(1);
    EXPECT_EQ(lists().taken(), QStringList{u"Click Tela"_s}) << "the text stood there already";
}

TEST_F(DropDownTest, EntriesMayBeEqualAndEachCanBePicked)
{
    combo().Clear();
    for (const int index : {0, 0, 1, 3})
        combo().AddItem(index == 1 ? u"b"_s : u"a"_s, index);
    combo().setListIndex(2);
    lists().taken();
    combo().setListIndex(3);
    EXPECT_EQ(lists().taken(), QStringList{u"Click a"_s});
    EXPECT_EQ(combo().list(1) + QString::number(combo().listIndex()), u"b3"_s);
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
    combo().setListIndex(0);
    wheel(stock());
    EXPECT_EQ(combo().listIndex(), 0) << "the focus is elsewhere";
    enter(combo());
    wheel(stock());
    EXPECT_EQ(combo().listIndex(), 1);
    combo().setLocked(true);
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
    combo().setLocked(false);
    QTest::mouseClick(&stock(), Qt::LeftButton, {}, QPoint(stock().width() - 4, 4));
    EXPECT_TRUE(stock().view()->isVisible());
    stock().hidePopup();
}

TEST_F(DropDownTest, LongListsShareTheirEntriesAndOpenAtOnce)
{
    const auto parts = std::make_shared<std::vector<QString>>(50'000, u"Peça de reposição"_s);
    const std::clock_t before = std::clock();
    for (const int list : {1, 2})
        lists().Combo1(list).setEntries(parts);
    stock().showPopup();
    QCoreApplication::processEvents();
    // Copying one list alone, or measuring its widths, takes longer.
    EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 10);
    EXPECT_EQ(parts.use_count(), 1 + 2);
    EXPECT_EQ(combo().listIndex(), -1) << "the first can be picked";
    stock().hidePopup();
    combo().AddItem(u"minha"_s, 0);
    EXPECT_EQ(combo().list(1), parts->front());
    EXPECT_EQ(lists().Combo1(2).list(0), parts->front());
    combo().setListIndex(0);
    combo().Clear();
    EXPECT_EQ(combo().text() + QString::number(combo().listCount()), u"0"_s);
}

TEST_F(DropDownTest, DriveListKnowsTheMappedLetters)
{
    const QString program = QFileInfo(folder()).canonicalFilePath();
    QDir().mkpath(program + u"/unidades"_s);
    for (const auto& [letter, target] : {std::pair(u"/E:"_s, u"/"_s),
                                         {u"/g:"_s, u"/away"_s},
                                         {u"/f:"_s, QFileInfo(program).path()}})
        QFile::link(target, program + u"/unidades"_s + letter);
    lists().unload();
    setApplicationFolder(program);
    DriveListBox& drive = lists().Drive1;
    EXPECT_EQ(drive.drive(), u"f:"_s) << "the program stands there";
    lists().show();
    enter(drive);
    QTest::keyClick(drive.widget(), Qt::Key_Up);
    EXPECT_EQ(lists().taken(), QStringList{u"e:"_s});
}

} // namespace
