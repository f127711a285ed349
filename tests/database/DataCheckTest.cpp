#include "DatabaseTest.h"

#include "CashBook.h"
#include "CsvExport.h"
#include "DataCheck.h"
#include "Installation.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>

// The owner's tools over the data: what is wrong, what can be mended, and everything as a
// spreadsheet opens it.
class DataCheckTest : public DatabaseTest
{
protected:
    DataCheckTest()
    {
        layDownInstallation(place(), true);
        files_ = shopFiles(place());
    }

    QString place() const { return folder() + u"/loja"_s; }
    QStringList findings(bool remarks = false) const
    {
        QStringList texts;
        for (const Finding& finding : checkData(files_))
            if (remarks == (finding.kind == Finding::Kind::Remark))
                texts << finding.text;
        return texts;
    }

    ShopFiles files_;
};

TEST_F(DataCheckTest, EachPlantedFaultIsFoundAndNothingElse)
{
    EXPECT_EQ(findings(), QStringList());
    const struct
    {
        const char* plant;
        QString finding;
    } rows[] = {
        {"INSERT INTO Cliente (numero) VALUES ('0000001')", u"0000001 aparece 2 vezes"_s},
        {"INSERT INTO Cliente (Nome) VALUES ('x')", u"O.S: 1 sem número"_s},
        {"INSERT INTO Cliente (numero, Nome) VALUES ('9000001', 'x')", u"O.S 9000001: falta"_s},
        {"INSERT INTO PECAAPLICADA (NUMERO) VALUES ('9000002')", u"Peças aplicadas 9000002: não"_s},
        {"INSERT INTO PECAAPLICADA (NOME) VALUES ('x')", u"Peças aplicadas: 1 sem número"_s},
        {"INSERT INTO PECAAPLICADA (NUMERO, NOME) VALUES ('0000002', 'dupla')",
         u"Peças aplicadas: o número 0000002"_s},
        {"UPDATE Cliente SET valor='cem' WHERE _id=3", u"O.S 0000003: o valor \"cem\""_s},
        {"UPDATE Cliente SET valor='' WHERE _id=4", u"O.S 0000004: o valor \"\""_s},
        {"UPDATE Pecas SET VALOR='1,2,3' WHERE _id=1", u"o valor \"1,2,3\""_s},
        {"UPDATE Pecas SET VALOR='R$' WHERE _id=2", u"o valor \"R$\""_s},
        {"UPDATE Pecas SET ESTOQUE='dez' WHERE _id=3", u"o estoque \"dez\""_s},
        {"UPDATE Pecas SET ESTOQUE=NULL WHERE _id=4", u"o estoque \"\""_s},
        {"UPDATE Pecas SET ESTOQUE='p.EST' WHERE _id=5", u"o estoque \"p.EST\""_s},
        {"UPDATE Pecas SET ESTOQUE='-3' WHERE _id=6", u"estoque é negativo (-3)"_s},
        {"UPDATE Pecas SET ESTOQUE='(2)' WHERE _id=7", u"estoque é negativo ((2))"_s},
        {"INSERT INTO MOVIMENTO VALUES ('x','',NULL,1,'2026-01-01',NULL)", u"quantidade \"\""_s},
        {"INSERT INTO MOVIMENTO VALUES ('x','','dois',1,'2026-01-01',NULL)", u"\"dois\""_s},
        {"INSERT INTO MOVIMENTO VALUES ('x','',1,NULL,'2026-01-01',NULL)", u"o valor \"\""_s},
        {"INSERT INTO MOVIMENTO VALUES ('x','',1,'muito','2026-01-01',NULL)", u"\"muito\""_s},
        {"INSERT INTO MOVIMENTO VALUES ('x','',1,1,NULL,NULL)", u"a data não pode"_s},
        {"INSERT INTO MOVIMENTO VALUES ('x','',1,1,'ontem',NULL)", u"a data não pode"_s},
        {"INSERT INTO VALIDAR (USUARIO) VALUES ('Administrador')", u"aparece 2 vezes"_s},
        {"INSERT INTO VALIDAR (USUARIO) VALUES (' ')", u"usuário sem nome"_s},
    };
    QStringList before;
    for (const auto& row : rows) {
        sql(files_.main, QString::fromUtf8(row.plant));
        const QStringList found = findings();
        QStringList added = found;
        for (const QString& known : before)
            added.removeOne(known);
        EXPECT_EQ(found.size(), before.size() + 1) << row.plant;
        ASSERT_EQ(added.size(), 1) << row.plant << added.join(u'\n').toStdString();
        EXPECT_TRUE(added.front().contains(row.finding)) << added.front().toStdString();
        before = found;
    }
    QFile::remove(files_.main);
    layDownInstallation(place(), true);
    // In the list of the open sale.
    for (const char* field : {"QUANTIDADE", "UNITARIO", "TOTAL"}) {
        sql(files_.list, u"INSERT INTO Pecas VALUES ('1','',1,'x',1,1,'',NULL)"_s);
        EXPECT_EQ(findings(), QStringList());
        sql(files_.list, u"UPDATE Pecas SET %1='?'"_s.arg(QLatin1StringView(field)));
        EXPECT_EQ(findings().size(), 1) << field;
        sql(files_.list, u"DELETE FROM Pecas"_s);
    }
    // A delivered order has no quantity, which is worth a word and no fault.
    sql(files_.main, u"INSERT INTO MOVIMENTO VALUES ('0000001','x',NULL,100,'2026-01-01',NULL)"_s);
    EXPECT_EQ(findings(), QStringList());
    EXPECT_EQ(findings(true).size(), 1);
    // Nobody left, a damaged file, a missing one.
    sql(files_.main, u"DELETE FROM VALIDAR"_s);
    EXPECT_EQ(findings(), QStringList{u"Usuários: não há nenhum, ninguém pode entrar."_s});
    QFile file(files_.main);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.seek(3 * 4096 + 100);
    file.write(QByteArray(3000, '\x77'));
    file.close();
    EXPECT_EQ(findings().size(), 1);
    // A folder from another computer.
    ShopFiles copied = files_;
    copied.main = u"/fora/GALTERIA1.mdb"_s;
    EXPECT_TRUE(checkData(copied).front().text.contains(files_.main));
    QFile::remove(files_.main);
    EXPECT_EQ(findings().size(), 1);
}

