#include "Form1Cli.h"

#include "Dates.h"
#include "Funciones.h"
#include "Printer.h"
#include "RuntimeError.h"
#include "SheetHead.h"
#include "Strings.h"

using namespace Funciones;
using namespace Qt::Literals::StringLiterals;

namespace {

// The eight lines of the sheet and the shop's document; the lines' keys begin at firstLine.
void readSheet(int firstLine)
{
    readSheetCompany();
    const auto read = [](const QString& key) { return LeIni(u"Configurar"_s, key, CaminhoIni()); };
    DocumentoEmpresa = read(u"cpfcgc"_s);
    for (int line = 0; line < 8; ++line)
        LinhasFicha[static_cast<size_t>(line)] = read(QString::number(firstLine + line));
}

void printCompany(Printer& printer)
{
    printer.setFontSize(12);
    printer.at(100, 400).print(TituloEmpresa + u"     CPF\\CGC: "_s + DocumentoEmpresa);
    printer.setFontSize(10);
    printer.at(100, 1000).print(u"Endereço: "_s + EnderecoEmpresa);
    printer.at(7500, 1000).print(u"Tel/Fax: "_s + TelefoneEmpresa);
    printer.at(100, 1500).print(u"Site: "_s + SiteEmpresa);
    printer.at(7000, 1500).print(u"E-mail: "_s + EmailEmpresa);
}

// One line of the column of parts on the right.
void printPartLine(Printer& printer, int y)
{
    printer.at(8000, y).print(u'[' + repeated(50, u'-'));
}

} // namespace

// Budget on the upper half, internal copy on the lower half, four tags to cut off at the foot.
void Form1Cli::ImprimeFichaEntrada()
try {
    readSheet(1);
    const QString numero = u"O.S: "_s + Text1(13).text();
    CommonDialog1.ShowPrinter(u"Ficha de entrada O.S "_s + Text1(13).text());

    Printer& printer = Printer::instance();
    printer.setFontBold(false);
    printer.setFontSize(8);
    printer.print(repeated(70, u'*') + u"ORÇAMENTO"_s + repeated(70, u'*') + u"qtz softwere"_s +
                  repeated(8, u'*'));
    printCompany(printer);
    printer.at(100, 2000).print(u"Data entrada: "_s + Text1(14).text());
    printer.setFontSize(24);
    printer.setFontBold(true);
    printer.at(8500, 1900).print(numero);
    printer.setFontSize(8);
    printer.setFontBold(false);
    printer.atY(2390).print(repeated(280, u'_'));
    printer.setFontSize(10);
    printer.at(100, 2600).print(u"Nome: "_s + Text1(0).text());
    printer.at(100, 2900).print(u"Marca: "_s + Text1(8).text());
    printer.at(100, 3200).print(u"Modelo: "_s + Text1(9).text());
    printer.at(100, 3500).print(u"Defeito: "_s + Text1(10).text());
    printer.at(100, 3800).print(u"Observação: "_s + Text1(11).text());
    printer.atY(4100).print(repeated(200, u'_'));
    for (const QString& line : LinhasFicha)
        printer.print(line);
    printer.atY(6400).print(repeated(200, u'_'));
    printer.at(5000, 7000).print(repeated(50, u'-'));
    printer.at(9000, 7000).print(repeated(40, u'-'));
    printer.at(5200, 7200).print(u"Assinatura"_s);
    printer.at(200, 7000).print(u"Valor :.........................................."_s);
    printer.at(9000, 7200).print(u"CPF"_s);

    printer.at(100, 8000).print(repeated(64, u'*') + u"USO INTERNO"_s + repeated(64, u'*'));
    printer.setFontSize(32);
    printer.at(100, 8500).print(numero);
    printer.setFontSize(24);
    printer.at(8000, 8500).print(numero);
    printer.setFontSize(11);
    printer.at(100, 9500).print(u"Data entrada: "_s + Text1(14).text());
    printer.at(9000, 9500).print(u"Peça aplicada"_s);
    printer.setFontSize(10);
    printer.at(100, 9800).print(u"Nome: "_s + Text1(0).text());
    printPartLine(printer, 10000);
    printer.at(100, 10050).print(u"Telefone: "_s + Text3(1).text());
    printer.at(100, 10300).print(u"Celular: "_s + Text3(2).text());
    printPartLine(printer, 10300);
    printer.at(100, 10550).print(u"Defeito: "_s + Text1(10).text());
    printPartLine(printer, 10600);
    printer.at(100, 10800).print(u"Observação: "_s + Text1(11).text());
    printer.at(100, 10850).print(repeated(65, u'_'));
    printPartLine(printer, 10900);
    printer.at(2500, 11100).print(u"SERVIÇO EXECUTADO"_s);
    printPartLine(printer, 11200);
    for (int y = 11500; y <= 12700; y += 300) {
        printer.at(100, y).print(repeated(100, u'-'));
        printPartLine(printer, y);
    }
    printer.at(100, 13000).print(u"Valor: "_s + repeated(20, u'_'));
    printPartLine(printer, 13000);
    printPartLine(printer, 13300);
    printPartLine(printer, 13600);
    printer.at(100, 13900).print(u"Ass: "_s + repeated(40, u'-'));
    printer.at(4100, 13900).print(u"CPF"_s + repeated(30, u'-'));
    printPartLine(printer, 13900);

    printer.setFontSize(8);
    printer.print(repeated(220, u'-'));
    printer.setFontSize(18);
    printer.setFontBold(true);
    printer.print({Tab{3}, numero, Tab{20}, numero, Tab{36}, numero, Tab{52}, numero});
    printer.setFontSize(8);
    printer.setFontBold(false);
    printer.print(repeated(220, u'-'));
    printer.EndDoc();
} catch (const RuntimeError&) {
    // Ends silently: a printer fault leaves the page unfinished.
}

