#include "SheetHead.h"

#include "Funciones.h"
#include "Printer.h"
#include "Strings.h"

using namespace Funciones;
using namespace Qt::Literals::StringLiterals;

void readSheetCompany()
{
    const auto read = [](const QString& key) { return LeIni(u"Configurar"_s, key, CaminhoIni()); };
    TituloEmpresa = read(u"Titulo"_s);
    EnderecoEmpresa = read(u"Endereco"_s);
    EmailEmpresa = read(u"Email"_s);
    TelefoneEmpresa = read(u"Telefone"_s);
    SiteEmpresa = read(u"Site"_s);
}

void printListHead(Printer& printer, const QString& dateLine)
{
    printer.print(repeated(120, u'*') + u"qtz softwere"_s + repeated(8, u'*'));
    printer.setFontSize(8);
    printer.atX(100).print(TituloEmpresa);
    printer.atX(100).print(u"Endereço: "_s + EnderecoEmpresa);
    printer.at(7000, 400).print(u"Tel/Fax: "_s + TelefoneEmpresa);
    printer.print();
    printer.at(7000, 600).print(u"E-mail: "_s + EmailEmpresa);
    printer.atX(7000).print(u"Site: "_s + SiteEmpresa);
    printer.at(100, 800).print(dateLine);
    printer.atY(1000).print(repeated(200, u'-'));
}
