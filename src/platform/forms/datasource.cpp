#include "platform/forms/datasource.h"

#include "platform/dao/errors.h"

#include <QTimerEvent>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace forms {
namespace {

// Short enough not to be felt between a keystroke and its letter.
constexpr auto Slice = 8ms;

// What a refresh may take for the rows that fill the grid. Nearly every search has them long before
// that; one that must look far for its few rows shows them as they come.
constexpr auto FirstSlice = 8ms;

}  // namespace

DataSource::DataSource(const QString& name, QObject* parent) : QObject(parent) {
    setObjectName(name);
}

DataSource::~DataSource() = default;

void DataSource::SetDatabaseName(const QString& path) {
    databaseName_ = path;
}

void DataSource::SetRecordSource(const QString& sql) {
    recordSource_ = sql;
}

void DataSource::Refresh() {
    const auto connection = dao::DBEngine::Instance().SharedConnection(databaseName_);
    if (!connection) {
        dao::Throw(dao::Failure::FileNotFound, databaseName_);
    }
    auto fresh = dao::OpenRecordset(connection, recordSource_, dao::dbOpenDynaset, accents_);
    fresh->ReadUpTo(firstRows_, FirstSlice);
    std::swap(recordset_, fresh);
    if (fresh) {
        // Perhaps it is one of its own signals that led here; its rows and its lock go at once.
        fresh->Close();
        fresh.release()->deleteLater();
    }
    Q_EMIT Rebound();
    // The first round is the grid's, which lays its rows out and paints them.
    yields_ = true;
    idle_.start(0, this);
}

void DataSource::OpenIfPending() {
    if (!recordset_ && !recordSource_.isEmpty()) {
        Refresh();
    }
}

void DataSource::timerEvent(QTimerEvent*) {
    idle_.stop();  // an error in the reading ends it
    if (std::exchange(yields_, false) || !recordset_->ReadFor(Slice)) {
        idle_.start(0, this);
        return;
    }
    Q_EMIT Completed();
}

}  // namespace forms
