#include "DatabaseTest.h"

#include "FullDisk.h"
#include "Funciones.h"
#include "Installation.h"
#include "ProfileFile.h"
#include "SafetyCopy.h"
#include "ShopFolder.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <sys/stat.h>
#include <thread>

using InstallationTest = DatabaseTest;

TEST_F(InstallationTest, NothingThatExistsIsTouched)
{
    const QString place = folder() + u"/nova/loja"_s;
    QDir().mkpath(place);
    lay(place + u"/GALTERIA1.mdb-journal"_s, "of a file that is gone");
    EXPECT_EQ(layDownInstallation(place, false).size(), 3);
    const QStringList files = QDir(place).entryList(QDir::Files);
    EXPECT_EQ(files.size(), 3);
    for (const QString& name : files)
        lay(place + u'/' + name, "mine");
    EXPECT_EQ(layDownInstallation(place, true), QStringList());
    for (const QString& name : files)
        EXPECT_EQ(QFileInfo(place + u'/' + name).size(), 4);
    QFile::remove(place + u"/Banco.ini"_s);
    EXPECT_EQ(layDownInstallation(place, false), QStringList{u"Banco.ini"_s});
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
    // What was left empty holds the stars of its field, and no others.
    const QString fields = u"DATACONCLUSAO 10,COMPLEMENTO 24,CELULAR 10,EMAIL 33,"
                           "SERVICOSOLICITADO2 26,SERVICOSOLICITADO3 27,SERVICOSOLICITADO4 29,"
                           "SERVICOEXECUTADO1 31,SERVICOEXECUTADO2 32,SERVICOEXECUTADO3 32,"
                           "SERVICOEXECUTADO4 33,OBSERVACAO 39"_s;
    for (const QString& field : fields.split(u','))
        EXPECT_EQ(sql(file, u"SELECT DISTINCT '%1 ' || length(%1) FROM MANUTENCAO "
                            "WHERE trim(%1, '*/')=''"_s.arg(field.section(u' ', 0, 0))),
                  QStringList{field});
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
    EXPECT_EQ(QDir(place).entryList(QDir::Files | QDir::Hidden).size(), 3);
    const QString ini = place + u"/Banco.ini"_s;
    const auto others = QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    EXPECT_FALSE(QFile::permissions(ini) & others);
    EXPECT_EQ(Funciones::LeIni(u"Configurar"_s, u"CPFCGC"_s, ini), QString())
        << "nobody's document is made up";
    for (const QString& key : {u"Caminho"_s, u"Caminho2"_s})
        EXPECT_EQ(Funciones::LeIni(u"Local"_s, key, ini), place + u"/GALTERIA1.mdb"_s);
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
    const QString program = within("/programa");
    const QString settings =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/vorbelo"_s;
    QDir().mkpath(program);
    QDir().mkpath(settings);
    const auto chosen = [&](const QString& named = {}) {
        return chooseShopFolder(named, program).path;
    };
    EXPECT_EQ(errorOf([&] { chosen(within("/vazia")); }), RuntimeError::PathNotFound);
    const ShopFolder own = chooseShopFolder({}, program);
    EXPECT_EQ(own.path, QDir::homePath() + u"/Vorbelo"_s);
    EXPECT_TRUE(own.isNew);
    EXPECT_FALSE(chooseShopFolder({}, program).isNew);

    // A link goes before it, also one whose folder is away.
    layDownInstallation(within("/rede"), false);
    QFile::link(within("/rede"), settings + u"/pasta"_s);
    EXPECT_EQ(chosen(), within("/rede"));
    QDir().rename(within("/rede"), within("/fora"));
    EXPECT_EQ(errorOf([&] { chosen(); }), RuntimeError::PathNotFound);

    // The program's own goes before the link, with its settings lost as well; a named one before
    // all.
    layDownInstallation(program, false);
    QFile::remove(program + u"/Banco.ini"_s);
    EXPECT_EQ(chosen(), program);
    EXPECT_EQ(chosen(within("/fora")), within("/fora"));
}
