#include "FaultLog.h"

#include "DatabaseTest.h"
#include "EventGate.h"
#include "EventTransactions.h"
#include "Form1principal.h"
#include "Funciones.h"
#include "OnePiece.h"
#include "RecordForms.h"
#include "RuntimeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using faultlog::Kind;

namespace {

class Bare : public Form
{
public:
    static constexpr char Name[] = "Bare";
    Bare() : Form(u"Bare"_s, [] { return std::make_unique<QWidget>(); }) {}
};

class FaultLogTest : public DatabaseTest
{
protected:
    FaultLogTest()
    {
        addForm<Bare>();
        addForm<Form1principal>();
        form<Bare>().load();
    }

    static void event(OnError onError, const std::function<void()>& handler)
    {
        gate::run(form<Bare>(), onError, handler);
    }

    // The lines without the moment and the version.
    static QStringList lines()
    {
        QFile file(faultlog::path());
        if (!file.open(QIODevice::ReadOnly))
            return {};
        QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
        for (QString& line : lines)
            line = line.section(u'\t', 2).replace(u'\t', u'|');
        return lines;
    }

    // The box in which the program ends; its last line names the log or not.
    void expectEnd(bool namesLog)
    {
        setMsgBoxForTests([namesLog](const Box& box) {
            EXPECT_EQ(box.text.contains(faultlog::path()), namesLog) << box.text.toStdString();
            return Answer::Ok;
        });
    }
};

TEST_F(FaultLogTest, EachKindLeavesALineWithItsFormAndNumber)
{
    EXPECT_TRUE(faultlog::path().startsWith(QDir::homePath() + u"/.local/state/"_s));
    expectErrorBox(u"Erro nº 13\n"_s);
    event(OnError::Box, [] { throw RuntimeError(13); });
    event(OnError::Silent, [] { throw RuntimeError(5); });
    event(OnError::Box, [] { throw RuntimeError(70).told(); });
    // A form's own boxes.
    expectErrorBox(u"Erro nº 76\n"_s);
    expectBox(u"erro ao deletar"_s);
    event(OnError::Box, [] {
        tellError(RuntimeError(76), u"Backup"_s);
        tellError(RuntimeError(76).told(), u"Backup"_s);
        tellFault(RuntimeError(3021), u"erro ao deletar"_s);
    });

    expectErrorBox(u"Erro nº 61\n"_s);
    event(OnError::Box, [] {
        EventTransactions::instance().fail(RuntimeError(61));
        EXPECT_FALSE(commitWrites());
    });
    // A piece that its form gives up without a word.
    event(OnError::Silent, [] { inOnePiece({}, [] { throw RuntimeError(94); }); });
    setIni(u"Local"_s, u"Caminho"_s, folder() + u"/away.mdb"_s);
    expectErrorBox();
    expectErrorBox(u"Restaure o Banco de Dados"_s);
    event(OnError::Box, [] { Funciones::AbreBanco(); });

    expectEnd(true);
    event(OnError::End, [] { throw RuntimeError(53); });
    EXPECT_EQ(lines(), (QStringList{
                           u"Bare|falha|13 Tipos incompatíveis"_s,
                           u"Bare|falha|76 Caminho não encontrado"_s,
                           u"Bare|falha|"_s +
                               RuntimeError(3021).text().section(u"nº "_s, 1).replace(u'\n', u' '),
                           u"Bare|gravação perdida|61 Disco cheio"_s,
                           u"Bare|gravação recusada|94 Uso inválido de Null"_s,
                           u"Bare|arquivo não abriu|-2147467259 Não foi possível encontrar o "
                           "arquivo '...'."_s,
                           u"Bare|programa encerrado|53 Arquivo não encontrado"_s,
                       }));
    EXPECT_EQ(ends().size(), 1U);
}

TEST_F(FaultLogTest, WhatWasTypedStaysOut)
{
    const QString typed =
        u"Erro de sintaxe na expressão 'SELECT * FROM Cliente WHERE Nome Like '%D'Ávila%''."_s;
    EXPECT_TRUE(faultlog::note(Kind::Fault, {}, RuntimeError(-2147217900, typed)));
    EXPECT_TRUE(faultlog::note(Kind::ProgramEnded, u"Bare"_s, u"near \"Ana\nSilva\": no"_s));
    EXPECT_EQ(lines(), (QStringList{u"-|falha|-2147217900 Erro de sintaxe na expressão '...'."_s,
                                    u"Bare|programa encerrado|near '...': no"_s}));
}

TEST_F(FaultLogTest, ItIsRotatedOnceAndNeverGrowsBeyondItsLimit)
{
    const QFileInfo old(faultlog::path() + u".1"_s);
    QDir().mkpath(old.path());
    for (int round = 1; round <= 2; ++round) {
        lay(faultlog::path(), QByteArray(faultlog::SizeLimit - 20, static_cast<char>('0' + round)));
        EXPECT_TRUE(faultlog::note(Kind::Fault, u"Bare"_s, RuntimeError(13)));
        EXPECT_EQ(lines(), QStringList{u"Bare|falha|13 Tipos incompatíveis"_s});
        QFile before(old.filePath());
        ASSERT_TRUE(before.open(QIODevice::ReadOnly));
        EXPECT_EQ(before.read(1).front(), '0' + round);
        EXPECT_LE(before.size(), faultlog::SizeLimit);
    }
    EXPECT_EQ(QDir(old.path()).entryList(QDir::Files).size(), 2);
}

TEST_F(FaultLogTest, WhereItCannotBeWrittenTheBoxDoesNotNameIt)
{
    QDir().mkpath(QDir::homePath() + u"/.local"_s);
    lay(QDir::homePath() + u"/.local/state"_s, {});
    expectEnd(false);
    event(OnError::End, [] { throw RuntimeError(53); });
}

} // namespace
