// The parser as owner of the model: its settings and defaults, the case formatting of keywords
// and function names, lazily made dialect parts, and the order in which its model is freed.
#include <gtest/gtest.h>

#include "ZvParser.h"

#include <memory>

using namespace zv;

namespace {

struct TFormatRow {
    const char* Input;
    TZvFormatMode Mode;
    const char* Expected;
};

// A dialect's scanner and parser, made through the factories.
struct TDialectScanner : TZvSQLScanner {
    bool GetProcessAliases() override { return true; }
};

struct TDialectParser : TZvSelectParser {
    int ScannersMade = 0;

    std::string GetCommaAggregates() override { return "COUNT,STDDEV"; }

protected:
    std::unique_ptr<TZvSQLScanner> CreateScanner() override {
        ++ScannersMade;
        return std::make_unique<TDialectScanner>();
    }
};

} // namespace

TEST(TZvSelectParser, CaseFormattingFollowsTheModeForTheWholeText) {
    const TFormatRow Rows[] = {
        {"Select", qfmAsIs, "Select"},
        {"select", qfmUpperCase, "SELECT"},
        {"SELECT", qfmLowerCase, "select"},
        {"LEFT OUTER", qfmFirstUpper, "Left outer"},
        {"GROUP", qfmFirstUpper, "Group"},
        {"FIELD_NAME", qfmFirstUpper, "Field_Name"},
        {"field__x", qfmFirstUpper, "Field__X"},
        {"_abc", qfmFirstUpper, "_Abc"},
        {"", qfmFirstUpper, ""},
        {"", qfmUpperCase, ""},
    };
    for (const TFormatRow& Row : Rows) {
        TZvSelectParser Parser;
        Parser.GetScriptFormat().SetKeywordsFormat(Row.Mode);
        Parser.GetScriptFormat().SetFunctionsFormat(Row.Mode);
        EXPECT_EQ(Parser.ProcessKeyword(Row.Input), Row.Expected) << Row.Input;
        EXPECT_EQ(Parser.ProcessFunction(Row.Input), Row.Expected) << Row.Input;
    }
}

TEST(TZvSelectParser, KeywordsAndFunctionNamesAreFormattedIndependently) {
    TZvSelectParser Parser;
    Parser.GetScriptFormat().SetKeywordsFormat(qfmLowerCase);
    Parser.GetScriptFormat().SetFunctionsFormat(qfmFirstUpper);
    EXPECT_EQ(Parser.ProcessKeyword("INNER JOIN"), "inner join");
    EXPECT_EQ(Parser.ProcessFunction("GEN_ID"), "Gen_Id");
}

TEST(TZvSelectParser, ScriptFormatDefaultsAndAssignCopyAllThreeSettings) {
    TZvScriptFormat Format;
    EXPECT_EQ(Format.GetKeywordsFormat(), qfmAsIs);
    EXPECT_EQ(Format.GetFunctionsFormat(), qfmAsIs);
    EXPECT_TRUE(Format.GetAlwaysBracketConditions());
    TZvScriptFormat Other;
    Other.SetKeywordsFormat(qfmUpperCase);
    Other.SetFunctionsFormat(qfmLowerCase);
    Other.SetAlwaysBracketConditions(false);
    Format.Assign(Other);
    EXPECT_EQ(Format.GetKeywordsFormat(), qfmUpperCase);
    EXPECT_EQ(Format.GetFunctionsFormat(), qfmLowerCase);
    EXPECT_FALSE(Format.GetAlwaysBracketConditions());
}

TEST(TZvSelectParser, DialectSettingsHaveTheGenericDefaults) {
    TZvSelectParser Parser;
    EXPECT_FALSE(Parser.GetCaseSensitiveIdentifiers());
    EXPECT_FALSE(Parser.IsConstInJoin());
    EXPECT_FALSE(Parser.IsLowerCaseAliases());
    EXPECT_FALSE(Parser.IsOracleJoins());
    EXPECT_FALSE(Parser.IsProcEmptyInputParamsBracket());
    EXPECT_TRUE(Parser.GetEnableStoredProc());
    EXPECT_EQ(Parser.GetTableNameAndAliasDeilm(), " ");
    EXPECT_FALSE(Parser.GetDistinct());
    EXPECT_EQ(Parser.GetAggregates().GetCommaText(), "SUM,MIN,MAX,AVG,COUNT");
    Parser.SetCaseSensitiveIdentifiers(true);
    EXPECT_TRUE(Parser.GetCaseSensitiveIdentifiers());
}

