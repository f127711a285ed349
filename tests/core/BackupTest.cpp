#include "FormTest.h"

#include "Connection.h"
#include "Database.h"
#include "FailingDisk.h"
#include "Form1principal.h"
#include "Patience.h"
#include "SafetyCopy.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QWidget>

#include <sqlite3.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// The safety copy and the way back, by the main window's own entries over real files.
class Backup : public FormTest
{
protected:
    Backup()
    {
        addForm<Form1principal>();
        setIni(u"Configurar"_s, u"Titulo"_s, u"Oficina"_s);
        setIni(u"Backup"_s, u"Pastabackup"_s, copyFolder());
        QDir(folder()).mkpath(u"copia"_s);
        mainSql(u"INSERT INTO Cliente (numero, Nome) VALUES ('0000001', 'Ana')"_s);
        principal().load();
        QWidget* window = principal().Command1(0).widget()->window();
        QObject::connect(
            window, &QWidget::windowTitleChanged, [this, window](const QString& title) {
                // Whoever closes the window in the middle waits for the end, too.
                if (title.contains(u"Compactando"_s))
                    QMetaObject::invokeMethod(window, &QWidget::close, Qt::QueuedConnection);
                // A slow disk has its seconds counted.
                if (!title.endsWith(u" s)"_s))
                    captions_ << title;
            });
    }

    QString copyFolder() const { return folder() + u"/copia"_s; }
    QString copy() const { return copyFolder() + u"/Copia.seguranca"_s; }

    void expectDone(const QString& text)
    {
        expectBox(text, Answer::Ok, BoxButtons::Ok, BoxIcon::Information, u"Backup"_s);
    }
    void backUp()
    {
        captions_.clear();
        expectBox(u"Defina o local de Backup,se o local já foi definido Click Sim, caso contrario "
                  u"Click Não: \nProssegue com o Backup?"_s,
                  Answer::Yes, BoxButtons::YesNo, BoxIcon::None, u"Efetua Backup"_s);
        expectDone(u"Operação concluída!"_s);
        click(principal().Command1(5));
    }
    void askRestore(Answer answer)
    {
        captions_.clear();
        expectBox(u"Toda informação que foi colocado após o ultimo Backup serão apagadas,continuar,"
                  u"Click Sim, caso contrario Click Não: \nProssegue com A Restauração?"_s,
                  answer, BoxButtons::YesNo, BoxIcon::None,
                  u"Efetuar restauração do Banco de Dados"_s);
    }
    void restore()
    {
        askRestore(Answer::Yes);
        expectDone(u"Operação concluída,reinicie o programa."_s);
        click(principal().mnurestaura);
    }
    // A step that ends in its error box, whatever the number.
    void fail(Menu& entry, const QString& question)
    {
        expectBoxBeginning(question, Answer::Yes);
        expectErrorBox();
        click(entry);
    }
    void failBackup() { fail(principal().mnubackup, u"Defina o local"_s); }
    void failRestore() { fail(principal().mnurestaura, u"Toda informação"_s); }

    QStringList names(const QString& file) const
    {
        return sql(file, u"SELECT Nome FROM Cliente ORDER BY numero"_s);
    }

    QStringList captions_;
};

void spoil(const QString& path, const QByteArray& content)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

TEST_F(Backup, TellsEachStepAndLeavesAWholeCopy)
{
    principal().StatusBar1.setPanel(1, u"Usuario: Ana"_s);
    backUp();
    const QString live = mainFile();
    EXPECT_EQ(
        captions_,
        QStringList({u"Oficina>>>>>>>>>Compactando o arquivo "_s + live + u" ..."_s,
                     u"Oficina>>>>>>>>>Compactando o arquivo "_s + live + u" ... "_s,
                     u"Oficina>>>>>>>>>Arquivo compactado com sucesso!"_s,
                     u"Oficina>>>>>>>>>"_s + copyFolder() + u"\\Copia.seguranca"_s,
                     u"Oficina>>>>>>>>>Transferindo Arquivos"_s, u"Oficina>>>>>>>>>Concluido"_s,
                     u"Oficina    CPF\\CGC   Usuario: Ana  está usando"_s}));
    EXPECT_TRUE(principal().isLoaded());
    EXPECT_EQ(names(copy()), QStringList{u"Ana"_s});
    EXPECT_EQ(sql(copy(), u"PRAGMA integrity_check"_s), QStringList{u"ok"_s});
    // The live file and the copy are both in the form that is marked; no one but the owner reads.
    EXPECT_EQ(sql(live, u"PRAGMA application_id"_s), sql(copy(), u"PRAGMA application_id"_s));
    EXPECT_EQ(QFile::permissions(copy()) & (QFile::ReadGroup | QFile::ReadOther), 0);
    EXPECT_EQ(QDir(copyFolder()).entryList(QDir::Files), QStringList{u"Copia.seguranca"_s});
}

