#include "FindCriterion.h"

#include "RuntimeError.h"
#include "WordScanner.h"

using namespace Qt::Literals::StringLiterals;

FindCriterion parseFind(const QString& criterion)
{
    WordScanner words(criterion);
    FindCriterion find;
    find.field = words.takeName();
    const bool isLike = !find.field.isEmpty() && words.takeWord("like"_L1);
    const QStringView pattern = words.rest().trimmed();
    if (!isLike || pattern.size() < 4 || !pattern.startsWith("'*"_L1) || !pattern.endsWith("*'"_L1))
        throw RuntimeError(RuntimeError::WrongArguments);
    find.text = pattern.mid(2, pattern.size() - 4).toString();
    if (find.text.contains(u'\''))
        throw RuntimeError(RuntimeError::WrongArguments);
    return find;
}
