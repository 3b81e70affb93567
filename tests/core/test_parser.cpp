// The statement reader: clauses, fields, tables, joins and conditions read into the model, and
// syntax errors with their type, position and line.
#include <gtest/gtest.h>

#include <string>
#include <typeinfo>

#include "ZvParser.h"

using namespace zv;

namespace {

struct Parsed {
    TZvSelectParser Parser;
    explicit Parsed(const std::string& Sql) { Parser.SetExpression(Sql); }
    TZvTableDefs& Tables() { return Parser.GetTableDefs(); }
    TZvTableDef& Table(int I) { return *Parser.GetTableDefs().Items(I); }
    TZvWhereItems& Where() { return Parser.GetWhereItems(); }
};

EZvParserError ParseError(const std::string& Sql) {
    TZvSelectParser Parser;
    try {
        Parser.SetExpression(Sql);
    } catch (const EZvParserError& E) {
        EXPECT_FALSE(Parser.GetValid());
        EXPECT_EQ(Parser.GetTableDefs().Count(), 0) << "tables are cleared after an error";
        return E;
    }
    ADD_FAILURE() << "no error for: " << Sql;
    return EZvParserError(0, "", 0, 0);
}

void ExpectError(const std::string& Sql, int Type, const std::string& Token, int Position, int Line) {
    const EZvParserError E = ParseError(Sql);
    EXPECT_EQ(E.GetErrorType(), Type) << Sql << ": " << E.what();
    EXPECT_EQ(E.GetToken(), Token) << Sql;
    EXPECT_EQ(E.GetPosition(), Position) << Sql;
    EXPECT_EQ(E.GetLine(), Line) << Sql;
}

// The conditions of a list, as "left op right" texts.
std::string Leaf(const TZvCriterion& C) {
    std::string Text = C.GetLeftSide().GetName() + " " + C.GetOperatorCaption();
    for (int I = 0; I < C.GetRightSide().Count(); ++I)
        Text += " " + C.GetRightSide().Items(I)->GetName();
    return Text;
}

} // namespace

// --- clauses -------------------------------------------------------------------------------------

TEST(TZvSelectParser, LowerCaseDistinctAfterSelectIsRead) {
    Parsed P("select distinct a from t");
    EXPECT_TRUE(P.Parser.GetValid());
    EXPECT_TRUE(P.Parser.GetDistinct());
}

TEST(TZvSelectParser, SelectAloneIsAnUnexpectedEnd) {
    const EZvParserError E = ParseError("SELECT");
    EXPECT_EQ(E.GetErrorType(), 2);
    EXPECT_STREQ(E.what(), "Unexpected end of statement.");
}

TEST(TZvSelectParser, StatementNotBeginningWithSelectIsAnInvalidToken) {
    ExpectError("UPDATE T SET A = 1", 1, "UPDATE", 1, 1);
    ExpectError("", 2, "", 1, 1);
}

TEST(TZvSelectParser, IntoIsNotAccepted) {
    ExpectError("SELECT A INTO B FROM T", 1, "INTO", 10, 1);
}

TEST(TZvSelectParser, UnknownTrailingClauseIsAnInvalidToken) {
    ExpectError("SELECT A FROM T FOR UPDATE", 1, "FOR", 17, 1);
    ExpectError("SELECT A FROM T WHERE A = 1 FOR UPDATE", 1, "FOR", 29, 1);
}

TEST(TZvSelectParser, WordAfterATableIsItsAliasAndOnlyNamesAreTables) {
    // LIMIT is no keyword of the generic dialect: it is read as the alias of T.
    Parsed P("SELECT A FROM T LIMIT");
    EXPECT_NE(P.Tables().FindByAlias("LIMIT"), nullptr);
    ExpectError("SELECT A FROM T LIMIT 5", 1, "5", 23, 1);
    ExpectError("SELECT A FROM T, (", 1, "(", 18, 1);
}

TEST(TZvSelectParser, KeywordOtherThanFromAfterTheFieldsIsAnError) {
    ExpectError("SELECT A WHERE A = 1", 1, "WHERE", 10, 1);
}

TEST(TZvSelectParser, ClosingBracketBetweenFieldsIsAnError) {
    ExpectError("SELECT A) FROM T", 1, ")", 9, 1);
}

TEST(TZvSelectParser, ErrorsReportTheLineAndColumnOfTheOffendingToken) {
    ExpectError("SELECT A\r\nFROM T\r\n  WHERE A = 1\r\n  FOR UPDATE", 1, "FOR", 3, 4);
}

TEST(TZvSelectParser, UnterminatedStringGoesThroughTheErrorPath) {
    ExpectError("SELECT A FROM T WHERE A = 'abc", 3, "abc", 28, 1);
}

TEST(TZvSelectParser, ParserErrorHandlerIsCalledInsteadOfRaising) {
    TZvSelectParser Parser;
    std::string Message, Token;
    int Position = 0, Line = 0, Calls = 0;
    Parser.OnParserError = [&](TZvSelectParser& Source, const std::string& M, int Pos, int L, const std::string& T) {
        EXPECT_EQ(&Source, &Parser);
        Message = M;
        Position = Pos;
        Line = L;
        Token = T;
        ++Calls;
    };
    EXPECT_NO_THROW(Parser.SetExpression("SELECT A FROM T GARBAGE ("));
    EXPECT_EQ(Calls, 1);
    EXPECT_FALSE(Parser.GetValid());
    EXPECT_EQ(Message, "Invalid token '(' at position 25 of line 1.");
    EXPECT_EQ(Token, "(");
    EXPECT_EQ(Position, 25);
    EXPECT_EQ(Line, 1);
}

TEST(TZvSelectParser, SemicolonEndsTheStatementAsTheEndOfTheText) {
    Parsed P("SELECT A FROM T; this is ignored");
    EXPECT_TRUE(P.Parser.GetValid());
    ASSERT_EQ(P.Tables().Count(), 2);
}

TEST(TZvSelectParser, RaiseErrorReportsFieldNotFound) {
    TZvSelectParser Parser;
    try {
        Parser.RaiseError(4, "NAME", 1 + 4, 1);
        FAIL();
    } catch (const EZvParserError& E) {
        EXPECT_STREQ(E.what(), "Field 'NAME' not found.");
        EXPECT_EQ(E.GetPosition(), 1);
    }
}

// --- fields --------------------------------------------------------------------------------------

TEST(TZvSelectParser, SumOfTwoNumbersGetsAFieldAlias) {
    Parsed P("SELECT 1 + 2 FROM T");
    const TZvFieldDef& F = *P.Table(0).GetFieldDefs().Items(0);
    EXPECT_EQ(F.GetKind(), fkExpression);
    EXPECT_EQ(F.GetName(), "1 + 2");
    EXPECT_EQ(F.GetAlias(), "FIELD_1");
}

