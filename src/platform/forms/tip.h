#pragma once

#include <QPoint>
#include <QString>

class QWidget;

namespace forms {

// The text as a tool tip takes it: as it stands, whatever signs of a markup it holds, and broken
// into lines where it is long. An empty one stays empty.
QString TipOf(const QString& text);

// Shows it at once, `place` in global coordinates; an empty one takes a tip away.
void ShowTip(const QPoint& place, const QString& text, QWidget* widget);

}  // namespace forms
