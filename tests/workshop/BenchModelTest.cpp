#include "BenchTest.h"
#include "RandomWalk.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTest>

#include <algorithm>
#include <array>
#include <set>

namespace {

// The bench beside a naive model of it, at random: keys, clicks, parts picked, saves, and another
// station's writes; after each step boxes, buttons, grid and both tables are compared. A fault is
// as good as any other end, where the model has it too.
class BenchWalk : public RandomWalk<BenchTest>
{
protected:
    // --- the model

    struct Fault
    {
    };
    struct View
    {
        std::vector<Shown> rows;
        int place = -1;
        bool has() const { return place >= 0 && place < static_cast<int>(rows.size()); }
        Shown& current()
        {
            if (!has())
                throw Fault();
            return rows[static_cast<size_t>(place)];
        }
        // The first row whose field holds the text; past the end where none does.
        void find(int field, const QString& text)
        {
            if (rows.empty() || text.contains(u'\''))
                throw Fault();
            place = 0;
            while (has() && !current().fields[field].contains(text, Qt::CaseInsensitive))
                ++place;
        }
    };
    // numero, Nome, telefone, marca, servicoexecutado, and the flags
    static constexpr int Service = 4, FirstFlag = 5, TwinFields = 46;
    BenchWalk()
        : RandomWalk(u"Cliente"_s,
                     {u"numero"_s, u"Nome"_s, u"telefone"_s, u"marca"_s, u"servicoexecutado"_s,
                      u"pronto"_s, u"retorno"_s, u"naotempeca"_s})
    {
        texts_ = {u""_s,       {},       u"5"_s,    u"05"_s,     u"7"_s,
                  u"1234,5"_s, u"Ana"_s, u"0,00"_s, u"0000005"_s};
    }
    const QStringList twinNames_ = columnsOf(u"PECAAPLICADA"_s);
    Table twins_, parts_;
    View Tabela1, Tabela3, Tabela4;
    Fields text_, description_;
    QList<int> chosen_, flag_;
    QString text3_, text4_;
    int line_ = 0;
    QStringList grid_;
    bool gridVisible_ = false;
    bool isEditing_ = false;
    bool canEdit_ = false;
    QStringList entries_;

    static View viewOf(const Table& table, int order)
    {
        View view;
        for (const auto& row : table)
            if (!row->isGone)
                view.rows.push_back({row, row->stored});
        std::stable_sort(view.rows.begin(), view.rows.end(), [order](const auto& l, const auto& r) {
            return l.fields[order].toLower() < r.fields[order].toLower();
        });
        view.place = view.rows.empty() ? -1 : 0;
        return view;
    }
    static QString money(const QString& text)
    {
        if (text.isNull())
            return u"0,00"_s;
        static const std::set<QString> Numbers{u"5"_s, u"05"_s, u"7"_s, u"0000005"_s};
        if (Numbers.contains(text))
            return text.right(1) + u",00"_s;
        return text == u"1234,5"_s ? u"1.234,50"_s : text;
    }

