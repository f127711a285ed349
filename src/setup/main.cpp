#include "CashBook.h"
#include "CsvExport.h"
#include "DataCheck.h"
#include "Dates.h"
#include "HostPaths.h"
#include "Installation.h"
#include "Program.h"
#include "RuntimeError.h"

#include <QCommandLineParser>
#include <QDir>
#include <QGuiApplication>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <span>
#include <string_view>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Done = 0;
constexpr int Failed = 1; // also: faults were found
constexpr int WrongUse = 2;

void say(std::FILE* target, const QString& text)
{
    std::fprintf(target, "%s\n", text.toUtf8().constData());
}

QString usage()
{
    return u"Uso: vorbelo-setup [--exemplos] [PASTA]\n"
           "     vorbelo-setup --verificar [PASTA]\n"
           "     vorbelo-setup --reparar [PASTA]\n"
           "     vorbelo-setup --exportar DESTINO [PASTA]\n"
           "     vorbelo-setup --caixa [DE ATÉ] [PASTA]"_s;
}

// By hand: the parser's own help and faults are English words in the middle of ours.
QString help()
{
    return usage() +
           u"\n\n"
           "Prepara uma instalação do Vorbelo (Banco.ini, GALTERIA1.mdb e MIRANDEL1.mdb) e cuida "
           "dos\nseus dados. Um arquivo que já existe nunca é alterado pela preparação.\n\n"
           "  PASTA         Pasta da instalação; sem ela, a do programa.\n"
           "  --exemplos    Inclui os dados de uma oficina de exemplo.\n"
           "  --verificar   Mostra o que está errado nos dados, sem alterar nada.\n"
           "  --reparar     Conserta o que se conserta sem adivinhar, depois de uma cópia "
           "conferida\n                Antes.reparo ao lado do banco de dados.\n"
           "  --exportar    Grava cada tabela como CSV na pasta DESTINO; as senhas não.\n"
           "  --caixa       Grava na pasta atual todo o movimento de caixa, ou o dos dias DE até "
           "ATÉ\n                (dd/mm/aaaa): Caixa.csv, Caixa-por-dia.csv e Caixa.pdf.\n"
           "  --version     Mostra a versão.\n"
           "  --help        Mostra esta ajuda.\n\n"
           "Saída: 0 tudo bem, 1 erro ou dados com falhas, 2 uso errado.\n"
           "Primeiro usuário: Administrador, senha 1234, com todos os níveis de acesso."_s;
}

int wrongUse(const QString& what)
{
    say(stderr, what + u"\n"_s + usage());
    return WrongUse;
}

int layDown(const QString& folder, bool withExamples)
{
    const QStringList made = layDownInstallation(folder, withExamples);
    const QString place = QDir::toNativeSeparators(QDir(folder).absolutePath());
    if (made.isEmpty())
        say(stdout, u"Nada a fazer: a instalação em %1 já está completa."_s.arg(place));
    else
        say(stdout, u"Criado em %1: %2."_s.arg(place, made.join(u", "_s)));
    return Done;
}

int verify(const QString& folder)
{
    int faults = 0;
    int mendable = 0;
    for (const Finding& finding : checkData(shopFiles(folder))) {
        const bool isRemark = finding.kind == Finding::Kind::Remark;
        faults += isRemark ? 0 : 1;
        mendable += finding.kind == Finding::Kind::Mendable ? 1 : 0;
        say(stdout, (isRemark ? u"Aviso: "_s : u"Falha: "_s) + finding.text);
    }
    say(stdout, faults == 0
                    ? u"Nenhuma falha."_s
                    : u"%1 falhas, %2 com conserto por --reparar."_s.arg(faults).arg(mendable));
    return faults == 0 ? Done : Failed;
}

int repair(const QString& folder)
{
    const ShopFiles files = shopFiles(folder);
    const QString copy = QFileInfo(files.main).path() + u"/Antes.reparo"_s;
    const QStringList done = repairData(files, copy);
    for (const QString& line : done)
        say(stdout, line);
    say(stdout, done.isEmpty() ? u"Nada a consertar."_s
                               : u"%1 consertos; a cópia de antes: %2"_s.arg(done.size())
                                     .arg(QDir::toNativeSeparators(copy)));
    return Done;
}

int exportAll(const QString& folder, const QString& target)
{
    const QStringList written = exportTables(shopFiles(folder), target);
    say(stdout,
        u"Gravado em %1: %2."_s.arg(QDir::toNativeSeparators(target), written.join(u", "_s)));
    return Done;
}

