#include "ErrorOf.h"
#include "Faults.h"
#include "FormTest.h"
#include "FullDisk.h"
#include "HostPaths.h"
#include "PlatformTest.h"
#include "PreviousInstance.h"
#include "ProfileFile.h"
#include "Shell.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("<none>");
}

void lay(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

class ProfileFileTest : public NewUserTest
{
protected:
    QString read(const QString& key, const QString& section = u"Configurar"_s) const
    {
        return readProfileString(section, key, u"<default>"_s, 255, path());
    }
    bool write(const QString& key, const QString& value,
               const QString& section = u"Configurar"_s) const
    {
        return writeProfileString(section, key, value, path());
    }
    QString path() const { return directory_.filePath(u"Banco.ini"_s); }
    QStringList files() const
    {
        return QDir(directory_.path()).entryList(QDir::Files | QDir::Hidden);
    }
};

struct SystemTest : NewUserTest
{
    ~SystemTest() override { setApplicationFolder(QString()); }
};

} // namespace

TEST_F(ProfileFileTest, ValuesAreReadAsThePublishedPagesTell)
{
    lay(path(), "; Configurar\r\nSolto=fora\r\n[Outra]\r\nTitulo=da outra\r\n"
                "  [ CONFIGURAR ] resto\r\nTitulo = \"Loja  \"\r\nAspas='abc\r\n"
                "Trocadas=\"abc'\r\n1=\r\n\tEndereco\t=  Rua A; casa=2  \r\n"
                ";Email=comentado\r\nEmail=x@y\nsem igual\r\nDupla=primeira\r\nDUPLA=segunda\r\n"
                "Acento=Eletr\xF4nica \x80\x8E\x9F 5\r\n"
                "[Configurar]\r\nSite=da segunda\r\n[Aberta\r\nFim=sem fim de linha");
    for (const auto& [key, value] : {std::pair(u"TITULO"_s, u"Loja  "_s),
                                     {u"Aspas"_s, u"'abc"_s},
                                     {u"Trocadas"_s, u"\"abc'"_s},
                                     {u"1"_s, u""_s},
                                     {u"endereco"_s, u"Rua A; casa=2"_s},
                                     {u"Email"_s, u"x@y"_s},
                                     {u"sem igual"_s, u"<default>"_s},
                                     {u"Dupla"_s, u"primeira"_s},
                                     {u"Acento"_s, u"Eletrônica €ŽŸ 5"_s},
                                     {u"Site"_s, u"<default>"_s},
                                     {u"Solto"_s, u"<default>"_s}})
        EXPECT_EQ(read(key), value) << qPrintable(key);
    // A value is cut to the buffer less its end mark.
    ASSERT_TRUE(write(u"Titulo"_s, QString(300, u'x')));
    EXPECT_EQ(read(u"Titulo"_s), QString(254, u'x'));
    EXPECT_EQ(readProfileString(u"x"_s, u"x"_s, u"padrão"_s, 4, path()), u"pad"_s);
}

TEST_F(ProfileFileTest, AWriteKeepsEveryOtherByte)
{
    const QByteArray before =
        "; de \xC1lvaro\r\n\r\n[Outro  programa]\nx = \"1\" ; y\n\x81\x8D\x90\n"
        "[Configurar]\r\nTITULO = velho\r\nSite=s\r\n\r\n; fim\r\n\r\n[Local]";
    lay(path(), before);
    ASSERT_TRUE(write(u"Titulo"_s, u"  Casa & Cia € ō "_s));
    ASSERT_TRUE(write(u"Email"_s, u""_s) &&
                write(u"Caminho"_s, u"F:\\Dados, 1\\GALTERIA1.mdb"_s, u"local"_s) &&
                write(u"Marque2"_s, u"1"_s, u"Opcao"_s));
    QByteArray after = before;
    after.replace("TITULO = velho", "TITULO =  Casa & Cia \x80 ? ");
    after.replace("; fim\r\n", "; fim\r\nEmail=\r\n"); // before the gap
    after += "\r\nCaminho=F:\\Dados, 1\\GALTERIA1.mdb\r\n[Opcao]\r\nMarque2=1\r\n";
    EXPECT_EQ(contents(path()), after);
    EXPECT_EQ(read(u"Titulo"_s), u"Casa & Cia € ?"_s);
    EXPECT_EQ(files(), QStringList{u"Banco.ini"_s}) << "no temporary file stays";
    ASSERT_TRUE(write(u"Titulo"_s, u"a\r\n[Local]\nCaminho=/tmp"_s));
    EXPECT_EQ(read(u"Titulo"_s), u"a  [Local] Caminho=/tmp"_s) << "a value stays on its line";
}

