// Operands and output fields: the text of every operand kind, field texts with "AS", copying and
// clearing, generated aliases of computed columns, and field lists outside a statement.
#include <gtest/gtest.h>

#include "ZvParser.h"

using namespace zv;

namespace {

// A function or field list with no table above it.
struct TFreeFields {
    TZvFieldDefs Fields{nullptr, ItemClassOf<TZvFieldDef>()};
    TZvFieldDef* Add(const std::string& Name, TZvFunctionKind Kind) {
        TZvFieldDef* F = Fields.Add();
        F->SetName(Name);
        F->SetKind(Kind);
        return F;
    }
};

TZvFunctionDef* AddArgument(TZvFunctionDef& Call, const std::string& Name, TZvFunctionKind Kind) {
    TZvFunctionDef* A = Call.GetArguments().Add();
    A->SetName(Name);
    A->SetKind(Kind);
    return A;
}

std::string Literal(const std::string& Name) {
    TZvFunctionDef Def;
    Def.SetName(Name);
    Def.SetKind(fkString);
    return Def.GetScript();
}

} // namespace

TEST(TZvFunctionDef, AFunctionWithoutArgumentsIsWrittenWithEmptyBrackets) {
    TZvFunctionDef Count;
    Count.SetName("COUNT");
    Count.SetKind(fkFunction);
    EXPECT_EQ(Count.GetScript(), "COUNT()");
}

TEST(TZvFunctionDef, FunctionNamesFollowTheParsersFunctionFormat) {
    TZvSelectParser Parser;
    Parser.GetScriptFormat().SetFunctionsFormat(qfmLowerCase);
    TZvFunctionDef Count;
    Count.SetParser(&Parser);
    Count.SetName("COUNT");
    Count.SetKind(fkFunction);
    EXPECT_EQ(Count.GetScript(), "count()");
    AddArgument(Count, "*", fkIdentifier);
    EXPECT_EQ(Count.GetScript(), "count(*)");
}

TEST(TZvFunctionDef, AStarArgumentWithoutATableIsWrittenAsItStands) {
    TZvFunctionDef Count;
    Count.SetName("COUNT");
    Count.SetKind(fkFunction);
    AddArgument(Count, "*", fkIdentifier);
    EXPECT_EQ(Count.GetScript(), "COUNT(*)");
}

TEST(TZvFunctionDef, ArgumentsAreJoinedByCommaAndNest) {
    TZvFunctionDef Call;
    Call.SetName("COALESCE");
    Call.SetKind(fkFunction);
    TZvFunctionDef* Inner = AddArgument(Call, "UPPER", fkFunction);
    AddArgument(*Inner, "NAME", fkIdentifier);
    AddArgument(Call, "x", fkString);
    AddArgument(Call, "1.5", fkFloat);
    EXPECT_EQ(Call.GetScript(), "COALESCE(UPPER(NAME), 'x', 1.5)");
}

TEST(TZvFunctionDef, ArgumentsMakeAnyKindACall) {
    TZvFunctionDef Call;
    Call.SetName("F");
    Call.SetKind(fkExpression);
    AddArgument(Call, "1", fkInteger);
    EXPECT_EQ(Call.GetScript(), "F(1)");
}

TEST(TZvFunctionDef, StringLiteralsWithoutAParserAreQuotedUnlessAlreadyQuoted) {
    EXPECT_EQ(Literal("abc"), "'abc'");
    EXPECT_EQ(Literal("'it''s'"), "'it''s'");
    EXPECT_EQ(Literal("'abc"), "'''abc'");
    EXPECT_EQ(Literal(""), "''");
    EXPECT_EQ(Literal("it's"), "'it''s'");
    EXPECT_EQ(Literal("\"abc\""), "\"abc\"");
    EXPECT_EQ(Literal("'"), "''''");
    EXPECT_EQ(Literal("'abc\""), "'''abc\"'");
}

TEST(TZvFunctionDef, StringLiteralsWithAParserUseTheScannersQuoting) {
    TZvSelectParser Parser;
    TZvFunctionDef Def;
    Def.SetParser(&Parser);
    Def.SetKind(fkString);
    Def.SetName("it's");
    EXPECT_EQ(Def.GetScript(), Parser.GetScanner().QuoteStr("it's"));
    EXPECT_EQ(Def.GetScript(), "'it''s'");
}

