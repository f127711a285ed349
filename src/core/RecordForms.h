#pragma once

#include "Controls.h"
#include "ObjectVariable.h"
#include "Recordset.h"

#include <QString>

#include <initializer_list>
#include <vector>

class RuntimeError;

// What the record forms and the search dialogs do alike, as free functions. What a form does in its
// own way is written in that form.

// The button array of a record form; 6 and 7 print where a form prints at all.
namespace button {
enum Index
{
    Incluir,
    Salvar,
    Editar,
    Excluir,
    Procurar,
    Copiar,
    Fechar = 8,
    Cancela,
    Anterior,
    Posterior,
    Primeira,
    Ultima
};
}

// "title      Usuario: Ana  está usando", from the main window's status bar.
QString captionInUse(const QString& titleWithBlanks);
// The two boxes of a record form's load that failed.
void tellFailedLoad(const RuntimeError& error, const QString& title = {});
// Critical box with the title, "Erro nº ", number, line break and description; nothing where the
// user was told of this error already.
void tellError(const RuntimeError& error, const QString& title);
// The form's own words for an error, in a plain box; the log tells which error it was.
void tellFault(const RuntimeError& error, const QString& text);
// Opens the table static and optimistic.
void openStatic(ObjectVariable<Recordset>& table, const ObjectVariable<Connection>& connection,
                const QString& sql);

// Members first to last, or those listed. Error 340 for one that the array lacks.
void setEnabled(ControlArray<CommandButton>& buttons, int first, int last, bool enabled);
void setEnabled(ControlArray<CommandButton>& buttons, std::initializer_list<int> indexes,
                bool enabled);
// All that an empty table has a use for.
void leaveNewAndClose(ControlArray<CommandButton>& buttons);
// Whether the boxes are open for a row that is not stored yet; an old one can be deleted meanwhile.
bool isNewRow(ControlArray<CommandButton>& buttons);
void setLocked(ControlArray<TextBox>& boxes, int first, int last, bool locked);
void clear(ControlArray<TextBox>& boxes, int first, int last);

// The navigation bar of a record form, Anterior to Ultima: moves, and sets the two step buttons;
// the form then shows the row.
void navigate(int index, ObjectVariable<Recordset>& table, ControlArray<CommandButton>& buttons);

// Static, optimistic; to take the place of a table that is open: where this fails, that one goes on
// serving.
ObjectVariable<Recordset> openedAnew(const QString& sql,
                                     const ObjectVariable<Connection>& connection);

// From the row that was just deleted to its neighbour, as the navigation bar does. Error 3021 where
// no row is left.
void leaveDeletedRow(ObjectVariable<Recordset>& table, ControlArray<CommandButton>& buttons);

// What "Abrir" of a search dialog does to its recordset; serves nobody, and fails silently.
void endSearch(ObjectVariable<Recordset>& table, const QString& field, const QString& text);

// The first row whose field holds the text becomes current; where none does, or the text is one
// that nothing can hold, the row that was current stays.
void lookUpOrStay(ObjectVariable<Recordset>& table, const QString& field, const QString& text);

// Closes what is open of a pair, the recordset first, and lets both go: a form whose load stopped
// half way must still be left without an error. Elsewhere closing stays strict.
void closeIfOpen(ObjectVariable<Recordset>& table, ObjectVariable<Connection>& connection);
// A connection alone, which stays.
void closeIfOpen(ObjectVariable<Connection>& connection);

// One above the number in the last seven characters, as seven digits.
QString nextCode(const QString& code);

// Key 13 sends "{TAB}"; the answer tells whether it did.
bool enterAsTab(int KeyAscii);
// Passes the key through a filter of Funciones.
void filterKey(int& KeyAscii, QString (*filter)(int));

bool sameText(const TextBox& left, const TextBox& right);

// The document check of the record forms on leaving the document box, with its messages; a document
// that fails empties the box and takes the focus back. Boxes without icon and title. Nothing
// happens on a locked or an empty box. wrongCGC: how the form tells of wrong check digits in a
// company's document.
void checkDocument(TextBox& box,
                   const QString& wrongCGC = QStringLiteral("CGC com DV incorreto !!! "));

// The support address, for panel 2 of the main window's status bar when a form closes; most forms
// put "email:" before it.
QString supportEmail();
QString supportEmailText();
// "LIKE" criterion of Find: field LIKE '*text*'.
QString likeCriterion(const QString& field, const QString& text);
// "SELECT * FROM table WHERE field" followed by " Like '%text%'"; the text goes in as it was typed.
QString likeQuery(const QString& selectWhere, const QString& text);

// Whether the grid's current row is one of data: not the heading, and its key cell is not empty.
bool onDataRow(const FlexGrid& grid, int keyColumn = 0);
