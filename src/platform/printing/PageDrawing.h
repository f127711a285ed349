#pragma once

#include "Printer.h"

#include <QFont>

class QPagedPaintDevice;
class QPainter;

// An A4 sheet and its printable area, in twips.
namespace sheet {
inline constexpr double TwipsPerPoint = 20;
inline constexpr int TwipsPerInch = 1440;
inline constexpr int Width = 11906;
inline constexpr int Height = 16838;
inline constexpr int Left = (Width - Printer::Width) / 2;
inline constexpr int Top = (Height - Printer::Height) / 2;
} // namespace sheet

// The font of all paper: Arial's measures, one pixel a twip, so that no screen has a say in it.
QFont pageFont(double points, bool bold);

// Width in twips of a text on paper.
double pageTextWidth(const QString& text, double points, bool bold);

// Draws a page on a whole sheet: the painter's unit is the twip, its origin the corner of the
// sheet.
void drawPage(QPainter& painter, const Page& page);

// Draws each page on a sheet of its own; false where the device refused one.
bool drawPages(QPagedPaintDevice& device, const std::vector<Page>& pages);
