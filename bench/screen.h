#pragma once

#include "cases.h"
#include "platform/forms/application.h"
#include "platform/forms/boundgrid.h"
#include "platform/forms/controls.h"
#include "platform/forms/datasource.h"
#include "report.h"

#include <QObject>

namespace bench {

// Notes when a widget has been painted and how long single events took.
class WatchfulApplication : public forms::Application {
public:
    using Application::Application;

    void Watch(QObject* painted);
    bool WasPainted() const { return wasPainted_; }
    double LongestEventMs() const { return longestMs_; }

    bool notify(QObject* receiver, QEvent* event) override;

private:
    QObject* watched_ = nullptr;
    bool wasPainted_ = false;
    bool paintedInside_ = false;
    double longestMs_ = 0;
    int depth_ = 0;
};

// The real search screen over the catalogue of `folder`, with its part panel open.
class Screen {
public:
    Screen(WatchfulApplication& application, const QString& folder);
    ~Screen();

    // Brings every input but the last one into place, then changes that one and waits for the
    // paint and for the whole result.
    Measured Run(const Search& search, const OrderBy& order);

    // The text that the last Run searched by, in the system's dialect.
    QString Sql() const { return source_->RecordSource(); }

private:
    void Enter(const Search& search, Order last);
    void Change(const Search& search, Order last);
    void Settle();

    WatchfulApplication& application_;
    QString competitorNumber_;
    forms::TextBox* number_ = nullptr;
    forms::TextBox* description_ = nullptr;
    forms::TextBox* partyNumber_ = nullptr;
    forms::ComboList* party_ = nullptr;
    forms::ComboList* kind_ = nullptr;
    forms::BoundGrid* grid_ = nullptr;
    forms::DataSource* source_ = nullptr;
};

}  // namespace bench