TEST_F(Backup, RestoreBringsTheRowsBackAndKeepsWhatStoodThere)
{
    backUp();
    mainSql(u"UPDATE Cliente SET Nome='Bia'"_s);
    askRestore(Answer::No);
    click(principal().mnurestaura);
    EXPECT_EQ(names(mainFile()), QStringList{u"Bia"_s});

    restore();
    EXPECT_EQ(captions_,
              QStringList({u"Oficina>>>>>>>>>>>Restauração do banco de Dados o arquivo "_s +
                               copyFolder() + u"\\Copia.seguranca ..."_s,
                           u"Oficina>>>>>>>>>>>Restauração do Banco de Dados concluida "_s +
                               copyFolder() + u"\\Copia.seguranca ..."_s,
                           u"Oficina"_s}));
    EXPECT_EQ(names(mainFile()), QStringList{u"Ana"_s});
    EXPECT_EQ(names(folder() + u"/Antes.restauracao"_s), QStringList{u"Bia"_s});
    // A live file that is no database, or is gone, is replaced.
    spoil(mainFile(), "estragado");
    restore();
    EXPECT_EQ(names(mainFile()), QStringList{u"Ana"_s});
    QFile::remove(mainFile());
    restore();
    EXPECT_EQ(names(mainFile()), QStringList{u"Ana"_s});
}

TEST_F(Backup, TheHeadOfALongerNameGoesBeforeTheCopysName)
{
    const QString longer = folder() + u"/LojaGALTERIA1.mdb"_s;
    QFile::rename(mainFile(), longer);
    setIni(u"Local"_s, u"Caminho"_s, longer);
    QDir(folder()).mkpath(u"copiaLoja"_s);
    backUp();
    EXPECT_TRUE(QFile::exists(folder() + u"/copiaLoja/Copia.seguranca"_s));

    // A shorter one fails after the compaction, and so do places that cannot take the copy.
    const QString shorter = folder() + u"/G.mdb"_s;
    QFile::rename(longer, shorter);
    setIni(u"Local"_s, u"Caminho"_s, shorter);
    failBackup();
    EXPECT_EQ(names(shorter), QStringList{u"Ana"_s});
}

TEST_F(Backup, APlaceThatCannotTakeTheCopyIsToldAndTheLiveFileStays)
{
    spoil(folder() + u"/arquivo"_s, "x");
    QDir(copyFolder()).mkpath(u"Copia.seguranca"_s);
    for (const QString& place : {folder() + u"/fora"_s, folder() + u"/arquivo"_s, copyFolder(),
                                 u"c: [DISCO]"_s, u"z:"_s}) {
        setIni(u"Backup"_s, u"Pastabackup"_s, place);
        failBackup();
        EXPECT_EQ(names(mainFile()), QStringList{u"Ana"_s}) << place.toStdString();
        failRestore();
    }
    // The database's own folder serves.
    setIni(u"Backup"_s, u"Pastabackup"_s, folder());
    backUp();
    EXPECT_EQ(names(folder() + u"/Copia.seguranca"_s), QStringList{u"Ana"_s});
}

TEST_F(Backup, ACopyThatIsNotAWholeMainFileIsRefusedAndTheLiveFileStays)
{
    backUp();
    mainSql(u"UPDATE Cliente SET Nome='Bia'"_s);
    const auto read = [](const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    };
    const QByteArray content = read(copy());
    constexpr int Page = 4096;
    const QByteArray overwritten = content.left(Page) + QByteArray(content.size() - Page, '\x5a');
    for (const QByteArray& bad : {QByteArray(), QByteArray("nenhum banco"), read(listFile()),
                                  content.left(content.size() / 2), overwritten}) {
        spoil(copy(), bad);
        failRestore();
        EXPECT_EQ(names(mainFile()), QStringList{u"Bia"_s}) << bad.size();
    }
    spoil(copy(), content);
    for (const char* format : {"PRAGMA user_version=99", "PRAGMA application_id=7"}) {
        sql(copy(), QString::fromLatin1(format));
        failRestore();
        EXPECT_EQ(names(mainFile()), QStringList{u"Bia"_s}) << format;
        spoil(copy(), content);
    }
    QFile::remove(copy());
    failRestore();
    EXPECT_EQ(names(mainFile()), QStringList{u"Bia"_s});
}

TEST_F(Backup, AFileThatAnotherStationHoldsIsLeftAlone)
{
    backUp();
    mainSql(u"UPDATE Cliente SET Nome='Bia'"_s);
    const std::shared_ptr<Database> other = Database::open(mainFile());
    other->storage().beginWrite();
    constexpr int Soon = 200; // milliseconds
    Patience::setLimitForTests(Soon);
    failBackup();
    failRestore();
    other->storage().rollback();
    Patience::setLimitForTests(std::nullopt);
    EXPECT_EQ(names(mainFile()), QStringList{u"Bia"_s});
    EXPECT_EQ(names(copy()), QStringList{u"Ana"_s});
    backUp();
    EXPECT_EQ(names(copy()), QStringList{u"Bia"_s});
}

