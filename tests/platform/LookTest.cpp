#include "Look.h"

#include "Controls.h"
#include "FormTest.h"
#include "PlatformTest.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>

TEST(Look, DisabledLockedAndOpenStandApartWithoutColours)
{
    const auto off = [](QPalette::ColorRole role) {
        return look::palette().color(QPalette::Disabled, role);
    };
    const auto on = [](QPalette::ColorRole role) { return look::palette().color(role); };
    for (const auto& [text, ground] : {std::pair(QPalette::Text, QPalette::Base),
                                       {QPalette::WindowText, QPalette::Window},
                                       {QPalette::ButtonText, QPalette::Button},
                                       {QPalette::Text, QPalette::Window}}) {
        EXPECT_GE(look::contrast(off(text), off(ground)), 3);
        EXPECT_GE(look::contrast(on(text), on(ground)), 7);
        EXPECT_GE(look::contrast(on(text), off(text)), 2) << "dimmed all the same";
        // The frame of the focus, and the edge of an open box.
        for (const QPalette::ColorRole line : {QPalette::Highlight, QPalette::Mid})
            EXPECT_GE(look::contrast(on(line), on(ground)), 3);
    }
    EXPECT_GE(look::contrast(look::lockedGround(), on(QPalette::Base)), 1.3);
    EXPECT_GE(look::contrast(look::lockedGround(), on(QPalette::Text)), 7);
    EXPECT_GE(look::contrast(on(QPalette::Highlight), on(QPalette::HighlightedText)), 4.5);
}

TEST(Look, WhereTheKeyboardIsHasAFrameOfTwoPixels)
{
    QWidget window;
    stack(window, {{{}, new QLineEdit},
                   {{}, new QPlainTextEdit},
                   {{}, new QComboBox},
                   {{}, new QTableView},
                   {{}, new QPushButton(u"x"_s)}});
    window.show();
    window.activateWindow();
    QCoreApplication::processEvents();
    for (QWidget* widget : window.findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        for (const int width : {2, 0}) { // by the mouse, too
            width == 2 ? widget->setFocus(Qt::MouseFocusReason) : widget->clearFocus();
            const QImage picture = widget->grab().toImage();
            int found = 0;
            for (int x = 0; x < picture.width() / 4; ++x)
                found += picture.pixelColor(x, picture.height() / 2) ==
                         look::palette().color(QPalette::Highlight);
            EXPECT_EQ(found, width) << widget->metaObject()->className();
        }
}
