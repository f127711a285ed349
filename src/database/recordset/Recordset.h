#pragma once

#include "Connection.h"
#include "Value.h"

#include <QString>

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

enum class CursorType
{
    Dynamic = 2,
    Static = 3
};
enum class LockType
{
    ReadOnly = 1,
    Optimistic = 3
};

class Recordset;
class RowsView;

// One field of the current row. Reading and writing at BOF, at EOF or on a deleted row is error
// 3021; writing to a read-only recordset 3251.
class Field
{
public:
    Value value() const;
    operator Value() const { return value(); }
    bool isNull() const;
    // Error 94 on Null.
    QString text() const { return value().text(); }
    QString textOrEmpty() const;
    // The text of a text field as it is stored, in UTF-8, for as long as the row is current and
    // unchanged; none for Null and for fields of other kinds.
    std::optional<std::string_view> storedText() const;
    // Begins an edit of the current row, or writes to the pending new row.
    void operator=(const Value& value);

private:
    friend class Recordset;
    Field(Recordset& recordset, int position) : recordset_(recordset), position_(position) {}
    Recordset& recordset_;
    int position_;
};

// The classic recordset over one table. What each operation does at the edges follows the published
// "desktop database reference"; Recordset.cpp, RecordsetMoves.cpp and RecordsetChanges.cpp name the
// pages. Any call on a closed one is error 3704, and any that has to look into the file, after an
// undone transaction for one, may be -2147467259.
class Recordset
{
public:
    Recordset();
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    // The three shapes of SELECT: a whole table; with "order by" and one field; with WHERE, one
    // field, Like and a pattern in apostrophes. Error -2147217900 for anything else, -2147217865
    // for an unknown table, -2147217904 for an unknown field, -2147467259 for a "[" that is not
    // closed and for a file that cannot be read, 3705 when open, 3709 without a connection.
    void Open(const QString& sql, const std::shared_ptr<Connection>& connection, CursorType cursor,
              LockType lock, int options = -1);
    // Discards a pending row or edit; never looks into the file.
    void Close();
    bool isOpen() const;

    bool eof() const;
    bool bof() const;
    // Rows, exact; a pending new row does not count.
    int RecordCount() const;

    // By position from 0, or by name without regard to case. Error 3265 when there is none.
    Field Fields(int position);
    Field Fields(const QString& name);
    int fieldCount() const;

    // Writes a pending edit first, with its errors. Error 3219 while a new row is pending, 3251 on
    // a read-only recordset.
    void AddNew();
    // Writes the pending new row, or those fields of an edited row whose new value differs from
    // what this recordset showed. Error -2147217864 where the stored row is not as this recordset
    // shows it any more, -2147217887 for a Null that the field refuses (the row stays pending),
    // 3021 at BOF or EOF.
    void Update();
    // Update as a record form does it, within its piece: takes the row's stored version anew. What
    // only another station changed since this recordset showed it stays; where both changed a field
    // to different values, or the row is gone, error -2147217864, nothing is written, and the row
    // shows what is stored as soon as it is left or its edit is cancelled. A Null that was shown
    // and is written as the empty text, zero or no counts as not changed here.
    void UpdateMerged();
    // Whether UpdateMerged of the pending edit would be refused; then the row shows what is stored
    // once the edit is cancelled.
    bool wouldOverwrite();
    void CancelUpdate();
    // Error 3021 without a current row, 3219 while a new row is pending, 3251 on a read-only
    // recordset, -2147217864 as Update.
    void Delete();

    // Error 3021 as the published table of moves tells; 3219 while a new row is pending.
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();

    // "field LIKE '*text*'" forward from the current row, which is looked at first; only the outer
    // asterisks are wildcards, case is ignored. No match leaves the recordset at EOF. Error 3001 on
    // an apostrophe in the text or another shape, 3265 for an unknown field, 3021 without a current
    // row, 3219 while a new row is pending.
    void Find(const QString& criterion, int skip = 0);

    // Place of the current row, 1 for the first in this recordset's own order; 0 where none is
    // current. Setting it moves there as the other moves do; error 3001 outside 1..RecordCount.
    int AbsolutePosition() const;
    void setAbsolutePosition(int position);

    // The present rows, for a grid to read while it paints; cheap, and independent of what becomes
    // of the recordset.
    std::shared_ptr<const RowsView> rowsNow() const;

    // Whether Update, UpdateMerged, wouldOverwrite or Delete found the current row behind what
    // another station stored in it, and what is stored did not come into view yet: it does when the
    // row is left or its edit is cancelled. A refused Delete brings it into view at once.
    bool isOvertaken() const;
    // Names the current row for as long as the recordset is open, so that a form can tell whether
    // the row that it shows is the current one; 0 where there is none, or a new one is pending.
    qint64 rowKey() const;

    // Takes the stored version of the current row anew, keeping what this recordset shows: the next
    // Update then writes over what others stored since: the stock of a write-off, a twin's name.
    // Error -2147217864 where another deleted it.
    void retakeVersion();

    // The current row as it lies in the file now, whatever this recordset shows of it. Error 3021
    // without a current row, 3219 while a new row is pending, -2147217864 where another deleted it.
    std::vector<Value> storedValues() const;

private:
    friend class Field;
    friend class Connection;
    struct State;
    // Error 3704 when closed.
    State& open() const;
    void forgetConnection();
    // The connection was closed under it.
    void discard();
    std::unique_ptr<State> state_;
};
