#include "ConfigurarTest.h"
#include "RandomWalk.h"

#include <QMap>

namespace {

// The eight tasks beside a naive model of them; another station adds users and changes them.
class ConfigurarWalk : public RandomWalk<Configurar>
{
protected:
    ConfigurarWalk() : RandomWalk(u"VALIDAR"_s)
    {
        mainSql(u"DELETE FROM VALIDAR"_s);
        set(u"Local/Caminho2"_s, mainFile());
        set(u"Local/Caminho"_s, mainFile());
        set(u"Opcao/Marque2"_s, u"1"_s);
    }
    void set(const QString& key, const QString& value)
    {
        setIni(key.section(u'/', 0, 0), key.section(u'/', 1), value);
        settings_[key] = value;
    }
    QStringList keys() const
    {
        static const QString lists[] = {
            {},
            u"Titulo Endereco Email Telefone Site"_s,
            u"1 2 3 4 5 6 7 8"_s,
            u"11 12 13 14 15 16 17 18"_s,
            u"letter"_s,
            u"Pastabackup"_s,
        };
        if (mode_ >= 6)
            return {};
        QStringList names = lists[mode_].split(u' ');
        for (QString& name : names)
            name.prepend(mode_ == 5 ? u"Backup/"_s : u"Configurar/"_s);
        return names;
    }
    bool keepsUsers() const { return isBusy_ && mode_ >= 6; }

    void beginAnew()
    {
        Configurar::open();
        isServer_ = false;
        combo_ = u"Clique ao lado"_s;
        passwords_ = Fields(3, u""_s);
        user_ = Fields{u""_s, u""_s} + Fields(8, u"0"_s);
        texts_.clear();
    }
    void begin(int mode);
    void tick(int value);
    void showUser();
    void apply();
    void press(int button);
    void typePasswords();
    void otherStation();
    QString step();
    void compare() const;

