#include "DatabaseTest.h"

#include "Database.h"
#include "Dates.h"
#include "Patience.h"

#include <QElapsedTimer>
#include <QFile>
#include <QScopeGuard>

#include <sys/stat.h>
#include <unistd.h>

namespace {

class ConnectionTest : public DatabaseTest
{
protected:
    QString textOf(const QString& path)
    {
        try {
            connect(path);
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.number(), RuntimeError::EngineFault);
            return error.description();
        }
        return {};
    }
};

} // namespace

TEST_F(ConnectionTest, MissingForeignAndTornFilesFailAtOpening)
{
    const QString missing = folder() + u"/nada.mdb"_s;
    EXPECT_TRUE(textOf(missing).startsWith(u"Não foi possível encontrar o arquivo '"_s + missing));
    EXPECT_FALSE(QFile::exists(missing)) << "opening never creates a file";
    for (const QString& path : {QString(), folder() + u"/pasta/x.mdb"_s, folder()})
        EXPECT_TRUE(textOf(path).contains(u"não é um caminho válido"_s)) << path.toStdString();

    const QString bad = folder() + u"/ruim.mdb"_s;
    QFile whole(mainFile());
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const QByteArray bytes = whole.readAll();
    for (const QByteArray& content :
         {QByteArray(), QByteArray(5000, 'x'), bytes.left(bytes.size() / 2), bytes.left(700)}) {
        lay(bad, content);
        const QString text = textOf(bad);
        EXPECT_TRUE(text.startsWith(u"Formato de banco de dados '%1' não reconhecido"_s.arg(bad)) ||
                    text.startsWith(u"O banco de dados '%1' está danificado"_s.arg(bad)))
            << content.size() << text.toStdString();
        QFile::remove(bad);
    }
    for (const QString& foreign :
         {u"PRAGMA user_version=2"_s, u"PRAGMA user_version=1; PRAGMA application_id=7"_s}) {
        sql(listFile(), foreign);
        EXPECT_TRUE(textOf(listFile()).startsWith(u"Formato"_s)) << "of a later or another program";
    }
}

TEST_F(ConnectionTest, ReplacedFileIsReadAnew)
{
    const QString copy = folder() + u"/a;b = c"_s;
    QFile::copy(mainFile(), copy);
    auto old = open(suppliers_);
    sql(copy, u"INSERT INTO FORNECEDOR(NOMEEMPRESA) VALUES('restored')"_s);
    EXPECT_TRUE(connect(QString(copy).replace(u'/', u'\\'))->isOpen()) << "a path may be classic";
    ASSERT_EQ(::rename(copy.toUtf8().constData(), mainFile().toUtf8().constData()), 0);
    EXPECT_EQ(open(suppliers_)->RecordCount() - old->RecordCount(), 1);
}

TEST_F(ConnectionTest, ReadOnlyFileOpensAndRefusesToBeWritten)
{
    addSuppliers({u"a"_s});
    ASSERT_EQ(::chmod(mainFile().toUtf8().constData(), 0444), 0);
    ASSERT_EQ(::chmod(folder().toUtf8().constData(), 0555), 0);
    Database::dropIdle();
    // The superuser may write every file: as nobody for a while.
    const uid_t user = geteuid();
    ASSERT_EQ(seteuid(user == 0 ? 65534 : user), 0);
    const auto back = qScopeGuard([&] {
        EXPECT_EQ(seteuid(user), 0);
        EXPECT_EQ(::chmod(folder().toUtf8().constData(), 0755), 0);
    });
    auto table = open(suppliers_);
    EXPECT_EQ(table->Fields(0).text(), u"a"_s);
    EXPECT_EQ(errorOf([&] { set(*table, 0, u"b"_s); }), RuntimeError::EngineFault);
    EXPECT_EQ(table->Fields(0).text(), u"a"_s);
}

