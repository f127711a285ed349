#include "RandomWalk.h"
#include "RegistersTest.h"

namespace {

class FirmsWalk : public RandomWalk<RegistersTest>
{
protected:
    FirmsWalk()
        : RandomWalk(u"FORNECEDOR"_s,
                     {u"NOMEEMPRESA"_s, u"NOMEFORNECEDOR"_s, u"SITE"_s, u"EMAIL"_s, u"TELEFONE"_s,
                      u"CELULAR"_s, u"CGC"_s, u"IE"_s, u"PRODUTO"_s, u"CODIGO"_s})
    {
    }
    static TextBox& box(int field)
    {
        return field < 4    ? firm().Text1(field)
               : field < 8  ? firm().Text6(field - 4)
               : field == 8 ? firm().Text1(4)
                            : firm().Text4;
    }
    static QString asShown(int field, const QString& text)
    {
        static const std::map<QString, std::pair<QString, QString>> numbers{
            {u"1932324410"_s, {u"(19)3232-4410"_s, u"00-001-932-3244/10"_s}},
            {u"7"_s, {u"(00)0000-0007"_s, u"00-000-000-0000/07"_s}},
            {u"0000041"_s, {u"(00)0000-0041"_s, u"00-000-000-0000/41"_s}},
            {u"52998224725"_s, {u"52998224725"_s, u"529-982-247/25"_s}}};
        const bool isPhone = field == 4 || field == 5;
        if (text.isNull())
            return isPhone ? u"(  )    -    "_s : u""_s;
        const auto number = numbers.find(text);
        if (number == numbers.end() || !(isPhone || field == 6))
            return text;
        return isPhone ? number->second.first : number->second.second;
    }
    Fields filled()
    {
        Fields boxes(10, u""_s);
        for (int i = 0; i < 10; ++i)
            boxes[i] = !isEmpty() ? asShown(i, current().fields[i]) : i == 9 ? u"0000000"_s : u""_s;
        return boxes;
    }
    void show() { boxes_ = filled(); }
    void browse()
    {
        state_ = State::Browsing;
        canGoBack_ = canGoOn_ = true;
    }
    QString buttons() const
    {
        return state_ == State::New       ? u"1 9"_s
               : state_ == State::Editing ? u"1 3 9"_s
               : isEmpty()                ? u"0 8"_s
                                          : u"0 2 4 8 "_s + (canGoBack_ ? u"10 "_s : u""_s) +
                                 (canGoOn_ ? u"11 "_s : u""_s) + u"12 13"_s;
    }
    void press(int button);
    QString step();

    bool canGoBack_ = true, canGoOn_ = true;
};

void FirmsWalk::press(int button)
{
    const bool isOn = buttons().split(u' ').contains(QString::number(button));
    const Answer answer = below(2) == 0 ? Answer::Yes : Answer::No;
    isOn&& button == 3 ? removeFirm(answer) : click(firm().Command1(button));
    if (!isOn)
        return;
    if (button == 0) {
        leave();
        place_ = std::max(0, last());
        show();
        const int number = boxes_[9].right(7).toInt() + 1;
        boxes_ = Fields(9, u""_s) + Fields{QString::number(number).rightJustified(7, u'0')};
        state_ = State::New;
    } else if (button == 1) {
        if (!store(boxes_, filled()))
            return;
        browse();
        show();
    } else if (button == 2) {
        state_ = State::Editing;
    } else if (button == 3) {
        browse();
        if (answer == Answer::Yes) {
            remove();
            show();
        }
    } else if (button == 9) {
        cancel();
        browse();
        show();
    } else if (button == 4 || button == 8) {
        search().unload();
        firm().show();
        open();
        browse();
        show();
    } else {
        canGoBack_ = button == 10 ? place_ > 0 : button != 12;
        canGoOn_ = button == 11 ? place_ < last() : button != 13;
        move(button);
        show();
    }
}

QString FirmsWalk::step()
{
    const QStringList texts{u""_s,  u"Alfa"_s,    u"beta"_s,       u"Gama"_s,
                            u"7"_s, u"0000041"_s, u"1932324410"_s, u"52998224725"_s};
    const int what = below(20);
    if (what < 10) {
        const int button = below(14);
        press(button);
        return u"button %1"_s.arg(button);
    }
    if (what < 13) {
        otherStationWrites(texts);
        return u"other"_s;
    }
    if (what == 13 && state_ == State::Browsing) {
        const QString code = oneOf(texts);
        firm().Text3.setText({});
        firm().Text3.setText(code);
        if (!code.isEmpty()) {
            find(9, code);
            show();
        }
        return u"look "_s + code;
    }
    const int field = below(9);
    const QString text = oneOf(texts);
    type(box(field), text);
    if (state_ != State::Browsing) {
        QString let = text;
        if (field >= 4 && field <= 6)
            let.removeIf([](QChar c) { return !c.isDigit(); });
        if (text.isEmpty() || !let.isEmpty())
            boxes_[field] = let;
    }
    return u"type %1 %2"_s.arg(field).arg(text);
}

TEST_F(FirmsWalk, GoesAsTheModel)
{
    firm().show();
    open();
    show();
    walk([this] { return step(); },
         [this] {
             Fields seen;
             for (int field = 0; field < 10; ++field)
                 seen << box(field).text();
             EXPECT_EQ(seen, boxes_);
             EXPECT_EQ(enabledOf(firm().Command1), buttons());
             EXPECT_EQ(firm().Text1(0).locked(), state_ == State::Browsing);
             EXPECT_EQ(firm().Text1(5).text().toInt(), static_cast<int>(shown_.size()));
         });
}

class DefectsWalk : public RandomWalk<RegistersTest>
{
protected:
    DefectsWalk() : RandomWalk(u"DEFEITO"_s, {u"MARCA"_s, u"MODELO"_s, u"DEFEITO"_s, u"SOLUCAO"_s})
    {
    }
    static Fields texts(const Fields& fields)
    {
        Fields all;
        for (const QString& field : fields)
            all << (field.isNull() ? u""_s : field);
        return all;
    }
    void show()
    {
        boxes_ = isEmpty() ? Fields(4, u""_s) : texts(current().fields);
        onShow_ = place_;
    }
    void fillGrid()
    {
        grid_.clear();
        for (const Shown& row : shown_)
            grid_ << texts(row.fields).join(u'|') + u'|';
    }
    QString buttons() const
    {
        return state_ == State::New       ? u"1 9"_s
               : state_ == State::Editing ? u"1 3 9"_s
               : isEmpty()                ? u"0 8"_s
                                          : u"0 2 8 10 11 12 13"_s;
    }
    void press(int button);
    QString step();

