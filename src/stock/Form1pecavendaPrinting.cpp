#include "Form1pecavenda.h"

#include "Dates.h"
#include "Funciones.h"
#include "MsgBox.h"
#include "Printer.h"
#include "RecordForms.h"
#include "RuntimeError.h"
#include "SheetHead.h"
#include "Strings.h"

using namespace Qt::Literals::StringLiterals;
using namespace Funciones;

namespace {

int lengthOf(const QString& text)
{
    return static_cast<int>(text.size());
}

} // namespace

void Form1pecavenda::ImprimeVenda()
try {
    readSheetCompany();
    CommonDialog1.ShowPrinter(u"Venda de peças"_s);
    if (litRow_ != 0 && MSFlexGrid2.Row() == litRow_)
        MSFlexGrid2.setRow(1);

    Printer& printer = Printer::instance();
    printListHead(printer, u"Data venda: "_s + dateTimeText(Clock::now()));
    // From a clicked line on, with the line above it as the heading: meant.
    const int heading = MSFlexGrid2.Row() - 1;
    const auto title = [&](int column) { return MSFlexGrid2.TextMatrix(heading, column); };
    printer.at(100, 1250).print({Tab{5}, title(0), Tab{18}, title(1), Tab{33}, title(2), Tab{45},
                                 title(3), Tab{110}, title(4), Tab{120}, title(5)});
    printer.atY(1450).print(repeated(200, u'-'));
    printLines();
    printer.atY(6400).print(repeated(180, u'_'));
    printer.atY(6700).print({Tab{5}, u"Total de itens: "_s, Tab{32 + 5 - lengthOf(Text5.text())},
                             Text5.text(), Tab{90}, u"Valor Total: "_s,
                             Tab{120 + 5 - lengthOf(Text3.text())}, Text3.text()});
    printer.EndDoc();

    if (MsgBox(u"A impressão saiu correta ?"_s, BoxButtons::YesNo, BoxIcon::Question) !=
        Answer::Yes) {
        Command2(1).SetFocus(); // to print again, wherever Enter brought it
        return;
    }
    setCaption(
        captionInUse(u"Venda de peças e acessórios dando baixa no estoque,aguarde...     "_s));
    BaixaEstoque();
    finishWriteOff();
} catch (const RuntimeError&) {
    // Ends silently. What went wrong before the question has touched neither stock nor list.
}

// One pass more than there are lines: the last prints an empty row, and the grid, which grows with
// each pass so that its row exists, keeps one row more until it is loaded again.
void Form1pecavenda::printLines()
{
    Printer& printer = Printer::instance();
    QuantidadeItens = Tabela2->RecordCount();
    for (int line = 0; line <= QuantidadeItens; ++line) {
        const int row = MSFlexGrid2.Row() + line;
        const auto cell = [&](int column) { return MSFlexGrid2.TextMatrix(row, column); };
        // Quantity, unit price and total end at the same column in each line.
        const int quantityShift = 5 - lengthOf(cell(2));
        const int unitShift = 8 - lengthOf(cell(4));
        const int totalShift = 8 - lengthOf(cell(5));
        printer.atX(100).print({Tab{5}, cell(0), Tab{18}, cell(1), Tab{33 + quantityShift}, cell(2),
                                Tab{45}, cell(3), Tab{106 + unitShift}, cell(4),
                                Tab{117 + totalShift}, cell(5)});
        MSFlexGrid2.setRows(MSFlexGrid2.Rows() + 1);
    }
    MSFlexGrid2.setRows(MSFlexGrid2.Rows() - QuantidadeItens);
}