    void set(int box, const QString& text)
    {
        const QString clean = text.isNull() ? u""_s : text;
        if (text_[box] == clean)
            return;
        text_[box] = clean;
        changed(box);
    }
    void setDescription(int line, const QString& text)
    {
        description_[line] = text.isNull() ? u""_s : text;
        chosen_[line] = -1;
    }
    void clearAll()
    {
        for (int box = 1; box <= 37; ++box)
            set(box, {});
        for (int line = 1; line <= 11; ++line)
            setDescription(line, {});
    }
    void changed(int box)
    {
        if (text_[box] != text_[0])
            return;
        if (text_[0].isEmpty()) {
            gridVisible_ = false;
            setText3({});
            clearAll();
            canEdit_ = false;
            grid_.clear();
            return;
        }
        Tabela1 = {};
        grid_.clear();
        for (const auto& row : rows_)
            if (!row->isGone && row->stored[0].contains(text_[0])) {
                Tabela1.rows.push_back({row, row->stored});
                QStringList cells;
                for (const int field : {0, 1, 3, 2})
                    cells << row->stored[field];
                grid_ << cells.join(u'|');
            }
        Tabela1.place = static_cast<int>(Tabela1.rows.size()) - 1;
        gridVisible_ = canEdit_ = Tabela1.has();
    }
    void setText3(const QString& text)
    {
        if (text3_ == text)
            return;
        text3_ = text;
        clearAll();
        if (text.isEmpty())
            return;
        if (!Tabela4.rows.empty())
            Tabela4.find(0, text);
        if (!Tabela4.has()) {
            Tabela4 = viewOf(twins_, 0);
            Tabela4.find(0, text);
        }
        Tabela1.find(0, text);
        if (Tabela4.has()) {
            const Fields twin = Tabela4.current().fields;
            for (int line = 1; line <= 11; ++line) {
                const int first = 2 + 4 * (line - 1);
                set(26 + line, twin[first]);
                setDescription(line, twin[first + 1]);
                set(14 + line, twin[first + 2]);
                set(3 + line, money(twin[first + 3]));
            }
        }
        showOrder();
    }
    void showOrder()
    try {
        const auto field = [this](int number) { return Tabela1.current().fields[number]; };
        set(1, field(0));
        set(2, field(1));
        set(26, field(Service));
        const QString phone = field(2);
        set(3, phone == u"1932324410"_s ? u"(19)3232-4410"_s : phone);
        for (const int flag : {0, 1, 3})
            flag_[flag] = field(FirstFlag + (flag == 3 ? 2 : flag)) != u"0"_s;
    } catch (const Fault&) {
        // The bench ends silently here.
    }
    void pickModel(int line, int entry)
    {
        if (chosen_[line] == entry)
            return;
        const auto count = static_cast<int>(entries_.size());
        description_[line] = entries_[entry < count ? entry : 2 * count - 1 - entry];
        chosen_[line] = entry;
        line_ = line;
        if (text4_ != description_[line]) {
            text4_ = description_[line];
            Tabela3.find(1, text4_);
            fillLine();
        }
        fillLine();
    }
    void fillLine()
    {
        const Fields part = Tabela3.current().fields;
        set(26 + line_, part[0]);
        set(14 + line_, part[3]);
        set(3 + line_, part[2]);
    }

    // One field of one row; where both stations wrote it the program ends.
    static void put(Shown& row, int field, const QString& now, const QString& asShown)
    {
        const bool nothing = now.isEmpty() || now == u"0"_s || now == u"0,00"_s;
        if (!merge(row.row->stored[field], row.fields[field], now,
                   now == asShown || (row.fields[field].isNull() && nothing)))
            throw Fault();
    }
    void save()
    {
        Shown& order = Tabela1.current();
        Shown& twin = Tabela4.current();
        if (order.row->isGone || twin.row->isGone)
            throw Fault();
        const Row before[] = {*order.row, *twin.row};
        try {
            const auto text = [](const QString& field) { return field.isNull() ? u""_s : field; };
            put(order, Service, text_[26], text(order.fields[Service]));
            for (int line = 1; line <= 11; ++line) {
                const int first = 2 + 4 * (line - 1);
                put(twin, first, text_[26 + line], text(twin.fields[first]));
                put(twin, first + 1, description_[line], text(twin.fields[first + 1]));
                put(twin, first + 2, text_[14 + line], text(twin.fields[first + 2]));
                put(twin, first + 3, text_[3 + line], money(twin.fields[first + 3]));
            }
            for (const int flag : {0, 1, 3}) {
                const int field = FirstFlag + (flag == 3 ? 2 : flag);
                put(order, field, QString::number(flag_[flag]), order.fields[field]);
            }
        } catch (const Fault&) {
            *order.row = before[0];
            *twin.row = before[1];
            throw;
        }
    }

    void load()
    {
        text_ = Fields(38, u""_s);
        description_ = Fields(12, u""_s);
        chosen_ = QList<int>(12, -1);
        flag_ = QList<int>(4, 0);
        text3_ = text4_ = u""_s;
        Tabela3 = viewOf(parts_, 1);
        Tabela4 = viewOf(twins_, 0);
        Tabela1 = {};
        entries_.clear();
        for (const Shown& part : Tabela3.rows)
            entries_.push_back(part.fields[1]);
        grid_ = QStringList{u"|||"_s}; // as designed, and hidden
        gridVisible_ = isEditing_ = canEdit_ = false;
    }