TEST(TZvSelectParser, ComputedFieldsAreNumberedInSelectOrder) {
    Parsed P("SELECT 1, A, 'x', COUNT(*), B AS FIELD_2, :P FROM T");
    const TZvFieldDefs& F = P.Table(0).GetFieldDefs();
    ASSERT_EQ(F.Count(), 6);
    EXPECT_EQ(F.Items(0)->GetAlias(), "FIELD_1");
    EXPECT_EQ(F.Items(1)->GetAlias(), "");
    EXPECT_EQ(F.Items(2)->GetAlias(), "FIELD_2");
    EXPECT_EQ(F.Items(3)->GetAlias(), "FIELD_3");
    EXPECT_EQ(F.Items(4)->GetAlias(), "FIELD_2");
    EXPECT_EQ(F.Items(5)->GetAlias(), "FIELD_4");
    EXPECT_EQ(F.Items(5)->GetKind(), fkParameter);
    EXPECT_EQ(F.Items(5)->GetName(), "P");
}

TEST(TZvSelectParser, StarOverOneTableGivesOneTableAndNoFields) {
    Parsed P("SELECT * FROM T");
    ASSERT_EQ(P.Tables().Count(), 1);
    EXPECT_EQ(P.Table(0).GetName(), "T");
    EXPECT_EQ(P.Table(0).GetFieldDefs().Count(), 0);
}

TEST(TZvSelectParser, QualifiedStarStaysAField) {
    Parsed P("SELECT T.* FROM T");
    ASSERT_EQ(P.Tables().Count(), 1);
    ASSERT_EQ(P.Table(0).GetFieldDefs().Count(), 1);
    EXPECT_EQ(P.Table(0).GetFieldDefs().Items(0)->GetName(), "*");
}

TEST(TZvSelectParser, QualifiedFieldsCreateTheirTableWhichTheFromListCompletes) {
    Parsed P("SELECT O.ID, C.NAME AS CUSTOMER, AMOUNT FROM ORDERS O, CUSTOMERS C");
    ASSERT_EQ(P.Tables().Count(), 3);
    EXPECT_EQ(P.Table(0).GetName(), "ORDERS");
    EXPECT_EQ(P.Table(0).GetAlias(), "O");
    EXPECT_EQ(P.Table(1).GetName(), "CUSTOMERS");
    EXPECT_EQ(P.Table(1).GetAlias(), "C");
    EXPECT_EQ(P.Table(1).GetFieldDefs().Items(0)->GetAlias(), "CUSTOMER");
    // The unqualified column waits in the table with the empty name.
    EXPECT_TRUE(P.Table(2).IsEmptyName());
    EXPECT_EQ(P.Table(2).GetFieldDefs().Items(0)->GetName(), "AMOUNT");
    EXPECT_EQ(P.Table(2).GetFieldDefs().Items(0)->GetAbsIndex(), 2);
}

TEST(TZvSelectParser, AliasWithoutAsIsRead) {
    Parsed P("SELECT A X, B AS Y, \"c d\" \"My Alias\" FROM T");
    const TZvFieldDefs& F = P.Table(0).GetFieldDefs();
    ASSERT_EQ(F.Count(), 3);
    EXPECT_EQ(F.Items(0)->GetAlias(), "X");
    EXPECT_EQ(F.Items(1)->GetAlias(), "Y");
    EXPECT_EQ(F.Items(2)->GetName(), "c d");
    EXPECT_EQ(F.Items(2)->GetAlias(), "\"My Alias\"");
}

TEST(TZvSelectParser, FunctionCallsKeepTheirArguments) {
    Parsed P("SELECT SUM(O.AMOUNT), COUNT(*), COUNT(DISTINCT O.ID), UPPER(TRIM(O.NAME)) FROM ORDERS O");
    ASSERT_GE(P.Tables().Count(), 1);
    const TZvFieldDefs& Own = P.Table(0).GetFieldDefs();
    ASSERT_EQ(Own.Count(), 2);
    EXPECT_EQ(Own.Items(0)->GetName(), "SUM");
    EXPECT_EQ(Own.Items(0)->GetKind(), fkFunction);
    EXPECT_EQ(Own.Items(0)->GetArguments().Items(0)->GetName(), "AMOUNT");
    EXPECT_EQ(Own.Items(0)->GetPureScript(), "SUM(O.AMOUNT)");
    EXPECT_EQ(Own.Items(1)->GetPureScript(), "UPPER(TRIM(O.NAME))");
    const TZvFieldDefs& Loose = P.Tables().FindByAlias("")->GetFieldDefs();
    ASSERT_EQ(Loose.Count(), 2);
    EXPECT_EQ(Loose.Items(0)->GetPureScript(), "COUNT(*)");
    EXPECT_EQ(Loose.Items(1)->GetArguments().Items(0)->GetKind(), fkExpression);
    EXPECT_EQ(Loose.Items(1)->GetPureScript(), "COUNT(DISTINCT O.ID)");
}

TEST(TZvSelectParser, ACallBelongsToTheOneTableAllItsColumnsNameAtAnyDepth) {
    Parsed P("SELECT COALESCE(A.X, B.Y), LOWER(TRIM(A.X)), F(A.X, 1, G(A.Z)), H(A.X, Y), "
             "K(A.X, B.Y, A.Z), M(), N(1) FROM T1 A, T2 B");
    const TZvFieldDefs& Own = P.Tables().FindByName("T1")->GetFieldDefs();
    ASSERT_EQ(Own.Count(), 2);
    EXPECT_EQ(Own.Items(0)->GetName(), "LOWER");
    EXPECT_EQ(Own.Items(0)->GetArguments().Items(0)->GetArguments().Items(0)->GetName(), "X")
        << "a column nested two calls deep loses its qualifier too";
    EXPECT_EQ(Own.Items(1)->GetArguments().Items(0)->GetName(), "X");
    EXPECT_EQ(Own.Items(1)->GetArguments().Items(2)->GetArguments().Items(0)->GetName(), "Z");
    EXPECT_EQ(Own.Items(1)->GetPureScript(), "F(A.X, 1, G(A.Z))");
    EXPECT_EQ(P.Tables().FindByName("T2")->GetFieldDefs().Count(), 0);
    // Two tables, a column without a qualifier, or no column at all: the call names no table and
    // its columns keep what they were written with.
    const TZvFieldDefs& Loose = P.Tables().FindByAlias("")->GetFieldDefs();
    ASSERT_EQ(Loose.Count(), 5);
    EXPECT_EQ(Loose.Items(0)->GetArguments().Items(1)->GetName(), "B.Y");
    EXPECT_EQ(Loose.Items(1)->GetArguments().Items(0)->GetName(), "A.X");
    EXPECT_EQ(Loose.Items(1)->GetArguments().Items(1)->GetName(), "Y");
    EXPECT_EQ(Loose.Items(2)->GetArguments().Items(2)->GetName(), "A.Z") << "a later column differing";
    EXPECT_EQ(Loose.Items(3)->GetPureScript(), "M()");
    EXPECT_EQ(Loose.Items(4)->GetPureScript(), "N(1)");
}

