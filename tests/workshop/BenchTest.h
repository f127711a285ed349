#pragma once

#include "Form1servico.h"
#include "WorkshopTest.h"

#include <QCoreApplication>
#include <QEvent>

// The bench over service orders, their twins and a small catalogue.
class BenchTest : public WorkshopTest
{
protected:
    BenchTest()
    {
        addForm<Form1servico>();
        setEndProgramForTests([this](EndReason reason) { faults_ += reason == EndReason::Fault; });
        addPart(u"0000001"_s, u"Capacitor"_s, u"M2"_s, 35000);
        addPart(u"0000002"_s, u"Correia"_s, {}, 12'500'000);
        addPart(u"0000003"_s, u"Correia longa"_s, u"M9"_s, 40000);
        addPart(u"0000004"_s, u"Flyback"_s, u"M1"_s, 500000);
    }

    // As the counter takes it in, with its flags.
    void addOrder(const QString& number, const QString& name = {}, const QString& more = {})
    {
        const QString flags = u"pronto=0, retorno=0, autoriza=0, naotempeca=0"_s;
        WorkshopTest::addOrder(number, name, more.isEmpty() ? flags : flags + u", "_s + more);
    }
    // Money as it is stored, in ten thousandths; a Null equivalent for the null text.
    void addPart(const QString& code, const QString& description, const QString& equivalent = {},
                 int money = 10000)
    {
        mainSql(u"INSERT INTO Pecas (CODIGO, LOCAL, ESTOQUE, DESCRICAO, VALOR, EQUIVALENTE) "
                "VALUES ('%1', 'A1', '77', '%2', %3, %4)"_s.arg(
                    code, QString(description).replace(u'\'', u"''"_s), QString::number(money),
                    equivalent.isNull() ? u"NULL"_s : u'\'' + equivalent + u'\''));
    }
    void changeTwin(const QString& number, const QString& changes)
    {
        mainSql(u"UPDATE PECAAPLICADA SET %1 WHERE NUMERO='%2'"_s.arg(changes, number));
    }
    QString storedTwin(const QString& number, const QString& columns) const
    {
        return sql(mainFile(),
                   u"SELECT %1 FROM PECAAPLICADA WHERE NUMERO='%2'"_s.arg(columns, number))
            .join(u'|');
    }

    static Form1servico& bench() { return form<Form1servico>(); }
    static void search(const QString& number) { type(bench().Text1(0), number); }
    static void press(int button) { click(bench().Command1(button)); }
    // Found by its whole number but the first digit, shown, and open for work.
    static void edit(const QString& number, int row = 1)
    {
        bench().show();
        search({});
        search(number.mid(1));
        click(bench().MSFlexGrid1, row);
        press(0);
    }
    static void pick(int line, int entry) { bench().line(line).description.setListIndex(entry); }
    // "code|description|quantity|value"
    static QString shownLine(int number)
    {
        const Form1servico::Line line = bench().line(number);
        return QStringList{line.code.text(), line.description.text(), line.quantity.text(),
                           line.value.text()}
            .join(u'|');
    }

    // An action that ends the program by a fault. What was on the screen is over then.
    void expectFault(const std::function<void()>& action)
    {
        faults_ = 0;
        QStringList told;
        setMsgBoxForTests([&](const Box& box) {
            told << box.text.section(u'\n', 0, 0);
            return Answer::Ok;
        });
        action();
        EXPECT_GT(faults_, 0);
        EXPECT_FALSE(told.isEmpty());
        EXPECT_EQ(told.filter(u"Erro nº "_s), told);
        startAnew();
    }
    // After a fault, as the next start of the program would.
    void startAnew()
    {
        faults_ = 0;
        setEndProgramForTests([this](EndReason reason) { faults_ += reason == EndReason::Fault; });
        bench().unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    int faults() const { return faults_; }

private:
    int faults_ = 0;
};
