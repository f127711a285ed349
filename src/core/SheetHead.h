#pragma once

#include <QString>

class Printer;

// What stands at the head of the shop's printed sheets.

// Reads name, address, e-mail, telephone and site of the shop from Banco.ini into the shared
// variables of Funciones.
void readSheetCompany();

// Banner, company and date line of the sale receipt and of the cash list, down to the rule above
// the headings of their columns; leaves the font at size 8.
void printListHead(Printer& printer, const QString& dateLine);
