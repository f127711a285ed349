#include "PurchaseTest.h"
#include "RandomWalk.h"

#include <set>

namespace {

class PurchaseWalk : public RandomWalk<PurchaseTest>
{
protected:
    PurchaseWalk()
        : RandomWalk(u"PEDIDO"_s, {u"DATAPEDIDO"_s, u"DESCRICAO"_s, u"QUANTIDADE"_s, u"CODIGO"_s})
    {
    }
    static QString cut(int field, const QString& text)
    {
        static constexpr int limits[4] = {99, 45, 5, 7};
        return text.isNull() ? u""_s : text.left(limits[field]);
    }
    static int leadingNumber(const QString& code)
    {
        int digits = 0;
        while (digits < code.size() && code[digits].isDigit())
            ++digits;
        return code.left(digits).toInt();
    }
    void showCurrent()
    {
        for (int i = 0; i < 4; ++i)
            boxes_[i] = cut(i, current().fields[i]);
        onShow_ = current().row;
    }
    void fillGrid()
    {
        grid_.clear();
        for (const Shown& row : shown_) {
            const auto text = [&row](int field) {
                return row.fields[field].isNull() ? u""_s : row.fields[field];
            };
            grid_ << QStringList{text(0), text(2), text(1), text(3)};
        }
    }
    void count()
    {
        if (!isEmpty())
            return;
        boxes_ = {u""_s, u""_s, u""_s, u"0000000"_s};
        on_ = {0, 8};
        isOpen_ = false;
    }
    void browse()
    {
        state_ = State::Browsing;
        on_ = {0, 2, 6, 8, 10, 11, 12, 13};
        isOpen_ = false;
    }
    void reopen()
    {
        list().unload();
        list().show();
        open();
        browse();
        fillGrid();
        if (isEmpty()) // as the grid was drawn
            grid_ << QStringList{u""_s, u""_s, u""_s, u""_s};
        text2_.clear();
        reloads_ = false;
        isEmpty() ? count() : showCurrent();
    }
    void removeCurrent()
    {
        const bool wasFirst = place_ == 0;
        if (!RandomWalk::remove()) {
            showCurrent();
            return;
        }
        if (wasFirst) {
            on_.insert(11);
            on_.erase(10);
        }
        fillGrid();
        if (isEmpty()) {
            reloads_ = true;
            browse();
            count();
            return;
        }
        place_ = last();
        reloads_ = false;
        showCurrent();
    }
    bool isDataRow(int row) const
    {
        return row >= 1 && row <= grid_.size() && !grid_[row - 1][3].isEmpty();
    }
    void save();
    void press(int button);
    void clickRow(int row);
    void escapeOn(int row);
    QString step();