TEST_F(DataCheckTest, OnlyAMissingTwinIsMendedAfterACopy)
{
    const QString copy = place() + u"/Antes.reparo"_s;
    EXPECT_EQ(repairData(files_, copy), QStringList());
    EXPECT_FALSE(QFile::exists(copy));

    sql(files_.main, u"DELETE FROM PECAAPLICADA WHERE NUMERO IN ('0000004', '0000005')"_s);
    sql(files_.main, u"INSERT INTO Cliente (numero) VALUES ('0000005')"_s); // guessing
    sql(files_.main, u"UPDATE Pecas SET ESTOQUE='-1' WHERE CODIGO='0000009'"_s);
    const auto rows = [this](const QString& file) {
        return sql(file, u"SELECT NUMERO || NOME FROM PECAAPLICADA WHERE NUMERO<>'0000004' "
                         "UNION ALL SELECT CODIGO || ESTOQUE FROM Pecas "
                         "UNION ALL SELECT numero || Nome FROM Cliente"_s);
    };
    const QStringList before = rows(files_.main);
    EXPECT_EQ(repairData(files_, copy).size(), 1);
    EXPECT_EQ(rows(files_.main), before);
    EXPECT_EQ(sql(files_.main,
                  u"SELECT count(*) FROM PECAAPLICADA p JOIN Cliente c ON c.numero=p.NUMERO AND "
                  "c.Nome=p.NOME WHERE p.NUMERO='0000004'"_s),
              QStringList{u"1"_s});
    EXPECT_EQ(sql(copy, u"SELECT count(*) FROM PECAAPLICADA WHERE NUMERO='0000004'"_s),
              QStringList{u"0"_s});
    EXPECT_EQ(repairData(files_, copy), QStringList());
    EXPECT_EQ(findings().size(), 3);
}

