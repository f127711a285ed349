#include "RandomWalk.h"
#include "StockTest.h"

namespace {

// But for the price, which is Null in all rows.
class RegisterWalk : public RecordWalk<StockTest>
{
protected:
    RegisterWalk()
        : RecordWalk(u"Pecas"_s,
                     {u"DESCRICAO"_s, u"EQUIVALENTE"_s, u"ESTOQUE"_s, u"LOCAL"_s, u"CODIGO"_s})
    {
        always_ = u"0 2 4 5 8"_s;
        number_ = order_ = 4;
        noNumber_ = u"0000000"_s;
        notNull_ = 0;
        copies_ = {0, 3};
        noEndsTheEdit_ = false;
        columns_ = {4, 3, 2, 0, -1};
        otherCell_ = u"0,00"_s;
        texts_ = {u""_s, u"7"_s, u"41"_s, u"0000041"_s, u"1234567"_s, u"05"_s};
    }
    Record walked() override { return catalogue(); }
    FlexGrid* grid() override { return &parts().MSFlexGrid1; }
    TextBox& countBox() override { return parts().Text1(16); }
    TextBox& fieldBox(int field) override
    {
        static constexpr int boxes[5] = {0, 1, 2, 4, 3};
        return parts().Text1(boxes[field]);
    }
    int typedFields() const override { return 4; }
    QString filler(int field) const override
    {
        static constexpr int counts[5] = {15, 10, 0, 7, 7};
        return field == 2 ? u"0"_s : QString(counts[field], u'*');
    }
    void pressed(int button) override
    {
        if (button == 2)
            show();
    }
    void reopened() override
    {
        form<Form1pecabusca>().unload();
        if (isEmpty()) // as the grid was drawn
            gridRows_ << u"||||"_s;
    }
};

TEST_F(RegisterWalk, GoesAsTheModel)
{
    goAsTheModel();
}

} // namespace
