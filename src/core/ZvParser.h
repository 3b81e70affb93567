// The SQL front end and query model in one include: scanner, parser and every model class.
#pragma once

#include "ZvCollection.h"
#include "ZvErrors.h"
#include "ZvCriteria.h"
#include "ZvFunctionDefs.h"
#include "ZvJoinDefs.h"
#include "ZvOperators.h"
#include "ZvScanner.h"
#include "ZvScriptFormat.h"
#include "ZvSelectParser.h"
#include "ZvStringList.h"
#include "ZvTableDefs.h"
#include "ZvTypes.h"
