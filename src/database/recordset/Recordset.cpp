#include "Recordset.h"

#include "Faults.h"
#include "RecordsetState.h"

// Errors follow the published page "ErrorValueEnum" of the desktop database reference, opening and
// closing its pages "Open Method (ADO Recordset)" and "Close Method".

Recordset::Recordset() = default;

Recordset::~Recordset()
{
    forgetConnection();
}

void Recordset::Open(const QString& sql, const std::shared_ptr<Connection>& connection,
                     CursorType cursor, LockType lock, int)
{
    faults::point(faults::Call::Recordset);
    if (isOpen())
        throw RuntimeError(RuntimeError::ObjectOpen);
    if (!connection || !connection->isOpen())
        throw RuntimeError(RuntimeError::NoConnection);
    state_ = std::make_unique<State>(connection, parseSelect(sql), cursor, lock);
    connection->recordsets_.push_back(this);
}

void Recordset::Close()
{
    faults::point(faults::Call::Recordset);
    if (!state_) // asked without open(), which may have to read the file
        throw RuntimeError(RuntimeError::ObjectClosed);
    forgetConnection();
    state_.reset();
}

void Recordset::forgetConnection()
{
    if (state_)
        std::erase(state_->connection->recordsets_, this);
}

void Recordset::discard()
{
    state_.reset();
}

bool Recordset::isOpen() const
{
    return state_ != nullptr;
}

Recordset::State& Recordset::open() const
{
    if (!state_)
        throw RuntimeError(RuntimeError::ObjectClosed);
    if (state_->mustReload || state_->mustShowStored)
        state_->recover();
    return *state_;
}

bool Recordset::eof() const
{
    const State& state = open();
    return state.eof && state.pending != State::Pending::NewRow;
}

bool Recordset::bof() const
{
    const State& state = open();
    return state.bof && state.pending != State::Pending::NewRow;
}

int Recordset::RecordCount() const
{
    return open().rows.count();
}

int Recordset::fieldCount() const
{
    return static_cast<int>(open().fields().size());
}

Field Recordset::Fields(int position)
{
    if (position < 0 || position >= fieldCount())
        throw RuntimeError(RuntimeError::NoSuchItem);
    return {*this, position};
}

Field Recordset::Fields(const QString& name)
{
    const State& state = open();
    const std::optional<int> position = state.database->field(state.table, name);
    if (!position)
        throw RuntimeError(RuntimeError::NoSuchItem);
    return {*this, *position};
}

Value Field::value() const
{
    const Recordset::State& state = recordset_.open();
    state.requireRow();
    return toValue(state.cell(position_), state.kind(position_));
}

bool Field::isNull() const
{
    const Recordset::State& state = recordset_.open();
    state.requireRow();
    return state.cell(position_).isNull();
}

QString Field::textOrEmpty() const
{
    const Recordset::State& state = recordset_.open();
    state.requireRow();
    return toDisplayText(state.cell(position_), state.kind(position_));
}

std::optional<std::string_view> Field::storedText() const
{
    const Recordset::State& state = recordset_.open();
    state.requireRow();
    const Cell cell = state.cell(position_);
    if (cell.type != Cell::Type::Text || state.kind(position_) != FieldKind::Text)
        return std::nullopt;
    return cell.text;
}

void Field::operator=(const Value& value)
{
    recordset_.open().write(position_, value);
}
