#include "RandomWalk.h"
#include "RegistersTest.h"

namespace {

class FirmsWalk : public RecordWalk<RegistersTest>
{
protected:
    FirmsWalk()
        : RecordWalk(u"FORNECEDOR"_s,
                     {u"NOMEEMPRESA"_s, u"NOMEFORNECEDOR"_s, u"SITE"_s, u"EMAIL"_s, u"TELEFONE"_s,
                      u"CELULAR"_s, u"CGC"_s, u"IE"_s, u"PRODUTO"_s, u"CODIGO"_s})
    {
        always_ = u"0 2 4 8"_s;
        number_ = 9;
        noNumber_ = u"0000000"_s;
    }
    ControlArray<CommandButton>& commands() override { return firm().Command1; }
    TextBox& countBox() override { return firm().Text1(5); }
    TextBox& fieldBox(int field) override
    {
        return field < 4    ? firm().Text1(field)
               : field < 8  ? firm().Text6(field - 4)
               : field == 8 ? firm().Text1(4)
                            : firm().Text4;
    }
    int typedFields() const override { return 9; }
    void clickRemove(Answer answer) override { removeFirm(answer); }
    void openForm() override
    {
        search().unload();
        firm().show();
    }
    QString asShown(int field, const QString& text) const override
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
    QString asTyped(int field, const QString& text) const override
    {
        QString digits = text;
        digits.removeIf([](QChar c) { return !c.isDigit(); });
        return field >= 4 && field <= 6 ? digits : text;
    }
    QString lookUp(int what) override
    {
        if (what != 13 || state_ != State::Browsing)
            return {};
        const QString code = below(4) == 0 ? u"'"_s : oneOf(texts_);
        firm().Text3.setText({});
        firm().Text3.setText(code);
        if (!code.isEmpty()) {
            find(9, code);
            show();
        }
        return u"look "_s + code;
    }
};

TEST_F(FirmsWalk, GoesAsTheModel)
{
    goAsTheModel();
}

class DefectsWalk : public RecordWalk<RegistersTest>
{
protected:
    DefectsWalk() : RecordWalk(u"DEFEITO"_s, {u"MARCA"_s, u"MODELO"_s, u"DEFEITO"_s, u"SOLUCAO"_s})
    {
        always_ = u"0 2 8"_s;
        turnsOffAtEnds_ = false;
        texts_ = {u""_s,        u"Aurora"_s,         u"Aurora Plus"_s, u"boreal"_s,
                  u"D'Oeste"_s, u"Um\ndois\ntrês"_s, u"*******"_s};
    }
    ControlArray<CommandButton>& commands() override { return defect().Command1; }
    TextBox& countBox() override { return defect().Text1(16); }
    TextBox& fieldBox(int field) override { return defect().Text2(field); }
    void clickRemove(Answer answer) override { removeDefect(answer); }
    void openForm() override { defect().show(); }
    QString filler(int field) const override { return QString(field < 2 ? 7 : 23, u'*'); }
    QString asTyped(int field, const QString& text) const override
    {
        return text.left(field < 2 ? 15 : 300);
    }
    // What was stored stays in view while the last row is the current one.
    void stored() override
    {
        onShow_ = place_;
        move(13);
    }
    void removed(bool /*wasFirst*/) override { place_ = std::max(0, last()); }
    void refill() override
    {
        grid_.clear();
        for (const Shown& row : shown_) {
            QString cells;
            for (const QString& field : row.fields)
                cells += field + u'|';
            grid_ << cells;
        }
    }
    QString lookUp(int what) override
    {
        if (what >= 16 || grid_.isEmpty() || !defect().MSFlexGrid1.enabled())
            return {};
        const int row = below(static_cast<int>(grid_.size()));
        click(defect().MSFlexGrid1, row + 1);
        const QString brand = grid_[row].section(u'|', 0, 0);
        if (state_ == State::Browsing && !brand.isEmpty()) {
            find(0, brand);
            show();
        }
        return u"click %1"_s.arg(row);
    }
    void compare() override
    {
        RecordWalk::compare();
        EXPECT_EQ(gridRows(defect().MSFlexGrid1), grid_);
    }

    QStringList grid_;
};

TEST_F(DefectsWalk, GoesAsTheModel)
{
    goAsTheModel();
}

} // namespace
