#include "partviews/grade.h"

#include "platform/forms/boundgrid.h"
#include "platform/forms/datasource.h"

bool MostrarVizinhas(forms::BoundGrid& grade, const forms::DataSource& fonte) {
    const dao::Recordset* linhas = fonte.GetRecordset();
    if (!linhas || linhas->RecordCount() < 2 || grade.VisibleRows() != 1) {
        return false;
    }
    grade.ReBind();
    grade.Scroll(0, linhas->RecordCount() - linhas->AbsolutePosition());
    return true;
}
