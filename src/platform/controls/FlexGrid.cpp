#include "Controls.h"

#include "FormWindow.h"
#include "GridModel.h"
#include "GridRows.h"
#include "RuntimeError.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTableView>

#include <algorithm>

namespace {

GridModel* modelOf(const QWidget* widget)
{
    const auto* view = qobject_cast<const QTableView*>(widget);
    return view ? static_cast<GridModel*>(view->model()) : nullptr;
}

void checkCell(const GridModel& model, int row, int col)
{
    if (row < 0 || row >= model.rows() || col < 0 || col >= model.cols())
        throw RuntimeError(RuntimeError::InvalidPropertyIndex);
}

GridModel* makeModel(QTableView& view)
{
    std::vector<int> numberColumns;
    const QString numbers = view.property("numberColumns").toString();
    for (const QString& column : numbers.split(u',', Qt::SkipEmptyParts))
        numberColumns.push_back(column.toInt());
    const int columns = view.property("cols").toInt();
    auto* model = new GridModel(columns > 0 ? columns : 2, std::move(numberColumns), &view);
    model->publish();
    return model;
}

void setLook(QTableView& view)
{
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.setSelectionMode(QAbstractItemView::SingleSelection);
    view.setEditTriggers(QAbstractItemView::NoEditTriggers);
    view.setAlternatingRowColors(true);
    view.setTabKeyNavigation(false);
    view.setWordWrap(false);
    view.setShowGrid(false);
    QSizePolicy policy = view.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    view.setSizePolicy(policy);
    view.verticalHeader()->hide();
    view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view.verticalHeader()->setDefaultSectionSize(view.fontMetrics().height() + 6);
    view.horizontalHeader()->setSectionsClickable(true);
    view.horizontalHeader()->setHighlightSections(false);
    view.horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
}

void showCurrentRow(QTableView& view, const GridModel& model)
{
    const QSignalBlocker quiet(view.selectionModel());
    const int row = model.currentRow() - 1;
    // A row without text is not lit: nothing stands there to be picked.
    if (row < 0 || row >= model.rowCount() || model.isEmptyRow(row + 1))
        return;
    if (model.currentRowIsChosen())
        view.selectRow(row);
    else
        view.selectionModel()->setCurrentIndex(model.index(row, 0), QItemSelectionModel::NoUpdate);
}

} // namespace

int FlexGrid::Rows() const
{
    const GridModel* model = modelOf(widget());
    return model ? model->rows() : 0;
}

void FlexGrid::setRows(int rows)
{
    if (rows < 1)
        throw RuntimeError(RuntimeError::InvalidGridRow);
    if (GridModel* model = modelOf(widget()))
        model->setRows(rows);
}

int FlexGrid::Cols() const
{
    const GridModel* model = modelOf(widget());
    return model ? model->cols() : 0;
}

int FlexGrid::Row() const
{
    const GridModel* model = modelOf(widget());
    return model ? model->currentRow() : 0;
}

void FlexGrid::setRow(int row)
{
    GridModel* model = modelOf(widget());
    if (!model)
        return;
    if (row < 0 || row >= model->rows())
        throw RuntimeError(RuntimeError::InvalidGridRow);
    model->setCurrentRow(row);
}

QString FlexGrid::TextMatrix(int row, int col) const
{
    const GridModel* model = modelOf(widget());
    if (!model)
        return {};
    checkCell(*model, row, col);
    return model->text(row, col);
}

void FlexGrid::setTextMatrix(int row, int col, const QString& text)
{
    GridModel* model = modelOf(widget());
    if (!model)
        return;
    checkCell(*model, row, col);
    model->setText(row, col, text);
}

void FlexGrid::setColWidth(int col, int twips)
{
    auto* view = qobject_cast<QTableView*>(widget());
    if (!view)
        return;
    if (twips < -1)
        throw RuntimeError(RuntimeError::InvalidColWidth);
    constexpr int DefaultTwips = 960;
    constexpr int TwipsPerPixel = 15;
    // The widths were drawn for digits of five pixels; they grow with the font in use.
    constexpr double DrawnDigit = 5.0;
    const double scale = view->fontMetrics().horizontalAdvance(u'0') / DrawnDigit;
    view->setColumnWidth(
        col, static_cast<int>((twips < 0 ? DefaultTwips : twips) * scale / TwipsPerPixel));
}

void FlexGrid::showRows(std::shared_ptr<const GridRows> rows)
{
    if (GridModel* model = modelOf(widget()))
        model->showRows(std::move(rows));
}

bool FlexGrid::intercept(QWidget& widget, QEvent& event)
{
    const auto* view = qobject_cast<const QTableView*>(widget.parent());
    if (!view || view->viewport() != &widget)
        return false;
    if (event.type() == QEvent::Wheel && !view->hasFocus()) {
        event.ignore();
        return true;
    }
    // A click beside all rows is a click on the grid, too.
    if (event.type() == QEvent::MouseButtonRelease &&
        !view->indexAt(static_cast<const QMouseEvent&>(event).position().toPoint()).isValid())
        fire(click_);
    return false;
}

bool FlexGrid::useKey(QWidget& widget, const QKeyEvent& key)
{
    auto* view = qobject_cast<QTableView*>(&widget);
    if (!view || key.key() != Qt::Key_Space)
        return Control::useKey(widget, key);
    const GridModel* model = modelOf(view);
    if (model->currentRow() > 0) {
        view->selectRow(model->currentRow() - 1);
        fire(click_);
    }
    return true;
}

void FlexGrid::attach(FormWindow& window, QWidget* widget)
{
    auto* view = qobject_cast<QTableView*>(widget);
    if (!view)
        return;
    GridModel* model = makeModel(*view);
    view->setModel(model);
    setLook(*view);

    QObject::connect(model, &GridModel::published, view,
                     [view, model] { showCurrentRow(*view, *model); });
    const auto followed = [view, model, &window] {
        const QModelIndex current = view->currentIndex();
        if (window.alive() && current.isValid() && current.row() + 1 < model->rows())
            model->noteCurrentRow(current.row() + 1, view->selectionModel()->hasSelection());
    };
    const QItemSelectionModel* selection = view->selectionModel();
    QObject::connect(selection, &QItemSelectionModel::currentRowChanged, &window, followed);
    QObject::connect(selection, &QItemSelectionModel::selectionChanged, &window, followed);
    QObject::connect(view, &QTableView::clicked, &window, firing(window, click_));
    QObject::connect(view, &QTableView::doubleClicked, &window, firing(window, dblClick_));
    // A click on the heading selects the column, and Row is then the first row of data.
    QObject::connect(view->horizontalHeader(), &QHeaderView::sectionClicked, &window,
                     [this, model, &window] {
                         if (!window.alive())
                             return;
                         model->setCurrentRow(model->rows() > 1 ? 1 : 0);
                         fire(click_);
                     });
}