TEST(TZvSelectParser, LiteralsKeepTheirKindAndText) {
    Parsed P("SELECT 12, 1.5, 'it''s', -3, CASE WHEN A = 1 THEN 'x' ELSE 'y' END AS K FROM T");
    const TZvFieldDefs& F = P.Table(0).GetFieldDefs();
    ASSERT_EQ(F.Count(), 5);
    EXPECT_EQ(F.Items(0)->GetKind(), fkInteger);
    EXPECT_EQ(F.Items(1)->GetKind(), fkFloat);
    EXPECT_EQ(F.Items(2)->GetKind(), fkString);
    EXPECT_EQ(F.Items(2)->GetName(), "'it''s'");
    EXPECT_EQ(F.Items(3)->GetKind(), fkInteger);
    EXPECT_EQ(F.Items(3)->GetName(), "-3");
    EXPECT_EQ(F.Items(4)->GetKind(), fkExpression);
    EXPECT_EQ(F.Items(4)->GetName(), "CASE WHEN A = 1 THEN 'x' ELSE 'y' END");
    EXPECT_EQ(F.Items(4)->GetAlias(), "K");
}

TEST(TZvSelectParser, ASignStaysWithANumberAndMakesAnythingElseTextAsWritten) {
    Parsed P("SELECT A, -1, - B, + 2.5, -T.B, -UPPER(C) FROM T WHERE X > -1 AND Y = - Z");
    const TZvFieldDefs& F = P.Tables().FindByAlias("")->GetFieldDefs();
    ASSERT_EQ(F.Count(), 6);
    EXPECT_EQ(F.Items(1)->GetKind(), fkInteger);
    EXPECT_EQ(F.Items(1)->GetName(), "-1");
    EXPECT_EQ(F.Items(2)->GetKind(), fkExpression);
    EXPECT_EQ(F.Items(2)->GetName(), "- B");
    EXPECT_EQ(F.Items(3)->GetKind(), fkFloat);
    EXPECT_EQ(F.Items(3)->GetName(), "+2.5");
    // A signed column names no table: it waits with the fields that name none.
    EXPECT_EQ(F.Items(4)->GetKind(), fkExpression);
    EXPECT_EQ(F.Items(4)->GetName(), "-T.B");
    EXPECT_EQ(F.Items(5)->GetName(), "-UPPER(C)");
    EXPECT_EQ(F.Items(5)->GetAlias(), "FIELD_5");
    ASSERT_EQ(P.Where().Count(), 2);
    EXPECT_EQ(P.Where().Items(0)->GetRightSide().Items(0)->GetName(), "-1");
    EXPECT_EQ(P.Where().Items(0)->GetRightSide().Items(0)->GetKind(), fkInteger);
    EXPECT_EQ(P.Where().Items(1)->GetRightSide().Items(0)->GetName(), "- Z");
    EXPECT_EQ(P.Where().Items(1)->GetRightSide().Items(0)->GetKind(), fkExpression);
}

TEST(TZvSelectParser, QuotedPartsOfAQualifiedFieldNameItsTableAndItself) {
    Parsed P("SELECT \"my t\".\"a b\", \"s\".\"t\".\"c\", \"my t\".d, A AS \"x y\", B \"Z\" FROM T");
    TZvTableDef* Quoted = P.Tables().FindByName("my t");
    ASSERT_NE(Quoted, nullptr);
    ASSERT_EQ(Quoted->GetFieldDefs().Count(), 2) << "the second reference finds the same table";
    EXPECT_EQ(Quoted->GetFieldDefs().Items(0)->GetName(), "a b");
    EXPECT_EQ(Quoted->GetFieldDefs().Items(1)->GetName(), "d");
    TZvTableDef* Dotted = P.Tables().FindByName("s.t");
    ASSERT_NE(Dotted, nullptr);
    ASSERT_EQ(Dotted->GetFieldDefs().Count(), 1);
    EXPECT_EQ(Dotted->GetFieldDefs().Items(0)->GetName(), "c");
    // A quoted alias keeps its quotes only where the name needs them.
    const TZvFieldDefs& Own = P.Tables().FindByName("T")->GetFieldDefs();
    ASSERT_EQ(Own.Count(), 0);
    const TZvFieldDefs& Loose = P.Tables().FindByAlias("")->GetFieldDefs();
    ASSERT_EQ(Loose.Count(), 2);
    EXPECT_EQ(Loose.Items(0)->GetAlias(), "\"x y\"");
    EXPECT_EQ(Loose.Items(1)->GetAlias(), "Z");
}

namespace {

// Reads one expression the way a dialect's own reader would, outside the field list.
struct TExpressionReader : TZvSelectParser {
    std::string Read(const std::string& Text, TZvFunctionDef& Target) {
        TZvSQLScanner& S = GetScanner();
        S.Expression = Text;
        S.Length = static_cast<std::int32_t>(Text.size());
        S.GetFirstToken();
        return DoParseExpression(Target, pepEnableAlias);
    }
};

} // namespace

TEST(TZvSelectParser, AnAliasGoesToAFieldReadOutsideTheFieldListAndIsPassedOverForOtherTargets) {
    TExpressionReader Reader;
    TZvFieldDef Field;
    Field.SetParser(&Reader);
    EXPECT_EQ(Reader.Read("O.AMOUNT AS TOTAL", Field), "O");
    EXPECT_EQ(Field.GetName(), "AMOUNT");
    EXPECT_EQ(Field.GetAlias(), "TOTAL");
    TZvFieldDef Quoted;
    Quoted.SetParser(&Reader);
    Reader.Read("AMOUNT \"the total\"", Quoted);
    EXPECT_EQ(Quoted.GetAlias(), "\"the total\"");
    TZvFunctionDef Operand;
    Operand.SetParser(&Reader);
    EXPECT_EQ(Reader.Read("O.AMOUNT TOTAL", Operand), "O");
    EXPECT_EQ(Operand.GetName(), "AMOUNT");
    EXPECT_TRUE(Reader.GetScanner().TokenKinds.Contains(tkEnd)) << "the alias is read all the same";
}

