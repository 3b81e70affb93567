// Reads metadata through Qt SQL: declared column types from the database's own catalog where the
// driver is known (SQLite's table_info, PostgreSQL's pg_attribute and pg_proc), the driver's record
// otherwise, and maps them to TFieldType.
#include "ZvSqlMetadata.h"

#include "ZvUtils.h"

#include <QSqlDriver>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QVariant>

#include <algorithm>
#include <utility>
#include <vector>

namespace zv {
namespace {

// Lower-cased, "(...)" groups removed, blanks collapsed to one: "TIME(6) WITH TIME ZONE" gives
// "time with time zone".
std::string NormaliseTypeName(std::string_view TypeName) {
    std::string Plain;
    int Depth = 0;
    for (const char C : TypeName) {
        if (C == '(') {
            ++Depth;
        } else if (C == ')') {
            Depth = std::max(0, Depth - 1);
        } else if (Depth == 0) {
            Plain += LoCase(C);
        }
    }
    std::string Result;
    bool Blank = false;
    for (const char C : Plain) {
        if (static_cast<unsigned char>(C) <= ' ') {
            Blank = !Result.empty();
            continue;
        }
        if (Blank) {
            Result += ' ';
            Blank = false;
        }
        Result += C;
    }
    return Result;
}

struct TTypeName {
    std::string_view Name;
    TFieldType Type;
};

constexpr TTypeName KnownTypes[] = {
    {"smallint", ftSmallint},
    {"int2", ftSmallint},
    {"tinyint", ftSmallint},
    {"integer", ftInteger},
    {"int", ftInteger},
    {"int4", ftInteger},
    {"mediumint", ftInteger},
    {"bigint", ftLargeint},
    {"int8", ftLargeint},
    {"bigserial", ftLargeint},
    {"serial8", ftLargeint},
    {"smallserial", ftAutoInc},
    {"serial2", ftAutoInc},
    {"serial", ftAutoInc},
    {"serial4", ftAutoInc},
    {"boolean", ftBoolean},
    {"bool", ftBoolean},
    {"real", ftFloat},
    {"float", ftFloat},
    {"float4", ftFloat},
    {"float8", ftFloat},
    {"double", ftFloat},
    {"double precision", ftFloat},
    {"money", ftCurrency},
    {"smallmoney", ftCurrency},
    {"numeric", ftBCD},
    {"decimal", ftBCD},
    {"number", ftBCD},
    {"char", ftFixedChar},
    {"character", ftFixedChar},
    {"nchar", ftFixedChar},
    {"bpchar", ftFixedChar},
    {"varchar", ftString},
    {"character varying", ftString},
    {"nvarchar", ftString},
    {"varchar2", ftString},
    {"name", ftString},
    {"citext", ftString},
    {"text", ftMemo},
    {"clob", ftMemo},
    {"ntext", ftMemo},
    {"tinytext", ftMemo},
    {"mediumtext", ftMemo},
    {"longtext", ftMemo},
    {"json", ftMemo},
    {"jsonb", ftMemo},
    {"xml", ftMemo},
    {"date", ftDate},
    {"time", ftTime},
    {"timetz", ftTime},
    {"time with time zone", ftTime},
    {"time without time zone", ftTime},
    {"timestamp", ftDateTime},
    {"timestamptz", ftDateTime},
    {"timestamp with time zone", ftDateTime},
    {"timestamp without time zone", ftDateTime},
    {"datetime", ftDateTime},
    {"datetime2", ftDateTime},
    {"smalldatetime", ftDateTime},
    {"binary", ftBytes},
    {"varbinary", ftVarBytes},
    {"bytea", ftBlob},
    {"blob", ftBlob},
    {"tinyblob", ftBlob},
    {"mediumblob", ftBlob},
    {"longblob", ftBlob},
    {"image", ftBlob},
    {"uuid", ftGuid},
    {"uniqueidentifier", ftGuid},
};

std::optional<TFieldType> LookUp(std::string_view Name) {
    for (const TTypeName& Entry : KnownTypes) {
        if (Entry.Name == Name) {
            return Entry.Type;
        }
    }
    return std::nullopt;
}

// SQLite's column-affinity rules, for its declared names outside the table ("unsigned big int",
// "varying character"). Other databases have their own names for which these guesses would be
// wrong ("point" holds "int").
std::optional<TFieldType> ByAffinity(std::string_view Name) {
    const auto Has = [Name](std::string_view Part) { return Name.find(Part) != std::string_view::npos; };
    if (Has("int")) {
        return ftInteger;
    }
    if (Has("char") || Has("clob") || Has("text")) {
        return ftString;
    }
    if (Has("blob")) {
        return ftBlob;
    }
    if (Has("real") || Has("floa") || Has("doub")) {
        return ftFloat;
    }
    return std::nullopt;
}

bool IsSqlite(const QSqlDatabase& Database) {
    return Database.driver() && Database.driver()->dbmsType() == QSqlDriver::SQLite;
}

bool IsPostgres(const QSqlDatabase& Database) {
    return Database.driver() && Database.driver()->dbmsType() == QSqlDriver::PostgreSQL;
}

TFieldType ColumnType(const QString& Declared, QMetaType Reported) {
    const std::optional<TFieldType> Type = ZvFieldTypeFromSqlType(Declared.toStdString());
    return Type ? *Type : ZvFieldTypeFromMetaType(Reported);
}

TFieldType SqliteColumnType(const QString& Declared, QMetaType Reported) {
    const std::optional<TFieldType> Type = ZvFieldTypeFromSqliteType(Declared.toStdString());
    return Type ? *Type : ZvFieldTypeFromMetaType(Reported);
}

// An integer type that can be an auto-numbered key (ftAutoInc is a four-byte type).
bool MayAutoNumber(TFieldType Type) {
    return Type == ftSmallint || Type == ftInteger || Type == ftAutoInc;
}

bool ReadSqliteFields(const QSqlDatabase& Database, const QString& Table, TZvDataSet& DataSet) {
    // The table-valued form takes the name as a plain value, so no quoting rule can go wrong.
    QSqlQuery Query(Database);
    Query.prepare(QStringLiteral("SELECT name, type, pk FROM pragma_table_info(?) ORDER BY cid"));
    Query.addBindValue(Table);
    if (!Query.exec()) {
        return false;
    }
    struct TColumn {
        QString Name;
        QString Declared;
        bool Key;
    };
    std::vector<TColumn> Columns;
    while (Query.next()) {
        Columns.push_back({Query.value(0).toString(), Query.value(1).toString(), Query.value(2).toInt() > 0});
    }
    if (Columns.empty()) {
        return false;
    }
    const QSqlRecord Record = Database.record(Table);
    const auto KeyCount =
        std::count_if(Columns.begin(), Columns.end(), [](const TColumn& C) { return C.Key; });
    for (const TColumn& Column : Columns) {
        TFieldType Type = SqliteColumnType(Column.Declared, Record.field(Column.Name).metaType());
        // Only a key declared exactly INTEGER is SQLite's row id; INT or BIGINT keys are not.
        if (Column.Key && KeyCount == 1 &&
            Column.Declared.trimmed().compare(u"integer", Qt::CaseInsensitive) == 0) {
            Type = ftAutoInc;
        }
        DataSet.AddFieldDef(Column.Name.toStdString(), Type);
    }
    return true;
}

QString PostgresRelation(const QSqlDatabase& Database, const QString& Table) {
    // The driver quotes each dotted part ("schema"."table"), which regclass then resolves.
    return Database.driver()->escapeIdentifier(Table, QSqlDriver::TableName);
}

bool ReadPostgresFields(const QSqlDatabase& Database, const QString& Table, TZvDataSet& DataSet) {
    QSqlQuery Query(Database);
    Query.prepare(QStringLiteral(
        "SELECT a.attname, format_type(a.atttypid, a.atttypmod),"
        " a.attidentity <> '' OR coalesce(pg_get_expr(d.adbin, d.adrelid), '') LIKE 'nextval(%'"
        " FROM pg_attribute a"
        " LEFT JOIN pg_attrdef d ON d.adrelid = a.attrelid AND d.adnum = a.attnum"
        " WHERE a.attrelid = to_regclass(?) AND a.attnum > 0 AND NOT a.attisdropped"
        " ORDER BY a.attnum"));
    Query.addBindValue(PostgresRelation(Database, Table));
    if (!Query.exec()) {
        return false;
    }
    bool Any = false;
    while (Query.next()) {
        TFieldType Type = ColumnType(Query.value(1).toString(), QMetaType(QMetaType::QString));
        if (Query.value(2).toBool() && MayAutoNumber(Type)) {
            Type = ftAutoInc;
        }
        DataSet.AddFieldDef(Query.value(0).toString().toStdString(), Type);
        Any = true;
    }
    return Any;
}

bool ReadRecordFields(const QSqlDatabase& Database, const QString& Table, TZvDataSet& DataSet) {
    const QSqlRecord Record = Database.record(Table);
    for (int I = 0; I < Record.count(); ++I) {
        DataSet.AddFieldDef(Record.fieldName(I).toStdString(),
                            ZvFieldTypeFromMetaType(Record.field(I).metaType()));
    }
    return !Record.isEmpty();
}

// The oid of a set-returning function, the first created of its overloads; 0 when there is none.
qlonglong FindPostgresFunction(const QSqlDatabase& Database, const QString& Name) {
    QSqlQuery Query(Database);
    const qsizetype Dot = Name.indexOf(u'.');
    if (Dot >= 0) {
        Query.prepare(
            QStringLiteral("SELECT p.oid FROM pg_proc p JOIN pg_namespace n ON n.oid = p.pronamespace"
                           " WHERE p.proretset AND p.prokind = 'f' AND n.nspname = ? AND p.proname = ?"
                           " ORDER BY p.oid LIMIT 1"));
        Query.addBindValue(Name.left(Dot));
        Query.addBindValue(Name.mid(Dot + 1));
    } else {
        Query.prepare(
            QStringLiteral("SELECT p.oid FROM pg_proc p JOIN pg_namespace n ON n.oid = p.pronamespace"
                           " WHERE p.proretset AND p.prokind = 'f' AND n.nspname = 'public' AND p.proname = ?"
                           " ORDER BY p.oid LIMIT 1"));
        Query.addBindValue(Name);
    }
    if (!Query.exec() || !Query.next()) {
        return 0;
    }
    return Query.value(0).toLongLong();
}

TParamType ParamTypeOfMode(const QString& Mode) {
    if (Mode == u"o" || Mode == u"t") {
        return ptOutput;
    }
    if (Mode == u"b") {
        return ptInputOutput;
    }
    return ptInput; // "i", and "v" (variadic), which takes its values as input as well
}

bool ReadPostgresArguments(const QSqlDatabase& Database, qlonglong Function, TZvParams& Params) {
    QSqlQuery Query(Database);
    // Argument names and modes are 1-based arrays parallel to the argument types, which unnest
    // numbers the same way whatever the lower bound of the type vector.
    Query.prepare(QStringLiteral(
        "SELECT a.ord, coalesce(p.proargnames[a.ord], ''), coalesce(p.proargmodes[a.ord]::text, 'i'),"
        " format_type(a.typ, NULL)"
        " FROM pg_proc p,"
        " unnest(coalesce(p.proallargtypes, p.proargtypes::oid[])) WITH ORDINALITY AS a(typ, ord)"
        " WHERE p.oid = ? ORDER BY a.ord"));
    Query.addBindValue(Function);
    if (!Query.exec()) {
        return false;
    }
    while (Query.next()) {
        QString Name = Query.value(1).toString();
        if (Name.isEmpty()) {
            Name = QStringLiteral("$") + Query.value(0).toString();
        }
        TZvParam Param;
        Param.Name = Name.toStdString();
        Param.ParamType = ParamTypeOfMode(Query.value(2).toString());
        Param.DataType = ColumnType(Query.value(3).toString(), QMetaType(QMetaType::QString));
        Params.Add(std::move(Param));
    }
    return true;
}

// The columns of a function without OUT or TABLE arguments: those of the row type it returns, or
// one column named after the function for a scalar type. A function returning plain "record"
// declares no columns.
bool ReadPostgresReturnColumns(const QSqlDatabase& Database, qlonglong Function, TZvDataSet& Result) {
    QSqlQuery Query(Database);
    Query.prepare(
        QStringLiteral("SELECT a.attname, format_type(a.atttypid, a.atttypmod)"
                       " FROM pg_proc p JOIN pg_type t ON t.oid = p.prorettype"
                       " JOIN pg_attribute a ON a.attrelid = t.typrelid"
                       " WHERE p.oid = ? AND t.typtype = 'c' AND a.attnum > 0 AND NOT a.attisdropped"
                       " UNION ALL"
                       " SELECT p.proname, format_type(p.prorettype, NULL)"
                       " FROM pg_proc p JOIN pg_type t ON t.oid = p.prorettype"
                       " WHERE p.oid = ? AND t.typtype IN ('b', 'd', 'e', 'r')"));
    Query.addBindValue(Function);
    Query.addBindValue(Function);
    if (!Query.exec()) {
        return false;
    }
    while (Query.next()) {
        Result.AddFieldDef(Query.value(0).toString().toStdString(),
                           ColumnType(Query.value(1).toString(), QMetaType(QMetaType::QString)));
    }
    return true;
}

} // namespace

std::optional<TFieldType> ZvFieldTypeFromSqlType(std::string_view TypeName) {
    std::string Name = NormaliseTypeName(TypeName);
    if (Name.size() >= 2 && Name.compare(Name.size() - 2, 2, "[]") == 0) {
        return ftArray;
    }
    for (const std::string_view Suffix : {std::string_view(" unsigned"), std::string_view(" zerofill")}) {
        while (Name.size() > Suffix.size() &&
               Name.compare(Name.size() - Suffix.size(), Suffix.size(), Suffix) == 0) {
            Name.erase(Name.size() - Suffix.size());
        }
    }
    if (Name.empty()) {
        return std::nullopt;
    }
    return LookUp(Name);
}

std::optional<TFieldType> ZvFieldTypeFromSqliteType(std::string_view TypeName) {
    if (const std::optional<TFieldType> Known = ZvFieldTypeFromSqlType(TypeName)) {
        return Known;
    }
    return ByAffinity(NormaliseTypeName(TypeName));
}

TFieldType ZvFieldTypeFromMetaType(QMetaType Type) {
    switch (Type.id()) {
    case QMetaType::Int:
    case QMetaType::UInt:
        return ftInteger;
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
        return ftSmallint;
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return ftLargeint;
    case QMetaType::Double:
    case QMetaType::Float:
        return ftFloat;
    case QMetaType::Bool:
        return ftBoolean;
    case QMetaType::QString:
    case QMetaType::QChar:
        return ftString;
    case QMetaType::QByteArray:
        return ftBlob;
    case QMetaType::QDate:
        return ftDate;
    case QMetaType::QTime:
        return ftTime;
    case QMetaType::QDateTime:
        return ftDateTime;
    case QMetaType::QUuid:
        return ftGuid;
    default:
        return ftUnknown;
    }
}

QStringList ZvListTables(const QSqlDatabase& Database) {
    QStringList Names = Database.tables(QSql::Tables) + Database.tables(QSql::Views);
    if (IsSqlite(Database)) {
        Names.removeIf([](const QString& Name) { return Name.startsWith(u"sqlite_", Qt::CaseInsensitive); });
    }
    Names.removeDuplicates();
    std::sort(Names.begin(), Names.end(),
              [](const QString& A, const QString& B) { return A.compare(B, Qt::CaseInsensitive) < 0; });
    return Names;
}

QStringList ZvListProcedures(const QSqlDatabase& Database) {
    if (!IsPostgres(Database)) {
        return {};
    }
    QSqlQuery Query(Database);
    if (!Query.exec(
            QStringLiteral("SELECT DISTINCT CASE WHEN n.nspname = 'public' THEN p.proname"
                           " ELSE n.nspname || '.' || p.proname END"
                           " FROM pg_proc p JOIN pg_namespace n ON n.oid = p.pronamespace"
                           " WHERE p.proretset AND p.prokind = 'f'"
                           " AND n.nspname NOT IN ('pg_catalog', 'information_schema')"
                           " AND n.nspname NOT LIKE 'pg\\_toast%' AND n.nspname NOT LIKE 'pg\\_temp%'"))) {
        return {};
    }
    QStringList Names;
    while (Query.next()) {
        Names << Query.value(0).toString();
    }
    std::sort(Names.begin(), Names.end(),
              [](const QString& A, const QString& B) { return A.compare(B, Qt::CaseInsensitive) < 0; });
    return Names;
}

bool ZvReadTableFields(const QSqlDatabase& Database, const QString& Table, TZvDataSet& DataSet) {
    if (!Database.isOpen() || Table.isEmpty()) {
        return false;
    }
    if (IsSqlite(Database)) {
        return ReadSqliteFields(Database, Table, DataSet);
    }
    if (IsPostgres(Database)) {
        return ReadPostgresFields(Database, Table, DataSet);
    }
    return ReadRecordFields(Database, Table, DataSet);
}

bool ZvReadProcedure(const QSqlDatabase& Database, const QString& Name, TZvDataSet& Result,
                     TZvParams& Params) {
    if (!Database.isOpen() || !IsPostgres(Database)) {
        return false;
    }
    const qlonglong Function = FindPostgresFunction(Database, Name);
    if (Function == 0) {
        return false;
    }
    Params.Clear();
    if (!ReadPostgresArguments(Database, Function, Params)) {
        return false;
    }
    bool HasOutput = false;
    for (int I = 0; I < Params.Count(); ++I) {
        const TZvParam& Param = Params[I];
        if (Param.ParamType == ptOutput || Param.ParamType == ptInputOutput) {
            Result.AddFieldDef(Param.Name, Param.DataType);
            HasOutput = true;
        }
    }
    return HasOutput || ReadPostgresReturnColumns(Database, Function, Result);
}

bool TZvSqlMetadata::IsProcedure(const QString& Name) const {
    return Procedures().contains(Name, Qt::CaseInsensitive);
}

bool TZvSqlMetadata::GetTableFields(const std::string& NameOfTable, TZvDataSet& DataSet,
                                    TZvParams& Params) const {
    const QString Name = QString::fromStdString(NameOfTable);
    if (ZvReadTableFields(Database, Name, DataSet)) {
        return true;
    }
    return ZvReadProcedure(Database, Name, DataSet, Params);
}

void TZvSqlDataSet::Open() {
    FieldDefs.clear();
    Active = ZvReadTableFields(Database, Table, *this);
}

} // namespace zv
