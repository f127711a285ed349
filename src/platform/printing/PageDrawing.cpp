#include "PageDrawing.h"

#include <QFontMetricsF>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr double twipsPerPoint = 20;
// From the upper edge of the text cell to the base line, as the font's own table has it.
constexpr double ascent = 0.905;

// The characters that begin on the paper. A rule of some hundred characters is asked for wherever a
// full line is meant, and what lies beyond the edge must not stay in the file as hidden text.
QString visiblePart(const TextRun& run, const QFontMetricsF& metrics)
{
    const double room = Printer::Width - run.x;
    if (metrics.horizontalAdvance(run.text) <= room)
        return run.text;
    qsizetype shown = 0;
    qsizetype beyond = run.text.size();
    while (shown < beyond) {
        const qsizetype middle = (shown + beyond) / 2;
        if (metrics.horizontalAdvance(run.text.left(middle)) < room)
            shown = middle + 1;
        else
            beyond = middle;
    }
    return run.text.left(shown);
}

} // namespace

QFont pageFont(double points, bool bold)
{
    QFont font;
    font.setFamilies({u"Liberation Sans"_s, u"Arimo"_s, u"Arial"_s, u"Nimbus Sans"_s});
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(qMax(1, qRound(points * twipsPerPoint)));
    font.setBold(bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setKerning(false);
    return font;
}

double pageTextWidth(const QString& text, double points, bool bold)
{
    return QFontMetricsF(pageFont(points, bold)).horizontalAdvance(text);
}

void drawPage(QPainter& painter, const Page& page)
{
    painter.save();
    painter.translate(sheet::Left, sheet::Top);
    painter.setClipRect(0, 0, Printer::Width, Printer::Height);
    painter.setPen(Qt::black);
    for (const TextRun& run : page) {
        const QFont font = pageFont(run.size, run.bold);
        painter.setFont(font);
        painter.drawText(QPointF(run.x, run.y + ascent * run.size * twipsPerPoint),
                         visiblePart(run, QFontMetricsF(font)));
    }
    painter.restore();
}
