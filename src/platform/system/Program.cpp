#include "Program.h"

using namespace Qt::Literals::StringLiterals;

QString program::title()
{
    return u"Vorbelo"_s;
}

QString program::version()
{
    return QStringLiteral(VORBELO_VERSION);
}
