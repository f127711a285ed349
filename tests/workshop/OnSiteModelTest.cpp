#include "OnSiteTest.h"
#include "RandomWalk.h"

#include "Application.h"

namespace {

class OnSiteWalk : public RandomWalk<OnSiteTest>
{
protected:
    OnSiteWalk() : RandomWalk(u"MANUTENCAO"_s, fieldNames()) {}

    static QString stars(int field)
    {
        static constexpr int counts[24] = {7,  0,  0,  29, 29, 21, 2,  5,  16, 24, 10, 10,
                                           14, 33, 25, 26, 27, 29, 31, 32, 32, 33, 39, 0};
        return field == 1 || field == 2 ? u"**/**/****"_s
               : field == 23            ? u"0,00"_s
                                        : QString(counts[field], u'*');
    }
    static QString cut(int field, const QString& text)
    {
        static constexpr int limits[24] = {7,  12, 12, 50, 50, 24, 2,   9,   24,  17,  13, 13,
                                           99, 50, 40, 40, 40, 40, 100, 100, 100, 100, 60, 12};
        return text.left(limits[field]);
    }
    static QString asShown(int field, const QString& text)
    {
        struct Number
        {
            QString phone, document, money;
        };
        static const std::map<QString, Number> numbers{
            {u"7"_s, {u"(00)0000-0007"_s, u"00-000-000-0000/07"_s, u"7,00"_s}},
            {u"0000041"_s, {u"(00)0000-0041"_s, u"00-000-000-0000/41"_s, u"41,00"_s}},
            {u"1932324410"_s, {u"(19)3232-4410"_s, u"00-001-932-3244/10"_s, u"1.932.324.410,00"_s}},
            {u"52998224725"_s, {u"(529)9822-4725"_s, u"529-982-247/25"_s, u"52.998.224.725,00"_s}},
            // A value beyond its box comes back shorter, told so by the box's length.
            {u"1.932.324.41"_s, {{}, {}, u"193.232.441,00"_s}},
            {u"193.232.441,"_s, {{}, {}, u"193.232.441,00"_s}},
            {u"52.998.224.7"_s, {{}, {}, u"529.982.247,00"_s}},
            {u"529.982.247,"_s, {{}, {}, u"529.982.247,00"_s}},
            {u"1932324"_s, {u"(00)0193-2324"_s, u"00-000-001-9323/24"_s, u"1.932.324,00"_s}},
            {u"5299822"_s, {u"(00)0529-9822"_s, u"00-000-005-2998/22"_s, u"5.299.822,00"_s}}};
        const bool isPhone = field == 10 || field == 11;
        if (text.isNull())
            return isPhone ? u"(  )    -    "_s : field == 23 ? u"0,00"_s : u""_s;
        const auto number = numbers.find(text);
        if (number == numbers.end() || !(isPhone || field == 12 || field == 23))
            return cut(field, text);
        return cut(field, isPhone       ? number->second.phone
                          : field == 12 ? number->second.document
                                        : number->second.money);
    }
    void show()
    {
        boxes_ = Fields(24, u""_s);
        for (int i = 0; i < 24 && !isEmpty(); ++i)
            boxes_[i] = asShown(i, current().fields[i]);
    }
    Fields filled()
    {
        Fields texts = boxes_;
        for (int i = 0; state_ == State::Editing && i < 24; ++i)
            texts[i] = asShown(i, current().fields[i]);
        return texts;
    }
    void browse()
    {
        state_ = State::Browsing;
        canGoBack_ = canGoOn_ = true;
    }
    void reopen()
    {
        record().unload();
        record().show();
        open();
        browse();
        show();
        mode_ = 0;
    }
    QString buttons() const
    {
        return isCopying_                 ? u"5"_s
               : state_ == State::New     ? u"1 9"_s
               : state_ == State::Editing ? u"1 3 9"_s
               : isEmpty()                ? u"0 8"_s
                                          : u"0 2 5 6 8 "_s + (canGoBack_ ? u"10 "_s : u""_s) +
                                 (canGoOn_ ? u"11 "_s : u""_s) + u"12 13"_s;
    }
    void beginNew()
    {
        place_ = std::max(0, last());
        show();
        const int number = boxes_[0].right(7).toInt() + 1;
        boxes_ = Fields(24, u""_s);
        boxes_[0] = QString::number(number).rightJustified(7, u'0');
        boxes_[1] = u"09/03/2026"_s;
        state_ = State::New;
    }
    void press(int button);
    void save();
    QString step();