TEST_F(Backup, ADiskThatFillsAtAnyWriteLeavesTheOldContentOrTheNew)
{
    const QString compacted = folder() + u"/temp.dat"_s;
    mainSql(
        u"INSERT INTO Cliente (numero, Nome, observacao) WITH RECURSIVE n(i) AS (VALUES(2) UNION "
        u"ALL SELECT i+1 FROM n WHERE i<60) SELECT i, 'Ana', hex(randomblob(2000)) FROM n"_s);
    ExclusiveFile(mainFile()).compactTo(compacted);
    mainSql(u"UPDATE Cliente SET Nome='Bia'"_s);
    FailingDisk disk;
    bool wasRefused = true;
    for (int write = 1; wasRefused; ++write) {
        disk.fillFrom(write, "GALTERIA1.mdb");
        bool wasRestored = true;
        try {
            restoreFromCopy(compacted, mainFile(), folder() + u"/Antes.restauracao"_s);
        } catch (const RuntimeError&) {
            wasRestored = false;
        }
        wasRefused = FailingDisk::refused();
        disk.empty();
        EXPECT_EQ(sql(mainFile(), u"PRAGMA integrity_check"_s), QStringList{u"ok"_s}) << write;
        EXPECT_EQ(sql(mainFile(), u"SELECT Nome || count(*) FROM Cliente GROUP BY Nome"_s),
                  QStringList{wasRestored ? u"Ana60"_s : u"Bia60"_s})
            << write;
        EXPECT_LT(write, 100);
        if (wasRestored)
            mainSql(u"UPDATE Cliente SET Nome='Bia'"_s);
    }
}

// Another station, in a process of its own, that stores orders as fast as it can and tells the
// number of each that the engine said was stored.
class WritingStation
{
public:
    explicit WritingStation(const QString& file)
    {
        EXPECT_EQ(pipe2(pipe_, O_NONBLOCK | O_CLOEXEC), 0);
        process_ = fork();
        if (process_ == 0)
            work(file.toUtf8());
    }
    ~WritingStation()
    {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
        close(pipe_[0]);
        close(pipe_[1]);
    }
    WritingStation(const WritingStation&) = delete;
    WritingStation& operator=(const WritingStation&) = delete;

    // Since it was asked last.
    QStringList told()
    {
        QStringList numbers;
        int number = 0;
        while (read(pipe_[0], &number, sizeof number) == sizeof number)
            numbers << QString::number(number);
        return numbers;
    }

private:
    [[noreturn]] void work(const QByteArray& file) const
    {
        sqlite3* handle = nullptr;
        sqlite3_open(file.constData(), &handle);
        constexpr auto wait = [](void*, int asked) {
            return usleep(2000) == 0 && asked < 10'000 ? 1 : 0;
        };
        sqlite3_busy_handler(handle, wait, nullptr);
        for (int number = 1;; ++number) {
            const QByteArray sql = "INSERT INTO Cliente (numero, Nome) VALUES ('b" +
                                   QByteArray::number(number) + "', '')";
            if (sqlite3_exec(handle, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
                _exit(1);
            while (write(pipe_[1], &number, sizeof number) != sizeof number)
                usleep(1000);
            usleep(1000);
        }
    }

    int pipe_[2] = {};
    pid_t process_ = 0;
};

// VORBELO_BACKUP_ROUNDS tells another number of rounds than the short one.
TEST_F(Backup, AStationThatWritesAllTheTimeLosesNothingThatItWasTold)
{
    const int rounds = qEnvironmentVariableIntValue("VORBELO_BACKUP_ROUNDS");
    WritingStation station(mainFile());
    const auto stored = [&](const QString& file) {
        const QStringList rows = sql(file, u"SELECT substr(numero, 2) FROM Cliente"_s);
        return QSet<QString>(rows.begin(), rows.end());
    };
    qsizetype seen = 0;
    // What was told is asked before the files are read.
    const auto expectNothingLost = [&](const QStringList& files) {
        const QStringList told = station.told();
        QSet<QString> known;
        for (const QString& file : files)
            known |= stored(file);
        for (const QString& number : told)
            EXPECT_TRUE(known.contains(number)) << number.toStdString();
        seen += told.size();
    };
    for (int round = 0; round < std::max(rounds, 3); ++round) {
        backUp();
        expectNothingLost({mainFile()});
        // What a restore took away lies beside the live file.
        restore();
        expectNothingLost({mainFile(), folder() + u"/Antes.restauracao"_s});
        EXPECT_EQ(sql(mainFile(), u"PRAGMA integrity_check"_s), QStringList{u"ok"_s});
    }
    EXPECT_GT(seen, rounds) << "the station got to work";
}

} // namespace
