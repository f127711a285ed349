#include "OnSiteTest.h"
#include "RandomWalk.h"

#include "Application.h"

namespace {

class OnSiteWalk : public RecordWalk<OnSiteTest>
{
protected:
    OnSiteWalk() : RecordWalk(u"MANUTENCAO"_s, fieldNames())
    {
        always_ = u"0 2 5 6 8"_s;
        number_ = 0;
    }
    ControlArray<CommandButton>& commands() override { return record().Command1; }
    TextBox& countBox() override { return record().Text5; }
    TextBox& fieldBox(int field) override { return boxOf(field); }
    void clickRemove(Answer answer) override { OnSiteTest::remove(answer); }
    void openForm() override
    {
        record().unload();
        record().show();
        mode_ = 0;
    }
    QString buttons() const override { return isCopying_ ? u"5"_s : RecordWalk::buttons(); }
    QString asTyped(int field, const QString& text) const override { return cut(field, text); }
    QString filler(int field) const override
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
    QString asShown(int field, const QString& text) const override
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
    void pressed(int button) override
    {
        if (button == 0)
            mode_ = 1;
        if (button == 0 || (button == 5 && isCopying_)) {
            if (button == 5)
                beginNew();
            boxes_[1] = u"09/03/2026"_s;
        }
        if (button != 5)
            return;
        isCopying_ = !isCopying_;
        if (isCopying_) {
            copied_ = boxes_;
            boxes_ = Fields(24, u""_s);
        } else {
            for (int i = 3; i <= 13; ++i)
                boxes_[i] = copied_[i];
        }
    }
    void stored() override
    {
        if (mode_ == 1)
            place_ = last();
        mode_ = 0;
        show();
    }
    // A refusal is the told fault: the program ends, and is started anew.
    void refused() override
    {
        int ended = 0;
        setEndProgramForTests([&](EndReason) { ++ended; });
        expectErrorBox(u"Erro nº -2147217864"_s);
        click(record().Command1(1));
        EXPECT_EQ(ended, 1);
        setEndProgramForTests([](EndReason reason) { EXPECT_EQ(reason, EndReason::ExitQuestion); });
        leave();
        reopen();
    }
    void removed(bool wasFirst) override { canGoBack_ = !wasFirst; }
    QString lookUp(int what) override
    {
        if (what != 13 || state_ != State::Browsing || isCopying_ || isEmpty())
            return {};
        const QString number = below(4) == 0 ? u"'"_s : oneOf(texts_);
        record().Text2.setText({});
        record().Text2.setText(number);
        if (!number.isEmpty()) {
            find(0, number);
            show();
        }
        return u"look "_s + number;
    }

    bool isCopying_ = false;
    int mode_ = 0;
    Fields copied_;
};

TEST_F(OnSiteWalk, GoesAsTheModel)
{
    goAsTheModel();
}

} // namespace
