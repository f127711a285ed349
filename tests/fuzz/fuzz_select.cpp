#include "Require.h"

#include "FindCriterion.h"
#include "RuntimeError.h"
#include "SelectStatement.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// Any text at all: read as one of the three shapes, or refused.
void readAnything(const QString& sql)
{
    try {
        const SelectStatement statement = parseSelect(sql);
        require(!statement.table.isEmpty(), "a statement has a table");
        require(!statement.orderField || !statement.likeField, "order and Like exclude each other");
        require(!statement.orderField || !statement.orderField->isEmpty(), "an order has a field");
    } catch (const RuntimeError& error) {
        require(error.number() == RuntimeError::SyntaxError, "all else is a syntax error");
    }
}

// What a clerk types may break the statement, but never become one.
void typeIntoSearch(const QString& typed)
{
    const QString quotes = u"'"_s;
    try {
        const SelectStatement statement =
            parseSelect(u"SELECT * FROM Cliente WHERE Nome Like '%"_s + typed + u"%'"_s);
        require(statement.table == u"Cliente"_s && statement.likeField == u"Nome"_s &&
                    !statement.orderField,
                "typed text changes nothing but the pattern");
        require(u'%' + typed + u'%' == QString(statement.pattern).replace(quotes, u"''"_s),
                "the pattern is what was typed");
    } catch (const RuntimeError&) {
        require(typed.contains(quotes), "only an apostrophe breaks the statement");
    }

    const bool refused = typed.contains(quotes);
    try {
        const FindCriterion find = parseFind(u"numero LIKE '*"_s + typed + u"*'"_s);
        require(!refused && find.field == u"numero"_s && find.text == typed,
                "found as it was typed");
    } catch (const RuntimeError& error) {
        require(refused && error.number() == RuntimeError::WrongArguments,
                "only an apostrophe is refused");
    }
}

void findAnything(const QString& criterion)
{
    try {
        require(!parseFind(criterion).field.isEmpty(), "a criterion has a field");
    } catch (const RuntimeError& error) {
        require(error.number() == RuntimeError::WrongArguments, "all else is a wrong argument");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const FuzzInput input(data, size);
    readAnything(input.whole);
    readAnything(u"SELECT * FROM "_s + input.whole);
    typeIntoSearch(input.whole);
    findAnything(input.whole);
    return 0;
}
