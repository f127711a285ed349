#include "HostPaths.h"
#include "Installation.h"
#include "Program.h"
#include "RuntimeError.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>

#include <cstdio>

using namespace Qt::Literals::StringLiterals;

namespace {

void say(std::FILE* target, const QString& text)
{
    std::fprintf(target, "%s\n", text.toUtf8().constData());
}

QString usage()
{
    return u"Uso: vorbelo-setup [--exemplos] [PASTA]"_s;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"vorbelo-setup"_s);

    const QCommandLineOption examples(u"exemplos"_s);
    const QCommandLineOption version(u"version"_s);
    const QCommandLineOption help(QStringList{u"h"_s, u"help"_s, u"ajuda"_s});
    QCommandLineParser parser;
    parser.addPositionalArgument(u"PASTA"_s, {});
    parser.addOptions({examples, version, help});
    if (!parser.parse(QCoreApplication::arguments()) || parser.positionalArguments().size() > 1) {
        say(stderr, usage());
        return 2;
    }
    if (parser.isSet(version)) {
        say(stdout, program::title() + u' ' + program::version());
        return 0;
    }
    if (parser.isSet(help)) {
        say(stdout,
            usage() +
                u"\n\n"
                "Prepara uma instalação do Vorbelo: Banco.ini, GALTERIA1.mdb e MIRANDEL1.mdb.\n"
                "Um arquivo que já existe nunca é alterado.\n\n"
                "  PASTA        Pasta da instalação; sem ela, a do programa.\n"
                "  --exemplos   Inclui os dados de uma oficina de exemplo.\n"
                "  --version    Mostra a versão.\n"
                "  --ajuda      Mostra esta ajuda.\n\n"
                "Primeiro usuário: Administrador, senha 1234, com todos os níveis de acesso."_s);
        return 0;
    }

    const QStringList folders = parser.positionalArguments();
    const QString folder = folders.isEmpty() ? applicationFolder() : folders.front();
    try {
        const QStringList made = layDownInstallation(folder, parser.isSet(examples));
        const QString place = QDir::toNativeSeparators(QDir(folder).absolutePath());
        if (made.isEmpty())
            say(stdout, u"Nada a fazer: a instalação em %1 já está completa."_s.arg(place));
        else
            say(stdout, u"Criado em %1: %2."_s.arg(place, made.join(u", "_s)));
    } catch (const RuntimeError& error) {
        say(stderr, u"Erro nº %1: %2"_s.arg(error.number()).arg(error.description()));
        return 1;
    }
    return 0;
}
