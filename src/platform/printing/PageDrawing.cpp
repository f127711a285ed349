#include "PageDrawing.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>

using namespace Qt::Literals::StringLiterals;

namespace {

// From the upper edge of the text cell to the base line, as the font's own table has it.
constexpr double Ascent = 0.905;

// What passes the right edge by no more than this is drawn narrower, so that a sheet never shows an
// order's number without its last digit.
constexpr double Narrowest = 0.8;

// The characters that begin on the paper. A rule of some hundred characters is asked for wherever a
// full line is meant, and what lies beyond the edge must not stay in the file as hidden text.
QString visiblePart(const QString& text, double room, const QFontMetricsF& metrics)
{
    qsizetype shown = 0;
    qsizetype beyond = text.size();
    while (shown < beyond) {
        const qsizetype middle = (shown + beyond) / 2;
        if (metrics.horizontalAdvance(text.left(middle)) < room)
            shown = middle + 1;
        else
            beyond = middle;
    }
    return text.left(shown);
}

void drawRun(QPainter& painter, const TextRun& run)
{
    const QFont font = pageFont(run.size, run.bold);
    const QFontMetricsF metrics(font);
    const double room = Printer::Width - run.x;
    const double width = metrics.horizontalAdvance(run.text);
    const QPointF start(run.x, run.y + Ascent * run.size * sheet::TwipsPerPoint);
    painter.setFont(font);
    if (width > room && width * Narrowest <= room) {
        painter.save();
        painter.translate(start);
        painter.scale(room / width, 1);
        painter.drawText(QPointF(), run.text);
        painter.restore();
        return;
    }
    painter.drawText(start, width > room ? visiblePart(run.text, room, metrics) : run.text);
}

} // namespace

QFont pageFont(double points, bool bold)
{
    QFont font;
    font.setFamilies({u"Liberation Sans"_s, u"Arimo"_s, u"Arial"_s, u"Nimbus Sans"_s});
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(qMax(1, qRound(points * sheet::TwipsPerPoint)));
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
    for (const TextRun& run : page)
        drawRun(painter, run);
    painter.restore();
}

bool drawPages(QPagedPaintDevice& device, const std::vector<Page>& pages)
{
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    // The sheet's corner is the origin; where a printer's own margin is wider, its edge is lost.
    painter.scale(device.logicalDpiX() / double(sheet::TwipsPerInch),
                  device.logicalDpiY() / double(sheet::TwipsPerInch));
    for (std::size_t i = 0; i < pages.size(); ++i) {
        if (i > 0 && !device.newPage())
            return false;
        drawPage(painter, pages[i]);
    }
    return painter.end();
}