TEST_F(ProfileFileTest, AFileIsReadAndKeptInTheEncodingThatItHas)
{
    const auto utf16 = [](const QString& text) {
        return QByteArray(reinterpret_cast<const char*>(text.constData()), text.size() * 2);
    };
    const QString text = u"[Configurar]\r\nTitulo=Ótica Łódź\r\n"_s;
    const QString marked = u'\uFEFF' + text;
    const QString site = u"Site=ž\r\n"_s;
    for (const auto& [before, after] : {std::pair(text.toUtf8(), (text + site).toUtf8()),
                                        {marked.toUtf8(), (marked + site).toUtf8()},
                                        {utf16(marked) + 'x', utf16(marked + site)}}) {
        lay(path(), before);
        EXPECT_EQ(read(u"Titulo"_s), u"Ótica Łódź"_s);
        ASSERT_TRUE(write(u"Site"_s, u"ž"_s));
        EXPECT_EQ(contents(path()), after);
    }
    // A file of plain letters, or one with a byte that is no UTF-8, stays Western European.
    for (const QByteArray& before :
         {QByteArray("[Configurar]\r\n"), QByteArray("[Configurar]\r\nTitulo=\xC3\xA7\xE3o\r\n")}) {
        lay(path(), before);
        ASSERT_TRUE(write(u"Site"_s, u"ç"_s));
        EXPECT_EQ(contents(path()), before + "Site=\xE7\r\n");
    }
    // The bytes of these two would read as one letter of UTF-8.
    ASSERT_TRUE(write(u"Site"_s, u"Ã©"_s));
    EXPECT_EQ(read(u"Site"_s), u"Ã©"_s);
}

TEST_F(ProfileFileTest, WhatCannotBeWrittenLeavesTheFileAsItWas)
{
    const QByteArray before = "[Configurar]\r\nTitulo=a\r\n";
    lay(path(), before);
    {
        const FullDisk full(16);
        EXPECT_FALSE(write(u"Titulo"_s, u"b"_s));
    }
    faults::setObserver([](faults::Call) { throw RuntimeError(RuntimeError::DiskFull); });
    EXPECT_FALSE(write(u"Titulo"_s, u"b"_s));
    EXPECT_EQ(read(u"Titulo"_s), u"<default>"_s);
    faults::setObserver({});
    for (const QString& marked : {path(), directory_.path()}) {
        const auto usual = QFile::permissions(marked);
        QFile::setPermissions(marked, QFile::ReadOwner | QFile::ExeOwner);
        EXPECT_FALSE(write(u"Titulo"_s, u"b"_s));
        QFile::setPermissions(marked, usual);
    }
    EXPECT_EQ(contents(path()), before);
    EXPECT_EQ(files(), QStringList{u"Banco.ini"_s});
    // A folder, a pipe at which a reader would wait for ever, and a place in no folder.
    const QString pipe = directory_.filePath(u"pipe"_s);
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const QString& place : {directory_.path(), pipe, directory_.filePath(u"no/x.ini"_s)}) {
        EXPECT_EQ(readProfileString(u"a"_s, u"b"_s, u"d"_s, 255, place), u"d"_s);
        EXPECT_FALSE(writeProfileString(u"a"_s, u"b"_s, u"c"_s, place));
    }
}

TEST_F(ProfileFileTest, ALinkStaysALinkAndTheModeStays)
{
    const QString real = directory_.filePath(u"real.ini"_s);
    ASSERT_TRUE(writeProfileString(u"Configurar"_s, u"Site"_s, u"a"_s, real));
    const auto others = QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    EXPECT_FALSE(QFile::permissions(real) & others) << "a new one is no one else's";
    const auto mode = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::WriteGroup;
    QFile::setPermissions(real, mode);
    ASSERT_TRUE(QFile::link(real, path()));
    ASSERT_TRUE(write(u"Site"_s, u"b"_s));
    EXPECT_TRUE(QFileInfo(path()).isSymLink());
    EXPECT_EQ(contents(real), "[Configurar]\r\nSite=b\r\n");
    EXPECT_EQ(QFile::permissions(real) & (mode | others), mode);
}

