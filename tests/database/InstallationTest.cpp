#include "DatabaseTest.h"

#include "FullDisk.h"
#include "Funciones.h"
#include "Installation.h"
#include "ProfileFile.h"
#include "SafetyCopy.h"
#include "ShopFolder.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QStandardPaths>

#include <sys/stat.h>
#include <thread>

using InstallationTest = DatabaseTest;

TEST_F(InstallationTest, NothingThatExistsIsTouched)
{
    const QString place = folder() + u"/nova/loja"_s;
    EXPECT_EQ(layDownInstallation(place, false).size(), 3);
    setIni(u"Local"_s, u"Caminho"_s, u"x"_s);
    for (const QString& name : {u"Banco.ini"_s, u"GALTERIA1.mdb"_s, u"MIRANDEL1.mdb"_s}) {
        QFile file(place + u'/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("mine");
        file.close();
        EXPECT_EQ(layDownInstallation(place, true), QStringList());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll(), "mine");
    }
    QFile::remove(place + u"/Banco.ini"_s);
    EXPECT_EQ(layDownInstallation(place, false), QStringList{u"Banco.ini"_s});
    EXPECT_EQ(Funciones::LeIni(u"Local"_s, u"Caminho"_s, place + u"/Banco.ini"_s),
              place + u"/GALTERIA1.mdb"_s);
    EXPECT_EQ(errorOf([] { layDownInstallation(u"/proc/nada"_s, false); }),
              RuntimeError::PathFileAccess);
}

