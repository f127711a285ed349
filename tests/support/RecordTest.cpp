#include "RecordTest.h"

#include "Funciones.h"

#include <QWidget>

void RecordTest::expectQuestion(const QString& text, Answer answer)
{
    expectBox(text, answer, BoxButtons::YesNo, BoxIcon::Question);
}

void RecordTest::remove(const Record& record, Answer answer)
{
    expectQuestion(record.question, answer);
    click(record.buttons(3));
}

QStringList RecordTest::names(const Record& record) const
{
    const auto of = [&](const QString& table) {
        return sql(mainFile(), u"SELECT %1 FROM %2 ORDER BY _id"_s.arg(record.name, table));
    };
    if (!record.twin.isEmpty()) {
        EXPECT_EQ(of(record.twin), of(record.table));
    }
    return of(record.table);
}

void RecordTest::refill(const Record& record, const QStringList& names)
{
    for (const QString& table : {record.table, record.twin})
        if (!table.isEmpty())
            mainSql(u"DELETE FROM "_s + table);
    for (int row = 0; row < names.size(); ++row)
        record.add(QString::number(row + 1).rightJustified(7, u'0'), names[row]);
}

void RecordTest::open(const Record& record, const QStringList& names)
{
    record.form.unload();
    refill(record, names);
    setEndProgramForTests([this](EndReason) { ++ended_; });
    ended_ = 0;
    record.form.show();
}

void RecordTest::expectStates(const Record& record, const std::vector<RecordState>& states,
                              const std::function<QString()>& shown,
                              const std::function<void(const RecordState&)>& alsoExpect)
{
    expectEasyToWalk(record.form);
    for (const RecordState& state : states) {
        SCOPED_TRACE(state.pressed.toStdString());
        for (const QString& key : state.pressed.split(u' ', Qt::SkipEmptyParts)) {
            if (key.startsWith(u'='))
                type(record.boxes(0), key.mid(1));
            else if (key == u"3y"_s || key == u"3n"_s)
                remove(record, key == u"3y"_s ? Answer::Yes : Answer::No);
            else
                click(record.buttons(key.toInt()));
        }
        EXPECT_EQ(enabledOf(record.buttons), state.buttons);
        EXPECT_EQ(lockedOf(record.boxes), state.locked);
        EXPECT_EQ(shown(), state.shown);
        if (alsoExpect)
            alsoExpect(state);
    }
}

void RecordTest::expectSafe(const Record& record)
{
    expectStoredOnceWhateverFails(record);
    expectNoOtherRowTouchedWhateverFails(record);
    expectGoneWhereAnotherDeletedIt(record);
    // Leaving for another form of the program closes it, and its pair.
    open(record, {u"Ana"_s});
    const auto connection = Funciones::Conexao1.shared();
    record.form.focusLeft();
    const bool stays = record.table == u"DEFEITO"_s;
    EXPECT_EQ(record.form.isLoaded(), stays);
    EXPECT_EQ(connection->isOpen(), stays);
}

void RecordTest::expectStoredOnceWhateverFails(const Record& record)
{
    const QStringList before{u"Ana"_s, u"Bia"_s};
    for (const auto& [begin, store] : {std::pair{0, 1}, {2, 1}, {2, 3}}) {
        SCOPED_TRACE(store + begin);
        const QStringList wanted = store == 3   ? QStringList{u"Bia"_s}
                                   : begin == 2 ? QStringList{u"New"_s, u"Bia"_s}
                                                : before + QStringList{u"New"_s};
        QString browsing, editing;
        const auto prepare = [&, begin = begin] {
            open(record, before);
            browsing = enabledOf(record.buttons);
            click(record.buttons(begin));
            type(record.boxes(0), u"New"_s);
            editing = enabledOf(record.buttons);
        };
        const auto act = [&, store = store] { click(record.buttons(store)); };
        const auto check = [&, store = store](bool failed) {
            const bool isDone = names(record) == wanted;
            EXPECT_TRUE(isDone || (failed && names(record) == before));
            EXPECT_EQ(ended_, failed && store == 1 && record.endsOnFailure ? 1 : 0);
            if (!isDone && record.endsOnFailure) {
                prepare();
                act();
            } else if (!isDone) {
                EXPECT_EQ(record.boxes(0).text(), store == 1 ? u"New"_s : u"Ana"_s);
                if (store == 1) {
                    EXPECT_EQ(enabledOf(record.buttons), editing);
                }
                click(record.buttons(2));
                act();
            }
            EXPECT_EQ(names(record), wanted);
            if (store == 1 && ended_ == 0) {
                EXPECT_EQ(enabledOf(record.buttons), browsing);
            }
        };
        failEachCall(prepare, act, check, 1);
        failEachWrite(prepare, act, check);
        failEachLock(prepare, act, check);
    }
}

