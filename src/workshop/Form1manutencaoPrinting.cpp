#include "Form1manutencao.h"

#include "Funciones.h"
#include "Printer.h"
#include "RuntimeError.h"
#include "SheetHead.h"
#include "Strings.h"

using namespace Funciones;
using namespace Qt::Literals::StringLiterals;

namespace {

// Where the foot of a half stands on the sheet.
struct Half
{
    QString name;
    int closing;  // the rule below the text
    int lines;    // value, and the lines to sign on
    int captions; // what is to be written on them
};

const Half ClientHalf{u" CLIENTE "_s, 6300, 7000, 7200};
const Half TechnicianHalf{u" TECNICO "_s, 14000, 14800, 15100};

void printHalf(const Form1manutencao& form, const Half& half)
{
    Printer& printer = Printer::instance();
    const auto text = [&form](int box) { return form.Text1(box).text(); };
    const QString rule = repeated(200, u'-');

    printer.print(repeated(80, u'*') + u"PEDIDO DE MANUTENÇÂO/SERVIÇO"_s + repeated(20, u'*') +
                  half.name + repeated(60, u'*'));
    printer.setFontSize(10);
    printer.atX(100).print(TituloEmpresa);
    printer.atX(100).print(u"Endereço: "_s + EnderecoEmpresa + u"   Tel/Fax: "_s + TelefoneEmpresa);
    printer.atX(100).print(u"Site: "_s + SiteEmpresa + u"   E-mail: "_s + EmailEmpresa);
    printer.print(rule);
    printer.atX(100).print(u"Data Solicitação: "_s + text(19) +
                           u"                            O.S: "_s + text(18) +
                           u"                           Data de conclusão : "_s + text(20));
    printer.print(rule);
    printer.atX(100).print(u"Nome : "_s + text(0));
    printer.atX(100).print(u"Endereço: "_s + text(1) + u" Nº "_s + text(4));
    printer.atX(100).print(u"Bairro: "_s + text(5) + u" / "_s + text(6));
    printer.atX(100).print(u"Cidade: "_s + text(2) + u" / "_s + text(3));
    printer.print(rule);
    printer.atX(100).print(u"Serviço Solicitado: "_s);
    printer.print(text(8));
    printer.print(text(9));
    printer.print(text(10));
    printer.print(text(11));
    printer.print(rule);
    printer.print(u"Serviço Executado: "_s);
    printer.print(text(12));
    printer.print(text(13));
    printer.print(text(14));
    printer.print(text(15));
    printer.print(rule);
    printer.print(u"Observação: "_s + text(17));
    printer.atY(half.closing).print(repeated(200, u'_'));
    printer.at(5000, half.lines).print(repeated(50, u'-'));
    printer.at(9000, half.lines).print(repeated(40, u'-'));
    printer.at(5200, half.captions).print(u"Assinatura"_s);
    printer.at(200, half.lines)
        .print(u"Valor :.........................................."_s + text(16));
    printer.at(9000, half.captions).print(u"CPF"_s);
}

} // namespace

// The order twice on one page: the client's copy above, the technician's below.
void Form1manutencao::ImprimePedidoManutencao()
try {
    readSheetCompany();
    CommonDialog1.ShowPrinter(u"Pedido de manutenção O.S "_s + Text1(18).text());

    Printer& printer = Printer::instance();
    printer.setFontSize(8);
    printHalf(*this, ClientHalf);
    printer.atY(7500).print(repeated(200, u'-'));
    printer.setFontSize(8);
    printer.atY(7800);
    printHalf(*this, TechnicianHalf);
    printer.EndDoc();
} catch (const RuntimeError&) {
    // Ends silently: a printer fault leaves the page unfinished.
}
