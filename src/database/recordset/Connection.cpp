#include "Connection.h"

#include "Database.h"
#include "Faults.h"
#include "HostPaths.h"
#include "ListMark.h"
#include "Recordset.h"
#include "RuntimeError.h"

#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

// The data source runs to the end of the text: a path may hold any sign.
QString dataSource(const QString& connectionString)
{
    static const QRegularExpression key(u"data source\\s*=\\s*"_s,
                                        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = key.match(connectionString);
    return match.hasMatch() ? connectionString.mid(match.capturedEnd()) : QString();
}

} // namespace

Connection::Connection() = default;
Connection::~Connection() = default;

void Connection::Open(const QString& connectionString, const QString&, const QString&, int)
{
    faults::point(faults::Call::Recordset);
    if (isOpen())
        throw RuntimeError(RuntimeError::ObjectOpen);
    const QString path = dataSource(connectionString);
    std::shared_ptr<Database> database = Database::open(path.isEmpty() ? path : hostPath(path));
    finishMarkedList(*database);
    database_ = std::move(database);
}

void Connection::Close()
{
    faults::point(faults::Call::Recordset);
    if (!isOpen())
        throw RuntimeError(RuntimeError::ObjectClosed);
    for (Recordset* recordset : std::exchange(recordsets_, {}))
        recordset->discard();
    database_.reset();
}