TEST(TZvFunctionDef, ParametersNumbersAndExpressionsAreWrittenByKind) {
    TZvFunctionDef Def;
    Def.SetName("P1");
    Def.SetKind(fkParameter);
    EXPECT_EQ(Def.GetScript(), ":P1");
    for (TZvFunctionKind Kind : {fkUnknown, fkInteger, fkFloat, fkExpression}) {
        Def.SetKind(Kind);
        Def.SetName("A + 1");
        EXPECT_EQ(Def.GetScript(), "A + 1");
    }
}

TEST(TZvFunctionDef, AColumnIsQualifiedByItsTablesAliasOrElseItsName) {
    TZvTableDefs Tables(nullptr);
    TZvTableDef* Orders = Tables.Add();
    Orders->SetName("ORDERS");
    Orders->SetAlias("O");
    TZvFieldDef* Id = Orders->GetFieldDefs().Add();
    Id->SetName("ID");
    Id->SetKind(fkIdentifier);
    EXPECT_EQ(Id->GetScript(), "O.ID");
    Orders->SetAlias("");
    EXPECT_EQ(Id->GetScript(), "ORDERS.ID");
    TZvTableDef* Holder = Tables.Add();
    TZvFieldDef* Bare = Holder->GetFieldDefs().Add();
    Bare->SetName("X");
    Bare->SetKind(fkIdentifier);
    EXPECT_EQ(Bare->GetScript(), "X");
}

TEST(TZvFunctionDef, AColumnInsideNestedCallsTakesThePrefixOfTheFieldsTable) {
    TZvTableDefs Tables(nullptr);
    TZvTableDef* Orders = Tables.Add();
    Orders->SetName("ORDERS");
    Orders->SetAlias("O");
    TZvFieldDef* Sum = Orders->GetFieldDefs().Add();
    Sum->SetName("SUM");
    Sum->SetKind(fkFunction);
    TZvFunctionDef* Abs = AddArgument(*Sum, "ABS", fkFunction);
    AddArgument(*Abs, "AMOUNT", fkIdentifier);
    EXPECT_EQ(Sum->GetPureScript(), "SUM(ABS(O.AMOUNT))");
    TZvFieldDef* Star = Orders->GetFieldDefs().Add();
    Star->SetName("*");
    Star->SetKind(fkIdentifier);
    EXPECT_EQ(Star->GetScript(), "O.*");
}

TEST(TZvFunctionDef, APrefixIsQuotedWhenItIsTheTablesNameOrWhenAliasesAreQuoted) {
    TZvSelectParser Parser;
    TZvTableDefs& Tables = Parser.GetTableDefs();
    TZvTableDef* Table = Tables.Add();
    Table->SetName("my table");
    TZvFieldDef* Col = Table->GetFieldDefs().Add();
    Col->SetName("my col");
    Col->SetKind(fkIdentifier);
    EXPECT_EQ(Col->GetScript(), "\"my table\".\"my col\"");
    Table->SetAlias("my alias");
    EXPECT_EQ(Col->GetScript(), "my alias.\"my col\"");
    Parser.GetScanner().ProcessAliases = true;
    EXPECT_EQ(Col->GetScript(), "\"my alias\".\"my col\"");
}

TEST(TZvFunctionDef, AssignCopiesNameKindTagAndADeepCopyOfTheArguments) {
    TZvFunctionDef Source;
    Source.SetName("F");
    Source.SetKind(fkFunction);
    Source.SetTag(7);
    AddArgument(Source, "A", fkIdentifier);
    TZvFunctionDef Copy;
    Copy.Assign(Source);
    EXPECT_EQ(Copy.GetScript(), "F(A)");
    EXPECT_EQ(Copy.GetTag(), 7);
    EXPECT_EQ(Copy.GetKind(), fkFunction);
    Source.GetArguments().Items(0)->SetName("B");
    EXPECT_EQ(Copy.GetScript(), "F(A)");
    EXPECT_NE(&Copy.GetArguments(), &Source.GetArguments());
}