    bool isCopying_ = false, canGoBack_ = true, canGoOn_ = true;
    int mode_ = 0;
    Fields copied_;
};

// A refusal is the told fault: the program ends, and is started anew.
void OnSiteWalk::save()
{
    Fields typed;
    for (int i = 0; i < 24; ++i)
        typed << (boxes_[i].isEmpty() ? stars(i) : boxes_[i]);
    if (store(typed, filled())) {
        click(record().Command1(1));
        if (mode_ == 1)
            place_ = last();
        mode_ = 0;
        browse();
        show();
        return;
    }
    int ended = 0;
    setEndProgramForTests([&](EndReason) { ++ended; });
    expectErrorBox(u"Erro nº -2147217864"_s);
    click(record().Command1(1));
    EXPECT_EQ(ended, 1);
    setEndProgramForTests([](EndReason reason) { EXPECT_EQ(reason, EndReason::ExitQuestion); });
    leave();
    reopen();
}

void OnSiteWalk::press(int button)
{
    if (!buttons().split(u' ').contains(QString::number(button))) {
        click(record().Command1(button));
        return;
    }
    if (button == 1) {
        save();
        return;
    }
    const Answer answer = below(2) == 0 ? Answer::Yes : Answer::No;
    button == 3 ? OnSiteTest::remove(answer) : click(record().Command1(button));
    if (button == 0) {
        beginNew();
        mode_ = 1;
    } else if (button == 2) {
        state_ = State::Editing;
    } else if (button == 3) {
        browse();
        if (answer == Answer::No)
            return;
        const bool wasFirst = place_ == 0;
        if (RandomWalk::remove())
            canGoBack_ = !wasFirst;
        show();
    } else if (button == 5 && !isCopying_) {
        copied_ = boxes_;
        boxes_ = Fields(24, u""_s);
        isCopying_ = true;
    } else if (button == 5) {
        isCopying_ = false;
        beginNew();
        for (int i = 3; i <= 13; ++i)
            boxes_[i] = copied_[i];
    } else if (button == 8) {
        reopen();
    } else if (button == 9) {
        cancel();
        browse();
        show();
    } else if (button >= 10) {
        canGoBack_ = button == 10 ? place_ > 0 : button != 12;
        canGoOn_ = button == 11 ? place_ < last() : button != 13;
        move(button);
        show();
    }
}

QString OnSiteWalk::step()
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
    if (what == 13 && state_ == State::Browsing && !isCopying_ && !isEmpty()) {
        const QString number = oneOf(texts);
        record().Text2.setText({});
        record().Text2.setText(number);
        if (!number.isEmpty()) {
            find(0, number);
            show();
        }
        return u"look "_s + number;
    }
    const int field = below(24);
    const QString text = oneOf(texts);
    type(boxOf(field), text);
    if (state_ != State::Browsing)
        boxes_[field] = cut(field, text);
    return u"type %1 %2"_s.arg(field).arg(text);
}

TEST_F(OnSiteWalk, GoesAsTheModel)
{
    record().show();
    open();
    show();
    walk([this] { return step(); },
         [this] {
             Fields seen;
             for (int field = 0; field < 24; ++field)
                 seen << boxOf(field).text();
             EXPECT_EQ(seen, boxes_);
             EXPECT_EQ(enabledOf(record().Command1), buttons());
             EXPECT_EQ(record().Text1(0).locked(), state_ == State::Browsing);
             EXPECT_EQ(record().Text5.text().toInt(), static_cast<int>(shown_.size()));
         });
}

} // namespace