// The warranty certificate.
bool Form1Cli::ImprimeFichaSaida()
try {
    readSheet(11);
    CommonDialog1.ShowPrinter(u"Certificado de garantia O.S "_s + Text1(13).text());

    Printer& printer = Printer::instance();
    printer.setFontBold(false);
    printer.setFontSize(8);
    printer.print(repeated(75, u'*') + u"CERTIFICADO DE GARANTIA"_s + repeated(80, u'*'));
    printCompany(printer);
    printer.at(100, 2000).print(u"Data saída: "_s + Text1(15).text());
    printer.setFontSize(15);
    printer.setFontBold(true);
    printer.at(9000, 1990).print(u"O.S: "_s + Text1(13).text());
    printer.setFontSize(8);
    printer.setFontBold(false);
    printer.atY(2300).print(repeated(120, u'_'));
    printer.setFontSize(10);
    printer.at(100, 2600).print(u"Nome: "_s + Text1(0).text());
    printer.at(100, 2850).print(u"Marca: "_s + Text1(8).text());
    printer.at(100, 3100).print(u"Modelo: "_s + Text1(9).text());
    printer.at(100, 3350).print(u"Defeito: "_s + Text1(10).text());
    printer.at(100, 3600).print(u"Observação: "_s + Text1(11).text());
    printer.at(100, 3850).print(u"Serviço Executado: "_s + Text1(12).text());
    printer.atY(4200).print(repeated(120, u'_'));
    for (const QString& line : LinhasFicha)
        printer.print(line);
    printer.atY(6600).print(repeated(120, u'_'));
    printer.setFontSize(15);
    printer.at(100, 6900).print(u"Valor: "_s + Text3(0).text());
    printer.setFontSize(8);
    printer.atY(7300).print(repeated(138, u'*') + u"qtz softwere"_s + repeated(15, u'*'));
    printer.EndDoc();
    return true;
} catch (const RuntimeError&) {
    return false; // Ends silently.
}
