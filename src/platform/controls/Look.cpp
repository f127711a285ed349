#include "Look.h"

#include "Controls.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QProxyStyle>
#include <QPushButton>
#include <QStyleOption>
#include <QTableView>

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int FocusWidth = 2;

// Drawn inside the rectangle, over what is there.
void drawFrame(QPainter& painter, const QRect& place, const QColor& color, int width)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    const QRegion inside(place.adjusted(width, width, -width, -width));
    for (const QRect& side : QRegion(place).subtracted(inside))
        painter.drawRect(side);
    painter.restore();
}

bool isLocked(const QWidget* widget)
{
    const auto* line = qobject_cast<const QLineEdit*>(widget);
    const auto* several = qobject_cast<const QPlainTextEdit*>(widget);
    const auto* combo = qobject_cast<const QComboBox*>(widget);
    if (combo && combo->isEditable())
        line = combo->lineEdit();
    return (line && line->isReadOnly()) || (several && several->isReadOnly());
}

class QuietStyle : public QProxyStyle
{
public:
    QuietStyle() : QProxyStyle(u"Fusion"_s) {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override
    {
        return hint == SH_LineEdit_PasswordCharacter
                   ? u'*'
                   : QProxyStyle::styleHint(hint, option, widget, result);
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        switch (element) {
        case PE_FrameFocusRect:
            if (!qobject_cast<const QPushButton*>(widget))
                drawFocus(*option, *painter);
            return;
        case PE_FrameLineEdit:
        case PE_Frame:
            QProxyStyle::drawPrimitive(element, option, painter, widget);
            if (qobject_cast<const QLineEdit*>(widget) ||
                qobject_cast<const QAbstractScrollArea*>(widget))
                drawEdge(*option, *painter, widget);
            return;
        default: QProxyStyle::drawPrimitive(element, option, painter, widget);
        }
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override
    {
        QProxyStyle::drawControl(element, option, painter, widget);
        if (element == CE_PushButton && (option->state & State_HasFocus))
            drawFrame(*painter, option->rect.adjusted(1, 1, -1, -1),
                      option->palette.color(QPalette::Highlight), FocusWidth);
    }

    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override
    {
        // Room for the frame of the focus around what scrolls.
        return metric == PM_DefaultFrameWidth && qobject_cast<const QAbstractScrollArea*>(widget)
                   ? FocusWidth
                   : QProxyStyle::pixelMetric(metric, option, widget);
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override
    {
        const auto* group = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
        if (control == CC_GroupBox && group && widget && Frame::shutsOff(*widget)) {
            drawShut(*group, *painter, *widget);
            return;
        }
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        if (control == CC_ComboBox || control == CC_SpinBox)
            drawEdge(*option, *painter, widget);
    }

private:
    // What stands in it keeps its own look.
    void drawShut(QStyleOptionGroupBox group, QPainter& painter, const QWidget& widget) const
    {
        group.state &= ~State_Enabled;
        group.palette.setCurrentColorGroup(QPalette::Disabled);
        group.textColor = group.palette.color(QPalette::WindowText);
        QProxyStyle::drawComplexControl(CC_GroupBox, &group, &painter, &widget);
    }

    // The stock style shows it only after a Tab, and thinly.
    static void drawFocus(const QStyleOption& option, QPainter& painter)
    {
        const bool onDark = option.state & State_Selected;
        drawFrame(painter, option.rect,
                  option.palette.color(onDark ? QPalette::HighlightedText : QPalette::Highlight),
                  onDark ? 1 : FocusWidth);
    }

    // What takes typing has an edge that stands out; what is locked or off has a faint one.
    static void drawEdge(const QStyleOption& option, QPainter& painter, const QWidget* widget)
    {
        const QPalette& colors = option.palette;
        if ((option.state & State_HasFocus) && (option.state & State_Enabled))
            drawFrame(painter, option.rect, colors.color(QPalette::Highlight), FocusWidth);
        else if ((option.state & State_Enabled) && !isLocked(widget))
            drawFrame(painter, option.rect, colors.color(QPalette::Mid), 1);
    }
};

// A part of a colour as it adds to the light of the screen.
double light(double part)
{
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color)
{
    return 0.2126 * light(color.redF()) + 0.7152 * light(color.greenF()) +
           0.0722 * light(color.blueF());
}

} // namespace

QStyle* look::makeStyle()
{
    return new QuietStyle;
}

QPalette look::palette()
{
    const QColor ink(0x1c, 0x24, 0x2c);
    const QColor faint(0x6b, 0x74, 0x7e);
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0xf3, 0xf4, 0xf6));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xf1, 0xf5, 0xfa));
    palette.setColor(QPalette::Text, ink);
    palette.setColor(QPalette::WindowText, ink);
    palette.setColor(QPalette::ButtonText, ink);
    palette.setColor(QPalette::Button, QColor(0xe6, 0xea, 0xef));
    palette.setColor(QPalette::Mid, QColor(0x76, 0x80, 0x8a)); // the edge of an open box
    palette.setColor(QPalette::Highlight, QColor(0x2b, 0x6c, 0xb0));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, QColor(0xff, 0xfb, 0xe6));
    palette.setColor(QPalette::ToolTipText, ink);
    for (const QPalette::ColorRole role :
         {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    palette.setColor(QPalette::Disabled, QPalette::Base, QColor(0xec, 0xee, 0xf1));
    return palette;
}

QColor look::lockedGround()
{
    return {0xd3, 0xd9, 0xe1};
}

double look::contrast(const QColor& one, const QColor& other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}
