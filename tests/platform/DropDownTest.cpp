#include "FormTest.h"
#include "PlatformTest.h"

#include "HostPaths.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDateEdit>
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
                     {u"Drive1"_s, new QComboBox},
                     {u"DTPicker1"_s, new QDateEdit(QDate(2026, 3, 9))}});
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
    DTPicker DTPicker1{this, u"DTPicker1"_s};
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
    enter(lists().Text1);
    EXPECT_FALSE(lists().taken().contains(u"Click Tela"_s)) << "typing is no click";
    combo().setListIndex(1);
    EXPECT_EQ(lists().taken(), QStringList{u"Click Tela"_s}) << "the text stood there already";
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

TEST_F(DropDownTest, LongListsShareTheirEntriesUntilOneIsChanged)
{
    const auto parts = std::make_shared<std::vector<QString>>(2, u"Peça"_s);
    for (const int list : {1, 2})
        lists().Combo1(list).setEntries(parts);
    EXPECT_EQ(parts.use_count(), 1 + 2);
    EXPECT_EQ(combo().listIndex(), -1);
    combo().AddItem(u"minha"_s, 0);
    EXPECT_EQ(combo().list(0) + lists().Combo1(2).list(0), u"minhaPeça"_s);
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

TEST_F(DropDownTest, DriveListKnowsTheMappedLetters)
{
    const QString program = QFileInfo(folder()).canonicalFilePath();
    QDir(program).mkdir(u"unidades"_s);
    QFile::link(u"/"_s, program + u"/unidades/E:"_s);
    QFile::link(QFileInfo(program).path(), program + u"/unidades/f:"_s);
    lists().unload();
    setApplicationFolder(program);
    lists().show();
    EXPECT_EQ(lists().Drive1.drive(), u"f:"_s) << "the program stands there";
    enter(lists().Drive1);
    QTest::keyClick(lists().Drive1.widget(), Qt::Key_Up);
    EXPECT_EQ(lists().taken(), QStringList{u"e:"_s});
    // The wheel is another's while the focus is.
    enter(lists().Text1);
    wheel(*lists().Drive1.widget());
    wheel(*lists().DTPicker1.widget());
    EXPECT_EQ(lists().Drive1.drive(), u"e:"_s);
    EXPECT_EQ(lists().DTPicker1.value(), QDate(2026, 3, 9));
}

} // namespace