TEST(TZvFunctionDef, TakeFromMovesNameKindTagAndTheArgumentsAndEmptiesTheSource) {
    TZvSelectParser Parser;
    TZvFunctionDef Source;
    Source.SetParser(&Parser);
    Source.SetName("F");
    Source.SetKind(fkFunction);
    Source.SetTag(7);
    TZvFunctionDef* Inner = AddArgument(Source, "G", fkFunction);
    AddArgument(*Inner, "A", fkIdentifier);
    AddArgument(Source, "1", fkInteger);
    TZvFunctionDef Target;
    Target.SetParser(&Parser);
    AddArgument(Target, "OLD", fkIdentifier);
    Target.TakeFrom(Source);
    EXPECT_EQ(Target.GetScript(), "F(G(A), 1)");
    EXPECT_EQ(Target.GetTag(), 7);
    EXPECT_EQ(Target.GetKind(), fkFunction);
    // The argument objects moved: the nested call is now the target's, under its list.
    ASSERT_EQ(Target.GetArguments().Count(), 2);
    EXPECT_EQ(Target.GetArguments().Items(0), Inner);
    EXPECT_EQ(Inner->GetCollection(), &Target.GetArguments());
    EXPECT_EQ(Target.GetArguments().GetOwner(), &Target);
    EXPECT_EQ(Source.GetName(), "");
    EXPECT_EQ(Source.GetKind(), fkUnknown);
    EXPECT_FALSE(Source.HasArguments());
    EXPECT_EQ(Source.GetScript(), "");
}

TEST(TZvFunctionDef, ACallMovedIntoATableFieldWritesItsColumnsWithTheTablesPrefix) {
    TZvSelectParser Parser;
    TZvTableDef* Table = Parser.GetTableDefs().Add();
    Table->SetName("T");
    TZvFieldDef Scratch;
    Scratch.SetParser(&Parser);
    Scratch.SetName("UPPER");
    Scratch.SetKind(fkFunction);
    AddArgument(Scratch, "NAME", fkIdentifier);
    TZvFieldDef* Field = Table->GetFieldDefs().Add();
    Field->TakeFrom(Scratch);
    EXPECT_EQ(Field->GetPureScript(), "UPPER(T.NAME)");
}

TEST(TZvFunctionDef, ClearEmptiesNameKindAndArguments) {
    TZvFunctionDef Def;
    Def.SetName("F");
    Def.SetKind(fkFunction);
    AddArgument(Def, "A", fkIdentifier);
    Def.Clear();
    EXPECT_EQ(Def.GetName(), "");
    EXPECT_EQ(Def.GetKind(), fkUnknown);
    EXPECT_EQ(Def.GetArguments().Count(), 0);
    EXPECT_EQ(Def.GetScript(), "");
}

TEST(TZvFunctionDef, SetParserReachesTheArguments) {
    TZvSelectParser Parser;
    TZvFunctionDef Def;
    TZvFunctionDef* Arg = AddArgument(Def, "A", fkIdentifier);
    Def.SetParser(&Parser);
    EXPECT_EQ(Arg->GetParser(), &Parser);
    EXPECT_EQ(Def.GetArguments().GetParser(), &Parser);
}

TEST(TZvFieldDef, AnAliasThatDiffersFromTheNameIsWrittenAfterAs) {
    TZvSelectParser Parser;
    Parser.GetScriptFormat().SetKeywordsFormat(qfmLowerCase);
    TZvTableDef* T = Parser.GetTableDefs().Add();
    T->SetName("T");
    TZvFieldDef* F = T->GetFieldDefs().Add();
    F->SetName("NAME");
    F->SetKind(fkIdentifier);
    F->SetAlias("NAME");
    EXPECT_EQ(F->GetScript(), "T.NAME");
    F->SetAlias("name");
    EXPECT_EQ(F->GetScript(), "T.NAME as name");
    F->SetAlias("Full Name");
    EXPECT_EQ(F->GetScript(), "T.NAME as Full Name");
    Parser.GetScanner().ProcessAliases = true;
    EXPECT_EQ(F->GetScript(), "T.NAME as \"Full Name\"");
    EXPECT_EQ(F->GetPureScript(), "T.NAME");
}