    int mode_ = 0;
    bool isBusy_ = false, canApply_ = false, canDelete_ = false, isServer_ = false, backsUp_ = true;
    QString combo_;
    Fields texts_, passwords_, user_;
    QMap<QString, QString> settings_;
};

void ConfigurarWalk::tick(int value)
{
    if (isServer_ == (value == 1))
        return;
    backsUp_ = isServer_ = value == 1;
    settings_[u"Opcao/Marque2"_s] = QString::number(value);
    if (isServer_)
        settings_[u"Local/Caminho"_s] = settings_[u"Local/Caminho2"_s];
    canApply_ = !isServer_;
}

void ConfigurarWalk::begin(int mode)
{
    mode_ = mode;
    isBusy_ = true;
    canApply_ = mode != 6 && mode != 7;
    texts_.clear();
    for (const QString& key : keys())
        texts_ << settings_[key] + u""_s;
    if (mode == 4) {
        tick(settings_[u"Opcao/Marque2"_s].toInt());
        texts_ = Fields{u"c"_s};
    }
    if (mode == 6 || mode == 7)
        passwords_ = Fields(3, u""_s);
    open(); // by name
    if (mode == 8) {
        shown_.clear();
        for (const auto& row : rows_)
            if (!row->isGone)
                shown_.push_back({row, row->stored});
    }
    for (int level = 2; mode == 6 && level < 10; ++level)
        user_[level] = u"0"_s;
    if (mode < 7)
        return;
    combo_.clear();
    canApply_ = mode == 8 && !isEmpty();
    canDelete_ = mode == 7 && !isEmpty();
    showUser();
}

void ConfigurarWalk::showUser()
{
    if (!isEmpty())
        user_ = current().fields;
    for (int field = 2; field < user_.size(); ++field) // a Null shows as ticked
        user_[field] = user_[field] == u"0" ? u"0"_s : u"1"_s;
}

void ConfigurarWalk::apply()
{
    const bool isRefused =
        (mode_ == 6 || mode_ == 7) &&
        (passwords_[1] != passwords_[2] || (mode_ == 7 && passwords_[0] != user_[1] + u""_s));
    if (isRefused)
        expectBox(u"Senha não confere,digite novamente."_s);
    click(form().Command1(4));
    canDelete_ = false;
    canApply_ = isRefused && mode_ == 7;
    isBusy_ = isRefused;
    if (isRefused) {
        passwords_ = {mode_ == 6 ? passwords_[0] : u""_s, u""_s, u""_s};
        return;
    }
    if (mode_ == 6) {
        rows_.push_back(std::make_shared<Row>(Row{user_, false}));
        rows_.back()->stored[0] = passwords_[0];
        rows_.back()->stored[1] = passwords_[2];
    } else if (mode_ >= 7 && !combo_.isEmpty()) {
        for (Fields* fields : {&current().row->stored, &current().fields}) {
            for (int level = 2; level < user_.size(); ++level)
                (*fields)[level] = user_[level];
            if (mode_ == 7)
                (*fields)[1] = passwords_[2];
        }
        if (mode_ == 7) {
            combo_.clear();
            place_ = 0;
            showUser();
        }
    } else if (mode_ == 4) {
        EXPECT_EQ(ini(u"Local"_s, u"Caminho"_s),
                  texts_[0] + u":\\Arquivos de programas\\Vorbelo\\GALTERIA1.mdb"_s);
        set(u"Local/Caminho"_s, mainFile()); // nobody maps the letter
        return;
    }
    for (int line = 0; line < texts_.size(); ++line)
        settings_[keys()[line]] = texts_[line];
}

void ConfigurarWalk::press(int button)
{
    const QString next = form().Command1(1).caption();
    if (button == 4 && isBusy_ && canApply_) {
        apply();
        return;
    }
    click(form().Command1(button));
    if (isBusy_ && button == 3 && canDelete_ && !combo_.isEmpty()) {
        current().row->isGone = true;
        combo_.clear();
        isBusy_ = canDelete_ = false;
    } else if (isBusy_ && button == 5) {
        isBusy_ = canDelete_ = false;
    } else if (button == 5) {
        EXPECT_FALSE(form().isLoaded());
        beginAnew();
    } else if (!isBusy_) {
        const int modes[] = {1, next.endsWith(u"entrada"_s) ? 2 : 3, 4, 5, 8, 0, 6, 7};
        begin(modes[button]);
    }
}

void ConfigurarWalk::typePasswords()
{
    const QStringList texts{u""_s, u"1"_s, u"2"_s, u"Ana"_s, u"Mariana"_s, u"d'Ávila"_s};
    passwords_[0] = mode_ == 7 && below(4) > 0 ? user_[1] + u""_s : oneOf(texts);
    passwords_[1] = oneOf(texts);
    passwords_[2] = below(4) > 0 ? passwords_[1] : oneOf(texts);
    Configurar::typePasswords(passwords_[0], passwords_[1], passwords_[2]);
}

// In the middle of a task no field that it stores.
void ConfigurarWalk::otherStation()
{
    Fields fields{oneOf({u"Ana"_s, u"Mariana"_s, u"d'Ávila"_s}), oneOf({QString(), u"1"_s})};
    for (int level = 1; level <= 8; ++level)
        fields << oneOf({QString(), u"0"_s, u"1"_s});
    insert(rows_, table_, names_, fields);
    if (!isBusy_ || mode_ == 8) {
        mainSql(u"UPDATE VALIDAR SET SENHA = 'a'"_s);
        for (const auto& row : rows_)
            row->stored[1] = u"a"_s;
    }
}

QString ConfigurarWalk::step()
{
    const int what = below(10);
    if (what == 0 && rows_.size() < 30) {
        otherStation();
        return u"other"_s;
    }
    if (what < 4 || !isBusy_ || (mode_ >= 7 && isEmpty())) {
        const int button = below(8);
        press(button);
        return u"button %1"_s.arg(button);
    }
    if (keepsUsers() && what < 6) {
        typePasswords();
    } else if (keepsUsers() && what < 8 && mode_ != 6) {
        combo_ = shown_[static_cast<size_t>(below(last() + 1))].fields[0];
        choose(combo_);
        if (combo_.contains(u'\'')) { // a look-up that fails chooses nobody
            combo_.clear();
        } else {
            find(0, combo_);
            showUser();
        }
    } else if (keepsUsers()) {
        const int level = below(8);
        user_[2 + level] = oneOf({u"0"_s, u"1"_s});
        form().Check2(level).setValue(user_[2 + level].toInt());
        return u"level %1"_s.arg(level);
    } else if (mode_ == 4 && what < 7) {
        form().Check1.setValue(below(2));
        tick(form().Check1.value());
    } else if (mode_ != 4 || !isServer_) {
        static constexpr int limits[] = {0, 48, 116, 116, 1, 112};
        const int line = below(static_cast<int>(texts_.size()));
        const QString text = oneOf({u""_s, u"f"_s, u"Rua 1; [x] = Ç"_s, QString(60, u'y')});
        type(form().Text1(line), text);
        texts_[line] = text.left(limits[mode_]);
        return u"line %1"_s.arg(line);
    }
    if (mode_ == 6 || mode_ == 7)
        canApply_ = !passwords_.contains(u""_s) && (mode_ == 6 || !combo_.isEmpty());
    return u"in task %1"_s.arg(mode_);
}

void ConfigurarWalk::compare() const
{
    const QString on = (canDelete_ ? u"3 "_s : u""_s) + (canApply_ ? u"4 "_s : u""_s) + u'5';
    EXPECT_EQ(enabledOf(form().Command1), isBusy_ ? on : u"0 1 2 3 4 5 6 7"_s);
    EXPECT_EQ(form().Command1(4).caption(), isBusy_ ? u"&Aplicar"_s : u"&Nivel de Acesso"_s);
    EXPECT_EQ(form().Command1(5).caption(), isBusy_ ? u"&Cancelar"_s : u"&Fechar"_s);
    EXPECT_EQ(form().Frame2.enabled(), keepsUsers() && (mode_ == 6 || !isEmpty()));
    EXPECT_EQ(principal().Command1(5).enabled(), backsUp_);
    EXPECT_EQ(form().Combo1.text(), combo_);
    for (int line = 0; isBusy_ && line < texts_.size(); ++line)
        EXPECT_EQ(form().Text1(line).text(), texts_[line]);
    Fields user{form().Text6.text(), form().Text7.text()};
    for (int level = 0; level < 8; ++level)
        user << QString::number(form().Check2(level).value());
    EXPECT_EQ(user, user_);
    EXPECT_EQ((Fields{form().Text2.text(), form().Text3.text(), form().Text4.text()}), passwords_);
    for (auto setting = settings_.cbegin(); setting != settings_.cend(); ++setting)
        EXPECT_EQ(ini(setting.key().section(u'/', 0, 0), setting.key().section(u'/', 1)),
                  setting.value());
}

TEST_F(ConfigurarWalk, GoesAsTheModel)
{
    beginAnew();
    walk([this] { return step(); }, [this] { compare(); });
}

} // namespace
