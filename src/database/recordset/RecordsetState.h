#pragma once

#include "Connection.h"
#include "Database.h"
#include "EventTransactions.h"
#include "FieldValues.h"
#include "Recordset.h"
#include "RecordsetRows.h"
#include "SelectStatement.h"

#include <map>

// Where a recordset stands, and on what: brought back where a piece is undone.
struct RecordsetStanding
{
    enum class Pending
    {
        None,
        NewRow,
        Edit
    };

    RecordsetRows rows;
    Database::Stamp shown; // of the image under the rows
    // Something that is not durable yet is among the rows.
    bool uncertain = false;
    bool mustReload = false;

    int place = 0; // means something while neither flag is set
    bool bof = true;
    bool eof = true;
    // Another station deleted the current row; the place is that of the one behind it.
    bool isGone = false;

    // The stored row where it was taken anew; null where it was gone by then.
    bool isRetaken = false;
    std::shared_ptr<const PackedRow> retaken;

    Pending pending = Pending::None;
    std::map<int, OwnedCell> written;
};

// What an open recordset knows. Position follows the published pages "BOF, EOF Properties" and
// "MoveFirst, MoveLast, MoveNext, and MovePrevious Methods" of the desktop database reference.
struct Recordset::State final : RecordsetStanding, TransactionWitness, EditHolder
{
    State(std::shared_ptr<Connection> usedConnection, SelectStatement statement,
          CursorType cursorType, LockType lockType);
    ~State();

    void load();
    // Reads the rows anew and goes back to the row that was current. Where that is gone, the next
    // move goes on from its place.
    void reload();
    // What could not be done when a transaction was undone: what it wrote is shown no more.
    void recover();
    // What others wrote, for a dynamic recordset, before each of its moves.
    void refreshDynamic();

    const std::vector<FieldDefinition>& fields() const { return definition->fields; }
    FieldKind kind(int field) const { return fields()[static_cast<std::size_t>(field)].kind; }

    // Error 3021 where no row is current, or a deleted one.
    void requireRow() const;
    void requireNoNewRow() const;
    void requireUpdatable() const;
    // Before a move, Find, AddNew: a new row stands in the way, an edit is written.
    void leaveRow();

    // The place becomes the current row.
    void stand(int newPlace);
    void goTo(std::optional<int> newPlace, bool atBof, bool atEof);
    // Where the current row is gone: to the one behind it, else to the one before it.
    void stepToNeighbour();
    bool standsOnRow() const { return !bof && !eof && !isGone && !rows.isDeleted(place); }

    // The row as the file must have it for Update and Delete; null where it is gone.
    RowView version() const;
    // Reads the stored row as that.
    void takeVersion();

    Cell cell(int field) const;
    void write(int field, const Value& value);
    // The row as it will be, the pending values over the given one.
    PackedRow withPending(RowView row) const;
    void update();
    // Error 3021 where there is nothing to update.
    void updateCurrent();
    bool wouldOverwrite();
    // The current row was refused: what is stored comes into view when it is left.
    void noteOvertaken();
    // Brings it into view, or takes the row out where it is gone; whether that was the current one.
    bool showStored();
    void remove();
    void insertPending();
    void writeEdit();
    void requireNoRefusedNull(RowView row) const;
    void endPending();

    void transactionEnded(bool committed) override;
    void pieceBegan() override;
    void pieceEnded() override;
    void pieceUndone() override;
    void dropEdit() override;

    std::shared_ptr<Connection> connection;
    std::shared_ptr<Database> database;
    SelectStatement select;
    CursorType cursor;
    LockType lock;
    int table = 0;
    const TableDefinition* definition = nullptr; // as the file has it, for as long as it is open
    std::optional<int> orderField;
    std::optional<int> likeField;
    std::optional<LikePattern> pattern;

    // Of the row that was refused for what another station stored in it; 0 where none was. Outlives
    // the piece in which that happened.
    qint64 overtaken = 0;
    bool mustShowStored = false; // a deletion was refused

    std::vector<RecordsetStanding> kept;
};