TEST_F(ConnectionTest, BusyFileIsWaitedForOnceInAnEventAndThenAskedWithoutWaiting)
{
    constexpr int Limit = 300;
    Patience::setLimitForTests(Limit);
    OtherStation other(mainFile());
    qint64 took = 0;
    const auto openTwice = [&] {
        QElapsedTimer clock;
        clock.start();
        event([&] {
            for (int i = 0; i < 2; ++i)
                EXPECT_TRUE(textOf(mainFile()).endsWith(u"o arquivo já está sendo usado."_s));
        });
        took = clock.elapsed();
    };
    openTwice();
    EXPECT_TRUE(took >= Limit && took < 2 * Limit) << took << ": once";
    openTwice();
    EXPECT_LT(took, Limit) << "asked without waiting, as at each letter of a search";
    other.tell("COMMIT");
    EXPECT_EQ(textOf(mainFile()), QString());
    other.tell("BEGIN EXCLUSIVE");
    openTwice();
    EXPECT_GE(took, Limit) << "it has answered in between";
}

TEST_F(ConnectionTest, APipeInPlaceOfAJournalIsRefused)
{
    const QString journal = mainFile() + u"-journal"_s;
    ASSERT_EQ(mkfifo(journal.toUtf8().constData(), 0600), 0);
    EXPECT_NE(textOf(mainFile()), QString()) << "and nothing hangs";
    QFile::remove(journal);
    sql(mainFile(), u"PRAGMA journal_mode=WAL"_s);
    EXPECT_TRUE(textOf(mainFile()).startsWith(u"Formato"_s));
}

TEST_F(ConnectionTest, TablesMustHaveOurColumns)
{
    const QString right = u"DATAPEDIDO TEXT, DESCRICAO TEXT, QUANTIDADE TEXT, CODIGO TEXT, "
                          "_id INTEGER PRIMARY KEY AUTOINCREMENT"_s;
    const auto textWith = [&](const QString& columns) {
        Database::dropIdle();
        mainSql(u"DROP TABLE PEDIDO; CREATE TABLE PEDIDO (%1)"_s.arg(columns));
        return textOf(mainFile());
    };
    EXPECT_EQ(textWith(right), QString());
    for (const auto& [from, to] :
         {std::pair(u"DATAPEDIDO TEXT, DESCRICAO TEXT"_s, u"DESCRICAO TEXT, DATAPEDIDO TEXT"_s),
          {u"CODIGO TEXT, "_s, u""_s},
          {u"CODIGO TEXT, "_s, u"CODIGO TEXT, OUTRO TEXT, "_s},
          {u"QUANTIDADE TEXT"_s, u"QUANTIDADE INTEGER"_s},
          {u"CODIGO TEXT, "_s, u"CODIGO TEXT AS ('1'), "_s},
          {u", _id INTEGER PRIMARY KEY AUTOINCREMENT"_s, u""_s}})
        EXPECT_TRUE(textWith(QString(right).replace(from, to)).startsWith(u"Formato"_s))
            << to.toStdString();
    EXPECT_EQ(textWith(right), QString());
}

TEST_F(ConnectionTest, WholeFileIsCheckedOnceADay)
{
    mainSql(u"WITH n(i) AS (SELECT 1 UNION SELECT i+1 FROM n WHERE i<300) "
            "INSERT INTO FORNECEDOR(NOMEEMPRESA) SELECT printf('%0200d', i) FROM n"_s);
    EXPECT_EQ(textOf(mainFile()), QString());
    Database::dropIdle();
    const QString copy = folder() + u"/copia"_s;
    QFile::copy(mainFile(), copy);
    // The last page, of which nothing is read to open the file.
    QFile file(mainFile());
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.seek(file.size() - 4096);
    file.write(QByteArray(64, '\x55'));
    file.close();
    EXPECT_EQ(textOf(mainFile()), QString()) << "checked already";
    Database::dropIdle();
    Clock::setForTests(QDateTime(QDate(2026, 3, 10), QTime(8, 0)));
    const QString damaged = folder() + u"/danificado"_s;
    QFile::copy(mainFile(), damaged);
    const auto isDamaged = [this] {
        return textOf(mainFile()).contains(u"está danificado. Restaure"_s);
    };
    EXPECT_TRUE(isDamaged() && isDamaged());
    ASSERT_EQ(::rename(copy.toUtf8().constData(), mainFile().toUtf8().constData()), 0);
    EXPECT_EQ(textOf(mainFile()), QString());
    ASSERT_EQ(::rename(damaged.toUtf8().constData(), mainFile().toUtf8().constData()), 0);
    EXPECT_TRUE(isDamaged()) << "on the same day another file";
    for (const QString& data : {listFile(), mainFile()})
        EXPECT_FALSE(QFile::permissions(data) & (QFile::ReadOther | QFile::WriteOther));
}