TEST(TZvFieldDef, AComputedKindGetsAFieldAliasUnlessItHasAnAliasOfItsOwn) {
    TFreeFields L;
    TZvFieldDef* Sum = L.Add("A + B", fkExpression);
    EXPECT_EQ(Sum->GetAlias(), "FIELD_1");
    TZvFieldDef* Col = L.Add("ID", fkIdentifier);
    EXPECT_EQ(Col->GetAlias(), "");
    TZvFieldDef* Named = L.Fields.Add();
    Named->SetName("COUNT");
    Named->SetAlias("TOTAL");
    Named->SetKind(fkFunction);
    EXPECT_EQ(Named->GetAlias(), "TOTAL");
    TZvFieldDef* SameAsName = L.Fields.Add();
    SameAsName->SetName("MAX");
    SameAsName->SetAlias("MAX");
    SameAsName->SetKind(fkFunction);
    EXPECT_EQ(SameAsName->GetAlias(), "FIELD_1");
    for (TZvFunctionKind Kind : {fkFunction, fkInteger, fkFloat, fkString, fkParameter}) {
        TZvFieldDef* F = L.Add("1", Kind);
        EXPECT_EQ(F->GetAlias(), "FIELD_1") << int(Kind);
    }
}

TEST(TZvFieldDef, AssignCopiesTheFunctionPartAndTheFieldData) {
    TFreeFields L;
    TZvFieldDef* Source = L.Add("P", fkParameter);
    Source->SetAlias("X");
    Source->SetUsage(3);
    Source->SetDataType(ftInteger);
    Source->SetValue(TZvValue(42));
    TZvFieldDef* Copy = L.Fields.Add();
    Copy->Assign(*Source);
    EXPECT_EQ(Copy->GetScript(), ":P AS X");
    EXPECT_EQ(Copy->GetUsage(), 3);
    EXPECT_EQ(Copy->GetDataType(), ftInteger);
    EXPECT_EQ(Copy->GetValue(), TZvValue(42));
    EXPECT_EQ(Copy->GetAbsIndex(), 1);
    TZvFunctionDef Plain;
    Plain.Assign(*Source);
    EXPECT_EQ(Plain.GetScript(), ":P");
    TZvFieldDef FromPlain;
    FromPlain.SetAlias("KEPT");
    FromPlain.Assign(Plain);
    EXPECT_EQ(FromPlain.GetAlias(), "KEPT");
}

TEST(TZvFieldDef, TakeFromMovesTheFieldDataAndKeepsTheTargetsPlace) {
    TZvSelectParser Parser;
    TZvTableDef* Table = Parser.GetTableDefs().Add();
    Table->SetName("T");
    Table->GetFieldDefs().Add()->SetName("FIRST");
    TZvFieldDef Source;
    Source.SetName("P");
    Source.SetKind(fkParameter);
    Source.SetAlias("X");
    Source.SetUsage(3);
    Source.SetDataType(ftInteger);
    Source.SetValue(TZvValue(42));
    TZvFieldDef* Target = Table->GetFieldDefs().Add();
    Target->TakeFrom(Source);
    EXPECT_EQ(Target->GetScript(), ":P AS X");
    EXPECT_EQ(Target->GetUsage(), 3);
    EXPECT_EQ(Target->GetDataType(), ftInteger);
    EXPECT_EQ(Target->GetValue(), TZvValue(42));
    EXPECT_EQ(Target->GetAbsIndex(), 1);
    // The alias counts as used in the statement, as an alias set on the field does.
    EXPECT_EQ(Parser.GetTableDefs().GetUniqueAlias("X", false), "X1");
    EXPECT_EQ(Source.GetName(), "");
    EXPECT_EQ(Source.GetKind(), fkUnknown);
}

TEST(TZvFieldDef, AFieldAdoptedByATableTakesTheNextPositionAndCountsItsAlias) {
    TZvSelectParser Parser;
    TZvTableDef* Table = Parser.GetTableDefs().Add();
    Table->SetName("T");
    Table->GetFieldDefs().Add()->SetName("FIRST");
    ASSERT_TRUE(Table->GetFieldDefs().MakesItemsOf<TZvFieldDef>());
    auto Alone = std::make_unique<TZvFieldDef>();
    Alone->SetName("SECOND");
    Alone->SetKind(fkIdentifier);
    Alone->SetAlias("S");
    auto* Field = static_cast<TZvFieldDef*>(Table->GetFieldDefs().Adopt(std::move(Alone)));
    EXPECT_EQ(Field->GetAbsIndex(), 1);
    EXPECT_EQ(Field->GetTableDef(), Table);
    EXPECT_EQ(Field->GetScript(), "T.SECOND AS S");
    EXPECT_EQ(Parser.GetTableDefs().GetUniqueAlias("S", false), "S1");
    Field->SetAbsIndex(0);
    EXPECT_EQ(Table->GetFieldDefs().Items(0)->GetAbsIndex(), 1);
}

