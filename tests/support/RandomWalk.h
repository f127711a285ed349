#pragma once

#include "FormTest.h"

#include <QCoreApplication>
#include <QEvent>

#include <memory>
#include <random>

// A record form beside a naive model of it, at random: keys, clicks, saves, deletions, and another
// station's writes; after each step boxes, buttons, grid and table are compared. A longer walk:
//   VORBELO_MODEL_STEPS=20000 VORBELO_MODEL_SEED=7 test_registers --gtest_filter='*Walk*'
template <class Fixture> class RandomWalk : public Fixture
{
protected:
    using Fixture::mainFile;
    using Fixture::mainSql;
    using Fixture::sql;

    using Fields = QStringList; // a Null is the null text
    struct Row
    {
        Fields stored;
        bool isGone = false;
    };
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

    explicit RandomWalk(const QString& table, const QStringList& names)
        : table_(table), names_(names)
    {
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

    // --- the model's table, and this station's view of it

    void open()
    {
        refused_ = nullptr;
        shown_.clear();
        for (const auto& row : rows_)
            if (!row->isGone)
                shown_.push_back({row, row->stored});
        std::stable_sort(shown_.begin(), shown_.end(), [](const Shown& left, const Shown& right) {
            const QString& a = left.fields[0];
            const QString& b = right.fields[0];
            return a.isNull() != b.isNull() ? a.isNull() : a.toLower() < b.toLower();
        });
        place_ = 0;
        state_ = State::Browsing;
    }
    bool isEmpty() const { return shown_.empty(); }
    Shown& current() { return shown_[static_cast<size_t>(place_)]; }
    int last() const { return static_cast<int>(shown_.size()) - 1; }

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
        for (int i = 0; i < typed.size(); ++i) {
            const bool byOther = !same(stored[i], before[i]);
            // Shown as nothing and written as nothing is no change.
            const bool isNothing = before[i].isNull() && typed[i].isEmpty();
            if (byOther && (boxes_[i] == filled[i] || isNothing))
                continue;
            refused |= byOther && !same(typed[i], before[i]) && !same(typed[i], stored[i]);
            if (!same(typed[i], before[i]))
                stored[i] = typed[i];
            known[i] = typed[i];
        }
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
    bool remove()
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

    void otherStationWrites(const QStringList& texts)
    {
        std::vector<int> alive;
        for (int i = 0; i < static_cast<int>(rows_.size()); ++i)
            if (!rows_[static_cast<size_t>(i)]->isGone)
                alive.push_back(i);
        if (alive.size() < 3 || below(4) == 0) {
            Fields fields;
            QStringList literals;
            for (int i = 0; i < names_.size(); ++i) {
                fields << (below(4) == 0 ? QString() : oneOf(texts));
                literals << literal(fields.last());
            }
            rows_.push_back(std::make_shared<Row>(Row{fields, false}));
            mainSql(u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(table_, names_.join(u','),
                                                             literals.join(u',')));
            return;
        }
        int n = below(static_cast<int>(alive.size()));
        // Every other time the row on which this station stands.
        const bool meets = !isEmpty() && below(2) == 0;
        for (int i = 0; meets && i < static_cast<int>(alive.size()); ++i)
            if (rows_[static_cast<size_t>(alive[static_cast<size_t>(i)])] == current().row)
                n = i;
        const int field = below(static_cast<int>(names_.size()));
        const QString text = oneOf(texts);
        rows_[static_cast<size_t>(alive[static_cast<size_t>(n)])]->stored[field] = text;
        mainSql(u"UPDATE %1 SET %2 = %3 WHERE _id = (SELECT _id FROM %1 ORDER BY _id LIMIT 1 "
                "OFFSET %4)"_s.arg(table_, names_[field], literal(text))
                    .arg(n));
    }
    void expectTable() const
    {
        QStringList wanted;
        for (const auto& row : rows_)
            if (!row->isGone) {
                QStringList literals;
                for (const QString& field : row->stored)
                    literals << literal(field);
                wanted << literals.join(u'|');
            }
        QStringList quoted;
        for (const QString& name : names_)
            quoted << u"quote(%1)"_s.arg(name);
        EXPECT_EQ(sql(mainFile(),
                      u"SELECT %1 FROM %2 ORDER BY _id"_s.arg(quoted.join(u"||'|'||"_s), table_)),
                  wanted);
    }

    void walk(const std::function<QString()>& step, const std::function<void()>& compare)
    {
        const int steps = qEnvironmentVariableIsSet("VORBELO_MODEL_STEPS")
                              ? qEnvironmentVariableIntValue("VORBELO_MODEL_STEPS")
                              : 250;
        random_.seed(qEnvironmentVariableIsSet("VORBELO_MODEL_SEED")
                         ? static_cast<unsigned>(qEnvironmentVariableIntValue("VORBELO_MODEL_SEED"))
                         : 20040312);
        QStringList way;
        for (int i = 0; i < steps && !this->HasFailure(); ++i) {
            way << step();
            compare();
            expectTable();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        EXPECT_FALSE(this->HasFailure())
            << "after " << way.size()
            << " steps, at last: " << way.mid(way.size() - 12).join(u", "_s).toStdString();
    }

    std::vector<std::shared_ptr<Row>> rows_;
    std::vector<Shown> shown_;
    int place_ = 0;
    State state_ = State::Browsing;
    Fields boxes_;

private:
    std::shared_ptr<Row> refused_;
    QString table_;
    QStringList names_;
    std::mt19937 random_;
};
