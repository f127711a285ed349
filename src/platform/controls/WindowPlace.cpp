#include "WindowPlace.h"

#include "GridColumns.h"

#include <QApplication>
#include <QLayout>
#include <QMainWindow>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QStandardPaths>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

// What the window manager puts around a window, at most.
constexpr QMargins Frame(4, 32, 4, 4);

// The content of a window. What gets the focus is brought into view.
class Page : public QScrollArea
{
public:
    explicit Page(QWidget& window) : QScrollArea(&window)
    {
        setFrameShape(NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setWidgetResizable(true);
        connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
            if (now && widget() && widget()->isAncestorOf(now))
                ensureWidgetVisible(now);
        });
    }

    QSize minimumSizeHint() const override { return {200, 120}; }
    QSize sizeHint() const override
    {
        return widget() ? widget()->sizeHint() : QScrollArea::sizeHint();
    }

    // Down to this size nothing has to scroll; the captions are as long as they get by now.
    QSize takeMinimum()
    {
        const QSize least = drawnMinimum_.expandedTo(widget()->layout()->totalMinimumSize());
        widget()->setMinimumSize(least);
        return least;
    }
    void setDrawnMinimum(const QSize& size) { drawnMinimum_ = size; }

    bool isArranged() const { return arranged_; }
    void setArranged() { arranged_ = true; }

private:
    QSize drawnMinimum_;
    bool arranged_ = false;
};

Page* pageOf(const QWidget& window)
{
    const auto pages = window.findChildren<QScrollArea*>();
    const auto page = std::find_if(pages.begin(), pages.end(),
                                   [](QScrollArea* area) { return dynamic_cast<Page*>(area); });
    return page == pages.end() ? nullptr : static_cast<Page*>(*page);
}

// Only this user's, and apart from the shop's own settings.
QSettings userSettings()
{
    return {QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                u"/vorbelo/janelas.ini"_s,
            QSettings::IniFormat};
}

QString placeKey(const QString& form)
{
    return form + u"/lugar"_s;
}

QString columnsKey(const QString& form, const QTableView& grid)
{
    return form + u"/colunas_"_s + grid.objectName();
}

// The size that the form was drawn with, as far as the screen has room for it and its frame.
QSize drawnSize(const QWidget& window, Page& page, const QScreen& screen)
{
    const QSize least = page.takeMinimum();
    const QSize drawn = window.testAttribute(Qt::WA_Resized) ? window.size() : page.sizeHint();
    const QSize room = screen.availableSize().shrunkBy(Frame);
    QSize size = drawn.expandedTo(least);
    if (room.height() < least.height())
        size.rwidth() += page.verticalScrollBar()->sizeHint().width();
    if (room.width() < least.width())
        size.rheight() += page.horizontalScrollBar()->sizeHint().height();
    return size.boundedTo(room);
}

// Whole on the screen, with room for its frame.
QRect onto(const QScreen& screen, QRect place)
{
    const QRect room = screen.availableGeometry().marginsRemoved(Frame);
    place.setSize(place.size().boundedTo(room.size()));
    place.moveLeft(std::clamp(place.left(), room.left(), room.right() + 1 - place.width()));
    place.moveTop(std::clamp(place.top(), room.top(), room.bottom() + 1 - place.height()));
    return place;
}

// Over the one in use.
void centerOver(QWidget& window, const QWidget* below)
{
    if (!below || !below->isVisible())
        return;
    QRect place(QPoint(0, 0), window.size());
    place.moveCenter(below->geometry().center());
    window.setGeometry(onto(*below->screen(), place));
}

// False where nothing was kept, or what cannot be read, or of a very different screen.
bool restore(QWidget& window, const QByteArray& kept)
{
    if (!window.restoreGeometry(kept))
        return false;
    const QScreen* const screen = QGuiApplication::screenAt(window.geometry().center());
    const QRect place =
        onto(screen ? *screen : *QGuiApplication::primaryScreen(), window.geometry());
    if (!window.isMaximized() && place != window.geometry())
        window.setGeometry(place);
    return true;
}

} // namespace

void windowPlace::makeScrollable(QWidget& window)
{
    auto* const page = new Page(window);
    auto* const main = qobject_cast<QMainWindow*>(&window);
    if (main) {
        QWidget* const content = main->takeCentralWidget();
        page->setWidget(content);
        main->setCentralWidget(page);
        return;
    }
    QLayout* const layout = window.layout();
    if (!layout) {
        delete page;
        return;
    }
    page->setDrawnMinimum(window.minimumSize());
    window.setMinimumSize(0, 0);
    // Inside the window before the controls follow, so that their order of Tab stays.
    auto* const content = new QWidget;
    const QMargins margins = layout->contentsMargins(); // a window's are wider than another's
    page->setWidget(content);
    content->setLayout(layout);
    layout->setContentsMargins(margins);
    const auto others = window.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* other : others)
        if (other != page && !other->isWindow())
            other->setParent(content);
    auto* const frame = new QVBoxLayout(&window);
    frame->setContentsMargins(0, 0, 0, 0);
    frame->addWidget(page);
}

void windowPlace::arrange(const QString& form, QWidget& window, const QWidget* below)
{
    Page* const page = pageOf(window);
    if (!page) {
        window.adjustSize();
        centerOver(window, below);
        return;
    }
    if (page->isArranged())
        return;
    page->setArranged();
    window.resize(drawnSize(window, *page, *(below ? below->screen() : window.screen())));
    const QSettings settings = userSettings();
    if (!restore(window, settings.value(placeKey(form)).toByteArray()))
        centerOver(window, below);
    const auto grids = window.findChildren<QTableView*>();
    for (QTableView* grid : grids)
        GridColumns::keep(*grid, settings.value(columnsKey(form, *grid)).toStringList());
}

void windowPlace::remember(const QString& form, const QWidget& window)
{
    const Page* const page = pageOf(window);
    if (!page || !page->isArranged())
        return;
    QSettings settings = userSettings();
    settings.setValue(placeKey(form), window.saveGeometry());
    const auto grids = window.findChildren<QTableView*>();
    for (const QTableView* grid : grids)
        if (const std::optional<QStringList> widths = GridColumns::changed(*grid))
            settings.setValue(columnsKey(form, *grid), *widths);
}
