#include "Application.h"
#include "Buscacli.h"
#include "Buscafornecedor.h"
#include "EventTransactions.h"
#include "FaultLog.h"
#include "Form1Cli.h"
#include "Form1Configurar.h"
#include "Form1Defeitos.h"
#include "Form1For.h"
#include "Form1Pec.h"
#include "Form1log.h"
#include "Form1manutencao.h"
#include "Form1pecabusca.h"
#include "Form1pecavenda.h"
#include "Form1pedido.h"
#include "Form1principal.h"
#include "Form1relatorio.h"
#include "Form1servico.h"
#include "FormRegistry.h"
#include "HostPaths.h"
#include "MsgBox.h"
#include "Program.h"
#include "RuntimeError.h"
#include "ShopFolder.h"
#include "frmAbout.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QIcon>

#include <clocale>
#include <cstdio>
#include <langinfo.h>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Failed = 1;
constexpr int WrongUse = 2;

void say(std::FILE* target, const QString& text)
{
    std::fprintf(target, "%s\n", text.toUtf8().constData());
}

QString usage()
{
    return u"Uso: vorbelo [PASTA]"_s;
}

// By hand: the parser's own help and faults are English words in the middle of ours.
QString help()
{
    return usage() +
           u"\n\n"
           "Abre o sistema da oficina.\n\n"
           "  PASTA       Pasta da oficina, com Banco.ini; sem ela, a do programa, a que o "
           "administrador\n              ligou em vorbelo/pasta, ou Vorbelo na pasta do usuário.\n"
           "  --version   Mostra a versão.\n"
           "  --help      Mostra esta ajuda.\n\n"
           "Dados, cópias e consertos: vorbelo-setup --help."_s;
}

// What needs no display; nothing where the program is to start.
std::optional<int> answer(const QCommandLineParser& parser, bool isUnderstood)
{
    if (!isUnderstood || parser.positionalArguments().size() > 1) {
        say(stderr,
            (isUnderstood ? u"Argumento a mais."_s
                          : u"Opção desconhecida: "_s + parser.unknownOptionNames().join(u", "_s)) +
                u'\n' + usage() + u" | --version | --help"_s);
        return WrongUse;
    }
    if (parser.isSet(u"version"_s)) {
        say(stdout, program::title() + u' ' + program::version());
        return 0;
    }
    if (parser.isSet(u"help"_s)) {
        say(stdout, help());
        return 0;
    }
    return std::nullopt;
}

void addForms()
{
    addForm<Form1principal>();
    addForm<Form1log>();
    addForm<Form1Cli>();
    addForm<Buscacli>();
    addForm<Form1Pec>();
    addForm<Form1pecabusca>();
    addForm<Form1pecavenda>();
    addForm<Form1pedido>();
    addForm<Form1manutencao>();
    addForm<Form1For>();
    addForm<Buscafornecedor>();
    addForm<Form1Defeitos>();
    addForm<Form1relatorio>();
    addForm<Form1servico>();
    addForm<Form1Configurar>();
    addForm<frmAbout>();
}

// Under another character set the toolkit finds no table of dead keys, and no accent can be typed.
void useUtf8()
{
    if (!setlocale(LC_CTYPE, "") || qstrcmp(nl_langinfo(CODESET), "UTF-8") != 0)
        qputenv("LC_ALL", "C.UTF-8");
}

bool useShopFolder(const QString& named)
try {
    const ShopFolder shop = chooseShopFolder(named, applicationFolder());
    setApplicationFolder(shop.path);
    QDir::setCurrent(shop.path);
    if (shop.isNew)
        MsgBox(u"A pasta da oficina foi criada em "_s + QDir::toNativeSeparators(shop.path) +
                   u".\n\nPrimeiro usuário: Administrador, senha 1234."_s,
               BoxButtons::Ok, BoxIcon::Information);
    return true;
} catch (const RuntimeError& error) {
    say(stderr, error.text());
    faultlog::note(faultlog::Kind::RefusedOpen, {}, error);
    MsgBox(error.text(), BoxButtons::Ok, BoxIcon::Critical);
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    QCommandLineParser parser;
    parser.addOptions({QCommandLineOption(QStringList{u"version"_s, u"v"_s}),
                       QCommandLineOption(QStringList{u"help"_s, u"h"_s, u"ajuda"_s})});
    QStringList words;
    for (int word = 0; word < argc; ++word)
        words << QString::fromLocal8Bit(argv[word]);
    const bool isUnderstood = parser.parse(words);
    if (const std::optional<int> status = answer(parser, isUnderstood))
        return *status;

    useUtf8();
    QApplication application(argc, argv);
    prepareApplication(application);
    QApplication::setWindowIcon(QIcon(u":/icons/vorbelo.svg"_s));
    installEventTransactions();
    addForms();
    const QStringList folders = parser.positionalArguments();
    if (!useShopFolder(folders.isEmpty() ? QString() : folders.front()))
        return Failed;
    principal().show();
    return runApplication();
}
