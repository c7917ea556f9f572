#pragma once

#include "platform/forms/boundgrid.h"
#include "platform/forms/theme.h"
#include "support/database.h"
#include "support/windows.h"

// A screen with one grid of five rows, and the source of what stands in it.
struct GridScene {
    explicit GridScene(const QString& database) {
        source.SetDatabaseName(database);
        grid.setGeometry(14, 58, 711, 92);
        grid.SetDataSource(&source);
    }
    ~GridScene() {
        form->Unload();
        Settle();
    }

    forms::Form* form = new forms::Form(u"frmTeste"_s, forms::Form::Kind::Screen, {800, 600}, {});
    forms::BoundGrid& grid = *new forms::BoundGrid(u"grdTeste"_s, u"Peças"_s, form->Picture());
    forms::DataSource& source = *new forms::DataSource(u"dtcTeste"_s, form);
};
