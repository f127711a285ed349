#include "PurchaseTest.h"
#include "RandomWalk.h"

namespace {

class PurchaseWalk : public RecordWalk<PurchaseTest>
{
protected:
    PurchaseWalk()
        : RecordWalk(u"PEDIDO"_s, {u"DESCRICAO"_s, u"QUANTIDADE"_s, u"CODIGO"_s, u"DATAPEDIDO"_s})
    {
        always_ = u"0 2 6 8"_s;
        number_ = 2;
        noNumber_ = u"0000000"_s;
        order_ = label_ = 3;
        columns_ = {3, 1, 0, 2};
        keyColumn_ = 3;
        texts_ = {u""_s,   u"Alfa"_s,    u"beta"_s,       u"01/03/2026"_s, u"p.EST"_s,
                  u"41"_s, u"0000041"_s, u"**/**/****"_s, u"0000007"_s,    u"d'"_s};
    }
    Record walked() override { return purchases(); }
    FlexGrid* grid() override { return &list().MSFlexGrid1; }
    TextBox& countBox() override { return list().Text1(2); }
    TextBox& fieldBox(int field) override { return list().Text1(field < 2 ? field : 3); }
    QString inBox(int field) override
    {
        return field == label_ ? list().Label2.caption() : fieldBox(field).text();
    }
    int typedFields() const override { return 2; }
    QString asShown(int field, const QString& text) const override
    {
        static constexpr int limits[4] = {45, 5, 7, 99};
        return text.left(limits[field]) + u""_s;
    }
    QString asTyped(int field, const QString& text) const override { return asShown(field, text); }
    QString filler(int field) const override
    {
        static constexpr int counts[3] = {15, 4, 7};
        return field == label_ ? u"**/**/****"_s : QString(counts[field], u'*');
    }
    // An order that went by Esc in the middle of its edit turned the bar on.
    QString buttons() const override
    {
        return state_ != State::Editing
                   ? RecordWalk::buttons()
                   : u"1 3 9"_s + (canGoBack_ ? u" 10"_s : u""_s) + (canGoOn_ ? u" 11"_s : u""_s);
    }
    void reopened() override
    {
        if (isEmpty()) // as the grid was drawn
            gridRows_ << u"|||"_s;
        reloads_ = false;
    }
    void pressed(int button) override
    {
        if (button == 0)
            boxes_[label_] = u"09/03/2026"_s;
        if (button == 2)
            canGoBack_ = canGoOn_ = false;
        if (button == 0 || button == 2)
            reloads_ = true;
        for (int pass = -1; button == 6 && pass <= last(); ++pass)
            gridRows_ << u"|||"_s;
    }
    void refused() override
    {
        expectErrorBox(u"Erro nº -2147217864"_s);
        RecordWalk::refused();
    }
    void stored() override
    {
        onShow_ = place_;
        leave();
        place_ = reloads_ ? last() : 0; // Esc in the middle of the edit reloaded the grid already
        reloads_ = false;
    }
    void removed(bool wasFirst) override
    {
        RecordWalk::removed(wasFirst);
        reloads_ = isEmpty();
        if (isEmpty())
            browse();
    }
    // Esc takes out what is on show, without a question, wherever it is pressed.
    QString step() override
    {
        if (gridRows_.isEmpty() || below(20) > 0)
            return RecordWalk::step();
        const int row = below(static_cast<int>(gridRows_.size()));
        list().MSFlexGrid1.setRow(row + 1);
        escape();
        if (!gridRows_[row].endsWith(u'|') && state_ != State::New)
            onShow_ == place_ ? removeNow() : show();
        return u"escape %1"_s.arg(row);
    }

    bool reloads_ = false; // FlagRecarga
};

TEST_F(PurchaseWalk, GoesAsTheModel)
{
    goAsTheModel();
}

} // namespace
