#include "frmAbout.h"

#include "MsgBox.h"
#include "Program.h"
#include "RuntimeError.h"
#include "Shell.h"
#include "SiteAddress.h"
#include "ui_frmAbout.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;

frmAbout::frmAbout() : Form(QString::fromLatin1(Name), makeWindow<Ui::frmAbout>())
{
    cmdOK.onClick([this] { unload(); });
    cmdSysInfo.onClick([this] { StartSysInfo(); });
    lblDisclaimer.onClick([] { Shell(u"explorer "_s + siteAddress({}), 2); });
}

// The English texts take the place of the designed ones. Meant.
void frmAbout::Form_Load()
{
    setCaption(u"About "_s + program::title());
    lblVersion.setCaption(u"Version "_s + program::version());
    lblTitle.setCaption(program::title());
    cmdOK.SetFocus();
}

void frmAbout::StartSysInfo()
try {
    const QString sharedTools = u"SOFTWARE\\Microsoft\\Shared Tools"_s;
    QString tool;
    if (!GetKeyValue(RegistryRoot::LocalMachine, sharedTools + u"\\MSINFO"_s, u"PATH"_s, tool)) {
        QString folder;
        if (!GetKeyValue(RegistryRoot::LocalMachine, sharedTools + u" Location"_s, u"MSINFO"_s,
                         folder))
            throw RuntimeError(RuntimeError::FileNotFound);
        tool = folder + u"\\MSINFO32.EXE"_s;
        if (!QFile::exists(tool))
            throw RuntimeError(RuntimeError::FileNotFound);
    }
    Shell(tool, 1);
} catch (const RuntimeError&) {
    MsgBox(u"System Information Is Unavailable At This Time"_s);
}

bool frmAbout::GetKeyValue(RegistryRoot root, const QString& key, const QString& value,
                           QString& text)
{
    const std::optional<QString> found = registryValue(root, key, value);
    text = found.value_or(QString());
    return found.has_value();
}
