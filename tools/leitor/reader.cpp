#include "leitor/reader.h"

#include "leitor/values.h"

#include <mdbtools.h>
#include <memory>
#include <vector>

namespace {

using mdbprotocol::Failure;
using mdbprotocol::Linked;
using mdbprotocol::Row;
using mdbprotocol::Rows;
using mdbprotocol::Table;

// Of the entry that tells where a row begins. A row that is gone has the flag; so has a row that
// has moved: it stands elsewhere among the table's pages and is found there.
constexpr int GoneOrMoved = 0x4000;
constexpr int OffsetMask = 0x1FFF;

struct Closer {
    void operator()(MdbHandle* file) const { mdb_close(file); }
    void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};
using File = std::unique_ptr<MdbHandle, Closer>;
using TableDefinition = std::unique_ptr<MdbTableDef, Closer>;

struct Fault {
    std::string words;
};

std::string NameOf(const MdbCatalogEntry* entry) {
    return entry->object_name;
}

const MdbColumn* ColumnOf(const MdbTableDef* table, unsigned index) {
    return static_cast<const MdbColumn*>(g_ptr_array_index(table->columns, index));
}

TableDefinition OpenTable(MdbCatalogEntry* entry) {
    TableDefinition table(mdb_read_table(entry));
    if (!table || !mdb_read_columns(table.get()) || table->columns->len != table->num_cols) {
        throw Fault{"a definição da tabela " + NameOf(entry) + " está danificada"};
    }
    return table;
}

File Open(const char* path) {
    // The library's own switches are for its own tools.
    for (const char* name : {"MDBOPTS", "MDBPATH", "MDB_JET3_CHARSET", "MDB_ICONV"}) {
        g_unsetenv(name);
    }
    g_setenv("MDBICONV", "UTF-8", TRUE);
    File file(mdb_open(path, MDB_NOFLAGS));
    if (!file) {
        throw Fault{"o início do arquivo está danificado"};
    }
    const bool enciphered = file->f->db_key != 0;
    if (!mdb_read_catalog(file.get(), MDB_ANY) || file->num_catalog == 0) {
        throw Fault{enciphered ? "o arquivo está cifrado por inteiro"
                               : "a lista das tabelas está danificada"};
    }
    return file;
}

MdbCatalogEntry* EntryAt(const MdbHandle* file, unsigned index) {
    return static_cast<MdbCatalogEntry*>(g_ptr_array_index(file->catalog, index));
}

// The list of tables is a table too, and a row of it that is not read is a table that nobody
// misses.
void CheckCatalogue(MdbHandle* file) {
    for (unsigned i = 0; i < file->num_catalog; ++i) {
        if (NameOf(EntryAt(file, i)) == "MSysObjects") {
            const TableDefinition table = OpenTable(EntryAt(file, i));
            if (table->num_rows != file->num_catalog) {
                throw Fault{"a lista das tabelas declara " + std::to_string(table->num_rows) +
                            " linhas, mas só " + std::to_string(file->num_catalog) +
                            " puderam ser lidas"};
            }
            return;
        }
    }
    throw Fault{"a lista das tabelas está danificada"};
}

void SendTables(MdbHandle* file, Output& output) {
    CheckCatalogue(file);
    for (unsigned i = 0; i < file->num_catalog; ++i) {
        MdbCatalogEntry* entry = EntryAt(file, i);
        if (entry->object_type == MDB_LINKED_TABLE) {
            output.Begin(Linked).Text(NameOf(entry)).Send();
        }
        if (!mdb_is_user_table(entry)) {
            continue;
        }
        const TableDefinition table = OpenTable(entry);
        output.Begin(Table).U32(i).U32(table->num_rows).Text(NameOf(entry)).U32(table->num_cols);
        for (unsigned column = 0; column < table->num_cols; ++column) {
            output.Text(ColumnOf(table.get(), column)->name);
        }
        output.Send();
    }
}

void SendRow(MdbHandle* file, MdbTableDef* table, const std::vector<MdbField>& fields,
             Output& output) {
    // In the order of the columns, not of the row.
    std::vector<const MdbField*> ordered(table->num_cols);
    for (const MdbField& field : fields) {
        ordered.at(static_cast<std::size_t>(field.colnum)) = &field;
    }
    output.Begin(Row);
    for (unsigned i = 0; i < table->num_cols; ++i) {
        const MdbColumn* column = ColumnOf(table, i);
        if (!ordered[i] || !SendValue(file, *column, *ordered[i], output)) {
            throw Fault{std::string("um valor da coluna ") + column->name + " da tabela " +
                        table->name + " está danificado"};
        }
    }
    output.Send();
}

void SendRows(MdbHandle* file, int number, Output& output) {
    if (number < 0 || static_cast<unsigned>(number) >= file->num_catalog) {
        throw Fault{"não há essa tabela"};
    }
    const TableDefinition table = OpenTable(EntryAt(file, static_cast<unsigned>(number)));
    std::vector<MdbField> fields(table->num_cols);
    std::uint32_t sent = 0;
    mdb_rewind_table(table.get());
    while (mdb_read_next_dpg(table.get())) {
        const int rows = mdb_get_int16(file->pg_buf, file->fmt->row_count_offset);
        for (int row = 0; row < rows; ++row) {
            int start = 0;
            std::size_t size = 0;
            // A row that cannot be found is missing in the count.
            if (mdb_find_row(file, row, &start, &size) != 0 || size == 0 ||
                (start & GoneOrMoved) != 0 ||
                mdb_crack_row(table.get(), start & OffsetMask, size, fields.data()) < 0) {
                continue;
            }
            SendRow(file, table.get(), fields, output);
            ++sent;
        }
    }
    output.Begin(Rows).U32(sent).U32(table->num_rows).Send();
}

}  // namespace

bool Read(const char* path, int table, Output& output) {
    bool read = false;
    try {
        const File file = Open(path);
        if (table < 0) {
            SendTables(file.get(), output);
        } else {
            SendRows(file.get(), table, output);
        }
        read = true;
    } catch (const Fault& fault) {
        output.Begin(Failure).Text(fault.words).Send();
    }
    output.End();
    return read;
}
