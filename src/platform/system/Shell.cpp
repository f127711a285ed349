#include "Shell.h"

#include "RuntimeError.h"

#include <QDesktopServices>
#include <QProcess>
#include <QStringList>
#include <QUrl>

using namespace Qt::Literals::StringLiterals;

namespace {

bool isExplorer(const QString& program)
{
    return program.compare(u"explorer", Qt::CaseInsensitive) == 0 ||
           program.compare(u"explorer.exe", Qt::CaseInsensitive) == 0;
}

bool openAddress(const QString& address)
{
    const QUrl url = QUrl::fromUserInput(address);
    return url.isValid() && (QDesktopServices::openUrl(url) ||
                             QProcess::startDetached(u"xdg-open"_s, {url.toString()}));
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
    if (!started)
        throw RuntimeError(RuntimeError::FileNotFound);
}