TEST(TZvSelectParser, ArithmeticAndConcatenationStayExpressionText) {
    Parsed P("SELECT (A + B) * 2 AS S, A || ' ' || B FROM T");
    const TZvFieldDefs& F = P.Table(0).GetFieldDefs();
    ASSERT_EQ(F.Count(), 2);
    EXPECT_EQ(F.Items(0)->GetName(), "(A + B) * 2");
    EXPECT_EQ(F.Items(1)->GetName(), "A || ' ' || B");
    EXPECT_EQ(F.Items(1)->GetAlias(), "FIELD_1");
}

// --- FROM list -----------------------------------------------------------------------------------

TEST(TZvSelectParser, QualifiedTableNamesAreOneName) {
    Parsed P("SELECT A FROM OWNER.SCHEMA1.TAB X");
    TZvTableDef* T = P.Tables().FindByAlias("X");
    ASSERT_NE(T, nullptr);
    EXPECT_EQ(T->GetName(), "OWNER.SCHEMA1.TAB");
}

TEST(TZvSelectParser, CrossJoinIsOneMoreTableWithoutAJoin) {
    Parsed P("SELECT * FROM A CROSS JOIN B");
    ASSERT_EQ(P.Tables().Count(), 2);
    EXPECT_EQ(P.Table(0).GetName(), "A");
    EXPECT_EQ(P.Table(0).GetAlias(), "A");
    EXPECT_EQ(P.Table(1).GetName(), "B");
    EXPECT_EQ(P.Table(0).GetJoinDefs().Count(), 0);
    EXPECT_EQ(P.Table(1).GetJoinDefs().Count(), 0);
}

TEST(TZvSelectParser, StoredProcedureParametersBecomeInputFields) {
    Parsed P("SELECT * FROM GET_ORDERS(:CUST, 10, 'x', NULL) G");
    ASSERT_EQ(P.Tables().Count(), 1);
    TZvTableDef& T = P.Table(0);
    EXPECT_EQ(T.GetTableType(), qttStoredProc);
    EXPECT_EQ(T.GetAlias(), "G");
    ASSERT_EQ(T.GetFieldDefs().Count(), 4);
    EXPECT_FALSE(T.GetFieldDefs().Items(0)->IsSelected());
    EXPECT_EQ(T.GetFieldDefs().Items(0)->GetName(), "CUST");
    EXPECT_EQ(T.GetProcParamString(), "(:CUST, 10, 'x', NULL)");
}

TEST(TZvSelectParser, InnerJoinWithAndGivesTwoJoinsOnTheLeftTable) {
    Parsed P("SELECT * FROM A INNER JOIN B ON A.X = B.Y AND A.Z = B.W");
    ASSERT_EQ(P.Tables().Count(), 2);
    const TZvJoinDefs& J = P.Table(0).GetJoinDefs();
    ASSERT_EQ(J.Count(), 2);
    for (int I = 0; I < 2; ++I) {
        EXPECT_EQ(J.Items(I)->GetKind(), zvjInnerJoin);
        EXPECT_EQ(J.Items(I)->GetTableAlias(), "B");
        EXPECT_EQ(J.Items(I)->GetOperator(), "=");
    }
    EXPECT_EQ(J.Items(0)->GetLeftField(), "X");
    EXPECT_EQ(J.Items(0)->GetRightField(), "Y");
    EXPECT_EQ(J.Items(1)->GetLeftField(), "Z");
    EXPECT_EQ(J.Items(1)->GetRightField(), "W");
}

TEST(TZvSelectParser, JoinKindsAreReadFromTheirKeywords) {
    Parsed P("SELECT * FROM A LEFT OUTER JOIN B ON A.X = B.X RIGHT JOIN C ON A.X = C.X "
             "FULL JOIN D ON (A.X = D.X) JOIN E ON A.X = E.X");
    const TZvJoinDefs& J = P.Table(0).GetJoinDefs();
    ASSERT_EQ(J.Count(), 4);
    EXPECT_EQ(J.Items(0)->GetKind(), zvjLOuterJoin);
    EXPECT_EQ(J.Items(1)->GetKind(), zvjROuterJoin);
    EXPECT_EQ(J.Items(2)->GetKind(), zvjFOuterJoin);
    EXPECT_EQ(J.Items(3)->GetKind(), zvjInnerJoin);
}

TEST(TZvSelectParser, JoinWordsAreReadInAnyCaseAndOtherKeywordsStartNoJoin) {
    Parsed P("select * from a left outer join b on a.x = b.x inner join c on a.x = c.x Full join d on a.x = d.x "
             "rIGHT join e on a.x = e.x jOiN f on a.x = f.x");
    const TZvJoinDefs& J = P.Table(0).GetJoinDefs();
    ASSERT_EQ(J.Count(), 5);
    const TZvJoinKind Kinds[] = {zvjLOuterJoin, zvjInnerJoin, zvjFOuterJoin, zvjROuterJoin, zvjInnerJoin};
    for (int I = 0; I < 5; ++I)
        EXPECT_EQ(J.Items(I)->GetKind(), Kinds[I]) << I;
    // Keywords sharing a join word's initial or length are no join; a longer word is an alias.
    ExpectError("SELECT * FROM A IN", 1, "IN", 17, 1);
    ExpectError("SELECT * FROM A LIKE", 1, "LIKE", 17, 1);
    ExpectError("SELECT * FROM A FROM", 1, "FROM", 17, 1);
    EXPECT_EQ(Parsed("SELECT * FROM A JOINS").Table(0).GetAlias(), "JOINS");
}

TEST(TZvSelectParser, ConditionNamingTheRightTableFirstIsSwappedAndMirrored) {
    Parsed P("SELECT * FROM A JOIN B ON B.Y < A.X");
    const TZvJoinDefs& J = P.Table(0).GetJoinDefs();
    ASSERT_EQ(J.Count(), 1);
    EXPECT_EQ(J.Items(0)->GetLeftField(), "X");
    EXPECT_EQ(J.Items(0)->GetRightField(), "Y");
    EXPECT_EQ(J.Items(0)->GetOperator(), ">");
}

TEST(TZvSelectParser, ChainedJoinGoesToTheTableAlreadyInTheFromList) {
    Parsed P("SELECT * FROM A JOIN B ON A.ID = B.AID JOIN C ON C.BID >= B.ID");
    ASSERT_EQ(P.Tables().Count(), 3);
    EXPECT_EQ(P.Table(0).GetJoinDefs().Count(), 1);
    const TZvJoinDefs& OnB = P.Table(1).GetJoinDefs();
    ASSERT_EQ(OnB.Count(), 1);
    EXPECT_EQ(OnB.Items(0)->GetLeftField(), "ID");
    EXPECT_EQ(OnB.Items(0)->GetTableAlias(), "C");
    EXPECT_EQ(OnB.Items(0)->GetRightField(), "BID");
    EXPECT_EQ(OnB.Items(0)->GetOperator(), "<=");
    EXPECT_EQ(P.Table(2).GetJoinDefs().Count(), 0);
}