TEST(TZvSelectParser, TheDialectsScannerIsMadeOnceOnFirstUse) {
    TDialectParser Parser;
    EXPECT_EQ(Parser.ScannersMade, 0);
    EXPECT_NE(dynamic_cast<TDialectScanner*>(&Parser.GetScanner()), nullptr);
    Parser.GetScanner();
    EXPECT_EQ(Parser.ScannersMade, 1);
    EXPECT_EQ(Parser.GetAggregates().GetCommaText(), "COUNT,STDDEV");
}

TEST(TZvSelectParser, TheTableListBelongsToTheParser) {
    TZvSelectParser Parser;
    TZvTableDefs& Tables = Parser.GetTableDefs();
    EXPECT_EQ(Tables.GetParser(), &Parser);
    EXPECT_EQ(Tables.GetOwner(), &Parser);
    EXPECT_EQ(Tables.Add()->GetParser(), &Parser);
    EXPECT_EQ(Parser.GetOrderByItems().GetParser(), &Parser);
    EXPECT_EQ(Parser.GetGroupByItems().GetParser(), &Parser);
}

TEST(TZvSelectParser, ClearEmptiesTablesListsAndDistinct) {
    TZvSelectParser Parser;
    Parser.GetTableDefs().Add()->SetName("T");
    Parser.GetOrderByItems().Add("T.A");
    Parser.GetGroupByItems().Add("T.B");
    Parser.SetDistinct(true);
    Parser.Clear();
    EXPECT_EQ(Parser.GetTableDefs().Count(), 0);
    EXPECT_EQ(Parser.GetOrderByItems().Count(), 0);
    EXPECT_EQ(Parser.GetGroupByItems().Count(), 0);
    EXPECT_FALSE(Parser.GetDistinct());
}

TEST(TZvSelectParser, AssignCopiesTheModelAndSettingsButKeepsItsOwnScanner) {
    TZvSelectParser Source;
    TZvTableDef* T = Source.GetTableDefs().Add();
    T->SetName("ORDERS");
    T->SetAlias("O");
    TZvFieldDef* Id = T->GetFieldDefs().Add();
    Id->SetName("ID");
    Id->SetKind(fkIdentifier);
    Source.GetOrderByItems().AddOrdered("O.ID", okDesc);
    Source.SetDistinct(true);
    Source.GetScriptFormat().SetKeywordsFormat(qfmLowerCase);
    TZvSelectParser Target;
    TZvSQLScanner* OwnScanner = &Target.GetScanner();
    Target.Assign(Source);
    ASSERT_EQ(Target.GetTableDefs().Count(), 1);
    EXPECT_EQ(Target.GetTableDefs().Items(0)->GetAlias(), "O");
    EXPECT_EQ(Target.GetTableDefs().GetFieldDefs(0)->GetScript(), "O.ID");
    EXPECT_EQ(Target.GetOrderByItems().GetOrders(0), okDesc);
    EXPECT_TRUE(Target.GetDistinct());
    EXPECT_EQ(Target.ProcessKeyword("FROM"), "from");
    EXPECT_EQ(&Target.GetScanner(), OwnScanner);
    EXPECT_EQ(Target.GetTableDefs().Items(0)->GetParser(), &Target);
}

TEST(TZvSelectParser, ClearingTheWholeModelSkipsTheFieldsRepairOfTheLists) {
    // Repairing per field would delete the ORDER BY entries one by one before a parse clears
    // them anyway; the whole model goes, so the lists are left for their own Clear.
    auto Parser = std::make_unique<TZvSelectParser>();
    for (int T = 0; T < 5; ++T) {
        TZvTableDef* Table = Parser->GetTableDefs().Add();
        Table->SetName("T" + std::to_string(T));
        for (int F = 0; F < 5; ++F) {
            TZvFieldDef* Field = Table->GetFieldDefs().Add();
            Field->SetName("F" + std::to_string(F));
            Field->SetAlias("A" + std::to_string(T * 5 + F));
            Parser->GetOrderByItems().Add(Field->GetAlias());
        }
    }
    Parser->GetTableDefs().Clear();
    EXPECT_EQ(Parser->GetTableDefs().GetFieldCount(), 0);
    EXPECT_EQ(Parser->GetOrderByItems().Count(), 25);
    // A fresh model after the clear numbers from 0 again.
    TZvTableDef* Table = Parser->GetTableDefs().Add();
    EXPECT_EQ(Table->GetFieldDefs().Add()->GetAbsIndex(), 0);
    Parser.reset(); // with a model in place: the sanitizer build checks the order of freeing
}
