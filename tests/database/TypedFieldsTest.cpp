#include "DatabaseTest.h"

using TypedFieldsTest = DatabaseTest;

// Field of MOVIMENTO (text, number, money, date) or of VALIDAR (yes/no), what is assigned, what is
// read back as text, and what lies in the file.
TEST_F(TypedFieldsTest, ValuesAreStoredAsTheirKindAndStrayTextsAsTheyStand)
{
    struct Row
    {
        QString field;
        Value assigned;
        QString read;
        QString inFile;
    };
    const std::vector<Row> rows{
        {u"codigo"_s, u" 12,50 "_s, u" 12,50 "_s, u"text: 12,50 "_s},
        {u"codigo"_s, 1.5, u"1,5"_s, u"text:1,5"_s},
        {u"codigo"_s, Value(), u"NULL"_s, u"NULL"_s},
        {u"codigo"_s, u"'"_s, u"'"_s, u"text:'"_s},
        {u"valor"_s, u"0,00"_s, u"0"_s, u"integer:0"_s},
        {u"valor"_s, u"R$ 1.234,56"_s, u"1234,56"_s, u"integer:12345600"_s},
        {u"valor"_s, 0.00005, u"0"_s, u"integer:0"_s},
        {u"valor"_s, Value::Money{-5}, u"-0,0005"_s, u"integer:-5"_s},
        {u"valor"_s, u"900000000000000000"_s, u"900000000000000000"_s,
         u"text:'900000000000000000"_s},
        {u"valor"_s, u"12 reais"_s, u"12 reais"_s, u"text:'12 reais"_s},
        {u"valor"_s, u"'aspas"_s, u"'aspas"_s, u"text:''aspas"_s},
        {u"valor"_s, u"*******"_s, u"*******"_s, u"text:*******"_s},
        {u"valor"_s, u""_s, u""_s, u"text:"_s},
        {u"valor"_s, true, u"-1"_s, u"integer:-10000"_s},
        {u"quantidade"_s, u"2,5"_s, u"2,5"_s, u"real:2.5"_s},
        {u"quantidade"_s, u"1.5e400x"_s, u"1.5e400x"_s, u"text:'1.5e400x"_s},
        {u"DATA"_s, u"5/12/04"_s, u"05/12/2004"_s, u"text:2004-12-05"_s},
        {u"DATA"_s, QDate(2026, 3, 9), u"09/03/2026"_s, u"text:2026-03-09"_s},
        {u"DATA"_s, u"2004-12-05"_s, u"2004-12-05"_s, u"text:'2004-12-05"_s},
        {u"DATA"_s, u"31/02/2004"_s, u"31/02/2004"_s, u"text:'31/02/2004"_s},
        {u"DATA"_s, u"**/**/****"_s, u"**/**/****"_s, u"text:**/**/****"_s},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.field.toStdString() + " " + row.assigned.textOrEmpty().toStdString());
        mainSql(u"DELETE FROM MOVIMENTO"_s);
        auto table = open(u"SELECT * FROM MOVIMENTO"_s);
        table->AddNew();
        table->Fields(row.field) = row.assigned;
        table->Update();
        EXPECT_EQ(stored(u"typeof(%1) || ':' || %1"_s.arg(row.field), u"MOVIMENTO"_s),
                  QStringList{row.inFile});
        const auto again = open(u"SELECT * FROM MOVIMENTO"_s);
        const Field field = again->Fields(row.field);
        EXPECT_EQ(field.isNull() ? u"NULL"_s : field.text(), row.read);
    }
}

TEST_F(TypedFieldsTest, YesNoTakesNumbersWordsAndStrayTexts)
{
    const std::vector<std::pair<Value, Value>> rows{
        {u"1"_s, true},      {u"0"_s, false},
        {u"-1"_s, true},     {2, true},
        {0, false},          {u"verdadeiro"_s, true},
        {u"FALSO"_s, false}, {u"talvez"_s, u"talvez"_s},
        {Value(), Value()},
    };
    for (const auto& [assigned, read] : rows) {
        auto table = open(u"SELECT * FROM VALIDAR"_s);
        set(*table, 2, assigned);
        EXPECT_EQ(open(u"SELECT * FROM VALIDAR"_s)->Fields(2).value(), read)
            << assigned.textOrEmpty().toStdString();
    }
}
