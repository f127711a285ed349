#include "FormTest.h"
#include "PlatformTest.h"

#include <QApplication>
#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QScreen>
#include <QStandardPaths>
#include <QTableView>

namespace {

QSize drawn(420, 360);

std::unique_ptr<QWidget> makeBoxes()
{
    auto window = windowOf({{u"Text1"_s, new QLineEdit},
                            {u"MSFlexGrid1"_s, with("cols", 3, new QTableView)},
                            {u"Text2"_s, new QLineEdit}});
    window->setMinimumSize(400, 300);
    window->resize(drawn);
    return window;
}

class Boxes : public Form
{
public:
    static constexpr char Name[] = "Boxes";
    explicit Boxes(const QString& name = u"Boxes"_s) : Form(name, &makeBoxes) {}
    TextBox Text1{this, u"Text1"_s};
    TextBox Text2{this, u"Text2"_s};
    FlexGrid MSFlexGrid1{this, u"MSFlexGrid1"_s};

protected:
    void Form_Load() override
    {
        for (const int column : {0, 1, 2})
            MSFlexGrid1.setColWidth(column, column == 0 ? 1500 : 750);
    }
};

struct Above : Boxes
{
    static constexpr char Name[] = "Above";
    Above() : Boxes(u"Above"_s) {}
};

class WindowPlace : public FormTest
{
protected:
    WindowPlace()
    {
        addForm<Boxes>();
        addForm<Above>();
        boxes().show();
        QCoreApplication::processEvents();
    }

    static Boxes& boxes() { return form<Boxes>(); }
    static QWidget& window() { return *boxes().window(); }
    static QHeaderView& header()
    {
        return *qobject_cast<QTableView*>(boxes().MSFlexGrid1.widget())->horizontalHeader();
    }
    static QString settings()
    {
        return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
               u"/vorbelo/janelas.ini"_s;
    }
    static void resize(int width, int height)
    {
        window().resize(width, height);
        QCoreApplication::processEvents();
    }
    static void closeAndShow()
    {
        boxes().unload();
        boxes().show();
        QCoreApplication::processEvents();
    }
};

} // namespace

TEST_F(WindowPlace, BelowTheSizeDrawnItScrollsToWhatHasTheFocus)
{
    resize(250, 150);
    const auto isInView = [](const TextBox& box) {
        return box.widget()->visibleRegion().boundingRect().height() == box.widget()->height();
    };
    for (const bool second : {true, false}) {
        enter(second ? boxes().Text2 : boxes().Text1);
        EXPECT_EQ(isInView(boxes().Text2), second);
        EXPECT_EQ(isInView(boxes().Text1), !second);
    }
}

TEST_F(WindowPlace, AboveItTheWidestColumnTakesTheRoom)
{
    const int narrow = header().sectionSize(1);
    resize(700, 400);
    EXPECT_EQ(header().length(), header().viewport()->width());
    EXPECT_EQ(header().sectionSize(1), narrow);
}

TEST_F(WindowPlace, ItOpensWholeOnTheScreen)
{
    const QRect screen = window().screen()->availableGeometry();
    resize(200, 150);
    window().move(0, 0);
    form<Above>().show(); // over its middle
    EXPECT_TRUE(screen.contains(form<Above>().window()->geometry()));
    form<Above>().unload();
    boxes().unload();
    QFile::remove(settings());
    const QScopedValueRollback larger(drawn, QSize(3000, 2000));
    boxes().show();
    EXPECT_TRUE(screen.contains(window().geometry()));
}

TEST_F(WindowPlace, SizeAndColumnsComeBackAndAlwaysOnAScreen)
{
    closeAndShow();
    EXPECT_EQ(window().size(), QSize(420, 360)) << "untouched it stays as drawn";
    window().resize(500, 450);
    window().move(100, 60);
    header().resizeSection(1, 77);
    closeAndShow();
    EXPECT_EQ(window().size(), QSize(500, 450));
    EXPECT_EQ(window().pos(), QPoint(100, 60));
    EXPECT_EQ(header().sectionSize(1), 77);

    const QRect screen = window().screen()->availableGeometry();
    window().resize(3000, 2000);
    window().move(-2500, 5000);
    closeAndShow();
    EXPECT_TRUE(screen.contains(window().geometry()));

    boxes().unload();
    QFile file(settings());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("[Boxes]\nlugar=@ByteArray(damaged)\ncolunas_MSFlexGrid1=-5, x, 9999999\n");
    file.close();
    boxes().show();
    EXPECT_EQ(window().size(), QSize(420, 360));
    EXPECT_GT(header().sectionSize(1), 10);
}