TEST(TZvSelectParser, AnEntryCompletingATableOfTheFieldListTakesNameAliasAndKind) {
    Parsed P("SELECT I0.X, C1.Y, P.Z FROM INVOICES I0 JOIN CUSTOMERS C1 ON I0.ID = C1.ID, PROC(7) P");
    ASSERT_EQ(P.Tables().Count(), 3);
    EXPECT_EQ(P.Table(0).GetName(), "INVOICES");
    EXPECT_EQ(P.Table(0).GetAlias(), "I0");
    EXPECT_EQ(P.Table(1).GetName(), "CUSTOMERS");
    EXPECT_EQ(P.Table(1).GetAlias(), "C1");
    EXPECT_EQ(P.Table(2).GetName(), "PROC");
    EXPECT_EQ(P.Table(2).GetAlias(), "P");
    EXPECT_EQ(P.Table(2).GetTableType(), qttStoredProc);
    ASSERT_EQ(P.Table(2).GetFieldDefs().Count(), 2);
    EXPECT_EQ(P.Table(2).GetFieldDefs().Items(1)->GetName(), "PARAM1");
    // Found again by the new texts, and no more by the name the field list gave.
    EXPECT_EQ(P.Tables().FindByName("INVOICES"), &P.Table(0));
    EXPECT_EQ(P.Tables().FindByAlias("C1"), &P.Table(1));
    EXPECT_EQ(P.Tables().FindByName("I0"), nullptr);
    const TZvJoinDefs& J = P.Table(0).GetJoinDefs();
    ASSERT_EQ(J.Count(), 1);
    EXPECT_EQ(J.Items(0)->GetTableAlias(), "C1");
}

// A statement of the tables A, C (or BTAB) and BTAB B, whose one join, held by A, is expected to
// aim at B and to be written as the first FROM entry's chain, followed by Last.
void ExpectTheJoinToFollowB(const std::string& Sql, const std::string& Last) {
    Parsed P(Sql);
    ASSERT_EQ(P.Tables().Count(), 3);
    EXPECT_EQ(P.Table(0).GetName(), "BTAB");
    EXPECT_EQ(P.Table(0).GetAlias(), "B");
    const TZvJoinDefs& J = P.Table(1).GetJoinDefs();
    ASSERT_EQ(J.Count(), 1);
    EXPECT_EQ(J.Items(0)->GetTableAlias(), "B");
    EXPECT_EQ(P.Parser.GetExpression(),
              "SELECT \r\n  B.X\r\nFROM\r\n  A\r\n  INNER JOIN BTAB B ON (A.ID = B.ID),\r\n  " + Last + "\r\n");
}

TEST(TZvSelectParser, AJoinReadBeforeTheEntryThatCompletesItsTargetStillNamesTheTargetsAlias) {
    // The condition names the table in another case before its FROM entry: the join follows the
    // entry's alias as written there.
    ExpectTheJoinToFollowB("SELECT B.X FROM A INNER JOIN C ON A.ID = b.ID, BTAB B", "C");
}

TEST(TZvSelectParser, AnEntryTakingTheNameOfAJoinTargetTakesThatJoinAlong) {
    // The entry's table passes through the alias BTAB on its way to B, and the join aimed at the
    // other table BTAB goes with it.
    ExpectTheJoinToFollowB("SELECT B.X FROM A JOIN BTAB ON A.ID = BTAB.ID, BTAB B", "BTAB");
}

TEST(TZvSelectParser, JoinAgainstAConstantIsInadmissible) {
    ExpectError("SELECT * FROM A JOIN B ON A.X = 5", 5, "", 34, 1);
    ExpectError("SELECT * FROM A JOIN B ON A.X = B.Y AND A.Z = 'k' WHERE 1 = 1", 5, "WHERE", 51, 1);
}

TEST(TZvSelectParser, JoinWithoutOnOrComparisonIsAnInvalidToken) {
    ExpectError("SELECT * FROM A JOIN B WHERE A.X = 1", 1, "WHERE", 24, 1);
    ExpectError("SELECT * FROM A JOIN B ON A.X B.Y", 1, "B", 31, 1);
    ExpectError("SELECT * FROM A LEFT B ON A.X = B.Y", 1, "B", 22, 1);
    ExpectError("SELECT * FROM A JOIN B ON", 2, "", 26, 1);
}

// --- conditions ----------------------------------------------------------------------------------

TEST(TZvSelectParser, EqualConnectivesFoldIntoOneGroup) {
    Parsed P("SELECT * FROM T WHERE A = 1 AND B = 2 AND C = 3");
    TZvWhereItems& W = P.Where();
    EXPECT_EQ(W.GetFilter(), cfAll);
    ASSERT_EQ(W.Count(), 3);
    EXPECT_EQ(Leaf(*W.Items(0)), "A = 1");
    EXPECT_EQ(Leaf(*W.Items(2)), "C = 3");
}

TEST(TZvSelectParser, AndBindsTighterThanOr) {
    Parsed P("SELECT * FROM T WHERE A = 1 OR B = 2 AND C = 3");
    TZvWhereItems& W = P.Where();
    EXPECT_EQ(W.GetFilter(), cfAny);
    ASSERT_EQ(W.Count(), 2);
    EXPECT_EQ(Leaf(*W.Items(0)), "A = 1");
    const TZvCriterions& Sub = W.Items(1)->GetSubItems();
    EXPECT_EQ(Sub.GetFilter(), cfAll);
    ASSERT_EQ(Sub.Count(), 2);
    EXPECT_EQ(Leaf(*Sub.Items(1)), "C = 3");
}

TEST(TZvSelectParser, NotBindsTighterThanAnd) {
    Parsed P("SELECT * FROM T WHERE NOT A = 1 AND B = 2");
    TZvWhereItems& W = P.Where();
    EXPECT_EQ(W.GetFilter(), cfAll);
    ASSERT_EQ(W.Count(), 2);
    const TZvCriterions& Not = W.Items(0)->GetSubItems();
    EXPECT_EQ(Not.GetFilter(), cfNot);
    ASSERT_EQ(Not.Count(), 1);
    EXPECT_EQ(Leaf(*Not.Items(0)), "A = 1");
}

TEST(TZvSelectParser, BracketsKeepADifferentConnectiveNested) {
    Parsed P("SELECT * FROM T WHERE A = 1 AND (B = 2 OR C = 3)");
    TZvWhereItems& W = P.Where();
    EXPECT_EQ(W.GetFilter(), cfAll);
    ASSERT_EQ(W.Count(), 2);
    EXPECT_EQ(W.Items(1)->GetSubItems().GetFilter(), cfAny);
}

