#include "Printer.h"

#include "Faults.h"
#include "PageDevice.h"
#include "PageDrawing.h"

#include <QStringList>
#include <QtMath>

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

// Arial's measures, in parts of the font size. They are fixed here, since the tables of another
// font would shift the columns and throw what stands in them into the next line.
constexpr double LineRatio = 1.15;
constexpr double AverageRatio = 0.441;
constexpr double BoldAverageRatio = 0.48;

QStringList linesOf(QString text)
{
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    QStringList lines = text.split(u'\n');
    for (QString& line : lines) {
        for (QChar& character : line) {
            if (character < u' ')
                character = u' ';
        }
    }
    return lines;
}

} // namespace

Printer::Printer() = default;

Printer& Printer::instance()
{
    static Printer printer;
    return printer;
}

void Printer::setFontSize(double points)
{
    fontSize_ = points;
}

void Printer::setFontBold(bool bold)
{
    fontBold_ = bold;
}

Printer& Printer::at(int x, int y)
{
    return atX(x).atY(y);
}

Printer& Printer::atX(int x)
{
    x_ = x;
    return *this;
}

Printer& Printer::atY(int y)
{
    y_ = y;
    return *this;
}

void Printer::print(const QString& text)
{
    print({Item(text)});
}

void Printer::print(std::initializer_list<Item> items)
{
    faults::point(faults::Call::Printer);
    beginLine();
    for (const Item& item : items) {
        if (const Tab* const tab = std::get_if<Tab>(&item)) {
            moveTo(*tab);
            continue;
        }
        const QStringList lines = linesOf(std::get<QString>(item));
        for (qsizetype i = 0; i < lines.size(); ++i) {
            if (i > 0) {
                newLine();
                beginLine();
            }
            draw(lines[i]);
        }
    }
    newLine();
}

void Printer::NewPage()
{
    if (pages_.empty())
        pages_.emplace_back();
    pages_.emplace_back();
    x_ = 0;
    y_ = 0;
}

void Printer::EndDoc()
{
    std::vector<Page> pages = std::exchange(pages_, {});
    x_ = 0;
    y_ = 0;
    while (!pages.empty() && pages.back().empty())
        pages.pop_back();
    if (pages.empty())
        return;
    faults::point(faults::Call::Printer);
    if (!device_)
        device_ = std::make_shared<PdfDevice>();
    // The device may wait for the user, who may choose another one meanwhile.
    const std::shared_ptr<PageDevice> device = device_;
    device->put(pages, documentName_);
}

void Printer::setDevice(std::shared_ptr<PageDevice> device)
{
    device_ = std::move(device);
}

void Printer::reset()
{
    *this = Printer();
}

double Printer::lineHeight() const
{
    return LineRatio * fontSize_ * sheet::TwipsPerPoint;
}

double Printer::averageWidth() const
{
    return (fontBold_ ? BoldAverageRatio : AverageRatio) * fontSize_ * sheet::TwipsPerPoint;
}

void Printer::beginLine()
{
    if (pages_.empty())
        pages_.emplace_back();
    // A line taller than the page stands at the top all the same.
    if (y_ > 0 && y_ + lineHeight() > Height) {
        pages_.emplace_back();
        y_ = 0;
    }
}

void Printer::newLine()
{
    x_ = 0;
    y_ += qRound(lineHeight());
}

void Printer::moveTo(Tab tab)
{
    const int columns = qMax(1, qFloor(Width / averageWidth()));
    const int column = qMax(1, tab.column > columns ? tab.column % columns : tab.column);
    const double x = (column - 1) * averageWidth();
    if (x_ > x) {
        newLine();
        beginLine();
    }
    x_ = x;
}

void Printer::draw(const QString& text)
{
    if (text.isEmpty())
        return;
    pages_.back().push_back({qRound(x_), y_, fontSize_, fontBold_, text});
    x_ += pageTextWidth(text, fontSize_, fontBold_);
}
