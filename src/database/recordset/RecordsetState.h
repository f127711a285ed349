#pragma once

#include "Connection.h"
#include "Database.h"
#include "EventTransactions.h"
#include "FieldValues.h"
#include "Recordset.h"
#include "RecordsetRows.h"
#include "SelectStatement.h"

#include <map>

// What an open recordset knows. Position follows the published pages "BOF, EOF Properties" and
// "MoveFirst, MoveLast, MoveNext, and MovePrevious Methods" of the desktop database reference.
struct Recordset::State final : TransactionWitness, EditHolder
{
    enum class Pending
    {
        None,
        NewRow,
        Edit
    };

    State(std::shared_ptr<Connection> usedConnection, SelectStatement statement,
          CursorType cursorType, LockType lockType);
    ~State();

    void load();
    // Reads the rows anew and goes back to the row that was current; to the end of the set where
    // that is gone.
    void reload();
    // After a transaction was undone: what it wrote is shown no more, and is no row's version.
    void recover();
    // What others wrote, for a dynamic recordset, before each of its moves.
    void refreshDynamic();

    const std::vector<FieldDefinition>& fields() const { return definition->fields; }
    FieldKind kind(int field) const { return fields()[static_cast<std::size_t>(field)].kind; }

    bool hasCurrentRow() const { return pending == Pending::NewRow || (!bof && !eof); }
    // Error 3021 where no row is current, or a deleted one.
    void requireRow() const;
    void requireNoNewRow() const;
    void requireUpdatable() const;
    // Before a move, Find, AddNew: a new row stands in the way, an edit is written.
    void leaveRow();

    // The place becomes the current row.
    void stand(int newPlace);
    void goTo(std::optional<int> newPlace, bool atBof, bool atEof);
    void takeVersion(Database::Look look);

    Cell cell(int field) const;
    void write(int field, const Value& value);
    // The row as it will be, the pending values over the given one.
    PackedRow withPending(RowView row) const;
    void update();
    bool wouldOverwrite();
    void showStored();
    void remove();
    void insertPending();
    void writeEdit();
    void requireNoRefusedNull(RowView row) const;
    void endPending();

    void transactionEnded(bool committed) override;
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

    RecordsetRows rows;
    Database::Stamp shown; // of the image under the rows
    bool mustReload = false;
    bool mustRetake = false;
    // Something that is not durable yet is among the rows.
    bool uncertain = false;

    int place = 0; // means something while neither flag is set
    bool bof = true;
    bool eof = true;

    // The stored row as it stood when it became current.
    PackedRow version;
    bool versionExists = false;
    // The row on show is behind what another station stored in it.
    bool isOvertaken = false;

    Pending pending = Pending::None;
    std::map<int, OwnedCell> written;
};