TEST(TZvSelectParser, UnmatchedClosingBracketInAConditionIsAnError) {
    ExpectError("SELECT * FROM T WHERE A = 1)", 1, ")", 28, 1);
}

TEST(TZvSelectParser, StrayCommaInAConditionIsPassedOver) {
    Parsed P("SELECT * FROM T WHERE A = 1 , AND B = 2");
    EXPECT_TRUE(P.Parser.GetValid());
    EXPECT_EQ(P.Where().Count(), 2);
}

TEST(TZvSelectParser, LeadingConnectiveIsDropped) {
    Parsed P("SELECT * FROM T WHERE AND A = 1");
    ASSERT_EQ(P.Where().Count(), 1);
    EXPECT_EQ(Leaf(*P.Where().Items(0)), "A = 1");
}

TEST(TZvSelectParser, MultiWordOperatorsAreRead) {
    Parsed P("SELECT * FROM T WHERE A NOT LIKE 'x%' AND B IS NOT NULL AND C NOT BETWEEN 1 AND 5 "
             "AND D NOT IN (1, 2, 3) AND E IS NULL AND F IN ('a')");
    TZvWhereItems& W = P.Where();
    ASSERT_EQ(W.Count(), 6);
    EXPECT_EQ(Leaf(*W.Items(0)), "A NOT LIKE 'x%'");
    EXPECT_EQ(Leaf(*W.Items(1)), "B IS NOT NULL");
    EXPECT_EQ(Leaf(*W.Items(2)), "C NOT BETWEEN 1 5");
    EXPECT_EQ(Leaf(*W.Items(3)), "D NOT IN 1 2 3");
    EXPECT_EQ(Leaf(*W.Items(4)), "E IS NULL");
    EXPECT_EQ(Leaf(*W.Items(5)), "F IN 'a'");
}

namespace {

// A dialect with a one-word operator that also begins a longer one.
class TSimilarParser : public TZvSelectParser {
protected:
    void DefineOperators() override {
        GetOperators().AddStandardOperators();
        GetOperators().AddOperator("SIMILAR", "SIMILAR");
        GetOperators().AddOperator("SIMILAR TO", "SIMILAR TO");
    }
};

} // namespace

TEST(TZvSelectParser, AnOperatorIsTheLongestRunOfWordsThatNamesOne) {
    TSimilarParser Parser;
    Parser.SetExpression("SELECT * FROM T WHERE A SIMILAR TO 'x%' AND B SIMILAR 'y' AND C LIKE TO AND D IN (TO)");
    TZvWhereItems& W = Parser.GetWhereItems();
    ASSERT_EQ(W.Count(), 4);
    EXPECT_EQ(Leaf(*W.Items(0)), "A SIMILAR TO 'x%'");
    EXPECT_EQ(Leaf(*W.Items(1)), "B SIMILAR 'y'");
    EXPECT_EQ(Leaf(*W.Items(2)), "C LIKE TO");
    EXPECT_EQ(Leaf(*W.Items(3)), "D IN TO");
}

namespace {

// A dialect whose longer operator name comes first, and whose shorter one is named twice.
class TSimilarFirstParser : public TZvSelectParser {
protected:
    void DefineOperators() override {
        GetOperators().AddOperator("SIMILAR TO", "SIMILAR TO");
        GetOperators().AddOperator("SIMILAR", "SIMILAR");
        GetOperators().AddOperator("LOOKS LIKE", "SIMILAR");
        GetOperators().AddOperator("=", "=");
    }
};

// A dialect without an operator of one plain operand: a lone operand has no operator to take.
class TRangeOnlyParser : public TZvSelectParser {
protected:
    void DefineOperators() override {
        GetOperators().AddOperator("BETWEEN", "BETWEEN", 2, "AND");
        GetOperators().AddOperator("IN", "IN", 1, "", "(", ")", true);
    }
};

} // namespace

TEST(TZvSelectParser, AnOperatorWordsNameIsFoundWhereverTheLongerNamesStand) {
    TSimilarFirstParser Parser;
    Parser.SetExpression("SELECT * FROM T WHERE A SIMILAR 'y' AND B SIMILAR TO 'x%' AND C similar to 'z'");
    TZvWhereItems& W = Parser.GetWhereItems();
    ASSERT_EQ(W.Count(), 3);
    // Of the two operators named SIMILAR, the first is the one read.
    EXPECT_EQ(Leaf(*W.Items(0)), "A SIMILAR 'y'");
    EXPECT_EQ(Leaf(*W.Items(1)), "B SIMILAR TO 'x%'");
    EXPECT_EQ(Leaf(*W.Items(2)), "C SIMILAR TO 'z'");
}

TEST(TZvSelectParser, WordsThatOnlyBeginAnOperatorAreAnErrorAtTheLastOfThem) {
    ExpectError("SELECT * FROM T WHERE A IS NOT 'x'", 1, "NOT", 28, 1);
    ExpectError("SELECT * FROM T WHERE A IS", 1, "IS", 25, 1);
}

TEST(TZvSelectParser, ALoneOperandWithoutAnOperatorForItTakesTheFirstOperator) {
    TRangeOnlyParser Parser;
    Parser.SetExpression("SELECT * FROM T WHERE FLAG AND A BETWEEN 1 AND 2");
    TZvWhereItems& W = Parser.GetWhereItems();
    ASSERT_EQ(W.Count(), 2);
    EXPECT_EQ(Leaf(*W.Items(0)), "FLAG BETWEEN");
    EXPECT_EQ(W.Items(0)->GetRightSide().Count(), 0);
    EXPECT_EQ(Leaf(*W.Items(1)), "A BETWEEN 1 2");
}

TEST(TZvSelectParser, MixedConnectivesFoldIntoTheGroupsTheirPrecedenceMakes) {
    Parsed P("SELECT * FROM T WHERE A = 1 OR B = 2 AND C = 3 AND D = 4 OR NOT E = 5 AND F = 6");
    TZvWhereItems& W = P.Where();
    EXPECT_EQ(W.GetFilter(), cfAny);
    ASSERT_EQ(W.Count(), 3);
    EXPECT_EQ(Leaf(*W.Items(0)), "A = 1");
    const TZvCriterions& Second = W.Items(1)->GetSubItems();
    EXPECT_EQ(Second.GetFilter(), cfAll);
    ASSERT_EQ(Second.Count(), 3);
    EXPECT_EQ(Leaf(*Second.Items(0)), "B = 2");
    EXPECT_EQ(Leaf(*Second.Items(2)), "D = 4");
    const TZvCriterions& Third = W.Items(2)->GetSubItems();
    EXPECT_EQ(Third.GetFilter(), cfAll);
    ASSERT_EQ(Third.Count(), 2);
    const TZvCriterions& Not = Third.Items(0)->GetSubItems();
    EXPECT_EQ(Not.GetFilter(), cfNot);
    ASSERT_EQ(Not.Count(), 1);
    EXPECT_EQ(Leaf(*Not.Items(0)), "E = 5");
    EXPECT_EQ(Leaf(*Third.Items(1)), "F = 6");
}

