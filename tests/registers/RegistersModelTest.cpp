#include "RandomWalk.h"
#include "RegistersTest.h"

namespace {

class FirmsWalk : public RecordWalk<RegistersTest>
{
protected:
    FirmsWalk() : RecordWalk(u"FORNECEDOR"_s)
    {
        always_ = u"0 2 4 8"_s;
        number_ = 9;
        noNumber_ = u"0000000"_s;
    }
    Record walked() override { return firms(); }
    TextBox& countBox() override { return firm().Text1(5); }
    TextBox& fieldBox(int field) override
    {
        return field < 4    ? firm().Text1(field)
               : field < 8  ? firm().Text6(field - 4)
               : field == 8 ? firm().Text1(4)
                            : firm().Text4;
    }
    TextBox* numberBox() override { return &firm().Text3; }
    int typedFields() const override { return 9; }
    void reopened() override { search().unload(); }
    void removed(bool /*wasFirst*/) override {}
    QString asShown(int field, const QString& text) const override
    {
        const bool isPhone = field == 4 || field == 5;
        const auto number = isPhone || field == 6 ? shownNumber(text) : std::nullopt;
        if (text.isNull() || !number)
            return text.isNull() && isPhone ? u"(  )    -    "_s : text + u""_s;
        return !isPhone ? number->document : number->phone.size() > 13 ? text : number->phone;
    }
    QString asTyped(int field, const QString& text) const override
    {
        QString digits = text;
        digits.removeIf([](QChar c) { return !c.isDigit(); });
        return field >= 4 && field <= 6 ? digits : text;
    }
};

TEST_F(FirmsWalk, GoesAsTheModel)
{
    goAsTheModel();
}

class DefectsWalk : public RecordWalk<RegistersTest>
{
protected:
    DefectsWalk() : RecordWalk(u"DEFEITO"_s)
    {
        always_ = u"0 2 8"_s;
        turnsOffAtEnds_ = looksInEdits_ = false;
        refillsAlways_ = true;
        columns_ = {0, 1, 2, 3, -1};
        texts_ = {u""_s,        u"Aurora"_s,         u"Aurora Plus"_s, u"boreal"_s,
                  u"D'Oeste"_s, u"Um\ndois\ntrês"_s, u"*******"_s};
    }
    Record walked() override { return defects(); }
    FlexGrid* grid() override { return &defect().MSFlexGrid1; }
    TextBox& countBox() override { return defect().Text1(16); }
    QString filler(int field) const override { return QString(field < 2 ? 7 : 23, u'*'); }
    QString asTyped(int field, const QString& text) const override
    {
        return text.left(field < 2 ? 15 : 300);
    }
};

TEST_F(DefectsWalk, GoesAsTheModel)
{
    goAsTheModel();
}

} // namespace
