#include "Look.h"

#include "Controls.h"
#include "FormTest.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace {

// How many pixels deep the colour goes from the left edge, at half the height.
int edge(const QImage& picture, const QColor& color)
{
    int width = 0;
    int x = 0;
    const int y = picture.height() / 2;
    while (x < picture.width() && width == 0)
        if (picture.pixelColor(x++, y) == color)
            while (picture.pixelColor(x - 1 + width, y) == color)
                ++width;
    return width;
}

} // namespace

TEST(Look, DisabledLockedAndOpenStandApartWithoutColours)
{
    const QPalette palette = look::palette();
    const auto off = [&](QPalette::ColorRole role) {
        return palette.color(QPalette::Disabled, role);
    };
    const auto on = [&](QPalette::ColorRole role) { return palette.color(QPalette::Active, role); };
    for (const auto& [text, ground] : {std::pair(QPalette::Text, QPalette::Base),
                                       {QPalette::WindowText, QPalette::Window},
                                       {QPalette::ButtonText, QPalette::Button},
                                       {QPalette::Text, QPalette::Window}}) {
        EXPECT_GE(look::contrast(off(text), off(ground)), 3);
        EXPECT_GE(look::contrast(on(text), on(ground)), 7);
        EXPECT_GE(look::contrast(on(text), off(text)), 2) << "dimmed all the same";
    }
    EXPECT_GE(look::contrast(look::lockedGround(), on(QPalette::Base)), 1.3);
    EXPECT_GE(look::contrast(look::lockedGround(), on(QPalette::Text)), 7);
    for (const QPalette::ColorRole ground : {QPalette::Base, QPalette::Window, QPalette::Button}) {
        EXPECT_GE(look::contrast(on(QPalette::Highlight), on(ground)), 3)
            << "the frame of the focus";
        EXPECT_GE(look::contrast(on(QPalette::Mid), on(ground)), 3) << "the edge of an open box";
    }
    EXPECT_GE(look::contrast(on(QPalette::Highlight), on(QPalette::HighlightedText)), 4.5);
    EXPECT_DOUBLE_EQ(look::contrast(Qt::black, Qt::white), 21);
}

TEST(Look, WhereTheKeyboardIsHasAFrameOfTwoPixels)
{
    QWidget window;
    QVBoxLayout column(&window);
    const QList<QWidget*> widgets{new QLineEdit, new QPlainTextEdit, new QComboBox, new QTableView,
                                  new QPushButton(u"x"_s)};
    for (QWidget* widget : widgets)
        column.addWidget(widget);
    window.show();
    window.activateWindow();
    QCoreApplication::processEvents();
    const QColor focus = look::palette().color(QPalette::Highlight);
    for (QWidget* widget : widgets) {
        // By the mouse, too.
        widget->setFocus(Qt::MouseFocusReason);
        ASSERT_TRUE(widget->hasFocus());
        EXPECT_EQ(edge(widget->grab().toImage(), focus), 2) << widget->metaObject()->className();
        widget->clearFocus();
        EXPECT_EQ(edge(widget->grab().toImage(), focus), 0) << widget->metaObject()->className();
    }
}
