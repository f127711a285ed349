#include "SampleWords.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString pair(const QString& area, int first, int second)
{
    return u"(%1)%2-%3"_s.arg(area).arg(first, 4, 10, QChar(u'0')).arg(second, 4, 10, QChar(u'0'));
}

// Modulus 11 from the right, with weights that begin anew at 2 after the largest.
QChar checkDigit(const QString& digits, int largestWeight)
{
    int sum = 0;
    int weight = 2;
    for (auto digit = digits.crbegin(); digit != digits.crend(); ++digit) {
        sum += digit->digitValue() * weight;
        weight = weight == largestWeight ? 2 : weight + 1;
    }
    const int rest = sum % 11;
    return QChar(u'0' + (rest < 2 ? 0 : 11 - rest));
}

} // namespace

QString SampleWords::person()
{
    static const QStringList first{u"Ana"_s,     u"José"_s,   u"Maria"_s,   u"João"_s,
                                   u"Antônio"_s, u"Luís"_s,   u"Cláudia"_s, u"Márcio"_s,
                                   u"Sônia"_s,   u"Paulo"_s,  u"Tereza"_s,  u"Sebastião"_s,
                                   u"Regina"_s,  u"Vítor"_s,  u"Fátima"_s,  u"Carlos"_s,
                                   u"Débora"_s,  u"Flávio"_s, u"Ivone"_s,   u"Rogério"_s};
    static const QStringList last{u"da Silva"_s, u"Souza"_s,     u"Gonçalves"_s, u"Araújo"_s,
                                  u"Pereira"_s,  u"Conceição"_s, u"Magalhães"_s, u"dos Santos"_s,
                                  u"Lima"_s,     u"Fernandes"_s, u"Brandão"_s,   u"Nogueira"_s,
                                  u"Teixeira"_s, u"Assunção"_s,  u"Moraes"_s,    u"D'Ávila"_s};
    const QString name = oneOf(first) + u' ' + oneOf(last);
    return below(3) == 0 ? name + u' ' + oneOf({u"Júnior"_s, u"Neto"_s, u"Filho"_s}) : name;
}

QString SampleWords::street()
{
    return oneOf({u"Rua das Acácias"_s, u"Rua São Bento"_s, u"Avenida Brasil"_s,
                  u"Rua Sete de Setembro"_s, u"Travessa do Comércio"_s, u"Rua Padre Anchieta"_s,
                  u"Avenida Independência"_s, u"Rua Quinze de Novembro"_s, u"Rua João Pessoa"_s});
}

QString SampleWords::district()
{
    return oneOf({u"Centro"_s, u"Vila Nova"_s, u"Jardim América"_s, u"Bela Vista"_s, u"São José"_s,
                  u"Santo Antônio"_s, u"Parque Industrial"_s});
}

QString SampleWords::phone()
{
    const int first = 3200 + below(700);
    return pair(u"19"_s, first, below(10000));
}

QString SampleWords::mobile()
{
    const int first = 9100 + below(800);
    return pair(u"19"_s, first, below(10000));
}

QString SampleWords::cpf()
{
    QString digits = QString::number(100000000 + below(899999999));
    digits += checkDigit(digits, 11);
    return digits + checkDigit(digits, 11);
}

QString SampleWords::cgc()
{
    QString digits = QString::number(10000000 + below(89999999)) + u"0001"_s;
    digits += checkDigit(digits, 9);
    return digits + checkDigit(digits, 9);
}

QString SampleWords::email(const QString& person)
{
    QString plain;
    for (const QChar c : person.normalized(QString::NormalizationForm_D).toLower()) {
        if (c == u' ')
            plain += u'.';
        else if (c >= u'a' && c <= u'z')
            plain += c;
    }
    return plain + u"@exemplo.com.br"_s;
}

QString SampleWords::code(int number)
{
    return u"%1"_s.arg(number, 7, 10, QChar(u'0'));
}
