#pragma once

#include "importar/cells.h"
#include "importar/match.h"
#include "importar/refused.h"
#include "platform/dao/connection.h"
#include "platform/dao/statement.h"

#include <QHash>

namespace importar {

// Numbers of figures as an old catalogue may show them: by part, each row with the figure's file.
// Here they belong to the figure, and parts share it. So the parts that name the same figure share
// one if their numbers are the same; where they differ, each kind gets a figure of its own.
class FiguresByPart {
public:
    // The parts are in the catalogue, with the code of their figure.
    FiguresByPart(dao::Connection& catalogue, const Match& match, const SourceTable& source,
                  Refused& refused);

    void Add(const Row& row);
    void Store();

    qint64 Rows() const { return rows_; }  // taken from the source
    const QStringList& Remarks() const { return remarks_; }

private:
    struct Marker {
        qint64 code;
        QString item;
        double left;
        double top;
    };
    struct Part {
        qint64 figure = 0;  // 0: it has none
        QString file;
        std::vector<Marker> markers;
    };

    QString Take(const Row& row);
    Part* Find(qint64 code);
    static bool Alike(const Part& a, const Part& b);
    void StoreFigure(qint64 code, const Part& part);
    void LeaveFiguresWithoutNumbers();

    dao::Connection& catalogue_;
    const Match& match_;
    const SourceTable& source_;
    Refused& refused_;
    dao::Statement find_;
    QHash<qint64, Part> parts_;
    qint64 rows_ = 0;
    QStringList remarks_;
};

}  // namespace importar