    // --- both

    void insertOrder(const QString& number)
    {
        const QStringList phones{u"1932324410"_s, u"(19)3232-4410"_s, {}, u""_s};
        Fields fields{
            number,        oneOf(texts_), oneOf(phones), oneOf(texts_),
            oneOf(texts_), u"0"_s,        u"1"_s,        below(5) == 0 ? QString() : u"0"_s};
        insert(rows_, table_, names_, fields);
        Fields twin{number};
        while (twin.size() < TwinFields)
            twin << (below(3) == 0 ? oneOf(texts_) : QString());
        if (below(8) != 0)
            insert(twins_, u"PECAAPLICADA"_s, twinNames_, twin);
    }
    // Often in the very row that is worked on here.
    void otherStation()
    {
        const auto left =
            std::count_if(rows_.begin(), rows_.end(), [](const auto& row) { return !row->isGone; });
        if (left < 5 || (left < 12 && below(8) == 0)) {
            insertOrder(QString::number(10'000'000 + below(60)).right(7));
            return;
        }
        const bool isTwin = below(2) == 0;
        const Table& table = isTwin ? twins_ : rows_;
        const QString name = isTwin ? u"PECAAPLICADA"_s : table_;
        const QStringList names = isTwin ? twinNames_ : names_;
        const View& view = isTwin ? Tabela4 : Tabela1;
        const bool isHere = view.has() && (isEditing_ || below(2) == 0);
        const auto row = isHere ? view.rows[static_cast<size_t>(view.place)].row
                                : table[static_cast<size_t>(below(static_cast<int>(table.size())))];
        if (row->isGone)
            return;
        const auto rank = std::count_if(table.begin(), std::find(table.begin(), table.end(), row),
                                        [](const auto& other) { return !other->isGone; });
        const QString which =
            u" WHERE _id = (SELECT _id FROM %1 ORDER BY _id LIMIT 1 OFFSET %2)"_s.arg(name).arg(
                rank);
        if (below(8) == 0) {
            row->isGone = true;
            mainSql(u"DELETE FROM "_s + name + which);
            return;
        }
        // In an edit one of the first two lines, or the work.
        const int field =
            isEditing_ ? (isTwin ? 2 + below(8) : Service) : 1 + below(isTwin ? 12 : 7);
        const bool isFlag = !isTwin && field >= FirstFlag;
        const QString text = isFlag ? QString::number(below(2)) : oneOf(texts_);
        if (!isTwin && field == 2)
            return;
        row->stored[field] = text;
        mainSql(u"UPDATE "_s + name + u" SET "_s + names[field] + u" = "_s + literal(text) + which);
    }

