#pragma once

#include "cases.h"
#include "platform/forms/boundgrid.h"
#include "platform/forms/controls.h"
#include "platform/forms/datasource.h"
#include "watch.h"

#include <functional>

namespace bench {

// What else is to happen in a run; nothing where there is none.
struct Moments {
    std::function<void()> beforeLastKey;
    std::function<void()> painted;
};

// The real search screen over the catalogue of `folder`, with its part panel open.
class Screen {
public:
    Screen(WatchfulApplication& application, const QString& folder);
    ~Screen();

    // Brings every input but the last one into place, then changes that one and waits for the
    // paint and for the whole result.
    Measured Run(const Search& search, const OrderBy& order, const Moments& moments = {});

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