TEST_F(SystemTest, ADriveLetterIsALinkInTheConfigurationOrBesideTheProgram)
{
    const QDir here(QFileInfo(directory_.path()).canonicalFilePath());
    ASSERT_TRUE(here.mkpath(u"unidades"_s) && here.mkpath(u"rede"_s));
    const QString net = here.filePath(u"rede"_s);
    for (const auto& [target, letter] :
         {std::pair(net, u"f:"_s), {u"/"_s, u"R:"_s}, {here.filePath(u"fora"_s), u"g:"_s}})
        ASSERT_TRUE(QFile::link(target, here.filePath(u"unidades/"_s + letter)));
    setApplicationFolder(here.path());
    for (const auto& [classic, native] :
         {std::pair(u"F:\\Arquivos de programas\\x.mdb"_s, net + u"/Arquivos de programas/x.mdb"_s),
          {u"f:x"_s, net + u"/x"_s},
          {u"F:\\"_s, net},
          {u"r:\\etc"_s, u"/etc"_s},
          {u"/home/loja\\x y.ini"_s, u"/home/loja/x y.ini"_s},
          {}})
        EXPECT_EQ(hostPath(classic), native) << qPrintable(classic);
    // Not mapped, mapped to what is gone, and the letter left out.
    for (const QString& path : {u"Z:\\x"_s, u"G:\\x"_s, u":\\Arquivos de programas"_s})
        EXPECT_EQ(errorOf([&] { hostPath(path); }), 76) << qPrintable(path);
    EXPECT_EQ(mappedDrives(), (QStringList{u"f:"_s, u"g:"_s, u"r:"_s}));
    EXPECT_EQ(driveFolder(u"F:"_s), net);
    for (const QString& drive : {u"g:"_s, u"z:"_s, u"1:"_s, u""_s})
        EXPECT_EQ(errorOf([&] { driveFolder(drive); }), 68) << qPrintable(drive);

    const QDir own(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) +
                   u"/unidades"_s);
    ASSERT_TRUE(own.mkpath(u"f:"_s));
    EXPECT_EQ(mappedDrives().size(), 3);
    EXPECT_EQ(hostPath(u"F:\\x"_s), own.canonicalPath() + u"/f:/x"_s)
        << "the user's own goes first";
}

TEST_F(SystemTest, AnInstanceIsHeldPerInstallationAndAKilledOneLeavesNoTrace)
{
    const QString folder = directory_.path();
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        const InstanceLock lock(folder);
        const char answer = lock.heldByAnother() ? 'n' : 'y';
        _exit(write(ready[1], &answer, 1) == 1 ? pause() : 1);
    }
    char first = 0;
    ASSERT_EQ(read(ready[0], &first, 1), 1);
    EXPECT_EQ(first, 'y');
    // Another user's session has a runtime folder of its own.
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder));
    EXPECT_TRUE(InstanceLock(folder + u"/../"_s + QDir(folder).dirName()).heldByAnother());
    qputenv("XDG_RUNTIME_DIR", runtime);
    EXPECT_FALSE(InstanceLock(folder + u"2"_s).heldByAnother());
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    {
        const InstanceLock lock(folder);
        ASSERT_FALSE(lock.heldByAnother());
        // What is held is the folder itself: no file of a known name, which another could plant.
        QStringList open;
        for (const QFileInfo& handle :
             QDir(u"/proc/self/fd"_s).entryInfoList(QDir::System | QDir::Dirs))
            open += handle.symLinkTarget();
        EXPECT_TRUE(open.contains(QFileInfo(folder).canonicalFilePath()));
        Shell(u"sleep 3"_s);
    }
    EXPECT_FALSE(InstanceLock(folder).heldByAnother()) << "by a program that was started from here";
    close(ready[0]);
    close(ready[1]);
}

TEST_F(SystemTest, AnAddressGoesToTheOpenerAndItsRefusalIsTold)
{
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(directory_.path()));
    const QString opener = directory_.filePath(u"xdg-open"_s);
    const auto openAddress = [] { return errorOf([] { Shell(u"explorer www.x.example/a b"_s); }); };
    EXPECT_EQ(errorOf([] { Shell(u"no-such-program -x"_s); }), 53);
    EXPECT_EQ(openAddress(), 53) << "no opener";
    for (const auto& [line, error] : {std::pair("exit 3", 53), {"echo \"$1\" > $0.log", 0}}) {
        lay(opener, QByteArray("#!/bin/sh\n") + line + '\n');
        QFile::setPermissions(opener, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        EXPECT_EQ(openAddress(), error) << line;
    }
    qputenv("PATH", path);
    EXPECT_EQ(contents(opener + u".log"_s), "http://www.x.example/a%20b\n");
}
