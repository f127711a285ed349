#include "Shell.h"

#include "RuntimeError.h"

#include <QProcess>
#include <QStringList>
#include <QUrl>

#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace {

bool isExplorer(const QString& program)
{
    return program.compare(u"explorer", Qt::CaseInsensitive) == 0 ||
           program.compare(u"explorer.exe", Qt::CaseInsensitive) == 0;
}

// The opener tells by its exit status that it knows no browser; where it goes on running, it is the
// browser.
bool openAddress(const QString& address)
{
    constexpr int LongestSearch = 2000; // milliseconds
    const QUrl url = QUrl::fromUserInput(address);
    auto opener = std::make_unique<QProcess>();
    opener->setStandardInputFile(QProcess::nullDevice());
    opener->setStandardOutputFile(QProcess::nullDevice());
    opener->setStandardErrorFile(QProcess::nullDevice());
    opener->start(u"xdg-open"_s, {url.toString(QUrl::FullyEncoded)});
    if (!url.isValid() || !opener->waitForStarted())
        return false;
    if (opener->waitForFinished(LongestSearch))
        return opener->exitStatus() == QProcess::NormalExit && opener->exitCode() == 0;
    // It outlives this program.
    QObject::connect(opener.get(), &QProcess::finished, opener.get(), &QObject::deleteLater);
    static_cast<void>(opener.release());
    return true;
}

} // namespace

// The window style is a wish to the window manager that this desktop does not take.
void Shell(const QString& commandLine, int /*windowStyle*/)
{
    QStringList words = QProcess::splitCommand(commandLine);
    const QString program = words.isEmpty() ? QString() : words.takeFirst();
    const bool address = isExplorer(program) && !words.isEmpty();
    const bool started = !program.isEmpty() && (address ? openAddress(words.join(u' '))
                                                        : QProcess::startDetached(program, words));
    if (!started && address)
        throw RuntimeError(
            RuntimeError::FileNotFound,
            u"Nenhum programa deste computador abre o endereço %1. Instale um navegador."_s.arg(
                words.join(u' ')));
    if (!started)
        throw RuntimeError(RuntimeError::FileNotFound);
}
