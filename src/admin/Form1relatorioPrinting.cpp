#include "Form1relatorio.h"

#include "Dates.h"
#include "Funciones.h"
#include "MsgBox.h"
#include "Printer.h"
#include "RuntimeError.h"
#include "SheetHead.h"
#include "Strings.h"

using namespace Funciones;
using namespace Qt::Literals::StringLiterals;

void Form1relatorio::ImprimeMovimento()
{
    try {
        readSheetCompany();
        CommonDialog1.ShowPrinter(u"Movimento de caixa"_s);

        Printer& printer = Printer::instance();
        imprimeCabecalho();
        // The number of lines comes from the counter that all forms share and not from the grid:
        // what lies beyond it is cut, and a shorter list is followed by empty lines.
        QuantidadeItens = Contador;
        for (ContadorLista = 0; ContadorLista <= QuantidadeItens; ++ContadorLista) {
            const int row = MSFlexGrid1.Row() + ContadorLista;
            const auto cell = [&](int column) { return MSFlexGrid1.TextMatrix(row, column); };
            const int quantityShift = 5 - static_cast<int>(cell(2).size());
            const int valueShift = 8 - static_cast<int>(cell(3).size());
            printer.atX(100).print({Tab{5}, cell(0), Tab{18}, cell(1), Tab{80 + quantityShift},
                                    cell(2), Tab{95 + valueShift}, cell(3), Tab{110}, cell(4)});
            // Keeps the next row there.
            MSFlexGrid1.setRows(MSFlexGrid1.Rows() + 1);
        }
        MSFlexGrid1.setRows(MSFlexGrid1.Rows() - QuantidadeItens);

        const int valueShift = 5 - static_cast<int>(Text3.text().size());
        const int quantityShift = 5 - static_cast<int>(Text5.text().size());
        printer.print(repeated(180, u'_'));
        printer.print({Tab{65}, u"Total de itens: "_s, Tab{79 + quantityShift}, Text5.text(),
                       Tab{92}, u"R$:"_s, Tab{99 + valueShift}, Text3.text()});
        printer.print();
        printer.EndDoc();
    } catch (const RuntimeError&) {
        MsgBox(u"Erro ao imprimir"_s);
    }
}

void Form1relatorio::imprimeCabecalho()
{
    Printer& printer = Printer::instance();
    printListHead(printer, u"Data: "_s + dateText(Clock::today()));
    // The row above the current one: with the first row current, the headings.
    const int heading = MSFlexGrid1.Row() - 1;
    const auto cell = [&](int column) { return MSFlexGrid1.TextMatrix(heading, column); };
    printer.at(100, 1250).print(
        {Tab{5}, cell(0), Tab{18}, cell(1), Tab{80}, cell(2), Tab{97}, cell(3), Tab{110}, cell(4)});
    printer.atY(1450).print(repeated(200, u'-'));
}