    // Each letter is a change; over the same first letter none is sure.
    void typeInto(int box, const QString& text)
    {
        const bool isOpen = box == 0 ? !isEditing_ : isEditing_ && box > 3;
        if (isOpen && text_[box] == text.left(1))
            return;
        type(bench().Text1(box), text);
        if (!isOpen)
            return;
        if (text.isEmpty())
            set(box, {});
        for (int letters = 1; letters <= text.size(); ++letters)
            set(box, text.left(letters));
    }
    void typeDescription(int line, const QString& text)
    {
        auto* combo = qobject_cast<QComboBox*>(bench().line(line).description.widget());
        combo->lineEdit()->selectAll();
        QTest::keyClicks(combo, text);
        if (isEditing_ && !text.isEmpty())
            setDescription(line, text);
    }
    void pressButton(int button)
    {
        const bool isOn = enabledNow().split(u' ').contains(QString::number(button));
        press(button);
        if (!isOn)
            return;
        if (button == 0) {
            isEditing_ = true;
            gridVisible_ = canEdit_ = false;
        } else if (button == 3) {
            bench().show();
            load();
        } else {
            if (button == 1)
                save();
            isEditing_ = false;
        }
    }
    QString enabledNow() const
    {
        return (canEdit_ ? u"0 "_s : u""_s) + (isEditing_ ? u"1 2"_s : u"3"_s);
    }
    QString step()
    {
        const int what = below(20);
        if (what < (isEditing_ || canEdit_ ? 3 : 12)) {
            const QString number = oneOf(
                QStringList{u""_s, u"5"_s, u"05"_s, u"00"_s, u"000"_s, u"0000005"_s, u"77777"_s});
            typeInto(0, number.left(1) == text_[0].left(1) ? u""_s : number);
            return u"search "_s + number;
        }
        if (what < 8 && gridVisible_ && !grid_.isEmpty()) {
            const int row = 1 + below(static_cast<int>(grid_.size()));
            const QString number = grid_[row - 1].section(u'|', 0, 0);
            click(bench().MSFlexGrid1, row);
            setText3(number);
            return u"row "_s + number;
        }
        if (what < 12) {
            const int button = below(8) == 0 ? below(4) : isEditing_ ? 1 + below(4) / 3 : 0;
            pressButton(button);
            return u"button %1"_s.arg(button);
        }
        if (what < 15) {
            otherStation();
            return u"other"_s;
        }
        if (what == 15) {
            const int flag = std::array{0, 1, 3}[static_cast<size_t>(below(3))];
            flag_[flag] ^= 1;
            click(bench().Check1(flag));
            return u"flag %1"_s.arg(flag);
        }
        const int line = 1 + below(below(4) == 0 ? 11 : 2);
        if (what == 16 && isEditing_) {
            const int entry = below(static_cast<int>(entries_.size()) * (line == 5 ? 2 : 1));
            pick(line, entry);
            pickModel(line, entry);
            return u"pick %1 %2"_s.arg(line).arg(entry);
        }
        const QString text = oneOf(texts_);
        const int box =
            std::array{2, 26, 26 + line, 14 + line, 3 + line}[static_cast<size_t>(below(5))];
        if (what == 17)
            typeDescription(line, text);
        else
            typeInto(box, text.isNull() ? u""_s : text);
        return u"type %1 %2 "_s.arg(what == 17 ? 100 + line : box).arg(text);
    }

    void compare() const
    {
        for (int box = 0; box <= 37; ++box)
            EXPECT_EQ(bench().Text1(box).text(), text_[box]) << box;
        for (int line = 1; line <= 11; ++line)
            EXPECT_EQ(bench().line(line).description.text(), description_[line]);
        for (const int flag : {0, 1, 3})
            EXPECT_EQ(bench().Check1(flag).value(), flag_[flag]) << flag;
        EXPECT_EQ(enabledOf(bench().Command1), enabledNow());
        EXPECT_EQ(bench().Text1(0).locked(), isEditing_);
        EXPECT_EQ(bench().Combo7.locked(), !isEditing_);
        EXPECT_EQ(bench().MSFlexGrid1.visible(), gridVisible_);
        EXPECT_EQ(gridRows(bench().MSFlexGrid1), grid_);
        expectTable(twins_, u"PECAAPLICADA"_s, twinNames_);
    }
    void begin()
    {
        setMsgBoxForTests([](const Box&) { return Answer::Ok; });
        mainSql(u"DELETE FROM Pecas"_s);
        const std::vector<Fields> parts{{u"0000005"_s, u"Antena"_s, u"5,00"_s, u"5"_s},
                                        {u"0000002"_s, u"Antena longa"_s, u"7,00"_s, {}},
                                        {u"0000001"_s, u"Pino d'água"_s, u"0,00"_s, u"M1"_s},
                                        {u"0000003"_s, u"Tela"_s, u"1.234,50"_s, u"05"_s}};
        const std::vector<int> prices{50000, 70000, 0, 12'345'000};
        for (size_t part = 0; part < parts.size(); ++part) {
            addPart(parts[part][0], parts[part][1], parts[part][3], prices[part]);
            parts_.push_back(std::make_shared<Row>(Row{parts[part], false}));
        }
        for (const QString& number : {u"0000005"_s, u"0000015"_s, u"0000003"_s})
            insertOrder(number);
        bench().show();
        load();
    }
};

TEST_F(BenchWalk, GoesAsTheModel)
{
    begin();
    walk(
        [this] {
            QString done = u"fault"_s;
            bool isFault = false;
            try {
                done = step();
            } catch (const Fault&) {
                isFault = true;
            }
            EXPECT_EQ(faults() > 0, isFault);
            if (faults() > 0) {
                startAnew();
                bench().show();
                load();
            }
            return done;
        },
        [this] { compare(); });
}

} // namespace
