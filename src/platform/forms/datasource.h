#pragma once

#include "platform/dao/dao.h"

#include <QBasicTimer>
#include <QObject>
#include <QString>

#include <memory>

namespace forms {

// A query behind a bound grid. It has no password of its own: it reads through the connection that
// the session opened on the same path.
//
// Refresh runs the query synchronously: when it returns, the rows that fill the grid are read and
// Rebound was emitted. The rest follows in short slices of idle time until the result is whole and
// the read lock is gone; the next Refresh drops what is left.
class DataSource : public QObject {
    Q_OBJECT

public:
    DataSource(const QString& name, QObject* parent);
    ~DataSource() override;

    void SetDatabaseName(const QString& path);  // in the system's form
    QString DatabaseName() const { return databaseName_; }

    // Sets the text without running it. A source that was never run opens by itself when the screen
    // first shows.
    void SetRecordSource(const QString& sql);
    QString RecordSource() const { return recordSource_; }

    void Refresh();
    void OpenIfPending();

    dao::Recordset* GetRecordset() const { return recordset_.get(); }  // null before the first run

    // Rows that the first reading of a Refresh brings at least; the bound grid sets it to what it
    // can show.
    void SetFirstRows(qint64 rows) { firstRows_ = rows; }

Q_SIGNALS:
    void AboutToRebind();
    void Rebound();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    QString databaseName_;
    QString recordSource_;
    std::unique_ptr<dao::Recordset> recordset_;
    QBasicTimer idle_;
    qint64 firstRows_ = 32;
    bool pending_ = false;
};

}  // namespace forms
