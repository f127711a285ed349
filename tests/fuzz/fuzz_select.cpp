#include "Require.h"

#include "FindCriterion.h"
#include "RuntimeError.h"
#include "SelectStatement.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// Whether it was read; all else is refused with this number.
template <class Work> bool isRead(const Work& work, int refusal)
{
    try {
        work();
        return true;
    } catch (const RuntimeError& error) {
        require(error.number() == refusal, "all else is refused as it must be");
        return false;
    }
}

// What a clerk types may break the statement, but never become one.
void typeIntoSearch(const QString& typed)
{
    const bool hasQuote = typed.contains(u'\'');
    const auto select = [&] {
        const SelectStatement statement =
            parseSelect(u"SELECT * FROM Cliente WHERE Nome Like '%"_s + typed + u"%'"_s);
        require(statement.table == u"Cliente"_s && statement.likeField == u"Nome"_s &&
                    !statement.orderField &&
                    u'%' + typed + u'%' == QString(statement.pattern).replace(u"'"_s, u"''"_s),
                "typed text changes nothing but the pattern");
    };
    require(isRead(select, RuntimeError::SyntaxError) || hasQuote,
            "only an apostrophe breaks the statement");
    const auto find = [&] {
        const FindCriterion criterion = parseFind(u"numero LIKE '*"_s + typed + u"*'"_s);
        require(criterion.field == u"numero"_s && criterion.text == typed, "found as it was typed");
    };
    require(isRead(find, RuntimeError::WrongArguments) != hasQuote, "an apostrophe is refused");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString text = FuzzInput(data, size).whole;
    typeIntoSearch(text);
    for (const QString& sql : {text, u"SELECT * FROM "_s + text}) {
        const auto readAnything = [&] {
            const SelectStatement statement = parseSelect(sql);
            require(!statement.table.isEmpty() &&
                        (!statement.orderField ||
                         (!statement.likeField && !statement.orderField->isEmpty())),
                    "a statement has a table; an order has a field and excludes Like");
        };
        isRead(readAnything, RuntimeError::SyntaxError);
    }
    isRead([&] { require(!parseFind(text).field.isEmpty(), "a criterion has a field"); },
           RuntimeError::WrongArguments);
    return 0;
}
