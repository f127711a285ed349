#include "DatabaseTest.h"

#include "Database.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>

#include <sys/stat.h>
#include <unistd.h>

#include <sqlite3.h>

namespace {

class ConnectionTest : public DatabaseTest
{
protected:
    void write(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

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
    EXPECT_TRUE(textOf({}).startsWith(u"'' não é um caminho válido"_s));
    EXPECT_TRUE(textOf(folder() + u"/pasta/x.mdb"_s).contains(u"não é um caminho válido"_s));
    EXPECT_TRUE(textOf(folder()).contains(u"não é um caminho válido"_s));

    const QString bad = folder() + u"/ruim.mdb"_s;
    QFile whole(mainFile());
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const QByteArray bytes = whole.readAll();
    for (const QByteArray& content : {QByteArray(), QByteArray("texto"), QByteArray(5000, 'x'),
                                      bytes.left(bytes.size() / 2), bytes.left(700)}) {
        write(bad, content);
        EXPECT_TRUE(
            textOf(bad).startsWith(u"Formato de banco de dados '%1' não reconhecido"_s.arg(bad)))
            << content.size();
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
    addSuppliers({u"before"_s});
    auto old = open(u"SELECT * FROM FORNECEDOR"_s);
    const QString copy = folder() + u"/copia"_s;
    QFile::copy(mainFile(), copy);
    sql(copy, u"UPDATE FORNECEDOR SET NOMEEMPRESA='restored'"_s);
    ASSERT_EQ(::rename(copy.toUtf8().constData(), mainFile().toUtf8().constData()), 0);
    EXPECT_EQ(open(u"SELECT * FROM FORNECEDOR"_s)->Fields(0).text(), u"restored"_s);
    EXPECT_EQ(old->Fields(0).text(), u"before"_s);
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
    auto table = open(u"SELECT * FROM FORNECEDOR"_s);
    EXPECT_EQ(table->Fields(0).text(), u"a"_s);
    table->Fields(0) = u"b"_s;
    EXPECT_EQ(errorOf([&] { table->Update(); }), RuntimeError::EngineFault);
    EXPECT_EQ(table->Fields(0).text(), u"a"_s);
}

TEST_F(ConnectionTest, FileLockedElsewhereIsToldAfterAWhileAndCanBeTriedAgain)
{
    addSuppliers({u"a"_s});
    auto table = open(u"SELECT * FROM FORNECEDOR"_s);
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(mainFile().toUtf8().constData(), &other), SQLITE_OK);
    sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
    EXPECT_TRUE(textOf(mainFile()).endsWith(u"o arquivo já está sendo usado."_s))
        << "a file that is open already, too";
    table->Fields(0) = u"b"_s;
    EXPECT_EQ(errorOf([&] { table->Update(); }), RuntimeError::EngineFault);
    EXPECT_EQ(table->Fields(0).text(), u"a"_s);
    sqlite3_close(other);
    EXPECT_EQ(textOf(mainFile()), QString());
    table->Fields(0) = u"b"_s;
    table->Update();
    EXPECT_EQ(stored(u"NOMEEMPRESA"_s), QStringList{u"b"_s});
}

TEST_F(ConnectionTest, PathRunsToTheEndOfTheTextAndMayBeClassic)
{
    const QString odd = folder() + u"/a;b = c"_s;
    QDir().mkdir(odd);
    QFile::copy(mainFile(), odd + u"/x.mdb"_s);
    EXPECT_TRUE(connect(odd + u"\\x.mdb"_s)->isOpen());
    EXPECT_EQ(errorOf([] { connect(u"Q:\\nada\\x.mdb"_s); }), RuntimeError::PathNotFound);
}
