#pragma once

#include "Controls.h"
#include "Registry.h"

// Title and version of the program, and the way to the system's information tool.
class frmAbout : public Form
{
public:
    static constexpr char Name[] = "frmAbout";
    frmAbout();

    Label lblTitle{this, QStringLiteral("lblTitle")};
    Label lblVersion{this, QStringLiteral("lblVersion")};
    Label lblDescription{this, QStringLiteral("lblDescription")};
    Label lblDisclaimer{this, QStringLiteral("lblDisclaimer")};
    CommandButton cmdOK{this, QStringLiteral("cmdOK")};
    CommandButton cmdSysInfo{this, QStringLiteral("cmdSysInfo")};

    void StartSysInfo();
    // Whether the value was read.
    bool GetKeyValue(RegistryRoot root, const QString& key, const QString& value, QString& text);

protected:
    void Form_Load() override;
};