void RecordTest::expectNoOtherRowTouchedWhateverFails(const Record& record)
{
    const QStringList before{u"Ana"_s, u"Bia"_s, u"Eva"_s};
    constexpr int Show = -1;
    for (const auto& [move, store] : {std::pair{Show, 1}, {10, 1}, {11, 3}, {12, 3}, {13, 1}}) {
        const auto prepare = [&, move = move] {
            open(record, before);
            move == Show ? record.form.unload() : click(record.buttons(11));
        };
        const auto act = [&, move = move] {
            move == Show ? record.form.show() : click(record.buttons(move));
        };
        const auto check = [&, store = store](bool failed) {
            EXPECT_TRUE(ended_ == 0 || (record.endsOnFailure && failed));
            QStringList wanted = before;
            if (ended_ == 0 && record.form.isLoaded() && record.buttons(2).enabled()) {
                click(record.buttons(2)); // which may bring another row into view first
                wanted.removeOne(record.boxes(0).text());
                type(record.boxes(0), u"New"_s);
                click(record.buttons(store));
            }
            QStringList others = names(record);
            others.removeOne(u"New"_s);
            EXPECT_EQ(others, wanted);
        };
        failEachCall(prepare, act, check, 1);
    }
}

void RecordTest::expectGoneWhereAnotherDeletedIt(const Record& record)
{
    setMsgBoxForTests(
        [](const Box& box) { return box.buttons == BoxButtons::YesNo ? Answer::Yes : Answer::Ok; });
    for (const int end : {3, 9}) {
        if (end == 9 && record.endsOnFailure)
            return; // it ends where it is saved
        for (const QStringList& left : {QStringList{u"Bia"_s}, QStringList()}) {
            open(record, QStringList{u"Ana"_s} + left);
            const QString buttons = enabledOf(record.buttons);
            click(record.buttons(2));
            for (const QString& table : {record.table, record.twin})
                if (!table.isEmpty())
                    mainSql(u"DELETE FROM %1 WHERE %2 = 'Ana'"_s.arg(table, record.name));
            type(record.boxes(0), u"Typed"_s);
            if (!record.endsOnFailure)
                click(record.buttons(1));
            click(record.buttons(end));
            EXPECT_EQ(record.boxes(0).text(), left.join(u' '));
            EXPECT_EQ(enabledOf(record.buttons), left.isEmpty() ? u"0 8"_s : buttons);
            EXPECT_EQ(names(record), left);
            EXPECT_EQ(ended_, 0);
        }
    }
}

void RecordTest::expectToBeLeftWithoutDatabase(const Record& record, int boxes)
{
    QStringList told;
    setMsgBoxForTests([&](const Box& box) {
        told << box.text;
        return Answer::Ok;
    });
    setIni(u"Local"_s, u"Caminho"_s, folder() + u"/nowhere.mdb"_s);
    record.form.show();
    EXPECT_EQ(told.size(), boxes) << told.join(u'\n').toStdString();
    EXPECT_TRUE(told.value(1).startsWith(u"Restaure o Banco de Dados ou Localize"_s));
    EXPECT_EQ(told.value(2), u"Erro ao iniciar o Fornulario,informe ao programador o erro"_s);
    EXPECT_TRUE(record.form.isLoaded());
    click(record.buttons(8));
    EXPECT_FALSE(record.form.isLoaded());
    EXPECT_TRUE(ends().empty());
}

void RecordTest::expectDocumentChecked(TextBox& document, Control& next, const QString& wrongCGC)
{
    const QString length = u"Tem que ser 11 numeros para CPF e 14 numeros para CGC"_s;
    const std::tuple<QString, QString, int> table[] = {
        {u"1114447773"_s, length, 0},
        {u"111444777351"_s, length + u'"', 0},
        {u"11144477736"_s, u"CPF com DV incorreto !!!"_s, 14},
        {u"11144477735"_s, {}, 14},
        {u"11222333000182"_s, wrongCGC, 18},
        {u"11222333000181"_s, {}, 18},
        {u"11-222-333-0001/81"_s, {}, 0},
    };
    for (const auto& [text, message, limit] : table) {
        SCOPED_TRACE(text.toStdString());
        document.setMaxLength(0);
        enter(document);
        document.setText(text);
        if (!message.isEmpty())
            expectBox(message);
        enter(next);
        EXPECT_EQ(document.text(), message.isEmpty() ? text : QString());
        EXPECT_EQ(document.maxLength(), limit);
        EXPECT_EQ(document.widget()->hasFocus(), !message.isEmpty());
    }
}
