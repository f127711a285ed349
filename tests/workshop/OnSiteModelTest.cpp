#include "OnSiteTest.h"
#include "RandomWalk.h"

#include "Application.h"

namespace {

class OnSiteWalk : public RecordWalk<OnSiteTest>
{
protected:
    OnSiteWalk() : RecordWalk(u"MANUTENCAO"_s)
    {
        always_ = u"0 2 5 6 8"_s;
        number_ = 0;
        copies_ = {3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13};
    }
    Record walked() override { return onSite(); }
    TextBox& countBox() override { return record().Text5; }
    TextBox& fieldBox(int field) override
    {
        static constexpr int boxes[24] = {18, 19, 20, 0, 1,  2,  3,  4,  5,  6,  -1, -1,
                                          -1, 7,  8,  9, 10, 11, 12, 13, 14, 15, 17, 16};
        return boxes[field] < 0 ? record().Text3(field - 10) : record().Text1(boxes[field]);
    }
    TextBox* numberBox() override { return &record().Text2; }
    void reopened() override { mode_ = 0; }
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
        // A value beyond its box comes back shorter, told so by the box's length.
        static const std::map<QString, QString> cutMoney{{u"1.932.324.41"_s, u"193.232.441,00"_s},
                                                         {u"193.232.441,"_s, u"193.232.441,00"_s},
                                                         {u"52.998.224.7"_s, u"529.982.247,00"_s},
                                                         {u"529.982.247,"_s, u"529.982.247,00"_s}};
        const bool isPhone = field == 10 || field == 11;
        if (text.isNull())
            return isPhone ? u"(  )    -    "_s : field == 23 ? u"0,00"_s : u""_s;
        if (field == 23 && cutMoney.contains(text))
            return cut(field, cutMoney.at(text));
        const auto number = shownNumber(text);
        if (!number || !(isPhone || field == 12 || field == 23))
            return cut(field, text);
        return cut(field, isPhone ? number->phone : field == 12 ? number->document : number->money);
    }
    void pressed(int button) override
    {
        if (button == 0)
            mode_ = 1;
        if (state_ == State::New)
            boxes_[1] = u"09/03/2026"_s;
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
        RecordWalk::refused();
        EXPECT_EQ(ended, 1);
        setEndProgramForTests([](EndReason reason) { EXPECT_EQ(reason, EndReason::ExitQuestion); });
        leave();
        reopen();
    }

    int mode_ = 0;
};

TEST_F(OnSiteWalk, GoesAsTheModel)
{
    goAsTheModel();
}

} // namespace