TEST(TZvFieldDef, ClearEmptiesTheFieldButKeepsWhereItLives) {
    TFreeFields L;
    L.Add("A", fkIdentifier);
    TZvFieldDef* F = L.Add("P", fkParameter);
    F->SetUsage(1);
    F->SetDataType(ftDate);
    F->SetValue(TZvValue("x"));
    F->Clear();
    EXPECT_EQ(F->GetName(), "");
    EXPECT_EQ(F->GetAlias(), "");
    EXPECT_EQ(F->GetKind(), fkUnknown);
    EXPECT_EQ(F->GetDataType(), ftUnknown);
    EXPECT_TRUE(F->GetValue().IsUnassigned());
    EXPECT_EQ(F->GetUsage(), 1);
    EXPECT_EQ(F->GetAbsIndex(), 1);
}

TEST(TZvFieldDef, ANewFieldIsSelectedAndOfferedWithNoTypeOrValue) {
    TZvFieldDef F;
    EXPECT_EQ(F.GetUsage(), 2);
    EXPECT_TRUE(F.IsSelected());
    EXPECT_EQ(F.GetDataType(), ftUnknown);
    EXPECT_TRUE(F.GetValue().IsUnassigned());
    F.SetUsage(1);
    EXPECT_FALSE(F.IsSelected());
}

TEST(TZvFieldDef, OutsideATableListPositionsFollowTheCollection) {
    TFreeFields L;
    TZvFieldDef* A = L.Add("A", fkIdentifier);
    TZvFieldDef* B = L.Add("B", fkIdentifier);
    TZvFieldDef* C = L.Add("C", fkIdentifier);
    EXPECT_EQ(C->GetAbsIndex(), 2);
    A->SetAbsIndex(2);
    EXPECT_EQ(A->GetAbsIndex(), 0);
    L.Fields.Delete(0);
    EXPECT_EQ(B->GetAbsIndex(), 0);
    EXPECT_EQ(C->GetAbsIndex(), 1);
    EXPECT_EQ(B->GetTableAlias(), "");
    EXPECT_EQ(B->GenerateAlias("ID", true), "ID1");
    EXPECT_EQ(B->GenerateAlias("ID", false), "ID");
}

TEST(TZvFieldDefs, FindByNameAndByAliasReturnTheFirstMatchThroughSameIdentifier) {
    TZvSelectParser Parser;
    TZvTableDef* T = Parser.GetTableDefs().Add();
    TZvFieldDefs& Fields = T->GetFieldDefs();
    TZvFieldDef* A = Fields.Add();
    A->SetName("ID");
    A->SetAlias("KEY");
    TZvFieldDef* B = Fields.Add();
    B->SetName("id");
    B->SetAlias("key");
    EXPECT_EQ(Fields.FindByName("Id"), A);
    EXPECT_EQ(Fields.FindByAlias("KEY"), A);
    EXPECT_EQ(Fields.FindByAlias("nothing"), nullptr);
    Parser.SetCaseSensitiveIdentifiers(true);
    EXPECT_EQ(Fields.FindByName("id"), B);
    EXPECT_EQ(Fields.FindByAlias("Key"), nullptr);
}

TEST(TZvFieldDefs, TheFieldListSkipsLeftOutFieldsAndKeepsASeparatorAfterEveryFieldButTheLast) {
    TFreeFields L;
    L.Add("A", fkIdentifier);
    L.Add("B", fkIdentifier)->SetUsage(1);
    L.Add("C", fkIdentifier);
    EXPECT_EQ(L.Fields.GetScript(), "  A,\r\n  C");
    L.Fields.Items(2)->SetUsage(3);
    EXPECT_EQ(L.Fields.GetScript(), "  A,\r\n");
}

TEST(TZvFunctionDefs, TheArgumentListJoinsItsItemsWithComma) {
    TZvFunctionDefs Args(nullptr, ItemClassOf<TZvFunctionDef>());
    EXPECT_EQ(Args.GetScript(), "");
    TZvFunctionDef* A = Args.Add();
    A->SetName("1");
    A->SetKind(fkInteger);
    TZvFunctionDef* B = Args.Add();
    B->SetName("P");
    B->SetKind(fkParameter);
    EXPECT_EQ(Args.GetScript(), "1, :P");
}