TEST_F(DataCheckTest, CashSumsAreThoseOfTheFile)
{
    sql(files_.main, u"DELETE FROM MOVIMENTO"_s);
    QRandomGenerator random(11);
    QStringList values;
    for (int row = 0; row < 10'000; ++row) {
        const int kind = random.bounded(10);
        values << u"('%1', 'x', %2, %3, '2026-%4-%5', NULL)"_s
                      .arg(kind < 4 ? u"0000001"_s : u"P%1"_s.arg(row))
                      .arg(kind < 4 || kind == 9 ? u"NULL"_s : u"1"_s)
                      .arg(kind == 8 ? u"NULL"_s
                                     : QString::number(random.bounded(-50'000, 900'000)))
                      .arg(random.bounded(1, 13), 2, 10, QChar(u'0'))
                      .arg(random.bounded(1, 29), 2, 10, QChar(u'0'));
    }
    sql(files_.main, u"INSERT INTO MOVIMENTO VALUES "_s + values.join(u','));
    const CashBook book = readCashBook(files_, std::nullopt);
    EXPECT_EQ(book.entries.size(), 10'000u);
    const QString sums = u"SELECT coalesce(sum(CASE WHEN codigo='0000001' AND quantidade IS NULL "
                         "THEN valor END),0) || '|' || coalesce(sum(CASE WHEN codigo<>'0000001' "
                         "THEN valor END),0) FROM MOVIMENTO"_s;
    const auto text = [](const CashBook::Sums& some) {
        return QStringList{u"%1|%2"_s.arg(some.jobs).arg(some.sales)};
    };
    EXPECT_EQ(text(book.all), sql(files_.main, sums));
    for (const auto& [day, some] : book.days)
        EXPECT_EQ(text(some),
                  sql(files_.main, sums + u" WHERE DATA='%1'"_s.arg(day->toString(Qt::ISODate))));
    const CashBook march = readCashBook(files_, DayRange{QDate(2026, 3, 1), QDate(2026, 3, 31)});
    EXPECT_EQ(text(march.all), sql(files_.main, sums + u" WHERE DATA LIKE '2026-03-%'"_s));

    sql(files_.main, u"INSERT INTO MOVIMENTO VALUES ('a','b',1,'muito',NULL,NULL)"_s);
    EXPECT_EQ(readCashBook(files_, std::nullopt).unreadable, 1);
    EXPECT_EQ(text(readCashBook(files_, std::nullopt).all), text(book.all));
}

TEST_F(DataCheckTest, TablesGoToASpreadsheetWhole)
{
    sql(files_.main, u"DELETE FROM DEFEITO"_s);
    sql(files_.main,
        u"INSERT INTO DEFEITO VALUES ('A;b', 'diz \"oi\"', NULL, 'linha 1\r\nlinha 2', NULL)"_s);
    sql(files_.main, u"DELETE FROM MOVIMENTO"_s);
    sql(files_.main,
        u"INSERT INTO MOVIMENTO VALUES ('1', '', 2.5, 12345000, '2026-02-01', NULL)"_s);
    const QString target = folder() + u"/saída"_s;
    EXPECT_EQ(exportTables(files_, target).size(), 10);
    const auto content = [&](const QString& name) {
        QFile file(target + u'/' + name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        EXPECT_TRUE(bytes.startsWith(CsvMark));
        return QString::fromUtf8(bytes);
    };
    EXPECT_EQ(content(u"DEFEITO.csv"_s),
              u"MARCA;MODELO;DEFEITO;SOLUCAO\r\n"
              "\"A;b\";\"diz \"\"oi\"\"\";;\"linha 1\r\nlinha 2\"\r\n"_s);
    EXPECT_FALSE(content(u"VALIDAR.csv"_s).contains(u"1234"_s));
    EXPECT_EQ(content(u"MOVIMENTO.csv"_s),
              u"codigo;descricao;quantidade;valor;DATA\r\n1;\"\";2,5;1234,5;01/02/2026\r\n"_s);
    EXPECT_EQ(errorOf([&] { exportTables(files_, u"/proc/nada"_s); }),
              RuntimeError::PathFileAccess);
}