    std::set<int> on_;
    bool isOpen_ = false; // for typing
    QList<QStringList> grid_;
    QString text2_;
    bool reloads_ = false; // FlagRecarga
    std::shared_ptr<Row> onShow_;
};

void PurchaseWalk::save()
{
    const QStringList fillers{u"**/**/****"_s, u"***************"_s, u"****"_s, u"*******"_s};
    Fields typed;
    for (int i = 0; i < 4; ++i)
        typed << (boxes_[i].isEmpty() ? fillers[i] : boxes_[i]);
    Fields filled = boxes_;
    for (int i = 0; state_ == State::Editing && i < 4; ++i)
        filled[i] = cut(i, current().fields[i]);
    filled[0] = u"no box"_s;
    const bool isStored = store(typed, filled);
    if (!isStored)
        expectErrorBox(u"Erro nº -2147217864"_s);
    click(list().Command1(1));
    if (!isStored)
        return;
    onShow_ = current().row;
    browse();
    fillGrid();
    // An order that went by Esc in the middle of the edit has reloaded the grid already.
    place_ = reloads_ ? last() : 0;
    reloads_ = false;
}

void PurchaseWalk::press(int button)
{
    if (!on_.contains(button)) {
        click(list().Command1(button));
        return;
    }
    if (button == 1) {
        save();
        return;
    }
    const Answer answer = below(2) == 0 ? Answer::Yes : Answer::No;
    button == 3 ? PurchaseTest::remove(answer) : click(list().Command1(button));
    if (button == 0) {
        if (!isEmpty()) {
            place_ = last();
            showCurrent();
        }
        const int number = leadingNumber(boxes_[3]) + 1;
        boxes_ = {u"09/03/2026"_s, u""_s, u""_s, QString::number(number).rightJustified(7, u'0')};
        state_ = State::New;
        reloads_ = true;
        on_ = {1, 9};
        isOpen_ = true;
    } else if (button == 2) {
        if (onShow_ != current().row)
            showCurrent();
        state_ = State::Editing;
        reloads_ = true;
        on_ = {1, 3, 9};
        isOpen_ = true;
    } else if (button == 3) {
        browse();
        if (answer == Answer::Yes)
            removeCurrent();
    } else if (button == 6) {
        for (size_t pass = 0; pass <= shown_.size(); ++pass)
            grid_ << QStringList{u""_s, u""_s, u""_s, u""_s};
    } else if (button == 8) {
        reopen();
    } else if (button == 9) {
        cancel();
        browse();
        if (!isEmpty())
            showCurrent();
        count();
    } else if (button >= 10) {
        if (button == 12 || (button == 10 && place_ == 0))
            on_.erase(10);
        else
            on_.insert(10);
        if (button == 13 || (button == 11 && place_ == last()))
            on_.erase(11);
        else
            on_.insert(11);
        move(button);
        showCurrent();
    }
}

void PurchaseWalk::clickRow(int row)
{
    click(list().MSFlexGrid1, row);
    if (!isDataRow(row) || state_ == State::New)
        return;
    const QString code = grid_[row - 1][3];
    if (state_ == State::Browsing || text2_ != code) {
        find(3, code);
        showCurrent();
    }
    text2_ = code;
}

void PurchaseWalk::escapeOn(int row)
{
    list().MSFlexGrid1.setRow(row);
    escape();
    if (!isDataRow(row) || state_ == State::New)
        return;
    if (onShow_ != current().row)
        showCurrent();
    else
        removeCurrent();
}

QString PurchaseWalk::step()
{
    const QStringList texts{u""_s,   u"Alfa"_s,    u"beta"_s,       u"01/03/2026"_s, u"p.EST"_s,
                            u"41"_s, u"0000041"_s, u"**/**/****"_s, u"0000007"_s,    u"d'"_s};
    const int what = below(20);
    if (what < 8) {
        const int button = below(14);
        press(button);
        return u"button %1"_s.arg(button);
    }
    if (what < 12) {
        otherStationWrites(texts);
        return u"other"_s;
    }
    if (what < 16 && !grid_.isEmpty()) {
        const int row = 1 + below(static_cast<int>(std::min<qsizetype>(grid_.size(), 12)));
        what == 15 ? escapeOn(row) : clickRow(row);
        return (what == 15 ? u"escape %1"_s : u"click %1"_s).arg(row);
    }
    const int field = 1 + below(2);
    const QString text = oneOf(texts);
    type(list().Text1(field - 1), text);
    if (isOpen_)
        boxes_[field] = cut(field, text);
    return u"type %1 %2"_s.arg(field).arg(text);
}

TEST_F(PurchaseWalk, GoesAsTheModel)
{
    boxes_ = Fields(4, u""_s);
    reopen();
    walk([this] { return step(); },
         [this] {
             EXPECT_EQ(shown(), boxes_.join(u'|'));
             QStringList on;
             for (const int button : on_)
                 on << QString::number(button);
             EXPECT_EQ(enabledOf(list().Command1), on.join(u' '));
             EXPECT_EQ(list().Text1(0).locked(), !isOpen_);
             EXPECT_EQ(list().Text1(2).text().toInt(), static_cast<int>(shown_.size()));
             QStringList rows;
             for (const QStringList& cells : grid_)
                 rows << cells.join(u'|');
             EXPECT_EQ(gridRows(list().MSFlexGrid1), rows);
         });
}

} // namespace
