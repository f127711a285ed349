#pragma once

#include "Form1Configurar.h"
#include "Form1principal.h"
#include "FormTest.h"
#include "Funciones.h"
#include "frmAbout.h"

#include <QWidget>

// The form of the settings and the users, over a main window that is in view.
class Configurar : public FormTest
{
protected:
    const QString LevelsTip = u"Define o nivel de acesso de cada formulario."_s;

    Configurar()
    {
        addForm<Form1principal>();
        addForm<Form1Configurar>();
        addForm<frmAbout>();
        principal().show();
    }

    Form1Configurar& open()
    {
        form().show();
        return form();
    }
    Form1Configurar& form() const { return ::form<Form1Configurar>(); }
    QString ini(const QString& section, const QString& key) const
    {
        return Funciones::LeIni(section, key, iniFile());
    }
    QString focused() const { return form().window()->focusWidget()->objectName(); }
    void press(int index) { click(form().Command1(index)); }

    // Buttons on, their three doubling captions, apply's tip: "0 1 2|&Local backup|...".
    QString buttons() const
    {
        const auto& buttons = form().Command1;
        return enabledOf(buttons) + u'|' + buttons(3).caption() + u'|' + buttons(4).caption() +
               u'|' + buttons(5).caption() + u'|' + buttons(4).toolTipText();
    }
    // Lines in view with label and length, and the legend's first word.
    QString screen() const
    {
        QStringList lines;
        for (int line = 0; line < 8; ++line)
            if (form().Text1(line).visible())
                lines << form().Label1(line).caption() + u' ' +
                             QString::number(form().Text1(line).maxLength());
        const QString legend = form().Label1(8).caption();
        return lines.join(u',') + u'|' + legend.left(38) +
               (form().Label4.visible() ? u"|help"_s : QString()) +
               (form().Check1.visible() ? u"|server"_s : QString()) +
               (form().Frame1.enabled() ? u"|drives"_s : QString()) +
               (form().Frame2.enabled() ? u"|users"_s : QString()) +
               (form().Frame3.visible() ? u"|levels"_s : QString());
    }
    void choose(const QString& name)
    {
        for (int entry = 0; entry < form().Combo1.listCount(); ++entry)
            if (form().Combo1.list(entry) == name)
                form().Combo1.setListIndex(entry);
    }
    void typePasswords(const QString& first, const QString& second, const QString& third)
    {
        type(form().Text2, first);
        type(form().Text3, second);
        type(form().Text4, third);
    }
};
