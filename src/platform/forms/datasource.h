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
// Refresh runs the query synchronously: when it returns, the rows that fill the grid are read (or
// as many of them as a few milliseconds find) and Rebound was emitted. The rest follows in
// short slices of idle time until the result is whole and the read lock is gone; the next Refresh
// drops what is left.
class DataSource : public QObject {
    Q_OBJECT

public:
    DataSource(const QString& name, QObject* parent);
    ~DataSource() override;

    void SetDatabaseName(const QString& path);  // in the system's form

    // Sets the text without running it. A source that was never run opens by itself when the screen
    // that it stands on first shows.
    void SetRecordSource(const QString& sql);
    QString RecordSource() const { return recordSource_; }

    // How LIKE in the text takes accents: what a person types is more forgiving.
    void SetAccents(dao::Accents accents) { accents_ = accents; }

    // Throws the engine's errors; 3024 when the session has no database open on the path. After an
    // error the source still has the result that it had.
    void Refresh();
    void OpenIfPending();

    // Null before the first run. Another one after each Refresh.
    dao::Recordset* GetRecordset() const { return recordset_.get(); }

    // Rows that the first reading of a Refresh brings at least; the bound grid sets it to what it
    // can show.
    void SetFirstRows(qint64 rows) { firstRows_ = rows; }

Q_SIGNALS:
    void Rebound();    // there is another recordset
    void Completed();  // it has been read to its end

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    QString databaseName_;
    QString recordSource_;
    dao::Accents accents_ = dao::Accents::Minded;
    std::unique_ptr<dao::Recordset> recordset_;
    QBasicTimer idle_;
    bool yields_ = false;
    qint64 firstRows_ = 32;
};

}  // namespace forms