    QStringList grid_;
    int onShow_ = 0; // the place of the row in the boxes
};

void DefectsWalk::press(int button)
{
    const bool isOn = buttons().split(u' ').contains(QString::number(button));
    const Answer answer = below(2) == 0 ? Answer::Yes : Answer::No;
    isOn&& button == 3 ? removeDefect(answer) : click(defect().Command1(button));
    if (!isOn)
        return;
    if (button == 0) {
        leave();
        boxes_ = Fields(4, u""_s);
        state_ = State::New;
    } else if (button == 1) {
        Fields typed = boxes_;
        for (int i = 0; i < 4; ++i)
            if (typed[i].isEmpty())
                typed[i] = QString(i < 2 ? 7 : 23, u'*');
        if (!store(typed, isEmpty() ? boxes_ : texts(current().fields)))
            return;
        state_ = State::Browsing;
        onShow_ = place_;
        move(13);
        fillGrid();
    } else if (button == 2) {
        if (onShow_ != place_)
            show();
        state_ = State::Editing;
    } else if (button == 3) {
        state_ = State::Browsing;
        if (answer == Answer::No)
            return;
        if (remove())
            place_ = std::max(0, last());
        fillGrid();
        show();
    } else if (button == 9) {
        cancel();
        show();
    } else if (button == 8) {
        defect().show();
        open();
        show();
        fillGrid();
    } else {
        move(button);
        show();
    }
}

QString DefectsWalk::step()
{
    const QStringList texts{u""_s,        u"Aurora"_s,         u"Aurora Plus"_s, u"boreal"_s,
                            u"D'Oeste"_s, u"Um\ndois\ntrês"_s, u"*******"_s};
    const int what = below(20);
    if (what < 10) {
        const int button = below(14);
        press(button);
        return u"button %1"_s.arg(button);
    }
    if (what < 13) {
        otherStationWrites(texts);
        return u"other"_s;
    }
    if (what < 16 && !grid_.isEmpty() && defect().MSFlexGrid1.enabled()) {
        const int row = below(static_cast<int>(grid_.size()));
        click(defect().MSFlexGrid1, row + 1);
        const QString brand = grid_[row].section(u'|', 0, 0);
        if (state_ == State::Browsing && !brand.isEmpty()) {
            find(0, brand);
            show();
        }
        return u"click %1"_s.arg(row);
    }
    const int field = below(4);
    QString text = oneOf(texts);
    if (field < 3)
        text.replace(u'\n', u' ');
    else
        text.remove(u'\n');
    type(defect().Text2(field), text);
    if (state_ != State::Browsing)
        boxes_[field] = text.left(field < 2 ? 15 : 300);
    return u"type %1 %2"_s.arg(field).arg(text);
}

TEST_F(DefectsWalk, GoesAsTheModel)
{
    defect().show();
    open();
    show();
    walk([this] { return step(); },
         [this] {
             Fields seen;
             for (int field = 0; field < 4; ++field)
                 seen << defect().Text2(field).text();
             EXPECT_EQ(seen, boxes_);
             EXPECT_EQ(enabledOf(defect().Command1), buttons());
             EXPECT_EQ(defect().Text2(0).locked(), state_ == State::Browsing);
             EXPECT_EQ(gridRows(defect().MSFlexGrid1), grid_);
             EXPECT_EQ(defect().Text1(16).text().toInt(), static_cast<int>(shown_.size()));
         });
}

} // namespace
