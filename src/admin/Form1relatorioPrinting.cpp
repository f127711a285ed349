#include "Form1relatorio.h"

#include "Dates.h"
#include "Funciones.h"
#include "Printer.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "SheetHead.h"
#include "Strings.h"

#include <array>

using namespace Funciones;
using namespace Qt::Literals::StringLiterals;

namespace {

using Cells = std::array<QString, 5>;

Cells cellsOf(const FlexGrid& grid, int row)
{
    Cells cells;
    for (int column = 0; column < static_cast<int>(cells.size()); ++column)
        cells[static_cast<std::size_t>(column)] = grid.TextMatrix(row, column);
    return cells;
}

void printHead(Printer& printer, const Cells& headings)
{
    printListHead(printer, u"Data: "_s + dateText(Clock::today()));
    printer.at(100, 1250).print({Tab{5}, headings[0], Tab{18}, headings[1], Tab{80}, headings[2],
                                 Tab{97}, headings[3], Tab{110}, headings[4]});
    printer.atY(1450).print(repeated(200, u'-'));
}

} // namespace

void Form1relatorio::ImprimeMovimento()
try {
    readSheetCompany();
    CommonDialog1.ShowPrinter(u"Movimento de caixa"_s);

    // The row above the current one: with the first row current, the headings. An empty list has no
    // such row; looked at before anything is drawn, so that no half sheet waits for the next one.
    const Cells headings = cellsOf(MSFlexGrid1, MSFlexGrid1.Row() - 1);
    Printer& printer = Printer::instance();
    printHead(printer, headings);
    // The number of lines comes from the counter that all forms share and not from the grid: what
    // lies beyond it is cut, and a shorter list is followed by empty lines.
    QuantidadeItens = Contador;
    for (ContadorLista = 0; ContadorLista <= QuantidadeItens; ++ContadorLista) {
        const Cells cells = cellsOf(MSFlexGrid1, MSFlexGrid1.Row() + ContadorLista);
        const int quantityShift = 5 - static_cast<int>(cells[2].size());
        const int valueShift = 8 - static_cast<int>(cells[3].size());
        printer.atX(100).print({Tab{5}, cells[0], Tab{18}, cells[1], Tab{80 + quantityShift},
                                cells[2], Tab{95 + valueShift}, cells[3], Tab{110}, cells[4]});
        // Keeps the next row there.
        MSFlexGrid1.setRows(MSFlexGrid1.Rows() + 1);
    }
    MSFlexGrid1.setRows(MSFlexGrid1.Rows() - QuantidadeItens);

    const int valueShift = 5 - static_cast<int>(Text3.text().size());
    const int quantityShift = 5 - static_cast<int>(Text5.text().size());
    printer.print(repeated(180, u'_'));
    printer.print({Tab{65}, u"Total de itens: "_s, Tab{79 + quantityShift}, Text5.text(), Tab{92},
                   u"R$:"_s, Tab{99 + valueShift}, Text3.text()});
    printer.print();
    printer.EndDoc();
} catch (const RuntimeError& error) {
    tellFault(error, u"Erro ao imprimir"_s);
}
