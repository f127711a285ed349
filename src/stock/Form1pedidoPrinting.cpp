#include "Form1pedido.h"

#include "Funciones.h"
#include "Printer.h"
#include "RuntimeError.h"
#include "Strings.h"

using namespace Funciones;
using namespace Qt::Literals::StringLiterals;

// Quantity and description of all orders, without the shop's head. From a clicked row on, with the
// row above it as the heading; one pass more than there are orders prints an empty line, and the
// grid keeps the rows that it grew by until it is loaded again: meant.
void Form1pedido::ImprimePedido()
try {
    CommonDialog1.ShowPrinter(u"Pedido de peças"_s);

    Printer& printer = Printer::instance();
    printer.setFontSize(12);
    printer.atY(1100).print(repeated(200, u'_'));
    const int first = MSFlexGrid1.Row();
    const auto cell = [this](int row, int column) { return MSFlexGrid1.TextMatrix(row, column); };
    printer.at(100, 1350).print({Tab{5}, cell(first - 1, 1), Tab{18}, cell(first - 1, 2)});
    printer.atY(1400).print(repeated(200, u'_'));
    for (int i = 0; i <= Tabela1->RecordCount(); ++i) {
        const QString quantity = cell(first + i, 1);
        const int shift = 5 - static_cast<int>(quantity.size());
        printer.atX(100).print({Tab{5 + shift}, quantity, Tab{18}, cell(first + i, 2)});
        MSFlexGrid1.setRows(MSFlexGrid1.Rows() + 1);
    }
    printer.EndDoc();
} catch (const RuntimeError&) {
    // Ends silently: a printer fault leaves the page unfinished.
}
