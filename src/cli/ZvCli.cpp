// Command-line handling of the zevrin tool: options, input normalisation, and the two commands.
#include "ZvCli.h"

#include <nlohmann/json.hpp>

#include <ostream>
#include <sstream>

#include "ZvCriteria.h"
#include "ZvErrors.h"
#include "ZvParser.h"
#include "ZvUtils.h"
#include "dialects/ZvDb2Dialect.h"
#include "dialects/ZvIBDialect.h"
#include "dialects/ZvMSDialect.h"
#include "dialects/ZvMyDialect.h"
#include "dialects/ZvOracleDialect.h"
#include "dialects/ZvPgDialect.h"

namespace zv {

namespace {

struct TModeName {
    std::string_view Name;
    TZvFormatMode Mode;
};

constexpr TModeName kModes[] = {
    {"asis", qfmAsIs}, {"upper", qfmUpperCase}, {"lower", qfmLowerCase}, {"firstupper", qfmFirstUpper}};

bool FindMode(std::string_view Name, TZvFormatMode& Mode) {
    for (const TModeName& M : kModes) {
        if (M.Name == Name) {
            Mode = M.Mode;
            return true;
        }
    }
    return false;
}

// The value of an option that takes one ("--dialect NAME" or "--dialect=NAME").
std::string OptionValue(const std::vector<std::string>& Args, std::size_t& I, std::string_view Name) {
    const std::string& Arg = Args[I];
    if (Arg.size() > Name.size() && Arg[Name.size()] == '=')
        return Arg.substr(Name.size() + 1);
    if (I + 1 >= Args.size())
        throw TZvUsageError{"option " + std::string(Name) + " needs a value"};
    return Args[++I];
}

bool IsOption(const std::string& Arg, std::string_view Name) {
    return Arg == Name || (Arg.size() > Name.size() && Arg.compare(0, Name.size(), Name) == 0 &&
                           Arg[Name.size()] == '=');
}

void CheckMode(const std::string& Option, const std::string& Value) {
    TZvFormatMode Mode;
    if (!FindMode(Value, Mode))
        throw TZvUsageError{"option " + Option + ": unknown case mode '" + Value +
                            "' (asis, upper, lower, firstupper)"};
}

struct TServerName {
    std::string_view Name;
    TZvIBSQLServer Server;
};

constexpr TServerName kIBServers[] = {
    {"dontcare", qssDontCare}, {"interbase", qssInterBase}, {"firebird", qssFireBird}};

TZvIBSQLServer FindIBServer(std::string_view Name) {
    for (const TServerName& S : kIBServers) {
        if (S.Name == Name)
            return S.Server;
    }
    throw TZvUsageError{"option --ib-server: unknown server kind '" + std::string(Name) +
                        "' (dontcare, interbase, firebird)"};
}

std::string_view IBServerName(TZvIBSQLServer Server) {
    for (const TServerName& S : kIBServers) {
        if (S.Server == Server)
            return S.Name;
    }
    return "unknown";
}

// The dialect's own settings from the options; the parser comes from the same row's dialect.
void ConfigureIBParser(TZvSelectParser& Parser, const TZvCliOptions& Options) {
    auto& IB = static_cast<TZvIBSelectParser&>(Parser);
    IB.SetSQLDialect(Options.IBDialect == 1 ? qibDialect1 : qibDialect3);
    IB.SetSQLServer(FindIBServer(Options.IBServer));
}

nlohmann::ordered_json IBSettingsJson(TZvSelectParser& Parser) {
    auto& IB = static_cast<TZvIBSelectParser&>(Parser);
    nlohmann::ordered_json J;
    J["sqlDialect"] = IB.GetSQLDialect() == qibDialect1 ? 1 : 3;
    J["sqlServer"] = IBServerName(IB.GetSQLServer());
    const TZvFBOptions& FB = IB.GetFBOptions();
    J["fbOptions"] = {{"first", FB.GetFirst()}, {"skip", FB.GetSkip()}};
    const TZvIBOptions& Rows = IB.GetIBOptions();
    J["ibOptions"] = {{"rowsFrom", Rows.GetRowsFrom()}, {"rowsTo", Rows.GetRowsTo()},
                      {"rowsBy", Rows.GetRowsBy()},     {"percent", Rows.GetPercent()},
                      {"withTies", Rows.GetWithTies()}};
    return J;
}

nlohmann::ordered_json PgSettingsJson(TZvSelectParser& Parser) {
    const TZvPgSQLOptions& Pg = static_cast<TZvPgSelectParser&>(Parser).GetPgOptions();
    nlohmann::ordered_json J;
    J["distinctOn"] = Pg.GetDistinctOn();
    J["limit"] = Pg.GetLimit();
    J["offset"] = Pg.GetOffset();
    return J;
}

nlohmann::ordered_json Db2SettingsJson(TZvSelectParser& Parser) {
    nlohmann::ordered_json J;
    J["fetchFirst"] = static_cast<TZvDb2SelectParser&>(Parser).GetDb2Options().GetFetchFirst();
    return J;
}

nlohmann::ordered_json OracleSettingsJson(TZvSelectParser& Parser) {
    nlohmann::ordered_json J;
    J["fetchFirst"] = static_cast<TZvOracleSelectParser&>(Parser).GetOracleOptions().GetFetchFirst();
    return J;
}

nlohmann::ordered_json MySettingsJson(TZvSelectParser& Parser) {
    const TZvMySQLOptions& My = static_cast<TZvMySelectParser&>(Parser).GetMySQLOptions();
    nlohmann::ordered_json J;
    J["filter"] = My.GetFilter() == myfoNone ? std::string("none") : LowerCase(MySQLFilterWord(My.GetFilter()));
    nlohmann::ordered_json Words = nlohmann::ordered_json::array();
    for (std::size_t I = 0; I < My.GetSelectOptions().size(); ++I) {
        if (My.GetSelectOptions().test(I))
            Words.push_back(MySQLSelectOptionWord(static_cast<TZvMySQLSelectOption>(I)));
    }
    J["selectOptions"] = std::move(Words);
    // The LIMIT numbers as written (they may pass 64 bits); none, one or two of them.
    nlohmann::ordered_json Limit = nlohmann::ordered_json::array();
    if (!My.GetLimitFirst().empty()) {
        Limit.push_back(My.GetLimitFirst());
        if (!My.GetLimitSecond().empty())
            Limit.push_back(My.GetLimitSecond());
    }
    J["limit"] = std::move(Limit);
    return J;
}

void ConfigureMSParser(TZvSelectParser& Parser, const TZvCliOptions& Options) {
    static_cast<TZvMSSelectParser&>(Parser).SetQuotedIdentifier(Options.MSQuotedIdentifier);
}

nlohmann::ordered_json MSSettingsJson(TZvSelectParser& Parser) {
    auto& MS = static_cast<TZvMSSelectParser&>(Parser);
    const TZvMSSQLOptions& Top = MS.GetMSSQLOptions();
    nlohmann::ordered_json J;
    J["quotedIdentifier"] = MS.GetQuotedIdentifier();
    J["all"] = Top.GetAll();
    J["top"] = Top.GetTop();
    J["percent"] = Top.GetPercent();
    J["withTies"] = Top.GetWithTies();
    return J;
}

// What the tool adds to a dialect of the core's table (ZvDialects): its settings from the command
// line, and its settings shown in the JSON model. The functions of a row cast the parser to the
// class that CreateDialectParser makes for the row's name. Dialects without a row have neither.
struct TCliDialect {
    std::string_view Name;
    // Null when the command line has no settings for the dialect.
    void (*Configure)(TZvSelectParser& Parser, const TZvCliOptions& Options);
    // Null when the dialect has no settings of its own.
    nlohmann::ordered_json (*Settings)(TZvSelectParser& Parser);
};

constexpr TCliDialect kDialects[] = {
    {"interbase", ConfigureIBParser, IBSettingsJson},
    {"mysql", nullptr, MySettingsJson},
    {"mssql", ConfigureMSParser, MSSettingsJson},
    {"postgresql", nullptr, PgSettingsJson},
    {"db2", nullptr, Db2SettingsJson},
    {"oracle", nullptr, OracleSettingsJson},
};

const TCliDialect* FindDialect(std::string_view Name) {
    for (const TCliDialect& D : kDialects) {
        if (D.Name == Name)
            return &D;
    }
    return nullptr;
}

bool OnOff(const std::string& Option, const std::string& Value) {
    if (Value != "on" && Value != "off")
        throw TZvUsageError{"option " + Option + ": '" + Value + "' is neither on nor off"};
    return Value == "on";
}

int IBDialectNumber(const std::string& Value) {
    if (Value != "1" && Value != "3")
        throw TZvUsageError{"option --ib-dialect: unknown SQL dialect '" + Value + "' (1, 3)"};
    return Value == "1" ? 1 : 3;
}

} // namespace

TZvCliOptions ParseCliArguments(const std::vector<std::string>& Args) {
    TZvCliOptions Options;
    bool IBOptionGiven = false;
    bool MSOptionGiven = false;
    for (std::size_t I = 0; I < Args.size(); ++I) {
        const std::string& Arg = Args[I];
        if (Arg == "--help" || Arg == "-h") {
            Options.Help = true;
        } else if (IsOption(Arg, "--dialect")) {
            Options.Dialect = OptionValue(Args, I, "--dialect");
        } else if (IsOption(Arg, "--keywords")) {
            Options.Keywords = OptionValue(Args, I, "--keywords");
            CheckMode("--keywords", Options.Keywords);
        } else if (IsOption(Arg, "--functions")) {
            Options.Functions = OptionValue(Args, I, "--functions");
            CheckMode("--functions", Options.Functions);
        } else if (IsOption(Arg, "--ib-dialect")) {
            Options.IBDialect = IBDialectNumber(OptionValue(Args, I, "--ib-dialect"));
            IBOptionGiven = true;
        } else if (IsOption(Arg, "--ib-server")) {
            Options.IBServer = OptionValue(Args, I, "--ib-server");
            FindIBServer(Options.IBServer);
            IBOptionGiven = true;
        } else if (IsOption(Arg, "--mssql-quoted-identifier")) {
            Options.MSQuotedIdentifier =
                OnOff("--mssql-quoted-identifier", OptionValue(Args, I, "--mssql-quoted-identifier"));
            MSOptionGiven = true;
        } else if (Arg == "--no-always-bracket") {
            Options.AlwaysBracket = false;
        } else if (Arg == "--no-quote-identifiers") {
            Options.QuoteIdentifiers = false;
        } else if (Arg == "--lines") {
            Options.Lines = true;
        } else if (Arg.size() > 1 && Arg[0] == '-') {
            throw TZvUsageError{"unknown option '" + Arg + "'"};
        } else if (Options.Command.empty()) {
            if (Arg != "format" && Arg != "model")
                throw TZvUsageError{"unknown command '" + Arg + "' (format, model)"};
            Options.Command = Arg;
        } else if (Options.File.empty()) {
            Options.File = Arg;
        } else {
            throw TZvUsageError{"more than one input file ('" + Options.File + "', '" + Arg + "')"};
        }
    }
    if (Options.Help)
        return Options;
    if (Options.Command.empty())
        throw TZvUsageError{"no command given (format, model)"};
    const std::vector<std::string> Names = DialectNames();
    if (std::find(Names.begin(), Names.end(), Options.Dialect) == Names.end())
        throw TZvUsageError{"unknown dialect '" + Options.Dialect + "'"};
    if (Options.Lines && Options.Command != "format")
        throw TZvUsageError{"--lines goes with the format command"};
    if (IBOptionGiven && Options.Dialect != "interbase")
        throw TZvUsageError{"--ib-dialect and --ib-server go with --dialect interbase"};
    if (MSOptionGiven && Options.Dialect != "mssql")
        throw TZvUsageError{"--mssql-quoted-identifier goes with --dialect mssql"};
    return Options;
}

std::string CliUsage() {
    std::string Dialects;
    for (const std::string& Name : DialectNames())
        Dialects += (Dialects.empty() ? "" : ", ") + Name;
    return "usage: zevrin format [options] [FILE]\n"
           "       zevrin model [options] [FILE]\n"
           "\n"
           "Reads one SELECT statement from FILE (standard input when absent).\n"
           "  format  writes the statement in the normalised layout (\\r\\n line breaks, nothing\n"
           "          added); a syntax error prints its message on standard error, exit 1.\n"
           "  model   writes the parsed query model as JSON; a syntax error prints a JSON error\n"
           "          object (type, message, line, position, token), exit 1.\n"
           "\n"
           "Line feeds in the input are read as line breaks; a final line break is ignored.\n"
           "\n"
           "options:\n"
           "  --dialect NAME          SQL dialect: " +
           Dialects +
           " (default generic)\n"
           "  --keywords MODE         case of keywords: asis, upper, lower, firstupper (default asis)\n"
           "  --functions MODE        case of function names, same modes (default asis)\n"
           "  --no-always-bracket     do not bracket every condition of WHERE and HAVING\n"
           "  --no-quote-identifiers  never quote names\n"
           "  --ib-dialect 1|3        (interbase) SQL dialect number: 1 reads double quotes as string\n"
           "                          quotes and never quotes names, 3 quotes names (default 3)\n"
           "  --ib-server KIND        (interbase) server kind: dontcare reads and writes FIRST/SKIP\n"
           "                          and ROWS, interbase only ROWS, firebird only FIRST/SKIP\n"
           "                          (default dontcare)\n"
           "  --mssql-quoted-identifier on|off\n"
           "                          (mssql) on: a double quote encloses a name, off: a string\n"
           "                          (default on)\n"
           "  --lines                 (format) every non-empty input line is one statement; for each,\n"
           "                          its text and \"\\n\", or \"error: \" and the message; exit 0\n"
           "  --help                  this text\n"
           "\n"
           "exit codes: 0 success, 1 syntax error, 2 usage error\n";
}

std::unique_ptr<TZvSelectParser> CreateCliParser(const TZvCliOptions& Options) {
    std::unique_ptr<TZvSelectParser> Parser = CreateDialectParser(Options.Dialect);
    if (!Parser)
        return nullptr;
    if (const TCliDialect* Row = FindDialect(Options.Dialect); Row != nullptr && Row->Configure != nullptr)
        Row->Configure(*Parser, Options);
    TZvScriptFormat Format;
    TZvFormatMode Mode = qfmAsIs;
    FindMode(Options.Keywords, Mode);
    Format.SetKeywordsFormat(Mode);
    Mode = qfmAsIs;
    FindMode(Options.Functions, Mode);
    Format.SetFunctionsFormat(Mode);
    Format.SetAlwaysBracketConditions(Options.AlwaysBracket);
    Parser->SetScriptFormat(Format);
    Parser->GetScanner().QuoteIdentifiers = Options.QuoteIdentifiers;
    return Parser;
}

// --- model as JSON -------------------------------------------------------------------------------

namespace {

using nlohmann::ordered_json;

const char* KindName(TZvFunctionKind Kind) {
    static const char* Names[] = {"unknown", "function", "identifier", "integer",
                                  "float",   "string",   "expression", "parameter"};
    return Names[Kind];
}

const char* JoinKindName(TZvJoinKind Kind) {
    static const char* Names[] = {"inner", "left outer", "right outer", "full outer"};
    return Kind <= zvjFOuterJoin ? Names[Kind] : "unknown";
}

const char* FilterName(TZvCriterionFilter Filter) {
    static const char* Names[] = {"all", "any", "none", "not all", "not"};
    return Filter <= cfNot ? Names[Filter] : "unknown";
}

ordered_json OperandJson(const TZvFunctionDef& Operand) {
    ordered_json J;
    J["kind"] = KindName(Operand.GetKind());
    J["name"] = Operand.GetName();
    const TZvFunctionDefs& Arguments = Operand.GetArguments();
    if (Arguments.Count() > 0) {
        ordered_json Args = ordered_json::array();
        for (int I = 0; I < Arguments.Count(); ++I)
            Args.push_back(OperandJson(*Arguments.Items(I)));
        J["arguments"] = std::move(Args);
    }
    return J;
}

ordered_json FieldJson(const TZvFieldDef& Field) {
    ordered_json J = OperandJson(Field);
    J["alias"] = Field.GetAlias();
    J["position"] = Field.GetAbsIndex();
    J["usage"] = Field.GetUsage();
    J["text"] = Field.GetScript();
    return J;
}

ordered_json JoinJson(const TZvJoinDef& Join) {
    ordered_json J;
    J["kind"] = JoinKindName(Join.GetKind());
    J["leftField"] = Join.GetLeftField();
    J["operator"] = Join.GetOperator();
    J["table"] = Join.GetTableAlias();
    J["rightField"] = Join.GetRightField();
    if (Join.GetLeftConst() || Join.GetRightConst()) {
        J["leftConst"] = Join.GetLeftConst();
        J["rightConst"] = Join.GetRightConst();
        J["swapped"] = Join.GetSwapped();
    }
    return J;
}

ordered_json TableJson(const TZvTableDef& Table) {
    ordered_json J;
    J["name"] = Table.GetName();
    J["alias"] = Table.GetAlias();
    J["type"] = Table.GetTableType() == qttStoredProc ? "procedure" : "table";
    ordered_json Fields = ordered_json::array();
    const TZvFieldDefs& FieldDefs = Table.GetFieldDefs();
    for (int I = 0; I < FieldDefs.Count(); ++I)
        Fields.push_back(FieldJson(*FieldDefs.Items(I)));
    J["fields"] = std::move(Fields);
    ordered_json Joins = ordered_json::array();
    const TZvJoinDefs& JoinDefs = Table.GetJoinDefs();
    for (int I = 0; I < JoinDefs.Count(); ++I)
        Joins.push_back(JoinJson(*JoinDefs.Items(I)));
    J["joins"] = std::move(Joins);
    return J;
}

ordered_json CriterionsJson(const TZvCriterions& List);

ordered_json CriterionJson(const TZvCriterion& Criterion) {
    if (Criterion.GetSubItems().Count() > 0)
        return CriterionsJson(Criterion.GetSubItems());
    ordered_json J;
    J["left"] = OperandJson(Criterion.GetLeftSide());
    J["operator"] = Criterion.GetOperatorCaption();
    ordered_json Right = ordered_json::array();
    const TZvFunctionDefs& RightSide = Criterion.GetRightSide();
    for (int I = 0; I < RightSide.Count(); ++I)
        Right.push_back(OperandJson(*RightSide.Items(I)));
    J["right"] = std::move(Right);
    return J;
}

ordered_json CriterionsJson(const TZvCriterions& List) {
    ordered_json J;
    J["filter"] = FilterName(List.GetFilter());
    ordered_json Items = ordered_json::array();
    for (int I = 0; I < List.Count(); ++I)
        Items.push_back(CriterionJson(*List.Items(I)));
    J["items"] = std::move(Items);
    return J;
}

ordered_json StringListJson(const TZvStringList& List) {
    ordered_json J = ordered_json::array();
    for (int I = 0; I < List.Count(); ++I)
        J.push_back(List.Get(I));
    return J;
}

ordered_json ErrorJson(const EZvParserError& E) {
    ordered_json J;
    ordered_json Error;
    Error["type"] = E.GetErrorType();
    Error["message"] = E.what();
    Error["line"] = E.GetLine();
    Error["position"] = E.GetPosition();
    Error["token"] = E.GetToken();
    J["error"] = std::move(Error);
    return J;
}

// Dumps replacing bytes that are not valid UTF-8, so that any input gives a JSON document.
std::string Dump(const ordered_json& J) {
    return J.dump(2, ' ', false, ordered_json::error_handler_t::replace);
}

} // namespace

std::string ModelToJson(TZvSelectParser& Parser, std::string_view Dialect) {
    ordered_json J;
    J["distinct"] = Parser.GetDistinct();
    ordered_json Tables = ordered_json::array();
    TZvTableDefs& TableDefs = Parser.GetTableDefs();
    for (int I = 0; I < TableDefs.Count(); ++I)
        Tables.push_back(TableJson(*TableDefs.Items(I)));
    J["tables"] = std::move(Tables);
    J["where"] = CriterionsJson(Parser.GetWhereItems());
    J["groupBy"] = StringListJson(Parser.GetGroupByItems());
    J["having"] = CriterionsJson(Parser.GetHavingItems());
    ordered_json OrderBy = ordered_json::array();
    const TZvOrderByItems& Orders = Parser.GetOrderByItems();
    for (int I = 0; I < Orders.Count(); ++I) {
        ordered_json Entry;
        Entry["item"] = Orders.Get(I);
        Entry["direction"] = Orders.GetOrders(I) == okDesc ? "desc" : "asc";
        OrderBy.push_back(std::move(Entry));
    }
    J["orderBy"] = std::move(OrderBy);
    if (const TCliDialect* Row = FindDialect(Dialect); Row != nullptr && Row->Settings != nullptr)
        J["options"] = Row->Settings(Parser);
    J["sql"] = Parser.GetExpression();
    return Dump(J);
}

// --- commands ------------------------------------------------------------------------------------

namespace {

int FormatLines(TZvSelectParser& Parser, const std::string& Input, std::ostream& Out) {
    // The output leaves in large blocks: a write per statement would go through the stream's
    // machinery twice for every line, and the stream's own buffer is small.
    constexpr std::size_t OutputBlock = 1 << 16;
    std::string Pending;
    Pending.reserve(OutputBlock * 2);
    std::size_t Start = 0;
    while (Start < Input.size()) {
        std::size_t End = Input.find('\n', Start);
        if (End == std::string::npos)
            End = Input.size();
        std::string_view Line(Input.data() + Start, End - Start);
        if (!Line.empty() && Line.back() == '\r')
            Line.remove_suffix(1);
        Start = End + 1;
        if (Line.empty())
            continue;
        // The statement goes straight into the output block; an error drops what it had written.
        const std::size_t Mark = Pending.size();
        try {
            Parser.SetExpression(Line);
            Parser.AppendExpression(Pending);
        } catch (const EZvParserError& E) {
            Pending.resize(Mark);
            Pending += "error: ";
            Pending += E.what();
        }
        Pending += '\n';
        if (Pending.size() >= OutputBlock) {
            Out.write(Pending.data(), static_cast<std::streamsize>(Pending.size()));
            Pending.clear();
        }
    }
    Out.write(Pending.data(), static_cast<std::streamsize>(Pending.size()));
    return 0;
}

} // namespace

int RunCli(const TZvCliOptions& Options, const std::string& Input, std::ostream& Out, std::ostream& Err) {
    std::unique_ptr<TZvSelectParser> Parser = CreateCliParser(Options);
    if (!Parser) {
        Err << "zevrin: unknown dialect '" << Options.Dialect << "'\n";
        return 2;
    }
    if (Options.Lines)
        return FormatLines(*Parser, Input, Out);
    const std::string Text = NormalizeInputText(Input);
    try {
        Parser->SetExpression(Text);
    } catch (const EZvParserError& E) {
        if (Options.Command == "model")
            Out << Dump(ErrorJson(E)) << '\n';
        else
            Err << E.what() << '\n';
        return 1;
    }
    if (Options.Command == "model")
        Out << ModelToJson(*Parser, Options.Dialect) << '\n';
    else
        Out << Parser->GetExpression();
    return 0;
}

} // namespace zv
