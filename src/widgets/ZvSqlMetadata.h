// Table and procedure metadata read from a live Qt SQL connection, in the core's terms: the tables
// and views of a database, a table's fields with their TFieldType in a TZvDataSet, and the arguments
// and result columns of a set-returning function in TZvParams. This is what a host binds to the
// component's table-fields hook.
//
// Column types are mapped from the type name the database declares, so that a DATE column of SQLite
// (which the driver reports as text) still reads as a date:
//
//   declared type (case ignored, "(n)" and "(p,s)" ignored)        TFieldType
//   smallint, int2, tinyint                                        ftSmallint
//   integer, int, int4, mediumint                                  ftInteger (ftAutoInc when 1)
//   bigint, int8, bigserial, serial8                               ftLargeint
//   smallserial, serial2, serial, serial4                          ftAutoInc
//   boolean, bool                                                  ftBoolean
//   real, float, float4, float8, double, double precision          ftFloat
//   money, smallmoney                                              ftCurrency
//   numeric, decimal, number                                       ftBCD
//   char, character, nchar, bpchar                                 ftFixedChar
//   varchar, character varying, nvarchar, varchar2, name, citext   ftString
//   text, clob, ntext, tinytext .. longtext, json, jsonb, xml      ftMemo
//   date                                                           ftDate
//   time, timetz, time with(out) time zone                         ftTime
//   timestamp, timestamptz, timestamp with(out) time zone,
//     datetime, datetime2, smalldatetime                           ftDateTime
//   binary                                                         ftBytes
//   varbinary                                                      ftVarBytes
//   bytea, blob, tinyblob .. longblob, image                       ftBlob
//   uuid, uniqueidentifier                                         ftGuid
//   any type followed by "[]"                                      ftArray
//   for SQLite, otherwise by its own affinity rules, in this order:
//     containing "int" (so also "floating point", as SQLite has it) ftInteger
//     containing "char", "clob" or "text"                          ftString
//     containing "blob"                                            ftBlob
//     containing "real", "floa" or "doub"                          ftFloat
//   otherwise (or no declared type) by the driver's value type:
//     int/uint ftInteger, short ftSmallint, long long ftLargeint, double/float ftFloat,
//     bool ftBoolean, QString ftString, QByteArray ftBlob, QDate ftDate, QTime ftTime,
//     QDateTime ftDateTime, QUuid ftGuid, anything else ftUnknown
//
// (1) An integer key that the database numbers itself: a PostgreSQL identity or serial column of
// two or four bytes, or SQLite's single-column INTEGER PRIMARY KEY (the row id).
#pragma once

#include "ZvTypes.h"

#include <QMetaType>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace zv {

// The field type for a declared column type by the table above; nullopt when the name gives no
// answer (the caller then asks the driver's value type).
std::optional<TFieldType> ZvFieldTypeFromSqlType(std::string_view TypeName);
// The same for a column of SQLite, whose declared types are free text: names outside the table
// are read by SQLite's affinity rules.
std::optional<TFieldType> ZvFieldTypeFromSqliteType(std::string_view TypeName);
// The field type for the value type a Qt SQL driver reports.
TFieldType ZvFieldTypeFromMetaType(QMetaType Type);

// Tables and views of the connection, sorted by name without regard to case; the database's own
// system tables are left out. Tables outside PostgreSQL's "public" schema are "schema.table".
QStringList ZvListTables(const QSqlDatabase& Database);
// The set-returning functions of a PostgreSQL database (schema "public" unqualified, others as
// "schema.function"), sorted; empty for databases without stored procedures of that kind.
QStringList ZvListProcedures(const QSqlDatabase& Database);

// Appends the fields of a table or view, in column order, to DataSet. False (and nothing
// appended) when the connection does not know the table.
bool ZvReadTableFields(const QSqlDatabase& Database, const QString& Table, TZvDataSet& DataSet);
// Replaces Params by the arguments of a set-returning function, in declaration order (IN and
// VARIADIC ptInput, OUT and TABLE columns ptOutput, INOUT ptInputOutput; unnamed arguments are
// called "$1", "$2", ... as PostgreSQL numbers them), and appends the columns it returns to
// Result: its OUT and TABLE columns, else the columns of the row type it returns, else one column
// named after the function. With overloads, the first one created is read. False when there is
// no such function.
bool ZvReadProcedure(const QSqlDatabase& Database, const QString& Name, TZvDataSet& Result,
                     TZvParams& Params);

// The metadata source a host gives the component: answers the table-fields hook from one
// connection.
class TZvSqlMetadata {
public:
    explicit TZvSqlMetadata(QSqlDatabase Connection) : Database(std::move(Connection)) {}

    const QSqlDatabase& GetDatabase() const { return Database; }
    QStringList Tables() const { return ZvListTables(Database); }
    QStringList Procedures() const { return ZvListProcedures(Database); }
    // True when Name is one of Procedures (compared without regard to case).
    bool IsProcedure(const QString& Name) const;
    // Fills DataSet (and, for a procedure, Params) for NameOfTable; false when the database knows
    // neither a table nor a procedure of that name.
    bool GetTableFields(const std::string& NameOfTable, TZvDataSet& DataSet, TZvParams& Params) const;

private:
    QSqlDatabase Database;
};

// A data set over one table of a live connection: Open reads its field definitions (afresh each
// time); when the table is unknown it stays closed with no fields. Close keeps the fields, as a
// data set keeps its field definitions when closed.
class TZvSqlDataSet : public TZvDataSet {
public:
    TZvSqlDataSet(QSqlDatabase Connection, QString TableName)
        : Database(std::move(Connection)), Table(std::move(TableName)) {}

    void Open() override;
    const QString& GetTableName() const { return Table; }

private:
    QSqlDatabase Database;
    QString Table;
};

} // namespace zv
