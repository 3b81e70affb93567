// Stored-procedure objects: parameter rows after the result fields.
#include "ZvProc.h"

#include "ZvWindow.h"

namespace zv {

TZvStoredProc::TZvStoredProc(TZvWorkArea* AWorkArea, const TZvDataSet* DataSet, const TZvParams* AParams,
                             std::string AName)
    : TZvTable(AWorkArea, DataSet, std::move(AName)) {
    if (!AParams)
        return;
    for (int I = 0; I < AParams->Count(); ++I) {
        const TZvParam& Param = (*AParams)[I];
        Params.Add(Param);
        // Outputs and the result come back as fields of the data set; only the values the
        // procedure takes become rows of their own, checked when a value is entered.
        if (Param.ParamType != ptInput && Param.ParamType != ptInputOutput)
            continue;
        auto Row =
            std::make_unique<TZvListItem>(this, Param.Name, Param.Name, Param.DataType, Param.ParamType);
        Row->SetValue(Param.Value);
        TZvListItem& Added = *Row;
        AddItem(std::move(Row));
        Added.UpdateCheck(!Param.Value.IsUnassigned());
    }
    FitHeightToRows();
}

TColor TZvStoredProc::GetClientColor() const {
    return GetWorkArea()->GetHost()->GetPalette()->GetProcClient();
}

} // namespace zv