TEST_F(InstallationTest, FullDiskLeavesNoHalfFile)
{
    // The characters of the folder's name are beyond the code page of the settings.
    const QString place = folder() + u"/łódź"_s;
    {
        // Room for the tables, none for the rows.
        const FullDisk full(100'000);
        EXPECT_EQ(errorOf([&] { layDownInstallation(place, true); }), RuntimeError::EngineFault);
    }
    EXPECT_EQ(QDir(place).entryList(QDir::Files), QStringList());
    layDownInstallation(place, false);
    EXPECT_EQ(QDir(place).entryList(QDir::Files).size(), 3);
    const QString file = Funciones::LeIni(u"Local"_s, u"Caminho"_s, place + u"/Banco.ini"_s);
    EXPECT_EQ(sql(file, u"SELECT USUARIO FROM VALIDAR"_s), QStringList{u"Administrador"_s});
}

TEST_F(InstallationTest, ExamplesAreAsAShopWouldHaveThem)
{
    const QString place = folder() + u"/exemplos"_s;
    layDownInstallation(place, true);
    const QString file = place + u"/GALTERIA1.mdb"_s;
    const auto one = [&](const QString& statement) { return sql(file, statement).value(0); };
    EXPECT_GE(one(u"SELECT count(*) FROM Cliente"_s).toInt(), 300);
    EXPECT_GE(one(u"SELECT count(*) FROM Pecas"_s).toInt(), 200);
    EXPECT_EQ(one(u"SELECT group_concat(numero) FROM Cliente"_s),
              one(u"SELECT group_concat(NUMERO) FROM PECAAPLICADA"_s));
    for (const QString& none :
         {u"Cliente WHERE length(numero)<>7 OR numero GLOB '*[^0-9]*'"_s,
          u"Cliente WHERE typeof(valor)<>'integer'"_s, u"MOVIMENTO WHERE quantidade IS NULL"_s,
          u"MOVIMENTO JOIN Pecas ON MOVIMENTO.codigo=Pecas.CODIGO "
          "WHERE MOVIMENTO.descricao<>Pecas.DESCRICAO"_s})
        EXPECT_EQ(one(u"SELECT count(*) FROM "_s + none), u"0"_s);
    EXPECT_EQ(one(u"SELECT count(*) FROM PEDIDO"_s), u"60"_s);
    EXPECT_NE(one(u"SELECT count(*) FROM PEDIDO WHERE QUANTIDADE='p.EST'"_s), u"0"_s);
    EXPECT_EQ(one(u"SELECT count(*) FROM MANUTENCAO"_s), u"40"_s);
    // What was left empty holds the stars of its field, and no others.
    EXPECT_EQ(one(u"SELECT count(*) FROM MANUTENCAO WHERE "
                  "trim(SERVICOSOLICITADO2, '*')='' AND length(SERVICOSOLICITADO2)<>26 OR "
                  "trim(SERVICOSOLICITADO4, '*')='' AND length(SERVICOSOLICITADO4)<>29 OR "
                  "trim(SERVICOEXECUTADO1, '*')='' AND length(SERVICOEXECUTADO1)<>31 OR "
                  "trim(SERVICOEXECUTADO4, '*')='' AND length(SERVICOEXECUTADO4)<>33 OR "
                  "trim(OBSERVACAO, '*')='' AND length(OBSERVACAO)<>39 OR "
                  "trim(EMAIL, '*')='' AND length(EMAIL)<>33"_s),
              u"0"_s);
    EXPECT_EQ(one(u"SELECT count(*) FROM FORNECEDOR"_s), u"50"_s);
    EXPECT_EQ(one(u"SELECT count(*) FROM DEFEITO"_s), u"80"_s);
    for (const QString& document :
         sql(file, u"SELECT cpf FROM Cliente UNION SELECT CGC FROM FORNECEDOR"_s))
        EXPECT_TRUE(document.size() == 11 ? Funciones::ValidaCPF(document)
                                          : Funciones::ValidaCGC(document))
            << document.toStdString();
}

TEST_F(InstallationTest, TwoAtOnceMakeOneInstallationThatIsNoOneElses)
{
    const QString place = folder() + u"/duas"_s;
    QStringList made[2];
    int errors[2];
    const auto layDown = [&](int i) {
        errors[i] = errorOf([&] { made[i] = layDownInstallation(place, true); });
    };
    std::thread other(layDown, 1);
    layDown(0);
    other.join();
    EXPECT_EQ(errors[0] + errors[1], 0);
    EXPECT_EQ(made[0].size() + made[1].size(), 3);
    const QDir lain(place);
    const auto entries = QDir::Files | QDir::Hidden;
    EXPECT_EQ(lain.entryList(entries).size(), 3) << qPrintable(lain.entryList(entries).join(u' '));
    const auto others = QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    EXPECT_FALSE(QFile::permissions(lain.filePath(u"Banco.ini"_s)) & others);
    for (const QString& key : {u"Titulo"_s, u"CPFCGC"_s})
        EXPECT_EQ(Funciones::LeIni(u"Configurar"_s, key, lain.filePath(u"Banco.ini"_s)).isEmpty(),
                  key == u"CPFCGC"_s)
            << "nobody's document is made up";
    EXPECT_EQ(Funciones::LeIni(u"Local"_s, u"Caminho2"_s, lain.filePath(u"Banco.ini"_s)),
              lain.filePath(u"GALTERIA1.mdb"_s));
}

// Given to a group: writable for it, and with the bit by which all files in it are the group's.
TEST_F(InstallationTest, WhatLiesInAFolderGivenToAGroupIsTheGroupsToWrite)
{
    const std::pair<mode_t, bool> folders[]{{02770, true}, {0770, false}, {02750, false}};
    for (const auto& [mode, isGiven] : folders) {
        const QString place = folder() + u'/' + QString::number(mode);
        QDir().mkpath(place);
        ASSERT_EQ(::chmod(place.toUtf8().constData(), mode), 0);
        layDownInstallation(place, false);
        ExclusiveFile(place + u"/GALTERIA1.mdb"_s).copyTo(place + u"/Copia.seguranca"_s);
        writeProfileString(u"a"_s, u"b"_s, u"c"_s, place + u"/novo.ini"_s);
        const QFileInfoList files = QDir(place).entryInfoList(QDir::Files);
        EXPECT_EQ(files.size(), 5);
        for (const QFileInfo& file : files)
            EXPECT_EQ(file.permission(QFile::ReadGroup | QFile::WriteGroup), isGiven)
                << file.filePath().toStdString();
    }
}

// Each kind of start finds its folder, and none but the user's own is ever laid down.
TEST_F(InstallationTest, AStartFindsItsShop)
{
    const auto within = [this](const char* name) { return folder() + QLatin1StringView(name); };
    const QByteArray home = qgetenv("HOME");
    const auto goHome = qScopeGuard([&] { qputenv("HOME", home); });
    qputenv("HOME", within("/casa").toUtf8());
    const QString settings =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/vorbelo"_s;
    ASSERT_TRUE(settings.startsWith(within("/casa")));
    QDir().mkpath(within("/programa"));
    QDir().mkpath(settings);

    EXPECT_EQ(errorOf([&] { chooseShopFolder(within("/vazia"), within("/programa")); }),
              RuntimeError::PathNotFound);
    const ShopFolder own = chooseShopFolder({}, within("/programa"));
    EXPECT_EQ(own.path, within("/casa/Vorbelo"));
    EXPECT_TRUE(own.isNew);
    EXPECT_FALSE(chooseShopFolder({}, within("/programa")).isNew);

    // A link goes before it, also one whose folder is away.
    layDownInstallation(within("/rede"), false);
    QFile::link(within("/rede"), settings + u"/pasta"_s);
    EXPECT_EQ(chooseShopFolder({}, within("/programa")).path, within("/rede"));
    QDir().rename(within("/rede"), within("/fora"));
    EXPECT_EQ(errorOf([&] { chooseShopFolder({}, within("/programa")); }),
              RuntimeError::PathNotFound);

    // The program's own goes before the link, with its settings lost as well; a named one before
    // all.
    layDownInstallation(within("/programa"), false);
    QFile::remove(within("/programa/Banco.ini"));
    EXPECT_EQ(chooseShopFolder({}, within("/programa")).path, within("/programa"));
    EXPECT_EQ(chooseShopFolder(within("/fora"), within("/programa")).path, within("/fora"));
}