TEST(TZvSelectParser, BracketedGroupsOfOneConnectiveJoinTheirMembersInOrder) {
    Parsed P("SELECT * FROM T WHERE (A = 1 AND B = 2) AND (C = 3 AND (D = 4 AND E = 5)) AND F = 6");
    TZvWhereItems& W = P.Where();
    EXPECT_EQ(W.GetFilter(), cfAll);
    ASSERT_EQ(W.Count(), 6);
    const char* const Expected[] = {"A = 1", "B = 2", "C = 3", "D = 4", "E = 5", "F = 6"};
    for (int I = 0; I < 6; ++I)
        EXPECT_EQ(Leaf(*W.Items(I)), Expected[I]);
}

TEST(TZvSelectParser, ANestedConditionKeepsItsOperatorItsOperandsAndTheParser) {
    Parsed P("SELECT * FROM T WHERE A = 1 AND (UPPER(B) NOT BETWEEN 1 AND 2 OR C IS NOT NULL OR D IN (3, LOWER(E)))");
    TZvWhereItems& W = P.Where();
    ASSERT_EQ(W.Count(), 2);
    const TZvCriterions& Group = W.Items(1)->GetSubItems();
    ASSERT_EQ(Group.Count(), 3);
    EXPECT_EQ(Group.GetFilter(), cfAny);
    EXPECT_EQ(Leaf(*Group.Items(0)), "UPPER NOT BETWEEN 1 2");
    EXPECT_EQ(Leaf(*Group.Items(1)), "C IS NOT NULL");
    EXPECT_EQ(Leaf(*Group.Items(2)), "D IN 3 LOWER");
    for (int I = 0; I < Group.Count(); ++I) {
        const TZvCriterion& Nested = *Group.Items(I);
        EXPECT_EQ(typeid(Nested), typeid(TZvCriterion));
        EXPECT_EQ(Nested.GetIndex(), I);
        EXPECT_EQ(Nested.GetParser(), &P.Parser);
        EXPECT_EQ(Nested.GetLeftSide().GetParser(), &P.Parser);
        EXPECT_EQ(Nested.GetRightSide().GetParser(), &P.Parser);
        for (int R = 0; R < Nested.GetRightSide().Count(); ++R)
            EXPECT_EQ(Nested.GetRightSide().Items(R)->GetParser(), &P.Parser);
    }
    EXPECT_EQ(Group.Items(0)->GetLeftSide().GetArguments().Items(0)->GetParser(), &P.Parser);
    EXPECT_EQ(Group.Items(2)->GetRightSide().Items(1)->GetArguments().Items(0)->GetName(), "E");
    EXPECT_EQ(P.Parser.GetExpression(),
              "SELECT *\r\nFROM\r\n  T\r\nWHERE\r\n  (A = 1) AND \r\n  ((UPPER(B) NOT BETWEEN 1 AND 2) OR "
              "\r\n  (C IS NOT NULL) OR \r\n  (D IN (3,LOWER(E))))\r\n");
}

// Every condition of List and its groups at any depth, as "class:text" in reading order: W for the
// WHERE clause's own item class, C for a plain criterion, G for a group.
std::string ConditionClasses(const TZvCriterions& List) {
    std::string Text;
    for (int I = 0; I < List.Count(); ++I) {
        const TZvCriterion& Item = *List.Items(I);
        Text += typeid(Item) == typeid(TZvWhereItem) ? "W" : typeid(Item) == typeid(TZvCriterion) ? "C" : "?";
        if (Item.GetSubItems().Count() > 0)
            Text += ":G(" + ConditionClasses(Item.GetSubItems()) + ") ";
        else
            Text += ":" + Leaf(Item) + " ";
    }
    return Text;
}

TEST(TZvSelectParser, ConditionsLandInTheirListsClassWhereverTheyStand) {
    const std::pair<const char*, const char*> Cases[] = {
        {"NOT A = 1", "W:A = 1 "},
        {"A = 1 AND B = 2 OR C = 3", "W:G(C:A = 1 C:B = 2 ) W:C = 3 "},
        {"(A = 1 OR B = 2) AND C = 3 AND NOT (D = 4 AND E = 5)",
         "W:G(C:A = 1 C:B = 2 ) W:C = 3 W:G(C:G(C:D = 4 C:E = 5 ) ) "},
        {"A = 1 OR (B = 2 AND NOT C = 3) OR D = 4", "W:A = 1 W:G(C:B = 2 C:G(C:C = 3 ) ) W:D = 4 "},
    };
    for (const auto& [Condition, Expected] : Cases) {
        Parsed P(std::string("SELECT * FROM T WHERE ") + Condition);
        EXPECT_EQ(ConditionClasses(P.Where()), Expected) << Condition;
    }
    Parsed Negated("SELECT * FROM T WHERE NOT A = 1");
    EXPECT_EQ(Negated.Where().GetFilter(), cfNot);
    EXPECT_EQ(Negated.Parser.GetExpression(), "SELECT *\r\nFROM\r\n  T\r\nWHERE\r\n  NOT (A = 1)\r\n");
    Parsed Mixed("SELECT * FROM T WHERE (A = 1 OR B = 2) AND C = 3 AND NOT (D = 4 AND E = 5)");
    EXPECT_EQ(Mixed.Parser.GetExpression(),
              "SELECT *\r\nFROM\r\n  T\r\nWHERE\r\n  ((A = 1) OR \r\n  (B = 2)) AND \r\n  (C = 3) AND \r\n"
              "  (NOT ((D = 4) AND \r\n  (E = 5)))\r\n");
}

TEST(TZvSelectParser, AConditionIsReadAloneAfterOthersAndAfterAFailedOne) {
    const std::string Sql = "SELECT * FROM T WHERE (A = 1 OR NOT B = 2) AND C IN (1, 2) HAVING D > 1 OR E < 2";
    TZvSelectParser Fresh;
    Fresh.SetExpression(Sql);
    TZvSelectParser Reused;
    Reused.SetExpression("SELECT * FROM T WHERE X = 1 OR (Y = 2 AND NOT (Z = 3 OR W = 4)) AND V = 5");
    EXPECT_THROW(Reused.SetExpression("SELECT * FROM T WHERE (X = 1 OR Y = 2) AND Z BETWEEN 1"), EZvParserError);
    Reused.SetExpression(Sql);
    EXPECT_EQ(Reused.GetExpression(), Fresh.GetExpression());
    ASSERT_EQ(Reused.GetWhereItems().Count(), 2);
    EXPECT_EQ(Reused.GetWhereItems().Items(0)->GetSubItems().GetFilter(), cfAny);
    EXPECT_EQ(Leaf(*Reused.GetWhereItems().Items(1)), "C IN 1 2");
    ASSERT_EQ(Reused.GetHavingItems().Count(), 2);
    EXPECT_EQ(Leaf(*Reused.GetHavingItems().Items(1)), "E < 2");
}

