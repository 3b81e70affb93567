// A stored procedure on the diagram: a table object whose rows include the procedure's input
// parameters, with a parameter list of its own and the palette's procedure client colour.
#pragma once

#include "ZvFloatTable.h"

namespace zv {

class TZvStoredProc : public TZvTable {
public:
    // The rows are the data set's fields (output rows) followed by one row per parameter of
    // Params that is not an output of the procedure; Params is copied (kind, data type and, when
    // set, value).
    TZvStoredProc(TZvWorkArea* AWorkArea, const TZvDataSet* DataSet, const TZvParams* Params,
                  std::string AName);

    const TZvParams& GetParams() const { return Params; }
    TColor GetClientColor() const override;

private:
    TZvParams Params;
};

} // namespace zv
