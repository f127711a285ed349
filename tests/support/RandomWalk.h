#pragma once

#include "RecordTest.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <utility>

// A record form beside a naive model of it, at random: keys, clicks, saves, deletions, and another
// station's writes; after each step boxes, buttons, grid and table are compared. A longer walk:
//   VORBELO_MODEL_STEPS=20000 VORBELO_MODEL_SEED=7 test_registers --gtest_filter='*Walk*'
template <class Fixture> class RandomWalk : public Fixture
{
protected:
    using Fixture::mainFile, Fixture::mainSql, Fixture::sql;

    using Fields = QStringList; // a Null is the null text
    struct Row
    {
        Fields stored;
        bool isGone = false;
    };
    using Table = std::vector<std::shared_ptr<Row>>;
    struct Shown
    {
        std::shared_ptr<Row> row;
        Fields fields; // as this station knows it
    };
    enum class State
    {
        Browsing,
        New,
        Editing
    };

    // The fields that the model knows; all of them where none is named.
    explicit RandomWalk(const QString& table, const QStringList& names = {})
        : table_(table), names_(names.isEmpty() ? columnsOf(table) : names)
    {
    }
    QStringList columnsOf(const QString& table) const
    {
        return sql(mainFile(),
                   u"SELECT name FROM pragma_table_info('%1') WHERE name <> '_id'"_s.arg(table));
    }

    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    QString oneOf(const QStringList& texts) { return texts[below(static_cast<int>(texts.size()))]; }

    static bool same(const QString& left, const QString& right)
    {
        return left == right && left.isNull() == right.isNull();
    }
    static QString literal(const QString& text)
    {
        return text.isNull() ? u"NULL"_s : u'\'' + QString(text).replace(u'\'', u"''"_s) + u'\'';
    }

    static QStringList literals(const Fields& fields)
    {
        QStringList all;
        for (const QString& field : fields)
            all << literal(field);
        return all;
    }

    // --- the model's table, and this station's view of it

    void open()
    {
        refused_ = nullptr;
        shown_.clear();
        for (const auto& row : rows_)
            if (!row->isGone)
                shown_.push_back({row, row->stored});
        std::stable_sort(
            shown_.begin(), shown_.end(), [this](const Shown& left, const Shown& right) {
                const QString& a = left.fields[order_];
                const QString& b = right.fields[order_];
                return a.isNull() != b.isNull() ? a.isNull() : a.toLower() < b.toLower();
            });
        place_ = 0;
        state_ = State::Browsing;
    }
    bool isEmpty() const { return shown_.empty(); }
    Shown& current() { return shown_[static_cast<size_t>(place_)]; }
    int last() const { return static_cast<int>(shown_.size()) - 1; }

    // What becomes of one field, in the file and as this station knows it; false where both wrote.
    // left: shown and written as the same, which is no change.
    static bool merge(QString& stored, QString& known, const QString& typed, bool left)
    {
        const bool byOther = !same(stored, known);
        if (byOther && left)
            return true;
        if (byOther && !same(typed, known) && !same(typed, stored))
            return false;
        if (!same(typed, known))
            stored = typed;
        known = typed;
        return true;
    }
    // Whether it was stored. filled: the boxes as they were filled.
    bool store(const Fields& typed, const Fields& filled)
    {
        if (state_ == State::New) {
            auto row = std::make_shared<Row>(Row{typed, false});
            rows_.push_back(row);
            shown_.push_back({row, typed});
            place_ = last();
            return true;
        }
        const Fields before = current().fields;
        Fields stored = current().row->stored;
        Fields known = before;
        bool refused = false;
        for (int i = 0; i < typed.size(); ++i)
            refused |= !merge(stored[i], known[i], typed[i],
                              (boxes_[i] == filled[i] && i != label_) ||
                                  (before[i].isNull() && typed[i].isEmpty()));
        if (refused) {
            refused_ = current().row;
            return false;
        }
        current().row->stored = stored;
        current().fields = known;
        return true;
    }
    // What another station stored in the row comes into view.
    void look() { current().fields = current().row->stored; }
    // A row that was refused once is read anew when it is left, or its edit given up.
    void leave()
    {
        for (Shown& shown : shown_)
            if (shown.row == refused_)
                shown.fields = shown.row->stored;
        refused_ = nullptr;
    }
    void cancel()
    {
        leave();
        state_ = State::Browsing;
    }
    void move(int button)
    {
        leave();
        place_ = button == 10   ? std::max(0, place_ - 1)
                 : button == 11 ? std::min(last(), place_ + 1)
                 : button == 12 ? 0
                                : last();
    }
    // The first row whose field holds the text; where none does the current one stays.
    void find(int field, const QString& text)
    {
        leave();
        for (int i = 0; i <= last() && !text.contains(u'\''); ++i)
            if (shown_[static_cast<size_t>(i)].fields[field].contains(text, Qt::CaseInsensitive)) {
                place_ = i;
                return;
            }
    }
    bool removeCurrent()
    {
        refused_ = nullptr;
        Shown& now = current();
        for (int i = 0; i < now.fields.size(); ++i)
            if (!same(now.row->stored[i], now.fields[i])) {
                look();
                return false;
            }
        now.row->isGone = true;
        shown_.erase(shown_.begin() + place_);
        place_ = std::max(0, place_ - 1);
        return true;
    }

    void insert(Table& rows, const QString& table, const QStringList& names, const Fields& fields)
    {
        rows.push_back(std::make_shared<Row>(Row{fields, false}));
        mainSql(u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(table, names.join(u','),
                                                         literals(fields).join(u',')));
    }
    void otherStationWrites(const QStringList& texts)
    {
        std::vector<int> alive;
        for (int i = 0; i < static_cast<int>(rows_.size()); ++i)
            if (!rows_[static_cast<size_t>(i)]->isGone)
                alive.push_back(i);
        if (alive.size() < 3 || below(4) == 0) {
            Fields fields;
            for (int i = 0; i < names_.size(); ++i)
                fields << (i != notNull_ && below(4) == 0 ? QString() : oneOf(texts));
            insert(rows_, table_, names_, fields);
            return;
        }
        int n = below(static_cast<int>(alive.size()));
        // The row that is edited here, often in the very field that was typed; else every other
        // time the one on show.
        const bool isEdited = state_ == State::Editing;
        const bool meets = !isEmpty() && (isEdited || below(2) == 0);
        for (int i = 0; meets && i < static_cast<int>(alive.size()); ++i)
            if (rows_[static_cast<size_t>(alive[static_cast<size_t>(i)])] == current().row)
                n = i;
        const int field =
            isEdited && below(2) == 0 ? typedLast_ : below(static_cast<int>(names_.size()));
        const QString text = oneOf(texts);
        rows_[static_cast<size_t>(alive[static_cast<size_t>(n)])]->stored[field] = text;
        mainSql(u"UPDATE %1 SET %2 = %3 WHERE _id = (SELECT _id FROM %1 ORDER BY _id LIMIT 1 "
                "OFFSET %4)"_s.arg(table_, names_[field], literal(text))
                    .arg(n));
    }
    void expectTable(const Table& rows, const QString& table, const QStringList& names) const
    {
        QStringList wanted;
        for (const auto& row : rows)
            if (!row->isGone)
                wanted << literals(row->stored).join(u'|');
        QStringList quoted;
        for (const QString& name : names)
            quoted << u"quote(CAST(%1 AS TEXT))"_s.arg(name);
        EXPECT_EQ(sql(mainFile(),
                      u"SELECT %1 FROM %2 ORDER BY _id"_s.arg(quoted.join(u"||'|'||"_s), table)),
                  wanted);
    }

    void walk(const std::function<QString()>& step, const std::function<void()>& compare)
    {
        const int steps = qEnvironmentVariableIsSet("VORBELO_MODEL_STEPS")
                              ? qEnvironmentVariableIntValue("VORBELO_MODEL_STEPS")
                              : 600;
        random_.seed(qEnvironmentVariableIsSet("VORBELO_MODEL_SEED")
                         ? static_cast<unsigned>(qEnvironmentVariableIntValue("VORBELO_MODEL_SEED"))
                         : 20040312);
        QStringList way;
        for (int i = 0; i < steps && !this->HasFailure(); ++i) {
            way << step();
            compare();
            expectTable(rows_, table_, names_);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        EXPECT_FALSE(this->HasFailure())
            << "after " << way.size()
            << " steps, at last: " << way.mid(way.size() - 12).join(u", "_s).toStdString();
    }

    Table rows_;
    std::vector<Shown> shown_;
    int place_ = 0;
    State state_ = State::Browsing;
    Fields boxes_;
    int order_ = 0;    // the field that the rows are sorted by
    int notNull_ = -1; // a field that the table wants filled
    int label_ = -1;   // a field without a box: it is stored in any case
    int typedLast_ = 0;
    // What is typed, and what other stations write.
    QStringList texts_{u""_s,  u"Alfa"_s,    u"beta"_s,       u"Gama"_s,
                       u"7"_s, u"0000041"_s, u"1932324410"_s, u"52998224725"_s};

private:
    std::shared_ptr<Row> refused_;
    std::mt19937 random_;

protected:
    const QString table_;
    const QStringList names_;
};

// How numbers that the walks type read in a box for telephones, documents and money.
struct ShownNumber
{
    QString phone, document, money;
};
inline std::optional<ShownNumber> shownNumber(const QString& text)
{
    static const std::map<QString, ShownNumber> numbers{
        {u"7"_s, {u"(00)0000-0007"_s, u"00-000-000-0000/07"_s, u"7,00"_s}},
        {u"0000041"_s, {u"(00)0000-0041"_s, u"00-000-000-0000/41"_s, u"41,00"_s}},
        {u"1932324"_s, {u"(00)0193-2324"_s, u"00-000-001-9323/24"_s, u"1.932.324,00"_s}},
        {u"5299822"_s, {u"(00)0529-9822"_s, u"00-000-005-2998/22"_s, u"5.299.822,00"_s}},
        {u"1932324410"_s, {u"(19)3232-4410"_s, u"00-001-932-3244/10"_s, u"1.932.324.410,00"_s}},
        {u"52998224725"_s, {u"(529)9822-4725"_s, u"529-982-247/25"_s, u"52.998.224.725,00"_s}}};
    const auto number = numbers.find(text);
    return number == numbers.end() ? std::nullopt : std::optional(number->second);
}

// The walk over a form that shows one row in its boxes, with the buttons 0 to 13 beside it, and all
// of them in a grid, where it has one.
template <class Fixture> class RecordWalk : public RandomWalk<Fixture>
{
protected:
    using Base = RandomWalk<Fixture>;
    using Base::Base, Base::below, Base::boxes_, Base::current, Base::isEmpty, Base::last;
    using Base::leave, Base::names_, Base::oneOf, Base::place_, Base::shown_, Base::state_;
    using Base::texts_;
    using typename Base::Fields, typename Base::State, typename Base::Shown;
    using typename Fixture::Record;

    virtual Record walked() = 0;
    virtual TextBox& countBox() = 0;
    virtual TextBox& fieldBox(int field) { return walked().boxes(field); }
    virtual QString inBox(int field) { return fieldBox(field).text(); }
    virtual FlexGrid* grid() { return nullptr; }
    // Where another form puts the number that it wants shown.
    virtual TextBox* numberBox() { return nullptr; }
    // A stored text in its box, what its box takes of a typed one, what it stores when empty.
    virtual QString asShown(int /*field*/, const QString& text) const
    {
        return text.isNull() ? u""_s : text;
    }
    virtual QString asTyped(int /*field*/, const QString& text) const { return text; }
    virtual QString filler(int /*field*/) const { return u""_s; }
    virtual QString buttons() const
    {
        return isCopying_                 ? u"5"_s
               : state_ == State::New     ? u"1 9"_s
               : state_ == State::Editing ? u"1 3 9"_s
               : isEmpty()                ? u"0 8"_s
                                          : always_ + (canGoBack_ ? u" 10"_s : u""_s) +
                                 (canGoOn_ ? u" 11 12 13"_s : u" 12 13"_s);
    }
    // What a form does besides.
    virtual void reopened() {}
    virtual void pressed(int /*button*/) {}
    virtual void stored()
    {
        if (!grid()) {
            show();
            return;
        }
        // What was stored stays in view while the last row is the current one.
        onShow_ = place_;
        Base::move(13);
    }
    virtual void refused() { click(walked().buttons(1)); }
    virtual void removed(bool wasFirst)
    {
        if (wasFirst && turnsOffAtEnds_) {
            canGoBack_ = false;
            canGoOn_ = true;
        }
        if (grid())
            place_ = std::max(0, last());
    }
    virtual void refill()
    {
        gridRows_.clear();
        for (const Shown& row : shown_) {
            QStringList cells;
            for (const int field : columns_)
                cells << (field < 0 ? otherCell_ : row.fields[field]);
            gridRows_ << cells.join(u'|');
        }
    }
    virtual void compare()
    {
        Fields seen;
        for (int field = 0; field < names_.size(); ++field)
            seen << inBox(field);
        EXPECT_EQ(seen, boxes_);
        EXPECT_EQ(enabledOf(walked().buttons), buttons());
        EXPECT_EQ(fieldBox(typedFields() - 1).locked(), state_ == State::Browsing);
        EXPECT_EQ(countBox().text().toInt(), last() + 1);
        if (grid()) {
            EXPECT_EQ(gridRows(*grid()), gridRows_);
        }
    }

    Fields filled()
    {
        Fields texts(names_.size(), u""_s);
        for (int i = 0; i < texts.size() && !isEmpty(); ++i)
            texts[i] = asShown(i, current().fields[i]);
        if (isEmpty() && number_ >= 0)
            texts[number_] = noNumber_;
        return texts;
    }
    void show()
    {
        boxes_ = filled();
        onShow_ = place_;
    }
    void browse()
    {
        state_ = State::Browsing;
        canGoBack_ = canGoOn_ = true;
    }
    void reopen()
    {
        walked().form.unload();
        walked().form.show();
        Base::open();
        browse();
        show();
        refill();
        lookedFor_.clear();
        reopened();
    }
    // One above the last row's, where the form numbers its rows.
    void beginNew()
    {
        leave();
        if (number_ >= 0) {
            place_ = std::max(0, last());
            show();
        }
        const QString before = number_ < 0 ? QString() : boxes_[number_].right(7);
        const auto end = std::find_if_not(before.begin(), before.end(), &isDigit);
        const int next = before.left(end - before.begin()).toInt() + 1;
        boxes_ = Fields(names_.size(), u""_s);
        if (number_ >= 0)
            boxes_[number_] = QString::number(next).rightJustified(7, u'0');
        state_ = State::New;
    }
    static bool isDigit(QChar c) { return c.isDigit(); }
    void copyOrPaste()
    {
        isCopying_ = !isCopying_;
        const Fields copied = std::exchange(copied_, boxes_);
        if (isCopying_) {
            boxes_ = Fields(names_.size(), u""_s);
            return;
        }
        beginNew();
        for (const int field : copies_)
            boxes_[field] = copied[field];
    }
    void save()
    {
        Fields typed;
        for (int i = 0; i < boxes_.size(); ++i)
            typed << (boxes_[i].isEmpty() ? filler(i) : boxes_[i]);
        if (!Base::store(typed, filled())) {
            refused();
            return;
        }
        click(walked().buttons(1));
        browse();
        stored();
        refill();
    }
    void removeOrNot(Answer answer)
    {
        Base::remove(walked(), answer);
        if (answer == Answer::Yes || noEndsTheEdit_)
            browse();
        if (answer == Answer::Yes)
            removeNow();
    }
    void removeNow()
    {
        const bool wasFirst = place_ == 0;
        const bool isGone = Base::removeCurrent();
        if (isGone)
            removed(wasFirst);
        if (isGone || refillsAlways_)
            refill();
        show();
    }
    void go(int button)
    {
        if (turnsOffAtEnds_) {
            canGoBack_ = button == 10 ? place_ > 0 : button != 12;
            canGoOn_ = button == 11 ? place_ < last() : button != 13;
        }
        Base::move(button);
        show();
    }
    void press(int button)
    {
        const bool isOn = buttons().split(u' ').contains(QString::number(button));
        if (isOn && button == 1) {
            save();
        } else if (isOn && button == 3) {
            removeOrNot(below(2) == 0 ? Answer::Yes : Answer::No);
        } else {
            click(walked().buttons(button));
            if (!isOn)
                return;
            if (button == 0) {
                beginNew();
            } else if (button == 2) {
                if (onShow_ != place_)
                    show();
                state_ = State::Editing;
            } else if (button == 4 || button == 8) {
                reopen();
            } else if (button == 5) {
                copyOrPaste();
            } else if (button == 9) {
                Base::cancel();
                browse();
                show();
            } else if (button >= 10) {
                go(button);
            }
            pressed(button);
        }
    }
    QString lookUpNumber()
    {
        const QString number = below(4) == 0 ? u"'"_s : oneOf(texts_);
        numberBox()->setText({});
        numberBox()->setText(number);
        if (!number.isEmpty()) {
            Base::find(number_, number);
            show();
        }
        return u"look "_s + number;
    }
    // The first row that holds the text of the one clicked; in an edit only where another was
    // looked for before, or not at all.
    QString clickRow(int row)
    {
        click(*grid(), row + 1);
        const QString text = gridRows_[row].section(u'|', keyColumn_, keyColumn_);
        const bool isOpen = state_ == State::New ||
                            (state_ == State::Editing && (!looksInEdits_ || lookedFor_ == text));
        if (!text.isEmpty() && !isOpen) {
            Base::find(columns_[keyColumn_], text);
            show();
            lookedFor_ = text;
        }
        return u"click %1"_s.arg(row);
    }
    virtual QString step()
    {
        const int what = below(20);
        if (what < 10) {
            // Edits often enough, and ends them, for two stations to meet in a row.
            const bool aims = below(3) == 0;
            const int button = !aims ? below(14) : state_ == State::Browsing ? 2 : 1 + 2 * below(2);
            press(button);
            return u"button %1"_s.arg(button);
        }
        if (what < 13) {
            Base::otherStationWrites(texts_);
            return u"other"_s;
        }
        if (what < 16 && !gridRows_.isEmpty() && grid() && !isCopying_)
            return clickRow(below(static_cast<int>(gridRows_.size())));
        if (what == 13 && numberBox() && state_ == State::Browsing && !isCopying_ && !isEmpty())
            return lookUpNumber();
        const int field = Base::typedLast_ = below(typedFields());
        const QString text = oneOf(texts_).section(u'\n', 0, 0);
        type(fieldBox(field), text);
        const QString taken = asTyped(field, text);
        if (state_ != State::Browsing && (text.isEmpty() || !taken.isEmpty()))
            boxes_[field] = taken;
        return u"type %1 %2"_s.arg(field).arg(text);
    }
    void goAsTheModel()
    {
        reopen();
        Base::walk([this] { return step(); }, [this] { compare(); });
    }
    virtual int typedFields() const { return static_cast<int>(names_.size()); }

    QString always_; // the buttons on over a row, but those that move
    bool turnsOffAtEnds_ = true, noEndsTheEdit_ = true;
    bool canGoBack_ = true, canGoOn_ = true;
    int number_ = -1; // the field that is counted
    QString noNumber_ = u""_s;
    int onShow_ = 0;     // the place of the row in the boxes
    QList<int> columns_; // the fields of the grid; -1: another cell
    QString otherCell_;
    int keyColumn_ = 0; // the one that a click looks for
    bool looksInEdits_ = true, refillsAlways_ = false;
    QStringList gridRows_;
    QString lookedFor_; // by a click
    bool isCopying_ = false;
    QList<int> copies_; // the fields that a copy takes over
    Fields copied_;
};
