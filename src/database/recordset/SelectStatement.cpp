#include "SelectStatement.h"

#include "RuntimeError.h"
#include "WordScanner.h"

using namespace Qt::Literals::StringLiterals;

namespace {

bool parse(const QString& sql, SelectStatement& statement)
{
    WordScanner words(sql);
    if (!words.takeWord("select"_L1) || !words.takeSign(u'*') || !words.takeWord("from"_L1))
        return false;
    statement.table = words.takeName();
    if (statement.table.isEmpty())
        return false;
    if (words.takeWord("order"_L1)) {
        if (!words.takeWord("by"_L1))
            return false;
        statement.orderField = words.takeName();
        if (statement.orderField->isEmpty())
            return false;
    } else if (words.takeWord("where"_L1)) {
        statement.likeField = words.takeName();
        if (statement.likeField->isEmpty() || !words.takeWord("like"_L1) ||
            !words.takeQuoted(statement.pattern))
            return false;
    }
    return words.atEnd();
}

} // namespace

SelectStatement parseSelect(const QString& sql)
{
    SelectStatement statement;
    if (!parse(sql, statement))
        throw RuntimeError(
            RuntimeError::SyntaxError,
            u"Erro de sintaxe (operador faltando) na expressão de consulta '%1'."_s.arg(sql));
    return statement;
}
