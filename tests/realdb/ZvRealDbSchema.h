// The schema and rows every real-database test runs on: a small trading company of this project's
// own (departments, employees with managers, customers, products, orders and their lines), with
// keys, nulls, a column named after a keyword of some dialects (product.size), text holding quotes and
// non-ASCII letters, decimal numbers, floats and dates.
#pragma once

#include <string>
#include <vector>

namespace zv::test {

// The CREATE TABLE statements, in an order that satisfies the foreign keys. The column types
// (INTEGER, VARCHAR, CHAR, NUMERIC, DOUBLE PRECISION, DATE) mean the same on every server.
const std::vector<std::string>& RealDbSchema();

// One INSERT statement per row (Firebird 3 has no multi-row VALUES); dates are ISO texts, which
// every server converts to its DATE column.
std::vector<std::string> RealDbRows();

} // namespace zv::test