int cash(const QString& folder, const std::optional<DayRange>& range)
{
    const ShopFiles files = shopFiles(folder);
    const CashBook book = readCashBook(files, range);
    const QDir here;
    writeWhole(here.absoluteFilePath(u"Caixa.csv"_s), cashRowsCsv(book));
    writeWhole(here.absoluteFilePath(u"Caixa-por-dia.csv"_s), cashDaysCsv(book));
    printCashBook(book, files, range, here.absoluteFilePath(u"Caixa.pdf"_s));
    say(stdout,
        u"%1 lançamentos em Caixa.csv, Caixa-por-dia.csv e Caixa.pdf."_s.arg(book.entries.size()));
    if (book.unreadable > 0)
        say(stdout, u"%1 valores não podem ser lidos e contam como 0,00."_s.arg(book.unreadable));
    return Done;
}

// Two days at the front of the words, which they leave.
std::optional<DayRange> takeRange(QStringList& words)
{
    if (words.size() < 2)
        return std::nullopt;
    const std::optional<QDate> first = dateFromText(words[0]);
    const std::optional<QDate> last = dateFromText(words[1]);
    if (!first || !last)
        return std::nullopt;
    words.remove(0, 2);
    return DayRange{*first, *last};
}

} // namespace

int main(int argc, char** argv)
{
    // The paper of the cash needs fonts, and no display; all else needs neither.
    const std::span<char*> words(argv, static_cast<size_t>(argc));
    const bool needsFonts = std::any_of(words.begin(), words.end(), [](const char* word) {
        return std::string_view(word).ends_with("caixa");
    });
    qputenv("QT_QPA_PLATFORM", "offscreen");
    std::unique_ptr<QCoreApplication> application;
    if (needsFonts)
        application = std::make_unique<QGuiApplication>(argc, argv);
    else
        application = std::make_unique<QCoreApplication>(argc, argv);
    QCoreApplication::setApplicationName(u"vorbelo-setup"_s);

    const QCommandLineOption examples(u"exemplos"_s);
    const QCommandLineOption verifying(u"verificar"_s);
    const QCommandLineOption repairing(u"reparar"_s);
    const QCommandLineOption exporting(u"exportar"_s);
    const QCommandLineOption cashing(u"caixa"_s);
    const QCommandLineOption version(QStringList{u"v"_s, u"version"_s});
    const QCommandLineOption helping(QStringList{u"h"_s, u"help"_s, u"ajuda"_s});
    QCommandLineParser parser;
    parser.addPositionalArgument(u"PASTA"_s, {});
    parser.addOptions({examples, verifying, repairing, exporting, cashing, version, helping});
    if (!parser.parse(QCoreApplication::arguments()))
        return wrongUse(u"Opção desconhecida: %1"_s.arg(parser.unknownOptionNames().join(u", "_s)));
    if (parser.isSet(version)) {
        say(stdout, program::title() + u' ' + program::version());
        return Done;
    }
    if (parser.isSet(helping)) {
        say(stdout, help());
        return Done;
    }

    QStringList tasks;
    for (const QCommandLineOption& task : {examples, verifying, repairing, exporting, cashing})
        if (parser.isSet(task))
            tasks << task.names().front();
    if (tasks.size() > 1)
        return wrongUse(u"Uma opção de cada vez: %1"_s.arg(tasks.join(u", "_s)));
    QStringList rest = parser.positionalArguments();
    const std::optional<DayRange> range = parser.isSet(cashing) ? takeRange(rest) : std::nullopt;
    QString target;
    if (parser.isSet(exporting)) {
        if (rest.isEmpty())
            return wrongUse(u"Falta a pasta de destino."_s);
        target = rest.takeFirst();
    }
    if (rest.size() > 1)
        return wrongUse(u"Argumento a mais: %1"_s.arg(rest.last()));
    const QString folder = rest.isEmpty() ? applicationFolder() : rest.front();
    try {
        if (parser.isSet(verifying))
            return verify(folder);
        if (parser.isSet(repairing))
            return repair(folder);
        if (parser.isSet(exporting))
            return exportAll(folder, target);
        if (parser.isSet(cashing))
            return cash(folder, range);
        return layDown(folder, parser.isSet(examples));
    } catch (const RuntimeError& error) {
        say(stderr, u"Erro nº %1: %2"_s.arg(error.number()).arg(error.description()));
        return Failed;
    }
}
