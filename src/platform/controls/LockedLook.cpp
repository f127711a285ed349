#include "LockedLook.h"

#include "Look.h"

#include <QPalette>
#include <QWidget>

void showLocked(QWidget& widget, bool locked)
{
    if (!locked) {
        widget.setPalette(QPalette());
        return;
    }
    QPalette palette = widget.palette();
    palette.setColor(QPalette::Active, QPalette::Base, look::lockedGround());
    palette.setColor(QPalette::Inactive, QPalette::Base, look::lockedGround());
    widget.setPalette(palette);
}
