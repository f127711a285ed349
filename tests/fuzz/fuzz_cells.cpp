#include "Require.h"

#include "FieldValues.h"
#include "OrderKey.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// What the engine takes for the beginning of a number.
constexpr std::string_view NumberHeads = "0123456789+-. \t\n\v\f\r";

void store(const QString& text, FieldKind kind)
{
    const OwnedCell stored = toCell(text, kind);
    const Value read = toValue(stored.view(), kind);
    require(toDisplayText(stored.view(), kind) == read.textOrEmpty(), "both ways read the same");
    require(toCell(read, kind).view() == stored.view(), "what was read is stored as it was");
    if (std::holds_alternative<QString>(read.data()))
        require(read.text() == text, "a stray text comes back as it stands");
    else
        require(kind != FieldKind::Text, "a text field gives text");
    if (kind != FieldKind::Text && kind != FieldKind::Date &&
        stored.view().type == Cell::Type::Text)
        require(stored.text.find_first_of(NumberHeads) != 0, "a stray text stays text in the file");
    require(orderKey(Cell::null(), kind) < orderKey(stored.view(), kind), "Null comes first");
}

// A row of cells comes out as it went in.
void pack(const QString& text, FieldKind kind)
{
    const OwnedCell one = toCell(text, kind);
    const std::string longText(300, 'x');
    PackedRow row;
    row.begin(7, 6);
    for (const Cell& cell : {one.view(), Cell::null(), Cell::ofText(longText), one.view(),
                             Cell::ofInteger(1), Cell::ofReal(-0.5)})
        row.add(cell);
    const RowView view = row.view();
    require(view.id() == 7 && view.size() == row.bytes().size(), "a row knows its size");
    require(view.cell(0) == one.view() && view.cell(3) == one.view() && view.cell(1).isNull() &&
                view.cell(2).text == longText && view.cell(4).integer == 1 &&
                view.cell(5).real == -0.5,
            "cells keep their places");
    PackedRow copy;
    copy.assign(view);
    require(copy.view() == view, "a copy is equal");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const FuzzInput input(data, size);
    for (const FieldKind kind : {FieldKind::Text, FieldKind::Money, FieldKind::Number,
                                 FieldKind::YesNo, FieldKind::Date}) {
        store(input.whole, kind);
        pack(input.whole, kind);
    }
    return 0;
}