TEST(TZvSelectParser, TopLevelConditionsAreOfTheClausesItemClassAndNestedOnesPlain) {
    Parsed P("SELECT A, COUNT(B) FROM T WHERE A = 1 AND (B = 2 OR C = 3) GROUP BY A "
             "HAVING COUNT(B) > 1 AND NOT (A = 4)");
    TZvWhereItems& W = P.Where();
    ASSERT_EQ(W.Count(), 2);
    EXPECT_EQ(typeid(*W.Items(0)), typeid(TZvWhereItem));
    EXPECT_EQ(typeid(*W.Items(1)), typeid(TZvWhereItem));
    ASSERT_EQ(W.Items(1)->GetSubItems().Count(), 2);
    EXPECT_EQ(typeid(*W.Items(1)->GetSubItems().Items(0)), typeid(TZvCriterion));
    EXPECT_EQ(Leaf(*W.Items(1)->GetSubItems().Items(1)), "C = 3");
    EXPECT_EQ(W.Items(1)->GetSubItems().Items(1)->GetCollection(), &W.Items(1)->GetSubItems());
    TZvHavingItems& H = P.Parser.GetHavingItems();
    ASSERT_EQ(H.Count(), 2);
    EXPECT_EQ(typeid(*H.Items(0)), typeid(TZvHavingItem));
    EXPECT_EQ(H.Items(0)->GetLeftSide().GetName(), "COUNT");
    EXPECT_EQ(typeid(*H.Items(1)->GetSubItems().Items(0)), typeid(TZvCriterion));
    EXPECT_EQ(H.Items(1)->GetParser(), &P.Parser);
    EXPECT_EQ(P.Parser.GetExpression(),
              "SELECT \r\n  A,\r\n  COUNT(B) AS FIELD_1\r\nFROM\r\n  T\r\nWHERE\r\n  (A = 1) AND \r\n  ((B = 2) OR \r\n  (C = 3))\r\n"
              "GROUP BY\r\n  A\r\nHAVING\r\n  (COUNT(B) > 1) AND \r\n  (NOT (A = 4))\r\n");
}

TEST(TZvSelectParser, ConditionOperandsKeepTheirQualifier) {
    Parsed P("SELECT * FROM ORDERS O WHERE O.AMOUNT > 100 AND UPPER(O.NAME) = :N");
    TZvWhereItems& W = P.Where();
    ASSERT_EQ(W.Count(), 2);
    EXPECT_EQ(W.Items(0)->GetLeftSide().GetName(), "O.AMOUNT");
    EXPECT_EQ(W.Items(0)->GetLeftSide().GetKind(), fkIdentifier);
    EXPECT_EQ(W.Items(0)->GetRightSide().Items(0)->GetKind(), fkInteger);
    EXPECT_EQ(W.Items(1)->GetLeftSide().GetScript(), "UPPER(O.NAME)");
    EXPECT_EQ(W.Items(1)->GetRightSide().Items(0)->GetKind(), fkParameter);
}

TEST(TZvSelectParser, SubQueryInAnInListIsKeptAsText) {
    Parsed P("SELECT * FROM T WHERE A IN (SELECT B FROM U WHERE C = 1) AND EXISTS(SELECT 1 FROM V)");
    TZvWhereItems& W = P.Where();
    ASSERT_EQ(W.Count(), 2);
    EXPECT_EQ(W.Items(0)->GetRightSide().Items(0)->GetName(), "SELECT B FROM U WHERE C = 1");
    EXPECT_EQ(W.Items(1)->GetLeftSide().GetScript(), "EXISTS(SELECT 1 FROM V)");
}

TEST(TZvSelectParser, HavingIsReadIntoItsOwnTree) {
    Parsed P("SELECT A, COUNT(*) FROM T GROUP BY A HAVING COUNT(*) > 1 ORDER BY A");
    ASSERT_EQ(P.Parser.GetHavingItems().Count(), 1);
    EXPECT_EQ(P.Parser.GetHavingItems().Items(0)->GetLeftSide().GetScript(), "COUNT(*)");
    EXPECT_EQ(P.Parser.GetOrderByItems().Count(), 1);
}

// --- GROUP BY and ORDER BY -----------------------------------------------------------------------

TEST(TZvSelectParser, GroupByItemsAreNamesWithoutRepeats) {
    Parsed P("SELECT A FROM T GROUP BY T.A, B, T.A");
    TZvGroupByItems& G = P.Parser.GetGroupByItems();
    ASSERT_EQ(G.Count(), 2);
    EXPECT_EQ(G.Get(0), "T.A");
    EXPECT_EQ(G.Get(1), "B");
}

TEST(TZvSelectParser, FunctionCallAfterGroupByIsAnErrorAtItsBracket) {
    ExpectError("SELECT A FROM T GROUP BY UPPER(A)", 1, "(", 31, 1);
}

TEST(TZvSelectParser, OrderByItemsKeepTheirDirection) {
    Parsed P("SELECT A FROM T ORDER BY T.A DESC, \"b c\" ASC, 2");
    TZvOrderByItems& O = P.Parser.GetOrderByItems();
    ASSERT_EQ(O.Count(), 3);
    EXPECT_EQ(O.Get(0), "T.A");
    EXPECT_EQ(O.GetOrders(0), okDesc);
    EXPECT_EQ(O.Get(1), "\"b c\"");
    EXPECT_EQ(O.GetOrders(1), okAsc);
    EXPECT_EQ(O.Get(2), "2");
}

TEST(TZvSelectParser, OrderByTokenAfterAnItemIsAnError) {
    ExpectError("SELECT A FROM T ORDER BY A B", 1, "B", 28, 1);
}

TEST(TZvSelectParser, ReparsingReplacesTheModel) {
    TZvSelectParser Parser;
    Parser.SetExpression("SELECT DISTINCT A FROM T WHERE A = 1 ORDER BY A");
    Parser.SetExpression("SELECT B FROM U");
    EXPECT_FALSE(Parser.GetDistinct());
    EXPECT_EQ(Parser.GetWhereItems().Count(), 0);
    EXPECT_EQ(Parser.GetOrderByItems().Count(), 0);
    ASSERT_EQ(Parser.GetTableDefs().Count(), 2);
    EXPECT_EQ(Parser.GetTableDefs().Items(1)->GetName(), "U");
}
