#include "BulkInsert.h"

#include "Database.h"
#include "FieldValues.h"

namespace {

PackedRow packed(const std::vector<Value>& values, const std::vector<FieldDefinition>& fields)
{
    PackedRow row;
    row.begin(0, static_cast<int>(fields.size()));
    for (std::size_t i = 0; i < values.size(); ++i)
        row.add(toCell(values[i], fields[i].kind).view());
    return row;
}

} // namespace

void insertRows(const QString& path, const std::vector<TableRows>& tables)
{
    const std::shared_ptr<Database> database = Database::open(path);
    Storage& storage = database->storage();
    storage.beginWrite();
    try {
        for (const TableRows& group : tables) {
            const std::optional<int> table = database->table(group.table);
            if (!table)
                throw RuntimeError(RuntimeError::NoSuchTable);
            const auto& fields = database->tables()[static_cast<std::size_t>(*table)].fields;
            for (const std::vector<Value>& values : group.rows)
                storage.insert(*table, packed(values, fields).view());
        }
        storage.commit();
    } catch (const RuntimeError&) {
        storage.rollback();
        throw;
    }
    database->forgetImages();
}
